#include "document/buttonwalk.h"
#include "modules/buttonpicture.h"
#include "modules/buttonspec.h"
#include "modules/catalogue/blocktables.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "parameterbench.h"
#include "proj/controls/selectablebutton.h"
#include "support/canvas/singleblock.h"
#include "support/system/datatable.h"
#include "support/system/paintwatch.h"

#include <QApplication>
#include <QDomDocument>
#include <QPainter>
#include <QPushButton>
#include <QToolTip>
#include <QtTest>

namespace
{
const char s_otherValues[] = "n=2 port=3 time=12.25 angle=-45 servoId=7 bInfread=0";

void toTheEventLoop()
{
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
}

void hover(Bench& p_bench, const QPointF& p_scenePos)
{
    QMouseEvent move(QEvent::MouseMove, p_bench.at(p_scenePos),
                     p_bench.view.viewport()->mapToGlobal(p_bench.at(p_scenePos)), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(p_bench.view.viewport(), &move);
    toTheEventLoop();
}

QImage shown(Bench& p_bench, const supermodule* p_block, qreal p_scale)
{
    const QRectF area = p_block->sceneBoundingRect().adjusted(-20, -20, 40, 60);
    QImage image((area.size() * p_scale).toSize(), QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.scale(p_scale, p_scale);
    p_bench.view.scene()->render(&painter, QRectF(QPointF(0, 0), area.size()), area);
    return image;
}

/** The mean difference of two pictures of one size, a channel. */
double difference(const QImage& p_a, const QImage& p_b)
{
    double sum = 0;
    for (int y = 0; y < p_a.height(); ++y) {
        for (int x = 0; x < p_a.width(); ++x) {
            const QRgb a = p_a.pixel(x, y);
            const QRgb b = p_b.pixel(x, y);
            sum +=
                qAbs(qRed(a) - qRed(b)) + qAbs(qGreen(a) - qGreen(b)) + qAbs(qBlue(a) - qBlue(b));
        }
    }
    return sum / 3 / p_a.width() / p_a.height();
}
} // namespace

/** When the buttons on blocks have widgets, and what they show while they have none. */
class ModuleButtonTest : public FixtureTest<Bench>
{
    Q_OBJECT

private slots:
    void aButtonShowsWhatItsWidgetShows_data()
    {
        columns<int, QString, bool, qreal>("id", "values", "loose", "scale");
        for (const BlockRecord& record : blockRecords()) {
            const std::unique_ptr<supermodule> block(createModuleFromId(record.id));
            if (block->buttonCount() == 0) {
                continue;
            }
            for (const bool fresh : {true, false}) {
                for (const bool loose : {true, false}) {
                    for (const qreal scale : {1.0, 0.6, 1.5}) {
                        QTest::addRow("%d %s %s at %g", record.id, fresh ? "new" : "changed",
                                      loose ? "loose" : "in the program", scale)
                            << record.id << (fresh ? QString() : QString::fromLatin1(s_otherValues))
                            << loose << scale;
                    }
                }
            }
        }
    }

    void aButtonShowsWhatItsWidgetShows()
    {
        QFETCH(int, id);
        QFETCH(QString, values);
        QFETCH(bool, loose);
        QFETCH(qreal, scale);
        supermodule* block = m_bench->drop(id, {500, 330});
        if (!loose) {
            m_bench->main()->appendModule(block);
            block->updateTreeAndOpacity();
        }
        if (!values.isEmpty()) {
            const QPointF place = block->pos();
            loadBlock(block, values);
            block->setPos(place);
        }
        hover(*m_bench, {5, 5});
        QCOMPARE(Bench::proxies(block).size(), 0);
        const QImage painted = shown(*m_bench, block, scale);
        for (int i = 0; i < block->buttonCount(); ++i) {
            QVERIFY(block->button(i)->isVisible());
        }
        const QImage byWidget = shown(*m_bench, block, scale);
        if (scale == 1.0) {
            QCOMPARE(painted, byWidget);
        } else {
            const double found = difference(painted, byWidget);
            QVERIFY2(found < 1.5, qPrintable(QString::number(found)));
        }
        // There is something to be seen at all.
        for (const QGraphicsProxyWidget* proxy : Bench::proxies(block)) {
            const_cast<QGraphicsProxyWidget*>(proxy)->setOpacity(0);
        }
        QVERIFY(shown(*m_bench, block, scale) != byWidget);
    }

    void aButtonShowsItsNewTextWithoutAWidget()
    {
        supermodule* block = m_bench->drop(111, {500, 330});
        const QImage before = shown(*m_bench, block, 1);
        block->setParamIndex(0);
        const QImage after = shown(*m_bench, block, 1);
        QVERIFY(before != after);
        QCOMPARE(Bench::proxies(block).size(), 0);
        QCOMPARE(block->button(0)->text(), QStringLiteral("A"));
        QCOMPARE(shown(*m_bench, block, 1), after);
    }

    void aScaledButtonStandsWhereItIsToAPartOfAPixel()
    {
        const ButtonSpec spec{
            {":/single_time_nol_60x40.png", ":/single_time_pre_60x40.png", false, false},
            QRect(0, 0, 60, 40),
            QStringLiteral("12"),
            {}};
        const auto paintedAt = [&spec](qreal p_x) {
            QImage image(60, 30, QImage::Format_RGB32);
            image.fill(Qt::darkGreen);
            QPainter painter(&image);
            painter.setRenderHint(QPainter::SmoothPixmapTransform);
            painter.translate(p_x, 0);
            painter.scale(0.6, 0.6);
            paintButton(&painter, spec);
            return image;
        };
        const QImage whole = paintedAt(2);
        QVERIFY(paintedAt(2.5) != whole);
        QVERIFY(paintedAt(2.5) != paintedAt(3));
        QCOMPARE(paintedAt(3).copy(3, 0, 50, 30), whole.copy(2, 0, 50, 30));
    }

    void aNewTextOnAButtonIsPainted()
    {
        supermodule* block = m_bench->drop(101, {500, 330});
        QDomDocument document;
        QDomElement element = document.createElement(QStringLiteral("module"));
        element.setAttribute(QStringLiteral("x"), qRound(block->x()));
        element.setAttribute(QStringLiteral("y"), qRound(block->y()));
        element.setAttribute(QStringLiteral("n"), 7);
        toTheEventLoop();
        const PaintWatch watch(*m_bench->view.viewport());
        // A value that nobody has chosen, and so nothing but the button changes.
        block->loadXml(element);
        QVERIFY(block->cCode().contains(QStringLiteral("wait(7)")));
        const QRectF place = Bench::placeOf(block, 0);
        QVERIFY(watch.saw(QRect(m_bench->at(place.topLeft()), place.size().toSize())));
    }

    void theWidgetComesUnderThePointerAndGoesWithIt()
    {
        supermodule* block = m_bench->drop(113, {500, 330});
        const QPointF left = Bench::placeOf(block, 0).center();
        const QPointF right = Bench::placeOf(block, 1).center();
        QCOMPARE(Bench::proxies(block).size(), 0);
        hover(*m_bench, left);
        QVERIFY(qobject_cast<SelectableButton*>(block->liveButton(0)));
        QVERIFY(!block->liveButton(1));
        QCOMPARE(Bench::proxies(block).size(), 1);
        QCOMPARE(Bench::proxies(block).first()->geometry(), block->buttonRect(0));
        hover(*m_bench, left + QPointF(3, 0));
        QVERIFY(block->liveButton(0));
        hover(*m_bench, right);
        QVERIFY(!block->liveButton(0));
        QVERIFY(block->liveButton(1));
        hover(*m_bench, right + QPointF(0, 3));
        hover(*m_bench, block->scenePos() + QPointF(60, 40));
        QCOMPARE(Bench::proxies(block).size(), 0);
        // A pointer that leaves the canvas from a button leaves the button.
        hover(*m_bench, right);
        hover(*m_bench, right + QPointF(3, 0));
        QVERIFY(block->liveButton(1));
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(m_bench->view.viewport(), &leave);
        toTheEventLoop();
        QCOMPARE(Bench::proxies(block).size(), 0);
    }

    void aPressWithoutAPointerBeforeReachesTheWidget()
    {
        supermodule* block = m_bench->drop(101, {500, 330});
        const QPointF field = Bench::placeOf(block, 0).center();
        m_bench->press(field);
        const auto* button = qobject_cast<SelectableButton*>(block->liveButton(0));
        QVERIFY(button);
        QVERIFY(button->isDown());
        QCOMPARE(SelectableButton::current(), button);
        QCOMPARE(m_bench->view.currentModule(), block);
        QCOMPARE(m_bench->raised, QStringList());
        m_bench->release(field);
        QVERIFY(!button->isDown());
        QCOMPARE(m_bench->raised, QStringList{QStringLiteral("number 11")});
        m_bench->type(QStringLiteral("25"));
        QVERIFY(block->cCode().contains(QStringLiteral("wait(25)")));
    }

    void aDoubleClickAloneReachesTheWidget()
    {
        supermodule* block = m_bench->drop(101, {500, 330});
        const QPoint field = m_bench->at(Bench::placeOf(block, 0).center());
        QMouseEvent twice(QEvent::MouseButtonDblClick, field,
                          m_bench->view.viewport()->mapToGlobal(field), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_bench->view.viewport(), &twice);
        QVERIFY(block->liveButton(0));
        QVERIFY(block->liveButton(0)->isDown());
    }

    void aPressThatMovesAwayKeepsTheWidgetUntilItEnds()
    {
        supermodule* block = m_bench->drop(111, {500, 330});
        const QPointF before = block->scenePos();
        const QPointF from = Bench::placeOf(block, 0).center();
        m_bench->press(from);
        QPointer<QPushButton> button = block->liveButton(0);
        QVERIFY(button);
        for (int step = 1; step < 8; ++step) {
            m_bench->move(from + QPointF(10 * step, -10 * step));
            toTheEventLoop();
            QVERIFY(button);
        }
        QCOMPARE(block->scenePos(), before + QPointF(70, -70));
        QCOMPARE(Bench::proxies(block).first()->geometry(), block->buttonRect(0));
        m_bench->release(from + QPointF(70, -70));
        hover(*m_bench, {5, 5});
        m_bench->click({900, 550});
        toTheEventLoop();
        QVERIFY(!button);
    }

    void aFieldIsKeptWhileItIsMarkedOrHasTheFocus()
    {
        supermodule* block = m_bench->drop(101, {500, 330});
        m_bench->clickButton(block, 0);
        hover(*m_bench, {5, 5});
        const QPointer<QPushButton> field = block->liveButton(0);
        QVERIFY(field);
        QCOMPARE(SelectableButton::current(), field.data());
        // A key takes the mark away, but the keyboard's focus stays.
        m_bench->type(QStringLiteral("4"));
        toTheEventLoop();
        QVERIFY(field && !SelectableButton::current());
        m_bench->type(QStringLiteral("2"));
        QVERIFY(block->cCode().contains(QStringLiteral("wait(42)")));
        m_bench->click({900, 550});
        toTheEventLoop();
        QVERIFY(!field);
        QCOMPARE(Bench::proxies(block).size(), 0);
    }

    void aMarkedFieldIsKeptWhenTheFocusWalksOn()
    {
        supermodule* block = m_bench->drop(101, {500, 330});
        m_bench->drop(104, {700, 330});
        m_bench->clickButton(block, 0);
        hover(*m_bench, {5, 5});
        const QPointer<QPushButton> field = block->liveButton(0);
        QVERIFY(focusNextButton(*m_bench->view.scene(), true));
        toTheEventLoop();
        QVERIFY(field && !field->graphicsProxyWidget()->hasFocus());
        QCOMPARE(SelectableButton::current(), field.data());
    }

    void whatWasTypedStaysWhenTheWidgetGoes()
    {
        supermodule* block = m_bench->drop(101, {500, 330});
        m_bench->clickButton(block, 0);
        m_bench->type(QStringLiteral("1."));
        hover(*m_bench, {5, 5});
        m_bench->click({900, 550});
        toTheEventLoop();
        QCOMPARE(Bench::proxies(block).size(), 0);
        // On the palette's keyboard it goes on where it was.
        focusModule = block;
        m_bench->tap(QStringLiteral("5"));
        toTheEventLoop();
        QCOMPARE(Bench::proxies(block).size(), 0);
        QCOMPARE(block->button(0)->text(), QStringLiteral("1.5"));
        QVERIFY(block->cCode().contains(QStringLiteral("wait(1.5)")));
    }

    void aFieldTakesKeysAgainWhenItsWindowComesBack()
    {
        supermodule* block = m_bench->drop(101, {500, 330});
        m_bench->clickButton(block, 0);
        m_bench->type(QStringLiteral("4"));
        hover(*m_bench, {5, 5});
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        toTheEventLoop();
        QVERIFY(block->liveButton(0));
        m_bench->view.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&m_bench->view));
        m_bench->type(QStringLiteral("2"));
        QVERIFY(block->cCode().contains(QStringLiteral("wait(42)")));
    }

