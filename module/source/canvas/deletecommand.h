#pragma once

#include <QDomDocument>
#include <QPointF>
#include <QUndoCommand>
#include <QVector>

class supermodule;
class TzProgramView;

namespace moduleUndoCommand
{
/**
 * Deletes a block with all that hangs under it at that moment. Undo builds it anew from what was
 * written down, puts it where it was and links it there if its place is free.
 */
class deleteCommand : public QUndoCommand
{
public:
    /** p_position: the scene position that the block comes back to. */
    deleteCommand(TzProgramView* p_view, supermodule* p_module, const QPointF& p_position);

    void redo() override;
    void undo() override;

private:
    TzProgramView* m_view;
    int m_key;
    /** Of the block and of all under it: other commands know them by these. */
    QVector<int> m_keys;
    QPointF m_position;
    QDomDocument m_document;
};
} // namespace moduleUndoCommand
