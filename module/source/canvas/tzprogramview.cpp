#include "canvas/tzprogramview.h"

#include "base/recentfiles.h"
#include "base/tilerlog.h"
#include "canvas/movedregion.h"
#include "generator/codegenerator.h"
#include "modules/catalogue/dragpayload.h"
#include "modules/catalogue/mousestate.h"
#include "modules/documentstate.h"
#include "modules/feedbackmodule.h"
#include "modules/graphicsitem_param.h"
#include "modules/mainmodule.h"
#include "proj/controls/selectablebutton.h"
#include "project/projectfile.h"

#include <QApplication>
#include <QDebug>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QScreen>
#include <QScrollBar>
#include <QUrl>
#include <QWheelEvent>
#include <QtMath>

QPointer<TzProgramView> programView;

namespace
{
const QRectF s_sceneRect(0, 0, 10000, 10000);
/** Height of the strip at the lower edge where the wheel scrolls sideways, and of its free end. */
const int s_wheelStrip = 100;
const int s_wheelStripMilliseconds = 1000;
/** How far right of a block's left edge a press on it may be, exclusive. */
const qreal s_reach = 400;
const qreal s_sameCoordinate = 1e-12;

double s_zoomBase = 0.0;
} // namespace

TzProgramView::TzProgramView(Document& p_document, QWidget* p_parent)
    : QGraphicsView(p_parent),
      m_document(p_document),
      m_preview(p_document.scene(), p_document.mainBlock()),
      m_drag(p_document, m_preview),
      m_paletteDrag(p_document.scene(), m_preview),
      m_clipboard(p_document),
      m_backgroundPicture(QStringLiteral(":/bg 1186x674.png"))
{
    setAcceptDrops(true);
    setDragMode(ScrollHandDrag);
    setAttribute(Qt::WA_TranslucentBackground);
    scaleBackground(Qt::KeepAspectRatioByExpanding);
    setStyleSheet(QStringLiteral("QGraphicsView{border:0px;}"));
    setAutoFillBackground(true);
    // Blocks are drawn smaller than their pictures on most screens.
    setRenderHint(QPainter::SmoothPixmapTransform);
    setUpScene();
    s_zoomBase = screenScale(QGuiApplication::primaryScreen()->availableSize().width()) - 1.0;
    zoomView(0);
    addAction(undoStack().createUndoAction(this, QString()));
    addAction(undoStack().createRedoAction(this, QString()));
    programView = this;
    setModuleHost(this);
    readRecentFiles(recentFilesPath());
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setUpWheelStrip();
    connect(&m_document, &Document::changed, this, &TzProgramView::onDocumentChanged);
}

TzProgramView::~TzProgramView()
{
    writeRecentFiles(recentFilesPath());
    setModuleHost(nullptr);
}

void TzProgramView::setUpScene()
{
    m_document.scene().setSceneRect(s_sceneRect);
    setScene(&m_document.scene());
    connect(&m_document.scene(), &tzprogramscene::addModuleSignal, this, &TzProgramView::addModule);
    centreLogo();
    const int blockHeight = static_cast<int>(mainBlock()->boundingRect().height());
    mainBlock()->setPos(mapToScene(50, viewport()->height() / 2 - blockHeight / 2).toPoint());
}

void TzProgramView::setUpWheelStrip()
{
    m_wheelReactArea = new QWidget(this);
    m_wheelReactArea->setStyleSheet(QStringLiteral(
        "QWidget {border: none; background: rgba(0,0,0, 10%); border-radius: 10px;}"));
    m_wheelReactArea->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_wheelReactArea->hide();
    m_wheelReactTimer.setSingleShot(true);
    connect(&m_wheelReactTimer, &QTimer::timeout, this, &TzProgramView::onWheelReactAreaHide);
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
            if (graphicsItem_Param* popUp = graphicsItem_Param::existing()) {
                popUp->setVisible(false);
            }
        }
        break;
    case DocumentChange::SlotShown:
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

double TzProgramView::zoomBase() { return s_zoomBase; }

void TzProgramView::scaleBackground(Qt::AspectRatioMode p_mode)
{
    QPalette colours = palette();
    colours.setBrush(backgroundRole(), QBrush(m_backgroundPicture.scaled(
                                           viewport()->size(), p_mode, Qt::SmoothTransformation)));
    setPalette(colours);
}

void TzProgramView::centreLogo()
{
    QGraphicsPixmapItem& logo = m_document.scene().logo();
    logo.setPos(mapToScene(viewport()->rect().center()) - logo.boundingRect().center());
}

bool TzProgramView::viewportEvent(QEvent* p_event)
{
    const bool result = QGraphicsView::viewportEvent(p_event);
    if (scene()) {
        centreLogo();
    }
    return result;
}

