#include "project/projectfile.h"
#include "base/recentfiles.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "project/checktag.h"
#include "project/programnameholder.h"
#include "project/projectdocument.h"
#include "support/canvas/canvasfixture.h"

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

QByteArray read(const QString& p_path)
{
    QFile file(p_path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

void write(const QString& p_path, const QByteArray& p_content)
{
    QFile file(p_path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(p_content), static_cast<qint64>(p_content.size()));
}

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
    void aProjectComesBackAsItWas()
    {
        CanvasFixture canvas;
        supermodule* speed = canvas.dropBehind(canvas.main(), 100);
        speed->setParamIndex(2);
        supermodule* loop = canvas.dropBehind(speed, 301);
        canvas.drop(104, loop->scenePos() + QPointF(160, 20));
        canvas.dropBehind(loop, 105);
        QVERIFY(canvas.view.saveFile(path(), s_tail));
        const QString text = canvas.view.generateProjectCode(1);
        const QByteArray file = read(path());
        QVERIFY(file.endsWith(s_tail));

        CanvasFixture other;
        QCOMPARE(other.view.openFile(path()), 0);
        QCOMPARE(CanvasFixture::ids(other.main()), (QList<int>{0, 100, 301, 105}));
        QCOMPARE(other.view.generateProjectCode(1), text);
        QCOMPARE(other.brokenInvariants(), QStringList());
        QVERIFY(other.view.saveFile(path("b.tlrx"), s_tail));
        QCOMPARE(other.main()->scenePos(), QPointF(100, 200));

        CanvasFixture third;
        QCOMPARE(third.view.openFile(path("b.tlrx")), 0);
        QVERIFY(third.view.saveFile(path("c.tlrx"), s_tail));
        QCOMPARE(read(path("c.tlrx")), read(path("b.tlrx")));
    }

    void theFileIsTheTextThatTheTagCovers()
    {
        CanvasFixture canvas;
        NameHolder name;
        canvas.document.setProgramNameHolder(&name);
        canvas.dropBehind(canvas.main(), 103);
        QVERIFY(canvas.view.saveFile(path()));
        QByteArray text = read(path());
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
        canvas.document.setProgramNameHolder(nullptr);
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
        CanvasFixture canvas;
        supermodule* wait = canvas.dropBehind(canvas.main(), 101);
        wait->moduleKey = 5;
        QVERIFY(canvas.view.saveFile(path()));
        const QByteArray first = read(path());
        for (int i = 0; i < 20; ++i) {
            // A new random seed each time, as in a new run.
            qSetGlobalQHashSeed(-1);
            QVERIFY(canvas.view.saveFile(path()));
            QCOMPARE(read(path()), first);
        }
    }

    void theActionsAreTheEndOfTheFile()
    {
        CanvasFixture canvas;
        canvas.dropBehind(canvas.main(), 101);
        const QByteArray tail = 'a' + s_tail.mid(2) + 'z';
        QVERIFY(canvas.view.saveFile(path(), tail));
        ProjectContent content;
        QCOMPARE(readProject(path(), content), static_cast<int>(ProjectOpened));
        QCOMPARE(content.actions, tail);
    }

    void aChangedAttributeFailsTheCheck()
    {
        CanvasFixture canvas;
        canvas.dropBehind(canvas.main(), 101);
        QVERIFY(canvas.view.saveFile(path(), s_tail));
        QByteArray text = read(path());
        QVERIFY(text.contains("n=\"1\""));
        text.replace("n=\"1\"", "n=\"2\"");
        write(path(), text);
        QCOMPARE(canvas.view.openFile(path()), static_cast<int>(ProjectWrongTag));
    }

    void changedWhiteSpaceBetweenElementsPasses()
    {
        CanvasFixture canvas;
        canvas.dropBehind(canvas.main(), 101);
        QVERIFY(canvas.view.saveFile(path(), s_tail));
        QByteArray text = read(path());
        text.replace("    <basenode>\n", "\t<basenode>\r\n\n\n");
        write(path(), text);
        QCOMPARE(canvas.view.openFile(path()), 0);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 101}));
    }

    void aFileWithADeclarationAndNoDoctypeOpens()
    {
        CanvasFixture canvas;
        canvas.dropBehind(canvas.main(), 101);
        QVERIFY(canvas.view.saveFile(path()));
        QByteArray text = read(path());
        text.replace("<!DOCTYPE vantrel>\n", "<?xml version='1.0' encoding='UTF-8'?>\n");
        write(path(), text + s_tail);
        QCOMPARE(canvas.view.openFile(path()), 0);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 101}));
    }

    void aFileWithoutATagOpensUnchecked()
    {
        CanvasFixture canvas;
        canvas.dropBehind(canvas.main(), 101);
        QVERIFY(canvas.view.saveFile(path()));
        QByteArray text = withoutTag(read(path()));
        QVERIFY(!text.contains("tagCheck"));
        text.replace("n=\"1\"", "n=\"2.5\"");
        write(path(), text);
        QCOMPARE(canvas.view.openFile(path()), 0);
        QVERIFY(canvas.view.generateProjectCode(1).contains(QStringLiteral("wait(2.5);")));
    }

    void aShortFileWithoutActionDataOpensByTheSecondRead()
    {
        CanvasFixture canvas;
        canvas.dropBehind(canvas.main(), 101);
        QVERIFY(canvas.view.saveFile(path()));
        QVERIFY(read(path()).size() < ProjectTailSize);
        QCOMPARE(canvas.view.openFile(path()), 0);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 101}));
    }

    void aLongFileWithoutActionDataOpensByTheSecondRead()
    {
        CanvasFixture canvas;
        QByteArray modules("<basenode><module x=\"50\" y=\"60\" id=\"0\"/>");
        for (int i = 0; i < 1000; ++i) {
            modules +=
                "<module id=\"101\" n=\"0.25\" x=\"1000\" y=\"1000\" ownid=\"0\" moduleKey=\"12\"/>";
        }
        QVERIFY(modules.size() > ProjectTailSize);
        QCOMPARE(openText(canvas, modules + "</basenode>"), 0);
        QCOMPARE(canvas.blocks().size(), 1001);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aFileOfTheActionDatasSizeIsRefused()
    {
        CanvasFixture canvas;
        write(path(), s_tail);
        QCOMPARE(canvas.view.openFile(path()), static_cast<int>(ProjectUnreadable));
    }

    void twoChainsComeBackTheLooseOneFaded()
    {
        CanvasFixture canvas;
        canvas.dropBehind(canvas.main(), 103);
        supermodule* loose = canvas.drop(101, QPointF(700, 400));
        canvas.dropBehind(loose, 102);
        QVERIFY(canvas.view.saveFile(path(), s_tail));
        CanvasFixture other;
        QCOMPARE(other.view.openFile(path()), 0);
        QCOMPARE(CanvasFixture::ids(other.main()), (QList<int>{0, 103}));
        QCOMPARE(other.main()->next()->opacity(), 1.0);
        int looseHeads = 0;
        for (const supermodule* block : other.blocks()) {
            if (!block->parentModule() && block != other.main()) {
                ++looseHeads;
                QCOMPARE(CanvasFixture::ids(block), (QList<int>{101, 102}));
                QCOMPARE(block->opacity(), 0.5);
                QCOMPARE(block->scenePos(), QPointF(640, 400));
            }
        }
        QCOMPARE(looseHeads, 1);
        QCOMPARE(other.brokenInvariants(), QStringList());
    }

    void aFractionInACoordinateReadsAsNought()
    {
        CanvasFixture canvas;
        QCOMPARE(openText(canvas, "<basenode><module id=\"101\" x=\"12.5\" y=\"33\"/></basenode>"),
                 0);
        const QList<supermodule*> blocks = canvas.blocks();
        QCOMPARE(blocks.size(), 2);
        const supermodule* block = blocks.at(0)->id == 101 ? blocks.at(0) : blocks.at(1);
        QCOMPARE(block->scenePos(), QPointF(0, 33));
    }

    void aPlaceThatTheLayoutCannotReckonWithIsBroughtNearer()
    {
        CanvasFixture canvas;
        QCOMPARE(openText(canvas, "<basenode><module id=\"0\" x=\"2147483647\" y=\"-2147483648\"/>"
                                  "<module id=\"301\"><left><module id=\"101\"/></left></module>"
                                  "<module id=\"303\"/></basenode>"),
                 0);
        QCOMPARE(canvas.main()->scenePos(), QPointF(1000000000, -1000000000));
        QCOMPARE(canvas.main()->lastOf()->scenePos(), QPointF(1000000000 + 140 + 280, -1000000000));
        QCOMPARE(canvas.brokenInvariants(), QStringList());
        QVERIFY(canvas.view.saveFile(path("b.tlrx")));
        QCOMPARE(canvas.view.openFile(path("b.tlrx")), 0);
        QCOMPARE(canvas.main()->scenePos(), QPointF(1000000000, -1000000000));
    }

    void missingAttributesReadAsNought()
    {
        CanvasFixture canvas;
        QCOMPARE(openText(canvas,
                          "<basenode><module id=\"0\"/><module id=\"101\"/><module id=\"100\"/>"
                          "<module/></basenode>"),
                 0);
        // An element without a type is a second block of the main block's type.
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 101, 100, 0}));
        const QString text = canvas.view.generateProjectCode(1);
        QVERIFY(text.contains(QStringLiteral("wait(0);\n")));
        QVERIFY(text.contains(QStringLiteral("speed1 = 30;\n")));
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void anUnknownTypeLosesItsBlockAndBodiesButNotWhatFollows()
    {
        CanvasFixture canvas;
        QCOMPARE(openText(canvas,
                          "<basenode><module id=\"0\" x=\"10\" y=\"20\"/><module id=\"103\"/>"
                          "<module id=\"999\"><left><module id=\"101\"/></left></module>"
                          "<module id=\"102\"/></basenode>"
                          "<basenode><module id=\"404\"/><module id=\"105\"/></basenode>"
                          "<basenode><module id=\"-1\"/></basenode><basenode/>"),
                 0);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 103, 102}));
        QCOMPARE(canvas.blocks().size(), 4);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aBlockOfTypeNoughtInMidChainIsABlock()
    {
        CanvasFixture canvas;
        QCOMPARE(openText(canvas,
                          "<basenode><module id=\"0\" x=\"10\" y=\"20\"/><module id=\"103\"/>"
                          "<module id=\"0\"/><module id=\"102\"/></basenode>"),
                 0);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 103, 0, 102}));
        const supermodule* second = canvas.main()->next()->next();
        QVERIFY(second != canvas.main());
        QVERIFY(dynamic_cast<const mainModule*>(second));
        QCOMPARE(second->boundingRect().width(), 140.0);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
        canvas.view.newProgram();
        canvas.view.resetDocument();
        QCOMPARE(canvas.blocks(), QList<supermodule*>{canvas.main()});
    }

    void twoStoredMainBlocksGiveOneChain()
    {
        CanvasFixture canvas;
        QCOMPARE(openText(canvas,
                          "<basenode><module id=\"0\" x=\"10\" y=\"20\"/><module id=\"103\"/>"
                          "</basenode><basenode><module id=\"0\" x=\"30\" y=\"40\"/>"
                          "<module id=\"102\"/></basenode>"),
                 0);
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 103, 102}));
        QCOMPARE(canvas.main()->scenePos(), QPointF(30, 40));
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aRightBranchIsHonoured()
    {
        CanvasFixture canvas;
        QCOMPARE(openText(canvas,
                          "<basenode><module id=\"0\" x=\"10\" y=\"20\"/><module id=\"103\">"
                          "<right><module id=\"101\" n=\"3\"/></right></module></basenode>"),
                 0);
        const supermodule* branch = canvas.main()->next()->right();
        QVERIFY(branch);
        QCOMPARE(branch->id, 101);
        QVERIFY(canvas.view.saveFile(path("b.tlrx")));
        QVERIFY(read(path("b.tlrx")).contains("<right>"));
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void theProgramsNameIsBroughtInWhateverItIs()
    {
        CanvasFixture canvas;
        NameHolder name;
        canvas.document.setProgramNameHolder(&name);
        name.name = QString::fromUtf8("小车 <\"&> long name");
        QVERIFY(canvas.view.saveFile(path(), s_tail));
        name.name = QStringLiteral("other");
        QCOMPARE(canvas.view.openFile(path()), 0);
        QCOMPARE(name.name, QString::fromUtf8("小车 <\"&> long name"));
        QCOMPARE(openText(canvas, QByteArray()), 0);
        QCOMPARE(name.name, QString());
        canvas.document.setProgramNameHolder(nullptr);
    }

    void aNameThatNoFileCanHoldDoesNotSpoilTheFile()
    {
        CanvasFixture canvas;
        NameHolder name;
        canvas.document.setProgramNameHolder(&name);
        // A project can bring such codes in: as references they are read.
        write(path(),
              "<vantrel downname=\"a&#65535;&#65534;b&#55296;c&#56320;\xf0\x9f\x98\x80&#1;\"/>");
        QCOMPARE(canvas.view.openFile(path()), 0);
        QVERIFY(name.name.contains(QChar(0xffff)));
        QVERIFY(canvas.view.saveFile(path("b.tlrx"), s_tail));
        QCOMPARE(canvas.view.openFile(path("b.tlrx")), 0);
        QCOMPARE(name.name, QString::fromUtf8("abc\xf0\x9f\x98\x80\x01"));
        canvas.document.setProgramNameHolder(nullptr);
    }

    void aMissingFileAsksWhetherItLeavesTheList()
    {
        CanvasFixture canvas;
        QSignalSpy menus(&canvas.view, &TzProgramView::updateRecentMenuSignal);
        const QString gone = path("gone.tlrx");
        recentFiles = QStringList{gone, QStringLiteral("/b.tlrx")};
        QString said;
        answerWith(1, &said);
        QCOMPARE(canvas.view.openFile(gone), static_cast<int>(ProjectMissing));
        QCOMPARE(said, QStringLiteral("提示|文件不存在，是否在列表中删除？"));
        QCOMPARE(recentFiles.size(), 2);
        QCOMPARE(menus.size(), 0);
        answerWith(0, &said);
        QCOMPARE(canvas.view.openFile(gone), static_cast<int>(ProjectMissing));
        QCOMPARE(recentFiles, QStringList{QStringLiteral("/b.tlrx")});
        QCOMPARE(menus.size(), 1);
    }

    void aRefusedFileLeavesTheCanvasAsItWas()
    {
        CanvasFixture canvas;
        supermodule* first = canvas.dropBehind(canvas.main(), 103);
        supermodule* loose = canvas.drop(101, QPointF(700, 400));
        canvas.view.deleteModule(loose);
        recentFiles = QStringList{QStringLiteral("/x.tlrx")};
        write(path("text"), "no project");
        write(path("tag"), "<vantrel><basenode/><tagCheck value=\"1\"/></vantrel>");
        QCOMPARE(canvas.view.openFile(path("text")), static_cast<int>(ProjectUnreadable));
        QCOMPARE(canvas.view.openFile(path("tag")), static_cast<int>(ProjectWrongTag));
        QCOMPARE(canvas.main()->next(), first);
        QCOMPARE(recentFiles, QStringList{QStringLiteral("/x.tlrx")});
        QVERIFY(canvas.view.undoStack().canUndo());
        canvas.view.undoStack().undo();
        QCOMPARE(canvas.blocks().size(), 3);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void whatIsNoRegularFileIsRefused()
    {
        CanvasFixture canvas;
        QCOMPARE(canvas.view.openFile(m_dir.path()), static_cast<int>(ProjectUnreadable));
#ifndef Q_OS_WIN
        const QByteArray pipe = path("pipe.tlrx").toLocal8Bit();
        QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
        QCOMPARE(canvas.view.openFile(QString::fromLocal8Bit(pipe)),
                 static_cast<int>(ProjectUnreadable));
#endif
        write(path("empty"), QByteArray());
        QCOMPARE(canvas.view.openFile(path("empty")), static_cast<int>(ProjectUnreadable));
    }

    void aDeepFileIsRefused()
    {
        CanvasFixture canvas;
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
        QCOMPARE(openText(canvas, nested(10000)), static_cast<int>(ProjectUnreadable));
        // Two elements a loop, and two around them.
        QCOMPARE(openText(canvas, nested(500)), static_cast<int>(ProjectUnreadable));
        QCOMPARE(openText(canvas, nested(499)), 0);
        QCOMPARE(canvas.blocks().size(), 500);
        QVERIFY(canvas.view.saveFile(path("b.tlrx")));
        QCOMPARE(canvas.view.openFile(path("b.tlrx")), 0);
        QCOMPARE(canvas.brokenInvariants(), QStringList());
    }

    void aFailedSaveKeepsTheOldFileWhole()
    {
        CanvasFixture canvas;
        recentFiles.clear();
        canvas.dropBehind(canvas.main(), 103);
        QVERIFY(!canvas.view.saveFile(path("no/such/folder/a.tlrx"), s_tail));
        QVERIFY(!canvas.view.saveFile(m_dir.path(), s_tail));
        QVERIFY(recentFiles.isEmpty());
        QVERIFY(canvas.view.saveFile(path(), s_tail));
        const QByteArray old = read(path());
        QTemporaryDir sealed;
        const QString inside = sealed.filePath(QStringLiteral("a.tlrx"));
        QVERIFY(QFile::copy(path(), inside));
#ifndef Q_OS_WIN
        if (geteuid() != 0) {
            QVERIFY(QFile::setPermissions(inside, QFile::ReadOwner));
            QVERIFY(QFile::setPermissions(sealed.path(), QFile::ReadOwner | QFile::ExeOwner));
            canvas.dropBehind(canvas.main()->lastOf(), 102);
            QVERIFY(!canvas.view.saveFile(inside, s_tail));
            QVERIFY(QFile::setPermissions(sealed.path(),
                                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        }
#endif
        QCOMPARE(read(inside), old);
    }

    void theTemporaryFileHoldsHeadsAlone()
    {
        CanvasFixture canvas;
        recentFiles.clear();
        supermodule* loop = canvas.dropBehind(canvas.main(), 301);
        canvas.drop(101, loop->scenePos() + QPointF(160, 20));
        supermodule* loose = canvas.drop(104, QPointF(700, 450));
        canvas.dropBehind(loose, 102);
        QVERIFY(canvas.view.saveTempFile(path(), s_tail));
        QVERIFY(recentFiles.isEmpty());
        const QByteArray text = read(path());
        QCOMPARE(text.count("<module "), 2);
        QVERIFY(text.contains("id=\"104\""));
        QVERIFY(text.endsWith(s_tail));
        QCOMPARE(canvas.view.openFile(path()), 0);
        QCOMPARE(canvas.blocks().size(), 2);
    }

    void savingAndOpeningPutThePathFirstInTheRecentList()
    {
        CanvasFixture canvas;
        recentFiles.clear();
        QSignalSpy menus(&canvas.view, &TzProgramView::updateRecentMenuSignal);
        QVERIFY(canvas.view.saveFile(path("a.tlrx")));
        QVERIFY(canvas.view.saveFile(path("b.tlrx")));
        QCOMPARE(recentFiles, (QStringList{path("b.tlrx"), path("a.tlrx")}));
        QCOMPARE(canvas.view.openFile(path("a.tlrx")), 0);
        QCOMPARE(recentFiles, (QStringList{path("a.tlrx"), path("b.tlrx")}));
        QCOMPARE(menus.size(), 3);
    }

    void keysAreGivenAnewAndTheStoredOnesKept()
    {
        CanvasFixture canvas;
        QCOMPARE(openText(canvas,
                          "<basenode><module id=\"0\" moduleKey=\"7\"/>"
                          "<module id=\"103\" moduleKey=\"7\"/><module id=\"102\" moduleKey=\"1\"/>"
                          "</basenode>"),
                 0);
        supermodule* first = canvas.main()->next();
        QCOMPARE(first->moduleKey, 7);
        QCOMPARE(moduleMap.value(first->registryKey()), first);
        QCOMPARE(first->next()->moduleKey, 1);
        QVERIFY(first->registryKey() != first->next()->registryKey());
        QCOMPARE(nextModuleKey, 4);
        canvas.view.deleteModule(first->next());
        QCOMPARE(CanvasFixture::ids(canvas.main()), (QList<int>{0, 103}));
        QCOMPARE(moduleMap.value(first->registryKey()), first);
    }

private:
    QTemporaryDir m_dir;
    QString path(const char* p_name = "a.tlrx") const
    {
        return m_dir.filePath(QLatin1String(p_name));
    }
    int openText(CanvasFixture& p_canvas, const QByteArray& p_modules);
};

int ProjectFileTest::openText(CanvasFixture& p_canvas, const QByteArray& p_modules)
{
    write(path(), "<vantrel>" + p_modules + "</vantrel>");
    return p_canvas.view.openFile(path());
}

QTEST_MAIN(ProjectFileTest)
#include "projectfiletest.moc"
