#include "build/usermainfile.h"
#include "support/system/files.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QtTest>

class UserMainFileTest : public QObject
{
    Q_OBJECT

    const QString m_kit = QCoreApplication::applicationDirPath() + "/gcc";

private slots:
    void init() { QVERIFY(QDir().mkpath(m_kit + "/example")); }
    void cleanup() { QVERIFY(QDir(m_kit).removeRecursively()); }

    void theSourceFileHoldsTheTextUpToItsFirstNul()
    {
        QCOMPARE(QDir::cleanPath(userMainPath()), m_kit + "/example/user_main.c");
        QVERIFY(writeUserMain(QStringLiteral("a line that is longer than the next text\n")));
        QVERIFY(writeUserMain(QString::fromUtf8("// 积木\nb;\n")));
        QCOMPARE(contentOf(userMainPath()), QByteArray("// \xe7\xa7\xaf\xe6\x9c\xa8\nb;\n"));
        QVERIFY(writeUserMain(QStringLiteral("c;") + QChar(0) + QStringLiteral("d;")));
        QCOMPARE(contentOf(userMainPath()), QByteArray("c;"));
        QVERIFY(writeUserMain(QString()));
        QCOMPARE(contentOf(userMainPath()), QByteArray());
    }

    void aSourceFileThatCannotBeOpenedIsAFailure()
    {
        QVERIFY(QDir(m_kit).removeRecursively());
        QVERIFY(!writeUserMain(QStringLiteral("a;\n")));
        QVERIFY(!QFile::exists(m_kit));
    }

    void aFullDiskIsAFailure_data()
    {
        QTest::addColumn<int>("size");
        QTest::newRow("text that waits in a buffer") << 10;
        QTest::newRow("text that goes straight out") << 1000000;
    }

    void aFullDiskIsAFailure()
    {
        QFETCH(int, size);
        QVERIFY(QFile::link("/dev/full", userMainPath()));
        QVERIFY(!writeUserMain(QString(size, 'a')));
    }
};

QTEST_GUILESS_MAIN(UserMainFileTest)
#include "usermainfiletest.moc"
