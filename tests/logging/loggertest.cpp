#include "logging/consoleappender.h"
#include "logging/debugoutput.h"
#include "logging/logassert.h"
#include "logging/logtimer.h"
#include "logging/messageroute.h"
#include "logging/outputdebugappender.h"
#include "loghelpers.h"

#include <QLoggingCategory>
#include <QTest>
#include <QTextStream>

Q_LOGGING_CATEGORY(trees, "trees")

namespace
{
constexpr const char* s_raising = "--raise-within";
constexpr const char* s_noAppender = "--no-appender";
constexpr const char* s_console = "--console";
constexpr const char* s_assert = "--assert";

/** Says something by Qt's functions whenever it is written to. */
class RaisingAppender : public ListAppender
{
protected:
    void append(const LogMessage& p_message) override
    {
        qWarning("raised by %s", qPrintable(p_message.text));
        Logger::globalInstance().write(LogLevel::Error, LOG_HERE, QStringLiteral("by the logger"));
        write(messageOf(QStringLiteral("by itself")));
        ListAppender::append(p_message);
    }
};

QStringList s_others;
void otherHandler(QtMsgType /*p_type*/, const QMessageLogContext& /*p_context*/,
                  const QString& p_text)
{
    s_others += p_text;
}

void write(LogLevel p_level, const char* p_text, const char* p_category = "default")
{
    Logger::globalInstance().write(p_level, LogPlace(), QString::fromUtf8(p_text), p_category);
}

int raiseWithin()
{
    const MessageRoute route;
    const Registered<RaisingAppender> first;
    const Registered<RaisingAppender> second;
    qInfo("Qt");
    write(LogLevel::Info, "logger");
    first->write(messageOf(QStringLiteral("itself")));
    const QStringList all{"Qt", "logger", "itself"};
    return first->lines == all && second->lines == all.mid(0, 2) ? 0 : 1;
}

int useConsole()
{
    const MessageRoute route;
    const Registered<ConsoleAppender> console;
    console->setFormat(QStringLiteral("%{typeOne}:%{message}\n"));
    write(LogLevel::Trace, "too small");
    qInfo("line");
    qInfo() << QString::fromUtf8("塔勒");
    write(LogLevel::Error, "");
    Logger::globalInstance().write(LogLevel::Error, LogPlace(),
                                   QString::fromLatin1("a\0b", 3) + QChar(0xd83d));
    return 0;
}

QStringList s_toDebugger;
} // namespace

// Takes the place of the platform's own, where nobody could see what arrives; the linker leaves
// that one in its library.
void writeToDebugger(const wchar_t* p_text) { s_toDebugger += QString::fromWCharArray(p_text); }

