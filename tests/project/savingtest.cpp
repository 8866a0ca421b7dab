#include "base/recentfiles.h"
#include "modules/catalogue/modulefactory.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "modules/moduleregistry.h"
#include "project/projectdocument.h"
#include "project/projectfile.h"
#include "support/canvas/canvasfixture.h"
#include "support/canvas/documentpicture.h"
#include "support/system/smalldisk.h"
#include "support/system/unprivileged.h"

#include <QApplication>
#include <QDir>
#include <QDomDocument>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
const quint32 s_seed = 20201217;
const char s_loopOption[] = "--save-for-ever";

/** Two projects that replace each other: told apart by their programs and by their action data. */
const QList<int> s_programs[] = {{0, 103, 101}, {0, 102, 104, 105, 109, 800, 120, 113, 104, 104}};

QByteArray tail(int p_turn)
{
    return QByteArray(static_cast<int>(ProjectTailSize), p_turn % 2 == 0 ? '\x11' : '\xee');
}

/** Puts a program on the canvas. */
void show(CanvasFixture& p_canvas, int p_turn)
{
    p_canvas.view.newProgram();
    p_canvas.view.resetDocument();
    for (const int id : s_programs[p_turn % 2]) {
        if (id != 0) {
            supermodule* block = createModuleFromId(id);
            block->enterScene(p_canvas.view.scene());
            block->moduleKey = ModuleRegistry::add(block);
            p_canvas.main()->appendModule(block);
        }
    }
    p_canvas.main()->updateTreeAndOpacity();
}

/** What the other process does: saves the two projects by turns until it is killed. */
int saveForEver(const QString& p_path)
{
    CanvasFixture canvas;
    for (int turn = 0;; ++turn) {
        show(canvas, turn);
        if (!canvas.view.saveFile(p_path, tail(turn))) {
            return 1;
        }
        std::puts("saved");
        std::fflush(stdout);
    }
}

/** A loop with as many in it as told, each in the one before. */
supermodule* nest(QGraphicsScene* p_scene, int p_loops)
{
    supermodule* outer = nullptr;
    for (int i = 0; i < p_loops; ++i) {
        supermodule* loop = createModuleFromId(303);
        loop->enterScene(p_scene);
        loop->moduleKey = ModuleRegistry::add(loop);
        if (outer) {
            loop->hangModule(LeftLink, outer);
        }
        outer = loop;
    }
    return outer;
}
} // namespace

