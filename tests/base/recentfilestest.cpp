#include "base/recentfiles.h"
#include "base/installpath.h"
#include "support/system/files.h"
#ifdef Q_OS_UNIX
#include "support/system/unprivileged.h"

#include <sys/stat.h>
#endif

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class RecentFilesTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString listFile() const { return m_dir.filePath("records.txt"); }

    void write(const QByteArray& p_content) { putFile(listFile(), p_content); }
    QByteArray content() const { return contentOf(listFile()); }

private slots:
    void init()
    {
        recentFiles.clear();
        QFile::remove(listFile());
        QDir(listFile()).removeRecursively();
    }

    void theListLiesBesideTheProgram()
    {
        QCOMPARE(recentFilesPath(), installPath("\\records.txt"));
    }

    void oneFileIsOneEntryWhicheverSlashesItIsGivenWith()
    {
        recentFiles = QStringList{"C:/a/b.tlrx", "/c.tlrx"};
        putRecentFileFirst("C:\\a\\b.tlrx");
        QCOMPARE(recentFiles, (QStringList{"C:\\a\\b.tlrx", "/c.tlrx"}));
        putRecentFileFirst("/c.tlrx");
        putRecentFileFirst("C:/a\\b.tlrx");
        QCOMPARE(recentFiles, (QStringList{"C:/a\\b.tlrx", "/c.tlrx"}));
        putRecentFileFirst(recentFiles.last());
        QCOMPARE(recentFiles, (QStringList{"/c.tlrx", "C:/a\\b.tlrx"}));
        removeRecentFile("C:\\a/b.tlrx");
        QCOMPARE(recentFiles, QStringList{"/c.tlrx"});
    }

    void aMissingFileGivesAnEmptyList()
    {
        readRecentFiles(listFile());
        QVERIFY(recentFiles.isEmpty());
    }

    void aMissingFileLeavesTheListAsItIs()
    {
        recentFiles = QStringList{"/a.tlrx"};
        readRecentFiles(listFile());
        QCOMPARE(recentFiles, QStringList{"/a.tlrx"});
    }

    void aFileIsReadLineByLine_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QStringList>("list");
        const auto row = [](const char* p_name, const QByteArray& p_file,
                            const QStringList& p_list) {
            QTest::newRow(p_name) << p_file << p_list;
        };
        row("an empty file gives an empty list", "", {});
        row("the order of the file is kept", "/c.tlrx\n/a.tlrx\n/b.tlrx\n",
            {"/c.tlrx", "/a.tlrx", "/b.tlrx"});
        row("a path that stands twice is kept once at its first place",
            "/a.tlrx\n/b.tlrx\n/a.tlrx\n\\b.tlrx\n", {"/a.tlrx", "/b.tlrx"});
        row("backslashes become slashes", "C:\\robots\\car.tlrx\n", {"C:/robots/car.tlrx"});
        row("a last line without a line feed loses its last character", "/a.tlrx\n/b.tlrx",
            {"/a.tlrx", "/b.tlr"});
        row("a zero byte ends a path", QByteArray("/a\0b.tlrx\n", 10), {"/a"});
        row("a carriage return belongs to the path", "/a.tlrx\r\n/a.tlrx\n",
            {"/a.tlrx\r", "/a.tlrx"});
    }

    void aFileIsReadLineByLine()
    {
        QFETCH(QByteArray, file);
        QFETCH(QStringList, list);
        write(file);
        readRecentFiles(listFile());
        QCOMPARE(recentFiles, list);
    }

    void writingAndReadingGivesAnAsciiListBack()
    {
        recentFiles = QStringList{"/b.tlrx", "/with blank/a.tlrx"};
        writeRecentFiles(listFile());
        QCOMPARE(content(), QByteArray("/b.tlrx\n/with blank/a.tlrx\n"));
        const QStringList written = recentFiles;
        recentFiles.clear();
        readRecentFiles(listFile());
        QCOMPARE(recentFiles, written);
    }

    void writingEmptiesTheFileFirst()
    {
        write("/a/much/longer/list.tlrx\n/of/paths.tlrx\n");
        recentFiles = QStringList{"/a.tlrx"};
        writeRecentFiles(listFile());
        QCOMPARE(content(), QByteArray("/a.tlrx\n"));
        recentFiles.clear();
        writeRecentFiles(listFile());
        QCOMPARE(content(), QByteArray());
    }

    void aChinesePathIsWrittenAsUtf8AndReadBackGarbled()
    {
        recentFiles = QStringList{"/车.tlrx"};
        writeRecentFiles(listFile());
        QCOMPARE(content(), QByteArray("/\xE8\xBD\xA6.tlrx\n"));
        recentFiles.clear();
        readRecentFiles(listFile());
        QCOMPARE(recentFiles, QStringList{QString::fromLatin1("/\xE8\xBD\xA6.tlrx")});
    }

    void aListThatCannotBeWrittenIsPassedOver()
    {
        recentFiles = QStringList{"/a.tlrx"};
        writeRecentFiles(m_dir.filePath("none/records.txt"));
        QVERIFY(!QFile::exists(m_dir.filePath("none")));
        QCOMPARE(recentFiles, QStringList{"/a.tlrx"});
    }

    void aNewPathComesFirstOnTheNextRun()
    {
        write("/a.tlrx\n/b.tlrx\n");
        readRecentFiles(listFile());
        putRecentFileFirst("/new.tlrx");
        writeRecentFiles(listFile());
        recentFiles.clear();
        readRecentFiles(listFile());
        QCOMPARE(recentFiles, QStringList({"/new.tlrx", "/a.tlrx", "/b.tlrx"}));
    }

    void aKnownPathMovesToTheFront()
    {
        recentFiles = QStringList{"/a.tlrx", "/b.tlrx", "/c.tlrx"};
        putRecentFileFirst("/c.tlrx");
        QCOMPARE(recentFiles, QStringList({"/c.tlrx", "/a.tlrx", "/b.tlrx"}));
        putRecentFileFirst("/c.tlrx");
        QCOMPARE(recentFiles, QStringList({"/c.tlrx", "/a.tlrx", "/b.tlrx"}));
    }

    void blankLinesAreOnePathWithoutAName()
    {
        write("\n\n/a.tlrx\n\n/b.tlrx\n\n");
        readRecentFiles(listFile());
        QCOMPARE(recentFiles, QStringList({"", "/a.tlrx", "/b.tlrx"}));
        writeRecentFiles(listFile());
        QCOMPARE(content(), QByteArray("\n/a.tlrx\n/b.tlrx\n"));
    }

    void everyByteIsACharacter()
    {
        QByteArray line;
        QString path;
        for (int byte = 1; byte < 256; ++byte) {
            if (byte != '\n' && byte != '\\') {
                line.append(static_cast<char>(byte));
                path.append(QChar(byte));
            }
        }
        write(line + '\n');
        readRecentFiles(listFile());
        QCOMPARE(recentFiles, QStringList{path});
    }

    void aChinesePathDoesNotGrowForEver()
    {
        recentFiles = QStringList{"/a.tlrx", "/我的车/小车.tlrx", "/b.tlrx"};
        // Each start and end makes it longer, twice as long at worst.
        for (int start = 0; start < 30; ++start) {
            writeRecentFiles(listFile());
            QVERIFY(QFileInfo(listFile()).size() < 200000);
            recentFiles.clear();
            readRecentFiles(listFile());
        }
        QCOMPARE(recentFiles, QStringList({"/a.tlrx", "/b.tlrx"}));
    }

    void aLineLongerThanAnyPathIsLeftOut_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<bool>("isKept");
        // With the line feed: the longest one, longer ones, and those at the ends of the pieces.
        const int longest = 3 * 32767 + 1;
        QTest::newRow("just right") << longest << true;
        for (const int size : {longest + 1, longest + 2, 2 * longest - 1, 2 * longest,
                               2 * longest + 1, 3 * longest, 50000000}) {
            QTest::addRow("%d", size) << size << false;
        }
    }

    void aLineLongerThanAnyPathIsLeftOut()
    {
        QFETCH(int, size);
        QFETCH(bool, isKept);
        const QByteArray path(size - 1, 'a');
        write("/b.tlrx\n" + path + "\n/c.tlrx\n");
        readRecentFiles(listFile());
        QStringList expected{"/b.tlrx", "/c.tlrx"};
        if (isKept) {
            expected.insert(1, QString::fromLatin1(path));
        }
        QVERIFY(recentFiles == expected);
        // As the last one it is left out, too.
        recentFiles.clear();
        write("/b.tlrx\n" + path);
        readRecentFiles(listFile());
        QCOMPARE(recentFiles.size(), isKept ? 2 : 1);
    }

    void aFolderInPlaceOfTheListIsLeftAlone()
    {
        QVERIFY(QDir().mkdir(listFile()));
        recentFiles = QStringList{"/a.tlrx"};
        readRecentFiles(listFile());
        QCOMPARE(recentFiles, QStringList{"/a.tlrx"});
        writeRecentFiles(listFile());
        QVERIFY(QFileInfo(listFile()).isDir());
        QCOMPARE(recentFiles, QStringList{"/a.tlrx"});
    }

