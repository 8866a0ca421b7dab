#include "logging/rollingfileappender.h"
#include "loghelpers.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

namespace
{
QDateTime at(const char* p_time)
{
    return QDateTime::fromString(QLatin1String(p_time), QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}
void write(RollingFileAppender& p_appender, const char* p_time, const char* p_text)
{
    LogMessage message = messageOf(QLatin1String(p_text));
    message.time = at(p_time);
    p_appender.setFormat(QStringLiteral("%{message}\n"));
    p_appender.write(message);
}
} // namespace

/** A new file for each period. The time is that of the messages. */
class RollingFileAppenderTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_dir = std::make_unique<QTemporaryDir>(); }

    void periodsHaveTheirNames_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QDateTime>("time");
        QTest::addColumn<QDateTime>("start");
        QTest::addColumn<QString>("suffix");
        const auto row = [](const char* p_pattern, const char* p_time, const char* p_start,
                            const char* p_suffix) {
            QTest::addRow("%s of %s", p_pattern, p_time)
                << QString::fromLatin1(p_pattern) << at(p_time) << at(p_start)
                << QString::fromLatin1(p_suffix);
        };
        row("'.'yyyy-MM-dd-hh-mm", "2026-11-21 23:59:59", "2026-11-21 23:59:00",
            ".2026-11-21-23-59");
        row("'.'yyyy-MM-dd-hh-mm", "2026-01-02 03:04:00", "2026-01-02 03:04:00",
            ".2026-01-02-03-04");
        row("'.'yyyy-MM-dd-hh", "2026-11-21 13:59:59", "2026-11-21 13:00:00", ".2026-11-21-13");
        row("'.'yyyy-MM-dd-a", "2026-11-21 11:59:59", "2026-11-21 00:00:00", ".2026-11-21-am");
        row("'.'yyyy-MM-dd-a", "2026-11-21 12:00:00", "2026-11-21 12:00:00", ".2026-11-21-pm");
        row("'.'yyyy-MM-dd", "2026-11-21 23:59:59", "2026-11-21 00:00:00", ".2026-11-21");
        // A Saturday, the Monday after it, and days whose week belongs to another year.
        row("'.'yyyy-ww", "2026-11-21 12:00:00", "2026-11-16 00:00:00", ".2026-47");
        row("'.'yyyy-ww", "2026-11-23 00:00:00", "2026-11-23 00:00:00", ".2026-48");
        row("'.'yyyy-ww", "2027-01-03 12:00:00", "2026-12-28 00:00:00", ".2026-53");
        row("'.'yyyy-ww", "2024-12-31 12:00:00", "2024-12-30 00:00:00", ".2025-01");
        row("'.'yyyy-MM", "2028-02-29 12:00:00", "2028-02-01 00:00:00", ".2028-02");
    }

    void periodsHaveTheirNames()
    {
        QFETCH(QString, pattern);
        QFETCH(QDateTime, time);
        QFETCH(QDateTime, start);
        QFETCH(QString, suffix);
        const auto period = periodOfPattern(pattern);
        QVERIFY(period);
        QCOMPARE(datePattern(*period), pattern);
        QCOMPARE(periodStart(*period, time), start);
        QCOMPARE(periodStart(*period, start), start);
        QCOMPARE(periodSuffix(*period, start), suffix);
    }

    void onlyTheSixPatternsAreTaken_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<bool>("taken");
        QTest::addColumn<QString>("old");
        // Refused, so that it stays with a file each day.
        QTest::newRow("another") << "yyyy" << false << "log.txt.2026-11-20";
        QTest::newRow("none") << QString() << false << "log.txt.2026-11-20";
        QTest::newRow("week") << "'.'yyyy-ww" << true << "log.txt.2026-47";
        QTest::newRow("hour") << "'.'yyyy-MM-dd-hh" << true << "log.txt.2026-11-20-10";
    }

    void onlyTheSixPatternsAreTaken()
    {
        QFETCH(QString, pattern);
        QFETCH(bool, taken);
        QFETCH(QString, old);
        RollingFileAppender appender(path());
        QCOMPARE(appender.setDatePattern(pattern), taken);
        write(appender, "2026-11-20 10:00:00", "first");
        write(appender, "2026-11-23 10:00:00", "second");
        QCOMPARE(files(), (QStringList{"log.txt", old}));
    }

    void aFileThatIsThereGoesOnWithAnotherPeriod()
    {
        RollingFileAppender appender(path());
        appender.setDatePattern(RollingPeriod::Month);
        write(appender, "2026-11-20 10:00:00", "first");
        setLastChange("2026-11-20 10:00:00");
        appender.setDatePattern(RollingPeriod::Day);
        write(appender, "2026-11-20 11:00:00", "second");
        QCOMPARE(files(), QStringList{"log.txt"});
        write(appender, "2026-11-21 00:00:00", "third");
        QCOMPARE(files(), (QStringList{"log.txt", "log.txt.2026-11-20"}));
    }

    void aNewPeriodMovesTheFileAway_data()
    {
        QTest::addColumn<int>("period");
        QTest::addColumn<QStringList>("names");
        const auto row = [](RollingPeriod p_period, const QStringList& p_suffixes) {
            QStringList names{"log.txt"};
            for (const QString& suffix : p_suffixes) {
                names << "log.txt." + suffix;
            }
            QTest::newRow(qPrintable(datePattern(p_period))) << int(p_period) << names;
        };
        row(RollingPeriod::Minute, {"2026-11-20-10-00", "2026-11-20-10-01", "2026-11-20-11-00",
                                    "2026-11-20-12-00", "2026-11-21-12-00"});
        row(RollingPeriod::Hour,
            {"2026-11-20-10", "2026-11-20-11", "2026-11-20-12", "2026-11-21-12"});
        row(RollingPeriod::HalfDay, {"2026-11-20-am", "2026-11-20-pm", "2026-11-21-pm"});
        row(RollingPeriod::Day, {"2026-11-20", "2026-11-21"});
        row(RollingPeriod::Week, {"2026-47"});
        row(RollingPeriod::Month, {"2026-11"});
    }

    void aNewPeriodMovesTheFileAway()
    {
        QFETCH(int, period);
        QFETCH(QStringList, names);
        RollingFileAppender appender(path());
        appender.setDatePattern(static_cast<RollingPeriod>(period));
        const QList<const char*> times{"2026-11-20 10:00:00", "2026-11-20 10:00:59",
                                       "2026-11-20 10:01:00", "2026-11-20 11:00:00",
                                       "2026-11-20 12:00:00", "2026-11-21 12:00:00",
                                       "2027-01-04 12:00:00"};
        for (const char* time : times) {
            write(appender, time, time);
        }
        QCOMPARE(files(), names);
        // Each message is in one file, and the files in order hold all.
        QByteArray all;
        for (const QString& name : names.mid(1) + names.mid(0, 1)) {
            const QByteArray content = contentOf(m_dir->filePath(name));
            QVERIFY(content.size() > 1);
            all += content;
        }
        QByteArray written;
        for (const char* time : times) {
            written += QByteArray(time) + '\n';
        }
        QCOMPARE(all, written);
        QCOMPARE(contentOf(path()), QByteArray("2027-01-04 12:00:00\n"));
    }

    void aFileOfAnEarlierRunBelongsToItsTime()
    {
        {
            RollingFileAppender earlier(path());
            write(earlier, "2026-11-19 10:00:00", "old");
        }
        setLastChange("2026-11-19 10:00:00");
        RollingFileAppender appender(path());
        write(appender, "2026-11-19 11:00:00", "same day");
        QCOMPARE(contentOf(path()), QByteArray("old\nsame day\n"));

        setLastChange("2026-11-19 10:00:00");
        RollingFileAppender next(path());
        write(next, "2026-11-21 11:00:00", "new");
        QCOMPARE(contentOf(path("log.txt.2026-11-19")), QByteArray("old\nsame day\n"));
        QCOMPARE(contentOf(path()), QByteArray("new\n"));
    }

    void aFileThatIsThereAlreadyIsKept()
    {
        for (const char* name : {"log.txt.2026-11-20", "log.txt.2026-11-20.1"}) {
            putFile(path(name), "there");
        }
        RollingFileAppender appender(path());
        write(appender, "2026-11-20 10:00:00", "a");
        write(appender, "2026-11-21 10:00:00", "b");
        QCOMPARE(contentOf(path("log.txt.2026-11-20")), QByteArray("there"));
        QCOMPARE(contentOf(path("log.txt.2026-11-20.1")), QByteArray("there"));
        QCOMPARE(contentOf(path("log.txt.2026-11-20.2")), QByteArray("a\n"));
        QCOMPARE(contentOf(path()), QByteArray("b\n"));
    }

    void aClockPutBackBeginsNoNewFile()
    {
        RollingFileAppender appender(path());
        write(appender, "2026-11-21 10:00:00", "a");
        write(appender, "2026-11-19 10:00:00", "b");
        write(appender, "2026-11-21 11:00:00", "c");
        QCOMPARE(files(), QStringList("log.txt"));
        QCOMPARE(contentOf(path()), QByteArray("a\nb\nc\n"));
    }

    void aFileThatCantBeMovedGoesOn()
    {
        // A name too long to have anything behind it.
        const QByteArray name(250, 'x');
        RollingFileAppender appender(path(name.constData()));
        write(appender, "2026-11-20 10:00:00", "a");
        write(appender, "2026-11-21 10:00:00", "b");
        QCOMPARE(files().size(), 1);
        QCOMPARE(contentOf(path(name.constData())), QByteArray("a\nb\n"));
    }

    void anotherFileHasAPeriodOfItsOwn()
    {
        RollingFileAppender appender(path("a.txt"));
        write(appender, "2026-11-20 10:00:00", "a");
        appender.setFileName(path("b.txt"));
        write(appender, "2026-11-21 10:00:00", "b");
        QCOMPARE(files(), (QStringList{"a.txt", "b.txt"}));
        write(appender, "2026-11-22 10:00:00", "c");
        QCOMPARE(files(), (QStringList{"a.txt", "b.txt", "b.txt.2026-11-21"}));
    }

private:
    QString path(const char* p_name = "log.txt") const
    {
        return m_dir->filePath(QLatin1String(p_name));
    }
    void setLastChange(const char* p_time) const
    {
        QFile file(path());
        QVERIFY(file.open(QIODevice::Append));
        QVERIFY(file.setFileTime(at(p_time), QFileDevice::FileModificationTime));
    }
    QStringList files() const { return QDir(m_dir->path()).entryList(QDir::Files, QDir::Name); }
    std::unique_ptr<QTemporaryDir> m_dir;
};

QTEST_APPLESS_MAIN(RollingFileAppenderTest)
#include "rollingfileappendertest.moc"
