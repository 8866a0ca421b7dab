#include "base/tilerlog.h"
#include "canvas/tzprogramscene.h"
#include "canvas/tzprogramview.h"
#include "modules/documentstate.h"
#include "modules/feedbackmodule.h"
#include "modules/graphicsitem_param.h"
#include "modules/mainmodule.h"
#include "proj/controls/selectablebutton.h"

#include <QKeyEvent>

namespace
{
/** A block whose left edge lies this far left of the press, or further, isn't meant by it. */
const qreal s_reach = 400;
const qreal s_sameCoordinate = 1e-12;
const int s_draggedZ = 10;
} // namespace

supermodule* TzProgramView::moduleAt(const QList<QGraphicsItem*>& p_items, qreal p_sceneX) const
{
    // Of nested blocks the innermost starts furthest right.
    supermodule* found = nullptr;
    qreal nearest = s_reach;
    for (QGraphicsItem* item : p_items) {
        supermodule* module = supermodule::seenAs(item);
        if (module && module != m_feedback && p_sceneX - module->scenePos().x() < nearest) {
            nearest = p_sceneX - module->scenePos().x();
            found = module;
        }
    }
    return found;
}

void TzProgramView::finishDrag()
{
    if (m_pressed && m_current && m_current->m_moved) {
        m_current->m_moved = false;
        settle(m_current);
        m_current->setTreeZValue(0);
        emit moduleUpdateSignal();
    }
    hideFeedback();
    m_pressed = false;
    m_linkCandidates.clear();
}

void TzProgramView::mousePressEvent(QMouseEvent* p_event)
{
    // A second button in the middle of a drag ends it.
    finishDrag();
    if (SelectableButton* marked = SelectableButton::current()) {
        marked->setSelected(false);
    }
    QGraphicsView::mousePressEvent(p_event);

    const QPointF scenePos = mapToScene(p_event->pos());
    m_lastScenePos = scenePos;
    m_pressPos = p_event->localPos();
    QList<QGraphicsItem*> items =
        m_scene->items(scenePos, Qt::IntersectsItemShape, Qt::DescendingOrder, viewportTransform());
    // The logo is part of the ground.
    items.removeOne(&m_scene->logo());
    m_current = moduleAt(items, scenePos.x());
    if (m_current) {
        // A drag may have ended without a release, by a new document or a dialog.
        m_current->m_moved = false;
    }
    if (items.isEmpty()) {
        emit mouseSignal(MousePressedEmpty);
        focusModule.clear();
    } else {
        emit mouseSignal(MousePressedItem);
    }
    m_pressed = !m_current.isNull();

    if (p_event->button() == Qt::LeftButton) {
        // A press on the root of a sub-program keeps the copy.
        if (!m_current || m_current->id < FirstSubProgramId || m_current->id > LastSubProgramId) {
            OnUndoCopy();
        }
        if (m_current) {
            pressedModule = m_current;
        }
    }
    if (m_current) {
        m_pressPlace = ModulePlace::of(m_current);
    }
    graphicsItem_Param* popUp = graphicsItem_Param::existing();
    if (popUp && !items.contains(popUp)) {
        popUp->setVisible(false);
    }
    if (p_event->button() == Qt::RightButton) {
        emit mouseSignal(MouseDone);
        showContextMenu(p_event->globalPos());
    }
}

void TzProgramView::showContextMenu(const QPoint& p_globalPos)
{
    const bool onBlock = m_current && m_current != m_mainModule;
    const bool canPaste = hasClipboardBlocks();
    qCDebug(tilerLog) << "canPaste " << canPaste;
    m_actCopy->setEnabled(onBlock);
    m_actCopyAndPaste->setEnabled(onBlock);
    m_actPaste->setEnabled(canPaste);
    m_actUndoCopy->setEnabled(canPaste);
    m_actDelete->setEnabled(onBlock);
    // The release goes to the menu, so that nothing would end a drag that began here.
    m_pressed = false;
    m_menu.popup(p_globalPos);
}

bool TzProgramView::lowerEdgeIsOut(const supermodule* p_module) const
{
    return mapFromScene(p_module->sceneBoundingRect().bottomLeft()).y() > viewport()->height();
}

