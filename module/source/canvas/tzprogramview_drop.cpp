#include "base/tilerlog.h"
#include "canvas/tzprogramscene.h"
#include "canvas/tzprogramview.h"
#include "modules/catalogue/dragpayload.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "modules/moduleregistry.h"

#include <QDebug>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QUrl>

void TzProgramView::dropUnfinished()
{
    hideFeedback();
    m_linkCandidates.clear();
    if (m_incoming) {
        if (supermodule* behind = m_incoming->next()) {
            m_incoming->removeChild(behind);
        }
        m_incoming->detachFromParent();
        supermodule::deleteTree(m_incoming);
    }
}

void TzProgramView::dragEnterEvent(QDragEnterEvent* p_event)
{
    QGraphicsView::dragEnterEvent(p_event);
    finishDrag();
    dropUnfinished();
    int id = 0;
    if (readBlockDrag(p_event->mimeData(), id)) {
        m_current = createModuleFromId(id);
        if (m_current) {
            m_incoming = m_current;
            ModuleRegistry::add(m_current);
            m_current->hide();
            m_current->enterScene(m_scene);
        }
        p_event->acceptProposedAction();
    } else {
        m_current.clear();
        p_event->setAccepted(p_event->mimeData()->hasUrls());
    }
}

void TzProgramView::dragMoveEvent(QDragMoveEvent* p_event)
{
    QGraphicsView::dragMoveEvent(p_event);
    if (p_event->mimeData()->hasFormat(QLatin1String(blockMimeType()))) {
        p_event->acceptProposedAction();
    } else {
        p_event->setAccepted(p_event->mimeData()->hasUrls());
        return;
    }
    if (!m_current) {
        return;
    }
    // Said before anything moves: then no block has to tell its own place.
    m_scene->update();
    // The cursor holds the middle of the block's top edge.
    const int width = static_cast<int>(m_current->boundingRect().width());
    m_current->setPos(mapToScene(p_event->pos().x() - width / 2, p_event->pos().y()).toPoint());
    previewBestCandidate(m_current);
}

void TzProgramView::dragLeaveEvent(QDragLeaveEvent* p_event)
{
    QGraphicsView::dragLeaveEvent(p_event);
    qCDebug(tilerLog) << "dragLeaveEvent" << p_event;
    // The gap closes with the block that it was for.
    dropUnfinished();
}

void TzProgramView::dropEvent(QDropEvent* p_event)
{
    if (!p_event->mimeData()->hasFormat(QLatin1String(blockMimeType()))) {
        dropUrls(p_event->mimeData());
        return;
    }
    if (m_current) {
        m_incoming.clear();
        m_current->show();
        settle(m_current);
    }
    m_linkCandidates.clear();
    emit moduleUpdateSignal();
    if (m_copied) {
        m_copied->setSelectTree(true);
    }
    emit mouseSignal(MouseDropped);
    documentModified = true;
    window()->setWindowModified(true);
    // Delete and undo are meant for the canvas now.
    setFocus();
    p_event->acceptProposedAction();
}

void TzProgramView::dropUrls(const QMimeData* p_data)
{
    const QList<QUrl> urls = p_data->urls();
    for (const QUrl& url : urls) {
        if (url.fileName().right(5) != QLatin1String(".tlrx")) {
            break;
        }
        emit openPathSignal(url.toLocalFile());
    }
}
