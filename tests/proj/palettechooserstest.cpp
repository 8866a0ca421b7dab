#include "palettebench.h"

#include <QPushButton>
#include <QSignalSpy>

/** The choosers that the palette shows in place of the blocks. */
class PaletteChoosersTest : public QObject
{
    Q_OBJECT

private slots:
    void aChooserTakesThePlaceOfTheBlocks();
    void aPressOnTheEmptyCanvasBringsTheBlocksBack();
    void aPressOnTheEmptyCanvasLeavesBlocksAlone();
    void aChangeOfTabBringsTheBlocksBack();
    void theGroundTellsAChooserFromBlocks();
    void aWideChooserBringsUpTheHorizontalBar();
    void aChooserStaysAfterAChoice();
    void notesReportTheirPlace();
    void aServoIdComesBackWithItsParameter();
    void anUnknownChooserLeavesTheStripEmpty();
    void anUnknownMapGivesAnEmptyChooser();
    void aButtonMayEndTheChooserItIsIn();
};

void PaletteChoosersTest::aChooserTakesThePlaceOfTheBlocks()
{
    const PaletteBench bench;
    const QPointer<PanelBase> strip = bench.palette->panel();
    bench.palette->OnShowVoiceSignal(2);
    QVERIFY(bench.palette->isChoosing());
    QCOMPARE(bench.chooser().buttons().size(), 6);
    QVERIFY(bench.chooser().isVisible());
    bench.palette->OnShowExpressionSignal(4);
    QCOMPARE(bench.chooser().buttons().size(), 26);
    QCOMPARE(bench.area().widget(), bench.palette->panel());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!strip);
    QCOMPARE(bench.palette->findChildren<PanelBase*>().size(), 1);
}

void PaletteChoosersTest::aPressOnTheEmptyCanvasBringsTheBlocksBack()
{
    const PaletteBench bench;
    QTest::mouseClick(&bench.tab(1), Qt::LeftButton);
    bench.palette->OnShowVoiceSignal(1);
    bench.palette->OnProgramMouse(6);
    QVERIFY(!bench.palette->isChoosing());
    QCOMPARE(bench.blocks(), 5);
}

void PaletteChoosersTest::aPressOnTheEmptyCanvasLeavesBlocksAlone()
{
    const PaletteBench bench;
    const PanelBase* strip = bench.palette->panel();
    bench.palette->OnProgramMouse(6);
    QCOMPARE(bench.palette->panel(), strip);
}

void PaletteChoosersTest::aChangeOfTabBringsTheBlocksBack()
{
    const PaletteBench bench;
    bench.palette->OnShowNumKeyboardSignal(9);
    QTest::mouseClick(&bench.tab(3), Qt::LeftButton);
    QVERIFY(!bench.palette->isChoosing());
    QCOMPARE(bench.blocks(), 6);
}

void PaletteChoosersTest::theGroundTellsAChooserFromBlocks()
{
    const PaletteBench bench;
    QTest::mouseClick(&bench.tab(1), Qt::LeftButton);
    QCOMPARE(bench.ground(), blocksGround);
    bench.palette->OnShowVoiceSignal(3);
    QCOMPARE(bench.ground(), chooserGround);
    bench.palette->OnProgramMouse(6);
    QCOMPARE(bench.ground(), blocksGround);
}

void PaletteChoosersTest::aWideChooserBringsUpTheHorizontalBar()
{
    const PaletteBench bench;
    bench.palette->OnShowVoiceSignal(3);
    QCoreApplication::processEvents();
    QVERIFY(bench.palette->panel()->width() < bench.area().width());
    QVERIFY(!bench.bar().isVisible());
    bench.palette->OnShowExpressionSignal(4);
    QCoreApplication::processEvents();
    QVERIFY(bench.palette->panel()->width() > bench.area().width());
    QVERIFY(bench.bar().isVisible());
    QCOMPARE(bench.bar().maximum(), bench.palette->panel()->width() - bench.area().width());
    // The bar takes the room that the chooser leaves, so nothing has to scroll up and down.
    QVERIFY(!bench.area().verticalScrollBar()->isVisible());
}

