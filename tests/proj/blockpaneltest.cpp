#include "palettebench.h"
#include "watchedpanel.h"

#include <QApplication>
#include <QDataStream>
#include <QDrag>
#include <QLabel>
#include <QMimeData>
#include <QSignalSpy>
#include <QToolTip>
#include <QtTest>

#include <memory>

namespace
{
/** Keeps the drag that a widget starts. */
class DragCatcher : public QObject
{
public:
    explicit DragCatcher(QObject* p_source) { p_source->installEventFilter(this); }

    QDrag* drag() const { return qobject_cast<QDrag*>(m_child.data()); }

protected:
    bool eventFilter(QObject*, QEvent* p_event) override
    {
        if (p_event->type() == QEvent::ChildAdded) {
            m_child = static_cast<QChildEvent*>(p_event)->child();
        }
        return false;
    }

private:
    QPointer<QObject> m_child;
};

QColor middleOf(const QLabel& p_label)
{
    const QImage image = p_label.pixmap(Qt::ReturnByValue).toImage();
    return image.pixelColor(image.width() / 2, image.height() / 2);
}

const QColor s_blockColour(0xf9, 0x41, 0x41);
} // namespace

/** The strip of blocks and the drags that start from it. */
class BlockPanelTest : public QObject
{
    Q_OBJECT

private slots:
    void theStripHoldsTheBlocksOfItsCategory_data()
    {
        QTest::addColumn<int>("category");
        QTest::newRow("action") << 0;
        QTest::newRow("sound") << 7;
        QTest::newRow("expression") << 8;
        QTest::newRow("control") << 2;
    }

    void theStripHoldsTheBlocksOfItsCategory()
    {
        QFETCH(int, category);
        const BlockPanel panel(category);
        QVERIFY(!panel.labels().isEmpty());
        QCOMPARE(panel.labels().size(), blocksOfCategory(category));
    }

