#include "proj/tzblockwidget.h"

#include "modules/catalogue/blocktables.h"
#include "modules/catalogue/mousestate.h"
#include "modules/chooser.h"
#include "proj/binoverlay.h"
#include "proj/blockpanel.h"
#include "proj/iconspanel.h"
#include "proj/numberspanel.h"
#include "proj/palettebar.h"
#include "proj/scale.h"
#include "proj/textspanel.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QResizeEvent>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace
{
// The room that the scroll area's horizontal bar takes.
const int s_scrollBarHeight = 16;

TabGeometry currentTabGeometry()
{
    return tabGeometryFor(QGuiApplication::primaryScreen()->availableSize());
}

QMap<int, QStringList> entriesOf(ChooserKind p_kind)
{
    QMap<int, QStringList> entries;
    const QMap<int, const Chooser*> choosers = allChoosers(p_kind);
    for (auto it = choosers.cbegin(); it != choosers.cend(); ++it) {
        entries.insert(it.key(), it.value()->allEntries());
    }
    return entries;
}
} // namespace

TabGeometry tabGeometryFor(const QSize& p_available)
{
    return {scale(p_available.width(), 1280, 1920, 90, 180),
            scale(p_available.height(), 768, 1080, 32, 64),
            scale(p_available.height(), 768, 1080, 5, 10)};
}

TzBlockWidget::TzBlockWidget(QWidget* p_central, QWidget* p_parent)
    : QWidget(p_parent),
      m_central(p_central),
      m_currentCategory(categoryRecords().first().categoryId),
      m_overlay(new BinOverlay(this)),
      m_scrollArea(new QScrollArea(this)),
      m_topBar(new PaletteBar(this)),
      m_lastMouseType(MouseUnknown)
{
    blockRecords();
    setAutoFillBackground(true);
    createFolders();

    m_overlay->setGeometry(0, 0, width(), height());
    m_overlay->hide();

    auto* layout = new QVBoxLayout(this);
    layout->setMargin(0);
    layout->setSpacing(0);
    layout->addWidget(m_topBar);
    colourBar(m_currentCategory);

    m_scrollArea->setFrameShape(QFrame::NoFrame);
    // No keyboard focus for the strip: keys stay with the canvas.
    m_scrollArea->setFocusPolicy(Qt::NoFocus);
    m_scrollArea->installEventFilter(this);
    m_scrollArea->setStyleSheet(QStringLiteral(
        "QScrollBar:vertical {border: none; background: rgb(189,229,238);width: 16px;}"
        "QScrollBar::handle:vertical {background: rgb(0,152,179);min-height: 80px; border:none;}"
        "QScrollBar:horizontal  {border: none; background: rgb(189,229,238);height: 16px;}"
        "QScrollBar::handle:horizontal  {background: rgb(0,152,179);min-width: 80px; "
        "border:none;}"));
    layout->addWidget(m_scrollArea);
    m_overlay->raise();
    showBlocks();
    setStyleSheet(QStringLiteral("background-color:transparent;"));
}

TzBlockWidget::~TzBlockWidget()
{
    for (const QPointer<tzlabel>& folder : qAsConst(m_folders)) {
        delete folder.data();
    }
}

const QMap<int, QStringList>& TzBlockWidget::voicePictures()
{
    static const QMap<int, QStringList> s_pictures = entriesOf(ChooserKind::Sounds);
    return s_pictures;
}

const QMap<int, QStringList>& TzBlockWidget::expressionPictures()
{
    static const QMap<int, QStringList> s_pictures = entriesOf(ChooserKind::Symbols);
    return s_pictures;
}

void TzBlockWidget::createFolders()
{
    const TabGeometry tab = currentTabGeometry();
    for (const CategoryRecord& record : categoryRecords()) {
        auto* folder = new tzlabel(record.caption, m_central, Qt::WindowFlags());
        folder->setToolTip(record.caption);
        folder->setGeometry((tab.width + tab.spacing) * m_folders.size() + 6, 0, tab.width,
                            tab.height);
        folder->setImagePath(record.normalImage);
        folder->setCategoryId(record.categoryId);
        folder->raise();
        connect(folder, &tzlabel::released, this, &TzBlockWidget::onFolderRelease);
        m_folders.append(folder);
    }
    m_currentFolder = m_folders.first();
    m_currentFolder->setActive(true);
    m_currentFolder->setImagePath(categoryRecords().first().selectedImage);
}

void TzBlockWidget::placeFolders()
{
    if (!m_central || !m_central->isAncestorOf(this)) {
        return;
    }
    const TabGeometry tab = currentTabGeometry();
    const int top = mapTo(m_central, QPoint(0, 0)).y();
    int x = 6;
    for (const QPointer<tzlabel>& folder : qAsConst(m_folders)) {
        if (folder) {
            folder->setGeometry(x, top - tab.height, tab.width, tab.height);
            folder->raise();
        }
        x += tab.width + tab.spacing;
    }
}

void TzBlockWidget::colourBar(int p_category)
{
    for (const CategoryRecord& record : categoryRecords()) {
        if (record.categoryId == p_category) {
            m_topBar->setColour(record.barColour);
            return;
        }
    }
}

void TzBlockWidget::removePanel()
{
    // One of the panel's own buttons may have sent the signal in hand, so it can't be deleted yet.
    if (QWidget* old = m_scrollArea->takeWidget()) {
        old->hide();
        old->setParent(this);
        old->deleteLater();
    }
    m_panel = nullptr;
}

