#include "base/config.h"
#include "support/system/files.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

/** The settings and their file. */
class ConfigTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_path = m_folder.filePath(QStringLiteral("config.json"));
        const QString location =
            QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
        m_storePath = location + QStringLiteral("/configs/config.json");
        QDir(location + QStringLiteral("/configs")).removeRecursively();
    }

    void beforeTheSetUpAllReadsAreEmpty()
    {
        QVERIFY(QDir().mkpath(QFileInfo(m_storePath).path()));
        putFile(m_storePath, "{\"somebody.else\": \"kept\", \"some.list\": [\"a\"]}");
        QCOMPARE(getString(QStringLiteral("somebody.else")), QString());
        QCOMPARE(getStringList(QStringLiteral("some.list")), QStringList());
        QVERIFY(QDir(QFileInfo(m_storePath).path()).removeRecursively());
    }

    void aSettingByDefaultIsAnEmptyText()
    {
        const configValue value;
        QCOMPARE(value.kind, 1);
        QCOMPARE(value.text, QString());
        QCOMPARE(value.list, QStringList());
        // Whatever isn't of kind 1 is written as a list.
        Config config;
        config.setValue(QStringLiteral("a"), {7, QStringLiteral("text"), {QStringLiteral("list")}});
        QCOMPARE(savedBy(config), QByteArray("{\n    \"a\": [\n        \"list\"\n    ]\n}\n"));
    }

    void withoutAFileAllReadsAreEmptyAndNoFileAppearsBeforeTheFirstSave()
    {
        configSetUp();
        QCOMPARE(getString(QStringLiteral("fw.update_time")), QString());
        QCOMPARE(getStringList(QStringLiteral("app_upgrade.ignore_version")), QStringList());
        setString(QStringLiteral("lang.current"), QStringLiteral("2"));
        QVERIFY(!QFile::exists(m_storePath));
        save();
        QVERIFY(QFile::exists(m_storePath));
    }

    void setUpMakesTheFolderOfTheFile()
    {
        QDir folder = QFileInfo(m_storePath).dir();
        QVERIFY(folder.removeRecursively());
        configSetUp();
        QVERIFY(folder.exists());
    }

    void whatWasSavedIsThereAtTheNextSetUp()
    {
        setString(QStringLiteral("lang.current"), QStringLiteral("1"));
        setStringList(QStringLiteral("app_upgrade.ignore_version"), {QStringLiteral("1.1.3")});
        save();
        setString(QStringLiteral("lang.current"), QStringLiteral("3"));
        setStringList(QStringLiteral("app_upgrade.ignore_version"), {});
        configSetUp();
        QCOMPARE(getString(QStringLiteral("lang.current")), QStringLiteral("1"));
        QCOMPARE(getStringList(QStringLiteral("app_upgrade.ignore_version")),
                 QStringList({"1.1.3"}));
    }

    void aValueThatWasNotSavedIsNotInTheFile()
    {
        setString(QStringLiteral("lang.current"), QStringLiteral("1"));
        save();
        setString(QStringLiteral("lang.current"), QStringLiteral("9"));
        const QByteArray content = contentOf(m_storePath);
        QVERIFY2(content.contains("\"lang.current\": \"1\""), content.constData());
    }

    void theFileHasItsMembersInKeyOrderAndIndented()
    {
        Config config;
        config.setValue(QStringLiteral("lang.current"),
                        {configValue::String, QStringLiteral("2"), QStringList()});
        config.setValue(QStringLiteral("app_upgrade.ignore_version"),
                        {configValue::StringList, QString(), {QStringLiteral("1.1.3")}});
        config.setValue(QStringLiteral("app_upgrade.installer_deleted"),
                        {configValue::String, QStringLiteral("1"), QStringList()});
        QCOMPARE(savedBy(config), QByteArray("{\n"
                                             "    \"app_upgrade.ignore_version\": [\n"
                                             "        \"1.1.3\"\n"
                                             "    ],\n"
                                             "    \"app_upgrade.installer_deleted\": \"1\",\n"
                                             "    \"lang.current\": \"2\"\n"
                                             "}\n"));
    }

    void whatIsNoTextReadsAsAnEmptyOneAndIsWrittenBackSo_data()
    {
        QTest::addColumn<QByteArray>("member");
        QTest::newRow("a number") << QByteArray("5");
        QTest::newRow("true") << QByteArray("true");
        QTest::newRow("null") << QByteArray("null");
        QTest::newRow("an object") << QByteArray("{\"lang.current\": \"2\"}");
    }

    void whatIsNoTextReadsAsAnEmptyOneAndIsWrittenBackSo()
    {
        QFETCH(QByteArray, member);
        putFile(m_path, "{\"lang.current\": " + member + "}");
        Config config;
        config.load(m_path);
        QCOMPARE(config.value(QStringLiteral("lang.current")).kind,
                 static_cast<int>(configValue::String));
        QCOMPARE(config.value(QStringLiteral("lang.current")).text, QString());
        QCOMPARE(savedBy(config), QByteArray("{\n    \"lang.current\": \"\"\n}\n"));
    }

    void anArrayOfNumbersReadsAsAListOfEmptyTexts()
    {
        putFile(m_path, "{\"app_upgrade.ignore_version\": [1, 2]}");
        Config config;
        config.load(m_path);
        const configValue value = config.value(QStringLiteral("app_upgrade.ignore_version"));
        QCOMPARE(value.kind, static_cast<int>(configValue::StringList));
        QCOMPARE(value.list, QStringList({QString(), QString()}));
    }

    void aTextOverAListBecomesATextInTheFile()
    {
        const QString key = QStringLiteral("app_upgrade.ignore_version");
        setStringList(key, {QStringLiteral("1.1.3"), QStringLiteral("1.1.4")});
        setString(key, QStringLiteral("plain"));
        QCOMPARE(getStringList(key), QStringList());
        save();
        QCOMPARE(stored(key), QJsonValue(QStringLiteral("plain")));
    }

    void aListOverATextBecomesAnArrayInTheFile()
    {
        const QString key = QStringLiteral("lang.current");
        setString(key, QStringLiteral("plain"));
        setStringList(key, {QStringLiteral("a"), QStringLiteral("b")});
        QCOMPARE(getString(key), QString());
        save();
        QVERIFY(stored(key).isArray());
    }

    void keysUnknownToTheProgramSurviveALoadAndASave()
    {
        const QByteArray content("{\n    \"somebody.else\": \"kept\"\n}\n");
        putFile(m_path, content);
        Config config;
        config.load(m_path);
        QVERIFY(QFile::remove(m_path));
        QCOMPARE(savedBy(config), content);
    }

    void anObjectIsNotWalkedAndReadsAsAnEmptyText()
    {
        putFile(m_path, "{\"fw\": {\"update_time\": \"today\"}}");
        Config config;
        config.load(m_path);
        QCOMPARE(config.value(QStringLiteral("fw.update_time")).text, QString());
        QCOMPARE(config.value(QStringLiteral("update_time")).text, QString());
        QCOMPARE(savedBy(config), QByteArray("{\n    \"fw\": \"\"\n}\n"));
    }

    void aGetterOfTheWrongKindReadsAsEmpty()
    {
        setString(QStringLiteral("t"), QStringLiteral("text"));
        setStringList(QStringLiteral("l"), {QStringLiteral("list")});
        QCOMPARE(getStringList(QStringLiteral("t")), QStringList());
        QCOMPARE(getString(QStringLiteral("l")), QString());
    }

    void aGetterAddsNoKey()
    {
        QCOMPARE(getString(QStringLiteral("never.set")), QString());
        QCOMPARE(getStringList(QStringLiteral("never.set")), QStringList());
        save();
        QVERIFY(QFile::exists(m_storePath));
        QVERIFY(!contentOf(m_storePath).contains("never.set"));
    }

    void aBrokenFileReadsAsEmpty()
    {
        putFile(m_path, "{\"lang.current\": \"2\"");
        Config config;
        config.load(m_path);
        QCOMPARE(config.value(QStringLiteral("lang.current")).text, QString());
        QCOMPARE(savedBy(config), QByteArray("{\n}\n"));
    }

    void aFileLoadedLaterReplacesWhatItHoldsAndKeepsTheRest()
    {
        Config config;
        config.setValue(QStringLiteral("a"), {configValue::String, QStringLiteral("1"), {}});
        config.setValue(QStringLiteral("b"), {configValue::String, QStringLiteral("1"), {}});
        putFile(m_path, "{\"b\": \"2\"}");
        config.load(m_path);
        QCOMPARE(config.value(QStringLiteral("a")).text, QStringLiteral("1"));
        QCOMPARE(config.value(QStringLiteral("b")).text, QStringLiteral("2"));
    }

    void anUnwritablePlaceLosesTheChangesSilently()
    {
        Config config;
        config.setValue(QStringLiteral("a"), {configValue::String, QStringLiteral("1"), {}});
        const QString path = m_folder.filePath(QStringLiteral("no such folder/config.json"));
        config.save(path);
        QVERIFY(!QFile::exists(path));
        QCOMPARE(config.value(QStringLiteral("a")).text, QStringLiteral("1"));
    }

    void savingMakesNoFolder()
    {
        const QDir folder = QFileInfo(m_storePath).dir();
        QVERIFY(QDir(folder).removeRecursively());
        setString(QStringLiteral("lang.current"), QStringLiteral("1"));
        save();
        QVERIFY(!folder.exists());
        QCOMPARE(getString(QStringLiteral("lang.current")), QStringLiteral("1"));
    }

private:
    QJsonValue stored(const QString& p_key) const
    {
        return QJsonDocument::fromJson(contentOf(m_storePath)).object().value(p_key);
    }

    QByteArray savedBy(const Config& p_config) const
    {
        p_config.save(m_path);
        return contentOf(m_path);
    }

    QTemporaryDir m_folder;
    QString m_path;
    QString m_storePath;
};

QTEST_GUILESS_MAIN(ConfigTest)
#include "configtest.moc"
