#include "fileappender.h"
#include "loghelpers.h"
#include "messageroute.h"

#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <chrono>
#include <future>
#include <thread>
#include <vector>

namespace
{
constexpr int s_threads = 8;
#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
// A sanitizer needs many times as long for each.
constexpr int s_each = 10000;
#else
constexpr int s_each = 100000;
#endif

/** Runs some work in each of the threads, and something of another one's beside them. */
template <class Work, class Beside> void inThreads(Work p_work, Beside p_beside)
{
    std::atomic<bool> done{false};
    std::thread beside([&] {
        for (int round = 0; !done; ++round) {
            p_beside(round);
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
    });
    std::vector<std::thread> threads;
    for (int thread = 0; thread < s_threads; ++thread) {
        threads.emplace_back([=] { p_work(thread); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    done = true;
    beside.join();
}

// Two formats that tell by their ends which one a line was made with.
const char* const s_formats[] = {"<1 %{typeOne} %{threadid} %{time} %{message} 1>\n",
                                 "<2 %{Type:9} %{message} 2>\n"};

void changeFormat(AbstractStringAppender& p_appender, int p_round)
{
    p_appender.setFormat(QLatin1String(s_formats[p_round % 2]));
}

/** Looks at lines one by one: whether each is whole, and which messages they are. */
class LineCheck
{
public:
    void see(const QString& p_line)
    {
        // The text is "thread/number", the last word but one.
        const QStringList words = p_line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        const bool first = p_line.startsWith(QLatin1String("<1 i 0x")) && words.size() == 6 &&
                           words.last() == QLatin1String("1>\n");
        const bool second = p_line.startsWith(QLatin1String("<2      INFO ")) &&
                            words.size() == 4 && words.last() == QLatin1String("2>\n");
        const QStringList text = words.value(words.size() - 2).split(QLatin1Char('/'));
        const int thread = text.value(0).toInt();
        if (!(first || second) || text.size() != 2 || thread < 0 || thread >= s_threads ||
            text.at(1).toInt() != next[thread]) {
            broken = broken.isEmpty() ? p_line : broken;
            return;
        }
        ++next[thread];
    }

    /** How many messages of each thread came, all in order. */
    int next[s_threads] = {};
    QString broken;
};

/** Is fast, so that the threads get into each other's way as much as they can. */
class CheckingAppender : public AbstractStringAppender
{
public:
    LineCheck check;
    int warnings = 0;
    /** How often a thread came while another one was within. */
    std::atomic<int> met{0};

protected:
    void append(const LogMessage& p_message) override
    {
        // The write mutex alone keeps the threads apart here.
        met += m_within.exchange(true) ? 1 : 0;
        if (p_message.level == LogLevel::Warning) {
            ++warnings;
        } else {
            check.see(formattedString(p_message));
        }
        m_within = false;
    }

private:
    std::atomic<bool> m_within{false};
};

void writeInfo(int p_thread, int p_number)
{
    Logger::globalInstance().write(LogLevel::Info, LOG_HERE,
                                   QString::number(p_thread) + QLatin1Char('/') +
                                       QString::number(p_number));
}
} // namespace

/** Many threads log at once, while another one changes what there is to change. */
class LogThreadsTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { Logger::globalInstance().removeAppenders(); }
    void noMessageIsLostAndNoLineTorn();
    void aFileGetsEachMessageInOnePiece();
    void aLevelThatChangesDropsWholeMessages();
    void appendersMayComeWhileOthersWrite();
    void anAppenderThatGoesEndsItsMessageFirst();
};

void LogThreadsTest::noMessageIsLostAndNoLineTorn()
{
    const Registered<CheckingAppender> appender;
    changeFormat(*appender, 0);
    inThreads(
        [](int p_thread) {
            for (int i = 0; i < s_each; ++i) {
                writeInfo(p_thread, i);
            }
        },
        [&](int p_round) {
            // Levels that all let these messages through.
            appender->setDetailsLevel(static_cast<LogLevel>(p_round % 3));
            changeFormat(*appender, p_round);
        });
    QCOMPARE(appender->met.load(), 0);
    QCOMPARE(appender->check.broken, QString());
    for (const int count : appender->check.next) {
        QCOMPARE(count, s_each);
    }
}

void LogThreadsTest::aFileGetsEachMessageInOnePiece()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("log.txt"));
    const Registered<FileAppender> appender(path);
    const MessageRoute route;
    constexpr int each = s_each / 50;
    changeFormat(*appender, 0);
    inThreads(
        [](int p_thread) {
            for (int i = 0; i < each; ++i) {
                qInfo("%d/%d", p_thread, i);
            }
        },
        [&](int p_round) {
            appender->setDetailsLevel(p_round % 2 == 0 ? QStringLiteral("info")
                                                       : QStringLiteral("trace"));
            changeFormat(*appender, p_round);
            appender->fileName();
        });
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    LineCheck check;
    while (!file.atEnd()) {
        check.see(QString::fromUtf8(file.readLine()));
    }
    QCOMPARE(check.broken, QString());
    for (const int count : check.next) {
        QCOMPARE(count, each);
    }
}

void LogThreadsTest::aLevelThatChangesDropsWholeMessages()
{
    const Registered<CheckingAppender> appender;
    constexpr int each = s_each / 10;
    // Debug messages now pass and now don't; the warnings always do.
    std::atomic<int> changes{0};
    inThreads(
        [&](int /*p_thread*/) {
            for (int i = 0; i < each; ++i) {
                Logger::globalInstance().write(LogLevel::Debug, LOG_HERE, QStringLiteral("x"));
                Logger::globalInstance().write(LogLevel::Warning, LOG_HERE, QStringLiteral("y"));
            }
        },
        [&](int p_round) {
            appender->setDetailsLevel(p_round % 2 == 0 ? LogLevel::Warning : LogLevel::Trace);
            ++changes;
        });
    QCOMPARE(appender->warnings, s_threads * each);
    QVERIFY(changes > 1);
}

void LogThreadsTest::appendersMayComeWhileOthersWrite()
{
    constexpr int each = s_each / 20;
    const Registered<CheckingAppender> appender;
    changeFormat(*appender, 0);
    QList<std::shared_ptr<CheckingAppender>> late;
    inThreads(
        [](int p_thread) {
            for (int i = 0; i < each; ++i) {
                writeInfo(p_thread, i);
            }
        },
        [&](int p_round) {
            if (p_round < 6) {
                late.append(std::make_shared<CheckingAppender>());
                changeFormat(*late.last(), 0);
                Logger::globalInstance().registerAppender(
                    late.last(), p_round % 2 == 0 ? QString() : QStringLiteral("x"));
            }
        });
    QCOMPARE(appender->met.load(), 0);
    QCOMPARE(appender->check.broken, QString());
    for (const int count : appender->check.next) {
        QCOMPARE(count, each);
    }
}

void LogThreadsTest::anAppenderThatGoesEndsItsMessageFirst()
{
    struct Road {
        std::promise<void> entered;
        std::promise<void> go;
        std::atomic<bool> written{false};
        std::atomic<bool> gone{false};
    };
    class SlowAppender : public AbstractAppender
    {
    public:
        explicit SlowAppender(Road& p_road) : m_road(p_road) {}
        ~SlowAppender() override { m_road.gone = true; }

    protected:
        void append(const LogMessage& /*p_message*/) override
        {
            m_road.entered.set_value();
            m_road.go.get_future().wait();
            m_road.written = true;
        }

    private:
        Road& m_road;
    };
    Road road;
    Logger::globalInstance().registerAppender(std::make_shared<SlowAppender>(road));
    std::thread writer([] { writeInfo(0, 0); });
    road.entered.get_future().wait();
    // Neither waits for the one that writes.
    Logger::globalInstance().removeAppenders();
    const Registered<CheckingAppender> other;
    QVERIFY(!road.gone && !road.written);
    road.go.set_value();
    writer.join();
    QVERIFY(road.gone && road.written);
}

QTEST_GUILESS_MAIN(LogThreadsTest)
#include "logthreadstest.moc"
