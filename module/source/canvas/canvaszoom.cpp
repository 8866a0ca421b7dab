#include "canvas/canvaszoom.h"

#include "modules/documentstate.h"
#include "modules/supermodule.h"

#include <QGraphicsView>
#include <QGuiApplication>
#include <QScreen>
#include <QScrollBar>

namespace
{
const double s_smallest = 0.5;
const double s_largest = 2.0;

/** The body of a block, the part of a loop to be kept in sight. */
const QSizeF s_head(140, 140);
/** Around what is brought into sight, in pixels. */
const int s_margin = 20;

double s_base = 0.0;
} // namespace

double screenScale(int p_width)
{
    if (p_width >= 1920) {
        return 1.0;
    }
    if (p_width < 1280) {
        return 0.5;
    }
    return qBound(0.5, (p_width - 1280) * 0.5 / 640 + 0.5, 1.0);
}

QRectF zoomCentre()
{
    const supermodule* pressed = pressedModule;
    const supermodule* block = pressed && pressed->isVisible() ? pressed : firstVisibleRoot();
    return block ? QRectF(block->scenePos(), block->boundingRect().size().boundedTo(s_head))
                 : QRectF();
}

bool CanvasZoom::step(int p_scale)
{
    // Held to exact tenths: sums of 0.1 in binary drift away from them.
    const double factor = qRound((m_factor + p_scale * 0.1) * 10) / 10.0;
    m_factor = qBound(s_smallest, factor, s_largest);
    return s_smallest < factor && factor < s_largest;
}

void CanvasZoom::applyTo(QGraphicsView& p_view) const
{
    const QMatrix before = p_view.matrix();
    p_view.resetMatrix();
    p_view.translate(before.dx(), before.dy());
    p_view.scale(m_factor + s_base, m_factor + s_base);
}

void CanvasZoom::applyAround(const QRectF& p_kept, QGraphicsView& p_view) const
{
    const QPoint before = p_view.mapFromScene(p_kept.center());
    applyTo(p_view);
    const QPoint way = p_view.mapFromScene(p_kept.center()) - before;
    p_view.horizontalScrollBar()->setValue(p_view.horizontalScrollBar()->value() + way.x());
    p_view.verticalScrollBar()->setValue(p_view.verticalScrollBar()->value() + way.y());
    p_view.ensureVisible(p_kept, s_margin, s_margin);
}

double CanvasZoom::base() { return s_base; }

void CanvasZoom::measureScreen()
{
    s_base = screenScale(QGuiApplication::primaryScreen()->availableSize().width()) - 1.0;
}