    void theToolTipIsThereWithoutAWidget()
    {
        supermodule* block = m_bench->drop(107, {500, 330});
        const auto tipAt = [&](const QPointF& p_scenePos) {
            QToolTip::hideText();
            if (!QTest::qWaitFor([] { return !QToolTip::isVisible(); }, 2000)) {
                qWarning("the tool tip stays");
            }
            const QPoint at = m_bench->at(p_scenePos);
            QHelpEvent help(QEvent::ToolTip, at, m_bench->view.viewport()->mapToGlobal(at));
            QApplication::sendEvent(m_bench->view.viewport(), &help);
            return QToolTip::text();
        };
        const QPointF field = Bench::placeOf(block, 0).center();
        const QPointF chooser = Bench::placeOf(block, 1).center();
        QCOMPARE(tipAt(field), QStringLiteral("-150 ~ 150"));
        // A button without a tip shows its block's.
        QCOMPARE(tipAt(chooser), block->toolTip());
        QCOMPARE(Bench::proxies(block).size(), 0);
    }

    void theToolTipComesThoughTheWidgetIsThere_data()
    {
        QTest::addColumn<int>("moves");
        QTest::newRow("one move") << 1;
        QTest::newRow("two moves") << 2;
        QTest::newRow("three moves") << 3;
    }

