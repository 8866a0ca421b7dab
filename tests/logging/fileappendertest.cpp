#include "logging/fileappender.h"
#include "loghelpers.h"
#include "support/system/smalldisk.h"
#include "support/system/unprivileged.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCodec>

namespace
{
constexpr const char* s_unopened = "--unopened";

/** The file's text; invalid where it isn't UTF-8. */
QString utf8Of(const QString& p_path)
{
    QTextCodec::ConverterState state;
    const QByteArray bytes = contentOf(p_path);
    const QString text =
        QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    return state.invalidChars == 0 && state.remainingChars == 0 ? text : QStringLiteral("invalid");
}

/** What a program says that logs into a folder of its own, where no file can be. */
int logWhereNoFileCanBe()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QString::fromUtf8("日志/a.txt"));
    FileAppender appender(path);
    appender.setFormat(QStringLiteral("%{message}\n"));
    const auto write = [&](const char* p_text) {
        appender.write(messageOf(QString::fromUtf8(p_text)));
    };
    for (int i = 0; i < 1000; ++i) {
        write("dropped");
    }
    // As soon as it can be opened it is, and a further failure is told again.
    QDir().mkpath(folder.filePath(QString::fromUtf8("日志")));
    write("kept");
    appender.setFileName(folder.filePath(QStringLiteral("elsewhere/b.txt")));
    write("dropped");
    write("dropped");
    appender.setFileName(QString());
    write("dropped");
    return contentOf(path) == "kept\n" ? 0 : 1;
}

void write(FileAppender& p_appender, const QString& p_text)
{
    p_appender.setFormat(QStringLiteral("%{message}\n"));
    p_appender.write(messageOf(p_text));
}
} // namespace

