#include "bench.h"

#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "project/projectfile.h"
#include "support/canvas/canvasfixture.h"
#include "update/updateserver.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QGraphicsScene>
#include <QMouseEvent>
#include <QTest>
#include <QWheelEvent>

#include <algorithm>

namespace
{
const QPoint s_mainAt(100, 500);
/** Where the middle of a long chain is brought: well within the scene. */
const qreal s_middleX = 2000;
const qreal s_sceneEnd = 9000;
const int s_newBlock = 103;
const int s_halfWidth = 60;
} // namespace

Bench::Bench()
{
    // Nobody listens there.
    setUpdateServer(QStringLiteral("https://127.0.0.1:1"));
    if (QGuiApplication::platformName() == QLatin1String("offscreen")) {
        m_window.resize(1920, 1080);
        m_window.show();
    } else {
        m_window.showMaximized();
    }
    if (!QTest::qWaitForWindowExposed(&m_window)) {
        qFatal("The window doesn't show.");
    }
    // The window manager makes it as large as the screen in steps of its own, and the first check
    // for updates comes and goes.
    QTest::qWait(300);
    view().viewport()->installEventFilter(this);
    paint();
}

Bench::~Bench()
{
    documentModified = false;
    view().viewport()->removeEventFilter(this);
}

bool Bench::eventFilter(QObject*, QEvent* p_event)
{
    if (p_event->type() == QEvent::Paint) {
        ++m_paints;
    }
    return false;
}

void Bench::paint()
{
    // Changes are gathered first; the window system asks for the picture some time later, and
    // isn't waited for here.
    QApplication::processEvents();
    QEvent request(QEvent::UpdateRequest);
    QApplication::sendEvent(&m_window, &request);
}

void Bench::clear()
{
    documentModified = false;
    m_window.OnNewFile();
    paint();
}

QString Bench::write(const Shape& p_shape, int p_blocks)
{
    clear();
    view().mainBlock()->setPos(s_mainAt);
    const QString path =
        m_folder.filePath(QStringLiteral("%1-%2.tlrx").arg(p_shape.name).arg(p_blocks));
    const bool written = buildShape(p_shape, p_blocks, view().mainBlock()) &&
                         view().saveFile(path, QByteArray(ProjectTailSize, '\0'));
    clear();
    return written ? path : QString();
}

void Bench::open(const QString& p_path)
{
    documentModified = false;
    m_window.openPath(p_path);
    if (m_window.fileName() != p_path) {
        qFatal("The program could not be opened.");
    }
    paint();
}

void Bench::zoomTo(double p_factor)
{
    view().zoomView(0);
    const int steps = qRound((p_factor - 1.0) * 10);
    for (int i = 0; i < qAbs(steps); ++i) {
        view().zoomView(steps > 0 ? 1 : -1);
    }
    paint();
}

supermodule* Bench::showHead()
{
    supermodule* head = view().mainBlock()->next();
    view().centerOn(head->scenePos());
    paint();
    return head;
}

int Bench::chainLength(const supermodule* p_first)
{
    int length = 0;
    for (; p_first; p_first = p_first->next()) {
        ++length;
    }
    return length;
}

supermodule* Bench::showMiddle()
{
    QList<supermodule*> heads;
    const QList<QGraphicsItem*> items = view().scene()->items();
    for (QGraphicsItem* item : items) {
        supermodule* module = supermodule::fromItem(item);
        if (module && module->isVisible() && !module->parentModule()) {
            heads.append(module);
        }
    }
    std::sort(heads.begin(), heads.end(),
              [](const supermodule* p_a, const supermodule* p_b) { return p_a->y() < p_b->y(); });
    supermodule* middle = heads.at(heads.size() / 2);
    if (middle == view().mainBlock()) {
        middle = middle->next();
    }
    const int steps = chainLength(middle) / 2;
    for (int i = 0; i < steps; ++i) {
        middle = middle->next();
    }
    if (middle->x() > s_sceneEnd) {
        supermodule* root = middle->rootOf();
        root->moveBy(s_middleX - middle->x(), 0);
        root->updateTree();
    }
    view().centerOn(middle->scenePos());
    paint();
    return middle;
}

QPoint Bench::at(const supermodule* p_module, const QPointF& p_point)
{
    return view().mapFromScene(p_module->scenePos() + p_point);
}

void Bench::sendMouse(QEvent::Type p_type, const QPoint& p_at, Qt::MouseButton p_button,
                      Qt::MouseButtons p_buttons)
{
    QWidget* viewport = view().viewport();
    QMouseEvent event(p_type, p_at, viewport->mapToGlobal(p_at), p_button, p_buttons,
                      Qt::NoModifier);
    QApplication::sendEvent(viewport, &event);
}

void Bench::press(const QPoint& p_at)
{
    sendMouse(QEvent::MouseButtonPress, p_at, Qt::LeftButton, Qt::LeftButton);
}

void Bench::move(const QPoint& p_at, Qt::MouseButtons p_buttons)
{
    sendMouse(QEvent::MouseMove, p_at, Qt::NoButton, p_buttons);
}

void Bench::release(const QPoint& p_at)
{
    sendMouse(QEvent::MouseButtonRelease, p_at, Qt::LeftButton, Qt::NoButton);
}

void Bench::key(int p_key, Qt::KeyboardModifiers p_modifiers)
{
    QKeyEvent event(QEvent::KeyPress, p_key, p_modifiers);
    QApplication::sendEvent(&view(), &event);
}

void Bench::wheel(const QPoint& p_at, int p_turn)
{
    QWidget* viewport = view().viewport();
    QWheelEvent event(p_at, viewport->mapToGlobal(p_at), QPoint(), QPoint(0, p_turn), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(viewport, &event);
}

void Bench::dragIn(const QPoint& p_at)
{
    m_payload.reset(blockDrag(s_newBlock));
    QDragEnterEvent enter(p_at, Qt::CopyAction | Qt::MoveAction, m_payload.get(), Qt::LeftButton,
                          Qt::NoModifier);
    QApplication::sendEvent(view().viewport(), &enter);
}

void Bench::dragOn(const QPoint& p_at)
{
    QDragMoveEvent move(p_at, Qt::CopyAction | Qt::MoveAction, m_payload.get(), Qt::LeftButton,
                        Qt::NoModifier);
    QApplication::sendEvent(view().viewport(), &move);
}

void Bench::dragOut()
{
    QDragLeaveEvent leave;
    QApplication::sendEvent(view().viewport(), &leave);
}

void Bench::drop(const QPoint& p_at)
{
    QDropEvent event(p_at, Qt::CopyAction | Qt::MoveAction, m_payload.get(), Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(view().viewport(), &event);
}

QPoint Bench::holdBehind(const supermodule* p_module)
{
    // The hand holds a block by the middle of its top edge.
    return at(p_module, QPointF(20, 10)) + QPoint(s_halfWidth, 0);
}
