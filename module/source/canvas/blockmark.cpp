#include "canvas/blockmark.h"

#include "modules/supermodule.h"

#include <QEvent>
#include <QGraphicsView>
#include <QPainter>
#include <QScrollBar>

namespace
{
const int s_milliseconds = 2000;
/** Between the block and the edges of the view, in pixels, where there is room for that. */
const int s_margin = 40;
/** From the block to the frame's outer edge. */
const int s_around = 8;
const int s_radius = 12;
/** How far the tab stands out behind a block, in scene units. */
const int s_tab = 20;
const QColor s_frame(0, 175, 204);
} // namespace

BlockMark::BlockMark(QGraphicsView& p_view) : QWidget(p_view.viewport()), m_view(p_view)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &QWidget::hide);
    for (const QScrollBar* bar : {p_view.horizontalScrollBar(), p_view.verticalScrollBar()}) {
        connect(bar, &QScrollBar::valueChanged, this, &QWidget::hide);
        connect(bar, &QScrollBar::rangeChanged, this, &QWidget::hide);
    }
    p_view.viewport()->installEventFilter(this);
}

void BlockMark::pointAt(const supermodule& p_module)
{
    const QRectF block = p_module.sceneBoundingRect().adjusted(0, 0, s_tab, 0);
    const auto inView = [&] { return m_view.mapFromScene(block).boundingRect(); };
    if (!m_view.viewport()->rect().contains(inView())) {
        const QSize room = m_view.viewport()->size() - QSize(2 * s_margin, 2 * s_margin);
        const QSizeF most = m_view.transform().inverted().mapRect(QRectF(QPoint(), room)).size();
        m_view.ensureVisible(QRectF(block.topLeft(), block.size().boundedTo(most)), s_margin,
                             s_margin);
    }
    setGeometry(inView().marginsAdded({s_around, s_around, s_around, s_around}));
    raise();
    show();
    m_timer.start(s_milliseconds);
}

bool BlockMark::eventFilter(QObject*, QEvent* p_event)
{
    switch (p_event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::DragEnter:
    case QEvent::Resize:
        hide();
        break;
    default:
        break;
    }
    return false;
}

void BlockMark::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // The frame colour between two white lines: seen on the ground and on any block.
    const int middle = s_around / 2;
    const QRect line = rect().adjusted(middle, middle, -middle, -middle);
    for (const QPen& pen : {QPen(Qt::white, s_around), QPen(s_frame, middle)}) {
        painter.setPen(pen);
        painter.drawRoundedRect(line, s_radius, s_radius);
    }
}
