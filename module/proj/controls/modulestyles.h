#pragma once

#include <QString>

/** The style sheets that buttons on blocks and in the pop-up share. */

/**
 * A rule for the plain and one for the pressed state, with a picture each on a transparent
 * ground, p_gap blanks between them. p_extra stands at the end of both rules, such as
 * "color:white;".
 */
QString twoPictureStyle(const QString& p_normal, const QString& p_pressed, int p_gap,
                        const QString& p_extra = QString(),
                        const QString& p_property = QStringLiteral("border-image"));
