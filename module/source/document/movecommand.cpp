#include "document/movecommand.h"

#include "modules/documentstate.h"
#include "modules/supermodule.h"

#include <QGraphicsScene>

namespace moduleUndoCommand
{
moveCommand::moveCommand(const QPointF& p_oldPos, const QPointF& p_newPos, int p_key)
    : m_oldPos(p_oldPos), m_newPos(p_newPos), m_key(p_key)
{
}

void moveCommand::redo() { moveTo(m_newPos); }

void moveCommand::undo() { moveTo(m_oldPos); }

void moveCommand::moveTo(const QPointF& p_pos)
{
    supermodule* module = moduleMap.value(m_key);
    if (!module) {
        return;
    }
    module->setPos(p_pos);
    supermodule* target = nullptr;
    int type = NoLink;
    module->CollisionDetection(target, type);
    module->updateTreeAndOpacity();
    if (module->scene()) {
        module->scene()->update();
    }
}
} // namespace moduleUndoCommand