void PaletteChoosersTest::aChooserStaysAfterAChoice()
{
    const PaletteBench bench;
    bench.palette->OnShowNumKeyboardSignal(9);
    const PanelBase* keyboard = bench.palette->panel();
    QSignalSpy reported(bench.palette, &TzBlockWidget::SelectNumberSignal);
    QTest::mouseClick(bench.chooser().buttons().at(7), Qt::LeftButton);
    QTest::mouseClick(bench.chooser().buttons().at(10), Qt::LeftButton);
    QCOMPARE(reported.count(), 2);
    QCOMPARE(reported.at(0).first().toInt(), 55);
    QCOMPARE(reported.at(1).first().toInt(), 0x1000003);
    QCOMPARE(bench.palette->panel(), keyboard);
    QVERIFY(bench.palette->isChoosing());
}

void PaletteChoosersTest::notesReportTheirPlace()
{
    const PaletteBench bench;
    bench.palette->onShowPanelSignal(1, 5);
    QStringList texts;
    for (const QPushButton* button : bench.chooser().buttons()) {
        texts.append(button->text());
    }
    QCOMPARE(texts.join(QLatin1Char(',')),
             QStringLiteral("do (1),re (2),mi (3),fa (4),so (5),la (6),si (7)"));
    QSignalSpy reported(bench.palette, &TzBlockWidget::SelectNumberSignal);
    const QSignalSpy edited(bench.palette, &TzBlockWidget::editParamSignal);
    QTest::mouseClick(bench.chooser().buttons().at(3), Qt::LeftButton);
    QCOMPARE(reported.count(), 1);
    QCOMPARE(reported.at(0).first().toInt(), 3);
    QCOMPARE(edited.count(), 0);
}

void PaletteChoosersTest::aServoIdComesBackWithItsParameter()
{
    const PaletteBench bench;
    bench.palette->onShowPanelSignal(2, 77);
    QCOMPARE(bench.chooser().buttons().size(), 18);
    QCOMPARE(bench.chooser().buttons().first()->text(), QStringLiteral("ID-01"));
    QCOMPARE(bench.chooser().buttons().last()->text(), QStringLiteral("ID-18"));
    const QSignalSpy reported(bench.palette, &TzBlockWidget::SelectNumberSignal);
    const QSignalSpy edited(bench.palette, &TzBlockWidget::editParamSignal);
    QTest::mouseClick(bench.chooser().buttons().at(4), Qt::LeftButton);
    QCOMPARE(reported.count(), 0);
    QCOMPARE(edited.count(), 1);
    QCOMPARE(edited.at(0), QList<QVariant>({77, 4}));
}

void PaletteChoosersTest::anUnknownChooserLeavesTheStripEmpty()
{
    const PaletteBench bench;
    bench.palette->onShowPanelSignal(9, 0);
    QVERIFY(bench.palette->isChoosing());
    QVERIFY(!bench.palette->panel());
    QVERIFY(!bench.area().widget());
    // Neither a resize nor the next chooser minds.
    bench.palette->setMaximumHeight(120);
    QCoreApplication::processEvents();
    bench.palette->OnShowVoiceSignal(1);
    QCOMPARE(bench.chooser().buttons().size(), 5);
}

void PaletteChoosersTest::anUnknownMapGivesAnEmptyChooser()
{
    const PaletteBench bench;
    bench.palette->OnShowVoiceSignal(99);
    QVERIFY(bench.chooser().buttons().isEmpty());
    bench.palette->OnShowExpressionSignal(0);
    QVERIFY(bench.chooser().buttons().isEmpty());
    QVERIFY(bench.palette->isChoosing());
}

void PaletteChoosersTest::aButtonMayEndTheChooserItIsIn()
{
    const PaletteBench bench;
    bench.palette->OnShowVoiceSignal(1);
    QPointer<QPushButton> pressed = bench.chooser().buttons().at(0);
    bool aliveDuringTheClick = false;
    connect(bench.palette, &TzBlockWidget::SelectNumberSignal, bench.palette,
            [&bench, &pressed, &aliveDuringTheClick] {
                bench.palette->OnProgramMouse(6);
                aliveDuringTheClick = !pressed.isNull();
            });
    QTest::mouseClick(pressed, Qt::LeftButton);
    QVERIFY(aliveDuringTheClick);
    QCOMPARE(bench.blocks(), blocksOfCategory(0));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!pressed);
}

QTEST_MAIN(PaletteChoosersTest)
#include "palettechooserstest.moc"
