#include "proj/scale.h"
#include "proj/textspanel.h"
#include "proj/tzblockwidget.h"
#include "support/system/datatable.h"

#include <QtTest>

/** The sizes that follow from the screen's and the strip's. */
class ScaleTest : public QObject
{
    Q_OBJECT

private slots:
    void tabsAreAsWideAsTheScreenAllows_data()
    {
        columns<int, int>("screenWidth", "tabWidth");
        QTest::newRow("a narrow screen") << 800 << 90;
        QTest::newRow("1280") << 1280 << 90;
        QTest::newRow("1600") << 1600 << 135;
        QTest::newRow("1920") << 1920 << 180;
        QTest::newRow("a wide screen") << 3840 << 180;
    }

    void tabsAreAsWideAsTheScreenAllows()
    {
        QFETCH(int, screenWidth);
        QTEST(tabGeometryFor(QSize(screenWidth, 900)).width, "tabWidth");
    }

    void tabsAreAsHighAndAsFarApartAsTheScreenAllows_data()
    {
        columns<int, int, int>("screenHeight", "tabHeight", "spacing");
        QTest::newRow("a low screen") << 600 << 32 << 5;
        QTest::newRow("768") << 768 << 32 << 5;
        QTest::newRow("924, halfway") << 924 << 48 << 7;
        QTest::newRow("1080") << 1080 << 64 << 10;
        QTest::newRow("a high screen") << 2160 << 64 << 10;
    }

    void tabsAreAsHighAndAsFarApartAsTheScreenAllows()
    {
        QFETCH(int, screenHeight);
        const TabGeometry tab = tabGeometryFor(QSize(1600, screenHeight));
        QTEST(tab.height, "tabHeight");
        QTEST(tab.spacing, "spacing");
    }

    void aValueInBetweenIsRoundedDown()
    {
        QCOMPARE(scale(1, 0, 3, 0, 10), 3);
        QCOMPARE(scale(2, 0, 3, 0, 10), 6);
        QCOMPARE(scale(-5, 0, 3, 7, 10), 7);
        QCOMPARE(scale(9, 0, 3, 7, 10), 10);
    }

    void wordsAreAsLargeAsTheirButtonsAllow_data()
    {
        columns<int, int>("side", "pixels");
        QTest::newRow("tiny") << 10 << 14;
        QTest::newRow("40") << 40 << 14;
        QTest::newRow("49") << 49 << 14;
        QTest::newRow("50") << 50 << 15;
        QTest::newRow("99") << 99 << 19;
        QTest::newRow("100") << 100 << 20;
        QTest::newRow("huge") << 300 << 20;
    }

    void wordsAreAsLargeAsTheirButtonsAllow()
    {
        QFETCH(int, side);
        QTEST(TextsPanel::fontSizeFor(side), "pixels");
    }
};

QTEST_GUILESS_MAIN(ScaleTest)
#include "scaletest.moc"
