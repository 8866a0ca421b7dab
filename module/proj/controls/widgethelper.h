#pragma once

#include <QFont>

class QWidget;

// Helpers with widgets, fonts and styles that several parts of the program share. Those without
// are in commonhelper.h.

/**
 * Paints what the style, and so a style sheet, has for a plain widget: its background and border.
 * A subclass of QWidget calls it in its paintEvent(), as otherwise a style sheet has no effect.
 */
void paintStyle(QWidget& p_widget);

/**
 * Gives the whole application the style sheet in a file, plain ASCII up to the first zero byte.
 * A file that can't be read counts as empty, and takes the style sheet away.
 */
void setApplicationStyle(const QString& p_path);

/**
 * The program's Chinese font, by whichever of its two names this system knows it; the
 * application's own font where it isn't installed. Needs an application object.
 */
QFont applicationFont();
