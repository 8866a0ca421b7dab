#include "canvas/tzprogramview.h"

#include "base/recentfiles.h"
#include "base/tilerlog.h"
#include "canvas/canvasreach.h"
#include "canvas/droppedprojects.h"
#include "canvas/moduleat.h"
#include "canvas/movedregion.h"
#include "modules/catalogue/dragpayload.h"
#include "modules/catalogue/mousestate.h"
#include "modules/documentstate.h"
#include "modules/feedbackmodule.h"
#include "modules/graphicsitem_param.h"
#include "modules/mainmodule.h"
#include "proj/controls/selectablebutton.h"
#include "project/projectfile.h"

#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMessageBox>
#include <QWheelEvent>

QPointer<TzProgramView> programView;

namespace
{
/** The buttons of the question about a missing project; the box's X means to keep it. */
const int s_remove = 0;
const int s_keep = 1;
} // namespace

TzProgramView::TzProgramView(Document& p_document, QWidget* p_parent)
    : QGraphicsView(p_parent),
      m_document(p_document),
      m_preview(p_document.scene(), p_document.mainBlock()),
      m_drag(*this, p_document, m_preview, [this] { emit mouseSignal(MouseDone); }),
      m_drop(*this, p_document.scene(), m_preview),
      m_clipboard(p_document),
      m_background(*this, p_document.scene().logo())
{
    setAcceptDrops(true);
    setDragMode(ScrollHandDrag);
    setAttribute(Qt::WA_TranslucentBackground);
    setStyleSheet(QStringLiteral("QGraphicsView{border:0px;}"));
    setAutoFillBackground(true);
    // Blocks are drawn smaller than their pictures on most screens.
    setRenderHint(QPainter::SmoothPixmapTransform);
    setUpScene();
    CanvasZoom::measureScreen();
    zoomView(0);
    addAction(undoStack().createUndoAction(this, QString()));
    addAction(undoStack().createRedoAction(this, QString()));
    programView = this;
    setModuleHost(this);
    readRecentFiles(recentFilesPath());
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(&m_document, &Document::changed, this, &TzProgramView::onDocumentChanged);
    connect(&undoStack(), &QUndoStack::indexChanged, this, [this] { updateReach(*this); });
    connect(this, &TzProgramView::mouseSignal, this, [this](int p_type) {
        if (p_type == MouseDone) {
            m_drag.rest();
        }
    });
}

TzProgramView::~TzProgramView()
{
    writeRecentFiles(recentFilesPath());
    setModuleHost(nullptr);
}

void TzProgramView::setUpScene()
{
    setScene(&m_document.scene());
    // Moves without a button, too: they tell that a release went elsewhere.
    viewport()->setMouseTracking(true);
    connect(&m_document.scene(), &tzprogramscene::addModuleSignal, this, &TzProgramView::addModule);
    m_background.centreLogo();
    const int blockHeight = static_cast<int>(mainBlock()->boundingRect().height());
    m_document.setFirstPlace(mapToScene(50, viewport()->height() / 2 - blockHeight / 2).toPoint());
}

void TzProgramView::onDocumentChanged(const DocumentChange& p_change)
{
    switch (p_change.kind) {
    case DocumentChange::Preparing:
        finishDrag();
        break;
    case DocumentChange::Removing:
        m_preview.hide();
        m_drag.forget();
        m_current.clear();
        if (p_change.module) {
            m_clipboard.removing(p_change.module);
        } else {
            m_clipboard.forget();
            graphicsItem_Param::dismiss();
        }
        break;
    case DocumentChange::SlotShown:
        updateReach(*this);
        if (const supermodule* root = firstVisibleRoot()) {
            centerOn(root);
        }
        emit moduleUpdateSignal();
        break;
    case DocumentChange::Content:
        emit moduleUpdateSignal();
        break;
    case DocumentChange::RecentFiles:
        emit updateRecentMenuSignal();
        break;
    }
}

bool TzProgramView::viewportEvent(QEvent* p_event)
{
    const bool result = QGraphicsView::viewportEvent(p_event);
    if (scene()) {
        m_background.centreLogo();
    }
    return result;
}

