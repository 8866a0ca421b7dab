#pragma once

#include <QDomDocument>
#include <QUndoCommand>

namespace moduleUndoCommand
{
/**
 * Changes a block's parameters to those of an element and back. Meant: nothing pushes one;
 * parameter changes take effect at once and aren't undoable in this design.
 */
class modifyCommand : public QUndoCommand
{
public:
    /** Each element holds a `module` element as its first child. */
    modifyCommand(int p_key, const QDomElement& p_old, const QDomElement& p_new);

    void redo() override;
    void undo() override;

private:
    void load(const QDomDocument& p_document);

    int m_key;
    QDomDocument m_old;
    QDomDocument m_new;
};
} // namespace moduleUndoCommand
