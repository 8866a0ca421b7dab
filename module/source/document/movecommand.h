#pragma once

#include <QPointF>
#include <QUndoCommand>

namespace moduleUndoCommand
{
/**
 * Moves a block, linking it where it then stands. Meant: nothing pushes one; moves aren't undoable
 * in this design.
 */
class moveCommand : public QUndoCommand
{
public:
    moveCommand(const QPointF& p_oldPos, const QPointF& p_newPos, int p_key);

    void redo() override;
    void undo() override;

private:
    void moveTo(const QPointF& p_pos);

    QPointF m_oldPos;
    QPointF m_newPos;
    int m_key;
};
} // namespace moduleUndoCommand
