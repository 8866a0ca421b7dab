#include "base/installpath.h"

#include <QtTest>

class InstallPathTest : public QObject
{
    Q_OBJECT

private slots:
    void theLiteralStandsBehindTheProgramsFolder()
    {
#ifdef Q_OS_WIN
        const QString expected = "\\gcc\\example\\user_main.c";
#else
        const QString expected = "/gcc/example/user_main.c";
#endif
        QCOMPARE(installPath("\\gcc\\example\\user_main.c"),
                 QCoreApplication::applicationDirPath() + expected);
    }

    void slashesStayAsTheyAre()
    {
        QCOMPARE(installPath("/firmwares/UPDATE.bin"),
                 QCoreApplication::applicationDirPath() + "/firmwares/UPDATE.bin");
    }

    void anEmptyLiteralIsTheFolderItself()
    {
        QCOMPARE(installPath(""), QCoreApplication::applicationDirPath());
    }
};

QTEST_GUILESS_MAIN(InstallPathTest)
#include "installpathtest.moc"
