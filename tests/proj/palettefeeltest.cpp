#include "palettebench.h"
#include "proj/palettebar.h"
#include "support/system/datatable.h"
#include "watchedpanel.h"

#include <QLabel>
#include <QPropertyAnimation>
#include <QPushButton>

namespace
{
QImage imageOf(QWidget& p_widget) { return p_widget.window()->grab().toImage(); }

/** Where a widget stands in its window. */
QRect placeOf(const QWidget& p_widget)
{
    return QRect(p_widget.mapTo(p_widget.window(), QPoint()), p_widget.size());
}

bool isMixed(const QColor& p_now, const QColor& p_before, const QColor& p_with, double p_part)
{
    const auto is = [&](int p_is, int p_was, int p_other) {
        return qAbs(p_is - (p_was + p_part * (p_other - p_was))) <= 3;
    };
    return is(p_now.red(), p_before.red(), p_with.red()) &&
           is(p_now.green(), p_before.green(), p_with.green()) &&
           is(p_now.blue(), p_before.blue(), p_with.blue());
}

/** How much of a widget has as much of a colour mixed in as the mouse over it adds, in percent. */
int partWith(const QColor& p_colour, QWidget& p_widget, const QImage& p_before)
{
    const QImage now = imageOf(p_widget);
    const QRect place = placeOf(p_widget);
    int changed = 0;
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x) {
            const QColor before = p_before.pixelColor(x, y);
            changed += before != now.pixelColor(x, y) &&
                       isMixed(now.pixelColor(x, y), before, p_colour, 0.08);
        }
    }
    return 100 * changed / (place.width() * place.height());
}

/** The mouse comes from elsewhere. */
void hover(QWidget& p_widget)
{
    QTest::mouseMove(p_widget.window(), QPoint(p_widget.window()->width() - 3, 100));
    QTest::mouseMove(&p_widget);
    QCoreApplication::processEvents();
}

void leave(QWidget& p_widget)
{
    QTest::mouseMove(p_widget.window(), QPoint(p_widget.window()->width() - 3, 100));
    QCoreApplication::processEvents();
}
} // namespace

/** How the palette answers the mouse. */
class PaletteFeelTest : public FixtureTest<PaletteBench>
{
    Q_OBJECT

private slots:
    void init()
    {
        QCursor::setPos(0, 0);
        m_bench.emplace();
    }

    void whatTheMouseIsOverIsLighter_data()
    {
        columns<int, QColor>("what", "colour");
        const QColor white(Qt::white);
        const QColor frame(0, 175, 204);
        QTest::newRow("a block") << 0 << white;
        QTest::newRow("a tab") << 1 << white;
        QTest::newRow("a key of the number keyboard") << 2 << frame;
        QTest::newRow("a sound") << 3 << white;
        QTest::newRow("a symbol") << 4 << white;
        QTest::newRow("a servo's number") << 5 << frame;
        QTest::newRow("the bar") << 6 << white;
    }

    void whatTheMouseIsOverIsLighter()
    {
        QFETCH(int, what);
        QFETCH(QColor, colour);
        TzBlockWidget& palette = *m_bench->palette;
        QWidget* under = nullptr;
        switch (what) {
        case 0:
            under = qobject_cast<BlockPanel*>(palette.panel())->labels().at(1);
            break;
        case 1:
            under = &m_bench->tab(0);
            break;
        case 2:
            palette.OnShowNumKeyboardSignal(11);
            break;
        case 3:
            palette.OnShowVoiceSignal(2);
            break;
        case 4:
            palette.OnShowExpressionSignal(3);
            break;
        case 5:
            palette.onShowPanelSignal(2, 1);
            break;
        default:
            under = palette.findChild<PaletteBar*>();
            break;
        }
        if (!under) {
            under = m_bench->chooser().buttons().at(1);
        }
        leave(*under);
        const QImage before = imageOf(*under);
        hover(*under);
        const int part = partWith(colour, *under, before);
        QVERIFY2(part > 50, qPrintable(QString::number(part)));
        if (what != 6) {
            // Beside the picture's round corner.
            const QPoint corner = placeOf(*under).topLeft();
            QCOMPARE(imageOf(*under).pixelColor(corner), before.pixelColor(corner));
        }
        leave(*under);
        QCOMPARE(imageOf(*under), before);
    }

