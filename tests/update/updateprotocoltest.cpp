#include "update/updateprotocol.h"
#include "base/systemlanguage.h"
#include "update/updateserver.h"

#include <QtTest>
#include <QUrl>

namespace
{
/** JSON with its quotation marks written as apostrophes. */
QByteArray json(QByteArray p_text) { return p_text.replace('\'', '"'); }
} // namespace

class UpdateProtocolTest : public QObject
{
    Q_OBJECT

private slots:
    // Whatever a test of this build starts, it asks this machine alone.
    void aBuildForTestsAsksNobodyElse()
    {
        const QUrl server(updateServer());
        QCOMPARE(server.scheme(), QStringLiteral("https"));
        QVERIFY2(server.host() == QLatin1String("127.0.0.1"),
                 "tests need a build of a preset for them, such as cmake --preset dev");
    }

    void bothAreAskedAtOneAddressByTheirIdentifiers()
    {
        const QString base = QStringLiteral("https://update.example");
        QCOMPARE(updateQuery(base, QLatin1String(s_programId)),
                 QStringLiteral("https://update.example/app/version?appid=net.korvane.tiler"));
        QCOMPARE(updateQuery(base, QLatin1String(s_firmwareId)),
                 QStringLiteral("https://update.example/app/version?appid=qz417"));
    }

    void anAnswerGivesAllItsFields()
    {
        const std::optional<UpdateRecord> record = parseUpdateReply(
            "{\"state\":1,\"content\":\"\xe6\x96\xb0\",\"en_content\":\"new\",\"ftzw_content\":"
            "\"\xe8\x88\x8a\",\"update\":\"2\",\"appurl\":\"https://a.example/i\",\"msg\":\"fine\","
            "\"appversion\":\"1.1.3\",\"more\":[1]}");
        QVERIFY(record);
        QCOMPARE(record->state, 1);
        QVERIFY(record->isValid());
        QCOMPARE(record->content, QStringLiteral("新"));
        QCOMPARE(record->en_content, QStringLiteral("new"));
        QCOMPARE(record->ftzw_content, QStringLiteral("舊"));
        QCOMPARE(record->update, 2);
        QCOMPARE(record->appurl, QStringLiteral("https://a.example/i"));
        QCOMPARE(record->msg, QStringLiteral("fine"));
        QCOMPARE(record->appversion, QStringLiteral("1.1.3"));
    }

    void anAnswerThatIsNoJsonGivesNoRecord_data()
    {
        QTest::addColumn<QByteArray>("reply");
        const auto row = [](const char* p_name, const QByteArray& p_reply) {
            QTest::newRow(p_name) << p_reply;
        };
        row("nothing", "");
        row("a web page", "<html><body>Hello</body></html>");
        row("cut off", json("{'state':1,'appversion':'1.1"));
        row("more behind the object", json("{'state':1} x"));
        row("a bare number", "1");
        row("zero bytes", QByteArray(16, '\0'));
        row("a comma too much", json("{'state':1,}"));
        row("nested too deep", QByteArray(5000, '[') + QByteArray(5000, ']'));
    }

    void anAnswerThatIsNoJsonGivesNoRecord()
    {
        QFETCH(QByteArray, reply);
        QVERIFY(!parseUpdateReply(reply));
    }

