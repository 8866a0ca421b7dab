#include "canvas/blockmark.h"
#include "modules/moduleregistry.h"
#include "windowbench.h"

#include <QClipboard>
#include <QScrollBar>
#include <QTextBrowser>

namespace
{
const int s_wait = 101;
const int s_forward = 103;
const int s_endlessLoop = 303;
const int s_face = 905;

/** Stands for the root of a sub-program, for which the program has no class yet. */
class subRoot : public supermodule
{
public:
    using supermodule::supermodule;
    QString cCode() const override { return QStringLiteral("void sub()\n{\nsub1;\n"); }
    supermodule* clone() const override { return nullptr; }
};

/** Without the layout. */
QString bare(const QString& p_text) { return p_text.simplified().remove(QLatin1Char(' ')); }
} // namespace

/** The code pane beside the real canvas: what is lit in it, and what a press on it points at. */
class CodePaneTest : public FixtureTest<WindowBench>
{
    Q_OBJECT

private slots:
    void init()
    {
        m_bench.emplace();
        m_bench->bar().OnShowCode();
        QCoreApplication::processEvents();
        m_bench->canvas().centerOn(m_bench->hands.main()->scenePos() + QPointF(300, 60));
    }

    void theTextOfTheBlockUnderTheMouseIsLit()
    {
        const supermodule* wait = m_bench->add(s_wait);
        const supermodule* forward = m_bench->add(s_forward);
        hover(wait);
        QCOMPARE(litLines(), QStringLiteral("      wait(1);"));
        hover(forward);
        QCOMPARE(bare(lit()), bare(forward->cCode()));
        hover(m_bench->hands.main());
        QCOMPARE(bare(lit()), bare(m_bench->hands.main()->cCode()));
        moveTo(QPoint(m_bench->canvas().viewport()->width() - 20, 20));
        QCOMPARE(lit(), QString());
        hover(wait);
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(m_bench->canvas().viewport(), &leave);
        QCOMPARE(lit(), QString());
    }

    void aLoopIsLitWithItsBodyAndABlockInItAlone()
    {
        supermodule* loop = m_bench->add(s_endlessLoop);
        const supermodule* wait = putInto(loop, s_wait);
        QCOMPARE(static_cast<const supermodule*>(loop->left()), wait);
        hover(loop);
        QCOMPARE(litLines(),
                 QStringLiteral("      while(1)\n      {\n            wait(1);\n      }"));
        hover(wait);
        QCOMPARE(litLines(), QStringLiteral("            wait(1);"));
        pressOn(QStringLiteral("wait(1)"));
        QVERIFY(marked(wait));
    }

    void aBlockThatSharesItsLineIsLitAlone()
    {
        const supermodule* first = m_bench->add(s_forward);
        m_bench->add(s_forward);
        const supermodule* third = m_bench->add(s_wait);
        QVERIFY(pane().toPlainText().contains(lineOf(first) + lineOf(first) + lineOf(third)));
        const QString line = lineOf(first);
        hover(m_bench->hands.main()->next()->next());
        QCOMPARE(lit(), line);
        const QTextCursor cursor = pane().extraSelections().first().cursor;
        QCOMPARE(cursor.positionInBlock(), 6 + 2 * line.size());
    }

    void aLooseBlockLightsNothing()
    {
        const supermodule* loose =
            m_bench->hands.drop(s_wait, m_bench->hands.main()->scenePos() + QPointF(300, 200));
        QVERIFY(!loose->parentModule());
        hover(loose);
        QCOMPARE(lit(), QString());
    }

    void whatIsLitFollowsEachEdit()
    {
        m_bench->add(s_forward);
        const supermodule* wait = m_bench->add(s_wait);
        m_bench->add(s_face);
        hover(wait);
        // The mouse rests: the chain moves on below it, and back again.
        m_bench->hands.drop(s_face, m_bench->hands.main()->scenePos() + QPointF(180, 10));
        QCOMPARE(m_bench->program().size(), 5);
        QCOMPARE(m_bench->hands.main()->next()->id, s_face);
        QCOMPARE(bare(lit()), bare(m_bench->hands.main()->next()->next()->cCode()));
        hover(wait);
        // Deleting takes what follows along.
        const QPoint at = m_bench->hands.at(wait->scenePos() + QPointF(30, 30));
        m_bench->hands.click(wait->scenePos() + QPointF(30, 30));
        m_bench->hands.key(Qt::Key_Delete);
        QCOMPARE(m_bench->program().size(), 3);
        QCOMPARE(lit(), QString());
        m_bench->hands.key(Qt::Key_Z, Qt::ControlModifier);
        moveTo(at);
        QCOMPARE(lit(), lineOf(m_bench->hands.main()->next()->next()->next()));
    }

    void aBlockThatIsTakenAwayAndPutBackIsLitWhereItLands()
    {
        supermodule* wait = m_bench->add(s_wait);
        m_bench->add(s_forward);
        hover(wait);
        m_bench->hands.drag(wait, QPoint(0, -150));
        QCOMPARE(m_bench->program(), QList<int>{0});
        QCOMPARE(lit(), QString());
        m_bench->hands.drag(wait, QPoint(0, 150));
        QCOMPARE(m_bench->program(), (QList<int>{0, s_wait, s_forward}));
        QCOMPARE(lit(), lineOf(wait));
    }

