#pragma once

#include <QColor>
#include <QWidget>

/**
 * The bar over the palette in its category's colour, with a grip in the middle. Dragged up or down
 * it makes the palette higher or lower, within the palette's limits, in a splitter that has the
 * palette below another widget; anywhere else it stays as it is.
 */
class PaletteBar : public QWidget
{
    Q_OBJECT

public:
    explicit PaletteBar(QWidget* p_palette);

    /** A colour as style sheets know it. */
    void setColour(const QString& p_colour);

protected:
    void paintEvent(QPaintEvent* p_event) override;
    void mousePressEvent(QMouseEvent* p_event) override;
    void mouseMoveEvent(QMouseEvent* p_event) override;

private:
    Q_DISABLE_COPY(PaletteBar)

    QWidget* m_palette;
    QColor m_grip;
    /** From the palette's lower edge up to the mouse, less the palette's height. */
    int m_above = 0;
};
