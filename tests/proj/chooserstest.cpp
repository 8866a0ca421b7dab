#include "proj/iconspanel.h"
#include "proj/numberspanel.h"
#include "proj/textspanel.h"
#include "proj/tzblockwidget.h"
#include "support/system/datatable.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

namespace
{
QStringList textsOf(const RowPanel& p_panel)
{
    QStringList texts;
    for (const QPushButton* button : p_panel.buttons()) {
        texts.append(button->text());
    }
    return texts;
}

/** The codes that the panel reports when its buttons are clicked from left to right. */
QList<int> clickAll(RowPanel& p_panel)
{
    QSignalSpy reported(&p_panel, &RowPanel::SelectNumberSignal);
    for (QPushButton* button : p_panel.buttons()) {
        QTest::mouseClick(button, Qt::LeftButton);
    }
    QList<int> codes;
    for (const QList<QVariant>& arguments : reported) {
        codes.append(arguments.first().toInt());
    }
    return codes;
}

const QList<int> s_digitCodes{48, 49, 50, 51, 52, 53, 54, 55, 56, 57};
const QStringList s_digits = QStringLiteral("0 1 2 3 4 5 6 7 8 9").split(QLatin1Char(' '));
const int s_deleteCode = 0x1000003;
} // namespace

/** The number keyboard and the rows of pictures and of words. */
class ChoosersTest : public QObject
{
    Q_OBJECT

private slots:
    void theMaskDecidesWhichKeysThereAre_data()
    {
        columns<int, QStringList, QList<int>>("mask", "texts", "codes");
        const QString none;
        row("digits and delete, which comes last", 9, s_digits + QStringList{none},
            s_digitCodes + QList<int>{s_deleteCode});
        row("with minus", 13, s_digits + QStringList{"-", none},
            s_digitCodes + QList<int>{45, s_deleteCode});
        row("with point", 11, s_digits + QStringList{".", none},
            s_digitCodes + QList<int>{46, s_deleteCode});
        row("all", 15, s_digits + QStringList{".", "-", none},
            s_digitCodes + QList<int>{46, 45, s_deleteCode});
        row("none", 16, QStringList(), QList<int>());
    }

    void theMaskDecidesWhichKeysThereAre()
    {
        QFETCH(int, mask);
        QFETCH(QStringList, texts);
        QFETCH(QList<int>, codes);
        NumbersPanel panel(mask);
        QCOMPARE(textsOf(panel), texts);
        QCOMPARE(clickAll(panel), codes);
    }

    void aChoiceHasTheCanvasPaintedAnew()
    {
        IconsPanel icons({QStringLiteral(":/a.png"), QStringLiteral(":/b.png")}, QString());
        TextsPanel texts({QStringLiteral("a"), QStringLiteral("b")}, QString());
        for (RowPanel* panel : {static_cast<RowPanel*>(&icons), static_cast<RowPanel*>(&texts)}) {
            const QSignalSpy updated(panel, &PanelBase::updateViewSignal);
            QCOMPARE(clickAll(*panel), (QList<int>{0, 1}));
            QCOMPARE(updated.count(), 2);
        }
    }

    void keysKeepTheirShapeInALowStrip()
    {
        NumbersPanel panel(9);
        panel.setPanelHeight(148);
        // 59 is 0.4 times 148, rounded down.
        QCOMPARE(panel.buttons().at(0)->geometry(), QRect(6, 44, 118, 59));
        QCOMPARE(panel.buttons().at(1)->geometry(), QRect(6 + 138, 44, 118, 59));
        QCOMPARE(panel.size(), QSize(6 + 10 * 138 + 118 + 21, 148));
    }

    void keysGrowNoLargerThanTheirPicture()
    {
        NumbersPanel panel(1);
        for (const int height : {150, 400}) {
            panel.setPanelHeight(height);
            QCOMPARE(panel.buttons().at(9)->geometry(),
                     QRect(6 + 9 * 140, (height - 60) / 2, 120, 60));
            QCOMPARE(panel.size(), QSize(6 + 9 * 140 + 120 + 21, height));
        }
    }

