#include "project/projectfile.h"
#include "base/recentfiles.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "project/checktag.h"
#include "project/programnameholder.h"
#include "project/projectdocument.h"
#include "support/canvas/canvasfixture.h"
#include "support/system/files.h"

#include <QAbstractButton>
#include <QDomDocument>
#include <QFile>
#include <QHash>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#ifndef Q_OS_WIN
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace
{
class NameHolder : public ProgramNameHolder
{
public:
    QString programName() const override { return name; }
    void setProgramName(const QString& p_name) override { name = p_name; }
    QString name = QStringLiteral("car1");
};

const QByteArray s_tail(ProjectTailSize, '\xa5');

/** Answers the next message box with a button's place and notes what it said. */
void answerWith(int p_button, QString* p_text)
{
    QTimer::singleShot(0, [p_button, p_text] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box) {
            *p_text = box->windowTitle() + QLatin1Char('|') + box->text();
            box->buttons().at(p_button)->click();
        }
    });
}

QByteArray withoutTag(QByteArray p_text)
{
    const int from = p_text.indexOf("    <tagCheck");
    return p_text.remove(from, p_text.indexOf('\n', from) + 1 - from);
}
} // namespace

class ProjectFileTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { startAnew(); }

    void cleanup()
    {
        QCOMPARE(m_canvas->brokenInvariants(), QStringList());
        m_canvas.reset();
    }

    void aProjectComesBackAsItWas()
    {
        supermodule* speed = m_canvas->dropBehind(m_canvas->main(), 100);
        speed->setParamIndex(2);
        supermodule* loop = m_canvas->dropBehind(speed, 301);
        m_canvas->drop(104, loop->scenePos() + QPointF(160, 20));
        m_canvas->dropBehind(loop, 105);
        QVERIFY(view().saveFile(path(), s_tail));
        const QString text = view().generateProjectCode(1);
        const QByteArray file = contentOf(path());
        QVERIFY(file.endsWith(s_tail));

        startAnew();
        QCOMPARE(view().openFile(path()), 0);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 100, 301, 105}));
        QCOMPARE(view().generateProjectCode(1), text);
        QCOMPARE(m_canvas->brokenInvariants(), QStringList());
        QVERIFY(view().saveFile(path("b.tlrx"), s_tail));
        QCOMPARE(m_canvas->main()->scenePos(), QPointF(100, 200));

        startAnew();
        QCOMPARE(view().openFile(path("b.tlrx")), 0);
        QVERIFY(view().saveFile(path("c.tlrx"), s_tail));
        QCOMPARE(contentOf(path("c.tlrx")), contentOf(path("b.tlrx")));
    }

    void theFileIsTheTextThatTheTagCovers()
    {
        NameHolder name;
        m_canvas->document.setProgramNameHolder(&name);
        m_canvas->dropBehind(m_canvas->main(), 103);
        QVERIFY(view().saveFile(path()));
        QByteArray text = contentOf(path());
        QVERIFY(text.startsWith("<!DOCTYPE vantrel>\n<vantrel "));
        QVERIFY(text.contains(" version=\"1.1.2\""));
        QVERIFY(text.contains(" company=\"Korvane\""));
        QVERIFY(text.contains(" app=\"vantrel.exe\""));
        QVERIFY(text.contains(" downname=\"car1\""));
        const int at = text.indexOf("value=\"") + 7;
        const QByteArray tag = text.mid(at, text.indexOf('"', at) - at);
        text.replace(at, tag.size(), "0");
        QCOMPARE(tag, QByteArray::number(checkTag(text), 16));
        // It is what the document class itself makes of it.
        QDomDocument document;
        QVERIFY(document.setContent(text));
        QCOMPARE(checkTag(document.toByteArray(4)), tag.toUInt(nullptr, 16));
        m_canvas->document.setProgramNameHolder(nullptr);
    }

    void theOrderOfAttributesLeavesTheSeedOfOtherTables()
    {
        qunsetenv("QT_HASH_SEED");
        qSetGlobalQHashSeed(-1);
        QVERIFY(qGlobalQHashSeed() != 0);
        {
            const StableAttributeOrder order;
            QCOMPARE(qGlobalQHashSeed(), 0);
        }
        QVERIFY(qGlobalQHashSeed() != 0);
        // Who wants none keeps none.
        qSetGlobalQHashSeed(0);
        {
            const StableAttributeOrder order;
            QCOMPARE(qGlobalQHashSeed(), 0);
        }
        QCOMPARE(qGlobalQHashSeed(), 0);
        qSetGlobalQHashSeed(-1);
    }

    void attributesStandInTheSameOrderInEveryRun()
    {
        supermodule* wait = m_canvas->dropBehind(m_canvas->main(), 101);
        wait->moduleKey = 5;
        QVERIFY(view().saveFile(path()));
        const QByteArray first = contentOf(path());
        for (int i = 0; i < 20; ++i) {
            // A new random seed each time, as in a new run.
            qSetGlobalQHashSeed(-1);
            QVERIFY(view().saveFile(path()));
            QCOMPARE(contentOf(path()), first);
        }
    }

    void theActionsAreTheEndOfTheFile()
    {
        m_canvas->dropBehind(m_canvas->main(), 101);
        const QByteArray tail = 'a' + s_tail.mid(2) + 'z';
        QVERIFY(view().saveFile(path(), tail));
        ProjectContent content;
        QCOMPARE(readProject(path(), content), int(ProjectOpened));
        QCOMPARE(content.actions, tail);
    }

    void aChangedFileOpensWhereItsTagStillFits_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::addColumn<QByteArray>("actions");
        QTest::addColumn<int>("result");
        const auto row = [](const char* p_name, const char* p_before, const char* p_after,
                            const QByteArray& p_actions, int p_result) {
            QTest::newRow(p_name) << QByteArray(p_before) << QByteArray(p_after) << p_actions
                                  << p_result;
        };
        row("another attribute", "n=\"1\"", "n=\"2\"", s_tail, ProjectWrongTag);
        row("other white space between elements", "    <basenode>\n", "\t<basenode>\r\n\n\n",
            s_tail, ProjectOpened);
        row("a declaration and no doctype", "<!DOCTYPE vantrel>\n",
            "<?xml version='1.0' encoding='UTF-8'?>\n", s_tail, ProjectOpened);
        // By the second read.
        row("no action data", "", "", "", ProjectOpened);
    }

    void aChangedFileOpensWhereItsTagStillFits()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        QFETCH(QByteArray, actions);
        QFETCH(int, result);
        m_canvas->dropBehind(m_canvas->main(), 101);
        QVERIFY(view().saveFile(path()));
        QByteArray text = contentOf(path());
        QVERIFY(text.size() < ProjectTailSize);
        QVERIFY(text.contains(before));
        putFile(path(), (before.isEmpty() ? text : text.replace(before, after)) + actions);
        QCOMPARE(view().openFile(path()), result);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 101}));
    }

    void aFileWithoutATagOpensUnchecked()
    {
        m_canvas->dropBehind(m_canvas->main(), 101);
        QVERIFY(view().saveFile(path()));
        QByteArray text = withoutTag(contentOf(path()));
        QVERIFY(!text.contains("tagCheck"));
        text.replace("n=\"1\"", "n=\"2.5\"");
        putFile(path(), text);
        QCOMPARE(view().openFile(path()), 0);
        QVERIFY(view().generateProjectCode(1).contains(QStringLiteral("wait(2.5);")));
    }

    void aLongFileWithoutActionDataOpensByTheSecondRead()
    {
        QByteArray modules("<basenode><module x=\"50\" y=\"60\" id=\"0\"/>");
        for (int i = 0; i < 1000; ++i) {
            modules +=
                "<module id=\"101\" n=\"0.25\" x=\"1000\" y=\"1000\" ownid=\"0\" moduleKey=\"12\"/>";
        }
        QVERIFY(modules.size() > ProjectTailSize);
        QCOMPARE(openText(modules + "</basenode>"), 0);
        QCOMPARE(m_canvas->blocks().size(), 1001);
    }

    void aFileOfTheActionDatasSizeIsRefused()
    {
        putFile(path(), s_tail);
        QCOMPARE(view().openFile(path()), int(ProjectUnreadable));
    }

    void twoChainsComeBackTheLooseOneFaded()
    {
        m_canvas->dropBehind(m_canvas->main(), 103);
        supermodule* loose = m_canvas->drop(101, QPointF(700, 400));
        m_canvas->dropBehind(loose, 102);
        QVERIFY(view().saveFile(path(), s_tail));
        startAnew();
        QCOMPARE(view().openFile(path()), 0);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103}));
        QCOMPARE(m_canvas->main()->next()->opacity(), 1.0);
        int looseHeads = 0;
        for (const supermodule* block : m_canvas->blocks()) {
            if (!block->parentModule() && block != m_canvas->main()) {
                ++looseHeads;
                QCOMPARE(CanvasFixture::ids(block), (QList<int>{101, 102}));
                QCOMPARE(block->opacity(), 0.5);
                QCOMPARE(block->scenePos(), QPointF(640, 400));
            }
        }
        QCOMPARE(looseHeads, 1);
        QCOMPARE(m_canvas->brokenInvariants(), QStringList());
    }

    void aFractionInACoordinateReadsAsNought()
    {
        QCOMPARE(openText("<basenode><module id=\"101\" x=\"12.5\" y=\"33\"/></basenode>"), 0);
        const QList<supermodule*> blocks = m_canvas->blocks();
        QCOMPARE(blocks.size(), 2);
        const supermodule* block = blocks.at(0)->id == 101 ? blocks.at(0) : blocks.at(1);
        QCOMPARE(block->scenePos(), QPointF(0, 33));
    }

    void aPlaceThatTheLayoutCannotReckonWithIsBroughtNearer()
    {
        QCOMPARE(openText("<basenode><module id=\"0\" x=\"2147483647\" y=\"-2147483648\"/>"
                          "<module id=\"301\"><left><module id=\"101\"/></left></module>"
                          "<module id=\"303\"/></basenode>"),
                 0);
        QCOMPARE(m_canvas->main()->scenePos(), QPointF(1000000000, -1000000000));
        QCOMPARE(m_canvas->main()->lastOf()->scenePos(),
                 QPointF(1000000000 + 140 + 280, -1000000000));
        QVERIFY(view().saveFile(path("b.tlrx")));
        QCOMPARE(view().openFile(path("b.tlrx")), 0);
        QCOMPARE(m_canvas->main()->scenePos(), QPointF(1000000000, -1000000000));
    }

    void missingAttributesReadAsNought()
    {
        QCOMPARE(openText("<basenode><module id=\"0\"/><module id=\"101\"/><module id=\"100\"/>"
                          "<module/></basenode>"),
                 0);
        // An element without a type is a second block of the main block's type.
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 101, 100, 0}));
        const QString text = view().generateProjectCode(1);
        QVERIFY(text.contains(QStringLiteral("wait(0);\n")));
        QVERIFY(text.contains(QStringLiteral("speed1 = 30;\n")));
    }

    void anUnknownTypeLosesItsBlockAndBodiesButNotWhatFollows()
    {
        QCOMPARE(openText("<basenode><module id=\"0\" x=\"10\" y=\"20\"/><module id=\"103\"/>"
                          "<module id=\"999\"><left><module id=\"101\"/></left></module>"
                          "<module id=\"102\"/></basenode>"
                          "<basenode><module id=\"404\"/><module id=\"105\"/></basenode>"
                          "<basenode><module id=\"-1\"/></basenode><basenode/>"),
                 0);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103, 102}));
        QCOMPARE(m_canvas->blocks().size(), 4);
    }

    void aBlockOfTypeNoughtInMidChainIsABlock()
    {
        QCOMPARE(openText("<basenode><module id=\"0\" x=\"10\" y=\"20\"/><module id=\"103\"/>"
                          "<module id=\"0\"/><module id=\"102\"/></basenode>"),
                 0);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103, 0, 102}));
        const supermodule* second = m_canvas->main()->next()->next();
        QVERIFY(second != m_canvas->main());
        QVERIFY(dynamic_cast<const mainModule*>(second));
        QCOMPARE(second->boundingRect().width(), 140.0);
        view().newProgram();
        view().resetDocument();
        QCOMPARE(m_canvas->blocks(), QList<supermodule*>{m_canvas->main()});
    }

    void twoStoredMainBlocksGiveOneChain()
    {
        QCOMPARE(openText("<basenode><module id=\"0\" x=\"10\" y=\"20\"/><module id=\"103\"/>"
                          "</basenode><basenode><module id=\"0\" x=\"30\" y=\"40\"/>"
                          "<module id=\"102\"/></basenode>"),
                 0);
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103, 102}));
        QCOMPARE(m_canvas->main()->scenePos(), QPointF(30, 40));
    }

    void aRightBranchIsHonoured()
    {
        QCOMPARE(openText("<basenode><module id=\"0\" x=\"10\" y=\"20\"/><module id=\"103\">"
                          "<right><module id=\"101\" n=\"3\"/></right></module></basenode>"),
                 0);
        const supermodule* branch = m_canvas->main()->next()->right();
        QVERIFY(branch);
        QCOMPARE(branch->id, 101);
        QVERIFY(view().saveFile(path("b.tlrx")));
        QVERIFY(contentOf(path("b.tlrx")).contains("<right>"));
    }

    void theProgramsNameIsBroughtInWhateverItIs()
    {
        NameHolder name;
        m_canvas->document.setProgramNameHolder(&name);
        name.name = QString::fromUtf8("小车 <\"&> long name");
        QVERIFY(view().saveFile(path(), s_tail));
        name.name = QStringLiteral("other");
        QCOMPARE(view().openFile(path()), 0);
        QCOMPARE(name.name, QString::fromUtf8("小车 <\"&> long name"));
        QCOMPARE(openText(QByteArray()), 0);
        QCOMPARE(name.name, QString());
        m_canvas->document.setProgramNameHolder(nullptr);
    }

    void aNameThatNoFileCanHoldDoesNotSpoilTheFile()
    {
        NameHolder name;
        m_canvas->document.setProgramNameHolder(&name);
        // A project can bring such codes in: as references they are read.
        putFile(path(),
                "<vantrel downname=\"a&#65535;&#65534;b&#55296;c&#56320;\xf0\x9f\x98\x80&#1;\"/>");
        QCOMPARE(view().openFile(path()), 0);
        QVERIFY(name.name.contains(QChar(0xffff)));
        QVERIFY(view().saveFile(path("b.tlrx"), s_tail));
        QCOMPARE(view().openFile(path("b.tlrx")), 0);
        QCOMPARE(name.name, QString::fromUtf8("abc\xf0\x9f\x98\x80\x01"));
        m_canvas->document.setProgramNameHolder(nullptr);
    }

    void aMissingFileAsksWhetherItLeavesTheList()
    {
        QSignalSpy menus(&view(), &TzProgramView::updateRecentMenuSignal);
        const QString gone = path("gone.tlrx");
        recentFiles = QStringList{gone, "/b.tlrx"};
        QString said;
        answerWith(1, &said);
        QCOMPARE(view().openFile(gone), int(ProjectMissing));
        QCOMPARE(said, QStringLiteral("提示|文件不存在，是否在列表中删除？"));
        QCOMPARE(recentFiles.size(), 2);
        QCOMPARE(menus.size(), 0);
        answerWith(0, &said);
        QCOMPARE(view().openFile(gone), int(ProjectMissing));
        QCOMPARE(recentFiles, QStringList{"/b.tlrx"});
        QCOMPARE(menus.size(), 1);
    }

    void aRefusedFileLeavesTheCanvasAsItWas()
    {
        supermodule* first = m_canvas->dropBehind(m_canvas->main(), 103);
        supermodule* loose = m_canvas->drop(101, QPointF(700, 400));
        view().deleteModule(loose);
        recentFiles = QStringList{"/x.tlrx"};
        putFile(path("text"), "no project");
        putFile(path("tag"), "<vantrel><basenode/><tagCheck value=\"1\"/></vantrel>");
        QCOMPARE(view().openFile(path("text")), int(ProjectUnreadable));
        QCOMPARE(view().openFile(path("tag")), int(ProjectWrongTag));
        QCOMPARE(m_canvas->main()->next(), first);
        QCOMPARE(recentFiles, QStringList{"/x.tlrx"});
        QVERIFY(view().undoStack().canUndo());
        view().undoStack().undo();
        QCOMPARE(m_canvas->blocks().size(), 3);
    }

    void whatIsNoRegularFileIsRefused()
    {
        QCOMPARE(view().openFile(m_dir.path()), int(ProjectUnreadable));
#ifndef Q_OS_WIN
        const QByteArray pipe = path("pipe.tlrx").toLocal8Bit();
        QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
        QCOMPARE(view().openFile(QString::fromLocal8Bit(pipe)), int(ProjectUnreadable));
#endif
        putFile(path("empty"), QByteArray());
        QCOMPARE(view().openFile(path("empty")), int(ProjectUnreadable));
    }

    void aDeepFileIsRefused()
    {
        const auto nested = [](int p_loops) {
            QByteArray text("<basenode>");
            for (int i = 0; i < p_loops; ++i) {
                text += "<module id=\"301\" n=\"2\" x=\"0\" y=\"0\"><left>";
            }
            for (int i = 0; i < p_loops; ++i) {
                text += "</left></module>";
            }
            return text + "</basenode>";
        };
        QCOMPARE(openText(nested(10000)), int(ProjectUnreadable));
        // Two elements a loop, and two around them.
        QCOMPARE(openText(nested(500)), int(ProjectUnreadable));
        QCOMPARE(openText(nested(499)), 0);
        QCOMPARE(m_canvas->blocks().size(), 500);
        QVERIFY(view().saveFile(path("b.tlrx")));
        QCOMPARE(view().openFile(path("b.tlrx")), 0);
    }

    void aFailedSaveKeepsTheOldFileWhole()
    {
        recentFiles.clear();
        m_canvas->dropBehind(m_canvas->main(), 103);
        QVERIFY(!view().saveFile(path("no/such/folder/a.tlrx"), s_tail));
        QVERIFY(!view().saveFile(m_dir.path(), s_tail));
        QVERIFY(recentFiles.isEmpty());
        QVERIFY(view().saveFile(path(), s_tail));
        const QByteArray old = contentOf(path());
        QTemporaryDir sealed;
        const QString inside = sealed.filePath(QStringLiteral("a.tlrx"));
        QVERIFY(QFile::copy(path(), inside));
#ifndef Q_OS_WIN
        if (geteuid() != 0) {
            QVERIFY(QFile::setPermissions(inside, QFile::ReadOwner));
            QVERIFY(QFile::setPermissions(sealed.path(), QFile::ReadOwner | QFile::ExeOwner));
            m_canvas->dropBehind(m_canvas->main()->lastOf(), 102);
            QVERIFY(!view().saveFile(inside, s_tail));
            QVERIFY(QFile::setPermissions(sealed.path(),
                                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        }
#endif
        QCOMPARE(contentOf(inside), old);
    }

    void theTemporaryFileHoldsHeadsAlone()
    {
        recentFiles.clear();
        supermodule* loop = m_canvas->dropBehind(m_canvas->main(), 301);
        m_canvas->drop(101, loop->scenePos() + QPointF(160, 20));
        supermodule* loose = m_canvas->drop(104, QPointF(700, 450));
        m_canvas->dropBehind(loose, 102);
        QVERIFY(view().saveTempFile(path(), s_tail));
        QVERIFY(recentFiles.isEmpty());
        const QByteArray text = contentOf(path());
        QCOMPARE(text.count("<module "), 2);
        QVERIFY(text.contains("id=\"104\""));
        QVERIFY(text.endsWith(s_tail));
        QCOMPARE(view().openFile(path()), 0);
        QCOMPARE(m_canvas->blocks().size(), 2);
    }

    void savingAndOpeningPutThePathFirstInTheRecentList()
    {
        recentFiles.clear();
        QSignalSpy menus(&view(), &TzProgramView::updateRecentMenuSignal);
        QVERIFY(view().saveFile(path("a.tlrx")));
        QVERIFY(view().saveFile(path("b.tlrx")));
        QCOMPARE(recentFiles, (QStringList{path("b.tlrx"), path("a.tlrx")}));
        QCOMPARE(view().openFile(path("a.tlrx")), 0);
        QCOMPARE(recentFiles, (QStringList{path("a.tlrx"), path("b.tlrx")}));
        QCOMPARE(menus.size(), 3);
    }

    void keysAreGivenAnewAndTheStoredOnesKept()
    {
        QCOMPARE(openText("<basenode><module id=\"0\" moduleKey=\"7\"/>"
                          "<module id=\"103\" moduleKey=\"7\"/><module id=\"102\" moduleKey=\"1\"/>"
                          "</basenode>"),
                 0);
        supermodule* first = m_canvas->main()->next();
        QCOMPARE(first->moduleKey, 7);
        QCOMPARE(moduleMap.value(first->registryKey()), first);
        QCOMPARE(first->next()->moduleKey, 1);
        QVERIFY(first->registryKey() != first->next()->registryKey());
        QCOMPARE(nextModuleKey, 4);
        view().deleteModule(first->next());
        QCOMPARE(CanvasFixture::ids(m_canvas->main()), (QList<int>{0, 103}));
        QCOMPARE(moduleMap.value(first->registryKey()), first);
    }

private:
    QTemporaryDir m_dir;
    std::unique_ptr<CanvasFixture> m_canvas;

    /** With an empty document, as the program does. */
    void startAnew()
    {
        m_canvas.reset();
        m_canvas = std::make_unique<CanvasFixture>();
    }
    TzProgramView& view() { return m_canvas->view; }
    QString path(const char* p_name = "a.tlrx") const
    {
        return m_dir.filePath(QLatin1String(p_name));
    }
    int openText(const QByteArray& p_modules)
    {
        putFile(path(), "<vantrel>" + p_modules + "</vantrel>");
        return view().openFile(path());
    }
};

QTEST_MAIN(ProjectFileTest)
#include "projectfiletest.moc"