    void theToolTipComesThoughTheWidgetIsThere()
    {
        QFETCH(int, moves);
        supermodule* block = m_bench->drop(107, {500, 330});
        const QPoint field = m_bench->at(Bench::placeOf(block, 0).center());
        QToolTip::hideText();
        QTRY_VERIFY(!QToolTip::isVisible());
        for (int i = 0; i < moves; ++i) {
            QTest::mouseMove(m_bench->view.windowHandle(), field + QPoint(i, 0));
            toTheEventLoop();
        }
        // The widget that is there by now must not keep the tip to itself.
        QVERIFY(block->liveButton(0));
        QTRY_COMPARE(QToolTip::text(), QStringLiteral("-150 ~ 150"));
    }

    void aRightPressOnAButtonIsOneOnItsBlock()
    {
        supermodule* block = m_bench->drop(101, {500, 330});
        const QPointF field = Bench::placeOf(block, 0).center();
        QTest::mousePress(m_bench->view.viewport(), Qt::RightButton, Qt::NoModifier,
                          m_bench->at(field));
        QTest::mouseRelease(m_bench->view.viewport(), Qt::RightButton, Qt::NoModifier,
                            m_bench->at(field));
        QCOMPARE(m_bench->view.currentModule(), block);
        QVERIFY(m_bench->view.contextMenu().isVisible());
        m_bench->view.contextMenu().close();
        QCOMPARE(m_bench->raised, QStringList());
        QVERIFY(!SelectableButton::current());
    }

