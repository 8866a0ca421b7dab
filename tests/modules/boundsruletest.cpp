#include "modules/catalogue/modulefactory.h"
#include "modules/supermodule.h"
#include "support/canvas/blockdata.h"

#include <QGraphicsScene>
#include <QRandomGenerator>
#include <QTest>
#include <QtMath>

namespace
{
const int s_plain[] = {103, 101, 107};

struct Bounds {
    int left;
    int top;
    int right;
    int bottom;
};

bool operator==(const Bounds& p_a, const Bounds& p_b)
{
    return p_a.left == p_b.left && p_a.top == p_b.top && p_a.right == p_b.right &&
           p_a.bottom == p_b.bottom;
}

bool isLoop(const supermodule* p_module) { return loopTypes().contains(p_module->id); }

/** The walk over a block and all in it, one block after the other and each time anew. */
void walk(const supermodule* p_module, Bounds& p_bounds)
{
    if (isLoop(p_module) && p_module->left()) {
        for (const supermodule* each = p_module->left(); each; each = each->next()) {
            Bounds own = p_bounds;
            walk(each, own);
            p_bounds = {qMin(p_bounds.left, own.left), qMin(p_bounds.top, own.top),
                        qMax(p_bounds.right, own.right), qMax(p_bounds.bottom, own.bottom)};
        }
        p_bounds.right += 40;
        p_bounds.top -= 20;
        return;
    }
    const bool loop = isLoop(p_module);
    const qreal width = loop ? 260 : p_module->boundingRect().width();
    const qreal height = loop ? 140 : p_module->boundingRect().height();
    const QPointF at = p_module->scenePos();
    if (at.x() <= p_bounds.left) {
        p_bounds.left = qRound(at.x());
    }
    if (at.y() <= p_bounds.top) {
        p_bounds.top = qRound(at.y());
    }
    if (p_bounds.right <= at.x() + width) {
        p_bounds.right = qRound(at.x() + width);
    }
    if (p_bounds.bottom <= at.y() + height) {
        p_bounds.bottom = qRound(at.y() + height);
    }
    if (loop) {
        p_bounds.top -= 20;
    }
}

/** A chain of random blocks, loops in loops among them. */
supermodule* randomChain(QGraphicsScene& p_scene, QRandomGenerator& p_random, int p_depth)
{
    supermodule* first = nullptr;
    supermodule* last = nullptr;
    const int length = p_random.bounded(1, 5);
    for (int i = 0; i < length; ++i) {
        const bool loop = p_depth > 0 && p_random.bounded(2) == 0;
        supermodule* module =
            createModuleFromId(loop ? loopTypes().at(p_random.bounded(loopTypes().size()))
                                    : s_plain[p_random.bounded(3)]);
        p_scene.addItem(module);
        if (loop && p_random.bounded(4) > 0) {
            module->hangModule(LeftLink, randomChain(p_scene, p_random, p_depth - 1));
        }
        if (last) {
            last->hangModule(NextLink, module);
        } else {
            first = module;
        }
        last = module;
    }
    return first;
}
} // namespace

class BoundsRuleTest : public QObject
{
    Q_OBJECT

private slots:
    void loopsGrowAsAWalkOverEveryBlockOfTheirBodiesTells()
    {
        QRandomGenerator random(20);
        int loops = 0;
        for (int i = 0; i < 300; ++i) {
            QGraphicsScene scene;
            supermodule* first = randomChain(scene, random, 5);
            // Whole units, as a document has them at rest, and fractions, as a drag gives them.
            const qreal unit = i % 2 == 0 ? 1.0 : 0.125;
            first->setPos(random.bounded(-4000, 4000) * unit, random.bounded(-4000, 4000) * unit);
            first->updateLayout();
            const QList<QGraphicsItem*> items = scene.items();
            for (QGraphicsItem* item : items) {
                supermodule* module = supermodule::fromItem(item);
                if (!module) {
                    continue;
                }
                Bounds walked = {random.bounded(-900, 900), random.bounded(-900, 900),
                                 random.bounded(-900, 900), random.bounded(-900, 900)};
                Bounds grown = walked;
                walk(module, walked);
                module->extent(grown.left, grown.top, grown.right, grown.bottom);
                QVERIFY(grown == walked);
                if (isLoop(module) && module->left()) {
                    ++loops;
                    const int x = static_cast<int>(module->x());
                    const int y = static_cast<int>(module->y());
                    Bounds rect = {x, y, x, static_cast<int>(module->y() + 140)};
                    walk(module, rect);
                    QCOMPARE(module->boundingRect(),
                             QRectF(rect.left - x, rect.top - y, rect.right - rect.left,
                                    rect.bottom - rect.top));
                }
            }
            supermodule::deleteTree(first);
        }
        QVERIFY(loops > 1000);
    }

    void rulesOneBehindTheOtherDoWhatTheyDoOneByOne()
    {
        QRandomGenerator random(21);
        for (int i = 0; i < 1000; ++i) {
            Bounds byOne = {random.bounded(-50, 50), random.bounded(-50, 50),
                            random.bounded(-50, 50), random.bounded(-50, 50)};
            Bounds atOnce = byOne;
            BoundsRule all;
            for (int n = 0; n < 6; ++n) {
                BoundsRule rule;
                if (random.bounded(3) > 0) {
                    rule.left = random.bounded(-50, 50);
                    rule.top = random.bounded(-50, 50);
                    rule.right = random.bounded(-50, 50);
                    rule.bottom = random.bounded(-50, 50);
                }
                rule.addMargins(random.bounded(20), random.bounded(40));
                rule.apply(byOne.left, byOne.top, byOne.right, byOne.bottom);
                all.then(rule);
            }
            all.apply(atOnce.left, atOnce.top, atOnce.right, atOnce.bottom);
            QVERIFY(atOnce == byOne);
        }
    }
};

QTEST_MAIN(BoundsRuleTest)

#include "boundsruletest.moc"