    void whatIsPressedIsNotLighter()
    {
        m_bench->palette->OnShowVoiceSignal(2);
        QPushButton& key = *m_bench->chooser().buttons().at(1);
        hover(key);
        const QImage lit = imageOf(key).copy(placeOf(key));
        QTest::mousePress(&key, Qt::LeftButton);
        QVERIFY(!key.graphicsEffect());
        QVERIFY(imageOf(key).copy(placeOf(key)) != lit);
        QTest::mouseRelease(&key, Qt::LeftButton);
        QCOMPARE(imageOf(key).copy(placeOf(key)), lit);
        QTest::mousePress(&key, Qt::LeftButton);
        QTest::mouseRelease(&key, Qt::LeftButton, Qt::NoModifier, QPoint(-20, -20));
        QVERIFY(!key.graphicsEffect());
        leave(key);
        hover(key);
        key.setEnabled(false);
        QVERIFY(!key.graphicsEffect());
    }

    void aPressedTabIsDarkerAndOnePixelDown()
    {
        tzlabel& tab = m_bench->tab(1);
        const QRect place = placeOf(tab);
        const QImage before = imageOf(tab).copy(place);
        QTest::mousePress(&tab, Qt::LeftButton);
        const QImage now = imageOf(tab).copy(place);
        const auto darkerBy = [&](int p_down) {
            int count = 0;
            for (int y = 1; y < now.height(); ++y) {
                for (int x = 0; x < now.width(); ++x) {
                    count += isMixed(now.pixelColor(x, y), before.pixelColor(x, y - p_down),
                                     Qt::black, 0.1);
                }
            }
            return count;
        };
        QVERIFY(darkerBy(1) > now.width() * now.height() / 2);
        QVERIFY(darkerBy(1) > darkerBy(0));
        QTest::mouseRelease(&tab, Qt::LeftButton, Qt::NoModifier, QPoint(-50, -50));
        QCOMPARE(imageOf(tab).copy(place), before);
    }

    void anOpenHandIsOverABlockAndAClosedOneDragsIt()
    {
        const auto& strip = *qobject_cast<BlockPanel*>(m_bench->palette->panel());
        QCOMPARE(strip.labels().at(0)->cursor().shape(), Qt::OpenHandCursor);
        QCOMPARE(strip.cursor().shape(), Qt::ArrowCursor);

        WatchedPanel panel;
        QImage seen[3];
        const auto look = [&](const QDrag& p_drag, Qt::DropAction p_action) {
            return p_drag.dragCursor(p_action).toImage();
        };
        panel.m_onDrag = [&](QDrag& p_drag) {
            seen[0] = look(p_drag, Qt::CopyAction);
            seen[1] = look(p_drag, Qt::MoveAction);
            seen[2] = look(p_drag, Qt::IgnoreAction);
        };
        QTest::mousePress(panel.labels().at(0), Qt::LeftButton);
        QVERIFY(!seen[0].isNull());
        QCOMPARE(seen[1], seen[0]);
        QCOMPARE(seen[2], seen[0]);
        // The middle, which is what points, lies on the hand.
        QCOMPARE(seen[0].pixelColor(seen[0].rect().center()).alpha(), 255);
        QCOMPARE(seen[0].pixelColor(0, 0).alpha(), 0);
    }

    void aTapLetsABlockHopTowardsTheCanvas()
    {
        const auto& strip = *qobject_cast<BlockPanel*>(m_bench->palette->panel());
        QLabel& block = *strip.labels().at(1);
        const QPoint place = block.pos();
        QTest::mouseClick(&block, Qt::LeftButton);
        QTRY_VERIFY(block.y() < place.y() - 5);
        QCOMPARE(block.x(), place.x());
        QTRY_VERIFY(!block.findChild<QPropertyAnimation*>());
        QCOMPARE(block.pos(), place);
        QCOMPARE(strip.labels().at(0)->pos().y(), place.y());
    }

