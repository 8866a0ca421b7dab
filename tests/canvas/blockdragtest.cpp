#include "canvas/blockdrag.h"
#include "gesturebench.h"

#include <QTest>

/** The drag of a block over a scene that nobody shows. */
class BlockDragTest : public QObject
{
    Q_OBJECT

private slots:
    void aMoveTakesTheBlockOutWithAllThatFollows()
    {
        Bench bench;
        supermodule* first = bench.append(104);
        supermodule* second = bench.append(105);
        bench.drag.press(first, QPointF(250, 230));
        QVERIFY(bench.drag.isHeld());
        QVERIFY(!bench.document.isModified());
        QVERIFY(bench.drag.move(QPointF(300, 630)));
        QVERIFY(!bench.main()->next());
        QCOMPARE(first->pos(), QPointF(290, 600));
        QCOMPARE(second->pos(), QPointF(410, 600));
        QCOMPARE(second->parentModule(), first);
        QVERIFY(first->m_moved);
        QCOMPARE(second->zValue(), 10.0);
        QVERIFY(bench.document.isModified());
    }

    void aReleaseLinksWhereTheGapIs()
    {
        Bench bench;
        bench.append(104);
        supermodule* block = bench.put(103, QPointF(700, 500));
        bench.drag.press(block, QPointF(710, 510));
        bench.drag.move(QPointF(255, 215));
        QCOMPARE(bench.chain(), (QList<int>{-1, 104}));
        QCOMPARE(bench.drag.release(false, true), BlockDrag::End::Settled);
        QCOMPARE(bench.chain(), (QList<int>{103, 104}));
        QVERIFY(!block->m_moved);
        QCOMPARE(block->zValue(), 0.0);
        QVERIFY(!bench.drag.isHeld());
    }

    void aPressAloneChangesNothing()
    {
        Bench bench;
        supermodule* first = bench.append(104);
        bench.drag.press(first, QPointF(250, 230));
        QCOMPARE(bench.drag.release(false, false), BlockDrag::End::Nothing);
        QCOMPARE(bench.drag.release(true, false), BlockDrag::End::Nothing);
        QCOMPARE(bench.chain(), QList<int>{104});
        QVERIFY(!bench.document.isModified());
        bench.drag.press(nullptr, QPointF());
        QVERIFY(!bench.drag.isHeld());
        QVERIFY(!bench.drag.move(QPointF(5, 5)));
    }

    void aMoveToTheSamePlaceIsNone()
    {
        Bench bench;
        supermodule* first = bench.append(104);
        bench.drag.press(first, QPointF(250, 230));
        QVERIFY(!bench.drag.move(QPointF(250, 230)));
        QVERIFY(!first->m_moved);
        QCOMPARE(bench.chain(), QList<int>{104});
    }

    void partsOfUnitsAddUpOverTheMoves()
    {
        Bench bench;
        supermodule* block = bench.put(103, QPointF(700, 500));
        bench.drag.press(block, QPointF(710, 510));
        for (int i = 1; i <= 10; ++i) {
            bench.drag.move(QPointF(710 + 0.4 * i, 510));
            QCOMPARE(block->pos(), QPointF(block->pos().toPoint()));
        }
        QCOMPARE(block->pos(), QPointF(704, 500));
    }

    void whatIsLetGoOutsideWaitsForItsDeletion()
    {
        Bench bench;
        supermodule* first = bench.append(104);
        const QPointF firstAt = first->pos();
        bench.drag.press(first, QPointF(250, 230));
        bench.drag.move(QPointF(250, 900));
        QCOMPARE(bench.drag.release(true, true), BlockDrag::End::Outside);
        const ModulePlace place = bench.drag.placeForUndo(first);
        QCOMPARE(place.position, firstAt);
        QCOMPARE(place.parentKey, bench.main()->registryKey());
        QCOMPARE(place.link, NextLink);
        QCOMPARE(bench.abandoned, 0);
        bench.drag.forget();
        QCOMPARE(bench.abandoned, 1);
        QCOMPARE(bench.drag.placeForUndo(first).position, first->pos());
    }

    void theMainBlockStaysWhereverItIsLetGo()
    {
        Bench bench;
        bench.drag.press(bench.main(), QPointF(110, 210));
        bench.drag.move(QPointF(110, 900));
        QCOMPARE(bench.drag.release(true, true), BlockDrag::End::Settled);
        QCOMPARE(bench.abandoned, 0);
        QCOMPARE(bench.main()->pos(), QPointF(100, 890));
    }

    void aDragWithoutAReleaseSettlesWhereItIs()
    {
        Bench bench;
        supermodule* block = bench.put(103, QPointF(700, 500));
        bench.drag.press(block, QPointF(710, 510));
        bench.drag.move(QPointF(255, 215));
        QCOMPARE(bench.drag.cancel(), BlockDrag::End::Settled);
        QCOMPARE(bench.chain(), QList<int>{103});
        QVERIFY(!block->m_moved);
        QCOMPARE(block->zValue(), 0.0);
        QCOMPARE(bench.drag.cancel(), BlockDrag::End::Nothing);
        QCOMPARE(bench.abandoned, 1);
        QVERIFY(!bench.drag.move(QPointF(900, 900)));
    }

    void aPressThatIsCancelledChangesNothing()
    {
        Bench bench;
        supermodule* first = bench.append(104);
        bench.drag.press(first, QPointF(250, 230));
        QCOMPARE(bench.drag.cancel(), BlockDrag::End::Nothing);
        QVERIFY(!bench.drag.isHeld());
        QCOMPARE(bench.chain(), QList<int>{104});
    }

    void aBlockThatDiesEndsItsDrag()
    {
        Bench bench;
        supermodule* block = bench.put(103, QPointF(700, 500));
        bench.drag.press(block, QPointF(710, 510));
        bench.drag.move(QPointF(720, 520));
        supermodule::deleteTree(block);
        QVERIFY(!bench.drag.isHeld());
        QVERIFY(!bench.drag.move(QPointF(730, 530)));
        QCOMPARE(bench.drag.release(false, true), BlockDrag::End::Nothing);
    }

private:
    struct Bench : GestureBench {
        int abandoned = 0;
        BlockDrag drag{document, preview, [this] { ++abandoned; }};
    };
};

QTEST_MAIN(BlockDragTest)
#include "blockdragtest.moc"
