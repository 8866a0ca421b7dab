#include "modules/catalogue/blocktables.h"
#include "modules/documentstate.h"
#include "modules/graphicsitem_param.h"
#include "modules/mainmodule.h"
#include "proj/panelbase.h"
#include "proj/tzblockwidget.h"
#include "proj/tzlabel.h"
#include "randomuser.h"
#include "shell/tztoolbar.h"
#include "support/canvas/blockdata.h"
#include "support/canvas/canvasfixture.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <QUrl>
#include <QWheelEvent>

namespace
{
QString place(const QPoint& p_at) { return QStringLiteral("(%1, %2)").arg(p_at.x()).arg(p_at.y()); }

QString nameOf(const supermodule* p_block)
{
    return QStringLiteral("block %1 key %2").arg(p_block->id).arg(p_block->registryKey());
}
} // namespace

supermodule* RandomUser::someBlock(QPoint* p_point)
{
    QList<supermodule*> near;
    const QRect seen = m_view.viewport()->rect();
    const QList<supermodule*> all = blocks();
    for (supermodule* block : all) {
        const QPoint corner = m_view.mapFromScene(block->scenePos() + QPointF(20, 20));
        if (block->isVisible() && seen.contains(corner)) {
            near.append(block);
        }
    }
    if (near.isEmpty()) {
        return nullptr;
    }
    supermodule* block = near.at(below(near.size()));
    *p_point = m_view.mapFromScene(block->scenePos() + QPointF(2 + below(100), 2 + below(95)));
    return block;
}

QPoint RandomUser::somePoint()
{
    const QSize size = m_view.viewport()->size();
    return QPoint(below(size.width()), below(size.height()));
}

QPoint RandomUser::someTarget()
{
    QPoint at;
    const supermodule* block = below(4) == 0 ? nullptr : someBlock(&at);
    if (!block) {
        // Sometimes out of the canvas at the bottom, where blocks are thrown away.
        return somePoint() + QPoint(0, below(6) == 0 ? 200 : 0);
    }
    const collisionItem* connector = block->connector(below(3) == 0 ? LeftLink : NextLink);
    if (!connector) {
        return at;
    }
    return m_view.mapFromScene(connector->scenePos() + QPointF(below(80) - 10, below(60) - 30));
}

void RandomUser::mouse(QEvent::Type p_type, const QPoint& p_at, Qt::MouseButton p_button)
{
    m_mouse = p_at;
    if (p_type == QEvent::MouseButtonPress) {
        QTest::mousePress(m_view.viewport(), p_button, Qt::NoModifier, p_at);
    } else if (p_type == QEvent::MouseButtonRelease) {
        QTest::mouseRelease(m_view.viewport(), p_button, Qt::NoModifier, p_at);
    } else {
        QMouseEvent event(p_type, p_at, m_view.viewport()->mapToGlobal(p_at), p_button,
                          Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_view.viewport(), &event);
    }
}

void RandomUser::drag(const QPoint& p_from, const QPoint& p_to)
{
    const int steps = 1 + below(4);
    for (int step = 1; step <= steps; ++step) {
        mouse(QEvent::MouseMove, p_from + (p_to - p_from) * step / steps, Qt::NoButton);
    }
}