    void anotherSlotHasLinesOfItsOwn()
    {
        const supermodule* wait = m_bench->add(s_wait);
        const auto root = std::make_unique<subRoot>(FirstSubProgramId, QString(), QString(),
                                                    QStringLiteral("sub"));
        root->createCollisions();
        m_bench->canvas().scene()->addItem(root.get());
        root->setPos(wait->scenePos());
        root->ownid = FirstSubProgramId;
        rootModules.append(root.get());
        ModuleRegistry::add(root.get());
        const QPointF place = wait->scenePos() + QPointF(30, 30);
        m_bench->canvas().OnSwitchProgram(FirstSubProgramId);
        QVERIFY(root->isVisible() && !wait->isVisible());
        m_bench->canvas().centerOn(place);
        moveTo(m_bench->hands.at(place));
        QCOMPARE(bare(lit()), bare(root->cCode()));
        pressOn(QStringLiteral("sub1"));
        QVERIFY(mark().isVisible());
        m_bench->canvas().OnSwitchProgram(0);
        QVERIFY(!mark().isVisible());
        m_bench->canvas().centerOn(place);
        moveTo(m_bench->hands.at(place));
        QCOMPARE(lit(), lineOf(wait));
    }

    void whatScrollsBelowTheMouseIsLit()
    {
        const supermodule* wait = m_bench->add(s_wait);
        const supermodule* forward = m_bench->add(s_forward);
        hover(wait);
        QScrollBar& bar = *m_bench->canvas().horizontalScrollBar();
        bar.setValue(bar.value() + 120);
        QCOMPARE(lit(), lineOf(forward));
    }

    void aHiddenPaneIsLitAgainWithTheNextMove()
    {
        const supermodule* wait = m_bench->add(s_wait);
        hover(wait);
        m_bench->bar().OnShowCode();
        hover(m_bench->hands.main());
        m_bench->bar().OnShowCode();
        QCoreApplication::processEvents();
        hover(wait);
        QCOMPARE(lit(), lineOf(wait));
    }

    void aPythonTextHasNoBlocks()
    {
        const supermodule* wait = m_bench->add(s_wait);
        hover(wait);
        m_bench->bar().OnShowPythonCode();
        QCoreApplication::processEvents();
        QCOMPARE(pane().toPlainText(), QStringLiteral("import Vantrel\n"));
        hover(wait);
        QCOMPARE(lit(), QString());
        pressOn(QStringLiteral("Vantrel"));
        QVERIFY(!mark().isVisible());
    }

    void aPressOnALinePointsAtItsBlock()
    {
        m_bench->add(s_forward);
        const supermodule* wait = m_bench->add(s_wait);
        supermodule* loop = m_bench->add(s_endlessLoop);
        documentModified = false;
        pressOn(QStringLiteral("wait(1)"));
        QVERIFY(marked(wait));
        pressOn(QStringLiteral("while"));
        QVERIFY(marked(loop));
        pressOn(QStringLiteral("int speed1"));
        QVERIFY(marked(m_bench->hands.main()));
        // The frame of the text is nobody's.
        pressOn(QStringLiteral("#include"));
        QVERIFY(!mark().isVisible());
    }

    void blanksBeforeALineAndTheRoomBehindItBelongToItsBlocks()
    {
        // Its text has no line feed of its own.
        const supermodule* forward = m_bench->add(s_forward);
        const int at = pane().toPlainText().indexOf(QStringLiteral("set_motor("));
        pressAt(at - 4);
        QVERIFY(marked(forward));
        pressOn(QStringLiteral("#include"));
        QTextCursor cursor(pane().document());
        cursor.setPosition(at);
        QTest::mousePress(
            pane().viewport(), Qt::LeftButton, Qt::NoModifier,
            QPoint(pane().viewport()->width() - 10, pane().cursorRect(cursor).center().y()));
        QVERIFY(marked(forward));
    }

