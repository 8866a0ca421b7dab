#include "document/tzprogramscene.h"

#include "modules/catalogue/dragpayload.h"
#include "modules/documentstate.h"
#include "modules/supermodule.h"
#include "proj/controls/picturecache.h"

#include <QGraphicsSceneDragDropEvent>

tzprogramscene::tzprogramscene(QObject* p_parent) : QGraphicsScene(p_parent)
{
    // An index would be rebuilt with every step of a drag, which moves whole chains.
    setItemIndexMethod(NoIndex);
    m_logo.setPixmap(picture(QStringLiteral(":/logo.png")));
    m_logo.setZValue(-10);
    m_logo.setAcceptedMouseButtons(Qt::NoButton);
    addItem(&m_logo);
}

void tzprogramscene::clearItems(const QList<const QGraphicsItem*>& p_kept)
{
    QVector<supermodule*> blocks;
    for (supermodule* block : qAsConst(liveModules)) {
        // By identity, not by type: a file may hold a second block of the main block's type.
        if (block->scene() == this && !block->isPreview() && !p_kept.contains(block)) {
            blocks.append(block);
        }
    }
    supermodule::deleteModules(blocks);
}

void tzprogramscene::dropEvent(QGraphicsSceneDragDropEvent* p_event)
{
    int id = 0;
    if (!readBlockDrag(p_event->mimeData(), id)) {
        p_event->setAccepted(false);
        return;
    }
    // A document has just the task roots that it has.
    if (id != TaskRootId) {
        const QPoint at = p_event->scenePos().toPoint();
        emit addModuleSignal(at.x(), at.y(), id);
    }
}
