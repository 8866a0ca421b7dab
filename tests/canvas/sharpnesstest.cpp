#include "document/tzprogramscene.h"
#include "modules/graphicsitem_param.h"
#include "modules/mainmodule.h"
#include "modules/supermodule.h"
#include "support/canvas/canvasfixture.h"
#include "support/system/datatable.h"

#include <QAbstractButton>
#include <QtTest>

#include <functional>

namespace
{
using Canvas = CanvasFixture;
/** Makes what is looked at. */
using Prepare = std::function<QGraphicsItem*(Canvas&)>;

supermodule* added(Canvas& p_canvas, int p_id)
{
    return p_canvas.dropBehind(p_canvas.main(), p_id);
}

/** What the view shows in pixels of a device that has some for each of the view's. */
QImage shown(QWidget& p_view, int p_ratio)
{
    QImage image(p_view.size() * p_ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(p_ratio);
    p_view.render(&image);
    image.setDevicePixelRatio(1);
    return image;
}

/** How many pixels the edge takes that a line from a point to an x crosses. */
double edgeWidth(const QImage& p_image, const QPoint& p_from, int p_to)
{
    int lightest = 0;
    int darkest = 255;
    int steepest = 1;
    for (int x = p_from.x(); x < p_to; ++x) {
        const int grey = qGray(p_image.pixel(x, p_from.y()));
        const int next = qGray(p_image.pixel(x + 1, p_from.y()));
        lightest = qMax(lightest, qMax(grey, next));
        darkest = qMin(darkest, qMin(grey, next));
        steepest = qMax(steepest, qAbs(grey - next));
    }
    return double(lightest - darkest) / steepest;
}
} // namespace

Q_DECLARE_METATYPE(Prepare)

/** On a canvas that is zoomed in, and on a fine screen, the edges of all pictures are sharp. */
class SharpnessTest : public QObject
{
    Q_OBJECT

private slots:
    void edgesAreSharp_data()
    {
        // From there to the right, across one edge.
        columns<Prepare, QPointF, int>("prepare", "from", "length");
        const auto row = [](const char* p_name, const Prepare& p_prepare, const QPointF& p_from,
                            int p_length) {
            QTest::newRow(p_name) << p_prepare << p_from << p_length;
        };
        const auto block = [](int p_id) {
            return [p_id](Canvas& p_canvas) -> QGraphicsItem* { return added(p_canvas, p_id); };
        };
        // Where nothing is linked its corners are round.
        const auto loose = [](int p_id) {
            return [p_id](Canvas& p_canvas) -> QGraphicsItem* {
                supermodule* made = p_canvas.drop(p_id, QPointF(600, 400));
                made->setOpacity(1);
                return made;
            };
        };
        const auto widget = [](int p_id) {
            return [p_id](Canvas& p_canvas) -> QGraphicsItem* {
                supermodule* made = added(p_canvas, p_id);
                made->button(0);
                return made;
            };
        };
        const auto framed = [](int p_id) {
            return [p_id](Canvas& p_canvas) -> QGraphicsItem* {
                supermodule* made = added(p_canvas, p_id);
                made->setSelectTree(true);
                return made;
            };
        };
        const auto popUp = [](int p_id) {
            return [p_id](Canvas& p_canvas) -> QGraphicsItem* {
                supermodule* made = added(p_canvas, p_id);
                made->button(0)->click();
                return graphicsItem_Param::existing();
            };
        };
        const auto logo = [](Canvas& p_canvas) -> QGraphicsItem* {
            return &static_cast<tzprogramscene*>(p_canvas.view.scene())->logo();
        };
        row("pictogram", block(105), QPointF(16, 53), 20);
        row("sign in the middle", block(100), QPointF(30, 45), 15);
        row("corner of a body", loose(105), QPointF(-6, 8), 14);
        row("loop's bracket", block(301), QPointF(-6, -12), 14);
        row("drawer", block(100), QPointF(14, 131), 20);
        row("drawer's arrow", block(100), QPointF(50, 119), 9);
        row("drawer's widget", widget(100), QPointF(14, 131), 20);
        row("arrow of a drawer's widget", widget(100), QPointF(50, 119), 9);
        row("number field", block(101), QPointF(14, 131), 20);
        row("number field's widget", widget(101), QPointF(14, 131), 20);
        row("frame of a copied block", framed(105), QPointF(-3, 8), 13);
        row("frame of a copied loop", framed(301), QPointF(-6, -13), 14);
        row("pop-up", popUp(100), QPointF(-6, 14), 12);
        row("pop-up's button", popUp(100), QPointF(74, 24), 12);
        row("pop-up's sign", popUp(100), QPointF(20, 42), 15);
        row("logo", logo, QPointF(10, 180), 15);
    }

    void edgesAreSharp()
    {
        QFETCH(Prepare, prepare);
        QFETCH(QPointF, from);
        QFETCH(int, length);
        CanvasFixture canvas;
        TzProgramView& view = canvas.view;
        view.setBackgroundBrush(Qt::white);
        const QGraphicsItem* item = prepare(canvas);
        QCoreApplication::processEvents();
        // Zoom, and pixels of the device for each of the view's.
        const QVector<QPair<double, int>> scales{{1.5, 1}, {1.8, 1}, {2.0, 1}, {1.0, 2}};
        for (const auto& scale : scales) {
            view.resetMatrix();
            view.scale(scale.first, scale.first);
            view.centerOn(item->scenePos() + from);
            const QPointF at = scale.second * view.viewportTransform().map(item->scenePos() + from);
            const int end = static_cast<int>(at.x() + scale.second * scale.first * length);
            const double width =
                edgeWidth(shown(*view.viewport(), scale.second), at.toPoint(), end);
            QVERIFY2(
                1 <= width && width <= 2,
                qPrintable(
                    QStringLiteral("%1 at %2 x %3").arg(width).arg(scale.first).arg(scale.second)));
        }
    }
};

QTEST_MAIN(SharpnessTest)
#include "sharpnesstest.moc"
