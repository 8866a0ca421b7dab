#include "base/commonhelper.h"
#include "support/system/files.h"

#include <QFile>
#include <QSet>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <limits>

namespace
{
/** The seed of the random numbers in these tests. */
const uint s_seed = 20201217;

/** The next random number of a sequence that has given so many. */
int randomAfter(int p_count)
{
    qsrand(s_seed);
    int next = qrand();
    for (int i = 0; i < p_count; ++i) {
        next = qrand();
    }
    return next;
}
} // namespace

/** The helpers without widgets that several parts share. */
class CommonHelperTest : public QObject
{
    Q_OBJECT

private slots:
    void anObjectWrittenIsReadBack()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.json"));
        const QJsonObject object{{QStringLiteral("name"), QStringLiteral("前进")},
                                 {QStringLiteral("count"), 3}};
        writeJson(object, path);
        QCOMPARE(readJson(path), object);
    }

    void aMissingFileReadsAsAnEmptyObject()
    {
        const QTemporaryDir folder;
        QVERIFY(readJson(folder.filePath(QStringLiteral("none.json"))).isEmpty());
    }

    void whatIsNoObjectReadsAsAnEmptyOne_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("an object cut off") << QByteArray("{\"name\": \"cut o");
        QTest::newRow("an array") << QByteArray("[\"name\"]");
    }

    void whatIsNoObjectReadsAsAnEmptyOne()
    {
        QFETCH(QByteArray, content);
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.json"));
        putFile(path, content);
        QVERIFY(readJson(path).isEmpty());
    }

    void writingReplacesALongerFile()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.json"));
        writeJson({{QStringLiteral("long"), QString(500, QLatin1Char('x'))}}, path);
        const QJsonObject shorter{{QStringLiteral("a"), QStringLiteral("b")}};
        writeJson(shorter, path);
        QCOMPARE(contentOf(path), QByteArray("{\n    \"a\": \"b\"\n}\n"));
    }

    void elementsOfAnArrayThatAreNoTextsGiveEmptyTexts()
    {
        const QJsonArray array{QStringLiteral("1.1.3"), 5, true};
        QCOMPARE(toStringList(array), QStringList({"1.1.3", QString(), QString()}));
    }

    void aTextIsWrittenAsLatin1AndReplacesALongerFile()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.txt"));
        writeText(QString(500, QLatin1Char('x')), path);
        QCOMPARE(contentOf(path), QByteArray(500, 'x'));
        writeText(QStringLiteral("a\n\u00e9 前 b"), path);
        QCOMPARE(contentOf(path), QByteArray("a\n\xe9 ? b"));
        writeText(QString(), path);
        QCOMPARE(contentOf(path), QByteArray());
    }

    void whatCannotBeWrittenIsLostSilently()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("no such folder/a"));
        writeText(QStringLiteral("a"), path);
        writeJson({{QStringLiteral("a"), QStringLiteral("b")}}, path);
        QVERIFY(!QFile::exists(path));
    }

    void randomNumbersCountFromTheLowest()
    {
        QCOMPARE((qsrand(s_seed), randomNumber(0, 9)), randomAfter(0) % 10);
        QCOMPARE((qsrand(s_seed), randomNumber(3, 14)), 3 + randomAfter(0) % 12);
        QCOMPARE((qsrand(s_seed), randomNumber(-20, -7)), -20 + randomAfter(0) % 14);
        const int third = randomAfter(2);
        qsrand(s_seed);
        randomNumber(1, 6);
        randomNumber(1, 6);
        QCOMPARE(randomNumber(1, 6), 1 + third % 6);
    }

    void randomNumbersReachBothEndsAndNothingElse_data()
    {
        QTest::addColumn<int>("low");
        QTest::addColumn<int>("high");
        QTest::newRow("a die") << 1 << 6;
        QTest::newRow("a coin") << 0 << 1;
        QTest::newRow("below zero") << -9 << -5;
        QTest::newRow("on both sides of zero") << -3 << 3;
        QTest::newRow("at the lower end of integers")
            << std::numeric_limits<int>::min() << std::numeric_limits<int>::min() + 3;
        QTest::newRow("at the upper end of integers")
            << std::numeric_limits<int>::max() - 3 << std::numeric_limits<int>::max();
    }

    void randomNumbersReachBothEndsAndNothingElse()
    {
        QFETCH(int, low);
        QFETCH(int, high);
        qsrand(s_seed);
        QSet<int> seen;
        for (int i = 0; i < 1000; ++i) {
            const int number = randomNumber(low, high);
            QVERIFY(number >= low);
            QVERIFY(number <= high);
            seen.insert(number);
        }
        QCOMPARE(seen.size(), high - low + 1);
    }

    void aRandomNumberOfOneAloneTakesNoneFromTheSequence_data()
    {
        QTest::addColumn<int>("low");
        QTest::addColumn<int>("high");
        QTest::newRow("zero") << 0 << 0;
        QTest::newRow("five") << 5 << 5;
        QTest::newRow("below zero") << -5 << -5;
        QTest::newRow("the lowest")
            << std::numeric_limits<int>::min() << std::numeric_limits<int>::min();
        QTest::newRow("the highest")
            << std::numeric_limits<int>::max() << std::numeric_limits<int>::max();
        QTest::newRow("a range of none") << 5 << 4;
        QTest::newRow("a range the wrong way round")
            << std::numeric_limits<int>::max() << std::numeric_limits<int>::min();
    }

    void aRandomNumberOfOneAloneTakesNoneFromTheSequence()
    {
        QFETCH(int, low);
        QFETCH(int, high);
        const int first = randomAfter(0);
        qsrand(s_seed);
        QCOMPARE(randomNumber(low, high), low);
        QCOMPARE(qrand(), first);
    }

    void aRandomNumberOfAllIntegersDoesNotOverflow()
    {
        const int low = std::numeric_limits<int>::min();
        const int drawn = randomAfter(0);
        qsrand(s_seed);
        QCOMPARE(randomNumber(low, std::numeric_limits<int>::max()), low + drawn);
        qsrand(s_seed);
        QCOMPARE(randomNumber(-1, std::numeric_limits<int>::max()), -1 + drawn);
    }

    void aRandomTextHasItsLength()
    {
        QCOMPARE(randomString(0), QString());
        QCOMPARE(randomString(-1), QString());
        QCOMPARE(randomString(std::numeric_limits<int>::min()), QString());
        QCOMPARE(randomString(1).size(), 1);
        QCOMPARE(randomString(40).size(), 40);
    }

    void aRandomTextIsOfDigitsAndLetters()
    {
        const QString characters =
            QStringLiteral("0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ");
        qsrand(s_seed);
        QString expected;
        for (int i = 0; i < 5000; ++i) {
            expected += characters.at(qrand() % 62);
        }
        qsrand(s_seed);
        const QString text = randomString(5000);
        QCOMPARE(text, expected);
        for (const QChar character : characters) {
            QVERIFY(text.contains(character));
        }
    }

    void versionsAreComparedNumberByNumber_data()
    {
        QTest::addColumn<QString>("a");
        QTest::addColumn<QString>("b");
        QTest::addColumn<int>("order");
        QTest::addColumn<int>("turnedRound");
        const auto row = [](const char* p_a, const char* p_b, int p_order, int p_turnedRound) {
            QTest::addRow("%s and %s", p_a, p_b)
                << QString::fromLatin1(p_a) << QString::fromLatin1(p_b) << p_order << p_turnedRound;
        };
        row("1.1.2", "1.1.2", 0, 0);
        row("1.1.3", "1.1.2", 1, -1);
        row("1.2.0", "1.1.9", 1, -1);
        row("2.0.0", "1.9.9", 1, -1);
        row("1.10", "1.9", 1, -1);
        row("1.1.10", "1.1.9", 1, -1);
        row("1.2.0", "1.2", 1, -1);
        row("1.2.0.0", "1.2.0", 1, -1);
        row("1.3", "1.2.9", 1, -1);
        row("1.02", "1.2", 1, 1);
        row("1.a", "1.b", 1, 1);
        row("a", "A", 1, 1);
        row("1.x", "1.0", 1, 1);
        row("1.1", "1.x", 1, -1);
        row("1.x", "1.-1", 1, -1);
        row("1..2", "1.0.2", 1, 1);
        row("1..3", "1.0.2", 1, -1);
        row("1.", "1", 1, -1);
        row("0.0.0", "", 1, -1);
        row("1", "", 1, -1);
        row("", "", 0, 0);
        row("1.99999999999", "1.0", 1, 1);
        row("1.1", "1.99999999999", 1, -1);
        row("1.0x10", "1.9", -1, 1);
    }

    void versionsAreComparedNumberByNumber()
    {
        QFETCH(QString, a);
        QFETCH(QString, b);
        QFETCH(int, order);
        QFETCH(int, turnedRound);
        QCOMPARE(compareVersions(a, b), order);
        QCOMPARE(compareVersions(b, a), turnedRound);
    }

    void thereIsOneCommonHelperForAll()
    {
        CommonHelper* helper = CommonHelper::instance();
        QVERIFY(helper);
        QCOMPARE(CommonHelper::instance(), helper);
        QVERIFY(!helper->parent());
        const QSignalSpy types(helper, &CommonHelper::controllerTypeChanged);
        emit helper->controllerTypeChanged(3);
        QCOMPARE(types, QList<QVariantList>({{3}}));
    }
};

QTEST_GUILESS_MAIN(CommonHelperTest)
#include "commonhelpertest.moc"