/** The appender that writes into a file, in good and in bad times. */
class FileAppenderTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_dir = std::make_unique<QTemporaryDir>(); }

    void theFileIsMadeByTheFirstMessage()
    {
        FileAppender appender(path());
        QCOMPARE(appender.fileName(), path());
        appender.write(messageOf(QStringLiteral("small"), LogLevel::Trace));
        QVERIFY(!QFile::exists(path()));
        appender.write(messageOf(QStringLiteral("large")));
        QCOMPARE(contentOf(path()), QByteArray("2026-11-21T12:00:00.000 [Info   ] <> large\n"));
    }

    void eachMessageIsInTheFileAtOnce()
    {
        FileAppender appender(path());
        QByteArray all;
        for (int i = 0; i < 50; ++i) {
            write(appender, QString::number(i));
            all += QByteArray::number(i) + '\n';
            QCOMPARE(contentOf(path()), all);
        }
    }

    void whatIsInTheFileStays()
    {
        {
            FileAppender first(path());
            write(first, QStringLiteral("a"));
        }
        FileAppender second(path());
        FileAppender third(path());
        write(second, QStringLiteral("b"));
        write(third, QStringLiteral("c"));
        write(second, QStringLiteral("d"));
        QCOMPARE(contentOf(path()), QByteArray("a\nb\nc\nd\n"));
    }

    void textOfAnyKindMakesAReadableFile()
    {
        FileAppender appender(path());
        write(appender, QString::fromUtf8("编译成功！ Übung 😀"));
        write(appender, QStringLiteral("%{message} %s \\n"));
        write(appender, QString(QChar::Null) + QLatin1Char('x'));
        write(appender, QString(QChar(0xd83d)));
        write(appender, QString(QChar(0xde00)) + QLatin1Char('y'));
        write(appender, QString(100000, QChar(0x5854)));
        // Half a character at the very end must not wait for its other half.
        appender.setFormat(QStringLiteral("%{message}"));
        appender.write(messageOf(QString(QChar(0xd83d))));
        appender.write(messageOf(QStringLiteral("\nend\n")));
        const QStringList lines = utf8Of(path()).split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), 9);
        QCOMPARE(lines.at(0), QString::fromUtf8("编译成功！ Übung 😀"));
        QCOMPARE(lines.at(1), QStringLiteral("%{message} %s \\n"));
        QCOMPARE(lines.at(2), QString(QChar::ReplacementCharacter) + QLatin1Char('x'));
        QVERIFY(lines.at(4).endsWith(QLatin1Char('y')));
        QCOMPARE(lines.at(5), QString(100000, QChar(0x5854)));
        QCOMPARE(lines.at(7), QStringLiteral("end"));
    }

    void theLanguageOfTheSystemIsOfNoMatter()
    {
        QTextCodec* const before = QTextCodec::codecForLocale();
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
        FileAppender appender(path());
        write(appender, QString::fromUtf8("编译成功！"));
        appender.setFileName(path("b.txt"));
        write(appender, QString::fromUtf8("连接控制器"));
        QTextCodec::setCodecForLocale(before);
        QCOMPARE(contentOf(path()), QByteArray("编译成功！\n"));
        QCOMPARE(contentOf(path("b.txt")), QByteArray("连接控制器\n"));
    }

    void anotherFileTakesOver()
    {
        FileAppender appender(path("a.txt"));
        write(appender, QStringLiteral("a"));
        appender.setFileName(path("b.txt"));
        QCOMPARE(appender.fileName(), path("b.txt"));
        write(appender, QString::fromUtf8("编"));
        appender.setFileName(path("a.txt"));
        write(appender, QString::fromUtf8("译"));
        QCOMPARE(contentOf(path("a.txt")), QByteArray("a\n译\n"));
        QCOMPARE(contentOf(path("b.txt")), QByteArray("编\n"));
    }

    void aFileThatCantBeOpenedIsToldOnce()
    {
        QProcess process;
        runAgain(process, s_unopened);
        QCOMPARE(process.exitCode(), 0);
        const QByteArray output = process.readAllStandardError();
        QCOMPARE(output.count("<FileAppender::append> Cannot open the log file"), 3);
        const QList<QByteArray> lines = output.split('\n');
        QVERIFY2(lines.at(0).startsWith("<FileAppender::append> Cannot open the log file /") &&
                     lines.at(0).endsWith("日志/a.txt"),
                 output);
        QVERIFY2(lines.at(1).endsWith("elsewhere/b.txt"), output);
    }

    void aFolderInPlaceOfTheFileDoesNoHarm()
    {
        QVERIFY(QDir().mkpath(path()));
        FileAppender appender(path());
        write(appender, QStringLiteral("dropped"));
        QVERIFY(QDir().rmdir(path()));
        write(appender, QStringLiteral("kept"));
        QCOMPARE(contentOf(path()), QByteArray("kept\n"));
    }

    void aFileThatMayNotBeWrittenDoesNoHarm()
    {
        if (!Unprivileged::works()) {
            QSKIP("only an administrator can become an ordinary user");
        }
        FileAppender appender(path());
        {
            const Unprivileged user;
            write(appender, QStringLiteral("dropped"));
            QVERIFY(!QFile::exists(path()));
        }
        write(appender, QStringLiteral("kept"));
        QCOMPARE(contentOf(path()), QByteArray("kept\n"));
    }

    void aFileRemovedMeanwhileDoesNoHarm()
    {
        FileAppender first(path());
        write(first, QStringLiteral("first"));
        QVERIFY(QFile::remove(path()));
        FileAppender second(path());
        write(second, QStringLiteral("second"));
        write(first, QStringLiteral("first"));
        QCOMPARE(contentOf(path()), QByteArray("second\n"));
    }

    void onAFullDiskTheProgramGoesOn()
    {
        SmallDisk disk("size=256k");
        if (!disk.isMounted()) {
            QSKIP("only an administrator can mount a disk");
        }
        FileAppender appender(disk.path("log.txt"));
        int number = 0;
        const auto writeSome = [&](int p_count) {
            for (int i = 0; i < p_count; ++i) {
                write(appender, QString::number(++number).rightJustified(60, QLatin1Char('.')));
            }
        };
        writeSome(30);
        disk.fill();
        // More than the disk's last page holds, and much more than what waits in memory.
        const int full = 5000;
        writeSome(full);
        const QList<QByteArray> before = contentOf(disk.path("log.txt")).split('\n');
        QVERIFY(before.size() < 100);
        disk.empty();
        const int first = number + 1;
        writeSome(20);

        // No line is torn, none stands twice or in false order, and all since there was room are
        // there.
        QList<QByteArray> lines = contentOf(disk.path("log.txt")).split('\n');
        QCOMPARE(lines.takeLast(), QByteArray());
        QVERIFY(lines.size() > before.size() + 100);
        int last = 0;
        for (const QByteArray& line : qAsConst(lines)) {
            QCOMPARE(line.size(), 60);
            const int each = line.mid(line.lastIndexOf('.') + 1).toInt();
            QVERIFY2(each > last, line);
            last = each;
        }
        QCOMPARE(last, number);
        for (int i = 0; i < 20; ++i) {
            QVERIFY(lines.at(lines.size() - 20 + i).endsWith(QByteArray::number(first + i)));
        }
    }

private:
    QString path(const char* p_name = "log.txt") const
    {
        return m_dir->filePath(QLatin1String(p_name));
    }
    std::unique_ptr<QTemporaryDir> m_dir;
};

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (QCoreApplication::arguments().value(1) == QLatin1String(s_unopened)) {
        return logWhereNoFileCanBe();
    }
    FileAppenderTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "fileappendertest.moc"