#ifdef Q_OS_UNIX
    void aPipeInPlaceOfTheListIsNotWaitedFor()
    {
        QCOMPARE(mkfifo(QFile::encodeName(listFile()).constData(), 0600), 0);
        readRecentFiles(listFile());
        QVERIFY(recentFiles.isEmpty());
        writeRecentFiles(listFile());
        QVERIFY(QFileInfo::exists(listFile()));
    }

    void aReadOnlyListIsReadAndKept()
    {
        if (!Unprivileged::works()) {
            QSKIP("The rights of this user can't be given away.");
        }
        write("/a.tlrx\n");
        QVERIFY(QFile::setPermissions(listFile(),
                                      QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
        QVERIFY(Unprivileged::closeToChanges(m_dir.path()));
        {
            const Unprivileged user;
            readRecentFiles(listFile());
            putRecentFileFirst("/b.tlrx");
            writeRecentFiles(listFile());
        }
        QCOMPARE(recentFiles, QStringList({"/b.tlrx", "/a.tlrx"}));
        QCOMPARE(content(), QByteArray("/a.tlrx\n"));
    }

    void aListThatMayNotBeReadGivesNone()
    {
        if (!Unprivileged::works()) {
            QSKIP("The rights of this user can't be given away.");
        }
        write("/a.tlrx\n");
        QVERIFY(QFile::setPermissions(listFile(), QFileDevice::Permissions()));
        {
            const Unprivileged user;
            readRecentFiles(listFile());
        }
        QVERIFY(recentFiles.isEmpty());
    }
#endif

    void aHundredThousandPathsAndAsManyDoubles()
    {
        QByteArray lines;
        for (int round = 0; round < 2; ++round) {
            for (int i = 0; i < 100000; ++i) {
                lines += "/home/a/projects/" + QByteArray::number(i) + ".tlrx\n";
            }
        }
        write(lines);
        readRecentFiles(listFile());
        QCOMPARE(recentFiles.size(), 100000);
        QCOMPARE(recentFiles.last(), QString("/home/a/projects/99999.tlrx"));
    }

    void theListHasNoLimit()
    {
        for (int i = 0; i < 500; ++i) {
            putRecentFileFirst(QString("/%1.tlrx").arg(i));
        }
        writeRecentFiles(listFile());
        recentFiles.clear();
        readRecentFiles(listFile());
        QCOMPARE(recentFiles.size(), 500);
        QCOMPARE(recentFiles.first(), QString("/499.tlrx"));
    }
};

QTEST_GUILESS_MAIN(RecentFilesTest)
#include "recentfilestest.moc"
