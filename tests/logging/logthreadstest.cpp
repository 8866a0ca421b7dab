#include "logging/fileappender.h"
#include "logging/messageroute.h"
#include "loghelpers.h"

#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <future>
#include <iterator>
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

// How often something was done beside the threads.
std::atomic<int> s_rounds{0};

/** Runs some work in each of the threads, and something of another one's beside them. */
template <class Work, class Beside> void inThreads(Work p_work, Beside p_beside)
{
    std::atomic<bool> done{false};
    s_rounds = 0;
    std::thread beside([&] {
        while (!done) {
            p_beside(s_rounds);
            ++s_rounds;
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
    });
    std::vector<std::thread> threads;
    threads.reserve(s_threads);
    for (int thread = 0; thread < s_threads; ++thread) {
        threads.emplace_back([=] { p_work(thread); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    done = true;
    beside.join();
}

/**
 * To be called before each message: at each tenth of its way a thread waits for two more rounds, so
 * that there are some on a busy machine, too.
 */
void awaitRounds(int p_message, int p_messages)
{
    const int tenth = p_messages / 10;
    while (p_message % tenth == 0 && s_rounds <= p_message / tenth * 2) {
        std::this_thread::sleep_for(std::chrono::microseconds(50));
    }
}

// Two formats that tell by their ends which one a line was made with.
const char* const s_formats[] = {"<1 %{typeOne} %{threadid} %{time} %{message} 1>\n",
                                 "<2 %{Type:9} %{message} 2>\n"};

/** Gives an appender one level and format after another, and sees that it has them. */
class Changer
{
public:
    explicit Changer(AbstractStringAppender& p_appender) : m_appender(p_appender)
    {
        p_appender.setFormat(QLatin1String(s_formats[1]));
    }

    void change(int p_round, LogLevel p_level)
    {
        const LogLevel level = m_appender.detailsLevel();
        const QString format = m_appender.format();
        m_appender.setDetailsLevel(p_level);
        m_appender.setFormat(QLatin1String(s_formats[p_round % 2]));
        levels += m_appender.detailsLevel() != level ? 1 : 0;
        formats += m_appender.format() != format ? 1 : 0;
    }

    /** How often they were other ones than before. */
    int levels = 0;
    int formats = 0;

private:
    AbstractStringAppender& m_appender;
};

/** Looks at lines one by one: whether each is whole, and which messages they are. */
class LineCheck
{
public:
    enum From : int { Any = -1, Start = 0 };
    /** From the first message of each thread, or from whichever comes first. */
    explicit LineCheck(From p_from = Start) { std::fill(std::begin(next), std::end(next), p_from); }

    void see(const QString& p_line)
    {
        // The text is "thread/number" or "note", the last word but one.
        const QStringList words = p_line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        const QString text = words.value(words.size() - 2);
        const bool isNote = text == QLatin1String("note");
        const bool first = p_line.startsWith(QLatin1String(isNote ? "<1 d 0x" : "<1 i 0x")) &&
                           words.size() == 6 && words.last() == QLatin1String("1>\n");
        const bool second =
            p_line.startsWith(QLatin1String(isNote ? "<2     DEBUG " : "<2      INFO ")) &&
            words.size() == 4 && words.last() == QLatin1String("2>\n");
        if (!(first || second) || !(isNote || takes(text))) {
            broken = broken.isEmpty() ? p_line : broken;
            return;
        }
        notes += isNote ? 1 : 0;
        ++(first ? ofFirstFormat : ofSecondFormat);
    }

    /** The number behind the last message of each thread; all came in order, without a gap. */
    int next[s_threads];
    int notes = 0;
    int ofFirstFormat = 0;
    int ofSecondFormat = 0;
    QString broken;

private:
    bool takes(const QString& p_text)
    {
        const QStringList parts = p_text.split(QLatin1Char('/'));
        bool isThread = false;
        bool isNumber = false;
        const int thread = parts.value(0).toInt(&isThread);
        const int number = parts.value(1).toInt(&isNumber);
        if (parts.size() != 2 || !isThread || !isNumber || thread < 0 || thread >= s_threads ||
            (next[thread] != number && next[thread] != Any)) {
            return false;
        }
        next[thread] = number + 1;
        return true;
    }
};

/** Is fast, so that the threads get into each other's way as much as they can. */
class CheckingAppender : public AbstractStringAppender
{
public:
    explicit CheckingAppender(LineCheck::From p_from = LineCheck::Start) : check(p_from)
    {
        setFormat(QLatin1String(s_formats[0]));
    }

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

void write(LogLevel p_level, const QString& p_text, const char* p_category = "default")
{
    Logger::globalInstance().write(p_level, LOG_HERE, p_text, p_category);
}

void writeInfo(int p_thread, int p_number, const char* p_category = "default")
{
    write(LogLevel::Info, QString::number(p_thread) + QLatin1Char('/') + QString::number(p_number),
          p_category);
}

// Now and then a thread says something that the levels now let through and now don't.
bool isTimeForNote(int p_number) { return p_number % 50 == 0; }
constexpr int s_notes = s_threads * s_each / 50;
} // namespace

/** Many threads log at once, while another one changes what there is to change. */
class LogThreadsTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { Logger::globalInstance().removeAppenders(); }

    void noMessageIsLostAndNoLineTorn()
    {
        const Registered<CheckingAppender> appender;
        Changer changer(*appender);
        inThreads(
            [](int p_thread) {
                for (int i = 0; i < s_each; ++i) {
                    awaitRounds(i, s_each);
                    writeInfo(p_thread, i);
                    if (isTimeForNote(i)) {
                        write(LogLevel::Debug, QStringLiteral("note"));
                    }
                }
            },
            // Levels that all let the numbered messages through.
            [&](int p_round) { changer.change(p_round, static_cast<LogLevel>(p_round % 3)); });
        QCOMPARE(appender->met.load(), 0);
        verifyAll(appender->check, changer);
    }

    void aFileGetsEachMessageInOnePiece()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("log.txt"));
        const Registered<FileAppender> appender(path);
        const MessageRoute route;
        Changer changer(*appender);
        inThreads(
            [](int p_thread) {
                for (int i = 0; i < s_each; ++i) {
                    awaitRounds(i, s_each);
                    qInfo("%d/%d", p_thread, i);
                    if (isTimeForNote(i)) {
                        qDebug("note");
                    }
                }
            },
            [&](int p_round) {
                changer.change(p_round, p_round % 2 == 0 ? LogLevel::Info : LogLevel::Trace);
                appender->fileName();
            });
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        LineCheck check;
        while (!file.atEnd()) {
            check.see(QString::fromUtf8(file.readLine()));
        }
        verifyAll(check, changer);
    }

    void aLevelThatChangesDropsWholeMessages()
    {
        const Registered<CheckingAppender> appender;
        constexpr int each = s_each / 10;
        // The notes now pass and now don't; the warnings always do.
        inThreads(
            [](int /*p_thread*/) {
                for (int i = 0; i < each; ++i) {
                    awaitRounds(i, each);
                    write(LogLevel::Debug, QStringLiteral("note"));
                    write(LogLevel::Warning, QStringLiteral("warning"));
                }
            },
            [&](int p_round) {
                appender->setDetailsLevel(p_round % 2 == 0 ? LogLevel::Warning : LogLevel::Trace);
            });
        QCOMPARE(appender->warnings, s_threads * each);
        QCOMPARE(appender->check.broken, QString());
        QVERIFY2(appender->check.notes > 0 && appender->check.notes < s_threads * each,
                 qPrintable(QString::number(appender->check.notes)));
    }

    void appendersMayComeWhileOthersWrite()
    {
        constexpr int each = s_each / 50;
        constexpr int lateOnes = 6;
        const Registered<CheckingAppender> appender;
        QList<std::shared_ptr<CheckingAppender>> late;
        std::atomic<int> registered{0};
        inThreads(
            [&](int p_thread) {
                const char* const category = p_thread % 2 == 0 ? "default" : "x";
                for (int i = 0; i < 2 * each; ++i) {
                    // Each late one has the second half to show what it gets.
                    while (i == each && registered < lateOnes) {
                        std::this_thread::sleep_for(std::chrono::microseconds(50));
                    }
                    writeInfo(p_thread, i, category);
                }
            },
            [&](int p_round) {
                if (p_round < lateOnes) {
                    late.append(std::make_shared<CheckingAppender>(LineCheck::Any));
                    Logger::globalInstance().registerAppender(
                        late.last(), p_round % 2 == 0 ? QString() : QStringLiteral("x"));
                    ++registered;
                }
            });
        QCOMPARE(appender->met.load(), 0);
        QCOMPARE(appender->check.broken, QString());
        for (const int count : appender->check.next) {
            QCOMPARE(count, 2 * each);
        }
        QCOMPARE(late.size(), lateOnes);
        for (int i = 0; i < lateOnes; ++i) {
            QCOMPARE(late.at(i)->met.load(), 0);
            QCOMPARE(late.at(i)->check.broken, QString());
            for (int thread = 0; thread < s_threads; ++thread) {
                const bool hears = i % 2 == 0 || thread % 2 == 1;
                QCOMPARE(late.at(i)->check.next[thread], hears ? 2 * each : LineCheck::Any);
            }
        }
    }

    void anAppenderThatGoesEndsItsMessageFirst()
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

private:
    /** All messages came, while level and format changed. */
    static void verifyAll(const LineCheck& p_check, const Changer& p_changer)
    {
        QCOMPARE(p_check.broken, QString());
        for (const int count : p_check.next) {
            QCOMPARE(count, s_each);
        }
        QCOMPARE(p_check.ofFirstFormat + p_check.ofSecondFormat,
                 s_threads * s_each + p_check.notes);
        // That is worth something only if level and format did change meanwhile.
        QVERIFY2(
            p_changer.levels > 10 && p_changer.formats > 10,
            qPrintable(QStringLiteral("%1 and %2").arg(p_changer.levels).arg(p_changer.formats)));
        QVERIFY(p_check.ofFirstFormat > 0 && p_check.ofSecondFormat > 0);
        QVERIFY2(p_check.notes > 0 && p_check.notes < s_notes,
                 qPrintable(QString::number(p_check.notes)));
    }
};

QTEST_GUILESS_MAIN(LogThreadsTest)
#include "logthreadstest.moc"
