#include "palettebench.h"
#include "support/system/paintwatch.h"

#include <QScreen>
#include <QSignalSpy>

#include <memory>

/** The palette: its tabs, its strip of blocks and the bin over it. */
class TzBlockWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void theFirstTabIsActiveAtTheStart()
    {
        const PaletteBench bench;
        QCOMPARE(bench.palette->folders().size(), 4);
        QStringList names;
        for (const QPointer<tzlabel>& tab : bench.palette->folders()) {
            names << tab->toolTip();
        }
        QCOMPARE(names.join(QLatin1Char(' ')), QStringLiteral("动作 声音 表情 控制"));
        QVERIFY(bench.tab(0).isActive());
        QCOMPARE(bench.tab(0).imagePath(), QStringLiteral(":/dongzuo-pre.png"));
        for (int i = 1; i < 4; ++i) {
            QVERIFY(!bench.tab(i).isActive());
            QVERIFY(bench.tab(i).imagePath().endsWith(QLatin1String("-nol.png")));
        }
        QCOMPARE(bench.palette->currentCategory(), 0);
        QCOMPARE(bench.blocks(), blocksOfCategory(0));
        QVERIFY(!bench.palette->isChoosing());
    }

    void everyTabBringsUpItsBlocks()
    {
        const PaletteBench bench;
        const QList<int> categories{0, 7, 8, 2};
        for (const int i : {1, 2, 3, 0}) {
            QTest::mouseClick(&bench.tab(i), Qt::LeftButton);
            QCOMPARE(bench.palette->currentCategory(), categories.at(i));
            QVERIFY(bench.blocks() > 0);
            QCOMPARE(bench.blocks(), blocksOfCategory(categories.at(i)));
            QCOMPARE(bench.area().widget(), bench.palette->panel());
            for (int other = 0; other < 4; ++other) {
                QCOMPARE(bench.tab(other).isActive(), other == i);
                QCOMPARE(bench.tab(other).imagePath().endsWith(QLatin1String("-pre.png")),
                         other == i);
            }
        }
    }

    void aTabShowsItsPictureAndNotItsText()
    {
        const PaletteBench bench;
        QCOMPARE(bench.tab(1).text(), QStringLiteral("声音"));
        for (const bool active : {false, true}) {
            if (active) {
                QTest::mouseClick(&bench.tab(1), Qt::LeftButton);
            }
            const QImage image = bench.tab(1).grab().toImage();
            const QColor expected = active ? QColor(0x40, 0xc0, 0x80) : QColor(0x10, 0x20, 0x30);
            for (int x = 0; x < image.width(); ++x) {
                for (int y = 0; y < image.height(); ++y) {
                    QCOMPARE(image.pixelColor(x, y), expected);
                }
            }
        }
    }

    void bothTabsOfAChangeArePainted()
    {
        const PaletteBench bench;
        const PaintWatch before(bench.tab(0));
        const PaintWatch after(bench.tab(2));
        QTest::mouseClick(&bench.tab(2), Qt::LeftButton);
        QVERIFY(before.sawAll());
        QVERIFY(after.sawAll());
    }

    void theBarTakesTheCategorysColour()
    {
        const PaletteBench bench;
        const QStringList colours{QStringLiteral("#f94141"), QStringLiteral("#6743fa"),
                                  QStringLiteral("#0594ff"), QStringLiteral("#f8b824")};
        // Before any tab was clicked.
        QCOMPARE(bench.colourAt(QPoint(300, 0)), QColor(colours.first()));
        for (const int i : {0, 1, 2, 3, 0}) {
            QTest::mouseClick(&bench.tab(i), Qt::LeftButton);
            QCOMPARE(bench.colourAt(QPoint(300, 0)), QColor(colours.at(i)));
            QCOMPARE(bench.colourAt(QPoint(300, 23)), QColor(colours.at(i)));
            QCOMPARE(bench.colourAt(QPoint(300, 24)), blocksGround);
        }
    }

    void aTabChangeHasTheCanvasPaintedAnew()
    {
        const PaletteBench bench;
        const QSignalSpy updated(bench.palette, &TzBlockWidget::updateViewSignal);
        QTest::mouseClick(&bench.tab(2), Qt::LeftButton);
        QCOMPARE(updated.count(), 1);
    }

    void tabsStandOnThePalettesUpperEdge()
    {
        const PaletteBench bench;
        const TabGeometry tab = tabGeometryFor(QGuiApplication::primaryScreen()->availableSize());
        const int top = bench.palette->mapTo(&bench.window, QPoint()).y();
        for (int i = 0; i < 4; ++i) {
            QCOMPARE(bench.tab(i).parentWidget(), &bench.window);
            QCOMPARE(bench.tab(i).geometry(), QRect((tab.width + tab.spacing) * i + 6,
                                                    top - tab.height, tab.width, tab.height));
            QVERIFY(bench.tab(i).isVisible());
            // Nothing else of the window lies over the tab.
            QCOMPARE(bench.window.childAt(bench.tab(i).geometry().center()), &bench.tab(i));
        }
    }

    void tabsFollowThePaletteWhenTheWindowGrows()
    {
        PaletteBench bench;
        const int before = bench.tab(0).y();
        bench.window.resize(780, 720);
        QCoreApplication::processEvents();
        QVERIFY(bench.tab(0).y() > before);
        QCOMPARE(bench.tab(0).geometry().bottom() + 1,
                 bench.palette->mapTo(&bench.window, QPoint()).y());
        // Also where it only moves.
        bench.palette->setFixedHeight(bench.palette->height());
        QCoreApplication::processEvents();
        const QSize size = bench.palette->size();
        bench.window.resize(780, 900);
        QCoreApplication::processEvents();
        QCOMPARE(bench.palette->size(), size);
        QCOMPARE(bench.tab(0).geometry().bottom() + 1,
                 bench.palette->mapTo(&bench.window, QPoint()).y());
    }

    void tabsGoWithThePalette()
    {
        PaletteBench bench;
        const QList<QPointer<tzlabel>> tabs = bench.palette->folders();
        delete bench.palette;
        for (const QPointer<tzlabel>& tab : tabs) {
            QVERIFY(!tab);
        }
        QVERIFY(bench.window.findChildren<tzlabel*>().isEmpty());
    }

    void tabsMayGoBeforeThePalette()
    {
        QWidget holder;
        auto central = std::make_unique<QWidget>();
        TzBlockWidget palette(central.get(), &holder);
        palette.resize(300, 200);
        central.reset();
        QVERIFY(!palette.folders().first());
        palette.resize(400, 200);
        palette.OnShowNumKeyboardSignal(1);
        palette.OnProgramMouse(6);
        QVERIFY(!palette.isChoosing());
    }

    void theStripFollowsTheHeightOfThePalette()
    {
        PaletteBench bench;
        QCOMPARE(bench.palette->panel()->height(), bench.area().height() - 16);
        bench.palette->setMaximumHeight(120);
        QCoreApplication::processEvents();
        QCOMPARE(bench.palette->height(), 120);
        QCOMPARE(bench.area().height(), 96);
        QCOMPARE(bench.palette->panel()->height(), 80);
        bench.palette->OnShowNumKeyboardSignal(9);
        QCOMPARE(bench.palette->panel()->height(), bench.area().viewport()->height() - 16);
        bench.palette->setMaximumHeight(140);
        QCoreApplication::processEvents();
        QCOMPARE(bench.palette->panel()->height(), 100);
    }

    void theWheelMovesTheStripAgainstItsTurn()
    {
        PaletteBench bench(QSize(500, 600));
        bench.bar().setValue(0);
        QVERIFY(bench.bar().maximum() >= 100);
        bench.turnWheel(-120);
        QCOMPARE(bench.bar().value(), 48);
        bench.turnWheel(-120);
        QCOMPARE(bench.bar().value(), 96);
        bench.turnWheel(120);
        QCOMPARE(bench.bar().value(), 48);
        bench.turnWheel(360);
        QCOMPARE(bench.bar().value(), 0);
    }

    void aWheelTurnedSidewaysMovesTheStripAsWell()
    {
        const PaletteBench bench(QSize(500, 600));
        bench.bar().setValue(0);
        // What the strip's bar leaves comes to the scroll area itself.
        QWheelEvent event(QPointF(20, 20), bench.area().mapToGlobal(QPoint(20, 20)), QPoint(),
                          QPoint(-120, 0), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&bench.area(), &event);
        QCOMPARE(bench.bar().value(), 48);
    }

    void theWheelRoundsTowardsZero()
    {
        PaletteBench bench(QSize(500, 600));
        bench.bar().setValue(50);
        bench.turnWheel(-4);
        QCOMPARE(bench.bar().value(), 51);
        bench.turnWheel(4);
        QCOMPARE(bench.bar().value(), 50);
        bench.turnWheel(2);
        QCOMPARE(bench.bar().value(), 50);
    }

    void theBinFollowsTheDragOfABlock()
    {
        const PaletteBench bench;
        QVERIFY(!bench.overlay().isVisible());
        bench.palette->OnProgramMouse(0);
        QVERIFY(!bench.overlay().isVisible());
        bench.palette->OnProgramMouse(1);
        QVERIFY(bench.overlay().isVisible());
        QCOMPARE(bench.overlay().imagePath(), QStringLiteral(":/close.png"));
        QCOMPARE(bench.overlay().geometry(),
                 QRect(0, 0, bench.palette->width() + 1, bench.palette->height() + 1));
        QCOMPARE(bench.palette->childAt(bench.palette->rect().center()), &bench.overlay());
        bench.palette->OnProgramMouse(4);
        QVERIFY(bench.overlay().isVisible());
        QCOMPARE(bench.overlay().imagePath(), QStringLiteral(":/open.png"));
        bench.palette->OnProgramMouse(1);
        QCOMPARE(bench.overlay().imagePath(), QStringLiteral(":/close.png"));
        bench.palette->OnProgramMouse(2);
        QVERIFY(!bench.overlay().isVisible());
    }

    void theBinLiesOnAllThatIsInThePalette()
    {
        const PaletteBench bench;
        const QPoint middle = bench.palette->rect().center();
        // From the start, whoever shows it.
        bench.overlay().show();
        QCOMPARE(bench.palette->childAt(middle), &bench.overlay());
        bench.overlay().hide();
        // And on what came later.
        QWidget later(bench.palette);
        later.setGeometry(bench.palette->rect());
        later.show();
        QCOMPARE(bench.palette->childAt(middle), &later);
        bench.palette->OnProgramMouse(1);
        QCOMPARE(bench.palette->childAt(middle), &bench.overlay());
    }

    void theBinIsPaintedInTheMiddleOfAPaleSheet()
    {
        BinOverlay overlay;
        overlay.setImagePath(QStringLiteral(":/close.png"));
        overlay.resize(100, 60);
        QImage image(overlay.size(), QImage::Format_ARGB32);
        image.fill(Qt::red);
        overlay.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
        // The picture is 11 by 11, so it starts at (101 - 11) / 2 and (61 - 11) / 2.
        QCOMPARE(image.pixelColor(45, 25), QColor(Qt::black));
        QCOMPARE(image.pixelColor(55, 35), QColor(Qt::black));
        for (const QPoint& around : {QPoint(44, 30), QPoint(56, 30), QPoint(50, 24), QPoint(50, 36),
                                     QPoint(0, 0), QPoint(99, 59)}) {
            const QColor sheet = image.pixelColor(around);
            QCOMPARE(sheet.red(), 255);
            QVERIFY2(qAbs(sheet.green() - 125) <= 1, qPrintable(sheet.name()));
        }
    }

    void theBinIsPaintedWhenItOpensAndCloses()
    {
        const PaletteBench bench;
        bench.palette->OnProgramMouse(1);
        for (const int state : {4, 1}) {
            const PaintWatch watch(bench.overlay());
            bench.palette->OnProgramMouse(state);
            QVERIFY(watch.saw(bench.palette->rect()));
        }
    }

    void aStateToldTwiceCountsOnce()
    {
        const PaletteBench bench;
        bench.palette->OnProgramMouse(6);
        bench.palette->OnShowVoiceSignal(1);
        bench.palette->OnProgramMouse(6);
        QVERIFY(bench.palette->isChoosing());
        bench.palette->OnProgramMouse(2);
        bench.palette->OnProgramMouse(6);
        QVERIFY(!bench.palette->isChoosing());
    }

    void theEndOfADragCountsEachTime()
    {
        const PaletteBench bench;
        bench.palette->OnProgramMouse(2);
        bench.overlay().show();
        bench.palette->OnProgramMouse(2);
        QVERIFY(!bench.overlay().isVisible());
    }

    void aBlockReleasedOverThePaletteIsRememberedUntilTheNextPress()
    {
        const PaletteBench bench;
        bench.palette->OnProgramMouse(1);
        bench.palette->OnProgramMouse(5);
        QVERIFY(!bench.overlay().isVisible());
        QCOMPARE(bench.palette->dragIntoBin(), 1);
        bench.palette->OnProgramMouse(3);
        QCOMPARE(bench.palette->dragIntoBin(), 1);
        bench.palette->OnProgramMouse(0);
        QCOMPARE(bench.palette->dragIntoBin(), 0);
        bench.palette->OnProgramMouse(5);
        bench.palette->OnProgramMouse(2);
        QCOMPARE(bench.palette->dragIntoBin(), 0);
    }
};

QTEST_MAIN(TzBlockWidgetTest)
#include "tzblockwidgettest.moc"