/** Saves where that is hard. Whatever happens, the old or the new project is whole. */
class SavingTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_canvas = std::make_unique<CanvasFixture>();
        recentFiles = QStringList{"/before.tlrx"};
        show(*m_canvas, 0);
    }

    void cleanup() { m_canvas.reset(); }

    void aSaveThatIsKilledLeavesTheOldOrTheNewProjectWhole()
    {
        QRandomGenerator random(s_seed);
        int found[] = {0, 0};
        for (int i = 0; i < 25; ++i) {
            QProcess process;
            process.start(QCoreApplication::applicationFilePath(),
                          {QLatin1String(s_loopOption), path()});
            QVERIFY(process.waitForStarted());
            while (!process.canReadLine()) {
                QVERIFY(process.waitForReadyRead(30000));
            }
            // Some hundred saves fit in here.
            usleep(static_cast<useconds_t>(random.bounded(1, 60000)));
            process.kill();
            QVERIFY(process.waitForFinished());
            QCOMPARE(process.exitStatus(), QProcess::CrashExit);
            const int project = projectIn(path());
            QVERIFY2(project >= 0, "neither of the two");
            QCOMPARE(view().openFile(path()), 0);
            QCOMPARE(m_canvas->brokenInvariants(), QStringList());
            ++found[project];
        }
        QVERIFY(found[0] > 0);
        QVERIFY(found[1] > 0);
        // What a killed save leaves beside the project is no project by its name.
        QCOMPARE(QDir(m_dir->path()).entryList({QStringLiteral("*.tlrx")}), QStringList{"a.tlrx"});
    }

    void aFullDiskKeepsTheOldProject()
    {
        SmallDisk disk("size=256k");
        if (!disk.isMounted()) {
            QSKIP("This user can't mount a disk.");
        }
        const QString file = disk.path("a.tlrx");
        QVERIFY(view().saveFile(file, tail(0)));
        show(*m_canvas, 1);
        // Not a byte left, room for the text alone, and room for nearly all of it.
        for (const int left : {0, 8 * 1024, 56 * 1024}) {
            disk.fill(left);
            QCOMPARE(refused(file), QString());
            QCOMPARE(refused(disk.path("b.tlrx")), QString());
            QCOMPARE(projectIn(file), 0);
        }
        disk.empty();
        QVERIFY(view().saveFile(file, tail(1)));
        QCOMPARE(projectIn(file), 1);
    }

    void aFullDiskKeepsNothingOfANewProjectWithALongName()
    {
        SmallDisk disk("size=256k");
        if (!disk.isMounted()) {
            QSKIP("This user can't mount a disk.");
        }
        const QByteArray name = QByteArray(250, 'x') + ".tlrx";
        for (const int left : {0, 8 * 1024, 56 * 1024}) {
            disk.fill(left);
            QCOMPARE(refused(disk.path(name)), QString());
            QCOMPARE(QDir(disk.path()).entryList(QDir::Files), QStringList("filler"));
        }
        disk.empty();
        QVERIFY(view().saveFile(disk.path(name), tail(0)));
        QCOMPARE(projectIn(disk.path(name)), 0);
    }

    void aDiskThatTakesNoMoreFilesKeepsTheOldProject()
    {
        // The folder itself, the project, and one more for the save of the first.
        SmallDisk disk("size=1m,nr_inodes=3");
        if (!disk.isMounted()) {
            QSKIP("This user can't mount a disk.");
        }
        QVERIFY(view().saveFile(disk.path("a.tlrx"), tail(0)));
        QVERIFY(writeWhole(disk.path("other"), QByteArray()));
        show(*m_canvas, 1);
        QCOMPARE(refused(disk.path("b.tlrx")), QString());
        // There is no other way to save this one.
        QVERIFY(view().saveFile(disk.path("a.tlrx"), tail(1)));
        QCOMPARE(projectIn(disk.path("a.tlrx")), 1);
    }

    void aFullDiskKeepsAProjectThatIsWrittenInPlace()
    {
        SmallDisk disk("size=256k,mode=0755");
        if (!disk.isMounted()) {
            QSKIP("This user can't mount a disk.");
        }
        if (!Unprivileged::works()) {
            QSKIP("The rights of this user can't be given away.");
        }
        const QString file = disk.path("a.tlrx");
        QVERIFY(view().saveFile(file, tail(0)));
        QVERIFY(Unprivileged::openToChanges(file));
        QVERIFY(Unprivileged::closeToChanges(disk.path()));
        // The new project needs more room than the old one had.
        show(*m_canvas, 1);
        supermodule* loose = nest(view().scene(), 60);
        loose->updateTreeAndOpacity();
        disk.fill();
        {
            const Unprivileged user;
            QCOMPARE(refused(file), QString());
        }
        QCOMPARE(projectIn(file), 0);
        supermodule::deleteTree(loose);
        disk.empty();
        const Unprivileged user;
        QVERIFY(view().saveFile(file, tail(1)));
        QCOMPARE(projectIn(file), 1);
    }

    void aReadOnlyFolderKeepsTheOldProject()
    {
        if (!Unprivileged::works()) {
            QSKIP("The rights of this user can't be given away.");
        }
        QVERIFY(view().saveFile(path(), tail(0)));
        QVERIFY(Unprivileged::closeToChanges(m_dir->path()));
        show(*m_canvas, 1);
        {
            const Unprivileged user;
            if (geteuid() == QFileInfo(m_dir->path()).ownerId()) {
                QVERIFY(QFile::setPermissions(path(), QFile::ReadOwner));
            }
            QCOMPARE(refused(path()), QString());
            QCOMPARE(refused(path("b.tlrx")), QString());
        }
        QCOMPARE(projectIn(path()), 0);
        QVERIFY(Unprivileged::openToChanges(m_dir->path()));
    }

    void aFileInAClosedFolderIsWrittenInPlace_data()
    {
        QTest::addColumn<int>("first");
        QTest::newRow("a longer one") << 0;
        QTest::newRow("a shorter one") << 1;
    }

    void aFileInAClosedFolderIsWrittenInPlace()
    {
        QFETCH(int, first);
        if (!Unprivileged::works()) {
            QSKIP("The rights of this user can't be given away.");
        }
        show(*m_canvas, first);
        QVERIFY(view().saveFile(path(), tail(first)));
        QVERIFY(Unprivileged::openToChanges(path()));
        QVERIFY(Unprivileged::closeToChanges(m_dir->path()));
        const qint64 before = QFileInfo(path()).size();
        show(*m_canvas, 1 - first);
        {
            const Unprivileged user;
            QVERIFY(view().saveFile(path(), tail(1 - first)));
        }
        QCOMPARE(QFileInfo(path()).size() > before, first == 0);
        QCOMPARE(projectIn(path()), 1 - first);
        QVERIFY(Unprivileged::openToChanges(m_dir->path()));
    }

    void aFileOfSomeoneElseInASharedFolder_data()
    {
        QTest::addColumn<bool>("open");
        QTest::newRow("closed to changes") << false;
        QTest::newRow("open to changes") << true;
    }

    void aFileOfSomeoneElseInASharedFolder()
    {
        QFETCH(bool, open);
        if (geteuid() != 0 || !Unprivileged::works()) {
            QSKIP("There is no one else to be.");
        }
        // Everyone may put files there, but not take away those of others.
        QVERIFY(view().saveFile(path(), tail(0)));
        QVERIFY(open ? Unprivileged::openToChanges(path()) : Unprivileged::closeToChanges(path()));
        QCOMPARE(chmod(QFile::encodeName(m_dir->path()).constData(), 01777), 0);
        show(*m_canvas, 1);
        {
            const Unprivileged user;
            if (open) {
                QVERIFY(view().saveFile(path(), tail(1)));
            } else {
                QCOMPARE(refused(path()), QString());
            }
        }
        QCOMPARE(projectIn(path()), open ? 1 : 0);
        QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files), QStringList{"a.tlrx"});
    }

    void aFolderThatVanishesFailsTheSaveUntilItIsBack()
    {
        const QString folder = m_dir->filePath(QStringLiteral("lesson"));
        const QString file = folder + QStringLiteral("/a.tlrx");
        QVERIFY(QDir().mkdir(folder));
        QVERIFY(view().saveFile(file, tail(0)));
        QCOMPARE(view().openFile(file), 0);
        QVERIFY(QDir(folder).removeRecursively());
        QCOMPARE(refused(file), QString());
        // Something else in its place.
        QVERIFY(writeWhole(folder, "a file"));
        QCOMPARE(refused(file), QString());
        QVERIFY(QFile::remove(folder));
        QVERIFY(QDir().mkdir(folder));
        QVERIFY(view().saveFile(file, tail(0)));
        QCOMPARE(projectIn(file), 0);
    }

    void aNameAsLongAsTheDiskTakesIsSaved()
    {
        // There is no room in it for the ending of another file beside it.
        const QString file =
            m_dir->filePath(QString(250, QLatin1Char('x')) + QLatin1String(".tlrx"));
        QVERIFY(view().saveFile(file, tail(0)));
        QCOMPARE(projectIn(file), 0);
        show(*m_canvas, 1);
        QVERIFY(view().saveFile(file, tail(1)));
        QCOMPARE(projectIn(file), 1);
        QCOMPARE(refused(m_dir->filePath(QString(256, QLatin1Char('x')))), QString());
    }

    void whatIsNoFileIsNotOverwritten()
    {
        QVERIFY(QDir().mkdir(path("folder.tlrx")));
        QCOMPARE(refused(path("folder.tlrx")), QString());
        QVERIFY(QFileInfo(path("folder.tlrx")).isDir());
        QCOMPARE(refused(QString()), QString());
    }

    void linksAndRightsOfAProjectStay()
    {
        QVERIFY(QDir().mkdir(path("elsewhere")));
        QVERIFY(view().saveFile(path("elsewhere/a.tlrx"), tail(0)));
        QVERIFY(QFile::link(path("elsewhere/a.tlrx"), path("link.tlrx")));
        const QFile::Permissions rights = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
        QVERIFY(QFile::setPermissions(path("elsewhere/a.tlrx"), rights));
        show(*m_canvas, 1);
        QVERIFY(view().saveFile(path("link.tlrx"), tail(1)));
        QVERIFY(QFileInfo(path("link.tlrx")).isSymLink());
        QCOMPARE(projectIn(path("elsewhere/a.tlrx")), 1);
        struct stat status = {};
        QCOMPARE(stat(QFile::encodeName(path("elsewhere/a.tlrx")).constData(), &status), 0);
        QCOMPARE(status.st_mode & 0777U, 0640U);
    }

    void theDeepestProjectOpensAgainAndADeeperOneIsNotSaved()
    {
        QVERIFY(view().saveFile(path(), tail(0)));
        // Two elements a body, and three down to the outermost block.
        const int deepest = 499;
        m_canvas->main()->lastOf()->appendModule(nest(view().scene(), deepest));
        m_canvas->main()->updateTreeAndOpacity();
        const QString text = view().generateProjectCode(1);
        QVERIFY(view().saveFile(path("deep.tlrx"), tail(1)));
        QCOMPARE(view().openFile(path("deep.tlrx")), 0);
        QCOMPARE(m_canvas->blocks().size(), 3 + deepest);
        QCOMPARE(view().generateProjectCode(1), text);
        // One more in the innermost, from where it came loose.
        supermodule* innermost = m_canvas->main()->lastOf();
        while (innermost->left()) {
            innermost = innermost->left();
        }
        innermost->setLeftModule(nest(view().scene(), 1));
        QCOMPARE(refused(path()), QString());
        QCOMPARE(refused(path("new.tlrx")), QString());
        QCOMPARE(m_canvas->blocks().size(), 4 + deepest);
        QCOMPARE(projectIn(path()), 0);
        // The same in a loose chain, and in the branch of a block that has one.
        innermost->removeChild(innermost->left());
        QVERIFY(view().saveFile(path("deep.tlrx"), tail(1)));
        supermodule* loose = nest(view().scene(), deepest + 1);
        QCOMPARE(refused(path()), QString());
        supermodule::deleteTree(loose);
        QVERIFY(view().saveFile(path(), tail(1)));
        innermost->setRightModule(nest(view().scene(), 1));
        QCOMPARE(refused(path("deep.tlrx")), QString());
        // Ten thousand more are refused as safely.
        innermost->removeChild(innermost->right());
        innermost->hangModule(LeftLink, nest(view().scene(), 10000));
        QCOMPARE(refused(path("deep.tlrx")), QString());
    }

    void theLargestProjectOpensAgainAndALargerOneIsNotSaved()
    {
        const QByteArray xml = "<vantrel/>";
        const QByteArray most =
            xml +
            QByteArray(static_cast<int>(MaximalProjectSize - ProjectTailSize) - xml.size(), ' ');
        QVERIFY(writeProject(path(), most, tail(0)));
        ProjectContent project;
        QCOMPARE(readProject(path(), project), static_cast<int>(ProjectOpened));
        QVERIFY(project.actions == tail(0));
        const QByteArray old = readWhole(path());
        QVERIFY(!writeProject(path(), most + ' ', tail(0)));
        QVERIFY(!writeProject(path(), QByteArray(), tail(0)));
        QVERIFY(readWhole(path()) == old);
    }

