#include "shell/appearance.h"
#include "windowbench.h"

#include <QLabel>

namespace
{
/** How many pixels of the screen each pixel of a window takes. */
constexpr int s_ratio = 2;

/** The part of a widget, in its own pixels, that differs from the colour at its upper left. */
QRect drawnIn(const QImage& p_image, const QRect& p_area)
{
    const QRgb ground = p_image.pixel(p_area.topLeft());
    QRect drawn;
    for (int y = p_area.top(); y <= p_area.bottom(); ++y) {
        for (int x = p_area.left(); x <= p_area.right(); ++x) {
            if (qAbs(qGray(p_image.pixel(x, y)) - qGray(ground)) > 40) {
                drawn |= QRect(x, y, 1, 1);
            }
        }
    }
    return drawn;
}

/** Whether a picture has more in it than one of half its size that was enlarged. */
bool isFine(const QImage& p_image)
{
    const QImage coarse =
        p_image.scaled(p_image.size() / 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
            .scaled(p_image.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    int sharp = 0;
    for (int y = 0; y < p_image.height(); ++y) {
        for (int x = 0; x < p_image.width(); ++x) {
            sharp += qAbs(qGray(p_image.pixel(x, y)) - qGray(coarse.pixel(x, y))) > 32 ? 1 : 0;
        }
    }
    return sharp > 20;
}
} // namespace

/** The window on a screen with two pixels for one. */
class FineScreenTest : public FixtureTest<WindowBench>
{
    Q_OBJECT

private slots:
    void init()
    {
        m_bench.emplace();
        QCOMPARE(m_bench->window.devicePixelRatio(), s_ratio);
    }

    void theToolBarsPicturesAreFine()
    {
        const QList<QPushButton*> buttons =
            m_bench->bar().findChildren<QPushButton*>(QString(), Qt::FindDirectChildrenOnly);
        QVERIFY(buttons.size() >= 7);
        const QImage window = m_bench->window.grab().toImage();
        for (const QPushButton* button : buttons) {
            const QPoint corner = button->mapTo(&m_bench->window, QPoint(0, 0));
            const QRect area(s_ratio * corner, s_ratio * button->size());
            // What is disabled stands too little off its ground.
            QVERIFY2(isFine(window.copy(area)) || !button->isEnabled(),
                     qPrintable(button->toolTip()));
        }
    }

    void theTabsAreFine()
    {
        for (tzlabel* tab : m_bench->palette().folders()) {
            // Its size on a large screen.
            tab->resize(180, 64);
            QVERIFY2(isFine(tab->grab().toImage()), qPrintable(tab->imagePath()));
        }
    }

    void theBlocksOfThePaletteAreFineAndAsLargeAsElsewhere()
    {
        const QList<QLabel*> blocks = m_bench->palette().panel()->findChildren<QLabel*>();
        QVERIFY(blocks.size() > 5);
        for (const QLabel* block : blocks) {
            const QPixmap shown = block->pixmap(Qt::ReturnByValue);
            QCOMPARE(shown.devicePixelRatio(), qreal(s_ratio));
            QCOMPARE(shown.size(), s_ratio * block->size());
            QVERIFY2(isFine(shown.toImage()), qPrintable(block->toolTip()));
        }
    }

    void aChoosersSignsAreFineAndAsLargeAsElsewhere()
    {
        // Faces, which are smaller than their buttons.
        m_bench->clickAt(m_bench->add(802), QPointF(60, 120));
        const QList<QPushButton*> buttons = m_bench->chooser();
        QCOMPARE(buttons.size(), 4);
        for (int i = 0; i < buttons.size(); ++i) {
            const QImage image = buttons.at(i)->grab().toImage();
            QVERIFY(isFine(image));
            const int side = QImage(QStringLiteral(":/voice/4/%1.png").arg(i + 1)).width();
            QVERIFY(side < 0.7 * buttons.at(i)->width());
            const int edge = s_ratio * 10;
            const QRect drawn = drawnIn(image, image.rect().adjusted(edge, edge, -edge, -edge));
            QVERIFY2(drawn.width() <= s_ratio * side && drawn.width() > 0.7 * s_ratio * side,
                     qPrintable(QStringLiteral("%1 of %2").arg(drawn.width()).arg(side)));
        }
    }

    void theGroundHasAsManyPixelsAsTheScreen()
    {
        const TzProgramView& canvas = m_bench->canvas();
        const QPixmap ground = canvas.palette().brush(canvas.backgroundRole()).texture();
        QCOMPARE(ground.devicePixelRatio(), qreal(s_ratio));
        QVERIFY(ground.width() >= s_ratio * canvas.viewport()->width() ||
                ground.height() >= s_ratio * canvas.viewport()->height());
    }
};

int main(int argc, char** argv)
{
    qputenv("QT_SCALE_FACTOR", QByteArray::number(s_ratio));
    QApplication application(argc, argv);
    setUpAppearance();
    FineScreenTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "finescreentest.moc"
