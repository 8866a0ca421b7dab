#include "shell/language.h"
#include "base/config.h"
#include "support/system/datatable.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QMenu>
#include <QPointer>
#include <QProcess>
#include <QResource>
#include <QTemporaryDir>
#include <QTranslator>
#include <QtTest>

#include <cstdio>
#include <cstring>

namespace
{
const QString s_key = QStringLiteral("lang.current");
const QString s_loadError = QStringLiteral("load translator file error");
const char s_printChecked[] = "--print-checked";

/** What is logged while it lives, with the level before each text. */
class LoggedMessages
{
public:
    LoggedMessages()
    {
        texts().clear();
        m_before = qInstallMessageHandler(keep);
    }
    ~LoggedMessages() { qInstallMessageHandler(m_before); }
    Q_DISABLE_COPY(LoggedMessages)

    static QStringList& texts()
    {
        static QStringList s_texts;
        return s_texts;
    }

private:
    static void keep(QtMsgType p_type, const QMessageLogContext& p_context, const QString& p_text)
    {
        texts().append(
            QStringLiteral("%1 %2: %3")
                .arg(p_type == QtDebugMsg ? QStringLiteral("debug") : QStringLiteral("other level"),
                     QString::fromLatin1(p_context.category), p_text));
    }

    QtMessageHandler m_before;
};

QStringList oneLoadError() { return {QStringLiteral("debug default: ") + s_loadError}; }

/** The languages of a menu made now. */
QList<QAction*> entriesIn(QMenu& p_menu)
{
    Language::instance()->addMenu(&p_menu);
    return p_menu.actions().last()->menu()->actions();
}

/** The texts of the entries that are checked in a menu made now. */
QStringList checkedEntries()
{
    QMenu menu;
    QStringList checked;
    for (const QAction* entry : entriesIn(menu)) {
        if (entry->isChecked()) {
            checked.append(entry->text());
        }
    }
    return checked;
}

/** A text that only a translation other than Chinese changes. */
QString forwardText() { return QCoreApplication::translate("QObject", "前进"); }
} // namespace