void TzProgramView::paintEvent(QPaintEvent* p_event)
{
    // The view leaves out items whose rectangles lie outside the region. Blocks are painted beyond
    // theirs, so it is told of a wider one; what is painted there is clipped away.
    const QMarginsF out = blockOverhang();
    const auto widened = [this](qreal p_units) { return qCeil(p_units * transform().m11()); };
    const QMargins reach(widened(out.right()), widened(out.bottom()), widened(out.left()),
                         widened(out.top()));
    QRegion region;
    for (const QRect& part : p_event->region()) {
        region += part + reach;
    }
    QPaintEvent wider(region);
    QGraphicsView::paintEvent(&wider);
}

void TzProgramView::resizeEvent(QResizeEvent* p_event)
{
    QGraphicsView::resizeEvent(p_event);
    // Meant: unlike at the start, where the picture fills the whole view; the design says so.
    scaleBackground(Qt::KeepAspectRatio);
}

void TzProgramView::zoomView(int scale)
{
    if (scale == 0) {
        m_zoom.reset();
        applyZoom();
        centerOn(mainBlock());
    } else if (m_zoom.step(scale)) {
        applyZoom();
    }
}

void TzProgramView::applyZoom()
{
    const QMatrix before = matrix();
    resetMatrix();
    translate(before.dx(), before.dy());
    scale(m_zoom.factor() + s_zoomBase, m_zoom.factor() + s_zoomBase);
}

void TzProgramView::wheelEvent(QWheelEvent* p_event)
{
    const QPoint at = p_event->position().toPoint();
    const QSize size = viewport()->size();
    const QRect strip(0, size.height() - s_wheelStrip, size.width() - s_wheelStrip, s_wheelStrip);
    if (at.y() < strip.top() || at.x() >= strip.width()) {
        QGraphicsView::wheelEvent(p_event);
        return;
    }
    const double delta = p_event->delta();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + static_cast<int>(delta * 0.4));
    m_wheelReactArea->setGeometry(strip);
    m_wheelReactArea->show();
    m_wheelReactTimer.start(s_wheelStripMilliseconds);
    p_event->accept();
}

QString TzProgramView::generateVisibleCode(int type) const { return ::generateVisibleCode(type); }

