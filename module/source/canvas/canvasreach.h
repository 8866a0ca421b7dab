#pragma once

class QGraphicsView;

/**
 * Lets a view of blocks scroll over the whole of its scene's rectangle and, wherever they stand,
 * over its visible blocks, with room behind the last one for another and for a pop-up below. What
 * is in sight stays where it is. For the end of a change, not for each step of a drag.
 */
void updateReach(QGraphicsView& p_view);