    // On the strip's dark ground, whose sheet would go through to them.
    void aBlockTellsItsNameInDarkOnWhite()
    {
        QWidget palette;
        palette.setStyleSheet(QStringLiteral("background-color:transparent;"));
        BlockPanel panel(ActionCategory, &palette);
        panel.setPanelHeight(125);
        palette.show();
        const QLabel& block = *panel.labels().at(1);
        QCOMPARE(block.toolTip(), QStringLiteral("后退时间"));
        QToolTip::showText(QPoint(20, 20), block.toolTip(), panel.labels().at(1));
        QTRY_VERIFY(QToolTip::isVisible());
        QWidget* tip = nullptr;
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget* window : windows) {
            if (window->inherits("QTipLabel") && window->isVisible()) {
                tip = window;
            }
        }
        QVERIFY(tip);
        const QImage image = tip->grab().toImage();
        QCOMPARE(image.pixelColor(3, 3), QColor(Qt::white));
        QCOMPARE(tip->palette().color(QPalette::ToolTipText), QColor(0x04, 0x3c, 0x66));
        QToolTip::hideText();
    }

    void aStripWithoutBlocksIsFiveWide()
    {
        BlockPanel panel(12345);
        panel.setPanelHeight(120);
        QCOMPARE(panel.geometry(), QRect(0, 0, 5, 120));
    }

    void blocksStandSideBySideInTheirPicturesShape()
    {
        BlockPanel panel(0);
        panel.setPanelHeight(125);
        // 75 is 60% of the height and 87 is 14 times 75 by 12, rounded down.
        QCOMPARE(panel.labels().at(0)->geometry(), QRect(6, 25, 87, 75));
        QCOMPARE(panel.labels().at(1)->x(),
                 panel.labels().at(0)->pixmap(Qt::ReturnByValue).width() + 30 + 6);
        QCOMPARE(panel.height(), 125);
        const QLabel& last = *panel.labels().last();
        QCOMPARE(panel.width(), last.x() - 6 + last.pixmap(Qt::ReturnByValue).width() + 30 + 5);
    }

    void aPressOnABlockStartsADragThatCarriesIt()
    {
        BlockPanel panel(0);
        panel.setPanelHeight(120);
        panel.show();
        const DragCatcher catcher(&panel);
        QTest::mousePress(panel.labels().at(1), Qt::LeftButton);
        QDrag* drag = catcher.drag();
        QVERIFY(drag);
        QCOMPARE(drag->source(), &panel);
        QCOMPARE(drag->supportedActions(), Qt::CopyAction | Qt::MoveAction);
        QCOMPARE(drag->defaultAction(), Qt::CopyAction);
        QCOMPARE(drag->mimeData()->formats(),
                 QStringList({QStringLiteral("application/x-dnditemdata")}));

        QDataStream stream(drag->mimeData()->data(QStringLiteral("application/x-dnditemdata")));
        QString image;
        QString pressedImage;
        QString caption;
        qint32 id = 0;
        stream >> image >> pressedImage >> caption >> id;
        QCOMPARE(stream.status(), QDataStream::Ok);
        QVERIFY(stream.atEnd());
        QCOMPARE(image, QStringLiteral(":/move/backford_time.png"));
        QCOMPARE(pressedImage, QStringLiteral(":/move/backford_time.png"));
        QCOMPARE(caption, QStringLiteral("后退时间"));
        QCOMPARE(id, 118);
    }

    void anyButtonStartsADrag()
    {
        WatchedPanel panel;
        int drags = 0;
        panel.m_onDrag = [&drags](QDrag&) { ++drags; };
        QTest::mousePress(panel.labels().at(0), Qt::LeftButton);
        QTest::mousePress(panel.labels().at(0), Qt::RightButton);
        QTest::mousePress(panel.labels().at(0), Qt::MiddleButton);
        QCOMPARE(drags, 3);
    }

    void theDraggedPictureHangsFromItsTopMiddle()
    {
        WatchedPanel panel;
        QSize size;
        QPoint hotSpot(-1, -1);
        panel.m_onDrag = [&](QDrag& p_drag) {
            size = p_drag.pixmap().size();
            hotSpot = p_drag.hotSpot();
        };
        QTest::mousePress(panel.labels().at(0), Qt::LeftButton);
        QCOMPARE(size, QSize(14, 12));
        QCOMPARE(hotSpot, QPoint(7, 0));
    }

    void theBlockLooksPressedWhileItIsDragged()
    {
        WatchedPanel panel;
        QLabel* label = panel.labels().at(0);
        QCOMPARE(middleOf(*label), s_blockColour);
        QColor during;
        panel.m_onDrag = [&](QDrag&) { during = middleOf(*label); };
        QTest::mousePress(label, Qt::LeftButton);
        // Half grey: halfway from red to (127, 127, 127).
        QVERIFY2(qAbs(during.red() - 188) <= 2, qPrintable(during.name()));
        QVERIFY2(qAbs(during.green() - 96) <= 2, qPrintable(during.name()));
        QCOMPARE(middleOf(*label), s_blockColour);
        QVERIFY(label->isVisible());
    }

    void aPressBetweenTwoBlocksStartsNothing()
    {
        WatchedPanel panel;
        int drags = 0;
        panel.m_onDrag = [&drags](QDrag&) { ++drags; };
        const QRect first = panel.labels().at(0)->geometry();
        QTest::mousePress(&panel, Qt::LeftButton, Qt::NoModifier,
                          QPoint(first.right() + 10, first.center().y()));
        QTest::mousePress(&panel, Qt::LeftButton, Qt::NoModifier,
                          QPoint(first.center().x(), first.top() - 5));
        QCOMPARE(drags, 0);
    }

    void theCanvasIsPaintedAnewAfterADrag()
    {
        WatchedPanel panel;
        const QSignalSpy updated(&panel, &PanelBase::updateViewSignal);
        int updatedBefore = -1;
        panel.m_onDrag = [&](QDrag&) { updatedBefore = updated.count(); };
        QTest::mousePress(panel.labels().at(0), Qt::LeftButton);
        QCOMPARE(updatedBefore, 0);
        QCOMPARE(updated.count(), 1);
    }

    void theStripMayBeGoneWhenTheDragEnds()
    {
        auto panel = std::make_unique<WatchedPanel>();
        bool dragLeft = false;
        QPointer<QDrag> kept;
        QObject::connect(panel.get(), &QObject::destroyed, this,
                         [&] { dragLeft = !kept.isNull(); });
        // What is called goes with the panel, so it must not touch its own captures afterwards.
        panel->m_onDrag = [&](QDrag& p_drag) {
            kept = &p_drag;
            panel.reset();
        };
        QTest::mousePress(panel->labels().at(0), Qt::LeftButton);
        QVERIFY(!panel);
        QVERIFY(dragLeft);
        QVERIFY(kept);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

QTEST_MAIN(BlockPanelTest)
#include "blockpaneltest.moc"
