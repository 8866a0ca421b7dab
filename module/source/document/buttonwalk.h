#pragma once

class QGraphicsScene;

/**
 * Moves the keyboard's focus in a scene to the next button, or to the previous one: buttons of
 * blocks in the order of the program, loose chains behind it, as far as the scene's view shows
 * them; those of the open pop-up follow their block's. From no button it goes to the first, or the
 * last. At the end no button keeps the focus, and false is returned.
 */
bool focusNextButton(QGraphicsScene& p_scene, bool p_next);