    void onlyTheLastKeyGetsALargeIcon()
    {
        NumbersPanel panel(9);
        panel.setPanelHeight(200);
        QCOMPARE(panel.buttons().last()->iconSize(), QSize(120, 60));
        QVERIFY(panel.buttons().first()->iconSize() != QSize(120, 60));
    }

    void picturesReportTheirPlace()
    {
        IconsPanel panel(TzBlockWidget::expressionPictures().value(2), QString());
        QCOMPARE(clickAll(panel), QList<int>({0, 1, 2, 3, 4}));
    }

    void picturesAreSquareAndAtMostAHundredWide()
    {
        IconsPanel panel(TzBlockWidget::voicePictures().value(3), QString());
        panel.setPanelHeight(99);
        QCOMPARE(panel.buttons().at(1)->geometry(), QRect(6 + 79, 20, 59, 59));
        QCOMPARE(panel.buttons().at(1)->iconSize(), QSize(59, 59));
        QCOMPARE(panel.size(), QSize(6 + 79 + 59 + 21, 99));
        panel.setPanelHeight(201);
        QCOMPARE(panel.buttons().at(1)->geometry(), QRect(6 + 120, 50, 100, 100));
        QCOMPARE(panel.buttons().at(1)->iconSize(), QSize(100, 100));
        QCOMPARE(panel.size(), QSize(6 + 120 + 100 + 21, 201));
    }

    void anEmptyRowLeavesThePanelAsItIs()
    {
        IconsPanel icons({}, {});
        icons.resize(33, 44);
        icons.setPanelHeight(200);
        QCOMPARE(icons.size(), QSize(33, 44));
        NumbersPanel numbers(0);
        numbers.resize(33, 44);
        numbers.setPanelHeight(200);
        QCOMPARE(numbers.size(), QSize(33, 44));
    }

    void wordsReportTheirPlace()
    {
        TextsPanel panel({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")},
                         QString());
        QCOMPARE(textsOf(panel),
                 QStringList({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
        QCOMPARE(clickAll(panel), QList<int>({0, 1, 2}));
    }

    void wordsAreLaidOutLikePicturesWithAFittingFont()
    {
        TextsPanel panel({QStringLiteral("a"), QStringLiteral("b")}, QString());
        QCOMPARE(panel.buttons().at(0)->font().pixelSize(), 20);
        panel.setPanelHeight(117);
        QCOMPARE(panel.buttons().at(1)->geometry(), QRect(6 + 90, 23, 70, 70));
        QCOMPARE(panel.buttons().at(1)->font().pixelSize(), 17);
        panel.setPanelHeight(196);
        QCOMPARE(panel.buttons().at(1)->geometry(), QRect(6 + 120, 48, 100, 100));
        QCOMPARE(panel.buttons().at(1)->font().pixelSize(), 20);
    }

    void theVoiceChoosersHoldTheirPictures()
    {
        const QMap<int, QStringList>& pictures = TzBlockWidget::voicePictures();
        QCOMPARE(pictures.keys(), QList<int>({1, 2, 3, 4}));
        QCOMPARE(pictures.value(1).size(), 5);
        QCOMPARE(pictures.value(2).size(), 6);
        QCOMPARE(pictures.value(3), QStringList({QStringLiteral(":/voice/3/1.png"),
                                                 QStringLiteral(":/voice/3/2.png")}));
        QCOMPARE(pictures.value(4).size(), 4);
        QCOMPARE(pictures.value(4).last(), QStringLiteral(":/voice/4/4.png"));
    }

    void theExpressionChoosersHoldTheirPictures()
    {
        const QMap<int, QStringList>& pictures = TzBlockWidget::expressionPictures();
        QCOMPARE(pictures.keys(), QList<int>({1, 2, 3, 4, 5}));
        const QList<int> counts{13, 5, 10, 26, 12};
        for (int key = 1; key <= 5; ++key) {
            QCOMPARE(pictures.value(key).size(), counts.at(key - 1));
            QCOMPARE(pictures.value(key).first(), QStringLiteral(":/expression/%1/0.png").arg(key));
        }
        QCOMPARE(pictures.value(4).last(), QStringLiteral(":/expression/4/25.png"));
    }
};

QTEST_MAIN(ChoosersTest)
#include "chooserstest.moc"
