#include "document/programslots.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "modules/moduleregistry.h"
#include "support/canvas/canvastest.h"
#include "support/system/paintwatch.h"

#include <QMessageBox>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

namespace
{
/** Stands for the root of a sub-program, for which the program has no class yet. */
class subRoot : public supermodule
{
public:
    using supermodule::supermodule;
    QString cCode() const override { return QStringLiteral("void sub()\n{\n"); }
    supermodule* clone() const override { return nullptr; }
};

subRoot* addSubProgram(CanvasFixture& p_canvas, int p_id)
{
    auto* root = new subRoot(p_id, QString(), QString(), QStringLiteral("sub"));
    root->createCollisions();
    p_canvas.view.scene()->addItem(root);
    ModuleRegistry::add(root);
    root->setPos(100, 3000);
    root->ownid = p_id;
    rootModules.append(root);
    return root;
}
} // namespace

class SlotsTest : public CanvasTest
{
    Q_OBJECT

private slots:
    void thirtySubProgramsHaveTheirNames()
    {
        QCOMPARE(subProgramNames().size(), 30);
        QCOMPARE(subProgramNames().at(0), qMakePair(404, QStringLiteral("子程序一")));
        QCOMPARE(subProgramNames().at(10), qMakePair(414, QStringLiteral("子程序十一")));
        QCOMPARE(subProgramNames().at(19), qMakePair(423, QStringLiteral("子程序二十")));
        QCOMPARE(subProgramNames().at(29), qMakePair(433, QStringLiteral("子程序三十")));
        QVERIFY(defaultSubProgramName(403).isEmpty());
        QVERIFY(defaultSubProgramName(434).isEmpty());
    }

    void deletingWithTheMainProgramAloneAlwaysAnswersWithTheMessage()
    {
        QString title;
        QString text;
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box) {
                title = box->windowTitle();
                text = box->text();
                box->close();
            }
        });
        const QSignalSpy changes(&m_canvas->document, &Document::changed);
        m_canvas->view.OnDelSub();
        QVERIFY(changes.isEmpty());
        QCOMPARE(title, QStringLiteral("提示"));
        QCOMPARE(text, QStringLiteral("主程序不能删除"));
        QCOMPARE(rootModules.size(), 1);
    }

    void newSubProgramAndNewTaskLeaveEverythingAsItWas()
    {
        QSignalSpy updates(&m_canvas->view, &TzProgramView::moduleUpdateSignal);
        m_canvas->view.OnNewSub();
        m_canvas->view.OnNewTask();
        QCOMPARE(rootModules, QList<supermodule*>{m_canvas->main()});
        QCOMPARE(taskModules, QList<supermodule*>{m_canvas->main()});
        QCOMPARE(m_canvas->blocks().size(), 1);
        QVERIFY(updates.isEmpty());
    }

    void afterTheSwitchToTheMainProgramItsBlocksAreAllVisible()
    {
        m_canvas->dropBehind(m_canvas->main(), 103);
        m_canvas->drop(101, QPointF(700, 400));
        m_canvas->view.OnSwitchProgram(404);
        for (const supermodule* block : m_canvas->blocks()) {
            // The main block is a task's root too, and so goes with slot 0.
            QVERIFY(!block->isVisible());
        }
        QSignalSpy updates(&m_canvas->view, &TzProgramView::moduleUpdateSignal);
        m_canvas->view.OnSwitchProgram(0);
        for (const supermodule* block : m_canvas->blocks()) {
            QVERIFY(block->isVisible());
        }
        QCOMPARE(updates.size(), 1);
    }

    void aSwitchShowsTheSlotsBlocksAlone()
    {
        supermodule* own = m_canvas->dropBehind(m_canvas->main(), 103);
        supermodule* root = addSubProgram(*m_canvas, 405);
        supermodule* loose = m_canvas->drop(101, QPointF(700, 400));
        loose->ownid = 405;
        m_canvas->view.OnSwitchProgram(405);
        QVERIFY(root->isVisible());
        QVERIFY(loose->isVisible());
        QVERIFY(!own->isVisible());
        QVERIFY(!m_canvas->main()->isVisible());
        QVERIFY(m_canvas->view.generateVisibleCode(1).contains(QStringLiteral("void sub()")));
        m_canvas->view.OnSwitchProgram(0);
        QVERIFY(!root->isVisible());
        QVERIFY(!loose->isVisible());
        QVERIFY(own->isVisible());
    }

    void aBlockComesBackIntoItsOwnSlot()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        supermodule* loose = m_canvas->drop(101, QPointF(700, 400));
        addSubProgram(*m_canvas, 405);
        m_canvas->view.OnSwitchProgram(0);
        m_canvas->view.deleteModule(loose);
        m_canvas->view.deleteModule(first);
        m_canvas->view.OnSwitchProgram(405);
        m_canvas->view.undoStack().undo();
        m_canvas->view.undoStack().undo();
        QCOMPARE(m_canvas->blocks().size(), 4);
        for (const supermodule* block : m_canvas->blocks()) {
            QCOMPARE(block->isVisible(), block->id == 405);
        }
        m_canvas->view.OnSwitchProgram(0);
        for (const supermodule* block : m_canvas->blocks()) {
            QCOMPARE(block->isVisible(), block->id != 405);
        }
    }

    void aDeletedSubProgramTakesItsBlocksAndGivesItsNameBack()
    {
        addSubProgram(*m_canvas, 405);
        m_canvas->view.updateSubProgramName(405, QString());
        supermodule* loose = m_canvas->drop(101, QPointF(700, 400));
        loose->ownid = 405;
        m_canvas->dropBehind(m_canvas->main(), 103);
        m_canvas->view.OnSwitchProgram(405);
        m_canvas->view.OnDelSub();
        QCOMPARE(rootModules, QList<supermodule*>{m_canvas->main()});
        QCOMPARE(m_canvas->blocks().size(), 2);
        QCOMPARE(subProgramNames().at(1).second, QStringLiteral("子程序二"));
        QVERIFY(m_canvas->main()->isVisible());
    }

    void aNameIsStoredAndShownOnItsBlocks()
    {
        supermodule* root = addSubProgram(*m_canvas, 406);
        m_canvas->view.updateSubProgramName(406, QStringLiteral("dance"));
        QCOMPARE(root->text(), QStringLiteral("dance"));
        QCOMPARE(subProgramNames().at(2).second, QStringLiteral("dance"));
        m_canvas->view.updateSubProgramName(77, QStringLiteral("nobody"));
        m_canvas->view.updateSubProgramName(406, defaultSubProgramName(406));
    }

    void aNewCaptionIsPainted()
    {
        supermodule* block = m_canvas->drop(104, QPointF(500, 300));
        const PaintWatch watch(*m_canvas->view.viewport());
        block->setText(QStringLiteral("dance"));
        QVERIFY(watch.saw(QRect(m_canvas->at(block->scenePos()), QSize(120, 20))));
    }
};

QTEST_MAIN(SlotsTest)
#include "slotstest.moc"
