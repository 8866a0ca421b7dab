#include "palettebench.h"
#include "support/system/paintwatch.h"

#include <QScreen>
#include <QSignalSpy>

#include <memory>

/** The palette: its tabs, its strip of blocks and the bin over it. */
class TzBlockWidgetTest : public FixtureTest<PaletteBench>
{
    Q_OBJECT

private slots:
    void theFirstTabIsActiveAtTheStart()
    {
        QCOMPARE(m_bench->palette->folders().size(), 4);
        QStringList names;
        for (const QPointer<tzlabel>& tab : m_bench->palette->folders()) {
            names << tab->toolTip();
        }
        QCOMPARE(names.join(QLatin1Char(' ')), QStringLiteral("动作 声音 表情 控制"));
        QVERIFY(m_bench->tab(0).isActive());
        QCOMPARE(m_bench->tab(0).imagePath(), QStringLiteral(":/dongzuo-pre.png"));
        for (int i = 1; i < 4; ++i) {
            QVERIFY(!m_bench->tab(i).isActive());
            QVERIFY(m_bench->tab(i).imagePath().endsWith(QLatin1String("-nol.png")));
        }
        QCOMPARE(m_bench->palette->currentCategory(), 0);
        QCOMPARE(m_bench->blocks(), blocksOfCategory(0));
        QVERIFY(!m_bench->palette->isChoosing());
    }

    void everyTabBringsUpItsBlocks()
    {
        const QList<int> categories{0, 7, 8, 2};
        for (const int i : {1, 2, 3, 0}) {
            QTest::mouseClick(&m_bench->tab(i), Qt::LeftButton);
            QCOMPARE(m_bench->palette->currentCategory(), categories.at(i));
            QVERIFY(m_bench->blocks() > 0);
            QCOMPARE(m_bench->blocks(), blocksOfCategory(categories.at(i)));
            QCOMPARE(m_bench->area().widget(), m_bench->palette->panel());
            for (int other = 0; other < 4; ++other) {
                QCOMPARE(m_bench->tab(other).isActive(), other == i);
                QCOMPARE(m_bench->tab(other).imagePath().endsWith(QLatin1String("-pre.png")),
                         other == i);
            }
        }
    }

