#include "base/recentfiles.h"
#include "support/canvas/documentpicture.h"
#include "support/system/answers.h"
#include "support/system/datatable.h"
#include "windowbench.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QMenu>

namespace
{
const char s_openFailed[] = "打开文件|文件打开失败";
const char s_missing[] = "提示|文件不存在，是否在列表中删除？";
/** The buttons of the question about a missing file. */
const int s_remove = 0;
const int s_keep = 1;

const QByteArray s_project("<!DOCTYPE vantrel>\n<vantrel><basenode><module id=\"0\"/>"
                           "<module id=\"103\"/></basenode></vantrel>\n");
} // namespace

/** The list of recent projects from its file to the tool bar's menu and back, whatever is in it. */
class RecentListTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(writeWhole(path(), s_project));
    }

    void cleanup()
    {
        end();
        QFile::remove(recentFilesPath());
        QDir(recentFilesPath()).removeRecursively();
        QVERIFY(moduleMap.isEmpty());
    }

    void theMenuShowsTheFilesNamesAsTheyAreRead()
    {
        start("/home/a/car.tlrx\n\n/home/a/car.tlrx\n\n/home/b/car.tlrx\nC:\\robots\\dog.tlrx\n"
              "/home/a/cat.tlrx\r\n/home/a/\xE9t\xE9.tlrx\n/home/a/\n/home/a/cow.tlrx");
        QCOMPARE(entries(), QStringList({"car.tlrx", "", "car.tlrx", "dog.tlrx", "cat.tlrx\r",
                                         QStringLiteral("été.tlrx"), "", "cow.tlr"}));
        QCOMPARE(end(), QByteArray("/home/a/car.tlrx\n\n/home/b/car.tlrx\nC:/robots/dog.tlrx\n"
                                   "/home/a/cat.tlrx\r\n/home/a/\xC3\xA9t\xC3\xA9.tlrx\n/home/a/\n"
                                   "/home/a/cow.tlr\n"));
    }

    void anEntryOpensItsProjectAndComesFirst()
    {
        const QByteArray here = path().toUtf8() + '\n';
        start("/home/a/gone.tlrx\n" + here);
        pick(1);
        QCOMPARE(chain(), (QList<int>{0, 103}));
        QCOMPARE(m_bench->window.fileName(), path());
        QCOMPARE(entries(), QStringList({"car.tlrx", "gone.tlrx"}));
        QCOMPARE(end(), here + "/home/a/gone.tlrx\n");
    }

    void aMissingProjectStaysOrGoesAsTheUserSays()
    {
        const QByteArray here = path().toUtf8() + '\n';
        start("/home/a/gone.tlrx\n" + here + "/home/b/gone.tlrx\n");
        for (const int keep : {s_keep, Closed}) {
            pick(2, {keep});
            QCOMPARE(Answers::said(), QStringList{QString::fromUtf8(s_missing)});
            QCOMPARE(entries(), QStringList({"gone.tlrx", "car.tlrx", "gone.tlrx"}));
        }
        pick(0, {s_remove});
        QCOMPARE(Answers::said(), QStringList{QString::fromUtf8(s_missing)});
        // The menu is up to date without anyone's asking.
        QCOMPARE(m_bench->bar().recentMenu().actions().size(), 2);
        QCOMPARE(entries(), QStringList({"car.tlrx", "gone.tlrx"}));
        QCOMPARE(chain(), QList<int>{0});
        pick(0);
        QCOMPARE(chain(), (QList<int>{0, 103}));
        QCOMPARE(end(), here + "/home/b/gone.tlrx\n");
    }

    void anEntryThatIsNoProjectIsToldAndStays_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("a folder") << QStringLiteral("folder.tlrx");
        QTest::newRow("a text") << QStringLiteral("text.tlrx");
        QTest::newRow("an empty file") << QStringLiteral("empty.tlrx");
    }

    void anEntryThatIsNoProjectIsToldAndStays()
    {
        QFETCH(QString, name);
        QVERIFY(QDir().mkdir(path("folder.tlrx")));
        QVERIFY(writeWhole(path("text.tlrx"), "no project"));
        QVERIFY(writeWhole(path("empty.tlrx"), QByteArray()));
        start(m_dir->filePath(name).toUtf8() + '\n' + path().toUtf8() + '\n');
        pick(0, {0});
        QCOMPARE(Answers::said(), QStringList{QString::fromUtf8(s_openFailed)});
        QCOMPARE(entries(), QStringList({name, "car.tlrx"}));
        QCOMPARE(m_bench->window.fileName(), QString());
        pick(1);
        QCOMPARE(chain(), (QList<int>{0, 103}));
    }

    void anEntryWithoutTheEndingDoesNothing_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::newRow("a blank line") << QByteArray("\n");
        QTest::newRow("a line of Windows") << QByteArray("/home/a/car.tlrx\r\n");
        QTest::newRow("a folder") << QByteArray("/\n");
        QTest::newRow("a text") << QByteArray("/etc/hostname\n");
        QTest::newRow("an ending in capitals") << QByteArray("/home/a/CAR.TLRX\n");
    }

    void anEntryWithoutTheEndingDoesNothing()
    {
        QFETCH(QByteArray, line);
        start(line + path().toUtf8() + '\n');
        const QStringList before = documentPicture(m_bench->canvas());
        pick(0);
        QCOMPARE(documentPicture(m_bench->canvas()), before);
        pick(1);
        QCOMPARE(chain(), (QList<int>{0, 103}));
    }

    void aChinesePathIsNotFoundOnTheNextRun()
    {
        const QString chinese = path("小车.tlrx");
        QVERIFY(writeWhole(chinese, s_project));
        start(QByteArray());
        m_bench->window.openPath(chinese);
        QCOMPARE(chain(), (QList<int>{0, 103}));
        QCOMPARE(entries(), QStringList{QStringLiteral("小车.tlrx")});
        pick(0);
        // The list is written in one encoding and read in another.
        const QByteArray list = end();
        QCOMPARE(list, chinese.toUtf8() + '\n');
        start(list);
        QCOMPARE(entries(), QStringList{QString::fromLatin1("\xE5\xB0\x8F\xE8\xBD\xA6.tlrx")});
        pick(0, {s_remove});
        QCOMPARE(Answers::said(), QStringList{QString::fromUtf8(s_missing)});
        QVERIFY(entries().isEmpty());
        QCOMPARE(end(), QByteArray());
    }

    void whatIsInPlaceOfTheListDoesNoHarm_data()
    {
        columns<bool, QByteArray>("isFolder", "content");
        QTest::newRow("a folder") << true << QByteArray();
        QTest::newRow("NULs") << false << QByteArray(100000, '\0');
        QTest::newRow("one long line") << false << QByteArray(20000000, 'a');
        QTest::newRow("many lines of two bytes") << false << QByteArray("a\nb\n").repeated(100000);
    }

    void whatIsInPlaceOfTheListDoesNoHarm()
    {
        QFETCH(bool, isFolder);
        QFETCH(QByteArray, content);
        if (isFolder) {
            recentFiles.clear();
            QVERIFY(QDir().mkdir(recentFilesPath()));
            m_bench = std::make_unique<WindowBench>();
        } else {
            start(content);
        }
        entries();
        m_bench->window.openPath(path());
        QCOMPARE(chain(), (QList<int>{0, 103}));
        QCOMPARE(entries().first(), QStringLiteral("car.tlrx"));
        end();
        QCOMPARE(QFileInfo(recentFilesPath()).isDir(), isFolder);
        if (!isFolder) {
            QVERIFY(readWhole(recentFilesPath()).startsWith(path().toUtf8() + '\n'));
        }
    }

