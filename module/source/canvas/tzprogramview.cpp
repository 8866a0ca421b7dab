#include "canvas/tzprogramview.h"

#include "base/commonhelper.h"
#include "base/recentfiles.h"
#include "canvas/addcommand.h"
#include "canvas/canvaszoom.h"
#include "canvas/deletecommand.h"
#include "canvas/programslots.h"
#include "canvas/tzprogramscene.h"
#include "generator/codegenerator.h"
#include "generator/usermainfile.h"
#include "modules/documentstate.h"
#include "modules/feedbackmodule.h"
#include "modules/mainmodule.h"
#include "modules/moduleregistry.h"

#include <QApplication>
#include <QMessageBox>
#include <QScreen>
#include <QScrollBar>
#include <QWheelEvent>

QPointer<TzProgramView> programView;

namespace
{
const QRectF s_sceneRect(0, 0, 10000, 10000);
/** Height of the strip at the lower edge where the wheel scrolls sideways, and of its free end. */
const int s_wheelStrip = 100;
const int s_wheelStripMilliseconds = 1000;

double s_zoomBase = 0.0;
} // namespace

TzProgramView::TzProgramView(QWidget* p_parent)
    : QGraphicsView(p_parent), m_backgroundPicture(QStringLiteral(":/bg 1186x674.png"))
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
    setUpMenu();

    programView = this;
    setModuleHost(this);
    m_feedback = new FeedbackModule;
    m_feedback->createCollisions();
    m_feedback->hide();
    m_scene->addItem(m_feedback);

    connect(QGuiApplication::clipboard(), &QClipboard::changed, this,
            &TzProgramView::OnClipboardChanged);
    readRecentFiles(recentFilesPath());

    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_wheelReactArea = new QWidget(this);
    m_wheelReactArea->setStyleSheet(QStringLiteral(
        "QWidget {border: none; background: rgba(0,0,0, 10%); border-radius: 10px;}"));
    m_wheelReactArea->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_wheelReactArea->hide();
    m_wheelReactTimer = new QTimer(this);
    m_wheelReactTimer->setSingleShot(true);
    connect(m_wheelReactTimer, &QTimer::timeout, this, &TzProgramView::onWheelReactAreaHide);
}

TzProgramView::~TzProgramView()
{
    writeRecentFiles(recentFilesPath());
    m_undoStack.clear();
    setModuleHost(nullptr);
    // The blocks die here, while all that they take leave of is still there.
    m_scene->clearItems({});
    ModuleRegistry::clear();
}

void TzProgramView::setUpScene()
{
    m_scene = new tzprogramscene(this);
    m_scene->setSceneRect(s_sceneRect);
    setScene(m_scene);
    connect(m_scene, &tzprogramscene::addModuleSignal, this, &TzProgramView::addModule);
    centreLogo();

    const QString path = QStringLiteral(":/main.png");
    m_mainModule = new mainModule(0, path, path, QCoreApplication::translate("QObject", "主程序"));
    m_mainModule->enterScene(m_scene);
    const int blockHeight = static_cast<int>(m_mainModule->boundingRect().height());
    m_mainModule->setPos(mapToScene(50, viewport()->height() / 2 - blockHeight / 2).toPoint());
    rootModules.append(m_mainModule);
    taskModules.append(m_mainModule);
    m_mainModule->moduleKey = ModuleRegistry::add(m_mainModule);
}

void TzProgramView::setUpMenu()
{
    m_actCopy = m_menu.addAction(tr("复制"), this, &TzProgramView::OnCopy, QKeySequence::Copy);
    m_actPaste = m_menu.addAction(tr("黏贴"), this, &TzProgramView::OnPaste, QKeySequence::Paste);
    m_actCopyAndPaste = m_menu.addAction(tr("复制并黏贴"), this, &TzProgramView::OnCopyAndPaste);
    m_actUndoCopy = m_menu.addAction(tr("取消复制"), this, &TzProgramView::OnUndoCopy);
    m_actDelete = m_menu.addAction(tr("删除"), this, &TzProgramView::OnDelItem);
    m_actUndo = m_undoStack.createUndoAction(this, QString());
    m_actRedo = m_undoStack.createRedoAction(this, QString());
    // A block's knob stands out of the frame that is painted when the block comes or goes.
    connect(&m_undoStack, &QUndoStack::indexChanged, m_scene, [this] { m_scene->update(); });
    addAction(m_actUndo);
    addAction(m_actRedo);
    m_menu.setStyleSheet(menuStyleSheet());
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
    QGraphicsPixmapItem& logo = m_scene->logo();
    logo.setPos(mapToScene(viewport()->rect().center()) - logo.boundingRect().center());
}

bool TzProgramView::viewportEvent(QEvent* p_event)
{
    const bool result = QGraphicsView::viewportEvent(p_event);
    if (m_scene) {
        centreLogo();
    }
    return result;
}

