#include "canvas/palettedrag.h"
#include "gesturebench.h"

#include <QTest>

namespace
{
struct Bench : GestureBench {
    PaletteDrag drag{document.scene(), preview};
};
} // namespace

/** The drag from the palette over a scene that nobody shows. */
class PaletteDragTest : public FixtureTest<Bench>
{
    Q_OBJECT

private slots:
    void theBlockExistsHiddenFromTheMomentItComesIn()
    {
        const int key = nextModuleKey;
        supermodule* block = m_bench->drag.enter(103);
        QVERIFY(block && block == m_bench->drag.module());
        QVERIFY(!block->isVisible());
        QCOMPARE(block->scene(), static_cast<QGraphicsScene*>(&m_bench->document.scene()));
        QCOMPARE(block->registryKey(), key);
        QCOMPARE(block->moduleKey, 0);
    }

    void aDropLinksItWhereTheGapIs()
    {
        m_bench->append(104);
        supermodule* block = m_bench->drag.enter(103);
        m_bench->drag.move(QPointF(245, 205));
        QCOMPARE(m_bench->chain(), (QList<int>{-1, 104}));
        QCOMPARE(m_bench->drag.drop(), block);
        QCOMPARE(m_bench->chain(), (QList<int>{103, 104}));
        QVERIFY(block->isVisible());
        QVERIFY(!m_bench->drag.module());
        QVERIFY(!m_bench->drag.drop());
    }

    void aDropElsewhereLeavesItLoose()
    {
        supermodule* block = m_bench->drag.enter(103);
        m_bench->drag.move(QPointF(700, 500));
        m_bench->drag.drop();
        QVERIFY(!block->parentModule());
        QCOMPARE(block->pos(), QPointF(700, 500));
        QCOMPARE(block->opacity(), 0.5);
    }

    void leavingDeletesItAndClosesTheGap()
    {
        m_bench->append(104);
        const int blocks = liveModules.size();
        m_bench->drag.enter(103);
        m_bench->drag.move(QPointF(245, 205));
        m_bench->drag.leave();
        QCOMPARE(liveModules.size(), blocks);
        QCOMPARE(m_bench->chain(), QList<int>{104});
        m_bench->drag.leave();
        m_bench->drag.move(QPointF(245, 205));
        QCOMPARE(m_bench->chain(), QList<int>{104});
    }

    void comingInAgainMakesANewBlockWithTheNextKey()
    {
        const int blocks = liveModules.size();
        const int first = m_bench->drag.enter(103)->registryKey();
        m_bench->drag.leave();
        QCOMPARE(m_bench->drag.enter(103)->registryKey(), first + 1);
        m_bench->drag.enter(104);
        QCOMPARE(liveModules.size(), blocks + 1);
    }

    void aDragThatNeverEndsLeavesNothingBehind()
    {
        const int blocks = liveModules.size();
        {
            PaletteDrag drag(m_bench->document.scene(), m_bench->preview);
            drag.enter(103);
        }
        QCOMPARE(liveModules.size(), blocks);
    }
};

QTEST_MAIN(PaletteDragTest)
#include "palettedragtest.moc"
