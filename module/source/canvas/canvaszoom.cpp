#include "canvas/canvaszoom.h"

#include <QGraphicsView>
#include <QGuiApplication>
#include <QScreen>

namespace
{
const double s_smallest = 0.5;
const double s_largest = 2.0;

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

double CanvasZoom::base() { return s_base; }

void CanvasZoom::measureScreen()
{
    s_base = screenScale(QGuiApplication::primaryScreen()->availableSize().width()) - 1.0;
}
