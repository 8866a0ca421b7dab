#include "palettebench.h"

#include <QPushButton>
#include <QSignalSpy>

/** The choosers that the palette shows in place of the blocks. */
class PaletteChoosersTest : public QObject
{
    Q_OBJECT

private slots:
    void aChooserTakesThePlaceOfTheBlocks()
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

    void aPressOnTheEmptyCanvasBringsTheBlocksBack()
    {
        const PaletteBench bench;
        QTest::mouseClick(&bench.tab(1), Qt::LeftButton);
        bench.palette->OnShowVoiceSignal(1);
        bench.palette->OnProgramMouse(6);
        QVERIFY(!bench.palette->isChoosing());
        QCOMPARE(bench.blocks(), blocksOfCategory(SoundCategory));
    }

    void aPressOnTheEmptyCanvasLeavesBlocksAlone()
    {
        const PaletteBench bench;
        const PanelBase* strip = bench.palette->panel();
        bench.palette->OnProgramMouse(6);
        QCOMPARE(bench.palette->panel(), strip);
    }

    void aChangeOfTabBringsTheBlocksBack()
    {
        const PaletteBench bench;
        bench.palette->OnShowNumKeyboardSignal(9);
        QTest::mouseClick(&bench.tab(3), Qt::LeftButton);
        QVERIFY(!bench.palette->isChoosing());
        QCOMPARE(bench.blocks(), blocksOfCategory(ControlCategory));
    }

    void theGroundTellsAChooserFromBlocks()
    {
        const PaletteBench bench;
        QTest::mouseClick(&bench.tab(1), Qt::LeftButton);
        QCOMPARE(bench.ground(), blocksGround);
        bench.palette->OnShowVoiceSignal(3);
        QCOMPARE(bench.ground(), chooserGround);
        bench.palette->OnProgramMouse(6);
        QCOMPARE(bench.ground(), blocksGround);
    }

    void aWideChooserBringsUpTheHorizontalBar()
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

    void aChoosersButtonsHaveItsPictures_data()
    {
        QTest::addColumn<int>("chooser");
        QTest::addColumn<QString>("normal");
        QTest::addColumn<QString>("pressed");
        QTest::addColumn<QString>("end");
        QTest::addColumn<int>("pixels");
        const QString expression = QStringLiteral(":/expression/expression_bg_%1_60x60.png");
        const QString semicolon(QLatin1Char(';'));
        const auto row = [](const char* p_name, int p_chooser, const QString& p_pattern,
                            const QString& p_end, int p_pixels) {
            QTest::newRow(p_name) << p_chooser << p_pattern.arg(QStringLiteral("nol"))
                                  << p_pattern.arg(QStringLiteral("pre")) << p_end << p_pixels;
        };
        row("keyboard", 0, QStringLiteral(":/number_%1_120x60.png"), QString(), 24);
        // The blank in these names is theirs.
        row("voices", 1, QStringLiteral(":/voice/voice_bg_%1_60x60 .png"), semicolon, 0);
        row("expressions", 2, expression, semicolon, 0);
        row("notes", 3, expression, semicolon, 0);
        row("servos", 4, QStringLiteral(":/move/servo_id_%1_60x60.png"), semicolon, 0);
    }

    void aChoosersButtonsHaveItsPictures()
    {
        QFETCH(int, chooser);
        QFETCH(QString, normal);
        QFETCH(QString, pressed);
        QFETCH(QString, end);
        QFETCH(int, pixels);
        const PaletteBench bench;
        switch (chooser) {
        case 0:
            bench.palette->OnShowNumKeyboardSignal(15);
            break;
        case 1:
            bench.palette->OnShowVoiceSignal(4);
            break;
        case 2:
            bench.palette->OnShowExpressionSignal(5);
            break;
        default:
            bench.palette->onShowPanelSignal(chooser - 2, 0);
            break;
        }
        QVERIFY(bench.chooser().buttons().size() > 3);
        for (const QPushButton* button : bench.chooser().buttons()) {
            QCOMPARE(
                button->styleSheet(),
                QStringLiteral("QPushButton{border-image:url(%1);background-color:transparent%3}"
                               "QPushButton:pressed{border-image:url(%2);"
                               "background-color:transparent%3}")
                    .arg(normal, pressed, end));
            QVERIFY(button->isVisible());
            QVERIFY(button->testAttribute(Qt::WA_DeleteOnClose));
            if (pixels > 0) {
                QCOMPARE(button->font().pixelSize(), pixels);
            }
        }
    }

    void aChooserFillsTheStripsHeight()
    {
        const PaletteBench bench;
        const int before = bench.area().viewport()->height();
        bench.palette->OnShowVoiceSignal(1);
        QCOMPARE(bench.palette->panel()->height(), before - 16);
        bench.palette->OnShowNumKeyboardSignal(8);
        QCOMPARE(bench.palette->panel()->height(), before - 16);
    }

    void aChooserStaysAfterAChoice()
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

    void notesReportTheirPlace()
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

    void aServoIdComesBackWithItsParameter()
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

    void anUnknownChooserLeavesTheStripEmpty()
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

    void anUnknownMapGivesAnEmptyChooser()
    {
        const PaletteBench bench;
        bench.palette->OnShowVoiceSignal(99);
        QVERIFY(bench.chooser().buttons().isEmpty());
        bench.palette->OnShowExpressionSignal(0);
        QVERIFY(bench.chooser().buttons().isEmpty());
        QVERIFY(bench.palette->isChoosing());
    }

    void aButtonMayEndTheChooserItIsIn()
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
};

QTEST_MAIN(PaletteChoosersTest)
#include "palettechooserstest.moc"
