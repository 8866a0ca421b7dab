#include "gesturebench.h"

#include <QRegularExpression>
#include <QTest>

namespace
{
/** How many links the log has told of. */
int s_links = 0;
} // namespace

/** The preview of a link over a scene that nobody shows. */
class LinkPreviewTest : public FixtureTest<GestureBench>
{
    Q_OBJECT

private slots:
    void itOpensAGapWhereTheBlockWouldGo()
    {
        supermodule* first = m_bench->append(104);
        const QPointF firstAt = first->pos();
        supermodule* block = m_bench->put(103, QPointF(245, 205));
        QVERIFY(!m_bench->preview.block()->isVisible());
        m_bench->preview.follow(block);
        QCOMPARE(m_bench->preview.place().m_target.data(),
                 static_cast<supermodule*>(m_bench->main()));
        QCOMPARE(m_bench->preview.place().m_type, int(NextLink));
        QVERIFY(m_bench->preview.block()->isVisible());
        QCOMPARE(m_bench->chain(), (QList<int>{-1, 104}));
        QCOMPARE(first->x(), firstAt.x() + 120);
        m_bench->preview.hide();
        QVERIFY(!m_bench->preview.block()->isVisible());
        QVERIFY(!m_bench->preview.place().m_target);
        QCOMPARE(m_bench->chain(), QList<int>{104});
        QCOMPARE(first->pos(), firstAt);
    }

    void theGapGoesAlongWithTheBlock()
    {
        supermodule* first = m_bench->append(104);
        supermodule* block = m_bench->put(103, QPointF(245, 205));
        m_bench->preview.follow(block);
        block->setPos(first->pos() + QPointF(125, 5));
        m_bench->preview.follow(block);
        QCOMPARE(m_bench->preview.place().m_target.data(), first);
        QCOMPARE(m_bench->chain(), (QList<int>{104, -1}));
        block->setPos(900, 700);
        m_bench->preview.follow(block);
        QVERIFY(!m_bench->preview.block()->isVisible());
        QCOMPARE(m_bench->chain(), QList<int>{104});
    }

    void eachLinkIsLogged()
    {
        supermodule* block = m_bench->put(103, QPointF(245, 205));
        const QRegularExpression line(QStringLiteral("^ TzProgramView::moduleDrop  ?p_module .*"
                                                     "m_target .*m_type  ?0$"));
        QTest::ignoreMessage(QtDebugMsg, line);
        m_bench->preview.follow(block);
        QTest::ignoreMessage(QtDebugMsg, line);
        m_bench->preview.settle(block);
    }

    void aStepInTheSamePlaceLinksNothingAnew()
    {
        m_bench->append(104);
        supermodule* block = m_bench->put(103, QPointF(245, 205));
        m_bench->preview.follow(block);
        block->moveBy(1, 1);
        s_links = 0;
        const QtMessageHandler before =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& p_line) {
                s_links += p_line.contains(QLatin1String("moduleDrop")) ? 1 : 0;
            });
        m_bench->preview.follow(block);
        const int inPlace = s_links;
        block->setPos(900, 700);
        m_bench->preview.follow(block);
        qInstallMessageHandler(before);
        QCOMPARE(inPlace, 0);
        // What stood behind the gap is linked where that was.
        QCOMPARE(s_links, 1);
    }

    void aLinkIsMadeWhereTheGapIsOrWhereItIsTold()
    {
        supermodule* block = m_bench->put(103, QPointF(700, 500));
        QVERIFY(!m_bench->preview.link(block, nullptr, NextLink));
        QVERIFY(!block->parentModule());
        QVERIFY(m_bench->preview.link(block, m_bench->main(), NextLink));
        QCOMPARE(m_bench->chain(), QList<int>{103});
        supermodule* other = m_bench->put(104, QPointF(365, 205));
        m_bench->preview.follow(other);
        QVERIFY(m_bench->preview.link(other, nullptr, LeftLink));
        QCOMPARE(m_bench->chain(), (QList<int>{103, 104, -1}));
        m_bench->preview.hide();
        QCOMPARE(m_bench->chain(), (QList<int>{103, 104}));
    }

    void aBlockSettlesWhereTheGapIs()
    {
        m_bench->append(104);
        supermodule* block = m_bench->put(103, QPointF(245, 205));
        m_bench->preview.follow(block);
        m_bench->preview.settle(block);
        QCOMPARE(m_bench->chain(), (QList<int>{103, 104}));
        QVERIFY(!m_bench->preview.block()->parentModule());
        QVERIFY(!m_bench->preview.block()->isVisible());
        QCOMPARE(block->opacity(), 1.0);
    }

    void withoutAGapItSettlesLooseInWholeUnits()
    {
        supermodule* block = m_bench->put(103, QPointF(700.4, 500.6));
        m_bench->preview.follow(block);
        m_bench->preview.settle(block);
        QVERIFY(!block->parentModule());
        QCOMPARE(block->pos(), QPointF(700, 501));
        QCOMPARE(block->opacity(), 0.5);
    }

    void theMainBlockAndThePreviewItselfAreNoMatterOfIt()
    {
        supermodule* loose = m_bench->put(103, QPointF(700, 500));
        m_bench->main()->setPos(825, 505);
        m_bench->preview.follow(m_bench->main());
        QVERIFY(!m_bench->preview.place().m_target);
        QVERIFY(!loose->next());
    }

    void aLoopIsNoPlaceForItself()
    {
        supermodule* loop = m_bench->put(301, QPointF(700, 500));
        supermodule* inner = m_bench->put(103, QPointF());
        loop->insert(LeftLink, inner);
        QVERIFY(loop->touchedConnectors().contains(inner->connector(NextLink)));
        m_bench->preview.follow(loop);
        QVERIFY(!m_bench->preview.place().m_target);
        QVERIFY(!inner->next());
    }

    void whenItGoesTheGapIsClosed()
    {
        m_bench->append(104);
        supermodule* block = m_bench->put(103, QPointF(245, 205));
        {
            LinkPreview other(m_bench->document.scene(), m_bench->main());
            other.follow(block);
            QCOMPARE(m_bench->chain(), (QList<int>{-1, 104}));
        }
        QCOMPARE(m_bench->chain(), QList<int>{104});
    }

    void aTargetThatDiedLeavesWhatStoodBehindLoose()
    {
        supermodule* head = m_bench->put(104, QPointF(500, 500));
        head->insert(NextLink, m_bench->put(105, QPointF()));
        supermodule* behind = head->next();
        supermodule* block = m_bench->put(103, QPointF(625, 505));
        m_bench->preview.follow(block);
        QCOMPARE(m_bench->preview.place().m_target.data(), head);
        m_bench->preview.block()->detachFromParent();
        supermodule::deleteTree(head);
        m_bench->preview.hide();
        QVERIFY(!behind->parentModule());
        QVERIFY(!m_bench->preview.block()->next());
    }
};

QTEST_MAIN(LinkPreviewTest)
#include "linkpreviewtest.moc"