void TzBlockWidget::showBlocks()
{
    m_choosing = false;
    removePanel();
    m_panel = new BlockPanel(m_currentCategory, m_scrollArea);
    connect(m_panel, &PanelBase::updateViewSignal, this, &TzBlockWidget::updateViewSignal);
    m_panel->setPanelHeight(m_scrollArea->height() - s_scrollBarHeight);
    m_scrollArea->setWidget(m_panel);
    update();
}

void TzBlockWidget::showChooser(RowPanel* p_panel, void (TzBlockWidget::*p_receiver)(int))
{
    m_choosing = true;
    removePanel();
    m_panel = p_panel;
    if (p_panel) {
        connect(p_panel, &RowPanel::SelectNumberSignal, this, p_receiver);
        connect(p_panel, &PanelBase::updateViewSignal, this, &TzBlockWidget::updateViewSignal);
        m_scrollArea->setWidget(p_panel);
        p_panel->setPanelHeight(m_scrollArea->viewport()->height() - s_scrollBarHeight);
    }
    update();
}

void TzBlockWidget::OnShowNumKeyboardSignal(uint32_t p_numberOption)
{
    showChooser(new NumbersPanel(p_numberOption, m_scrollArea), &TzBlockWidget::SelectNumberSignal);
}

void TzBlockWidget::showIcons(ChooserKind p_kind, int p_number)
{
    const Chooser* chooser = findChooser(p_kind, p_number);
    showChooser(chooser ? new IconsPanel(chooser->allEntries(), chooser->styleSheet(), m_scrollArea)
                        : new IconsPanel({}, QString(), m_scrollArea),
                &TzBlockWidget::SelectNumberSignal);
}

void TzBlockWidget::OnShowVoiceSignal(int n) { showIcons(ChooserKind::Sounds, n); }

void TzBlockWidget::OnShowExpressionSignal(int n) { showIcons(ChooserKind::Symbols, n); }

void TzBlockWidget::onShowPanelSignal(int p_panelType, int p_paramId)
{
    m_panelParamId = p_paramId;
    if (const Chooser* chooser = findChooser(ChooserKind::Panel, p_panelType)) {
        showChooser(new TextsPanel(chooser->allEntries(), chooser->styleSheet(), m_scrollArea),
                    chooser->byParameter ? &TzBlockWidget::onServoIdParamEdited
                                         : &TzBlockWidget::SelectNumberSignal);
    } else {
        showChooser(nullptr, nullptr);
    }
}

void TzBlockWidget::onServoIdParamEdited(int p_Index)
{
    emit editParamSignal(m_panelParamId, p_Index);
}

void TzBlockWidget::onFolderRelease()
{
    const int index = m_folders.indexOf(qobject_cast<tzlabel*>(sender()));
    if (index < 0) {
        return;
    }
    const CategoryRecord& record = categoryRecords().at(index);
    colourBar(record.categoryId);
    m_currentCategory = record.categoryId;
    showBlocks();
    if (m_currentFolder) {
        m_currentFolder->setActive(false);
        m_currentFolder->setImagePath(
            categoryRecords().at(m_folders.indexOf(m_currentFolder)).normalImage);
    }
    m_currentFolder = m_folders.at(index);
    m_currentFolder->setActive(true);
    m_currentFolder->setImagePath(record.selectedImage);
    update();
    emit updateViewSignal();
}

void TzBlockWidget::endDrag(int p_dragIntoBin)
{
    m_overlay->hide();
    m_dragIntoBin = p_dragIntoBin;
}

void TzBlockWidget::OnProgramMouse(int p_type)
{
    if (p_type == m_lastMouseType) {
        return;
    }
    m_lastMouseType = p_type;
    switch (p_type) {
    case MousePressedItem:
        endDrag(0);
        break;
    case MouseDragsInside:
        m_overlay->setImagePath(QStringLiteral(":/close.png"));
        m_overlay->show();
        m_overlay->raise();
        break;
    case MouseDone:
        endDrag(0);
        m_lastMouseType = MouseUnknown;
        break;
    case MouseDragsOut:
        m_overlay->setImagePath(QStringLiteral(":/open.png"));
        break;
    case MouseDropped:
        endDrag(1);
        break;
    case MousePressedEmpty:
        if (m_choosing) {
            showBlocks();
        }
        break;
    default:
        break;
    }
}

void TzBlockWidget::moveEvent(QMoveEvent* p_event)
{
    QWidget::moveEvent(p_event);
    placeFolders();
}

void TzBlockWidget::resizeEvent(QResizeEvent* p_event)
{
    QWidget::resizeEvent(p_event);
    m_overlay->resize(width() + 1, height() + 1);
    placeFolders();
}

bool TzBlockWidget::eventFilter(QObject* p_watched, QEvent* p_event)
{
    if (p_watched == m_scrollArea && p_event->type() == QEvent::Resize) {
        if (m_panel) {
            const int height = static_cast<QResizeEvent*>(p_event)->size().height();
            m_panel->setPanelHeight(height - s_scrollBarHeight);
        }
    } else if (p_watched == m_scrollArea && p_event->type() == QEvent::Wheel) {
        const QPoint turned = static_cast<QWheelEvent*>(p_event)->angleDelta();
        const int delta = turned.y() != 0 ? turned.y() : turned.x();
        QScrollBar* bar = m_scrollArea->horizontalScrollBar();
        bar->setValue(bar->value() + static_cast<int>(delta * -0.4));
        return true;
    }
    return QWidget::eventFilter(p_watched, p_event);
}

void TzBlockWidget::paintEvent(QPaintEvent*)
{
    const QColor ground(m_choosing ? QStringLiteral("#ebf6ff") : QStringLiteral("#043c66"));
    QPainter painter(this);
    painter.setPen(ground);
    painter.setBrush(ground);
    painter.drawRect(rect());
}