void TzProgramView::paintEvent(QPaintEvent* p_event)
{
    // The view leaves out items whose rectangles lie outside the region. Blocks are painted beyond
    // theirs, so it is told of a wider one; what is painted there is clipped away.
    QPaintEvent wider(regionOfBlocksIn(*this, p_event->region()));
    QGraphicsView::paintEvent(&wider);
}

void TzProgramView::resizeEvent(QResizeEvent* p_event)
{
    QGraphicsView::resizeEvent(p_event);
    // Before it is shown a view has sizes that nobody sees.
    if (isVisible()) {
        m_background.fill(Qt::KeepAspectRatio);
    }
}

void TzProgramView::showEvent(QShowEvent* p_event)
{
    QGraphicsView::showEvent(p_event);
    // Meant: unlike at the start, where the picture fills the whole view; the design says so.
    m_background.fill(Qt::KeepAspectRatio);
}

void TzProgramView::zoomView(int scale)
{
    if (scale == 0) {
        m_zoom.reset();
        m_zoom.applyTo(*this);
        updateReach(*this);
        centerOn(mainBlock());
    } else if (m_zoom.step(scale)) {
        m_zoom.applyAround(zoomCentre(), *this);
    }
}

void TzProgramView::wheelEvent(QWheelEvent* p_event)
{
    if (!m_wheelStrip.scroll(*p_event)) {
        QGraphicsView::wheelEvent(p_event);
    }
}

void TzProgramView::OnDownload(const QString& name)
{
    if (m_buildRunner) {
        // Always C, whatever language the code pane shows.
        m_buildRunner(name, taskModules.size() - 1, generateProjectCode(CCode));
    }
}

int TzProgramView::openFile(const QString& p_path)
{
    const int result = m_document.open(p_path);
    if (result == ProjectMissing &&
        QMessageBox::question(this, tr("提示"), tr("文件不存在，是否在列表中删除？"), tr("是"),
                              tr("否"), QString(), s_remove, s_keep) == s_remove) {
        m_document.forgetRecentFile(p_path);
    }
    return result;
}

void TzProgramView::OnDelSub()
{
    if (mainBlock()->isVisible()) {
        QMessageBox::information(this, tr("提示"), tr("主程序不能删除"));
        return;
    }
    m_document.deleteSubProgram();
}

void TzProgramView::addModule(int x, int y, int id)
{
    m_document.addModule(x, y, id);
    m_clipboard.showFrame();
    emit mouseSignal(MouseDropped);
}

void TzProgramView::OnCopy()
{
    finishDrag();
    m_clipboard.copy(m_current);
    m_current.clear();
}

void TzProgramView::OnPaste()
{
    // Meant: from the widget's own place, not the cursor's; the design says so.
    m_clipboard.paste(mapToScene(mapFromGlobal(pos())).toPoint());
}

void TzProgramView::OnCopyAndPaste()
{
    OnCopy();
    m_clipboard.pasteBesideSource();
}

void TzProgramView::finishDrag()
{
    if (m_drag.cancel() == BlockDrag::End::Settled) {
        noteSettled();
    }
}

void TzProgramView::noteSettled()
{
    updateReach(*this);
    emit moduleUpdateSignal();
}

bool TzProgramView::event(QEvent* p_event)
{
    // A dialog, or another window: the release may go there.
    if (p_event->type() == QEvent::WindowDeactivate) {
        finishDrag();
    }
    return QGraphicsView::event(p_event);
}