    void theMarkBringsABlockIntoSightAndChangesNothing()
    {
        const supermodule* wait = m_bench->add(s_wait);
        QGuiApplication::clipboard()->setText(QStringLiteral("kept"));
        documentModified = false;
        const int undo = m_bench->canvas().undoStack().index();
        m_bench->canvas().centerOn(8000, 8000);
        const QRect viewport = m_bench->canvas().viewport()->rect();
        QVERIFY(!viewport.contains(m_bench->hands.at(wait->scenePos())));
        pressOn(QStringLiteral("wait(1)"));
        QVERIFY(marked(wait));
        QVERIFY(viewport.contains(mark().geometry()));
        QVERIFY(!documentModified);
        QCOMPARE(m_bench->canvas().undoStack().index(), undo);
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("kept"));
        // It is seen: in the frame's colour.
        const QImage shown = m_bench->canvas().viewport()->grab().toImage();
        QCOMPARE(shown.pixelColor(mark().geometry().center().x(), mark().y() + 4).name(),
                 QStringLiteral("#00afcc"));
    }

    void theMarkGoesByItselfAndWithAPressOrAScroll()
    {
        const supermodule* wait = m_bench->add(s_wait);
        pressOn(QStringLiteral("wait(1)"));
        QVERIFY(marked(wait));
        m_bench->clickGround();
        QVERIFY(!mark().isVisible());
        pressOn(QStringLiteral("wait(1)"));
        QScrollBar& bar = *m_bench->canvas().horizontalScrollBar();
        bar.setValue(bar.value() + 10);
        QVERIFY(!mark().isVisible());
        pressOn(QStringLiteral("wait(1)"));
        QVERIFY(marked(wait));
        QTRY_VERIFY(!mark().isVisible());
    }

    void theMarkGoesWithItsBlock()
    {
        const supermodule* wait = m_bench->add(s_wait);
        m_bench->hands.click(wait->scenePos() + QPointF(30, 30));
        pressOn(QStringLiteral("wait(1)"));
        QVERIFY(marked(wait));
        m_bench->hands.key(Qt::Key_Delete);
        QCOMPARE(m_bench->program(), QList<int>{0});
        QVERIFY(!mark().isVisible());
    }

    void theCanvasIsUsedBelowTheMark()
    {
        supermodule* wait = m_bench->add(s_wait);
        pressOn(QStringLiteral("wait(1)"));
        QVERIFY(marked(wait));
        QWindow* window = m_bench->window.windowHandle();
        const QPoint at = m_bench->canvas().viewport()->mapTo(
            &m_bench->window, m_bench->hands.at(wait->scenePos() + QPointF(30, 30)));
        QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, at);
        QCOMPARE(m_bench->canvas().currentModule(), wait);
    }

    void anEditKeepsWhatIsInSightAndSelected()
    {
        for (int i = 0; i < 60; ++i) {
            m_bench->canvas().centerOn(m_bench->hands.main()->lastOf());
            m_bench->add(s_wait);
        }
        QCoreApplication::processEvents();
        QScrollBar& bar = *pane().verticalScrollBar();
        bar.setValue(bar.maximum() / 2);
        const int sight = bar.value();
        QVERIFY(sight > 0);
        QTextCursor cursor = pane().cursorForPosition(QPoint(60, 40));
        cursor.movePosition(QTextCursor::EndOfLine, QTextCursor::KeepAnchor);
        pane().setTextCursor(cursor);
        const int place = cursor.position();
        bar.setValue(sight);
        m_bench->canvas().centerOn(m_bench->hands.main()->lastOf());
        m_bench->add(s_forward);
        QCoreApplication::processEvents();
        QVERIFY(pane().toPlainText().contains(QStringLiteral("set_motor")));
        QCOMPARE(bar.value(), sight);
        QCOMPARE(pane().textCursor().position(), place);
        QVERIFY(pane().textCursor().hasSelection());
    }

private:
    QTextBrowser& pane() { return *m_bench->window.codeBrowser(); }
    QWidget& mark() { return *m_bench->canvas().viewport()->findChild<BlockMark*>(); }
    /** The lit text; empty when there is none. */
    QString lit() { return litLines().trimmed(); }
    QString litLines()
    {
        const QList<QTextEdit::ExtraSelection> selections = pane().extraSelections();
        return selections.size() == 1 ? selections.first().cursor.selectedText().replace(
                                            QChar::ParagraphSeparator, QLatin1Char('\n'))
                                      : QString();
    }
    void moveTo(const QPoint& p_at)
    {
        QWidget* viewport = m_bench->canvas().viewport();
        QMouseEvent event(QEvent::MouseMove, p_at, viewport->mapToGlobal(p_at), Qt::NoButton,
                          Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(viewport, &event);
    }
    void hover(const supermodule* p_block)
    {
        moveTo(m_bench->hands.at(p_block->scenePos() + QPointF(14, 14)));
    }
    void pressAt(int p_position)
    {
        QTextCursor cursor(pane().document());
        cursor.setPosition(p_position);
        QTest::mousePress(pane().viewport(), Qt::LeftButton, Qt::NoModifier,
                          pane().cursorRect(cursor).center() + QPoint(2, 0));
    }
    void pressOn(const QString& p_word)
    {
        const int at = pane().toPlainText().indexOf(p_word);
        if (at < 0) {
            qFatal("the pane hasn't this word");
        }
        pressAt(at);
    }
    bool marked(const supermodule* p_block)
    {
        const QRect block =
            m_bench->canvas().mapFromScene(p_block->sceneBoundingRect()).boundingRect();
        const QRect rest = mark().geometry();
        return mark().isVisible() && rest.contains(block) && rest.width() < block.width() + 60 &&
               rest.height() < block.height() + 60;
    }
    supermodule* putInto(supermodule* p_loop, int p_id)
    {
        const QPointF connector = p_loop->scenePos() + p_loop->connectorRect(LeftLink).center();
        return m_bench->hands.drop(p_id, connector + QPointF(60, -10));
    }
    static QString lineOf(const supermodule* p_block) { return p_block->cCode().trimmed(); }
};

QTEST_MAIN(CodePaneTest)
#include "codepanetest.moc"