QString TzProgramView::generateProjectCode(int type) const { return ::generateProjectCode(type); }

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
                              tr("否")) == 0) {
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

void TzProgramView::deleteModule(supermodule* p_module)
{
    if (!p_module || p_module == mainBlock()) {
        return;
    }
    m_preview.hide();
    const ModulePlace place = m_drag.placeForUndo(p_module);
    m_drag.forget();
    m_document.deleteModule(p_module, place);
}

bool TzProgramView::moduleDrop(supermodule* p_module, supermodule* p_target, int p_type)
{
    const LinkCandidate place =
        p_target ? LinkCandidate{p_target, p_type, 0} : LinkCandidate(m_preview.place());
    if (!place.m_target) {
        return false;
    }
    linkAt(place.m_target, place.m_type, p_module);
    return true;
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

void TzProgramView::OnSelectNumberSignal(int n)
{
    if (focusModule) {
        focusModule->setNumberKey(n);
    }
}

void TzProgramView::onEditParamSignal(int p_paramId, int p_value)
{
    if (focusModule) {
        focusModule->setPanelValue(p_paramId, p_value);
    }
}

void TzProgramView::raiseNumKeyboard(uint32_t p_numberOption)
{
    emit showNumKeyboardSignal(p_numberOption);
}

void TzProgramView::raiseVoice(int p_map) { emit showVoiceSignal(p_map); }

void TzProgramView::raiseExpression(int p_map) { emit showExpressionSignal(p_map); }

void TzProgramView::raisePanel(int p_panelType, int p_paramId)
{
    emit showPanelSignal(p_panelType, p_paramId);
}

supermodule* TzProgramView::moduleAt(const QList<QGraphicsItem*>& p_items, qreal p_sceneX) const
{
    // Of nested blocks the innermost starts furthest right.
    supermodule* found = nullptr;
    qreal nearest = s_reach;
    for (QGraphicsItem* item : p_items) {
        supermodule* module = supermodule::seenAs(item);
        if (module && !module->isPreview() && p_sceneX - module->scenePos().x() < nearest) {
            nearest = p_sceneX - module->scenePos().x();
            found = module;
        }
    }
    return found;
}

void TzProgramView::finishDrag()
{
    if (m_drag.cancel() == BlockDrag::End::Settled) {
        emit moduleUpdateSignal();
    }
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
    m_pressPos = p_event->localPos();
    QList<QGraphicsItem*> items =
        scene()->items(scenePos, Qt::IntersectsItemShape, Qt::DescendingOrder, viewportTransform());
    // The logo is part of the background.
    items.removeOne(&m_document.scene().logo());
    m_current = moduleAt(items, scenePos.x());
    if (items.isEmpty() && !supermodule::isOnConnector(scenePos)) {
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
    m_drag.press(m_current, scenePos);
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
    const bool onBlock = m_current && m_current != mainBlock();
    const bool canPaste = BlockClipboard::hasBlocks();
    qCDebug(tilerLog) << "canPaste " << canPaste;
    m_menu.offer(onBlock, canPaste);
    // The menu's event loop takes the release event, so a drag that began here would never end.
    m_drag.forget();
    m_menu.popup(p_globalPos);
}

bool TzProgramView::lowerEdgeIsOut(const supermodule* p_module) const
{
    return mapFromScene(p_module->sceneBoundingRect().bottomLeft()).y() > viewport()->height();
}

void TzProgramView::mouseMoveEvent(QMouseEvent* p_event)
{
    if (!m_drag.isHeld()) {
        QGraphicsView::mouseMoveEvent(p_event);
        return;
    }
    bool moved = false;
    {
        const MovedRegion region(*this);
        moved = m_drag.move(mapToScene(p_event->pos()));
    }
    if (moved && m_current != mainBlock()) {
        emit mouseSignal(lowerEdgeIsOut(m_current) ? MouseDragsOut : MouseDragsInside);
    }
}

void TzProgramView::mouseReleaseEvent(QMouseEvent* p_event)
{
    const QPointF way = p_event->localPos() - m_pressPos;
    const bool away = qAbs(way.x()) > s_sameCoordinate || qAbs(way.y()) > s_sameCoordinate;
    BlockDrag::End end = BlockDrag::End::Nothing;
    {
        MovedRegion region(*this);
        end = m_drag.release(m_current && lowerEdgeIsOut(m_current), away);
        region.coverLoopsAround(m_current);
    }
    switch (end) {
    case BlockDrag::End::Outside:
        OnDelItem();
        break;
    case BlockDrag::End::Settled:
        emit moduleUpdateSignal();
        break;
    case BlockDrag::End::Nothing:
        break;
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
    } else if (p_event->modifiers() & Qt::ControlModifier) {
        finishDrag();
        switch (p_event->key()) {
        case Qt::Key_V:
            m_clipboard.paste(mapToScene(viewport()->mapFromGlobal(QCursor::pos())).toPoint());
            break;
        case Qt::Key_C:
            OnCopy();
            break;
        case Qt::Key_Y:
            undoStack().redo();
            break;
        case Qt::Key_Z:
            undoStack().undo();
            break;
        default:
            break;
        }
    }
}

void TzProgramView::dragEnterEvent(QDragEnterEvent* p_event)
{
    QGraphicsView::dragEnterEvent(p_event);
    finishDrag();
    m_paletteDrag.leave();
    int id = 0;
    if (readBlockDrag(p_event->mimeData(), id)) {
        m_current = m_paletteDrag.enter(id);
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
    if (const supermodule* incoming = m_paletteDrag.module()) {
        // The cursor holds the middle of the block's top edge.
        const int width = static_cast<int>(incoming->boundingRect().width());
        const MovedRegion region(*this);
        m_paletteDrag.move(
            mapToScene(p_event->pos().x() - width / 2, p_event->pos().y()).toPoint());
    }
}

void TzProgramView::dragLeaveEvent(QDragLeaveEvent* p_event)
{
    QGraphicsView::dragLeaveEvent(p_event);
    qCDebug(tilerLog) << "dragLeaveEvent" << p_event;
    {
        const MovedRegion region(*this);
        m_preview.hide();
    }
    m_paletteDrag.leave();
}

void TzProgramView::dropEvent(QDropEvent* p_event)
{
    if (!p_event->mimeData()->hasFormat(QLatin1String(blockMimeType()))) {
        openDropped(p_event->mimeData());
        return;
    }
    {
        MovedRegion region(*this);
        region.coverLoopsAround(m_paletteDrag.drop());
    }
    emit moduleUpdateSignal();
    m_clipboard.showFrame();
    emit mouseSignal(MouseDropped);
    m_document.setModified(true);
    window()->setWindowModified(true);
    // Keyboard focus to the canvas, so that Delete and Undo go there.
    setFocus();
    p_event->acceptProposedAction();
}

void TzProgramView::openDropped(const QMimeData* p_data)
{
    const QList<QUrl> urls = p_data->urls();
    for (const QUrl& url : urls) {
        if (url.fileName().right(5) != QLatin1String(".tlrx")) {
            break;
        }
        emit openPathSignal(url.toLocalFile());
    }
}