    void aWidgetThatWasAskedForStays()
    {
        supermodule* block = m_bench->drop(101, {500, 330});
        const QPointer<QAbstractButton> asked = block->button(0);
        hover(*m_bench, Bench::placeOf(block, 0).center());
        hover(*m_bench, {5, 5});
        QVERIFY(asked);
        QCOMPARE(block->button(0), asked.data());
        QCOMPARE(block->button(1), nullptr);
        QCOMPARE(block->button(-1), nullptr);
    }

    void aWidgetStaysThroughACallThatItMakes()
    {
        supermodule* block = m_bench->drop(803, {500, 330});
        m_bench->clickButton(block, 0);
        const QPointer<QPushButton> chooser = block->liveButton(0);
        QVERIFY(chooser);
        bool stayed = false;
        connect(&m_bench->view, &TzProgramView::showVoiceSignal, &m_bench->view, [&] {
            // As a dialog would: it takes the pointer and the focus away, and handles events.
            m_bench->view.scene()->setFocusItem(nullptr);
            QEvent leave(QEvent::Leave);
            QApplication::sendEvent(m_bench->view.viewport(), &leave);
            toTheEventLoop();
            stayed = chooser && chooser == block->liveButton(0);
        });
        // By the keyboard, for the mouse would hold it, too.
        QTest::keyClick(m_bench->view.viewport(), Qt::Key_Space);
        QCOMPARE(m_bench->raised.size(), 2);
        QVERIFY(stayed);
        toTheEventLoop();
        QVERIFY(!chooser);
    }