    void twoTapsEndWhereOneDoes()
    {
        QLabel& block = *qobject_cast<BlockPanel*>(m_bench->palette->panel())->labels().at(1);
        const QPoint place = block.pos();
        QTest::mouseClick(&block, Qt::LeftButton);
        QTRY_VERIFY(block.y() < place.y());
        QTest::mouseClick(&block, Qt::LeftButton);
        QCOMPARE(block.findChildren<QPropertyAnimation*>().size(), 1);
        QTRY_VERIFY(!block.findChild<QPropertyAnimation*>());
        QCOMPARE(block.pos(), place);
    }

    void aHopGivesWayToAnotherHeight()
    {
        BlockPanel& strip = *qobject_cast<BlockPanel*>(m_bench->palette->panel());
        QLabel& block = *strip.labels().at(1);
        QTest::mouseClick(&block, Qt::LeftButton);
        QTRY_VERIFY(block.findChild<QPropertyAnimation*>());
        strip.setPanelHeight(100);
        QVERIFY(!block.findChild<QPropertyAnimation*>());
        QCOMPARE(block.y(), 20);
    }

    void aDragIsNoTap()
    {
        WatchedPanel panel;
        panel.m_onDrag = [](QDrag&) { QCursor::setPos(QCursor::pos() + QPoint(30, -80)); };
        QTest::mousePress(panel.labels().at(0), Qt::LeftButton);
        QVERIFY(!panel.labels().at(0)->findChild<QPropertyAnimation*>());
    }

    void theBarMakesThePaletteHigherAndLowerWithinItsLimits()
    {
        auto& bar = *m_bench->palette->findChild<PaletteBar*>();
        const int height = m_bench->palette->height();
        QCOMPARE(bar.cursor().shape(), Qt::SplitVCursor);
        const auto drag = [&](int p_way) {
            const QPoint from = bar.rect().center();
            const QPoint global = bar.mapToGlobal(from);
            QTest::mousePress(&bar, Qt::LeftButton, Qt::NoModifier, from);
            for (int step = 1; step <= 4; ++step) {
                const QPoint to = global + QPoint(0, p_way * step / 4);
                QMouseEvent move(QEvent::MouseMove, bar.mapFromGlobal(to), to, Qt::NoButton,
                                 Qt::LeftButton, Qt::NoModifier);
                QApplication::sendEvent(&bar, &move);
                QCoreApplication::processEvents();
            }
            QTest::mouseRelease(&bar, Qt::LeftButton);
        };
        drag(40);
        QCOMPARE(m_bench->palette->height(), height - 40);
        drag(-20);
        QCOMPARE(m_bench->palette->height(), height - 20);
        drag(500);
        QCOMPARE(m_bench->palette->height(), 100);
        drag(-500);
        QCOMPARE(m_bench->palette->height(), 236);
    }

    void theGripStandsOutAgainstEachCategory()
    {
        auto& bar = *m_bench->palette->findChild<PaletteBar*>();
        for (int i = 0; i < m_bench->palette->folders().size(); ++i) {
            QTest::mouseClick(&m_bench->tab(i), Qt::LeftButton);
            leave(m_bench->tab(i));
            const QImage image = bar.grab().toImage();
            const QColor ground = image.pixelColor(5, image.height() / 2);
            QCOMPARE(ground, QColor(categoryRecords().at(i).barColour));
            const QColor stroke = image.pixelColor(image.width() / 2, image.height() / 2 - 4);
            QVERIFY(qAbs(qGray(stroke.rgb()) - qGray(ground.rgb())) > 90);
        }
    }
};

QTEST_MAIN(PaletteFeelTest)
#include "palettefeeltest.moc"
