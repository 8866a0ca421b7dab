#include "canvas/palettedrag.h"
#include "gesturebench.h"

#include <QTest>

/** The drag from the palette over a scene that nobody shows. */
class PaletteDragTest : public QObject
{
    Q_OBJECT

private slots:
    void theBlockExistsHiddenFromTheMomentItComesIn()
    {
        Bench bench;
        const int key = nextModuleKey;
        supermodule* block = bench.drag.enter(103);
        QVERIFY(block && block == bench.drag.module());
        QVERIFY(!block->isVisible());
        QCOMPARE(block->scene(), static_cast<QGraphicsScene*>(&bench.document.scene()));
        QCOMPARE(block->registryKey(), key);
        QCOMPARE(block->moduleKey, 0);
    }

    void aDropLinksItWhereTheGapIs()
    {
        Bench bench;
        bench.append(104);
        supermodule* block = bench.drag.enter(103);
        bench.drag.move(QPointF(245, 205));
        QCOMPARE(bench.chain(), (QList<int>{-1, 104}));
        QCOMPARE(bench.drag.drop(), block);
        QCOMPARE(bench.chain(), (QList<int>{103, 104}));
        QVERIFY(block->isVisible());
        QVERIFY(!bench.drag.module());
        QVERIFY(!bench.drag.drop());
    }

    void aDropElsewhereLeavesItLoose()
    {
        Bench bench;
        supermodule* block = bench.drag.enter(103);
        bench.drag.move(QPointF(700, 500));
        bench.drag.drop();
        QVERIFY(!block->parentModule());
        QCOMPARE(block->pos(), QPointF(700, 500));
        QCOMPARE(block->opacity(), 0.5);
    }

    void leavingDeletesItAndClosesTheGap()
    {
        Bench bench;
        bench.append(104);
        const int blocks = liveModules.size();
        bench.drag.enter(103);
        bench.drag.move(QPointF(245, 205));
        bench.drag.leave();
        QCOMPARE(liveModules.size(), blocks);
        QCOMPARE(bench.chain(), QList<int>{104});
        bench.drag.leave();
        bench.drag.move(QPointF(245, 205));
        QCOMPARE(bench.chain(), QList<int>{104});
    }

    void comingInAgainMakesANewBlockWithTheNextKey()
    {
        Bench bench;
        const int blocks = liveModules.size();
        const int first = bench.drag.enter(103)->registryKey();
        bench.drag.leave();
        QCOMPARE(bench.drag.enter(103)->registryKey(), first + 1);
        bench.drag.enter(104);
        QCOMPARE(liveModules.size(), blocks + 1);
    }

    void aDragThatNeverEndsLeavesNothingBehind()
    {
        GestureBench bench;
        const int blocks = liveModules.size();
        {
            PaletteDrag drag(bench.document.scene(), bench.preview);
            drag.enter(103);
        }
        QCOMPARE(liveModules.size(), blocks);
    }

private:
    struct Bench : GestureBench {
        PaletteDrag drag{document.scene(), preview};
    };
};

QTEST_MAIN(PaletteDragTest)
#include "palettedragtest.moc"
