#include "document/tzprogramscene.h"

#include "document/buttonwalk.h"
#include "modules/catalogue/dragpayload.h"
#include "modules/documentstate.h"
#include "modules/supermodule.h"
#include "proj/controls/picturecache.h"

#include <QGraphicsSceneDragDropEvent>
#include <QKeyEvent>

namespace
{
const QRectF s_sceneRect(0, 0, 10000, 10000);
} // namespace

tzprogramscene::tzprogramscene(QObject* p_parent) : QGraphicsScene(s_sceneRect, p_parent)
{
    // An index would be rebuilt with every step of a drag, which moves whole chains.
    setItemIndexMethod(NoIndex);
    m_logo.setPixmap(picture(QStringLiteral(":/logo.png")));
    m_logo.setZValue(-10);
    m_logo.setAcceptedMouseButtons(Qt::NoButton);
    addItem(&m_logo);
}

void tzprogramscene::Logo::paint(QPainter* p_painter, const QStyleOptionGraphicsItem* p_option,
                                 QWidget* p_widget)
{
    if (scaleOf(*p_painter) > 1) {
        drawPicture(p_painter, 0, 0, pixmap());
    } else {
        QGraphicsPixmapItem::paint(p_painter, p_option, p_widget);
    }
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

bool tzprogramscene::event(QEvent* p_event)
{
    if (p_event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(p_event);
        const bool tab = key->key() == Qt::Key_Tab;
        const bool backtab = key->key() == Qt::Key_Backtab;
        if ((tab || backtab) && !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
            // Before the item with the focus gets it: a number field accepts every key, so that
            // the focus would never leave the last one.
            const bool next = tab && !(key->modifiers() & Qt::ShiftModifier);
            p_event->setAccepted(focusNextButton(*this, next));
            return true;
        }
    }
    return QGraphicsScene::event(p_event);
}

void tzprogramscene::focusInEvent(QFocusEvent* p_event)
{
    const bool next = p_event->reason() == Qt::TabFocusReason;
    if (!next && p_event->reason() != Qt::BacktabFocusReason) {
        QGraphicsScene::focusInEvent(p_event);
        return;
    }
    // The base class would look for a widget that is there, and few buttons have one.
    QFocusEvent plain(QEvent::FocusIn, Qt::OtherFocusReason);
    QGraphicsScene::focusInEvent(&plain);
    setFocusItem(nullptr);
    p_event->setAccepted(focusNextButton(*this, next));
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
