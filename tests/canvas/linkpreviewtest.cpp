#include "gesturebench.h"

#include <QRegularExpression>
#include <QTest>

namespace
{
/** How many links the log has told of. */
int s_links = 0;
} // namespace

/** The preview of a link over a scene that nobody shows. */
class LinkPreviewTest : public QObject
{
    Q_OBJECT

private slots:
    void itOpensAGapWhereTheBlockWouldGo()
    {
        GestureBench bench;
        supermodule* first = bench.append(104);
        const QPointF firstAt = first->pos();
        supermodule* block = bench.put(103, QPointF(245, 205));
        QVERIFY(!bench.preview.block()->isVisible());
        bench.preview.follow(block);
        QCOMPARE(bench.preview.place().m_target.data(), static_cast<supermodule*>(bench.main()));
        QCOMPARE(bench.preview.place().m_type, int(NextLink));
        QVERIFY(bench.preview.block()->isVisible());
        QCOMPARE(bench.chain(), (QList<int>{-1, 104}));
        QCOMPARE(first->x(), firstAt.x() + 120);
        bench.preview.hide();
        QVERIFY(!bench.preview.block()->isVisible());
        QVERIFY(!bench.preview.place().m_target);
        QCOMPARE(bench.chain(), QList<int>{104});
        QCOMPARE(first->pos(), firstAt);
    }

    void theGapGoesAlongWithTheBlock()
    {
        GestureBench bench;
        supermodule* first = bench.append(104);
        supermodule* block = bench.put(103, QPointF(245, 205));
        bench.preview.follow(block);
        block->setPos(first->pos() + QPointF(125, 5));
        bench.preview.follow(block);
        QCOMPARE(bench.preview.place().m_target.data(), first);
        QCOMPARE(bench.chain(), (QList<int>{104, -1}));
        block->setPos(900, 700);
        bench.preview.follow(block);
        QVERIFY(!bench.preview.block()->isVisible());
        QCOMPARE(bench.chain(), QList<int>{104});
    }

    void eachLinkIsLogged()
    {
        GestureBench bench;
        supermodule* block = bench.put(103, QPointF(245, 205));
        const QRegularExpression line(QStringLiteral("^ TzProgramView::moduleDrop  ?p_module .*"
                                                     "m_target .*m_type  ?0$"));
        QTest::ignoreMessage(QtDebugMsg, line);
        bench.preview.follow(block);
        QTest::ignoreMessage(QtDebugMsg, line);
        bench.preview.settle(block);
    }

    void aStepInTheSamePlaceLinksNothingAnew()
    {
        GestureBench bench;
        bench.append(104);
        supermodule* block = bench.put(103, QPointF(245, 205));
        bench.preview.follow(block);
        block->moveBy(1, 1);
        s_links = 0;
        const QtMessageHandler before =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& p_line) {
                s_links += p_line.contains(QLatin1String("moduleDrop")) ? 1 : 0;
            });
        bench.preview.follow(block);
        const int inPlace = s_links;
        block->setPos(900, 700);
        bench.preview.follow(block);
        qInstallMessageHandler(before);
        QCOMPARE(inPlace, 0);
        // What stood behind the gap is linked where that was.
        QCOMPARE(s_links, 1);
    }

    void aLinkIsMadeWhereTheGapIsOrWhereItIsTold()
    {
        GestureBench bench;
        supermodule* block = bench.put(103, QPointF(700, 500));
        QVERIFY(!bench.preview.link(block, nullptr, NextLink));
        QVERIFY(!block->parentModule());
        QVERIFY(bench.preview.link(block, bench.main(), NextLink));
        QCOMPARE(bench.chain(), QList<int>{103});
        supermodule* other = bench.put(104, QPointF(365, 205));
        bench.preview.follow(other);
        QVERIFY(bench.preview.link(other, nullptr, LeftLink));
        QCOMPARE(bench.chain(), (QList<int>{103, 104, -1}));
        bench.preview.hide();
        QCOMPARE(bench.chain(), (QList<int>{103, 104}));
    }

    void aBlockSettlesWhereTheGapIs()
    {
        GestureBench bench;
        bench.append(104);
        supermodule* block = bench.put(103, QPointF(245, 205));
        bench.preview.follow(block);
        bench.preview.settle(block);
        QCOMPARE(bench.chain(), (QList<int>{103, 104}));
        QVERIFY(!bench.preview.block()->parentModule());
        QVERIFY(!bench.preview.block()->isVisible());
        QCOMPARE(block->opacity(), 1.0);
    }

    void withoutAGapItSettlesLooseInWholeUnits()
    {
        GestureBench bench;
        supermodule* block = bench.put(103, QPointF(700.4, 500.6));
        bench.preview.follow(block);
        bench.preview.settle(block);
        QVERIFY(!block->parentModule());
        QCOMPARE(block->pos(), QPointF(700, 501));
        QCOMPARE(block->opacity(), 0.5);
    }

    void theMainBlockAndThePreviewItselfAreNoMatterOfIt()
    {
        GestureBench bench;
        supermodule* loose = bench.put(103, QPointF(700, 500));
        bench.main()->setPos(825, 505);
        bench.preview.follow(bench.main());
        QVERIFY(!bench.preview.place().m_target);
        QVERIFY(!loose->next());
    }

    void aLoopIsNoPlaceForItself()
    {
        GestureBench bench;
        supermodule* loop = bench.put(301, QPointF(700, 500));
        supermodule* inner = bench.put(103, QPointF());
        loop->insert(LeftLink, inner);
        QVERIFY(loop->touchedConnectors().contains(inner->connector(NextLink)));
        bench.preview.follow(loop);
        QVERIFY(!bench.preview.place().m_target);
        QVERIFY(!inner->next());
    }

    void whenItGoesTheGapIsClosed()
    {
        GestureBench bench;
        bench.append(104);
        supermodule* block = bench.put(103, QPointF(245, 205));
        {
            LinkPreview other(bench.document.scene(), bench.main());
            other.follow(block);
            QCOMPARE(bench.chain(), (QList<int>{-1, 104}));
        }
        QCOMPARE(bench.chain(), QList<int>{104});
    }

    void aTargetThatDiedLeavesWhatStoodBehindLoose()
    {
        GestureBench bench;
        supermodule* head = bench.put(104, QPointF(500, 500));
        head->insert(NextLink, bench.put(105, QPointF()));
        supermodule* behind = head->next();
        supermodule* block = bench.put(103, QPointF(625, 505));
        bench.preview.follow(block);
        QCOMPARE(bench.preview.place().m_target.data(), head);
        bench.preview.block()->detachFromParent();
        supermodule::deleteTree(head);
        bench.preview.hide();
        QVERIFY(!behind->parentModule());
        QVERIFY(!bench.preview.block()->next());
    }
};

QTEST_MAIN(LinkPreviewTest)
#include "linkpreviewtest.moc"