/** Messages on their way from Qt's functions and the logger's own to the appenders. */
class LoggerTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { Logger::globalInstance().removeAppenders(); }

    void levelsAreReadFromText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("level");
        const QStringList names{"Trace", "Debug", "Info", "Warning", "Error", "Fatal"};
        for (int i = 0; i < names.size(); ++i) {
            const QString& name = names.at(i);
            QCOMPARE(levelName(static_cast<LogLevel>(i)), name);
            for (const QString& text :
                 {name, name.toLower(), name.toUpper(),
                  QStringLiteral(" \t") + name.toLower() + QStringLiteral(" \n")}) {
                QTest::newRow(qPrintable(text)) << text << i;
            }
        }
        for (const char* text : {"", " ", "inf", "information", "in fo", "2", "错误"}) {
            QTest::newRow(text) << QString::fromUtf8(text) << static_cast<int>(LogLevel::Debug);
        }
    }

    void levelsAreReadFromText()
    {
        QFETCH(QString, text);
        QFETCH(int, level);
        QCOMPARE(static_cast<int>(levelFromText(text)), level);
        ListAppender appender(level == 2 ? LogLevel::Fatal : LogLevel::Info);
        appender.setDetailsLevel(text);
        QCOMPARE(static_cast<int>(appender.detailsLevel()), level);
    }

    void anAppenderTakesItsLevelAndThoseAbove_data()
    {
        QTest::addColumn<int>("least");
        for (int least = 0; least < 6; ++least) {
            QTest::newRow(qPrintable(levelName(static_cast<LogLevel>(least)))) << least;
        }
    }

    void anAppenderTakesItsLevelAndThoseAbove()
    {
        QFETCH(int, least);
        QCOMPARE(ConsoleAppender().detailsLevel(), LogLevel::Debug);
        const Registered<ListAppender> appender(static_cast<LogLevel>(least));
        const Registered<ListAppender> everything(LogLevel::Trace);
        QStringList expected;
        for (int level = 0; level < 6; ++level) {
            const QString name = levelName(static_cast<LogLevel>(level));
            write(static_cast<LogLevel>(level), qPrintable(name));
            if (level >= least) {
                expected += name;
            }
        }
        QCOMPARE(appender->lines, expected);
        QCOMPARE(everything->lines.size(), 6);
    }

    void anAppenderOfACategoryGetsThatAlone()
    {
        const auto ofTrees = std::make_shared<ListAppender>(LogLevel::Info);
        Logger::globalInstance().registerAppender(ofTrees, QStringLiteral("trees"));
        write(LogLevel::Info, "lost");
        const Registered<ListAppender> ofAll(LogLevel::Warning);
        const MessageRoute route;
        qCInfo(trees, "a tree");
        qCWarning(trees, "a fallen tree");
        qCDebug(trees, "a small tree");
        qWarning("a house");
        write(LogLevel::Error, "nameless", nullptr);
        QCOMPARE(ofTrees->lines, (QStringList{"a tree", "a fallen tree"}));
        QCOMPARE(ofAll->lines, (QStringList{"a fallen tree", "a house", "nameless"}));
    }

    void messagesOfQtKeepLevelAndPlace()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("default=true"));
        const Registered<ListAppender> appender(
            LogLevel::Trace,
            QStringLiteral("%{type} %{file} %{line} %{function} %{category} %{message}"));
        const MessageRoute route;
        const int line = __LINE__;
        qDebug("d %d", 1);
        qInfo() << "i" << 2;
        qWarning().noquote() << QString::fromUtf8("警告 %{message}");
        qCritical() << QString::fromUtf8("塔");
        qCWarning(trees) << "t";
        const auto said = [line](int p_line, const char* p_level, const char* p_rest,
                                 const char* p_category = "default") {
            return QStringLiteral("%1 loggertest.cpp %2 LoggerTest::messagesOfQtKeepLevelAndPlace ")
                       .arg(QLatin1String(p_level))
                       .arg(line + p_line) +
                   QLatin1String(p_category) + QLatin1Char(' ') + QString::fromUtf8(p_rest);
        };
        QCOMPARE(appender->lines,
                 (QStringList{said(1, "Debug", "d 1"), said(2, "Info", "i 2"),
                              said(3, "Warning", "警告 %{message}"), said(4, "Error", "\"塔\""),
                              said(5, "Warning", "t", "trees")}));
    }

    void aMessageThatTheCategoryFiltersNeverArrives()
    {
        const Registered<ListAppender> appender;
        const MessageRoute route;
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
        qDebug("small");
        qInfo("larger");
        QLoggingCategory::setFilterRules(QStringLiteral("default=true"));
        qDebug("small again");
        QCOMPARE(appender->lines, (QStringList{"larger", "small again"}));
    }

    void theFormerHandlerComesBack()
    {
        s_others.clear();
        const QtMessageHandler before = qInstallMessageHandler(otherHandler);
        const Registered<ListAppender> appender;
        {
            const MessageRoute route;
            qWarning("one");
        }
        qWarning("two");
        QVERIFY(qInstallMessageHandler(before) == otherHandler);
        QCOMPARE(appender->lines, QStringList("one"));
        QCOMPARE(s_others, QStringList("two"));
    }

    void aHandlerThatCameLaterStays()
    {
        s_others.clear();
        const Registered<ListAppender> appender;
        QtMessageHandler before = nullptr;
        {
            const MessageRoute route;
            before = qInstallMessageHandler(otherHandler);
        }
        qWarning("late");
        qInstallMessageHandler(nullptr);
        QVERIFY(before);
        QCOMPARE(s_others, QStringList("late"));
        QVERIFY(appender->lines.isEmpty());
    }

    void aMessageRaisedByAnAppenderGoesToTheErrorStream()
    {
        QProcess process;
        runAgain(process, s_raising);
        QCOMPARE(process.state(), QProcess::NotRunning);
        const QByteArray output = process.readAllStandardError();
        QVERIFY2(process.exitCode() == 0, output);
        QCOMPARE(output.count("raised by Qt"), 2);
        QCOMPARE(output.count("raised by logger"), 2);
        QCOMPARE(output.count("raised by itself"), 1);
        QCOMPARE(output.count("by the logger\n"), 5);
        QCOMPARE(output.count("\nby itself\n"), 5);
    }

    void withoutAnAppenderMessagesGoToTheErrorStream()
    {
        QProcess process;
        runAgain(process, s_noAppender);
        QCOMPARE(process.exitCode(), 0);
        QCOMPARE(process.readAllStandardError(), QByteArray("by Qt\nby the logger\n"));
    }

    void theConsoleWritesToTheErrorStream()
    {
        QProcess process;
        runAgain(process, s_console);
        QCOMPARE(process.exitCode(), 0);
        const QByteArray output = process.readAllStandardError();
        QVERIFY2(output.startsWith("i:line\ni:\"塔勒\"\ne:\n"), output);
        QVERIFY2(output.contains(QByteArray("e:a\0b", 5)), output);
        QCOMPARE(output.count('\n'), 4);
        QVERIFY(process.readAllStandardOutput().isEmpty());
    }

    void aTextStreamWritesIntoTheLog()
    {
        const Registered<ListAppender> appender(LogLevel::Trace,
                                                QStringLiteral("%{type} %{function} %{message}"));
        LogDevice& own = Logger::globalInstance().device();
        QTextStream(&own) << "a " << 1 << '\n' << QString::fromUtf8("塔勒");
        QCOMPARE(appender->lines, QStringList("Debug  a 1"));
        QTextStream(&own) << "!\n\n";
        QCOMPARE(appender->lines.mid(1),
                 (QStringList{QString::fromUtf8("Debug  塔勒!"), "Debug  "}));
        appender->lines.clear();

        {
            LogDevice device(Logger::globalInstance(), LogLevel::Warning, {nullptr, 1, "void f()"});
            QVERIFY(device.isSequential() && device.isWritable() && !device.isReadable());
            QTextStream stream(&device);
            stream << "b\nc";
            stream.flush();
            device.setLevel(LogLevel::Trace);
            device.setPlace({nullptr, 2, "void g()"});
            stream << "d\ne";
            stream.flush();
            QCOMPARE(appender->lines, (QStringList{"Warning f b", "Trace g cd"}));
            device.close();
            QCOMPARE(appender->lines.mid(2), QStringList("Trace g e"));
        }
        {
            LogDevice device(Logger::globalInstance());
            device.write("without an end");
        }
        QCOMPARE(appender->lines.mid(3), QStringList("Debug  without an end"));
    }

    void timersTellHowLongTheyLived()
    {
        QCOMPARE(elapsedText(0), QStringLiteral("0 ms."));
        QCOMPARE(elapsedText(999), QStringLiteral("999 ms."));
        QCOMPARE(elapsedText(1000), QStringLiteral("1 s."));
        QCOMPARE(elapsedText(61500), QStringLiteral("61.5 s."));
        const Registered<ListAppender> appender(LogLevel::Trace,
                                                QStringLiteral("%{type} %{message}"));
        {
            const LogTimer untitled(LOG_HERE);
            const LogTimer titled(LOG_HERE, QString::fromUtf8("读 %1"));
            QVERIFY(appender->lines.isEmpty());
        }
        QCOMPARE(appender->lines.size(), 2);
        const auto begins = [&](int p_line, const char* p_text) {
            return appender->lines.at(p_line).startsWith(QString::fromUtf8(p_text)) &&
                   appender->lines.at(p_line).endsWith(QLatin1String("s."));
        };
        QVERIFY(begins(0, "Debug \"读 %1\" finished in "));
        QVERIFY(begins(1, "Debug Function LoggerTest::timersTellHowLongTheyLived finished in "));
    }

    void aFailedAssertionIsLoggedAndEndsTheProgram()
    {
        QProcess process;
        runAgain(process, s_assert);
        QCOMPARE(process.exitStatus(), QProcess::CrashExit);
        QCOMPARE(process.readAllStandardError(),
                 QByteArray("[Fatal  ] main ASSERT: \"1 + 1 == 3\"\n"));
    }

    void theDebuggerGetsEachMessageInTheFormat()
    {
        const Registered<OutputDebugAppender> appender;
        QCOMPARE(appender->format(), AbstractStringAppender::defaultFormat());
        appender->setFormat(QStringLiteral("[%{type:-7}] %{message}\n"));
        s_toDebugger.clear();
        write(LogLevel::Trace, "too small");
        QCOMPARE(s_toDebugger, QStringList());
        write(LogLevel::Error, "塔勒 🐢");
        write(LogLevel::Debug, "");
        QCOMPARE(s_toDebugger,
                 (QStringList{QString::fromUtf8("[Error  ] 塔勒 🐢\n"), "[Debug  ] \n"}));
    }
};

int main(int argc, char** argv)
{
    // Not what whoever runs the tests has in mind about messages. Qt reads it at the start.
    qunsetenv("QT_LOGGING_RULES");
    QCoreApplication application(argc, argv);
    const QString mode = QCoreApplication::arguments().value(1);
    if (mode == QLatin1String(s_raising)) {
        return raiseWithin();
    }
    if (mode == QLatin1String(s_noAppender)) {
        const MessageRoute route;
        qWarning("by Qt");
        write(LogLevel::Trace, "by the logger");
        return 0;
    }
    if (mode == QLatin1String(s_console)) {
        return useConsole();
    }
    if (mode == QLatin1String(s_assert)) {
        const Registered<ConsoleAppender> console;
        console->setFormat(QStringLiteral("[%{type:-7}] %{function} %{message}\n"));
        LOG_ASSERT(1 + 1 == 2);
        LOG_ASSERT(1 + 1 == 3);
        return 0;
    }
    LoggerTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "loggertest.moc"
