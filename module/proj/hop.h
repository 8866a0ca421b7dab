#pragma once

class QWidget;

/**
 * Lets a widget hop up and back, twice, within half a second: it wants to be dragged there. Another
 * hop begins anew from the widget's own place.
 */
void hop(QWidget& p_widget);
/** Puts a widget back to its place, if it hops. To be called before it gets another one. */
void endHop(QWidget& p_widget);
