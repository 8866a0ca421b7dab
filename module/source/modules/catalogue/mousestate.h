#pragma once

/** Mouse states that the canvas signals to the palette. */
enum MouseState : int {
    MouseUnknown = -1,
    MousePressedItem = 0,
    MouseDragsInside = 1, /**< a block is dragged, its lower edge inside the view */
    MouseDone = 2,        /**< right press; every release */
    MouseDragsOut = 4,    /**< a block is dragged and would be deleted if released */
    MouseDropped = 5,     /**< a block was dropped from the palette */
    MousePressedEmpty = 6
};
