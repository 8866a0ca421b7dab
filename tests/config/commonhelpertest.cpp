#include "commonhelper.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

/** The JSON helpers and the style sheets that several parts share. */
class CommonHelperTest : public QObject
{
    Q_OBJECT

private slots:
    void anObjectWrittenIsReadBack();
    void aMissingFileReadsAsAnEmptyObject();
    void aBrokenFileReadsAsAnEmptyObject();
    void aFileThatHoldsAnArrayReadsAsAnEmptyObject();
    void writingReplacesALongerFile();
    void elementsOfAnArrayThatAreNoTextsGiveEmptyTexts();
    void theButtonStyleIsThreeRules();
};

void CommonHelperTest::anObjectWrittenIsReadBack()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.json"));
    const QJsonObject object{{QStringLiteral("name"), QStringLiteral("前进")},
                             {QStringLiteral("count"), 3}};
    writeJson(object, path);
    QCOMPARE(readJson(path), object);
}

void CommonHelperTest::aMissingFileReadsAsAnEmptyObject()
{
    const QTemporaryDir folder;
    QVERIFY(readJson(folder.filePath(QStringLiteral("none.json"))).isEmpty());
}

void CommonHelperTest::aBrokenFileReadsAsAnEmptyObject()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("a.json")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("{\"name\": \"cut o");
    file.close();
    QVERIFY(readJson(file.fileName()).isEmpty());
}

void CommonHelperTest::aFileThatHoldsAnArrayReadsAsAnEmptyObject()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("a.json")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[\"name\"]");
    file.close();
    QVERIFY(readJson(file.fileName()).isEmpty());
}

void CommonHelperTest::writingReplacesALongerFile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.json"));
    writeJson({{QStringLiteral("long"), QString(500, QLatin1Char('x'))}}, path);
    const QJsonObject shorter{{QStringLiteral("a"), QStringLiteral("b")}};
    writeJson(shorter, path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("{\n    \"a\": \"b\"\n}\n"));
}

void CommonHelperTest::elementsOfAnArrayThatAreNoTextsGiveEmptyTexts()
{
    const QJsonArray array{QStringLiteral("1.1.3"), 5, true};
    QCOMPARE(toStringList(array), QStringList({QStringLiteral("1.1.3"), QString(), QString()}));
}

void CommonHelperTest::theButtonStyleIsThreeRules()
{
    QCOMPARE(buttonStyleSheet(QStringLiteral(":/a.png"), QStringLiteral(":/b.png"),
                              QStringLiteral(":/c.png"), QStringLiteral("white")),
             QStringLiteral("QPushButton {color:white;border-image:url(:/a.png);}"
                            "QPushButton:hover {border-image:url(:/b.png);}"
                            "QPushButton:pressed {border-image:url(:/c.png);}"));
}

QTEST_GUILESS_MAIN(CommonHelperTest)
#include "commonhelpertest.moc"
