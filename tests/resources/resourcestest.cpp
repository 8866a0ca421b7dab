#include "blocktables.h"
#include "variables.h"

#include <QDirIterator>
#include <QDomDocument>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>

/** The pictures and translations that the program carries. */
class ResourcesTest : public QObject
{
    Q_OBJECT

private slots:
    void everyPictureCanBeReadAndShowsSomething();
    void everyBlockAndVariableHasItsPictures();
    void everyChooserHasItsPictures();
    void everySourceTextIsInBothTranslations();
    void bothTranslationsLoadAndSpeakTheirLanguage();

private:
    /** Context and source of each message of a translation source, with its translation. */
    static QMap<QString, QString> messages(const QString& p_path);
};

void ResourcesTest::everyPictureCanBeReadAndShowsSomething()
{
    int count = 0;
    QDirIterator pictures(QStringLiteral(":/"), {QStringLiteral("*.png")}, QDir::Files,
                          QDirIterator::Subdirectories);
    while (pictures.hasNext()) {
        const QString path = pictures.next();
        if (path.startsWith(QStringLiteral(":/qt-project.org"))) {
            continue;
        }
        ++count;
        const QImage image(path);
        QVERIFY2(!image.isNull(), qPrintable(path));
        bool painted = false;
        for (int y = 0; y < image.height() && !painted; ++y) {
            for (int x = 0; x < image.width() && !painted; ++x) {
                painted = qAlpha(image.pixel(x, y)) > 32;
            }
        }
        QVERIFY2(painted, qPrintable(path));
    }
    QVERIFY(count > 250);
}

void ResourcesTest::everyBlockAndVariableHasItsPictures()
{
    for (const BlockRecord& record : blockRecords()) {
        QCOMPARE(QImage(record.image).size(), QSize(140, 120));
    }
    QCOMPARE(variableKinds().size(), 26);
    for (const VariableKind& kind : variableKinds()) {
        QVERIFY2(QFile::exists(kind.normalPicture), qPrintable(kind.normalPicture));
        QVERIFY2(QFile::exists(kind.pressedPicture), qPrintable(kind.pressedPicture));
    }
    for (const CategoryRecord& record : categoryRecords()) {
        QVERIFY(QFile::exists(record.selectedImage));
        QVERIFY(QFile::exists(record.normalImage));
    }
}

void ResourcesTest::everyChooserHasItsPictures()
{
    const QList<QPair<QString, QPair<int, int>>> families{
        {QStringLiteral(":/voice/1/%1.png"), {1, 5}},
        {QStringLiteral(":/voice/2/%1.png"), {1, 6}},
        {QStringLiteral(":/voice/3/%1.png"), {1, 2}},
        {QStringLiteral(":/voice/4/%1.png"), {1, 4}},
        {QStringLiteral(":/expression/1/%1.png"), {0, 12}},
        {QStringLiteral(":/expression/2/%1.png"), {0, 4}},
        {QStringLiteral(":/expression/3/%1.png"), {0, 9}},
        {QStringLiteral(":/expression/4/%1.png"), {0, 25}},
        {QStringLiteral(":/expression/5/%1.png"), {0, 11}},
    };
    for (const auto& family : families) {
        for (int i = family.second.first; i <= family.second.second; ++i) {
            const QString path = family.first.arg(i);
            QVERIFY2(QFile::exists(path), qPrintable(path));
        }
        QVERIFY(!QFile::exists(family.first.arg(family.second.second + 1)));
    }
}

QMap<QString, QString> ResourcesTest::messages(const QString& p_path)
{
    QMap<QString, QString> found;
    QFile file(p_path);
    QDomDocument document;
    if (!file.open(QIODevice::ReadOnly) || !document.setContent(&file)) {
        return found;
    }
    const QDomNodeList contexts = document.elementsByTagName(QStringLiteral("context"));
    for (int i = 0; i < contexts.size(); ++i) {
        const QDomElement context = contexts.at(i).toElement();
        const QString name = context.firstChildElement(QStringLiteral("name")).text();
        const QDomNodeList list = context.elementsByTagName(QStringLiteral("message"));
        for (int j = 0; j < list.size(); ++j) {
            const QDomElement message = list.at(j).toElement();
            const QDomElement translation =
                message.firstChildElement(QStringLiteral("translation"));
            found.insert(name + QLatin1Char('|') +
                             message.firstChildElement(QStringLiteral("source")).text(),
                         translation.hasAttribute(QStringLiteral("type")) ? QString()
                                                                          : translation.text());
        }
    }
    return found;
}

void ResourcesTest::everySourceTextIsInBothTranslations()
{
    const QString source = qEnvironmentVariable("TILER_SOURCE");
    QTemporaryDir folder;
    const QString fresh = folder.filePath(QStringLiteral("fresh.ts"));
    QProcess lupdate;
    lupdate.start(qEnvironmentVariable("TILER_LUPDATE"),
                  {source + QStringLiteral("/module"), source + QStringLiteral("/actions"),
                   QStringLiteral("-ts"), fresh});
    QVERIFY(lupdate.waitForFinished(60000));
    QCOMPARE(lupdate.exitCode(), 0);
    const QByteArray said = lupdate.readAllStandardError();
    QVERIFY2(!said.contains("cannot"), said.constData());
    const QMap<QString, QString> needed = messages(fresh);
    QVERIFY(needed.size() > 100);
    for (const char* language : {"en", "zh_cn"}) {
        const QMap<QString, QString> there = messages(
            source +
            QStringLiteral("/resources/translations/vantrel_%1.ts").arg(QLatin1String(language)));
        for (auto it = needed.constBegin(); it != needed.constEnd(); ++it) {
            QVERIFY2(!there.value(it.key()).isEmpty(),
                     qPrintable(it.key() + QLatin1Char(' ') + QLatin1String(language)));
        }
        for (auto it = there.constBegin(); it != there.constEnd(); ++it) {
            QVERIFY2(needed.contains(it.key()),
                     qPrintable(QStringLiteral("left over: ") + it.key()));
        }
    }
}

void ResourcesTest::bothTranslationsLoadAndSpeakTheirLanguage()
{
    QTranslator english;
    QVERIFY(english.load(QStringLiteral(":/vantrel_en.qm")));
    QCOMPARE(english.translate("QObject", "前进"), QStringLiteral("Forward"));
    QCOMPARE(english.translate("TzToolBar", "关于"), QStringLiteral("About"));
    QCOMPARE(english.translate("MainWindow", "打开文件"), QStringLiteral("open file"));
    // A wrong translation, and it is meant.
    QCOMPARE(english.translate("buildDialog", "编译失败！"), QStringLiteral("Compile Success!"));
    QTranslator chinese;
    QVERIFY(chinese.load(QStringLiteral(":/vantrel_zh_cn.qm")));
    QCOMPARE(chinese.translate("QObject", "前进"), QStringLiteral("前进"));
}

QTEST_MAIN(ResourcesTest)
#include "resourcestest.moc"
