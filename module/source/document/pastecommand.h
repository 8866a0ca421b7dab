#pragma once

#include "document/takentree.h"

#include <QDomDocument>
#include <QUndoCommand>
#include <QVector>

class Document;

namespace moduleUndoCommand
{
/**
 * Puts the chains of a clipboard text on the canvas, their heads at one place, all loose. Undo
 * takes out all that was pasted, wherever it has been moved; redo puts it back as it was then.
 */
class pasteCommand : public QUndoCommand
{
public:
    /** p_chains: the clipboard's text, parsed. */
    pasteCommand(Document& p_document, const QDomDocument& p_chains, int p_x, int p_y);

    void redo() override;
    void undo() override;

private:
    Document& m_document;
    /** Until they are pasted. */
    QDomDocument m_chains;
    int m_x;
    int m_y;
    /** The keys of the pasted blocks. */
    QVector<int> m_keys;
    /** What the last undo has taken out, in this order. */
    QVector<TakenTree> m_taken;
};
} // namespace moduleUndoCommand
