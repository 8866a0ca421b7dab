#include "dropping.h"
#include "parameterbench.h"
#include "support/canvas/blockdata.h"
#include "support/system/datatable.h"

#include <QAbstractButton>
#include <QPainter>
#include <QtTest>

/** The buttons of loops beside those of what is in them. */
class LoopButtonsTest : public FixtureTest<Bench>
{
    Q_OBJECT

private slots:
    void theButtonsOfAConditionalLoopHangUnderItsLegs()
    {
        supermodule* loop = m_bench->seen(306, {300, 300});
        supermodule* first = dropOn(*m_bench, loop, LeftLink, 103);
        dropOn(*m_bench, first, NextLink, 105);
        QCOMPARE(loop->boundingRect().width(), 320.0);
        // One under each leg, where the drawers of the body's blocks leave them free.
        QCOMPARE(loop->buttonRect(0).center(), QPointF(21, 120));
        QCOMPARE(loop->buttonRect(1).center(), QPointF(320 - 19, 120));
        m_bench->click(first->scenePos() + QPointF(30, 30));
        m_bench->key(Qt::Key_Delete);
        QVERIFY(!loop->left());
        QCOMPARE(loop->buttonRect(0).topLeft(), QPointF(140, 100));
        QCOMPARE(loop->buttonRect(1).topLeft(), QPointF(200, 100));
    }

    void everyButtonOfALoopAndItsBodyCanBePressed_data()
    {
        columns<int, int>("loop", "inside");
        for (int loop : loopTypes()) {
            // One drawer, two drawers, and a loop.
            for (int inside : {104, 107, 306}) {
                QTest::addRow("%d around %d", loop, inside) << loop << inside;
            }
        }
    }

    void everyButtonOfALoopAndItsBodyCanBePressed()
    {
        QFETCH(int, loop);
        QFETCH(int, inside);
        for (bool bodyFirst : {false, true}) {
            m_bench.emplace();
            supermodule* body = bodyFirst ? m_bench->seen(inside, {300, 500}) : nullptr;
            supermodule* outer = m_bench->seen(loop, {300, 300});
            if (bodyFirst) {
                const QPointF place =
                    outer->scenePos() + QPointF(blockDataOf(loop)->bodyOffset() + 20, 10);
                m_bench->drag(body, m_bench->at(place) - m_bench->at(body->scenePos()));
            } else {
                body = dropOn(*m_bench, outer, LeftLink, inside);
            }
            QCOMPARE(outer->left(), body);
            for (supermodule* block : {outer, body}) {
                const int buttons = block->buttonCount();
                // Of the two drawers of a filled loop the 20 towards the body are under its blocks.
                const bool underLegs = buttons == 2 && block->left();
                const QVector<QVector<int>> places =
                    underLegs ? QVector<QVector<int>>{{10, 30}, {30, 50}}
                              : QVector<QVector<int>>{{10, 30, 50}, {10, 30, 50}};
                for (int i = 0; i < buttons; ++i) {
                    const QAbstractButton* pressed = block->button(i);
                    for (const int x : places.at(i)) {
                        const QSignalSpy presses(pressed, &QAbstractButton::clicked);
                        m_bench->click(Bench::placeOf(block, i).topLeft() + QPointF(x, 20));
                        QVERIFY2(presses.count() == 1,
                                 qPrintable(QStringLiteral("button %1 of %2 at %3")
                                                .arg(i)
                                                .arg(block->id)
                                                .arg(x)));
                    }
                }
            }
        }
    }