void TzProgramView::mousePressEvent(QMouseEvent* p_event)
{
    // A second button in the middle of a drag ends it.
    finishDrag();
    if (SelectableButton* marked = SelectableButton::current()) {
        marked->setSelected(false);
    }
    QGraphicsView::mousePressEvent(p_event);

    const PressTarget target =
        pressTarget(*this, mapToScene(p_event->pos()), m_document.scene().logo());
    m_current = target.module;
    if (target.empty) {
        emit mouseSignal(MousePressedEmpty);
        focusModule.clear();
    } else {
        emit mouseSignal(MousePressedItem);
    }

    if (p_event->button() == Qt::LeftButton) {
        // A press on the root of a sub-program keeps the copy.
        if (!m_current || m_current->id < FirstSubProgramId || m_current->id > LastSubProgramId) {
            OnUndoCopy();
        }
        if (m_current) {
            pressedModule = m_current;
        }
    }
    if (!target.onPopUp) {
        graphicsItem_Param::dismiss();
    }
    if (p_event->button() == Qt::RightButton) {
        emit mouseSignal(MouseDone);
        // No drag: the menu's event loop takes the release event.
        m_menu.open(p_event->globalPos(), m_current && m_current != mainBlock());
    } else {
        m_drag.press(m_current, *p_event);
    }
}

void TzProgramView::mouseMoveEvent(QMouseEvent* p_event)
{
    if (p_event->buttons() == Qt::NoButton) {
        // The release went elsewhere.
        finishDrag();
    }
    if (!m_drag.isHeld()) {
        QGraphicsView::mouseMoveEvent(p_event);
        return;
    }
    if (m_drag.move(*p_event) && m_current != mainBlock()) {
        emit mouseSignal(m_drag.isOut() ? MouseDragsOut : MouseDragsInside);
    }
}

void TzProgramView::mouseReleaseEvent(QMouseEvent* p_event)
{
    const BlockDrag::End end = m_drag.release(*p_event);
    if (end == BlockDrag::End::Outside) {
        OnDelItem();
    } else if (end == BlockDrag::End::Settled) {
        noteSettled();
    }
    QGraphicsView::mouseReleaseEvent(p_event);
    emit mouseSignal(MouseDone);
    m_clipboard.showFrame();
}

void TzProgramView::keyPressEvent(QKeyEvent* p_event)
{
    QGraphicsView::keyPressEvent(p_event);
    if (p_event->key() == Qt::Key_Delete) {
        OnDelItem();
        return;
    }
    static const QHash<int, void (*)(TzProgramView&)> s_commands = {
        {Qt::Key_C, [](TzProgramView& p_view) { p_view.OnCopy(); }},
        {Qt::Key_V,
         [](TzProgramView& p_view) {
             const QPoint at = p_view.viewport()->mapFromGlobal(QCursor::pos());
             p_view.m_clipboard.paste(p_view.mapToScene(at).toPoint());
         }},
        {Qt::Key_Y, [](TzProgramView& p_view) { p_view.undoStack().redo(); }},
        {Qt::Key_Z, [](TzProgramView& p_view) { p_view.undoStack().undo(); }},
    };
    const auto command = s_commands.value(p_event->key());
    if (command && p_event->modifiers() & Qt::ControlModifier) {
        finishDrag();
        command(*this);
    }
}

void TzProgramView::dragEnterEvent(QDragEnterEvent* p_event)
{
    QGraphicsView::dragEnterEvent(p_event);
    finishDrag();
    m_current = m_drop.enter(*p_event);
}

void TzProgramView::dragMoveEvent(QDragMoveEvent* p_event)
{
    QGraphicsView::dragMoveEvent(p_event);
    m_drop.move(*p_event);
}

void TzProgramView::dragLeaveEvent(QDragLeaveEvent* p_event)
{
    QGraphicsView::dragLeaveEvent(p_event);
    qCDebug(tilerLog) << "dragLeaveEvent" << p_event;
    m_drop.leave();
}

void TzProgramView::dropEvent(QDropEvent* p_event)
{
    if (!isBlockDrag(*p_event->mimeData())) {
        const QStringList paths = droppedProjects(*p_event->mimeData());
        for (const QString& path : paths) {
            emit openPathSignal(path);
        }
        return;
    }
    m_drop.drop();
    noteSettled();
    m_clipboard.showFrame();
    emit mouseSignal(MouseDropped);
    m_document.setModified(true);
    window()->setWindowModified(true);
    // Keyboard focus to the canvas, so that Delete and Undo go there.
    setFocus();
    p_event->acceptProposedAction();
}
