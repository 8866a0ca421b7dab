#include "build/buildprocess.h"
#include "support/system/kitcopy.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QtTest>

#include <csignal>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace
{

const QString source = QStringLiteral("#include \"vantrel.h\"\n"
                                      "void user_main()\n{\nPrintf(\"right\");wait(0.5);\n}\n");

QByteArray read(const QString& p_path)
{
    QFile file(p_path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool write(const QString& p_path, const QByteArray& p_content)
{
    QFile file(p_path);
    return file.open(QIODevice::WriteOnly) && file.write(p_content) == p_content.size();
}

bool isOver(pid_t p_process)
{
    // Who inherits it may be slow to wait for it: it is a zombie until then.
    const QByteArray stat = read(QStringLiteral("/proc/%1/stat").arg(p_process));
    return stat.isEmpty() || stat.mid(stat.lastIndexOf(')') + 2, 1) == "Z";
}

/** A kit from which nothing has been compiled yet. */
class ColdKit
{
public:
    bool isValid() const { return m_kit.isValid(); }
    void cool() const { QDir(objects()).removeRecursively(); }
    QString objects() const { return m_kit.folder() + QStringLiteral("/objects"); }

    /** A whole build's compiled program; empty if it fails. */
    QByteArray build() const
    {
        QFile::remove(m_kit.binary("car1"));
        const ProcessResult result = m_kit.compile("car1", source);
        return result.exitCode == 0 ? read(m_kit.binary("car1")) : result.errors.toUtf8();
    }

    /** A build that is killed as the dialog does it, after so many microseconds. */
    void killBuild(qint64 p_after) const
    {
        BuildProcess process;
        process.setWorkingDirectory(m_kit.folder());
        process.start(m_kit.folder() + QStringLiteral("/make.exe"),
                      {QStringLiteral("TARGET_NAME=car1"), QStringLiteral("USER_TASK_NUMBER=0")});
        process.waitForStarted();
        std::this_thread::sleep_for(std::chrono::microseconds(p_after));
        process.endNow();
    }

private:
    KitCopy m_kit;
};

} // namespace

/** A build that ends in the middle must not harm the next one. */
class KilledBuildTest : public QObject
{
    Q_OBJECT

    ColdKit m_kit;
    QByteArray m_right;

private slots:
    void initTestCase()
    {
        QVERIFY(m_kit.isValid());
        m_right = m_kit.build();
        QVERIFY2(m_right.contains("right"), m_right.constData());
    }

    void afterAKillAtAnyMomentTheNextBuildIsRight()
    {
        m_kit.cool();
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(m_kit.build(), m_right);
        const qint64 whole = timer.nsecsElapsed() / 1000;

        constexpr int points = 150;
        constexpr int hands = 2;
        QVector<QByteArray> built(points);
        QByteArray* const results = built.data();
        std::vector<std::thread> threads;
        for (int hand = 0; hand < hands; ++hand) {
            threads.emplace_back([=] {
                const ColdKit kit;
                for (int point = hand; point < points; point += hands) {
                    kit.cool();
                    kit.killBuild(whole * point / points);
                    results[point] = kit.build();
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        for (int point = 0; point < points; ++point) {
            QVERIFY2(built.at(point) == m_right,
                     qPrintable(QStringLiteral("killed at point %1: %2")
                                    .arg(point)
                                    .arg(QString::fromUtf8(built.at(point).left(500)))));
        }
    }

    void aWindowThatIsKilledTakesItsBuildAlong()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath("build");
        const pid_t window = fork();
        if (window == 0) {
            BuildProcess process;
            process.start("sh", {"-c", "echo $$ > \"$0\"; exec sleep 600", file});
            process.waitForStarted();
            for (;;) {
                pause();
            }
        }
        QTRY_VERIFY(read(file).endsWith('\n'));
        const auto build = static_cast<pid_t>(read(file).trimmed().toInt());
        QCOMPARE(::kill(build, 0), 0);
        ::kill(window, SIGKILL);
        waitpid(window, nullptr, 0);
        QTRY_VERIFY(isOver(build));
    }

    void anObjectThatIsNoneIsMadeAnew_data()
    {
        QTest::addColumn<QString>("object");
        QTest::newRow("a part of the runtime") << "runtime/calls.o";
        QTest::newRow("all of it") << "runtime/all.o";
    }

    void anObjectThatIsNoneIsMadeAnew()
    {
        QFETCH(QString, object);
        QCOMPARE(m_kit.build(), m_right);
        const QString path = m_kit.objects() + '/' + object;
        const QByteArray whole = read(path);
        QVERIFY(!whole.isEmpty());
        QFile::remove(m_kit.objects() + "/runtime/all.o");
        QVERIFY(write(path, whole.left(whole.size() / 2)));
        QCOMPARE(m_kit.build(), m_right);
        QCOMPARE(read(path), whole);
    }
};

QTEST_GUILESS_MAIN(KilledBuildTest)
#include "killedbuildtest.moc"
