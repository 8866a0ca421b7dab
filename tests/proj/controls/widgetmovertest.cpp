#include "proj/controls/widgetmover.h"

#include <QMouseEvent>
#include <QtTest>
#include <QWidget>

namespace
{
/** Counts the mouse events that reach it. */
class Body : public QWidget
{
public:
    int m_presses = 0;
    int m_moves = 0;

protected:
    void mousePressEvent(QMouseEvent*) override { ++m_presses; }
    void mouseMoveEvent(QMouseEvent*) override { ++m_moves; }
};

void sendMouse(QWidget& p_widget, QEvent::Type p_type, const QPoint& p_global,
               Qt::MouseButton p_button = Qt::LeftButton)
{
    QMouseEvent event(p_type, p_widget.mapFromGlobal(p_global), p_global, p_button, p_button,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&p_widget, &event);
}
} // namespace

/** Dragging a window without a frame by its body. */
class WidgetMoverTest : public QObject
{
    Q_OBJECT

private slots:
    void theWindowFollowsTheMouseFromWhereItWasPressed()
    {
        Body body;
        new WidgetMover(&body);
        body.setGeometry(100, 50, 80, 60);
        sendMouse(body, QEvent::MouseButtonPress, QPoint(110, 70));
        sendMouse(body, QEvent::MouseMove, QPoint(140, 60));
        QCOMPARE(body.pos(), QPoint(130, 40));
        sendMouse(body, QEvent::MouseMove, QPoint(100, 170));
        QCOMPARE(body.pos(), QPoint(90, 150));
    }

    void theWindowStillSeesItsEvents()
    {
        Body body;
        new WidgetMover(&body);
        sendMouse(body, QEvent::MouseButtonPress, QPoint(10, 10));
        sendMouse(body, QEvent::MouseMove, QPoint(20, 10));
        QCOMPARE(body.m_presses, 1);
        QCOMPARE(body.m_moves, 1);
    }

    void eventsOfAChildMoveNothing()
    {
        Body body;
        auto* child = new Body;
        child->setParent(&body);
        new WidgetMover(&body);
        body.move(100, 50);
        sendMouse(*child, QEvent::MouseButtonPress, QPoint(110, 70));
        sendMouse(*child, QEvent::MouseMove, QPoint(140, 60));
        QCOMPARE(child->m_moves, 1);
        QCOMPARE(body.pos(), QPoint(100, 50));
    }

    void aMoveWithoutAPressStartsFromZero()
    {
        Body body;
        new WidgetMover(&body);
        body.move(100, 50);
        sendMouse(body, QEvent::MouseMove, QPoint(33, 44));
        QCOMPARE(body.pos(), QPoint(33, 44));
    }

    void anyButtonAndNoneMoveIt_data()
    {
        QTest::addColumn<int>("button");
        QTest::newRow("right") << int(Qt::RightButton);
        QTest::newRow("middle") << int(Qt::MiddleButton);
        QTest::newRow("none") << int(Qt::NoButton);
    }

    void anyButtonAndNoneMoveIt()
    {
        QFETCH(int, button);
        Body body;
        new WidgetMover(&body);
        // Without a button down, only a widget that asked for it sees the mouse move.
        body.setMouseTracking(true);
        body.move(100, 50);
        sendMouse(body, QEvent::MouseButtonPress, QPoint(110, 70), Qt::RightButton);
        sendMouse(body, QEvent::MouseMove, QPoint(120, 90), static_cast<Qt::MouseButton>(button));
        QCOMPARE(body.pos(), QPoint(110, 70));
    }

    void aReleaseEndsNothing()
    {
        Body body;
        new WidgetMover(&body);
        body.setMouseTracking(true);
        body.move(100, 50);
        sendMouse(body, QEvent::MouseButtonPress, QPoint(110, 70));
        sendMouse(body, QEvent::MouseButtonRelease, QPoint(120, 90));
        QCOMPARE(body.pos(), QPoint(100, 50));
        sendMouse(body, QEvent::MouseMove, QPoint(120, 90), Qt::NoButton);
        QCOMPARE(body.pos(), QPoint(110, 70));
        // The next press counts anew.
        sendMouse(body, QEvent::MouseButtonPress, QPoint(200, 200));
        sendMouse(body, QEvent::MouseMove, QPoint(201, 202));
        QCOMPARE(body.pos(), QPoint(111, 72));
    }

    void itGoesWithItsWidget()
    {
        QPointer<WidgetMover> mover;
        {
            Body body;
            mover = new WidgetMover(&body);
            QCOMPARE(mover->parent(), &body);
        }
        QVERIFY(mover.isNull());
    }
};

QTEST_MAIN(WidgetMoverTest)
#include "widgetmovertest.moc"
