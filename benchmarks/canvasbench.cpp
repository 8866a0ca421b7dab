#include "canvasbench.h"

#include "document/tzprogramscene.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "project/projectfile.h"
#include "support/canvas/canvasfixture.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <malloc.h>

namespace
{
const QPoint s_mainAt(100, 500);
const int s_newBlock = 103;

size_t bytesInUse()
{
    const struct mallinfo2 heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}
} // namespace

CanvasBench::CanvasBench()
    : m_path(m_folder.filePath(QStringLiteral("program.tlrx"))), m_stage(&m_view, m_view.viewport())
{
    m_view.setWindowTitle(QStringLiteral("canvas[*]"));
    m_view.resize(1920, 1080);
    m_view.show();
    // The scale of a screen that is 1920 wide.
    m_view.resetMatrix();
    m_stage.paint();
}

bool CanvasBench::setUp(const Shape& p_shape, int p_blocks)
{
    m_blocks = p_blocks;
    m_view.newProgram();
    m_view.resetDocument();
    m_view.mainBlock()->setPos(s_mainAt);
    const bool built = buildShape(p_shape, p_blocks, m_view.mainBlock()) &&
                       m_view.saveFile(m_path, QByteArray(ProjectTailSize, '\0'));
    m_stage.paint();
    return built;
}

void CanvasBench::openProgram()
{
    if (m_view.openFile(m_path) != ProjectOpened) {
        qFatal("The program could not be opened.");
    }
}

Samples CanvasBench::open(int p_runs)
{
    Samples samples;
    for (int i = 0; i < p_runs; ++i) {
        m_view.newProgram();
        m_view.resetDocument();
        m_stage.paint();
        m_stage.takePainted(samples, [this] { openProgram(); });
    }
    return samples;
}

Samples CanvasBench::clear(int p_runs)
{
    Samples samples;
    for (int i = 0; i < p_runs; ++i) {
        openProgram();
        m_stage.paint();
        m_stage.takePainted(samples, [this] {
            m_view.newProgram();
            m_view.resetDocument();
        });
    }
    return samples;
}

Samples CanvasBench::save(int p_runs)
{
    openProgram();
    const QByteArray tail(ProjectTailSize, '\0');
    Samples samples;
    for (int i = 0; i < p_runs; ++i) {
        samples.take([&] {
            if (!m_view.saveFile(m_path, tail)) {
                qFatal("The program could not be saved.");
            }
        });
    }
    return samples;
}

Samples CanvasBench::generate(int p_runs)
{
    openProgram();
    Samples samples;
    for (int i = 0; i < p_runs; ++i) {
        samples.take([this] { m_view.generateProjectCode(1); });
    }
    return samples;
}

Samples CanvasBench::drag(int p_steps)
{
    openProgram();
    m_view.centerOn(s_mainAt);
    m_stage.paint();
    const QPoint from =
        m_view.mapFromScene(m_view.mainBlock()->next()->scenePos()) + QPoint(40, 60);
    const auto send = [this](QEvent::Type p_type, const QPoint& p_at) {
        QMouseEvent event(p_type, p_at, m_view.viewport()->mapToGlobal(p_at), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_view.viewport(), &event);
    };
    send(QEvent::MouseButtonPress, from);
    m_stage.paint();
    Samples samples;
    for (int i = 0; i < p_steps; ++i) {
        // Down and to the side, and back again to where the gap opens.
        const int way = 20 - qAbs(20 - (i + 1) % 40);
        m_stage.takePainted(samples,
                            [&] { send(QEvent::MouseMove, from + QPoint(8 * way, 5 * way)); });
    }
    send(QEvent::MouseButtonRelease, from);
    m_stage.paint();
    return samples;
}

void CanvasBench::putMiddleInSight()
{
    openProgram();
    const supermodule* middle = m_view.mainBlock();
    for (int i = 0; i < m_blocks / 2 && middle->next(); ++i) {
        middle = middle->next();
    }
    const QPointF centre(2000, 500);
    m_view.mainBlock()->moveBy(centre.x() - middle->x(), 0);
    m_view.mainBlock()->updateTree();
    m_view.centerOn(centre);
    m_stage.paint();
}

QPoint CanvasBench::middleLink() const
{
    // The hand holds a block by the middle of its top edge.
    return m_view.viewport()->rect().center() + QPoint(70, 10);
}

void CanvasBench::sendDrag(const QPoint& p_at, bool p_first)
{
    if (p_first) {
        m_payload.reset(blockDrag(s_newBlock));
        QDragEnterEvent enter(p_at, Qt::CopyAction | Qt::MoveAction, m_payload.get(),
                              Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_view.viewport(), &enter);
    }
    QDragMoveEvent move(p_at, Qt::CopyAction | Qt::MoveAction, m_payload.get(), Qt::LeftButton,
                        Qt::NoModifier);
    QApplication::sendEvent(m_view.viewport(), &move);
}

Samples CanvasBench::drop(int p_runs)
{
    putMiddleInSight();
    Samples samples;
    for (int i = 0; i < p_runs; ++i) {
        sendDrag(middleLink(), true);
        m_stage.paint();
        m_stage.takePainted(samples, [this] {
            QDropEvent drop(middleLink(), Qt::CopyAction | Qt::MoveAction, m_payload.get(),
                            Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(m_view.viewport(), &drop);
        });
        if (!m_view.currentModule()->parentModule()) {
            qFatal("The block was not linked.");
        }
    }
    return samples;
}

Samples CanvasBench::paletteDrag(int p_steps)
{
    putMiddleInSight();
    Samples samples;
    sendDrag(middleLink() + QPoint(-600, 300), true);
    for (int i = 0; i < p_steps; ++i) {
        // In from below and along the chain, where one gap closes and the next opens.
        const QPoint at(-600 + 12 * (i % 100), qMax(0, 300 - 15 * (i % 100)));
        m_stage.takePainted(samples, [&] { sendDrag(middleLink() + at, false); });
    }
    QDragLeaveEvent leave;
    QApplication::sendEvent(m_view.viewport(), &leave);
    m_stage.paint();
    return samples;
}

Samples CanvasBench::scroll(int p_steps)
{
    openProgram();
    m_view.centerOn(s_mainAt);
    m_stage.paint();
    const QPoint at(400, m_view.viewport()->height() - 50);
    Samples samples;
    for (int i = 0; i < p_steps; ++i) {
        const int turn = i % 80 < 40 ? 120 : -120;
        m_stage.takePainted(samples, [&] {
            QWheelEvent event(at, m_view.viewport()->mapToGlobal(at), QPoint(), QPoint(0, turn),
                              Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(m_view.viewport(), &event);
        });
    }
    return samples;
}

Samples CanvasBench::zoom(int p_steps)
{
    openProgram();
    m_view.centerOn(s_mainAt);
    Samples samples;
    for (int i = 0; i < p_steps; ++i) {
        m_stage.takePainted(samples, [&] { m_view.zoomView(i % 8 < 4 ? 1 : -1); });
    }
    m_view.zoomView(0);
    m_view.resetMatrix();
    m_stage.paint();
    return samples;
}

double CanvasBench::bytesPerBlock()
{
    m_view.newProgram();
    m_view.resetDocument();
    m_stage.paint();
    const size_t before = bytesInUse();
    openProgram();
    m_stage.paint();
    return (static_cast<double>(bytesInUse()) - static_cast<double>(before)) / m_blocks;
}