private:
    QString path(const char* p_name = "car.tlrx") const
    {
        return m_dir->filePath(QString::fromUtf8(p_name));
    }
    /** Starts the program with a list file of such lines. */
    void start(const QByteArray& p_list)
    {
        recentFiles.clear();
        QVERIFY(writeWhole(recentFilesPath(), p_list));
        m_bench = std::make_unique<WindowBench>();
    }
    /** Ends the program: the list file's content. */
    QByteArray end()
    {
        m_bench.reset();
        return readWhole(recentFilesPath());
    }
    /** The entries of the menu, after whatever makes them be shown. */
    QStringList entries()
    {
        m_bench->bar().OnUpdateRecentMenuSignal();
        QStringList names;
        for (const QAction* action : m_bench->bar().recentMenu().actions()) {
            names.append(action->text());
        }
        return names;
    }
    /** Picks the p_place-th entry with the mouse; answers the dialogs that come up then. */
    void pick(int p_place, const QVariantList& p_answers = {})
    {
        entries();
        QMenu& menu = m_bench->bar().recentMenu();
        menu.popup(QPoint(0, 0));
        Answers hands(p_answers);
        QTest::mouseClick(&menu, Qt::LeftButton, Qt::NoModifier,
                          menu.actionGeometry(menu.actions().at(p_place)).center());
        menu.hide();
        QVERIFY(hands.allUsed());
        QCOMPARE(Answers::said().size(), p_answers.size());
    }
    QList<int> chain() const { return m_bench->program(); }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<WindowBench> m_bench;
};

QTEST_MAIN(RecentListTest)
#include "recentlisttest.moc"
