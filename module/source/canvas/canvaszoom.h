#pragma once

class QGraphicsView;
class QRectF;

/**
 * How much smaller the canvas is drawn on a narrow screen, by the screen's available width in
 * pixels: 1.0 from 1920 on, 0.5 below 1280, in proportion between.
 */
double screenScale(int p_width);

/** What a zoom keeps in sight: the head of the block last pressed, else of the start block. */
QRectF zoomCentre();

/** The user's zoom: 0.5 to 2.0 in exact tenths, on top of what the screen asks for. */
class CanvasZoom
{
public:
    /** The user's factor, 1.0 at first. */
    double factor() const { return m_factor; }
    /** Goes back to 1.0. */
    void reset() { m_factor = 1.0; }
    /**
     * Goes |p_scale| tenths up or down. False at a limit: the factor is stored then, but the
     * picture is to stay as it was.
     */
    bool step(int p_scale);
    /** Draws a view by the factor and base(). */
    void applyTo(QGraphicsView& p_view) const;
    /** The same, with a scene rectangle left where it is seen and, where that's outside, shown. */
    void applyAround(const QRectF& p_kept, QGraphicsView& p_view) const;

    /** What the screen asks for, as a summand: screenScale() - 1; 0 before measureScreen(). */
    static double base();
    /** Takes base() from the primary screen. */
    static void measureScreen();

private:
    double m_factor = 1.0;
};
