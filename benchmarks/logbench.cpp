#include "logging/fileappender.h"
#include "logging/logger.h"
#include "logging/logsetup.h"
#include "logging/messageroute.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <thread>
#include <vector>

namespace
{
const QString s_format = QStringLiteral("[%{type:-7}] <%{function}> %{message}\n");

/** Makes each line and throws it away: what a message costs without the file. */
class NowhereAppender : public AbstractStringAppender
{
protected:
    void append(const LogMessage& p_message) override
    {
        m_size += formattedString(p_message).size();
    }

private:
    qint64 m_size = 0;
};

void raw(LogLevel p_level)
{
    static const QString s_text = QStringLiteral("canPaste  true");
    Logger::globalInstance().write(p_level, LOG_HERE, s_text);
}
const QLoggingCategory& category() { return *QLoggingCategory::defaultCategory(); }
void streamed() { qCDebug(category) << "canPaste " << true; }
void streamedInfo() { qCInfo(category) << "canPaste " << true; }

enum class To { Nothing, Nowhere, File, AsSetUp };
struct Case {
    const char* name;
    To to;
    LogLevel least;
    void (*say)();
    /** How many times fewer messages than asked for. */
    int fewer;
};
const Case s_cases[] = {
    {"Qt, category off", To::Nothing, LogLevel::Debug, streamed, 1},
    {"logger, dropped", To::File, LogLevel::Info, [] { raw(LogLevel::Debug); }, 1},
    {"Qt, dropped", To::File, LogLevel::Info, streamed, 1},
    {"logger, kept, no file", To::Nowhere, LogLevel::Debug, [] { raw(LogLevel::Debug); }, 4},
    {"Qt, kept, no file", To::Nowhere, LogLevel::Debug, streamed, 4},
    {"logger, kept, file", To::File, LogLevel::Debug, [] { raw(LogLevel::Debug); }, 10},
    {"Qt, kept, file", To::File, LogLevel::Debug, streamed, 10},
    // The program's own log: the file at Info, and the error stream, which goes nowhere here, at
    // Debug.
    {"as set up, qCDebug", To::AsSetUp, LogLevel::Info, streamed, 10},
    {"as set up, qCInfo", To::AsSetUp, LogLevel::Info, streamedInfo, 10},
};

void setUp(const Case& p_case, const QString& p_path)
{
    Logger::globalInstance().removeAppenders();
    if (p_case.to == To::AsSetUp) {
        setUpLog(levelName(p_case.least));
        return;
    }
    std::shared_ptr<AbstractStringAppender> appender;
    if (p_case.to == To::File) {
        appender = std::make_shared<FileAppender>(p_path);
    } else {
        appender = std::make_shared<NowhereAppender>();
    }
    appender->setFormat(s_format);
    appender->setDetailsLevel(p_case.least);
    Logger::globalInstance().registerAppender(std::move(appender));
    QLoggingCategory::setFilterRules(p_case.to == To::Nothing
                                         ? QStringLiteral("default.debug=false")
                                         : QStringLiteral("default=true"));
}

/** Leads the error stream away, without a buffer, as it is in a program. */
bool silenceErrorStream()
{
    return std::freopen(qPrintable(QProcess::nullDevice()), "w", stderr) &&
           std::setvbuf(stderr, nullptr, _IONBF, 0) == 0;
}

/** Removes what the set-up has made beside this program. */
void removeLogAsSetUp()
{
    const QDir folder(QCoreApplication::applicationDirPath() + QStringLiteral("/log"));
    Logger::globalInstance().removeAppenders();
    QFile::remove(folder.filePath(QStringLiteral("app-log.txt")));
    QDir().rmdir(folder.path());
}

/** Nanoseconds from the first to the last message, by how many there were. */
double measure(const Case& p_case, int p_threads, int p_messages)
{
    const int each = std::max(1, p_messages / p_case.fewer / p_threads);
    QElapsedTimer clock;
    clock.start();
    std::vector<std::thread> threads;
    threads.reserve(static_cast<std::size_t>(p_threads));
    for (int thread = 0; thread < p_threads; ++thread) {
        threads.emplace_back([&p_case, each] {
            for (int i = 0; i < each; ++i) {
                p_case.say();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    return static_cast<double>(clock.nsecsElapsed()) / p_threads / each;
}
} // namespace

/**
 * Measures the log and prints a table of nanoseconds a message, by the clock and by all threads
 * together, best and median of some runs. The program's own set-up is measured on a folder "log"
 * beside this program, which is removed in the end: logbench [--messages 400000] [--runs 5]
 */
int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({QStringLiteral("messages"), QStringLiteral("messages of a run"),
                      QStringLiteral("number"), QStringLiteral("400000")});
    parser.addOption({QStringLiteral("runs"), QStringLiteral("runs of each case"),
                      QStringLiteral("number"), QStringLiteral("5")});
    parser.process(application);
    const int messages = parser.value(QStringLiteral("messages")).toInt();
    const int runs = parser.value(QStringLiteral("runs")).toInt();
    const QTemporaryDir folder;
    if (messages < 1 || runs < 1 || !folder.isValid()) {
        parser.showHelp(2);
    }

    if (!silenceErrorStream()) {
        std::printf("The error stream can't be led away.\n");
        return 1;
    }

    const MessageRoute route;
    std::printf("%-24s %8s %10s %10s\n", "ns a message", "threads", "best", "median");
    for (const Case& each : s_cases) {
        for (const int threads : {1, 8}) {
            std::vector<double> times;
            for (int run = 0; run < runs; ++run) {
                const QString path = folder.filePath(QStringLiteral("log.txt"));
                QFile::remove(path);
                setUp(each, path);
                times.push_back(measure(each, threads, messages));
            }
            std::sort(times.begin(), times.end());
            std::printf("%-24s %8d %10.0f %10.0f\n", each.name, threads, times.front(),
                        times.at(times.size() / 2));
            std::fflush(stdout);
        }
    }
    removeLogAsSetUp();
    return 0;
}
