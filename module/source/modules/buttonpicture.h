#pragma once

class QPainter;
struct ButtonSpec;

/**
 * Paints what the widget of a button shows at rest, its upper left corner at the painter's origin.
 * The pictures are cached by look, text and scale, and are as sharp as the widget itself: pixel by
 * pixel the same at a scale of 1.
 */
void paintButton(QPainter* p_painter, const ButtonSpec& p_spec);
