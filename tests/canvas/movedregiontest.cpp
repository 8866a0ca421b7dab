#include "modules/mainmodule.h"
#include "support/canvas/canvastest.h"

#include <QApplication>
#include <QPaintEvent>
#include <QRandomGenerator>
#include <QScreen>
#include <QTest>

namespace
{
/** The paint events of a widget: how many, and the region of all. */
class Paints : public QObject
{
public:
    explicit Paints(QWidget* p_widget) { p_widget->installEventFilter(this); }
    int count = 0;
    QRegion region;
    void clear()
    {
        count = 0;
        region = QRegion();
    }

protected:
    bool eventFilter(QObject*, QEvent* p_event) override
    {
        if (p_event->type() == QEvent::Paint) {
            ++count;
            region += static_cast<QPaintEvent*>(p_event)->region();
        }
        return false;
    }
};

/** What the window shows by now, without painting anything. */
QImage shown(const QWidget& p_window)
{
    return p_window.screen()
        ->grabWindow(p_window.winId())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}

/**
 * How many pixels of two pictures of one size differ by more than a hardly visible shade. Where a
 * paint is cut off beside a scaled picture, single ones do.
 */
int differing(const QImage& p_a, const QImage& p_b)
{
    const int shade = 8;
    int count = 0;
    for (int y = 0; y < p_a.height(); ++y) {
        const QRgb* a = reinterpret_cast<const QRgb*>(p_a.constScanLine(y));
        const QRgb* b = reinterpret_cast<const QRgb*>(p_b.constScanLine(y));
        for (int x = 0; x < p_a.width(); ++x) {
            count += qAbs(qRed(a[x]) - qRed(b[x])) > shade ||
                     qAbs(qGreen(a[x]) - qGreen(b[x])) > shade ||
                     qAbs(qBlue(a[x]) - qBlue(b[x])) > shade;
        }
    }
    return count;
}
const int s_single = 3;
} // namespace

/** What a drag paints. */
class MovedRegionTest : public CanvasTest
{
    Q_OBJECT

private slots:
    void aDragPaintsWhatItMovesAndNothingElse()
    {
        supermodule* block = m_canvas->drop(103, QPointF(600, 450));
        m_canvas->press(block->scenePos() + QPointF(30, 30));
        m_canvas->move(block->scenePos() + QPointF(32, 30));
        QApplication::processEvents();
        Paints paints(m_canvas->view.viewport());
        m_canvas->move(block->scenePos() + QPointF(40, 30));
        QCOMPARE(paints.count, 1);
        QApplication::processEvents();
        QCOMPARE(paints.count, 1);
        const QRect around = paints.region.boundingRect();
        QVERIFY(around.contains(QRect(m_canvas->at(block->scenePos()), QSize(120, 140))));
        QVERIFY(around.width() < 300 && around.height() < 300);
        m_canvas->release(block->scenePos() + QPointF(30, 30));
    }

    void aDragOverNothingFromThePalettePaintsNothing()
    {
        m_canvas->dragOver(103, QPointF(600, 450));
        QApplication::processEvents();
        Paints paints(m_canvas->view.viewport());
        m_canvas->dragOverOn(QPointF(620, 450));
        QApplication::processEvents();
        QCOMPARE(paints.count, 0);
        m_canvas->leave();
    }

    void anUpdateThatWaitsIsNotLost()
    {
        supermodule* block = m_canvas->drop(103, QPointF(600, 450));
        m_canvas->press(block->scenePos() + QPointF(30, 30));
        m_canvas->move(block->scenePos() + QPointF(32, 30));
        QApplication::processEvents();
        Paints paints(m_canvas->view.viewport());
        m_canvas->view.scene()->update();
        m_canvas->move(block->scenePos() + QPointF(40, 30));
        QApplication::processEvents();
        QCOMPARE(paints.region.boundingRect(), m_canvas->view.viewport()->rect());
        m_canvas->release(block->scenePos() + QPointF(30, 30));
    }

