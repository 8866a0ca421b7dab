#include "base/config.h"
#include "support/system/files.h"
#include "support/system/smalldisk.h"
#include "support/system/unprivileged.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

namespace
{
const QString s_key = QStringLiteral("lang.current");
const char s_one[] = "{\"lang.current\": \"1\"}";
const QString s_listKey = QStringLiteral("app_upgrade.ignore_version");

void setText(Config& p_config, const QString& p_text)
{
    p_config.setValue(s_key, {configValue::String, p_text, QStringList()});
}
} // namespace

/** Settings files and places for them that are not as they should be. */
class BadSettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_path = m_folder.filePath(QStringLiteral("config.json"));
        QDir(m_path).removeRecursively();
        QFile::remove(m_path);
        QVERIFY(Unprivileged::openToChanges(m_folder.path()));
    }

    void aBadFileReadsAsEmpty_data()
    {
        const int deep = 100000;
        QTest::addColumn<QByteArray>("content");
        const auto row = [](const char* p_name, const QByteArray& p_content) {
            QTest::newRow(p_name) << p_content;
        };
        row("empty", "");
        row("one zero byte", QByteArray(1, '\0'));
        row("many zero bytes", QByteArray(4096, '\0'));
        row("zero bytes behind it", QByteArray("{\"lang.current\": \"1\"}\0", 22));
        row("text behind it", "{\"lang.current\": \"1\"} and more");
        row("an array", "[\"lang.current\", \"1\"]");
        row("a text", "\"lang.current\"");
        row("invalid UTF-8", "{\"lang.current\": \"1\", \"a\": \"\xff\xfe\"}");
        row("overlong UTF-8", "{\"lang.current\": \"1\", \"a\": \"\xc0\x80\"}");
        row("UTF-16", QByteArray("\xff\xfe{\0}\0", 6));
        row("too large a number", "{\"lang.current\": \"1\", \"a\": 1e999}");
        row("too small a number", "{\"lang.current\": \"1\", \"a\": -1e999}");
        row("a comma too many", "{\"lang.current\": \"1\",}");
        row("deep arrays, open", QByteArray(deep, '['));
        row("deep arrays, closed", QByteArray(deep, '[') + QByteArray(deep, ']'));
        row("deep objects, open", QByteArray("{\"a\":").repeated(deep));
        row("deep objects, closed",
            QByteArray("{\"a\":").repeated(deep) + "1" + QByteArray(deep, '}'));
        row("braces alone", QByteArray(deep, '{'));
        row("deep arrays in a member", "{\"lang.current\": \"1\", \"a\": " + QByteArray(deep, '[') +
                                           QByteArray(deep, ']') + "}");
    }

    void aBadFileReadsAsEmpty()
    {
        QFETCH(QByteArray, content);
        putFile(m_path, content);
        Config config;
        config.load(m_path);
        QCOMPARE(config.value(s_key).text, QString());
        QCOMPARE(contentOf(m_path), content);
        config.save(m_path);
        QCOMPARE(contentOf(m_path), QByteArray("{\n}\n"));
        checkThatItCanBeSaved(config);
    }

    void aStrangeFileReadsAsWhatItHolds_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("text");
        QTest::newRow("a mark of the byte order before it")
            << QByteArray("\xef\xbb\xbf{\"lang.current\": \"1\"}") << QStringLiteral("1");
        QTest::newRow("a zero byte in a text") << QByteArray("{\"lang.current\": \"1\0002\"}", 23)
                                               << QString(QLatin1String("1\0002", 3));
        QTest::newRow("an escaped zero in a text")
            << QByteArray("{\"lang.current\": \"1\\u00002\"}")
            << QString(QLatin1String("1\0002", 3));
        QTest::newRow("an escaped zero in a key")
            << QByteArray("{\"lang\\u0000\": \"9\", \"lang.current\": \"1\"}")
            << QStringLiteral("1");
        QTest::newRow("half a surrogate pair")
            << QByteArray("{\"lang.current\": \"\\ud800\"}") << QString(QChar(0xd800));
        QTest::newRow("a key twice, the latter counts")
            << QByteArray("{\"lang.current\": \"1\", \"lang.current\": \"2\"}")
            << QStringLiteral("2");
        // The other way round Qt loses the memory of the first list.
        QTest::newRow("a key twice, text and list")
            << QByteArray("{\"lang.current\": \"1\", \"lang.current\": [\"2\"]}") << QString();
        QTest::newRow("an empty key")
            << QByteArray("{\"\": \"9\", \"lang.current\": \"1\"}") << QStringLiteral("1");
        QTest::newRow("a very long key")
            << "{\"" + QByteArray(5000000, 'k') + "\": \"9\", \"lang.current\": \"1\"}"
            << QStringLiteral("1");
        QTest::newRow("arrays as deep as can be read")
            << "{\"a\": " + QByteArray(1000, '[') + QByteArray(1000, ']') +
                   ", \"lang.current\": \"1\"}"
            << QStringLiteral("1");
    }

    void aStrangeFileReadsAsWhatItHolds()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, text);
        putFile(m_path, content);
        Config config;
        config.load(m_path);
        QCOMPARE(config.value(s_key).text, text);
        config.save(m_path);
        Config again;
        again.load(m_path);
        QCOMPARE(again.value(s_key).text, text);
        checkThatItCanBeSaved(config);
    }

    void anyCutOfAFileReadsAsEmpty()
    {
        Config whole;
        setText(whole, QStringLiteral("1"));
        whole.setValue(s_listKey, {configValue::StringList, QString(), {QStringLiteral("1.1.3")}});
        whole.save(m_path);
        const QByteArray content = contentOf(m_path);
        QVERIFY(content.endsWith("}\n"));
        // Without its last newline it is still whole.
        for (int length = 0; length < content.size() - 1; ++length) {
            putFile(m_path, content.left(length));
            Config config;
            config.load(m_path);
            QVERIFY2(config.value(s_key).text.isEmpty(), content.left(length).constData());
            QVERIFY2(config.value(s_listKey).list.isEmpty(), content.left(length).constData());
        }
    }

    void aHugeFileIsReadAndWritten()
    {
        const int members = 200000;
        const int textLength = 45000000;
        QByteArray content("{\n");
        for (int i = 0; i < members; ++i) {
            content +=
                "    \"member" + QByteArray::number(members + i) + "\": \"somebody else's\",\n";
        }
        content += "    \"zzz\": \"" + QByteArray(textLength, 'x') + "\"\n}\n";
        QVERIFY(content.size() > 50 * 1000 * 1000);
        putFile(m_path, content);
        Config config;
        config.load(m_path);
        QCOMPARE(config.value(QStringLiteral("zzz")).text.size(), textLength);
        QVERIFY(QFile::remove(m_path));
        config.save(m_path);
        QVERIFY(contentOf(m_path) == content);
    }

    void aFolderInThePlaceOfTheFileStays()
    {
        QVERIFY(QDir().mkpath(m_path + QStringLiteral("/something")));
        Config config;
        config.load(m_path);
        QCOMPARE(config.value(s_key).text, QString());
        setText(config, QStringLiteral("1"));
        config.save(m_path);
        QVERIFY(QFileInfo(m_path + QStringLiteral("/something")).isDir());
        QCOMPARE(config.value(s_key).text, QStringLiteral("1"));
    }

    void aFileInThePlaceOfTheFolderStays()
    {
        const QString location =
            QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
        const QString folder = location + QStringLiteral("/configs");
        QDir(folder).removeRecursively();
        QVERIFY(QDir().mkpath(location));
        putFile(folder, "somebody's");
        configSetUp();
        setString(s_key, QStringLiteral("1"));
        save();
        QCOMPARE(contentOf(folder), QByteArray("somebody's"));
        QCOMPARE(getString(s_key), QStringLiteral("1"));
        QVERIFY(QFile::remove(folder));
    }

    void aPipeOrDeviceInThePlaceOfTheFileHoldsNobodyUp_data()
    {
        QTest::addColumn<QString>("device");
        QTest::newRow("a pipe") << QString();
        QTest::newRow("a device without an end") << QStringLiteral("/dev/zero");
        QTest::newRow("a link to itself") << m_folder.filePath(QStringLiteral("config.json"));
    }

    void aPipeOrDeviceInThePlaceOfTheFileHoldsNobodyUp()
    {
        QFETCH(QString, device);
        if (device.isEmpty()) {
            QCOMPARE(mkfifo(QFile::encodeName(m_path).constData(), 0600), 0);
        } else {
            QVERIFY(QFile::link(device, m_path));
        }
        Config config;
        config.load(m_path);
        QCOMPARE(config.value(s_key).text, QString());
        setText(config, QStringLiteral("1"));
        config.save(m_path);
        QCOMPARE(config.value(s_key).text, QStringLiteral("1"));
        QVERIFY(!QFileInfo(m_path).isFile());
    }

    void whereRightsAreMissingTheSettingsAreKeptAllTheSame_data()
    {
        QTest::addColumn<bool>("isThere");
        QTest::addColumn<int>("rights");
        QTest::addColumn<bool>("folderIsClosed");
        QTest::addColumn<QString>("read");
        QTest::addColumn<QByteArray>("after");
        const QByteArray before = s_one;
        const int toRead = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
        const int toWrite = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
        QTest::newRow("a file that may not be read counts as empty and stays")
            << true << 0 << false << "" << before;
        QTest::newRow("a file that may not be written stays")
            << true << toRead << false << "1" << before;
        QTest::newRow("a folder that may not be changed takes no new file")
            << false << 0 << true << "" << QByteArray("no file");
        // Writing in place has this good side.
        QTest::newRow("a folder that may not be changed takes a file that is there")
            << true << (toRead | toWrite) << true << "1"
            << QByteArray("{\n    \"lang.current\": \"2\"\n}\n");
    }

    void whereRightsAreMissingTheSettingsAreKeptAllTheSame()
    {
        QFETCH(bool, isThere);
        QFETCH(int, rights);
        QFETCH(bool, folderIsClosed);
        QFETCH(QString, read);
        QFETCH(QByteArray, after);
        if (!Unprivileged::works()) {
            QSKIP("the rights can't be given away");
        }
        if (isThere) {
            putFile(m_path, s_one);
            QVERIFY(QFile::setPermissions(m_path, QFile::Permissions(rights)));
        }
        QVERIFY(!folderIsClosed || Unprivileged::closeToChanges(m_folder.path()));
        Config config;
        {
            const Unprivileged user;
            config.load(m_path);
            QCOMPARE(config.value(s_key).text, read);
            setText(config, QStringLiteral("2"));
            config.save(m_path);
        }
        if (isThere) {
            QVERIFY(QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner));
        }
        QCOMPARE(contentOf(m_path), after);
        QCOMPARE(config.value(s_key).text, QStringLiteral("2"));
    }

    void aFullDiskLosesTheFileAndKeepsTheSettings()
    {
        SmallDisk disk("size=256k");
        if (!disk.isMounted()) {
            QSKIP("only the administrator can mount a small disk");
        }
        const QString path = disk.path("config.json");
        putFile(path, s_one);
        disk.fill();
        Config config;
        config.load(path);
        QCOMPARE(config.value(s_key).text, QStringLiteral("1"));
        // More than what the old file gives back.
        const QString longText(100000, QLatin1Char('x'));
        setText(config, longText);
        config.save(path);
        Config next;
        next.load(path);
        QCOMPARE(next.value(s_key).text, QString());
        QCOMPARE(config.value(s_key).text, longText);

        disk.empty();
        config.save(path);
        next.load(path);
        QCOMPARE(next.value(s_key).text, longText);
    }

private:
    void checkThatItCanBeSaved(Config& p_config) const
    {
        setText(p_config, QStringLiteral("3"));
        p_config.save(m_path);
        Config again;
        again.load(m_path);
        QCOMPARE(again.value(s_key).text, QStringLiteral("3"));
    }

    QTemporaryDir m_folder;
    QString m_path;
};

/** What was read, of whatever file, is a good basis for the next settings. */

QTEST_GUILESS_MAIN(BadSettingsTest)
#include "badsettingstest.moc"