    void anAnswerWithoutAStateSaysThatItsFormIsWrong_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::newRow("other fields") << (json("{'msg':'m','appversion':'9.9'}"));
        QTest::newRow("no field") << QByteArray("{}");
        QTest::newRow("an array") << (json("[{'state':1}]"));
        QTest::newRow("a state in capitals") << (json("{'STATE':1}"));
    }

    void anAnswerWithoutAStateSaysThatItsFormIsWrong()
    {
        QFETCH(QByteArray, reply);
        const std::optional<UpdateRecord> record = parseUpdateReply(reply);
        QVERIFY(record);
        QCOMPARE(record->state, 0);
        QCOMPARE(record->msg, QStringLiteral("数据格式错误"));
        QVERIFY(record->appversion.isEmpty());
    }

    void ofAnAnswerWithAnotherStateOnlyTheMessageIsRead_data()
    {
        QTest::addColumn<QByteArray>("state");
        QTest::addColumn<int>("number");
        QTest::newRow("0") << QByteArray("0") << 0;
        QTest::newRow("2") << QByteArray("2") << 2;
        QTest::newRow("-1") << QByteArray("-1") << -1;
        QTest::newRow("a text") << QByteArray("\"1\"") << 0;
        QTest::newRow("true") << QByteArray("true") << 0;
        QTest::newRow("null") << QByteArray("null") << 0;
        QTest::newRow("a fraction") << QByteArray("1.5") << 0;
        QTest::newRow("too large") << QByteArray("1e300") << 0;
        QTest::newRow("an object") << QByteArray("{}") << 0;
    }

    void ofAnAnswerWithAnotherStateOnlyTheMessageIsRead()
    {
        QFETCH(QByteArray, state);
        QFETCH(int, number);
        const std::optional<UpdateRecord> record =
            parseUpdateReply("{\"state\":" + state +
                             ",\"msg\":\"no such program\",\"appversion\":\"9.9\",\"appurl\":"
                             "\"https://a.example\",\"content\":\"c\",\"update\":\"1\"}");
        QVERIFY(record);
        QVERIFY(!record->isValid());
        QCOMPARE(record->state, number);
        QCOMPARE(record->msg, QStringLiteral("no such program"));
        QVERIFY(record->appversion.isEmpty());
        QVERIFY(record->appurl.isEmpty());
        QVERIFY(record->content.isEmpty());
        QCOMPARE(record->update, 0);
    }

    void aStateOfOneMayHaveAPoint() { QVERIFY(parseUpdateReply(json("{'state':1.0}"))->isValid()); }

    void onlyATextForcesAnUpdate_data()
    {
        QTest::addColumn<QByteArray>("update");
        QTest::addColumn<int>("number");
        QTest::newRow("a number reads as 0") << QByteArray("1") << 0;
        QTest::newRow("true reads as 0") << QByteArray("true") << 0;
        QTest::newRow("no number") << QByteArray("\"yes\"") << 0;
        QTest::newRow("empty") << QByteArray("\"\"") << 0;
        QTest::newRow("0") << QByteArray("\"0\"") << 0;
        QTest::newRow("1") << QByteArray("\"1\"") << 1;
        QTest::newRow("-7") << QByteArray("\"-7\"") << -7;
    }

    void onlyATextForcesAnUpdate()
    {
        QFETCH(QByteArray, update);
        QFETCH(int, number);
        const std::optional<UpdateRecord> record =
            parseUpdateReply("{\"state\":1,\"update\":" + update + "}");
        QVERIFY(record);
        QCOMPARE(record->update, number);
    }

    void fieldsOfAnotherTypeAreEmpty()
    {
        const std::optional<UpdateRecord> record = parseUpdateReply(
            json("{'state':1,'content':5,'appurl':[],'appversion':{},'msg':null}"));
        QVERIFY(record && record->isValid());
        QVERIFY(record->content.isEmpty());
        QVERIFY(record->appurl.isEmpty());
        QVERIFY(record->appversion.isEmpty());
        QVERIFY(record->msg.isEmpty());
    }

    void theNotesAreThoseOfTheLanguage_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("notes");
        QTest::newRow("Chinese, China") << "zh_CN"
                                        << "simplified";
        QTest::newRow("Chinese, Taiwan") << "zh_TW"
                                         << "traditional";
        QTest::newRow("Chinese, Hong Kong") << "zh_HK"
                                            << "traditional";
        QTest::newRow("English") << "en_US"
                                 << "english";
        QTest::newRow("Japanese") << "ja_JP"
                                  << "english";
    }

    void theNotesAreThoseOfTheLanguage()
    {
        QFETCH(QString, locale);
        QFETCH(QString, notes);
        UpdateRecord record;
        record.content = QStringLiteral("simplified");
        record.en_content = QStringLiteral("english");
        record.ftzw_content = QStringLiteral("traditional");
        QCOMPARE(releaseNotes(record, languageCodeOf(QLocale(locale))), notes);
    }

    void aLanguageThatIsNoneGetsTheSimplifiedNotes()
    {
        UpdateRecord record;
        record.content = QStringLiteral("simplified");
        QCOMPARE(releaseNotes(record, 0), QStringLiteral("simplified"));
        QCOMPARE(releaseNotes(record, 7), QStringLiteral("simplified"));
    }

    void onlyWhatComparesAsNewerIsNewer_data()
    {
        QTest::addColumn<QString>("offered");
        QTest::addColumn<QString>("present");
        QTest::addColumn<bool>("newer");
        const auto row = [](const char* p_offered, const char* p_present, bool p_newer) {
            QTest::addRow("%s over %s", p_offered, p_present) << p_offered << p_present << p_newer;
        };
        row("1.1.3", "1.1.2", true);
        row("1.1.2", "1.1.2", false);
        row("1.1.1", "1.1.2", false);
        row("1.1.10", "1.1.9", true);
        row("1.2", "1.2.0", false);
        row("1.2.0", "1.2", true);
        // Each is newer than the other, as is any text of the same value.
        row("1.02", "1.2", true);
        row("1.2", "1.02", true);
        row("", "1.1.2", false);
        row("latest", "1.1.2", false);
        row("0.0.1", "0.0.0", true);
        row("0.0.0", "0.0.-1", true);
        row("0.0.-1", "0.0.0", false);
    }

    void onlyWhatComparesAsNewerIsNewer()
    {
        QFETCH(QString, offered);
        QFETCH(QString, present);
        QFETCH(bool, newer);
        QCOMPARE(isNewerVersion(offered, present), newer);
    }

    void nothingIsDownloadedButOverHttps_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<bool>("may");
        QTest::newRow("https") << "https://a.example/i.exe" << true;
        QTest::newRow("in capitals") << "HTTPS://a.example/i.exe" << true;
        QTest::newRow("http") << "http://a.example/i.exe" << false;
        QTest::newRow("a file") << "file:///etc/passwd" << false;
        QTest::newRow("a path") << "/etc/passwd" << false;
        QTest::newRow("data") << "data:,x" << false;
        QTest::newRow("ftp") << "ftp://a.example/i.exe" << false;
        QTest::newRow("nothing") << "" << false;
        QTest::newRow("no address") << "https://a b:x/" << false;
    }

    void nothingIsDownloadedButOverHttps()
    {
        QFETCH(QString, address);
        QFETCH(bool, may);
        QCOMPARE(mayDownloadFrom(address), may);
    }
};

QTEST_GUILESS_MAIN(UpdateProtocolTest)
#include "updateprotocoltest.moc"
