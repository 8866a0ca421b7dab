#pragma once

#include <QString>

// The style sheets that several parts of the program share.

/**
 * A rule for the plain and one for the pressed state, with a picture each on a transparent
 * ground, p_gap blanks between them. p_extra stands at the end of both rules, such as
 * "color:white;".
 */
QString twoPictureStyle(const QString& p_normal, const QString& p_pressed, int p_gap,
                        const QString& p_extra = QString(),
                        const QString& p_property = QStringLiteral("border-image"));

/**
 * A style sheet for a button with a picture each for its plain, its hovered and its pressed state,
 * as resource paths. The text colour is one that style sheets understand.
 */
QString buttonStyleSheet(const QString& p_normal, const QString& p_hover, const QString& p_pressed,
                         const QString& p_textColour);

/** The style sheet that the program's drop-down and context menus share. */
QString menuStyleSheet();

/** Of tool tips: for the application, and below a sheet that would colour them like its widgets. */
QString toolTipStyleSheet();
