#include "canvas/canvaszoom.h"
#include "support/canvas/canvastest.h"
#include "support/system/datatable.h"

#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

namespace
{
void turnWheel(TzProgramView& p_view, const QPointF& p_at, const QPoint& p_turn)
{
    QWheelEvent event(p_at, p_view.viewport()->mapToGlobal(p_at.toPoint()), QPoint(), p_turn,
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(p_view.viewport(), &event);
}

void turnWheel(TzProgramView& p_view, const QPointF& p_at, int p_delta)
{
    turnWheel(p_view, p_at, QPoint(0, p_delta));
}

QWidget* strip(TzProgramView& p_view)
{
    const QList<QWidget*> children =
        p_view.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* child : children) {
        if (child->testAttribute(Qt::WA_TransparentForMouseEvents)) {
            return child;
        }
    }
    return nullptr;
}
} // namespace

class ZoomTest : public CanvasTest
{
    Q_OBJECT

private slots:
    void theScreenScaleFollowsTheScreensWidth_data()
    {
        columns<int, double>("width", "scale");
        QTest::newRow("narrow") << 1024 << 0.5;
        QTest::newRow("1279") << 1279 << 0.5;
        QTest::newRow("1280") << 1280 << 0.5;
        QTest::newRow("1366") << 1366 << 0.5671875;
        QTest::newRow("1600") << 1600 << 0.75;
        QTest::newRow("1920") << 1920 << 1.0;
        QTest::newRow("wide") << 3840 << 1.0;
    }

    void theScreenScaleFollowsTheScreensWidth()
    {
        QFETCH(int, width);
        QFETCH(double, scale);
        QCOMPARE(screenScale(width), scale);
    }

    void atTheUpperLimitTheFactorIsStoredButNotDrawn()
    {
        m_canvas->view.zoomView(0);
        for (int i = 0; i < 9; ++i) {
            m_canvas->view.zoomView(1);
        }
        QCOMPARE(m_canvas->view.zoomFactor(), 1.9);
        const double drawn = m_canvas->view.matrix().m11();
        QCOMPARE(drawn, 1.9 + TzProgramView::zoomBase());
        m_canvas->view.zoomView(1);
        QCOMPARE(m_canvas->view.zoomFactor(), 2.0);
        QCOMPARE(m_canvas->view.matrix().m11(), drawn);
        m_canvas->view.zoomView(1);
        QCOMPARE(m_canvas->view.zoomFactor(), 2.0);
        m_canvas->view.zoomView(-2);
        QCOMPARE(m_canvas->view.zoomFactor(), 1.8);
        QCOMPARE(m_canvas->view.matrix().m11(), 1.8 + TzProgramView::zoomBase());
    }

    void fiveStepsDownStopAtTheLowerLimit()
    {
        m_canvas->view.zoomView(0);
        for (int i = 0; i < 5; ++i) {
            m_canvas->view.zoomView(-1);
        }
        // Exactly: a factor a little above would be drawn, on a narrow screen as nothing at all.
        QVERIFY(m_canvas->view.zoomFactor() == 0.5);
        QCOMPARE(m_canvas->view.matrix().m11(), 0.6 + TzProgramView::zoomBase());
    }

    void resetGoesBackToOne()
    {
        m_canvas->view.zoomView(3);
        m_canvas->view.zoomView(0);
        QCOMPARE(m_canvas->view.zoomFactor(), 1.0);
        QCOMPARE(m_canvas->view.matrix().m11(), 1.0 + TzProgramView::zoomBase());
    }

    void theWheelOverTheStripScrollsSidewaysAndShowsItForASecond()
    {
        QScrollBar* bar = m_canvas->view.horizontalScrollBar();
        bar->setValue(500);
        const int height = m_canvas->view.viewport()->height();
        const int width = m_canvas->view.viewport()->width();
        turnWheel(m_canvas->view, QPointF(200, height - 100), 120);
        QCOMPARE(bar->value(), 548);
        turnWheel(m_canvas->view, QPointF(200, height - 1), -33);
        QCOMPARE(bar->value(), 548 - 13);
        QWidget* area = strip(m_canvas->view);
        QVERIFY(area && area->isVisible());
        QCOMPARE(area->geometry(), QRect(0, height - 100, width - 100, 100));
        const auto* timer =
            m_canvas->view.findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
        QVERIFY(timer && timer->isActive() && timer->isSingleShot());
        QCOMPARE(timer->interval(), 1000);
        QTRY_VERIFY_WITH_TIMEOUT(!area->isVisible(), 5000);
    }

    void theWheelOverTheStripsRightEndIsANormalWheel()
    {
        m_canvas->view.horizontalScrollBar()->setValue(500);
        m_canvas->view.verticalScrollBar()->setValue(500);
        const QSize size = m_canvas->view.viewport()->size();
        turnWheel(m_canvas->view, QPointF(size.width() - 100, size.height() - 50), -120);
        QCOMPARE(m_canvas->view.horizontalScrollBar()->value(), 500);
        QVERIFY(m_canvas->view.verticalScrollBar()->value() > 500);
        QVERIFY(!strip(m_canvas->view)->isVisible());
        const int before = m_canvas->view.verticalScrollBar()->value();
        turnWheel(m_canvas->view, QPointF(200, size.height() - 101), -120);
        QVERIFY(m_canvas->view.verticalScrollBar()->value() > before);
        QVERIFY(!strip(m_canvas->view)->isVisible());
    }

    void theLogoStaysInTheMiddleOfTheView()
    {
        const QGraphicsItem& logo = m_canvas->document.scene().logo();
        const auto offMiddle = [&] {
            QCoreApplication::processEvents();
            const QPoint at = m_canvas->view.mapFromScene(logo.sceneBoundingRect().center());
            return (at - m_canvas->view.viewport()->rect().center()).manhattanLength();
        };
        QVERIFY(offMiddle() <= 2);
        m_canvas->view.horizontalScrollBar()->setValue(700);
        m_canvas->view.verticalScrollBar()->setValue(300);
        QVERIFY(offMiddle() <= 2);
        m_canvas->view.zoomView(3);
        QVERIFY(offMiddle() <= 2);
        m_canvas->view.resize(700, 400);
        QVERIFY(offMiddle() <= 2);
    }

    void aWheelTurnedSidewaysScrollsSideways()
    {
        QScrollBar* across = m_canvas->view.horizontalScrollBar();
        QScrollBar* down = m_canvas->view.verticalScrollBar();
        across->setValue(500);
        down->setValue(500);
        const QSize size = m_canvas->view.viewport()->size();
        turnWheel(m_canvas->view, QPointF(200, 200), QPoint(-120, 0));
        const int further = across->value();
        QVERIFY(further > 500);
        QVERIFY(!strip(m_canvas->view)->isVisible());
        turnWheel(m_canvas->view, QPointF(200, 200), QPoint(120, 0));
        QCOMPARE(across->value(), 500);
        // The strip goes by the amount alone, whichever way the wheel is turned.
        turnWheel(m_canvas->view, QPointF(200, size.height() - 50), QPoint(120, 0));
        QCOMPARE(across->value(), 548);
        QVERIFY(strip(m_canvas->view)->isVisible());
        QCOMPARE(down->value(), 500);
    }
};

QTEST_MAIN(ZoomTest)
#include "zoomtest.moc"