void RandomUser::dropFromPalette()
{
    const QVector<BlockRecord>& records = blockRecords();
    // Loops more often than others: what they do is harder.
    const int id = below(3) == 0 ? loopTypes().at(below(loopTypes().size()))
                                 : records.at(1 + below(records.size() - 1)).id;
    const QPoint to = someTarget();
    const bool drops = below(8) != 0;
    note(QStringLiteral("%1 %2 from the palette at %3")
             .arg(drops ? QStringLiteral("drop") : QStringLiteral("drag and leave with"))
             .arg(id)
             .arg(place(to)));
    const std::unique_ptr<QMimeData> data(blockDrag(id));
    QWidget* viewport = m_view.viewport();
    const QPoint from = somePoint();
    QDragEnterEvent enter(from, Qt::CopyAction | Qt::MoveAction, data.get(), Qt::LeftButton,
                          Qt::NoModifier);
    QApplication::sendEvent(viewport, &enter);
    const int steps = 1 + below(4);
    for (int step = 1; step <= steps; ++step) {
        QDragMoveEvent move(from + (to - from) * step / steps, Qt::CopyAction | Qt::MoveAction,
                            data.get(), Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(viewport, &move);
    }
    if (drops) {
        QDropEvent drop(to, Qt::CopyAction | Qt::MoveAction, data.get(), Qt::LeftButton,
                        Qt::NoModifier);
        QApplication::sendEvent(viewport, &drop);
    } else {
        QDragLeaveEvent leave;
        QApplication::sendEvent(viewport, &leave);
    }
}

void RandomUser::dragBlock()
{
    beginDrag();
    if (m_held && below(4) == 0) {
        dragOn();
    }
    if (m_held) {
        release();
    }
}

void RandomUser::beginDrag()
{
    QPoint from;
    const supermodule* block = someBlock(&from);
    if (!block) {
        from = somePoint();
    }
    const QPoint to = someTarget();
    note(QStringLiteral("drag %1 from %2 to %3")
             .arg(block ? nameOf(block) : QStringLiteral("the canvas"), place(from), place(to)));
    mouse(QEvent::MouseButtonPress, from, Qt::LeftButton);
    m_held = true;
    drag(from, to);
}

void RandomUser::dragOn()
{
    const QPoint to = someTarget();
    note(QStringLiteral("  drag on to ") + place(to));
    drag(m_mouse, to);
}

void RandomUser::release()
{
    note(QStringLiteral("  release"));
    mouse(QEvent::MouseButtonRelease, m_mouse, Qt::LeftButton);
    m_held = false;
}

void RandomUser::moveFreely()
{
    m_mouse = someTarget();
    QMouseEvent move(QEvent::MouseMove, m_mouse, m_view.viewport()->mapToGlobal(m_mouse),
                     Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(m_view.viewport(), &move);
}

void RandomUser::loseRelease()
{
    m_held = false;
    if (below(2) == 0) {
        note(QStringLiteral("  the window is left"));
        QEvent left(QEvent::WindowDeactivate);
        QApplication::sendEvent(&m_window, &left);
        QEvent back(QEvent::WindowActivate);
        QApplication::sendEvent(&m_window, &back);
    } else {
        note(QStringLiteral("  the release goes elsewhere"));
        moveFreely();
    }
}

void RandomUser::meetDialog()
{
    m_held = false;
    if (below(2) == 0) {
        note(QStringLiteral("  a box comes by itself"));
        QMessageBox::information(&m_window, QString(), QStringLiteral("a notice"));
    } else {
        const bool opens = below(2) == 0;
        note(opens ? QStringLiteral("  Ctrl+O") : QStringLiteral("  Ctrl+S"));
        QTest::keyClick(&m_window, opens ? Qt::Key_O : Qt::Key_S, Qt::ControlModifier);
    }
    moveFreely();
}

void RandomUser::dragFarOut()
{
    const QPoint to(below(9000) - 4500, -below(4500));
    note(QStringLiteral("  drag far out to ") + place(to));
    drag(m_mouse, to);
    // Seldom left there: what is far is met by few of the other actions.
    if (below(3) != 0) {
        dragOn();
    }
}

void RandomUser::clickBlock()
{
    QPoint at;
    if (const supermodule* block = someBlock(&at)) {
        note(QStringLiteral("click %1 at %2").arg(nameOf(block), place(at)));
        mouse(QEvent::MouseButtonPress, at, Qt::LeftButton);
        mouse(QEvent::MouseButtonRelease, at, Qt::LeftButton);
    }
}

void RandomUser::clickButtonOnBlock()
{
    QPoint at;
    supermodule* block = someBlock(&at);
    if (!block) {
        return;
    }
    const int buttons = block->buttonCount();
    if (buttons == 0) {
        return;
    }
    at = m_view.mapFromScene(block->mapToScene(block->buttonRect(below(buttons)).center()));
    note(QStringLiteral("click a button of %1 at %2").arg(nameOf(block), place(at)));
    mouse(QEvent::MouseButtonPress, at, Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, at, Qt::LeftButton);
}

void RandomUser::clickGround()
{
    const QPoint at = somePoint();
    note(QStringLiteral("click at ") + place(at));
    mouse(QEvent::MouseButtonPress, at, Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, at, Qt::LeftButton);
}

void RandomUser::doubleClick()
{
    QPoint at = somePoint();
    someBlock(&at);
    note(QStringLiteral("double click at ") + place(at));
    QTest::mouseDClick(m_view.viewport(), Qt::LeftButton, Qt::NoModifier, at);
}

void RandomUser::choose()
{
    const PanelBase* panel = m_window.blockWidget()->panel();
    if (!panel || !m_window.blockWidget()->isChoosing()) {
        clickButtonOnBlock();
        return;
    }
    const QList<QPushButton*> buttons = panel->findChildren<QPushButton*>();
    for (int i = below(3); i >= 0 && !buttons.isEmpty(); --i) {
        const int button = below(buttons.size());
        note(QStringLiteral("press key %1 of the chooser").arg(button));
        QTest::mouseClick(buttons.at(button), Qt::LeftButton);
    }
}

void RandomUser::pressOnPopUp()
{
    const graphicsItem_Param* popUp = graphicsItem_Param::existing();
    if (!popUp || !popUp->isVisible() || popUp->buttons().isEmpty()) {
        clickButtonOnBlock();
        return;
    }
    const int button = below(popUp->buttons().size());
    const QPoint at =
        m_view.mapFromScene(popUp->childItems().at(button)->sceneBoundingRect().center());
    note(QStringLiteral("press button %1 of the pop-up at %2").arg(button).arg(place(at)));
    mouse(QEvent::MouseButtonPress, at, Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, at, Qt::LeftButton);
}

void RandomUser::clickTab()
{
    const auto& tabs = m_window.blockWidget()->folders();
    const int tab = below(tabs.size());
    note(QStringLiteral("click tab %1").arg(tab));
    QTest::mouseClick(tabs.at(tab).data(), Qt::LeftButton);
}

void RandomUser::pressKey()
{
    static const Qt::Key s_keys[] = {Qt::Key_Delete, Qt::Key_Delete, Qt::Key_Escape, Qt::Key_Return,
                                     Qt::Key_Space,  Qt::Key_Tab,    Qt::Key_Left,   Qt::Key_Right,
                                     Qt::Key_Up,     Qt::Key_Down,   Qt::Key_Home,   Qt::Key_A};
    const int key = below(int(sizeof(s_keys) / sizeof(s_keys[0])));
    note(QStringLiteral("key ") + QKeySequence(s_keys[key]).toString());
    QTest::keyClick(&m_view, s_keys[key]);
}

void RandomUser::typeNumber()
{
    static const Qt::Key s_keys[] = {Qt::Key_0,      Qt::Key_1,     Qt::Key_5,        Qt::Key_9,
                                     Qt::Key_Period, Qt::Key_Minus, Qt::Key_Backspace};
    for (int i = below(4); i >= 0; --i) {
        const int key = below(int(sizeof(s_keys) / sizeof(s_keys[0])));
        note(QStringLiteral("key ") + QKeySequence(s_keys[key]).toString());
        QTest::keyClick(&m_view, s_keys[key]);
    }
}

void RandomUser::undoOrRedo()
{
    const bool undo = below(3) != 0;
    for (int i = below(3); i >= 0; --i) {
        note(undo ? QStringLiteral("undo") : QStringLiteral("redo"));
        QTest::keyClick(&m_view, undo ? Qt::Key_Z : Qt::Key_Y, Qt::ControlModifier);
    }
}

void RandomUser::copyOrPaste()
{
    if (below(2) == 0) {
        if (!m_held) {
            clickBlock();
        }
        note(QStringLiteral("copy"));
        QTest::keyClick(&m_view, Qt::Key_C, Qt::ControlModifier);
        return;
    }
    const QPoint at = m_held ? m_mouse : somePoint();
    note(QStringLiteral("paste at ") + place(at));
    QCursor::setPos(m_view.viewport()->mapToGlobal(at));
    QTest::keyClick(&m_view, Qt::Key_V, Qt::ControlModifier);
}

void RandomUser::openContextMenu()
{
    QPoint at = m_held ? m_mouse : somePoint();
    if (!m_held && below(4) != 0) {
        someBlock(&at);
    }
    note(QStringLiteral("right press at ") + place(at));
    mouse(QEvent::MouseButtonPress, at, Qt::RightButton);
    // The menu takes the mouse, and with it the releases.
    m_held = false;
}

void RandomUser::answerMenu()
{
    if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
        answerMenu(*menu);
    } else {
        QApplication::activePopupWidget()->close();
    }
}

void RandomUser::clickToolButton()
{
    const QList<QPushButton*> buttons = m_window.toolBar()->findChildren<QPushButton*>();
    const int button = below(buttons.size());
    note(QStringLiteral("tool button %1").arg(button));
    // A button with a menu runs it on the press.
    QTest::mouseClick(buttons.at(button), Qt::LeftButton);
}

void RandomUser::typeName()
{
    note(QStringLiteral("type a name"));
    auto* edit = m_window.toolBar()->findChild<QLineEdit*>();
    QTest::mouseClick(edit, Qt::LeftButton);
    QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keyClick(edit, static_cast<Qt::Key>(Qt::Key_A + below(26)));
}

void RandomUser::turnWheel()
{
    const QPoint at = somePoint();
    const int delta = below(2) == 0 ? 120 : -120;
    note(QStringLiteral("wheel %1 at %2").arg(delta).arg(place(at)));
    QWheelEvent event(at, m_view.viewport()->mapToGlobal(at), QPoint(), QPoint(0, delta),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(m_view.viewport(), &event);
}

void RandomUser::resizeWindow()
{
    const QSize size(600 + below(700), 400 + below(400));
    note(QStringLiteral("resize to %1 by %2").arg(size.width()).arg(size.height()));
    m_window.resize(size);
}

void RandomUser::switchSlot()
{
    // Back to the main program more often than not: there is nothing in the others.
    const int slot = below(3) == 0 ? FirstSubProgramId + below(30) : 0;
    note(QStringLiteral("switch to slot %1").arg(slot));
    emit m_window.toolBar()->switchSubProgram(slot);
}

void RandomUser::deleteSlot()
{
    note(QStringLiteral("delete the slot"));
    m_window.toolBar()->OnDeleteSub();
}

void RandomUser::showCode()
{
    const bool c = below(2) == 0;
    note(c ? QStringLiteral("show C") : QStringLiteral("show Python"));
    if (c) {
        m_window.toolBar()->OnShowCode();
    } else {
        m_window.toolBar()->OnShowPythonCode();
    }
}

void RandomUser::dropProject()
{
    // A copy, for it may be saved.
    static const QStringList s_projects = {
        QStringLiteral("examples/bumper"),
        QStringLiteral("examples/zigzag"),
        QStringLiteral("tests/golden/loose"),
        QStringLiteral("tests/golden/nested"),
        QStringLiteral("tests/golden/sensors"),
        QStringLiteral("tests/fuzz/corpus/project/nested-loops"),
        QStringLiteral("tests/fuzz/corpus/project/other-slots"),
        QStringLiteral("tests/fuzz/corpus/project/right-branch"),
    };
    const QString ending = QStringLiteral(".tlrx");
    const QString& project = s_projects.at(below(s_projects.size()));
    const QString path = QDir(m_folder).filePath(QFileInfo(project).fileName() + ending);
    QFile::copy(QDir(QStringLiteral(PROJECTS_DIR)).filePath(project + ending), path);
    note(QStringLiteral("drop the project ") + project);
    m_replaced = true;
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    const QPoint at = somePoint();
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_view.viewport(), &enter);
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_view.viewport(), &drop);
}

void RandomUser::saveByKey()
{
    note(QStringLiteral("save"));
    m_replaced = true;
    m_window.OnSaveFile();
}

void RandomUser::takeClipboard()
{
    note(QStringLiteral("copy a text elsewhere"));
    QGuiApplication::clipboard()->setText(QStringLiteral("text"));
}

void RandomUser::closeWindow()
{
    note(QStringLiteral("close the window"));
    m_window.close();
    m_window.show();
}

void RandomUser::startAnew()
{
    note(QStringLiteral("new project"));
    m_replaced = true;
    m_window.OnNewFile();
}
