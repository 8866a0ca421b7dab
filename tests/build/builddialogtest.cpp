#include "build/usermainfile.h"
#include "dialogbench.h"

#include <QDir>
#include <QFile>
#include <QtTest>

using namespace dialogtext;

namespace
{

// In KiB. The address checker holds back what has been freed, so it needs a good deal more.
#ifdef __SANITIZE_ADDRESS__
constexpr int mostGrowth = 400 * 1024;
#else
constexpr int mostGrowth = 40 * 1024;
#endif

// The most memory that this process has had since resetPeak(), in KiB.
void resetPeak() { DialogBench::write("/proc/self/clear_refs", "5"); }

int peak()
{
    for (const QByteArray& line : DialogBench::read("/proc/self/status").split('\n')) {
        if (line.startsWith("VmHWM:")) {
            return line.mid(6).trimmed().split(' ').first().toInt();
        }
    }
    return -1;
}

} // namespace

class BuildDialogTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<DialogBench> m_bench;

    void verifyFailureIsShown(const QString& p_reason = QString()) const
    {
        const QString reason = m_bench->shown().reasonText();
        QVERIFY2(reason.contains(p_reason), qPrintable(reason));
        QCOMPARE(m_bench->shown().buttonText(), cancel);
        QVERIFY(!m_bench->shown().progress->isVisible());
        m_bench->shown().verifyButtonCloses();
    }

