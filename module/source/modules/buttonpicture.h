#pragma once

class QPainter;
struct ButtonSpec;

/**
 * Paints what the widget of a button shows at rest, its upper left corner at the painter's origin.
 * The pictures are kept, for each look, text and scale one, and come out as sharp as the widget
 * itself: pixel by pixel the same at a scale of 1.
 */
void paintButton(QPainter* p_painter, const ButtonSpec& p_spec);
