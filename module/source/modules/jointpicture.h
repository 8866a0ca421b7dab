#pragma once

#include <QFlags>
#include <QPixmap>
#include <QString>

/** The corners of a block's body, and of the legs of a loop where its body's blocks stand. */
enum BodyCorner {
    TopLeftCorner = 1,
    BottomLeftCorner = 2,
    TopRightCorner = 4,
    BottomRightCorner = 8,
    FirstLegCorner = 16,
    LastLegCorner = 32
};
Q_DECLARE_FLAGS(BodyCorners, BodyCorner)
Q_DECLARE_OPERATORS_FOR_FLAGS(BodyCorners)

/**
 * The picture of a body or of a loop's bracket, or of the selection frame around one, with some
 * corners filled: the rim goes on straight, as it is where a block is linked to a neighbour. The
 * body of a loop, if it is one, begins at p_mouth.
 */
QPixmap jointPicture(const QString& p_path, BodyCorners p_filled, int p_mouth = 0);
