#include "logging/messageformat.h"
#include "logging/consoleappender.h"
#include "loghelpers.h"

#include <QCoreApplication>
#include <QTest>
#include <QThread>

#include <thread>

namespace
{
LogMessage sample()
{
    LogMessage message = messageOf(QStringLiteral("text"), LogLevel::Warning);
    message.time = QDateTime(QDate(2026, 3, 4), QTime(15, 6, 7, 89));
    message.place = {"/home/dir/tree.cpp", 42, "void Tree<int>::grow(int)"};
    message.category = "kind";
    return message;
}
QString expanded(const QString& p_format) { return MessageFormat(p_format).expanded(sample()); }
} // namespace

/** The format language of the log's lines, and which format an appender begins with. */
class MessageFormatTest : public QObject
{
    Q_OBJECT

private slots:
    void everyKeyHasItsValue_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("line");
        const auto row = [](const char* p_format, const QString& p_line) {
            QTest::newRow(p_format) << QString::fromUtf8(p_format) << p_line;
        };
        row("", QString());
        row("塔勒 100%", QStringLiteral("塔勒 100%"));
        row("%{time}", QStringLiteral("15:06:07.089"));
        row("%{time}{}", QStringLiteral("15:06:07.089"));
        row("%{time}{yyyy-MM-ddTHH:mm:ss.zzz}", QStringLiteral("2026-03-04T15:06:07.089"));
        row("%{time}{dddd d MMMM h ap}", QStringLiteral("Wednesday 4 March 3 pm"));
        row("%{time:-6}{HH:mm}|%{time:6}{HH:mm}|", QStringLiteral("15:06 | 15:06|"));
        row("%{time}{HH:mm", QStringLiteral("15:06:07.089{HH:mm"));
        // A key within a date pattern has its value there, once.
        row("%{time}{HH %{line} mm}|%{type}", QStringLiteral("15 42 06|Warning"));
        row("%{time}{%{line:4}}|", QStringLiteral("  42|"));
        row("%{time}{HH %{time} ss}|", QStringLiteral("15 15:06:07.089 07|"));
        row("%{time}{HH %{line} mm", QStringLiteral("15:06:07.089{HH 42 mm"));
        row("%{time} {x}", QStringLiteral("15:06:07.089 {x}"));
        row("%{type}{x}", QStringLiteral("Warning{x}"));
        row("%{type}", QStringLiteral("Warning"));
        row("%{Type}", QStringLiteral("WARNING"));
        row("%{typeOne}", QStringLiteral("w"));
        row("%{TypeOne}", QStringLiteral("W"));
        row("%{File}", QStringLiteral("/home/dir/tree.cpp"));
        row("%{file}", QStringLiteral("tree.cpp"));
        row("%{line}", QStringLiteral("42"));
        row("%{Function}", QStringLiteral("void Tree<int>::grow(int)"));
        row("%{function}", QStringLiteral("Tree::grow"));
        row("%{message}", QStringLiteral("text"));
        row("%{category}", QStringLiteral("kind"));
        row("%{pid}", QString::number(QCoreApplication::applicationPid()));
        row("%{appname}", QStringLiteral("the sample"));
        row("%{line:4}|%{line:-4}|%{line:1}|%{line:0}|", QStringLiteral("  42|42  |42|42|"));
        row("%{type:0009}|", QStringLiteral("  Warning|"));
        row("[%{type:-9}]<%{function:12}>", QStringLiteral("[Warning  ]<  Tree::grow>"));
        row("%{line}%{line}", QStringLiteral("4242"));
        // Text that isn't a key stands for itself.
        row("%{nothing} %{} % %{type", QStringLiteral("%{nothing} %{} % %{type"));
        row("%{TYPE} %{type:} %{type:x} %{type:--3} %{type:12345}",
            QStringLiteral("%{TYPE} %{type:} %{type:x} %{type:--3} %{type:12345}"));
        row("%%{type}%{%{line}}", QStringLiteral("%Warning%{42}"));
    }

    void everyKeyHasItsValue()
    {
        QFETCH(QString, format);
        QFETCH(QString, line);
        QCoreApplication::setApplicationName(QStringLiteral("the sample"));
        QCOMPARE(expanded(format), line);
        QCOMPARE(MessageFormat(format).text(), format);
    }

    void aNewlineMayBeWrittenAsBackslashAndN()
    {
        QCOMPARE(expanded(QStringLiteral("a\\n%{line}\\n\n")), QStringLiteral("a\n42\n\n"));
        LogMessage message = sample();
        message.text = QStringLiteral("C:\\new");
        QCOMPARE(MessageFormat(QStringLiteral("%{message}")).expanded(message), message.text);
    }

    void aMessageIsTakenAsItIs_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("a format") << QStringLiteral("%{message} %{time}{yyyy} %1 %s %n %");
        QTest::newRow("nothing") << QString();
        QTest::newRow("several lines") << QStringLiteral("a\n\nb");
        QTest::newRow("another language") << QStringLiteral("编译成功！");
        QTest::newRow("a NUL") << QString(QChar::Null) + QLatin1Char('x');
        QTest::newRow("half a character") << QString(QChar(0xd83d)) + QLatin1Char('x');
    }

    void aMessageIsTakenAsItIs()
    {
        QFETCH(QString, text);
        LogMessage message = sample();
        message.text = text;
        QCOMPARE(MessageFormat(QStringLiteral("%{line} %{message}{x} %{line}")).expanded(message),
                 QStringLiteral("42 ") + text + QStringLiteral("{x} 42"));
    }

    void theThreadIsTheOneThatWrites()
    {
        const auto id = [] {
            const QString text = expanded(QStringLiteral("%{threadid}"));
            return text.startsWith(QLatin1String("0x")) ? text.mid(2).toULongLong(nullptr, 16) : 0;
        };
        const auto current = [] {
            return static_cast<qulonglong>(reinterpret_cast<quintptr>(QThread::currentThreadId()));
        };
        QCOMPARE(id(), current());
        qulonglong written = 0;
        qulonglong real = 0;
        std::thread([&] {
            written = id();
            real = current();
        }).join();
        QCOMPARE(written, real);
        QVERIFY(real != current());
    }

    void aMessageWithoutAPlaceLeavesItEmpty()
    {
        LogMessage message = messageOf(QStringLiteral("text"));
        message.category = nullptr;
        QCOMPARE(MessageFormat(QStringLiteral("[%{File}%{file}%{Function}%{function}%{category}]"))
                     .expanded(message),
                 QStringLiteral("[]"));
    }

    void anAppenderBeginsWithTheDefaultFormat()
    {
        const QString standard = QStringLiteral(
            "%{time}{yyyy-MM-ddTHH:mm:ss.zzz} [%{type:-7}] <%{function}> %{message}\n");
        ListAppender appender(LogLevel::Trace, QString());
        QCOMPARE(appender.format(), standard);
        appender.write(sample());
        appender.setFormat(QStringLiteral("%{typeOne} %{message}"));
        QCOMPARE(appender.format(), QStringLiteral("%{typeOne} %{message}"));
        appender.write(sample());
        QCOMPARE(appender.lines,
                 (QStringList{"2026-03-04T15:06:07.089 [Warning] <Tree::grow> text\n", "w text"}));
        appender.setFormat(QString());
        QCOMPARE(appender.format(), standard);
    }

    void theConsoleAsksTheEnvironmentForItsDefault()
    {
        qunsetenv("QT_MESSAGE_PATTERN");
        QCOMPARE(ConsoleAppender().format(), AbstractStringAppender::defaultFormat());
        qputenv("QT_MESSAGE_PATTERN", "%{line} %{message}");
        ConsoleAppender console;
        ListAppender other(LogLevel::Trace, QString());
        qunsetenv("QT_MESSAGE_PATTERN");
        // Qt's patterns are of lines without their end.
        QCOMPARE(console.format(), QStringLiteral("%{line} %{message}\n"));
        QCOMPARE(other.format(), AbstractStringAppender::defaultFormat());
        console.setFormat(QStringLiteral("x"));
        QCOMPARE(console.format(), QStringLiteral("x"));
        console.setFormat(QString());
        QCOMPARE(console.format(), QStringLiteral("%{line} %{message}\n"));
    }
};

QTEST_GUILESS_MAIN(MessageFormatTest)
#include "messageformattest.moc"
