#include "canvas/moduleat.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/feedbackmodule.h"
#include "modules/itemtype.h"
#include "modules/supermodule.h"
#include "support/system/fixturetest.h"

#include <QGraphicsScene>
#include <QTest>

#include <algorithm>

namespace
{
/** A scene with blocks that stand where they are put. */
struct Ground {
    ~Ground() { supermodule::deleteModules(m_modules); }
    supermodule* put(int p_id, const QPointF& p_at) { return put(createModuleFromId(p_id), p_at); }
    supermodule* put(supermodule* p_module, const QPointF& p_at)
    {
        p_module->enterScene(&scene);
        p_module->setPos(p_at);
        m_modules.append(p_module);
        return p_module;
    }
    supermodule* at(const QPointF& p_scenePos) const
    {
        return moduleAt(scene.items(p_scenePos, Qt::IntersectsItemShape, Qt::DescendingOrder),
                        p_scenePos.x());
    }

    QGraphicsScene scene;

private:
    QVector<supermodule*> m_modules;
};
} // namespace

/** Which block a press means, by the items of a scene alone. */
class ModuleAtTest : public FixtureTest<Ground>
{
    Q_OBJECT

private slots:
    void theBlockUnderThePressIsMeant()
    {
        supermodule* block = m_bench->put(101, {100, 100});
        QCOMPARE(m_bench->at({130, 130}), block);
        QCOMPARE(m_bench->at({90, 130}), nullptr);
        m_bench->scene.addRect(0, 0, 50, 50);
        QCOMPARE(m_bench->at({20, 20}), nullptr);
    }

    void theFeetOfAnEmptyLoopBelongToIt()
    {
        supermodule* loop = m_bench->put(306, {100, 100});
        loop->updateTree();
        const QList<QGraphicsItem*> children = loop->childItems();
        const auto feet = std::find_if(children.begin(), children.end(), [](QGraphicsItem* p_item) {
            return p_item->type() == ModulePartItemType;
        });
        QVERIFY(feet != children.end());
        const QPointF at = (*feet)->sceneBoundingRect().bottomLeft() + QPointF(5, -2);
        QVERIFY(!loop->sceneBoundingRect().contains(at));
        QCOMPARE(m_bench->at(at), loop);
    }

    void ofNestedBlocksTheInnermostIsMeant()
    {
        supermodule* outer = m_bench->put(303, {0, 0});
        supermodule* inner = m_bench->put(303, {0, 0});
        supermodule* innermost = m_bench->put(101, {0, 0});
        inner->insert(LeftLink, innermost);
        outer->insert(LeftLink, inner);
        QVERIFY(outer->scenePos().x() < inner->scenePos().x());
        QCOMPARE(m_bench->at(innermost->scenePos() + QPointF(30, 30)), innermost);
        QCOMPARE(m_bench->at(inner->scenePos() + QPointF(5, 30)), inner);
        QCOMPARE(m_bench->at(outer->scenePos() + QPointF(5, 30)), outer);
    }

    void ofTwoThatBeginTogetherTheUpperOneIsMeant()
    {
        supermodule* first = m_bench->put(101, {100, 100});
        supermodule* second = m_bench->put(101, {100, 100});
        QCOMPARE(m_bench->at({130, 130}), second);
        first->setZValue(1);
        QCOMPARE(m_bench->at({130, 130}), first);
    }

    void aBlockThatBeginsTooFarToTheLeftIsNotMeant()
    {
        supermodule* loop = m_bench->put(303, {100, 0});
        QCOMPARE(moduleAt({loop}, 499.5), loop);
        QCOMPARE(moduleAt({loop}, 500), nullptr);
    }

    void thePreviewIsNeverMeant()
    {
        supermodule* block = m_bench->put(101, {100, 100});
        m_bench->put(new FeedbackModule, {110, 100});
        QCOMPARE(m_bench->at({130, 130}), block);
    }
};

QTEST_MAIN(ModuleAtTest)
#include "moduleattest.moc"