    void aTabShowsItsPictureAndNotItsText()
    {
        QCOMPARE(m_bench->tab(1).text(), QStringLiteral("声音"));
        for (const bool active : {false, true}) {
            if (active) {
                QTest::mouseClick(&m_bench->tab(1), Qt::LeftButton);
            }
            const QImage image = m_bench->tab(1).grab().toImage();
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
        const PaintWatch before(m_bench->tab(0));
        const PaintWatch after(m_bench->tab(2));
        QTest::mouseClick(&m_bench->tab(2), Qt::LeftButton);
        QVERIFY(before.sawAll());
        QVERIFY(after.sawAll());
    }

    void theBarTakesTheCategorysColour()
    {
        const QStringList colours{QStringLiteral("#f94141"), QStringLiteral("#6743fa"),
                                  QStringLiteral("#0594ff"), QStringLiteral("#f8b824")};
        // Before any tab was clicked.
        QCOMPARE(m_bench->colourAt(QPoint(300, 0)), QColor(colours.first()));
        for (const int i : {0, 1, 2, 3, 0}) {
            QTest::mouseClick(&m_bench->tab(i), Qt::LeftButton);
            QCOMPARE(m_bench->colourAt(QPoint(300, 0)), QColor(colours.at(i)));
            QCOMPARE(m_bench->colourAt(QPoint(300, 23)), QColor(colours.at(i)));
            QCOMPARE(m_bench->colourAt(QPoint(300, 24)), blocksGround);
        }
    }

    void aTabChangeHasTheCanvasPaintedAnew()
    {
        const QSignalSpy updated(m_bench->palette, &TzBlockWidget::updateViewSignal);
        QTest::mouseClick(&m_bench->tab(2), Qt::LeftButton);
        QCOMPARE(updated.count(), 1);
    }

    void tabsStandOnThePalettesUpperEdge()
    {
        const TabGeometry tab = tabGeometryFor(QGuiApplication::primaryScreen()->availableSize());
        const int top = m_bench->palette->mapTo(&m_bench->window, QPoint()).y();
        for (int i = 0; i < 4; ++i) {
            QCOMPARE(m_bench->tab(i).parentWidget(), &m_bench->window);
            QCOMPARE(m_bench->tab(i).geometry(), QRect((tab.width + tab.spacing) * i + 6,
                                                       top - tab.height, tab.width, tab.height));
            QVERIFY(m_bench->tab(i).isVisible());
            // Nothing else of the window lies over the tab.
            QCOMPARE(m_bench->window.childAt(m_bench->tab(i).geometry().center()),
                     &m_bench->tab(i));
        }
    }

    void tabsFollowThePaletteWhenTheWindowGrows()
    {
        const int before = m_bench->tab(0).y();
        m_bench->window.resize(780, 720);
        QCoreApplication::processEvents();
        QVERIFY(m_bench->tab(0).y() > before);
        QCOMPARE(m_bench->tab(0).geometry().bottom() + 1,
                 m_bench->palette->mapTo(&m_bench->window, QPoint()).y());
        // Also where it only moves.
        m_bench->palette->setFixedHeight(m_bench->palette->height());
        QCoreApplication::processEvents();
        const QSize size = m_bench->palette->size();
        m_bench->window.resize(780, 900);
        QCoreApplication::processEvents();
        QCOMPARE(m_bench->palette->size(), size);
        QCOMPARE(m_bench->tab(0).geometry().bottom() + 1,
                 m_bench->palette->mapTo(&m_bench->window, QPoint()).y());
    }

    void tabsGoWithThePalette()
    {
        const QList<QPointer<tzlabel>> tabs = m_bench->palette->folders();
        delete m_bench->palette;
        for (const QPointer<tzlabel>& tab : tabs) {
            QVERIFY(!tab);
        }
        QVERIFY(m_bench->window.findChildren<tzlabel*>().isEmpty());
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
        QCOMPARE(m_bench->palette->panel()->height(), m_bench->area().height() - 16);
        m_bench->palette->setMaximumHeight(120);
        QCoreApplication::processEvents();
        QCOMPARE(m_bench->palette->height(), 120);
        QCOMPARE(m_bench->area().height(), 96);
        QCOMPARE(m_bench->palette->panel()->height(), 80);
        m_bench->palette->OnShowNumKeyboardSignal(9);
        QCOMPARE(m_bench->palette->panel()->height(), m_bench->area().viewport()->height() - 16);
        m_bench->palette->setMaximumHeight(140);
        QCoreApplication::processEvents();
        QCOMPARE(m_bench->palette->panel()->height(), 100);
    }

    void theWheelMovesTheStripAgainstItsTurn()
    {
        m_bench.emplace(QSize(500, 600));
        m_bench->bar().setValue(0);
        QVERIFY(m_bench->bar().maximum() >= 100);
        m_bench->turnWheel(-120);
        QCOMPARE(m_bench->bar().value(), 48);
        m_bench->turnWheel(-120);
        QCOMPARE(m_bench->bar().value(), 96);
        m_bench->turnWheel(120);
        QCOMPARE(m_bench->bar().value(), 48);
        m_bench->turnWheel(360);
        QCOMPARE(m_bench->bar().value(), 0);
    }

    void aWheelTurnedSidewaysMovesTheStripAsWell()
    {
        m_bench.emplace(QSize(500, 600));
        m_bench->bar().setValue(0);
        // What the strip's bar leaves comes to the scroll area itself.
        QWheelEvent event(QPointF(20, 20), m_bench->area().mapToGlobal(QPoint(20, 20)), QPoint(),
                          QPoint(-120, 0), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&m_bench->area(), &event);
        QCOMPARE(m_bench->bar().value(), 48);
    }

    void theWheelRoundsTowardsZero()
    {
        m_bench.emplace(QSize(500, 600));
        m_bench->bar().setValue(50);
        m_bench->turnWheel(-4);
        QCOMPARE(m_bench->bar().value(), 51);
        m_bench->turnWheel(4);
        QCOMPARE(m_bench->bar().value(), 50);
        m_bench->turnWheel(2);
        QCOMPARE(m_bench->bar().value(), 50);
    }

    void theBinFollowsTheDragOfABlock()
    {
        QVERIFY(!m_bench->overlay().isVisible());
        m_bench->palette->OnProgramMouse(0);
        QVERIFY(!m_bench->overlay().isVisible());
        m_bench->palette->OnProgramMouse(1);
        QVERIFY(m_bench->overlay().isVisible());
        QCOMPARE(m_bench->overlay().imagePath(), QStringLiteral(":/close.png"));
        QCOMPARE(m_bench->overlay().geometry(),
                 QRect(0, 0, m_bench->palette->width() + 1, m_bench->palette->height() + 1));
        QCOMPARE(m_bench->palette->childAt(m_bench->palette->rect().center()), &m_bench->overlay());
        m_bench->palette->OnProgramMouse(4);
        QVERIFY(m_bench->overlay().isVisible());
        QCOMPARE(m_bench->overlay().imagePath(), QStringLiteral(":/open.png"));
        m_bench->palette->OnProgramMouse(1);
        QCOMPARE(m_bench->overlay().imagePath(), QStringLiteral(":/close.png"));
        m_bench->palette->OnProgramMouse(2);
        QVERIFY(!m_bench->overlay().isVisible());
    }

    void theBinLiesOnAllThatIsInThePalette()
    {
        const QPoint middle = m_bench->palette->rect().center();
        // From the start, whoever shows it.
        m_bench->overlay().show();
        QCOMPARE(m_bench->palette->childAt(middle), &m_bench->overlay());
        m_bench->overlay().hide();
        // And on what came later.
        QWidget later(m_bench->palette);
        later.setGeometry(m_bench->palette->rect());
        later.show();
        QCOMPARE(m_bench->palette->childAt(middle), &later);
        m_bench->palette->OnProgramMouse(1);
        QCOMPARE(m_bench->palette->childAt(middle), &m_bench->overlay());
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
        m_bench->palette->OnProgramMouse(1);
        for (const int state : {4, 1}) {
            const PaintWatch watch(m_bench->overlay());
            m_bench->palette->OnProgramMouse(state);
            QVERIFY(watch.saw(m_bench->palette->rect()));
        }
    }

    void aStateToldTwiceCountsOnce()
    {
        m_bench->palette->OnProgramMouse(6);
        m_bench->palette->OnShowVoiceSignal(1);
        m_bench->palette->OnProgramMouse(6);
        QVERIFY(m_bench->palette->isChoosing());
        m_bench->palette->OnProgramMouse(2);
        m_bench->palette->OnProgramMouse(6);
        QVERIFY(!m_bench->palette->isChoosing());
    }

    void theEndOfADragCountsEachTime()
    {
        m_bench->palette->OnProgramMouse(2);
        m_bench->overlay().show();
        m_bench->palette->OnProgramMouse(2);
        QVERIFY(!m_bench->overlay().isVisible());
    }

    void aBlockReleasedOverThePaletteIsRememberedUntilTheNextPress()
    {
        m_bench->palette->OnProgramMouse(1);
        m_bench->palette->OnProgramMouse(5);
        QVERIFY(!m_bench->overlay().isVisible());
        QCOMPARE(m_bench->palette->dragIntoBin(), 1);
        m_bench->palette->OnProgramMouse(3);
        QCOMPARE(m_bench->palette->dragIntoBin(), 1);
        m_bench->palette->OnProgramMouse(0);
        QCOMPARE(m_bench->palette->dragIntoBin(), 0);
        m_bench->palette->OnProgramMouse(5);
        m_bench->palette->OnProgramMouse(2);
        QCOMPARE(m_bench->palette->dragIntoBin(), 0);
    }
};

QTEST_MAIN(TzBlockWidgetTest)
#include "tzblockwidgettest.moc"