    void aBodyLiesAboveAllItsLoopsHoweverOldTheyAre()
    {
        supermodule* chain = m_bench->seen(104, {300, 500});
        supermodule* behind = m_bench->dropBehind(chain, 107);
        supermodule* inner = m_bench->seen(306, {300, 400});
        supermodule* outer = m_bench->seen(301, {300, 200});
        const auto dragInto = [&](supermodule* p_module, supermodule* p_loop, int p_offset) {
            m_bench->drag(p_module, m_bench->at(p_loop->scenePos() + QPointF(p_offset, 10)) -
                                        m_bench->at(p_module->scenePos()));
            QCOMPARE(p_loop->left(), p_module);
        };
        const auto place = [&](supermodule* p_module) {
            return m_bench->view.scene()
                ->items(m_bench->view.sceneRect(), Qt::IntersectsItemShape, Qt::AscendingOrder)
                .indexOf(p_module);
        };
        dragInto(chain, inner, 60);
        dragInto(inner, outer, 140);
        QVERIFY(place(outer) < place(inner));
        QVERIFY(place(inner) < place(chain));
        QVERIFY(place(inner) < place(behind));
        // The tip that Qt shows is that of what lies on top.
        const auto* top = m_bench->view.itemAt(m_bench->at(behind->scenePos() + QPointF(60, 40)));
        QCOMPARE(top->toolTip(), behind->toolTip());
    }

    void anEmptyConditionalLoopIsPaintedAndHeldDownToItsFeet()
    {
        supermodule* loop = m_bench->seen(306, {300, 300});
        // Painted piece by piece it looks as painted at once.
        const QRect area(loop->scenePos().toPoint() + QPoint(0, -20), QSize(280, 162));
        const auto painted = [&](const QRect& p_piece) {
            QImage image(area.size(), QImage::Format_ARGB32);
            image.fill(Qt::white);
            QPainter painter(&image);
            m_bench->view.scene()->render(&painter, p_piece.translated(-area.topLeft()), p_piece);
            painter.end();
            return image.copy(p_piece.translated(-area.topLeft()));
        };
        const QImage whole = painted(area);
        const QRect feet(area.left(), area.top() + 106, area.width(), 14);
        QCOMPARE(painted(feet), whole.copy(feet.translated(-area.topLeft())));
        QVERIFY(whole.pixelColor(20, 130) != QColor(Qt::white));
        // A hand that takes it by a foot takes it.
        const QPointF before = loop->scenePos();
        const QPointF foot = before + QPointF(20, 110);
        m_bench->press(foot);
        m_bench->move(foot + QPointF(30, 20));
        m_bench->move(foot + QPointF(60, 40));
        m_bench->release(foot + QPointF(60, 40));
        QCOMPARE(loop->scenePos(), before + QPointF(60, 40));
        // With a body there is nothing of it behind its end.
        dropOn(*m_bench, loop, LeftLink, 103);
        m_bench->click(loop->scenePos() + QPointF(240, 110));
        QVERIFY(!m_bench->view.currentModule());
    }

    void pressOnALoopsLeftButtonPlacesThePopUpUnderThatButton_data()
    {
        columns<int, int, bool>("id", "blocks", "nested");
        for (const int id : {306, 307}) {
            const QByteArray name = QByteArray::number(id);
            QTest::newRow(name + " empty") << id << 0 << false;
            QTest::newRow(name + " with two blocks") << id << 2 << false;
            QTest::newRow(name + " with a loop") << id << 0 << true;
        }
    }

    void pressOnALoopsLeftButtonPlacesThePopUpUnderThatButton()
    {
        QFETCH(int, id);
        QFETCH(int, blocks);
        QFETCH(bool, nested);
        supermodule* loop = m_bench->seen(id, {300, 300});
        for (int i = 0; i < blocks; ++i) {
            dropOn(*m_bench, loop, LeftLink, 103);
        }
        if (nested) {
            dropOn(*m_bench, loop, LeftLink, 303);
        }
        m_bench->clickButton(loop, 0);
        QVERIFY(Bench::popUpIsOpen());
        const QRectF button = Bench::placeOf(loop, 0);
        const QRectF popUp = Bench::popUp()->sceneBoundingRect();
        QCOMPARE(popUp.center().x(), button.center().x());
        QCOMPARE(popUp.top(), loop->y() + 150);
    }
};

QTEST_MAIN(LoopButtonsTest)
#include "loopbuttonstest.moc"