    void aReleasePaintsWhatItHasMovedAndNothingElse()
    {
        const supermodule* block = m_canvas->drop(103, QPointF(600, 450));
        m_canvas->press(block->scenePos() + QPointF(30, 30));
        m_canvas->move(block->scenePos() + QPointF(42, 30));
        QApplication::processEvents();
        Paints paints(m_canvas->view.viewport());
        m_canvas->release(block->scenePos() + QPointF(30, 30));
        QApplication::processEvents();
        QVERIFY(paints.count >= 1);
        const QRect around = paints.region.boundingRect();
        QVERIFY(around.contains(QRect(m_canvas->at(block->scenePos()), QSize(120, 140))));
        QVERIFY(around.width() < 300 && around.height() < 300);
    }

    void aBlockThatLeavesPaintsItsGapAndNothingElse()
    {
        m_canvas->dropBehind(m_canvas->main(), 103);
        m_canvas->dragOver(104, m_canvas->main()->scenePos() + QPointF(200, 10));
        QVERIFY(m_canvas->main()->next()->isPreview());
        QApplication::processEvents();
        Paints paints(m_canvas->view.viewport());
        m_canvas->leave();
        QApplication::processEvents();
        const QRect around = paints.region.boundingRect();
        QVERIFY(around.contains(QRect(m_canvas->at({240, 200}), QSize(120, 140))));
        QVERIFY(around.width() < 500 && around.height() < 300);
    }

    void aJointIsFilledAndRoundAgainWithTheBlockThatComesAndGoes_data()
    {
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("moved");
        QTest::addColumn<double>("scale");
        for (const double scale : {0.4, 0.57, 1.0, 1.9}) {
            for (const int before : {0, 801, 301}) {
                for (const int moved : {103, 303}) {
                    QTest::addRow("%d behind %d at %g", moved, before, scale)
                        << before << moved << scale;
                }
            }
        }
    }
    void aJointIsFilledAndRoundAgainWithTheBlockThatComesAndGoes()
    {
        QFETCH(int, before);
        QFETCH(int, moved);
        QFETCH(double, scale);
        CanvasFixture canvas;
        canvas.view.resetMatrix();
        canvas.view.scale(scale, scale);
        supermodule* first = canvas.main();
        if (before) {
            first = canvas.drop(before, QPointF(100, 500));
            canvas.main()->insertModule(first);
            first->updateTreeAndOpacity();
        }
        const QRectF corner(first->x() + first->boundingRect().right() - 14, first->y() + 100, 16,
                            22);
        const auto cornerShown = [&] {
            return shown(canvas.view)
                .copy(QRect(
                    canvas.view.viewport()->mapTo(&canvas.view, canvas.at(corner.topLeft())),
                    canvas.view.viewport()->mapTo(&canvas.view, canvas.at(corner.bottomRight()))));
        };
        QApplication::processEvents();
        const QImage round = cornerShown();
        supermodule* block = canvas.drop(moved, QPointF(100, 500));
        QVERIFY(block && !block->parentModule());
        first->insertModule(block);
        block->updateTreeAndOpacity();
        showsWhatAFullPaintWould(canvas, 0);
        QVERIFY(differing(cornerShown(), round) > 0);
        // Held by its leg, and away in one step.
        const QPointF grip = block->scenePos() + QPointF(20, 20);
        canvas.press(grip);
        canvas.move(grip + QPointF(0, 200));
        QVERIFY(!first->next());
        QVERIFY(!block->filledCorners());
        showsWhatAFullPaintWould(canvas, 0);
        QCOMPARE(differing(cornerShown(), round), 0);
        canvas.move(grip + QPointF(0, 260));
        canvas.release(grip + QPointF(0, 260));
        showsWhatAFullPaintWould(canvas, 0);
        QCOMPARE(differing(cornerShown(), round), 0);
    }

    void aDeletedBlockLeavesNothingOnTheCanvas()
    {
        m_canvas->drop(103, QPointF(600, 250));
        const supermodule* block = m_canvas->drop(301, QPointF(650, 300));
        m_canvas->press(block->scenePos() + QPointF(30, 30));
        m_canvas->move(QPointF(700, 2000));
        m_canvas->release(QPointF(700, 2000));
        QCOMPARE(m_canvas->blocks().size(), 2);
        showsWhatAFullPaintWould(*m_canvas);
    }

