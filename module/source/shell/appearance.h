#pragma once

/**
 * Gives the application its own look, the same under any desktop: icon, one style, a light palette,
 * and a sheet for what has none of its own (message boxes, file dialogs, tool tips, arrows of
 * scroll bars). The environment and the desktop's theme change nothing of it. To be called once,
 * behind the application and before its first widget.
 */
void setUpAppearance();