    void aBlockDiesWithAWidgetAlive_data()
    {
        QTest::addColumn<QString>("how");
        for (const char* how : {"hovered", "focused", "pressed", "asked for"}) {
            QTest::newRow(how) << QString::fromLatin1(how);
        }
    }

    void aBlockDiesWithAWidgetAlive()
    {
        QFETCH(QString, how);
        const QPointer<supermodule> block = m_bench->drop(101, {500, 330});
        const QPointF field = Bench::placeOf(block, 0).center();
        if (how == QLatin1String("hovered")) {
            hover(*m_bench, field);
        } else if (how == QLatin1String("focused")) {
            m_bench->clickButton(block, 0);
        } else if (how == QLatin1String("pressed")) {
            m_bench->press(field);
        } else {
            QVERIFY(block->button(0));
        }
        const QPointer<QPushButton> button = block->liveButton(0);
        QVERIFY(button);
        m_bench->view.deleteModule(block);
        QVERIFY(!block && !button);
        QVERIFY(!SelectableButton::current());
        toTheEventLoop();
        m_bench->release(field);
        hover(*m_bench, field);
        m_bench->view.undoStack().undo();
        toTheEventLoop();
        QCOMPARE(m_bench->blocks().size(), 2);
        QCOMPARE(m_bench->brokenInvariants(), QStringList());
    }

    void aHiddenBlockLosesItsWidget()
    {
        supermodule* block = m_bench->drop(101, {500, 330});
        hover(*m_bench, Bench::placeOf(block, 0).center());
        hover(*m_bench, Bench::placeOf(block, 0).center() + QPointF(1, 0));
        QVERIFY(block->liveButton(0));
        // By that alone: the pointer rests where it was.
        block->setVisibleTree(false);
        toTheEventLoop();
        QVERIFY(!block->liveButton(0));
        block->setVisibleTree(true);
        m_bench->clickButton(block, 0);
        QCOMPARE(m_bench->raised, QStringList{QStringLiteral("number 11")});
    }

    void aScreenFullOfBlocksHasNoWidgets()
    {
        const int windows = QGuiApplication::allWindows().size();
        const int topLevels = QApplication::topLevelWidgets().size();
        const QList<int> ids{101, 104, 107, 111, 113, 301, 306, 309, 800, 900};
        for (int i = 0; i < 200; ++i) {
            m_bench->drop(ids.at(i % ids.size()),
                          QPointF(30 + 8 * (i % 100), 60 + 250 * (i / 100)));
        }
        m_bench->view.viewport()->repaint();
        toTheEventLoop();
        QVERIFY(QGuiApplication::allWindows().size() <= windows + 1);
        // One unseen widget for each look that there is, however many blocks show it.
        QVERIFY(QApplication::topLevelWidgets().size() <= topLevels + 20);
    }
};

QTEST_MAIN(ModuleButtonTest)
#include "modulebuttontest.moc"
