#pragma once

#include "document/takentree.h"

#include <QUndoCommand>

class Document;

namespace moduleUndoCommand
{
/**
 * Puts a new block on the canvas, its top edge's middle at a point, linked if it touches a place.
 * Undo takes it out alone, and redo puts it back as it was then.
 */
class addCommand : public QUndoCommand
{
public:
    addCommand(Document& p_document, int p_x, int p_y, int p_id, int p_key);

    void redo() override;
    void undo() override;

private:
    Document& m_document;
    int m_x;
    int m_y;
    int m_id;
    int m_key;
    bool m_added = false;
    TakenTree m_taken;
};
} // namespace moduleUndoCommand