void TzProgramView::mouseMoveEvent(QMouseEvent* p_event)
{
    if (!m_pressed || !m_current) {
        QGraphicsView::mouseMoveEvent(p_event);
        return;
    }
    const QPointF scenePos = mapToScene(p_event->pos());
    if (scenePos == m_lastScenePos) {
        return;
    }
    supermodule* module = m_current;
    // Said before anything moves: then no block has to tell its own place.
    m_scene->update();
    // In whole scene units all the way: a layout that comes within the last bits of a fraction of
    // where a block stands doesn't move it, and the fraction would stay. What rounding leaves over
    // counts at the next move.
    const QPointF to = (scenePos + module->scenePos() - m_lastScenePos).toPoint();
    m_lastScenePos += to - module->scenePos();
    module->setPos(to);
    module->updateLayout();
    if (!module->m_moved) {
        // What hangs under the block stays the same for as long as it is dragged.
        module->setTreeZValue(s_draggedZ);
    }
    module->detachFromParent();
    previewBestCandidate(module);
    documentModified = true;
    module->m_moved = true;
    if (module != m_mainModule) {
        emit mouseSignal(lowerEdgeIsOut(module) ? MouseDragsOut : MouseDragsInside);
    }
}

void TzProgramView::mouseReleaseEvent(QMouseEvent* p_event)
{
    if (m_pressed && m_current) {
        const bool deletes =
            m_current->m_moved && m_current != m_mainModule && lowerEdgeIsOut(m_current);
        if (deletes) {
            OnDelItem();
        } else {
            // A block that was moved and brought back has lost its link on the way.
            const QPointF way = p_event->localPos() - m_pressPos;
            const bool moved = m_current->m_moved || qAbs(way.x()) > s_sameCoordinate ||
                               qAbs(way.y()) > s_sameCoordinate;
            m_current->m_moved = false;
            if (moved) {
                settle(m_current);
                emit moduleUpdateSignal();
            }
            m_current->setTreeZValue(0);
        }
    }
    QGraphicsView::mouseReleaseEvent(p_event);
    emit mouseSignal(MouseDone);
    m_pressed = false;
    if (m_copied) {
        m_copied->setSelectTree(true);
    }
    m_scene->update();
    m_linkCandidates.clear();
}

void TzProgramView::previewBestCandidate(supermodule* p_module)
{
    m_linkCandidates = collectLinkCandidates(p_module, m_mainModule, m_feedback);
    const LinkCandidate best = bestLinkCandidate(m_linkCandidates);
    if (best.m_target) {
        showFeedback(best.m_target, best.m_type);
        m_distance = best.m_distance;
    } else {
        hideFeedback();
    }
}

void TzProgramView::showFeedback(supermodule* p_target, int p_type)
{
    if (p_target == m_target && p_type == m_type) {
        return;
    }
    hideFeedback();
    m_feedback->show();
    m_target = p_target;
    m_type = p_type;
    moduleDrop(m_feedback, nullptr, NoLink);
}

void TzProgramView::hideFeedback()
{
    if (!m_feedback->isVisible() && !m_feedback->parentModule() && !m_feedback->next()) {
        return;
    }
    m_feedback->detachFromParent();
    if (supermodule* behind = m_feedback->next()) {
        m_feedback->removeChild(behind);
        if (m_target) {
            moduleDrop(behind, m_target, m_type);
        }
    }
    m_target.clear();
    m_type = NoLink;
    m_distance = 10000;
    m_feedback->hide();
}

void TzProgramView::settle(supermodule* p_module)
{
    hideFeedback();
    moduleDrop(p_module, nullptr, NoLink);
    if (!p_module->parentModule()) {
        // Whole scene units: a file gives no others back.
        p_module->setPos(p_module->pos().toPoint());
    }
    p_module->updateTreeAndOpacity();
}

bool TzProgramView::moduleDrop(supermodule* p_module, supermodule* p_target, int p_type)
{
    LinkCandidate place{p_target, p_type, 0};
    if (!p_target) {
        place = bestLinkCandidate(m_linkCandidates);
        if (!place.m_target) {
            return false;
        }
    }
    qCDebug(tilerLog) << " TzProgramView::moduleDrop "
                      << "p_module" << p_module << "m_target " << place.m_target.data() << "m_type "
                      << place.m_type;
    linkAt(place.m_target, place.m_type, p_module);
    return true;
}

void TzProgramView::keyPressEvent(QKeyEvent* p_event)
{
    QGraphicsView::keyPressEvent(p_event);
    if (p_event->key() == Qt::Key_Delete) {
        OnDelItem();
    } else if (p_event->modifiers() & Qt::ControlModifier) {
        finishDrag();
        switch (p_event->key()) {
        case Qt::Key_V: {
            const QPoint at = mapToScene(viewport()->mapFromGlobal(QCursor::pos())).toPoint();
            pasteAt(at.x(), at.y());
            break;
        }
        case Qt::Key_C:
            OnCopy();
            break;
        case Qt::Key_Y:
            m_undoStack.redo();
            break;
        case Qt::Key_Z:
            m_undoStack.undo();
            break;
        default:
            break;
        }
    }
}