    void aLoopThatGoesBelowAnotherBlockIsPaintedThere()
    {
        supermodule* block = m_canvas->drop(103, QPointF(150, 450));
        // On the loop's leg, far from where the block goes.
        m_canvas->drop(801, QPointF(510, 445));
        supermodule* loop = m_canvas->drop(301, QPointF(590, 350));
        QVERIFY(!loop->parentModule());
        m_canvas->press(block->scenePos() + QPointF(30, 30));
        m_canvas->move(loop->scenePos() + QPointF(140, 40));
        m_canvas->move(loop->scenePos() + QPointF(150, 34));
        QVERIFY(loop->left());
        QApplication::processEvents();
        m_canvas->release(loop->scenePos() + QPointF(150, 34));
        QCOMPARE(loop->left(), block);
        showsWhatAFullPaintWould(*m_canvas);
    }

    void afterAnyDragTheWindowShowsWhatAFullPaintWould_data()
    {
        QTest::addColumn<int>("seed");
        for (int seed = 1; seed <= 8; ++seed) {
            QTest::newRow(qPrintable(QString::number(seed))) << seed;
        }
    }
    void afterAnyDragTheWindowShowsWhatAFullPaintWould()
    {
        QFETCH(int, seed);
        QRandomGenerator random(static_cast<quint32>(seed));
        // The last one is the largest there is.
        const double scale = QVector<double>{0.4, 0.5, 1.9}.at(seed % 3);
        m_canvas->view.resetMatrix();
        m_canvas->view.scale(scale, scale);
        const QList<int> types{103, 104, 301, 306, 303, 903, 801, 107};
        for (int i = 0; i < 10; ++i) {
            m_canvas->drop(types.at(random.bounded(types.size())),
                           QPointF(random.bounded(150, 900), random.bounded(50, 500)));
        }
        for (int turn = 0; turn < 8; ++turn) {
            const QList<supermodule*> blocks = m_canvas->blocks();
            const supermodule* block = blocks.at(random.bounded(blocks.size()));
            const QPointF from = block->scenePos() + QPointF(20, 20);
            if (!m_canvas->view.viewport()->rect().contains(m_canvas->at(from))) {
                continue;
            }
            m_canvas->press(from);
            QPointF to = from;
            for (int step = 0; step < 8; ++step) {
                to += QPointF(random.bounded(-60, 60), random.bounded(-40, 40));
                m_canvas->move(to);
                showsWhatAFullPaintWould(*m_canvas);
            }
            m_canvas->release(to);
            showsWhatAFullPaintWould(*m_canvas);
            m_canvas->click(to + QPointF(3, 3));
            showsWhatAFullPaintWould(*m_canvas);
            const int type = types.at(random.bounded(types.size()));
            if (turn % 2 == 0) {
                m_canvas->dragOver(type, from);
                showsWhatAFullPaintWould(*m_canvas);
                m_canvas->dragOverOn(to);
                showsWhatAFullPaintWould(*m_canvas);
                m_canvas->leave();
            } else {
                m_canvas->drop(type, to);
            }
            showsWhatAFullPaintWould(*m_canvas);
        }
    }

private:
    /** Compares what is on the screen with what stands there once all has been painted anew. */
    static void showsWhatAFullPaintWould(CanvasFixture& p_canvas, int p_most = s_single)
    {
        // A second time for what goes to sleep in the first, as a button's widget does.
        QApplication::processEvents();
        QApplication::processEvents();
        const QImage painted = shown(p_canvas.view);
        p_canvas.view.viewport()->update();
        QApplication::processEvents();
        const int pixels = differing(painted, shown(p_canvas.view));
        QVERIFY2(pixels <= p_most, qPrintable(QString::number(pixels)));
    }
};

QTEST_MAIN(MovedRegionTest)
#include "movedregiontest.moc"