private slots:
    void init() { m_bench = std::make_unique<DialogBench>(); }
    void cleanup() { m_bench.reset(); }

    void theFormIsLaidOutAsTold()
    {
        const auto dialog = m_bench->makeDialog();
        const Shown shown(*dialog);
        QCOMPARE(dialog->size(), QSize(400, 210));
        QVERIFY(dialog->windowFlags().testFlag(Qt::FramelessWindowHint));
        QVERIFY(dialog->testAttribute(Qt::WA_TranslucentBackground));
        QCOMPARE(dialog->windowTitle(), QString("Dialog"));
        QCOMPARE(shown.title->geometry(), QRect(15, 9, 370, 26));
        QCOMPARE(int(shown.title->alignment()), int(Qt::AlignCenter));
        QCOMPARE(shown.title->text(), QStringLiteral("下载"));
        QCOMPARE(shown.status->geometry(), QRect(135, 79, 211, 31));
        QCOMPARE(shown.status->font().pixelSize(), 16);
        QVERIFY(shown.statusText().isEmpty());
        QCOMPARE(shown.button->geometry(), QRect(290, 140, 76, 30));
        QCOMPARE(shown.buttonText(), cancel);
        QCOMPARE(shown.icon->geometry(), QRect(89, 80, 30, 30));
        QVERIFY(shown.iconName().isEmpty());
        QCOMPARE(shown.progress->geometry(), QRect(50, 145, 221, 20));
        QCOMPARE(shown.progress->maximum(), 0);
        QCOMPARE(shown.progress->value(), -1);
    }

    void theBackgroundPictureIsDrawnAtTheOrigin()
    {
        const auto dialog = m_bench->makeDialog();
        const QImage image = dialog->grab().toImage();
        QCOMPARE(image.pixelColor(0, 0), QColor("#102030"));
        QCOMPARE(image.pixelColor(7, 7), QColor("#102030"));
        QVERIFY(image.pixelColor(9, 9) != QColor("#102030"));
    }

    void everyTextFitsInBothLanguages_data()
    {
        QTest::addColumn<QString>("widget");
        QTest::addColumn<QString>("text");
        for (const QString& text :
             {building, compileFailed, connecting, QStringLiteral("控制器连接失败！"), downloaded,
              downloadFailed, QString("Building......"), QString("Connecting......"),
              QString("Connect Failed!"), waiting, QString("Another window builds..."),
              QString("Compile Success!"), QString("Download Success!"),
              QString("Download Failed!")}) {
            QTest::newRow(qPrintable("status " + text)) << "status" << text;
        }
        for (const QString& text : {cancel, ok, QString("Cancel"), QString("OK")}) {
            QTest::newRow(qPrintable("button " + text)) << "button" << text;
        }
        for (const QString& text : {QStringLiteral("下载"), QString("Download")}) {
            QTest::newRow(qPrintable("title " + text)) << "title" << text;
        }
    }

    void everyTextFitsInBothLanguages()
    {
        QFETCH(QString, widget);
        QFETCH(QString, text);
        const auto dialog = m_bench->makeDialog();
        const auto* shown = dialog->findChild<QWidget*>(widget);
        const QSize size = shown->fontMetrics().size(Qt::TextSingleLine, text);
        QVERIFY(size.width() > 0);
        QVERIFY2(size.width() <= shown->width(), qPrintable(QString::number(size.width())));
        QVERIFY2(size.height() <= shown->height(), qPrintable(QString::number(size.height())));
    }

    void theCompilerIsCalledInItsFolderWithNameAndTasks_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("tasks");
        QTest::newRow("no task") << "car1" << 0;
        QTest::newRow("tasks") << "car1" << 12;
        QTest::newRow("blank in the name") << "my car" << 1;
        QTest::newRow("quotes in the name") << "a'b\"c" << 1;
        QTest::newRow("Chinese name") << QStringLiteral("小车") << 1;
        QTest::newRow("no name") << "" << 0;
    }

    void theCompilerIsCalledInItsFolderWithNameAndTasks()
    {
        QFETCH(QString, name);
        QFETCH(int, tasks);
        m_bench->setCompiler("pwd > call; printf '%s\\n' \"$@\" >> call; exit 1\n");
        const auto dialog = m_bench->makeDialog();
        const Shown shown(*dialog);
        DialogBench::build(*dialog, name, tasks,
                           [&] { QTRY_COMPARE(shown.statusText(), compileFailed); });
        const QString expected = QFileInfo(m_bench->makeFolder()).canonicalFilePath() +
                                 "\nTARGET_NAME=" + name +
                                 "\nUSER_TASK_NUMBER=" + QString::number(tasks) + '\n';
        QCOMPARE(DialogBench::read(m_bench->inMakeFolder("call")), expected.toUtf8());
    }

    void whileItCompilesTheBusyBarIsShown()
    {
        m_bench->setCompiler("exec sleep 600\n");
        m_bench->build([&] {
            QVERIFY(m_bench->dialog().isModal());
            QCOMPARE(m_bench->shown().statusText(), building);
            QCOMPARE(m_bench->shown().iconName(), QString("compiling"));
            QCOMPARE(m_bench->shown().buttonText(), cancel);
            QVERIFY(m_bench->shown().progress->isVisible());
        });
        QCOMPARE(m_bench->volumes().scans(), 0);
    }

    void aGoodBuildReachesTheControllerWithActionsAndTrailer()
    {
        m_bench->setCompiler(DialogBench::linking());
        m_bench->build([&] {
            m_bench->shown().verifyEnd(downloaded, "done");
            QVERIFY(!m_bench->shown().progress->isVisible());
            QVERIFY(m_bench->dialog().isVisible());
            m_bench->shown().verifyButtonCloses();
        });
        QCOMPARE(m_bench->finishedFiles(), QStringList{m_bench->compiledFile("car1")});
        const QByteArray file = DialogBench::read(m_bench->onController("car1.bin"));
        QCOMPARE(file.size(), 7 + DialogBench::appendedSize);
        QVERIFY(file.startsWith("program\xFF\xFF\xFF\x01\x01"));
        QCOMPARE(file.mid(7 + 57472, 4), QByteArray("\x55\xAA\x5A\x5A"));
        QCOMPARE(file, DialogBench::read(m_bench->compiledFile("car1")));
        QVERIFY(m_bench->dialog().compilerMessages().isEmpty());
    }

    void withoutAProgramNameTheFileIsOnlyAnExtension()
    {
        m_bench->setCompiler(DialogBench::linking());
        m_bench->buildToTheEnd("");
        QCOMPARE(m_bench->finishedFiles(), QStringList{m_bench->compiledFile("")});
        QVERIFY(m_bench->finishedFiles().first().endsWith("/objects/.bin"));
        QCOMPARE(DialogBench::read(m_bench->onController(".bin")).size(),
                 7 + DialogBench::appendedSize);
    }

    void aStaleFileIsNotDeletedAndGrowsWithEachBuildThatLinksNothing()
    {
        m_bench->setCompiler("exit 0\n");
        QVERIFY(DialogBench::write(m_bench->compiledFile("car1"), "stale"));
        m_bench->buildToTheEnd("car1");
        QCOMPARE(DialogBench::read(m_bench->onController("car1.bin")).size(),
                 5 + DialogBench::appendedSize);
        m_bench->buildToTheEnd("car1");
        QCOMPARE(DialogBench::read(m_bench->onController("car1.bin")).size(),
                 5 + 2 * DialogBench::appendedSize);
        QVERIFY(DialogBench::read(m_bench->onController("car1.bin")).startsWith("stale"));
    }

    void aSuccessWithoutAFileSendsTheActionsAlone()
    {
        m_bench->setCompiler("exit 0\n");
        m_bench->buildToTheEnd("car1");
        QCOMPARE(DialogBench::read(m_bench->onController("car1.bin")).size(),
                 DialogBench::appendedSize);
    }

    void aFileThatCannotBeCompletedGoesToTheControllerAsItIs()
    {
        m_bench->setCompiler(DialogBench::linking());
        const auto dialog = m_bench->makeDialog();
        dialog->setFinishProgramFile(nullptr);
        const Shown shown(*dialog);
        DialogBench::build(*dialog, "car1", 0, [&] { QTRY_COMPARE(shown.buttonText(), ok); });
        QCOMPARE(DialogBench::read(m_bench->onController("car1.bin")), QByteArray("program"));
    }

    void aFailedCompileSaysSoAndGoesNoFurther_data()
    {
        QTest::addColumn<QByteArray>("end");
        QTest::newRow("exit code 1") << QByteArray("exit 1\n");
        QTest::newRow("exit code 255") << QByteArray("exit 255\n");
        QTest::newRow("crash") << QByteArray("kill -SEGV $$\n");
        QTest::newRow("killed from outside") << QByteArray("kill -KILL $$\n");
    }

    void aFailedCompileSaysSoAndGoesNoFurther()
    {
        QFETCH(QByteArray, end);
        m_bench->setCompiler(DialogBench::linking() + "ulimit -c 0\n" + end);
        m_bench->build([&] {
            QTRY_COMPARE(m_bench->shown().statusText(), compileFailed);
            QTest::qWait(100);
            QCOMPARE(m_bench->shown().statusText(), compileFailed);
            QCOMPARE(m_bench->shown().iconName(), QString("compiling"));
            verifyFailureIsShown();
        });
        QVERIFY(m_bench->finishedFiles().isEmpty());
        QCOMPARE(m_bench->volumes().scans(), 0);
        QVERIFY(QDir(m_bench->controller()).isEmpty());
    }

    void theCompilersMessagesAboutTheProgramAreListed()
    {
        m_bench->setCompiler("echo '../../../example/user_main.c:3:5: error: no such thing' >&2\n"
                             "echo 'cc: ../../../example/user_main.c:1:1: not at the start' >&2\n"
                             "echo 'other.c:9:9: error: elsewhere' >&2\n"
                             "echo >&2\n"
                             "echo '../../../example/user_main.c:7:1: 错误: ;' >&2\n"
                             "printf '\\000../../../example/user_main.c:8:1: unseen\\n' >&2\n"
                             "exit 2\n");
        const LogKeeper log;
        m_bench->buildUntil(compileFailed);
        QCOMPARE(m_bench->dialog().compilerMessages(),
                 QStringList({"3:5: error: no such thing", "7:1: 错误: ;"}));
        QVERIFY(log.messages().join('\n').contains("other.c:9:9: error: elsewhere"));
    }

    void theCompilersWarningsOfAGoodBuildAreLogged()
    {
        m_bench->setCompiler(DialogBench::linking() + "echo 'a warning of little weight' >&2\n");
        const LogKeeper log;
        m_bench->buildToTheEnd("car1");
        QVERIFY(log.messages().join('\n').contains("a warning of little weight"));
    }

    void aSourceThatCannotBeWrittenIsAFailedBuild_data()
    {
        QTest::addColumn<QString>("inItsPlace");
        QTest::newRow("a folder") << QString();
        QTest::newRow("a full disk") << QString("/dev/full");
    }

    void aSourceThatCannotBeWrittenIsAFailedBuild()
    {
        QFETCH(QString, inItsPlace);
        QVERIFY(inItsPlace.isEmpty() ? QDir().mkpath(userMainPath())
                                     : QFile::link(inItsPlace, userMainPath()));
        m_bench->setCompiler("touch was-called\n" + DialogBench::linking());
        QVERIFY(DialogBench::write(m_bench->compiledFile("car1"), "the older program"));
        m_bench->build("void user_main() {}", [&] {
            QCOMPARE(m_bench->shown().statusText(), compileFailed);
            verifyFailureIsShown("gcc/example/user_main.c");
        });
        QVERIFY(!QFile::exists(m_bench->inMakeFolder("was-called")));
        QVERIFY(m_bench->finishedFiles().isEmpty());
        QVERIFY(QDir(m_bench->controller()).isEmpty());
    }

    void theSourceIsWrittenBeforeTheCompilerIsCalled()
    {
        m_bench->setCompiler("cat ../../user_main.c > seen\nexit 1\n");
        m_bench->buildUntil(compileFailed, "void user_main() {}");
        QCOMPARE(DialogBench::read(m_bench->inMakeFolder("seen")),
                 QByteArray("void user_main() {}"));
    }

    void aMissingCompilerIsTold_data()
    {
        QTest::addColumn<bool>("there");
        QTest::newRow("no make.exe") << false;
        QTest::newRow("one that may not be run") << true;
    }

    void aMissingCompilerIsTold()
    {
        QFETCH(bool, there);
        if (there) {
            m_bench->setCompiler("exit 0\n");
            QFile::setPermissions(m_bench->inMakeFolder("make.exe"), QFile::ReadOwner);
        }
        m_bench->build([&] {
            QTRY_COMPARE(m_bench->shown().statusText(), compileFailed);
            verifyFailureIsShown("make.exe");
        });
        QVERIFY(m_bench->finishedFiles().isEmpty());
        QCOMPARE(m_bench->volumes().scans(), 0);
    }

    void everyReasonFits_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("source")
            << "The build failed: gcc/example/user_main.c can't be written. Check "
               "the disk's free space and the file's permissions.";
        QTest::newRow("start")
            << "The build failed: gcc/example/build/gcc/make.exe can't be started. "
               "Unpack Tiler anew.";
        QTest::newRow("tools")
            << "The build failed, not found: make, arm-none-eabi-gcc, "
               "arm-none-eabi-objcopy. Install:\nsudo apt install make "
               "gcc-arm-none-eabi libnewlib-arm-none-eabi binutils-arm-none-eabi";
    }

    void everyReasonFits()
    {
        QFETCH(QString, text);
        const auto dialog = m_bench->makeDialog();
        auto& reason = *Shown(*dialog).reason;
        reason.setText(text);
        const QRect needed = reason.fontMetrics().boundingRect(QRect(0, 0, reason.width(), 1000),
                                                               Qt::TextWordWrap, text);
        QVERIFY2(needed.height() <= reason.height() && needed.width() <= reason.width(),
                 qPrintable(QStringLiteral("%1 by %2").arg(needed.width()).arg(needed.height())));
    }

    void aFloodOfMessagesIsReadToTheEndButNotKept()
    {
        // 100 MB, a good deal more than the memory that it may take.
        m_bench->setCompiler("echo '../../../example/user_main.c:1:1: the first' >&2\n"
                             "head -c 100000000 /dev/zero | tr '\\000' x >&2\n"
                             "touch came-through\n"
                             "exit 2\n");
        const LogKeeper log;
        resetPeak();
        const int before = peak();
        QVERIFY(before > 0);
        m_bench->buildUntil(compileFailed);
        QVERIFY(QFile::exists(m_bench->inMakeFolder("came-through")));
        QCOMPARE(m_bench->dialog().compilerMessages(), QStringList{"1:1: the first"});
        QVERIFY2(peak() - before < mostGrowth, qPrintable(QString::number(peak() - before)));
    }

    void aFloodOfOutputIsThrownAway()
    {
        m_bench->setCompiler(DialogBench::linking() + "head -c 100000000 /dev/zero\n");
        resetPeak();
        const int before = peak();
        m_bench->buildToTheEnd("car1");
        QVERIFY(QFile::exists(m_bench->onController("car1.bin")));
        QVERIFY2(peak() - before < mostGrowth, qPrintable(QString::number(peak() - before)));
    }
};

QTEST_MAIN(BuildDialogTest)
#include "builddialogtest.moc"
