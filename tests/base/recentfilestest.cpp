#include "recentfiles.h"
#include "installpath.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class RecentFilesTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString listFile() const { return m_dir.filePath("records.txt"); }

    void write(const QByteArray& p_content)
    {
        QFile file(listFile());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(p_content), qint64(p_content.size()));
    }

    QByteArray content() const
    {
        QFile file(listFile());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }

private slots:
    void init()
    {
        recentFiles.clear();
        QFile::remove(listFile());
    }

    void theListLiesBesideTheProgram()
    {
        QCOMPARE(recentFilesPath(), installPath("\\records.txt"));
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

    void anEmptyFileGivesAnEmptyList()
    {
        write("");
        readRecentFiles(listFile());
        QVERIFY(recentFiles.isEmpty());
    }

    void theOrderOfTheFileIsKept()
    {
        write("/c.tlrx\n/a.tlrx\n/b.tlrx\n");
        readRecentFiles(listFile());
        QCOMPARE(recentFiles, QStringList({"/c.tlrx", "/a.tlrx", "/b.tlrx"}));
    }

    void aPathThatStandsTwiceIsKeptOnceAtItsFirstPlace()
    {
        write("/a.tlrx\n/b.tlrx\n/a.tlrx\n\\b.tlrx\n");
        readRecentFiles(listFile());
        QCOMPARE(recentFiles, QStringList({"/a.tlrx", "/b.tlrx"}));
    }

    void backslashesBecomeSlashes()
    {
        write("C:\\robots\\car.tlrx\n");
        readRecentFiles(listFile());
        QCOMPARE(recentFiles, QStringList{"C:/robots/car.tlrx"});
    }

    void aLastLineWithoutALineFeedLosesItsLastCharacter()
    {
        write("/a.tlrx\n/b.tlrx");
        readRecentFiles(listFile());
        QCOMPARE(recentFiles, QStringList({"/a.tlrx", "/b.tlr"}));
    }

    void aZeroByteEndsAPath()
    {
        write(QByteArray("/a\0b.tlrx\n", 10));
        readRecentFiles(listFile());
        QCOMPARE(recentFiles, QStringList{"/a"});
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
        recentFiles = QStringList{QStringLiteral("/车.tlrx")};
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