/** The user's own choice of language, which the program doesn't offer as yet. */
class LanguageTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        configSetUp();
        setString(s_key, QString());
    }

    void beforeAnyChoiceEnglishIsChecked()
    {
        QCOMPARE(checkedEntries(), QStringList({QStringLiteral("English")}));
        QVERIFY(!Language::instance()->findChild<QTranslator*>());
    }

    void thereIsOneObjectForAll()
    {
        QVERIFY(Language::instance());
        QCOMPARE(Language::instance(), Language::instance());
        QVERIFY(!Language::instance()->parent());
    }

    void theSettingDecides_data()
    {
        columns<QString, QStringList>("setting", "checked");
        QTest::newRow("Simplified Chinese") << "1" << QStringList(QStringLiteral("简体中文"));
        QTest::newRow("English") << "2" << QStringList(QStringLiteral("English"));
        QTest::newRow("Traditional Chinese") << "3" << QStringList(QStringLiteral("繁体中文"));
        QTest::newRow("no number") << "nonsense" << QStringList();
        QTest::newRow("a code of no language") << "17" << QStringList();
        QTest::newRow("more than a number holds") << "99999999999999" << QStringList();
    }

    void theSettingDecides()
    {
        QFETCH(QString, setting);
        QFETCH(QStringList, checked);
        setString(s_key, setting);
        QTest::ignoreMessage(QtDebugMsg, qPrintable(s_loadError));
        Language::instance()->init();
        QCOMPARE(checkedEntries(), checked);
        QCOMPARE(getString(s_key), setting);
        setString(s_key, QString());
    }

    void withoutASettingTheSystemDecides_data()
    {
        columns<QString, QString>("locale", "checked");
        QTest::newRow("China") << "zh_CN" << QStringLiteral("简体中文");
        QTest::newRow("Taiwan") << "zh_TW" << QStringLiteral("繁体中文");
        QTest::newRow("Japan") << "ja_JP" << QStringLiteral("English");
    }

    // The system's locale is settled when a program starts, so another one has to.
    void withoutASettingTheSystemDecides()
    {
#ifdef Q_OS_WIN
        QSKIP("the locale of a program can't be told from outside");
#endif
        QFETCH(QString, locale);
        QFETCH(QString, checked);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("LANGUAGE"));
        environment.insert(QStringLiteral("LC_ALL"), locale + QStringLiteral(".UTF-8"));
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(QCoreApplication::applicationFilePath(), {QLatin1String(s_printChecked)});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        QCOMPARE(QString::fromUtf8(program.readAllStandardOutput()).trimmed(), checked);
    }

    void withoutItsTranslationsTheSourceTextsStand()
    {
        for (const char* file :
             {":/sketchpad_zh_cn.qm", ":/sketchpad_en.qm", ":/sketchpad_zh_tw.qm"}) {
            QVERIFY(!QFile::exists(QLatin1String(file)));
        }
        for (const int code : {1, 2, 3, 0}) {
            const LoggedMessages logged;
            Language::instance()->setLanguage(code);
            QCOMPARE(LoggedMessages::texts(), oneLoadError());
            QCOMPARE(forwardText(), QStringLiteral("前进"));
        }
    }

    void eachCodeHasItsFile_data()
    {
        columns<QString, QList<int>>("name", "codes");
        row("Simplified Chinese", "sketchpad_zh_cn.qm", QList<int>{1});
        row("English and what is unknown", "sketchpad_en.qm", QList<int>{2, 0, 4, 17, -1});
        row("Traditional Chinese", "sketchpad_zh_tw.qm", QList<int>{3});
    }

    void eachCodeHasItsFile()
    {
        QFETCH(QString, name);
        QFETCH(QList<int>, codes);
        // The English texts of the program do for each language here.
        const QTemporaryDir folder;
        QVERIFY(QFile::copy(QStringLiteral(":/vantrel_en.qm"), folder.filePath(name)));
        QFile list(folder.filePath(QStringLiteral("list.qrc")));
        QVERIFY(list.open(QIODevice::WriteOnly));
        list.write("<RCC><qresource prefix=\"/\"><file>" + name.toUtf8() +
                   "</file></qresource></RCC>");
        list.close();
        const QString resources = folder.filePath(QStringLiteral("resources.rcc"));
        QCOMPARE(QProcess::execute(qEnvironmentVariable("TILER_RCC"),
                                   {QStringLiteral("--binary"), list.fileName(),
                                    QStringLiteral("-o"), resources}),
                 0);
        QVERIFY(QResource::registerResource(resources));
        for (const int code : {1, 2, 3, 0, 4, 17, -1}) {
            const LoggedMessages logged;
            Language::instance()->setLanguage(code);
            const bool loads = codes.contains(code);
            QCOMPARE(forwardText(), loads ? QStringLiteral("Forward") : QStringLiteral("前进"));
            QCOMPARE(LoggedMessages::texts(), loads ? QStringList() : oneLoadError());
        }
        const LoggedMessages logged;
        Language::instance()->setLanguage(codes.first() == 1 ? 2 : 1);
        QVERIFY(QResource::unregisterResource(resources));
    }

    void theNextChoiceRemovesTheTranslationBefore()
    {
        const LoggedMessages logged;
        Language* language = Language::instance();
        language->setLanguage(1);
        const QPointer<QTranslator> first = language->findChild<QTranslator*>();
        QVERIFY(first);
        QCOMPARE(first->parent(), language);
        language->setLanguage(2);
        QVERIFY(first.isNull());
        QCOMPARE(language->findChildren<QTranslator*>().size(), 1);
    }

    void theMenuOffersThreeLanguagesInOrder()
    {
        QMenu menu;
        menu.addAction(QStringLiteral("something before"));
        const QList<QAction*> entries = entriesIn(menu);
        QCOMPARE(menu.actions().size(), 2);
        QCOMPARE(menu.actions().last()->text(), QStringLiteral("选择语言"));
        QStringList texts;
        for (const QAction* entry : entries) {
            texts.append(entry->text());
            QVERIFY(entry->isCheckable());
        }
        QCOMPARE(texts, QStringList({QStringLiteral("简体中文"), QStringLiteral("繁体中文"),
                                     QStringLiteral("English")}));
    }

    void theMenuSpeaksTheLanguageOfTheInterface()
    {
        QTranslator english;
        QVERIFY(english.load(QStringLiteral(":/vantrel_en.qm")));
        QVERIFY(QCoreApplication::installTranslator(&english));
        QMenu menu;
        const QList<QAction*> entries = entriesIn(menu);
        QCOMPARE(menu.actions().first()->text(), QStringLiteral("Select Language"));
        QCOMPARE(entries.at(0)->text(), QStringLiteral("Simplified Chinese"));
        QCOMPARE(entries.at(1)->text(), QStringLiteral("Traditional Chinese"));
        QCOMPARE(entries.at(2)->text(), QStringLiteral("English"));
    }

    void choosingFromTheMenuHasNoEffect()
    {
        const LoggedMessages logged;
        Language* language = Language::instance();
        language->setLanguage(2);
        LoggedMessages::texts().clear();
        const QPointer<QTranslator> before = language->findChild<QTranslator*>();
        QMenu menu;
        for (QAction* entry : entriesIn(menu)) {
            entry->trigger();
        }
        language->onChineseS();
        language->onChineseT();
        language->onEnglish();
        QVERIFY(before);
        QCOMPARE(language->findChildren<QTranslator*>(), QList<QTranslator*>({before}));
        QCOMPARE(LoggedMessages::texts(), QStringList());
        QCOMPARE(getString(s_key), QString());
        QCOMPARE(checkedEntries(), QStringList({QStringLiteral("English")}));
    }

    void aMenuMayGoBeforeTheNextOne()
    {
        const LoggedMessages logged;
        {
            QMenu menu;
            QCOMPARE(entriesIn(menu).size(), 3);
        }
        Language::instance()->setLanguage(3);
        QCOMPARE(checkedEntries(), QStringList({QStringLiteral("繁体中文")}));
    }
};

int main(int p_argc, char** p_argv)
{
    const QApplication application(p_argc, p_argv);
    if (p_argc == 2 && std::strcmp(p_argv[1], s_printChecked) == 0) {
        Language::instance()->init();
        std::puts(checkedEntries().join(QLatin1Char(' ')).toUtf8().constData());
        return 0;
    }
    LanguageTest test;
    return QTest::qExec(&test, p_argc, p_argv);
}

#include "languagetest.moc"
