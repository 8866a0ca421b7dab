#include "base/systemlanguage.h"

#include <QProcess>
#include <QtTest>

#include <cstdio>
#include <cstring>

class SystemLanguageTest : public QObject
{
    Q_OBJECT

    static void addLocales()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<int>("code");
        QTest::newRow("Chinese, China") << "zh_CN" << 1;
        QTest::newRow("Chinese, Taiwan") << "zh_TW" << 3;
        QTest::newRow("Chinese, Hong Kong") << "zh_HK" << 3;
        QTest::newRow("Chinese, Singapore") << "zh_SG" << 3;
        QTest::newRow("Chinese, Macau") << "zh_MO" << 3;
        QTest::newRow("English") << "en_US" << 2;
        QTest::newRow("Japanese") << "ja_JP" << 2;
    }

private slots:
    void everyLocaleHasItsCode_data()
    {
        addLocales();
        QTest::newRow("Chinese, Malaysia") << "zh_MY" << 1;
        QTest::newRow("Chinese, no country") << "zh" << 1;
        QTest::newRow("English, Singapore") << "en_SG" << 2;
        QTest::newRow("the C locale") << "C" << 2;
    }

    void everyLocaleHasItsCode()
    {
        QFETCH(QString, locale);
        QFETCH(int, code);
        QCOMPARE(languageCodeOf(QLocale(locale)), code);
    }

#ifndef Q_OS_WIN
    void theCodeFollowsTheSystem_data() { addLocales(); }

    // The system's locale is settled when a program starts, so another one has to.
    void theCodeFollowsTheSystem()
    {
        QFETCH(QString, locale);
        QFETCH(int, code);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove("LANGUAGE");
        environment.insert("LANG", locale + ".UTF-8");
        environment.insert("LC_ALL", locale + ".UTF-8");
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(QCoreApplication::applicationFilePath(), {"--print-code"});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.readAllStandardOutput().trimmed(), QByteArray::number(code));
    }
#endif
};

int main(int p_argc, char** p_argv)
{
    QCoreApplication application(p_argc, p_argv);
    if (p_argc == 2 && std::strcmp(p_argv[1], "--print-code") == 0) {
        std::printf("%d\n", systemLanguageCode());
        return 0;
    }
    SystemLanguageTest test;
    return QTest::qExec(&test, p_argc, p_argv);
}

#include "systemlanguagetest.moc"