private:
    QString path(const char* p_name = "a.tlrx") const
    {
        return m_dir->filePath(QLatin1String(p_name));
    }
    TzProgramView& view() { return m_canvas->view; }
    /** Saves what must not be saved: empty if it isn't and nothing has changed, else what is wrong.
     */
    QString refused(const QString& p_path)
    {
        documentModified = true;
        const QByteArray file = readWhole(p_path);
        const QStringList beside =
            QFileInfo(p_path).dir().entryList(QDir::AllEntries | QDir::Hidden);
        const QStringList document = documentPicture(view());
        if (view().saveFile(p_path, tail(1))) {
            return QStringLiteral("saved");
        }
        if (documentPicture(view()) != document) {
            return QStringLiteral("the document changed");
        }
        if (readWhole(p_path) != file) {
            return QStringLiteral("the file changed");
        }
        const QStringList now = QFileInfo(p_path).dir().entryList(QDir::AllEntries | QDir::Hidden);
        return now == beside ? QString()
                             : QStringLiteral("left behind: ") + now.join(QLatin1Char(' '));
    }

    /** Which of the two projects a file holds: 0 or 1, or -1 if it is neither. */
    int projectIn(const QString& p_path)
    {
        ProjectContent project;
        if (readProject(p_path, project) != ProjectOpened) {
            return -1;
        }
        QList<int> ids;
        const QDomNodeList modules = project.document.elementsByTagName(QStringLiteral("module"));
        for (int i = 0; i < modules.size(); ++i) {
            ids.append(modules.at(i).toElement().attribute(QStringLiteral("id")).toInt());
        }
        for (const int turn : {0, 1}) {
            if (ids == s_programs[turn] && project.actions == tail(turn)) {
                return turn;
            }
        }
        return -1;
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<CanvasFixture> m_canvas;
};

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    if (argc == 3 && QLatin1String(argv[1]) == QLatin1String(s_loopOption)) {
        return saveForEver(QString::fromLocal8Bit(argv[2]));
    }
    SavingTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "savingtest.moc"
