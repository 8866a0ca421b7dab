#include "modules/jointpicture.h"

#include "proj/controls/picturecache.h"

namespace
{
/** How far a round corner reaches, its rim included. */
const int s_corner = 13;
/** The body of a block; the picture of its selection frame goes on below for drawers. */
const int s_bodyHeight = 120;
/** How far the right edge lies before the end of the tab, which is that of the picture. */
const int s_behindEdge = 18;
/** The same for the edge of a loop's last leg to which its body's tab goes. */
const int s_behindLastLeg = 60;
/** Beside the corners, in a variant. */
const int s_mouthShift = 8;

void fillCorners(QImage& p_image, int p_fine, int p_variant)
{
    const int mouth = p_variant >> s_mouthShift;
    const int height = mouth > 0 ? p_image.height() : s_bodyHeight * p_fine;
    const int right = p_image.width() - s_behindEdge * p_fine;
    const struct {
        BodyCorner corner;
        QPoint at;
        int across; /**< 1 where the body lies right of the corner, -1 left of it */
        int down;
    } corners[] = {
        {TopLeftCorner, {0, 0}, 1, 1},
        {BottomLeftCorner, {0, height}, 1, -1},
        {TopRightCorner, {right, 0}, -1, 1},
        {BottomRightCorner, {right, height}, -1, -1},
        {FirstLegCorner, {mouth * p_fine, height}, -1, -1},
        {LastLegCorner, {p_image.width() - s_behindLastLeg * p_fine, height}, 1, -1},
    };
    // The rim and the colour, from an edge inwards, as they are where the upper edge is plain.
    const int side = s_corner * p_fine;
    QVector<QColor> edge;
    for (int i = 0; i < side; ++i) {
        edge.append(p_image.pixelColor(p_image.width() / 2, i));
    }
    for (const auto& each : corners) {
        if (!(p_variant & each.corner)) {
            continue;
        }
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                p_image.setPixelColor(each.at.x() + (each.across > 0 ? x : -1 - x),
                                      each.at.y() + (each.down > 0 ? y : -1 - y),
                                      edge.at(qMin(x, y)));
            }
        }
    }
}
} // namespace

QPixmap jointPicture(const QString& p_path, BodyCorners p_filled, int p_mouth)
{
    const int filled = p_filled;
    return pictureVariant(p_path, filled ? filled | p_mouth << s_mouthShift : 0, fillCorners);
}
