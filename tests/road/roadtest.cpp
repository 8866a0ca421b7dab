#include "build/builddialog.h"
#include "modules/documentstate.h"
#include "modules/mainmodule.h"
#include "shell/mainwindow.h"
#include "shell/tztoolbar.h"
#include "support/canvas/canvasfixture.h"

#include <QDirIterator>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace
{
const QString s_objects = QStringLiteral("/gcc/example/build/gcc/objects/");

/** What the emulated robot did, a line each, without the times; the exit code behind. */
QStringList trace(const QString& p_binary, int p_limit, int* p_exitCode)
{
    QProcess runner;
    runner.start(qEnvironmentVariable("TILER_KIT") + QStringLiteral("/run-on-emulator"),
                 {QStringLiteral("--limit"), QString::number(p_limit), p_binary});
    if (!runner.waitForFinished(120000)) {
        return {QStringLiteral("the emulator did not end")};
    }
    *p_exitCode = runner.exitCode();
    QStringList lines = QString::fromUtf8(runner.readAllStandardOutput())
                            .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    lines.replaceInStrings(QRegularExpression(QStringLiteral("^\\[ *[0-9.]+\\] ")), QString());
    return lines;
}
} // namespace

/** From a project to what the robot does, by the real window, its button, the kit and the emulator.
 */
class RoadTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // The kit lies beside the program under test.
        const QString source = qEnvironmentVariable("TILER_KIT");
        const QString target = QCoreApplication::applicationDirPath() + QStringLiteral("/gcc");
        QVERIFY(QFileInfo(source + QStringLiteral("/example/vantrel.h")).exists());
        QDir(target).removeRecursively();
        QProcess copy;
        copy.start(QStringLiteral("cp"), {QStringLiteral("-r"), source, target});
        QVERIFY(copy.waitForFinished() && copy.exitCode() == 0);
    }

    void everyExampleGoesTheWholeRoad_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("binary");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QStringList>("expected");

        const auto drive = [](int p_a, int p_b) {
            return QStringList{QStringLiteral("motor A (1) speed %1").arg(p_a),
                               QStringLiteral("motor B (2) speed %1").arg(p_b)};
        };
        const auto timed = [&drive](int p_a, int p_b, const char* p_seconds) {
            return drive(p_a, p_b) +
                   QStringList{QStringLiteral("wait %1 s").arg(QLatin1String(p_seconds))} +
                   drive(0, 0);
        };
        const QStringList stop =
            drive(0, 0) + QStringList{"motor C (3) speed 0", "motor D (4) speed 0"};
        const auto row = [](const char* p_file, const char* p_binary, int p_exitCode,
                            const QStringList& p_does) {
            QTest::newRow(p_file) << p_file << p_binary << p_exitCode
                                  << QStringList("start") + p_does;
        };
        const auto endingRow = [&row](const char* p_file, const char* p_binary,
                                      const QStringList& p_does) {
            row(p_file, p_binary, 0, p_does + QStringList("end"));
        };
        const QStringList side = timed(50, -50, "1") + timed(50, 50, "0.5");
        endingRow("square", "Square", side + side + side + side + stop);
        endingRow("there-and-back", "Back",
                  timed(50, -50, "2") + QStringList("wait 1 s") + timed(-50, 50, "2") + stop);
        endingRow("slow-and-fast", "Speed",
                  timed(30, -30, "1") + timed(50, -50, "1") + timed(80, -80, "1") + stop);
        endingRow("zigzag", "Zigzag",
                  side + timed(50, -50, "1") + timed(-50, -50, "1") + side + stop);
        const auto arms = [](int p_one, int p_two, int p_sound) {
            return QStringList{QStringLiteral("servo 1 speed 716 position %1").arg(p_one),
                               QStringLiteral("servo 2 speed 716 position %1").arg(p_two),
                               QStringLiteral("sound %1").arg(p_sound)};
        };
        const QStringList dance = arms(335, 689, 25) + QStringList("wait 0.5 s") +
                                  arms(689, 335, 21) + QStringList("wait 0.5 s");
        endingRow("dance", "Dance",
                  QStringList("sound 4") + dance + dance + timed(-50, -50, "1") +
                      timed(50, 50, "1") + arms(512, 512, 14));
        const auto shown = [](const QStringList& p_what) {
            return QStringList(p_what).replaceInStrings(QRegularExpression("^"), "display ") +
                   QStringList("wait 1 s");
        };
        endingRow("face-show", "Face",
                  shown({"2 3 emoji 1 happy"}) + shown({"2 3 emoji 4 angry"}) +
                      shown({"2 custom", "3 custom", "2 symbol 45", "3 symbol 45"}) +
                      shown({"2 symbol 26", "3 symbol 27"}) + shown({"2 symbol 13", "3 symbol 5"}) +
                      shown({"2 custom", "3 custom"}).mid(0, 2));
        // Endless ones: they begin like this, and the limit stops them.
        row("line-follower", "Line", 3,
            QStringList("analogue 4 -> 1000") + drive(-50, -50) + QStringList("wait 0.1 s") + stop +
                drive(-50, -50));
        row("bumper", "Bumper", 3, drive(50, -50));
    }

    void everyExampleGoesTheWholeRoad()
    {
        QFETCH(QString, file);
        QFETCH(QString, binary);
        QFETCH(int, exitCode);
        QFETCH(QStringList, expected);

        MainWindow window;
        window.resize(1280, 768);
        window.show();
        window.openPath(qEnvironmentVariable("TILER_EXAMPLES") + QLatin1Char('/') + file +
                        QStringLiteral(".tlrx"));
        QVERIFY(window.fileName().endsWith(file + QStringLiteral(".tlrx")));
        QCOMPARE(window.toolBar()->programName(), binary);
        QCOMPARE(download(window), QStringLiteral("连接控制器...."));

        const QString path =
            QCoreApplication::applicationDirPath() + s_objects + binary + QStringLiteral(".bin");
        QVERIFY(QFileInfo(path).size() > 57536);
        int code = -1;
        // Without the rows of dots that show what stands on a display.
        const QStringList lines =
            trace(path, 20, &code).filter(QRegularExpression(QStringLiteral("[^ .#]")));
        QCOMPARE(code, exitCode);
        if (exitCode == 0) {
            QCOMPARE(lines, expected);
        } else {
            QCOMPARE(lines.mid(0, expected.size()), expected);
        }
    }

    void aProgramThatDoesNotCompileSaysSo()
    {
        MainWindow window;
        window.show();
        // A name that no program can have: projects may bring in any.
        window.toolBar()->setProgramName(QStringLiteral("a b"));
        QCOMPARE(download(window), QStringLiteral("编译失败！"));
        QDirIterator left(QCoreApplication::applicationDirPath() + s_objects,
                          {QStringLiteral("a*.bin")}, QDir::Files);
        QVERIFY(!left.hasNext());
    }

    void theRoadLeadsFromFoldersWithBlanksAndChineseCharacters()
    {
        // This very test once more: installed, with its projects and its user somewhere else.
        QTemporaryDir computer;
        const QDir root(computer.path());
        const QString installation = root.filePath(QStringLiteral("安装 目录"));
        const QString projects = root.filePath(QStringLiteral("我的 项目"));
        const QString home = root.filePath(QStringLiteral("小明 的家"));
        for (const QString& folder : {installation, projects, home}) {
            QVERIFY(root.mkpath(folder));
        }
        const QString program = installation + QStringLiteral("/road test");
        QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), program));
        QVERIFY(QFile::copy(qEnvironmentVariable("TILER_EXAMPLES") + QStringLiteral("/square.tlrx"),
                            projects + QStringLiteral("/square.tlrx")));
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("TILER_EXAMPLES"), projects);
        environment.insert(QStringLiteral("HOME"), home);
        environment.remove(QStringLiteral("XDG_CONFIG_HOME"));

        QProcess road;
        road.setProcessEnvironment(environment);
        road.setProcessChannelMode(QProcess::MergedChannels);
        road.start(program, {QStringLiteral("everyExampleGoesTheWholeRoad:square")});
        QVERIFY(road.waitForFinished(120000));
        const QByteArray output = road.readAll();
        QVERIFY2(road.exitStatus() == QProcess::NormalExit && road.exitCode() == 0, output);
        QVERIFY(QFile::exists(installation + s_objects + QStringLiteral("Square.bin")));
    }

private:
    /** Presses the download button and cancels the dialog once it waits for the controller. */
    QString download(MainWindow& p_window)
    {
        QString status;
        QTimer watcher;
        watcher.setInterval(50);
        connect(&watcher, &QTimer::timeout, this, [&status] {
            auto* dialog = qobject_cast<buildDialog*>(QApplication::activeModalWidget());
            if (!dialog) {
                return;
            }
            const auto* label = dialog->findChild<QLabel*>(QStringLiteral("status"));
            if (label && label->text() != QStringLiteral("正在编译......")) {
                status = label->text();
                QTest::mouseClick(dialog->findChild<QPushButton*>(), Qt::LeftButton);
            }
        });
        watcher.start();
        for (QPushButton* button : p_window.toolBar()->findChildren<QPushButton*>()) {
            if (button->toolTip() == QStringLiteral("下载")) {
                QTest::mouseClick(button, Qt::LeftButton);
            }
        }
        return status;
    }
};

QTEST_MAIN(RoadTest)
#include "roadtest.moc"