void TzProgramView::resizeEvent(QResizeEvent* p_event)
{
    QGraphicsView::resizeEvent(p_event);
    // Unlike at the start, where the picture fills the whole view: that is meant.
    scaleBackground(Qt::KeepAspectRatio);
}

void TzProgramView::zoomView(int scale)
{
    if (scale == 0) {
        applyZoom(1.0);
        centerOn(m_mainModule);
        return;
    }
    applyZoom(m_zoom + qAbs(scale) * 0.1 * (scale > 0 ? 1 : -1));
}

void TzProgramView::applyZoom(double p_factor)
{
    m_zoom = zoomTenths(p_factor);
    // At a limit the factor is stored but the picture stays as it was.
    if (m_zoom >= 2.0) {
        m_zoom = 2.0;
        return;
    }
    if (m_zoom <= 0.5) {
        m_zoom = 0.5;
        return;
    }
    const QMatrix before = matrix();
    resetMatrix();
    translate(before.dx(), before.dy());
    scale(m_zoom + s_zoomBase, m_zoom + s_zoomBase);
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
    m_wheelReactTimer->start(s_wheelStripMilliseconds);
    p_event->accept();
}

void TzProgramView::onWheelReactAreaHide() { m_wheelReactArea->hide(); }

QString TzProgramView::generateVisibleCode(int type) const { return ::generateVisibleCode(type); }

QString TzProgramView::generateProjectCode(int type) const { return ::generateProjectCode(type); }

void TzProgramView::OnDownload(const QString& name)
{
    // Always C, whatever language the code pane shows.
    writeUserMain(generateProjectCode(CCode));
    if (m_buildRunner) {
        m_buildRunner(name, taskModules.size() - 1);
    }
}

void TzProgramView::OnSwitchProgram(modulesId id)
{
    showProgramSlot(*m_scene, m_feedback, id);
    if (const supermodule* root = firstVisibleRoot()) {
        centerOn(root);
    }
    emit moduleUpdateSignal();
}

void TzProgramView::OnDelSub()
{
    if (m_mainModule->isVisible()) {
        QMessageBox::information(this, tr("提示"), tr("主程序不能删除"));
        return;
    }
    hideFeedback();
    if (supermodule* root = firstVisibleRoot(1)) {
        const int id = root->id;
        for (auto& entry : subProgramNames()) {
            if (entry.first == id) {
                entry.second = defaultSubProgramName(id);
            }
        }
        rootModules.removeOne(root);
        supermodule::deleteTree(root);
        const QList<supermodule*> roots = rootBlocks(*m_scene);
        for (supermodule* loose : roots) {
            if (loose->ownid == id && loose != m_feedback && loose != m_mainModule) {
                supermodule::deleteTree(loose);
            }
        }
    }
    OnSwitchProgram(m_mainModule->id);
}

void TzProgramView::updateSubProgramName(int id, const QString& name)
{
    for (auto& entry : subProgramNames()) {
        if (entry.first == id) {
            entry.second = name;
            const QList<QGraphicsItem*> items = m_scene->items();
            for (QGraphicsItem* item : items) {
                supermodule* module = supermodule::fromItem(item);
                if (module && module->id == id) {
                    module->setText(name);
                }
            }
            break;
        }
    }
    m_scene->update();
}

void TzProgramView::addModule(int x, int y, int id)
{
    m_undoStack.push(new moduleUndoCommand::addCommand(m_scene, x, y, id, nextModuleKey++));
    emit moduleUpdateSignal();
    if (m_copied) {
        m_copied->setSelectTree(true);
    }
    emit mouseSignal(MouseDropped);
}

void TzProgramView::deleteModule(supermodule* p_module)
{
    if (!p_module || p_module == m_mainModule) {
        return;
    }
    hideFeedback();
    // A block that is dragged out comes back to where it was pressed, any other to where it is.
    const ModulePlace place = p_module->m_moved ? m_pressPlace : ModulePlace::of(p_module);
    m_undoStack.push(new moduleUndoCommand::deleteCommand(this, p_module, place));
    focusModule.clear();
    m_scene->update();
}

void TzProgramView::OnDelItem() { deleteModule(m_current); }

void TzProgramView::removeModule(supermodule* p_module)
{
    if (!p_module) {
        return;
    }
    hideFeedback();
    if (supermodule* parent = p_module->parentModule()) {
        parent->removeChild(p_module);
        parent->updateTreeAndOpacity();
    }
    if (p_module == m_copied) {
        m_copied.clear();
        QGuiApplication::clipboard()->setText(QString());
    }
    supermodule::deleteTree(p_module);
    m_pressed = false;
    m_current.clear();
    emit moduleUpdateSignal();
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
