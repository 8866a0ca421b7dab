#include "proj/palettebar.h"

#include "proj/controls/hoverlight.h"
#include "proj/controls/widgethelper.h"

#include <QMouseEvent>
#include <QPainter>
#include <QSplitter>

namespace
{
const int s_height = 24;
const QSize s_gripStroke(36, 3);
/** From one stroke's upper edge to the next one's. */
const int s_gripStep = 7;
/** From here on a ground asks for dark strokes. */
const int s_brightGround = 150;
} // namespace

PaletteBar::PaletteBar(QWidget* p_palette) : QWidget(p_palette), m_palette(p_palette)
{
    setMinimumHeight(s_height);
    setMaximumHeight(s_height);
    setCursor(Qt::SplitVCursor);
    new HoverLight(this);
}

void PaletteBar::setColour(const QString& p_colour)
{
    setStyleSheet(QStringLiteral("background-color:%1").arg(p_colour));
    m_grip = qGray(QColor(p_colour).rgb()) > s_brightGround ? QColor(0x4a, 0x28, 0x00)
                                                            : QColor(Qt::white);
}

void PaletteBar::paintEvent(QPaintEvent*)
{
    paintStyle(*this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_grip);
    QRect stroke(QPoint((width() - s_gripStroke.width()) / 2,
                        (height() - s_gripStep - s_gripStroke.height()) / 2),
                 s_gripStroke);
    const qreal radius = s_gripStroke.height() / 2.0;
    painter.drawRoundedRect(stroke, radius, radius);
    painter.drawRoundedRect(stroke.translated(0, s_gripStep), radius, radius);
}

void PaletteBar::mousePressEvent(QMouseEvent* p_event)
{
    const int lowerEdge = m_palette->mapToGlobal(QPoint(0, m_palette->height())).y();
    m_above = lowerEdge - p_event->globalPos().y() - m_palette->height();
}

void PaletteBar::mouseMoveEvent(QMouseEvent* p_event)
{
    auto* splitter = qobject_cast<QSplitter*>(m_palette->parentWidget());
    const int index = splitter ? splitter->indexOf(m_palette) : -1;
    if (index < 1 || !(p_event->buttons() & Qt::LeftButton)) {
        return;
    }
    const int lowerEdge = m_palette->mapToGlobal(QPoint(0, m_palette->height())).y();
    const int wanted =
        qBound(m_palette->minimumHeight(), lowerEdge - p_event->globalPos().y() - m_above,
               m_palette->maximumHeight());
    QList<int> sizes = splitter->sizes();
    sizes[index - 1] += sizes.at(index) - wanted;
    sizes[index] = wanted;
    splitter->setSizes(sizes);
}
