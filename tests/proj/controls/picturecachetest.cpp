#include "proj/controls/picturecache.h"

#include <QPainter>
#include <QTest>

namespace
{
const QString s_path = QStringLiteral(":/move_icon_160x120.png");

QImage ground()
{
    QImage image(200, 200, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    return image;
}

/** The picture at (10, 20), as it is drawn after p_prepare. */
template <class Prepare> QImage drawn(const QPixmap& p_picture, Prepare p_prepare)
{
    QImage image = ground();
    QPainter painter(&image);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    p_prepare(painter);
    drawPicture(&painter, 10, 20, p_picture);
    return image;
}
} // namespace

class PictureCacheTest : public QObject
{
    Q_OBJECT

private slots:
    void aPictureIsLoadedOnceAndSharedByAll()
    {
        QVERIFY(!picture(s_path).isNull());
        QCOMPARE(picture(s_path).cacheKey(), picture(s_path).cacheKey());
        QCOMPARE(picture(s_path).toImage(),
                 QImage(s_path).convertToFormat(picture(s_path).toImage().format()));
    }

    void whatCantBeLoadedPaintsNothing()
    {
        QVERIFY(picture(QString()).isNull());
        QVERIFY(picture(QStringLiteral(":/no such picture.png")).isNull());
        QCOMPARE(drawn(QPixmap(), [](QPainter& p_painter) { p_painter.scale(0.5, 0.5); }),
                 ground());
    }

    void atItsOwnSizeAPictureIsDrawnAsItIs()
    {
        QImage expected = ground();
        QPainter(&expected).drawPixmap(17, 23, picture(s_path));
        QCOMPARE(drawn(picture(s_path), [](QPainter& p_painter) { p_painter.translate(7, 3); }),
                 expected);
    }

    void aScaledPictureIsScaledAtOnceAndDrawnInWholePixels()
    {
        const QPixmap whole = picture(s_path);
        const QPixmap half = whole.scaled(whole.width() / 2, whole.height() / 2,
                                          Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        QImage expected = ground();
        QPainter(&expected).drawPixmap(8, 13, half);
        // The origin lies at 3.3, so the corner at 8.3, and at 13.3.
        QCOMPARE(drawn(whole,
                       [](QPainter& p_painter) {
                           p_painter.translate(3.3, 3.3);
                           p_painter.scale(0.5, 0.5);
                       }),
                 expected);
        QImage other = ground();
        QPainter(&other).drawPixmap(6, 12, half);
        QVERIFY(drawn(whole, [](QPainter& p_painter) { p_painter.scale(0.6, 0.6); }) != other);
    }

    void thePainterIsLeftAsItWas()
    {
        QImage image = ground();
        QPainter painter(&image);
        painter.scale(0.7, 0.7);
        painter.translate(5, 6);
        const QTransform before = painter.worldTransform();
        drawPicture(&painter, 1, 2, picture(s_path));
        QCOMPARE(painter.worldTransform(), before);
    }

    void turnedOrUnevenlyScaledPicturesAreLeftToThePainter()
    {
        const auto turn = [](QPainter& p_painter) {
            p_painter.rotate(10);
            p_painter.scale(0.5, 0.5);
        };
        QImage expected = ground();
        {
            QPainter painter(&expected);
            painter.setRenderHint(QPainter::SmoothPixmapTransform);
            turn(painter);
            painter.drawPixmap(10, 20, picture(s_path));
        }
        QCOMPARE(drawn(picture(s_path), turn), expected);
    }
};

QTEST_MAIN(PictureCacheTest)
#include "picturecachetest.moc"
