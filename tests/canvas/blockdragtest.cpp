#include "canvas/blockdrag.h"
#include "gesturebench.h"

#include <QTest>

namespace
{
struct Bench : GestureBench {
    int abandoned = 0;
    BlockDrag drag{document, preview, [this] { ++abandoned; }};
};
} // namespace

/** The drag of a block over a scene that nobody shows. */
class BlockDragTest : public FixtureTest<Bench>
{
    Q_OBJECT

private slots:
    void aMoveTakesTheBlockOutWithAllThatFollows()
    {
        supermodule* first = m_bench->append(104);
        supermodule* second = m_bench->append(105);
        m_bench->drag.press(first, QPointF(250, 230));
        QVERIFY(m_bench->drag.isHeld());
        QVERIFY(!m_bench->document.isModified());
        QVERIFY(m_bench->drag.move(QPointF(300, 630)));
        QVERIFY(!m_bench->main()->next());
        QCOMPARE(first->pos(), QPointF(290, 600));
        QCOMPARE(second->pos(), QPointF(410, 600));
        QCOMPARE(second->parentModule(), first);
        QVERIFY(first->m_moved);
        QCOMPARE(second->zValue(), 10.0);
        QVERIFY(m_bench->document.isModified());
    }

    void aReleaseLinksWhereTheGapIs()
    {
        m_bench->append(104);
        supermodule* block = m_bench->put(103, QPointF(700, 500));
        m_bench->drag.press(block, QPointF(710, 510));
        m_bench->drag.move(QPointF(255, 215));
        QCOMPARE(m_bench->chain(), (QList<int>{-1, 104}));
        QCOMPARE(m_bench->drag.release(false, true), BlockDrag::End::Settled);
        QCOMPARE(m_bench->chain(), (QList<int>{103, 104}));
        QVERIFY(!block->m_moved);
        QCOMPARE(block->zValue(), 0.0);
        QVERIFY(!m_bench->drag.isHeld());
    }

    void aPressAloneChangesNothing()
    {
        supermodule* first = m_bench->append(104);
        m_bench->drag.press(first, QPointF(250, 230));
        QCOMPARE(m_bench->drag.release(false, false), BlockDrag::End::Nothing);
        QCOMPARE(m_bench->drag.release(true, false), BlockDrag::End::Nothing);
        QCOMPARE(m_bench->chain(), QList<int>{104});
        QVERIFY(!m_bench->document.isModified());
        m_bench->drag.press(nullptr, QPointF());
        QVERIFY(!m_bench->drag.isHeld());
        QVERIFY(!m_bench->drag.move(QPointF(5, 5)));
    }

    void aMoveToTheSamePlaceIsNone()
    {
        supermodule* first = m_bench->append(104);
        m_bench->drag.press(first, QPointF(250, 230));
        QVERIFY(!m_bench->drag.move(QPointF(250, 230)));
        QVERIFY(!first->m_moved);
        QCOMPARE(m_bench->chain(), QList<int>{104});
    }

    void partsOfUnitsAddUpOverTheMoves()
    {
        supermodule* block = m_bench->put(103, QPointF(700, 500));
        m_bench->drag.press(block, QPointF(710, 510));
        for (int i = 1; i <= 10; ++i) {
            m_bench->drag.move(QPointF(710 + 0.4 * i, 510));
            QCOMPARE(block->pos(), QPointF(block->pos().toPoint()));
        }
        QCOMPARE(block->pos(), QPointF(704, 500));
    }

    void whatIsLetGoOutsideWaitsForItsDeletion()
    {
        supermodule* first = m_bench->append(104);
        const QPointF firstAt = first->pos();
        m_bench->drag.press(first, QPointF(250, 230));
        m_bench->drag.move(QPointF(250, 900));
        QCOMPARE(m_bench->drag.release(true, true), BlockDrag::End::Outside);
        const ModulePlace place = m_bench->drag.placeForUndo(first);
        QCOMPARE(place.position, firstAt);
        QCOMPARE(place.parentKey, m_bench->main()->registryKey());
        QCOMPARE(place.link, NextLink);
        QCOMPARE(m_bench->abandoned, 0);
        m_bench->drag.forget();
        QCOMPARE(m_bench->abandoned, 1);
        QCOMPARE(m_bench->drag.placeForUndo(first).position, first->pos());
    }

    void theMainBlockStaysWhereverItIsLetGo()
    {
        m_bench->drag.press(m_bench->main(), QPointF(110, 210));
        m_bench->drag.move(QPointF(110, 900));
        QCOMPARE(m_bench->drag.release(true, true), BlockDrag::End::Settled);
        QCOMPARE(m_bench->abandoned, 0);
        QCOMPARE(m_bench->main()->pos(), QPointF(100, 890));
    }

    void aDragWithoutAReleaseSettlesWhereItIs()
    {
        supermodule* block = m_bench->put(103, QPointF(700, 500));
        m_bench->drag.press(block, QPointF(710, 510));
        m_bench->drag.move(QPointF(255, 215));
        QCOMPARE(m_bench->drag.cancel(), BlockDrag::End::Settled);
        QCOMPARE(m_bench->chain(), QList<int>{103});
        QVERIFY(!block->m_moved);
        QCOMPARE(block->zValue(), 0.0);
        QCOMPARE(m_bench->drag.cancel(), BlockDrag::End::Nothing);
        QCOMPARE(m_bench->abandoned, 1);
        QVERIFY(!m_bench->drag.move(QPointF(900, 900)));
    }

    void aPressThatIsCancelledChangesNothing()
    {
        supermodule* first = m_bench->append(104);
        m_bench->drag.press(first, QPointF(250, 230));
        QCOMPARE(m_bench->drag.cancel(), BlockDrag::End::Nothing);
        QVERIFY(!m_bench->drag.isHeld());
        QCOMPARE(m_bench->chain(), QList<int>{104});
    }

    void aBlockThatDiesEndsItsDrag()
    {
        supermodule* block = m_bench->put(103, QPointF(700, 500));
        m_bench->drag.press(block, QPointF(710, 510));
        m_bench->drag.move(QPointF(720, 520));
        supermodule::deleteTree(block);
        QVERIFY(!m_bench->drag.isHeld());
        QVERIFY(!m_bench->drag.move(QPointF(730, 530)));
        QCOMPARE(m_bench->drag.release(false, true), BlockDrag::End::Nothing);
    }
};

QTEST_MAIN(BlockDragTest)
#include "blockdragtest.moc"
