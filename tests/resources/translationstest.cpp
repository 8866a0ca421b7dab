#include <QDirIterator>
#include <QDomDocument>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>

namespace
{
/** The folders that hold the program's own sources. */
const char* const s_rooms[] = {"module", "actions", "logging"};

/** Texts in Chinese that mean the same to everyone: the names of fonts. */
const char* const s_untranslated[] = {
    "微软雅黑",
    "font: 9pt \\\"微软雅黑\\\";color:%1;",
};

/** Context, a bar and source of each message of a translation source, with its translation. */
using Messages = QMap<QString, QString>;

/** A text in the sources, with the code that stands before it. */
struct Literal {
    QString before;
    QString text;
    int line;
};

const QRegularExpression& chinese()
{
    static const QRegularExpression s_chinese(
        QStringLiteral("[\\x{3000}-\\x{9fff}\\x{ff00}-\\x{ffef}]"));
    return s_chinese;
}

/** A message that isn't finished, or is marked as obsolete, reads as empty. */
Messages messagesOf(const QString& p_path)
{
    Messages found;
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

QString sourceFolder() { return qEnvironmentVariable("TILER_SOURCE"); }

Messages messagesIn(const char* p_language)
{
    return messagesOf(
        sourceFolder() +
        QStringLiteral("/resources/translations/vantrel_%1.ts").arg(QLatin1String(p_language)));
}

QString sourceOf(const QString& p_key) { return p_key.mid(p_key.indexOf(QLatin1Char('|')) + 1); }

/** The rooms of the program that are there. */
QStringList roomFolders()
{
    QStringList folders;
    for (const char* room : s_rooms) {
        const QString folder = sourceFolder() + QLatin1Char('/') + QLatin1String(room);
        if (QDir(folder).exists()) {
            folders << folder;
        }
    }
    return folders;
}

/** The marks %1, %2, ... of a text, in order. */
QStringList placesIn(const QString& p_text)
{
    QStringList places;
    static const QRegularExpression s_place(QStringLiteral("%L?(\\d{1,2}|n)"));
    for (auto match = s_place.globalMatch(p_text); match.hasNext();) {
        places << match.next().captured();
    }
    places.sort();
    return places;
}

/** The Chinese texts of a source, as they are written in it, without those of its comments. */
QList<Literal> chineseLiteralsOf(const QString& p_code)
{
    static const QRegularExpression s_token(
        QStringLiteral("//[^\\n]*|/\\*.*?\\*/|R\"(\\w*)\\((?<raw>.*?)\\)\\1\""
                       "|(?<!\\w)'(?:[^'\\\\\\n]|\\\\.)*'|\"(?<plain>(?:[^\"\\\\\\n]|\\\\.)*)\""),
        QRegularExpression::DotMatchesEverythingOption);
    QList<Literal> literals;
    for (auto match = s_token.globalMatch(p_code); match.hasNext();) {
        const QRegularExpressionMatch token = match.next();
        const QString text =
            token.captured(QStringLiteral("raw")) + token.captured(QStringLiteral("plain"));
        if (chinese().match(text).hasMatch()) {
            const QString before = p_code.left(token.capturedStart());
            literals.append({before.right(200), text, before.count(QLatin1Char('\n')) + 1});
        }
    }
    return literals;
}

/** Whether a text behind p_before is handed to the translation. */
bool asksForTranslation(const QString& p_before)
{
    static const QRegularExpression s_call(QStringLiteral(
        "(\\btr\\(|\\bQT_TR_NOOP\\(|\\b(translate|QT_TRANSLATE_NOOP)\\(\\s*\"\\w+\",)\\s*$"));
    return s_call.match(p_before).hasMatch();
}
} // namespace

/** The texts of the interface, in the sources and in the two translations. */
class TranslationsTest : public QObject
{
    Q_OBJECT

private slots:
    void everySourceTextIsInBothTranslations();
    void everyChineseTextOfTheSourcesAsksForItsTranslation();
    void theEnglishTextsAreEnglish();
    void theChineseTextsAreThoseOfTheSources();
    void placesOfNumbersStayInATranslation();
    void bothTranslationsLoad();
    void theWordingStandsAsItIs_data();
    void theWordingStandsAsItIs();
};

void TranslationsTest::everySourceTextIsInBothTranslations()
{
    QTemporaryDir folder;
    const QString fresh = folder.filePath(QStringLiteral("fresh.ts"));
    QProcess lupdate;
    lupdate.start(qEnvironmentVariable("TILER_LUPDATE"), roomFolders()
                                                             << QStringLiteral("-ts") << fresh);
    QVERIFY(lupdate.waitForFinished(60000));
    QCOMPARE(lupdate.exitCode(), 0);
    // A text without a context is never found at run time.
    const QByteArray said = lupdate.readAllStandardError();
    QVERIFY2(!said.contains("cannot"), said.constData());
    const Messages needed = messagesOf(fresh);
    QVERIFY(needed.size() > 100);
    for (const char* language : {"en", "zh_cn"}) {
        const Messages there = messagesIn(language);
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

void TranslationsTest::everyChineseTextOfTheSourcesAsksForItsTranslation()
{
    QStringList untranslated;
    for (const char* text : s_untranslated) {
        untranslated << QString::fromUtf8(text);
    }
    QSet<QString> usedExceptions;
    int count = 0;
    for (const QString& room : roomFolders()) {
        QDirIterator files(room, {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            for (const Literal& literal : chineseLiteralsOf(QString::fromUtf8(file.readAll()))) {
                if (untranslated.contains(literal.text)) {
                    usedExceptions.insert(literal.text);
                    continue;
                }
                ++count;
                QVERIFY2(asksForTranslation(literal.before), qPrintable(QStringLiteral("%1:%2 %3")
                                                                            .arg(file.fileName())
                                                                            .arg(literal.line)
                                                                            .arg(literal.text)));
            }
        }
    }
    QVERIFY(count > 100);
    QCOMPARE(usedExceptions.size(), untranslated.size());
}

void TranslationsTest::theEnglishTextsAreEnglish()
{
    const Messages texts = messagesIn("en");
    QVERIFY(texts.size() > 100);
    for (auto it = texts.constBegin(); it != texts.constEnd(); ++it) {
        QVERIFY2(!chinese().match(it.value()).hasMatch(),
                 qPrintable(it.key() + QStringLiteral(" -> ") + it.value()));
    }
}

void TranslationsTest::theChineseTextsAreThoseOfTheSources()
{
    const Messages texts = messagesIn("zh_cn");
    QVERIFY(texts.size() > 100);
    for (auto it = texts.constBegin(); it != texts.constEnd(); ++it) {
        QCOMPARE(it.value(), sourceOf(it.key()));
    }
}

void TranslationsTest::placesOfNumbersStayInATranslation()
{
    QCOMPARE(placesIn(QStringLiteral("%2 of %1")),
             (QStringList{QStringLiteral("%1"), QStringLiteral("%2")}));
    for (const char* language : {"en", "zh_cn"}) {
        const Messages texts = messagesIn(language);
        for (auto it = texts.constBegin(); it != texts.constEnd(); ++it) {
            QVERIFY2(placesIn(it.value()) == placesIn(sourceOf(it.key())), qPrintable(it.key()));
        }
    }
}

void TranslationsTest::bothTranslationsLoad()
{
    QTranslator english;
    QVERIFY(english.load(QStringLiteral(":/vantrel_en.qm")));
    QCOMPARE(english.translate("QObject", "前进"), QStringLiteral("Forward"));
    QTranslator chinese;
    QVERIFY(chinese.load(QStringLiteral(":/vantrel_zh_cn.qm")));
    QCOMPARE(chinese.translate("QObject", "前进"), QStringLiteral("前进"));
}

void TranslationsTest::theWordingStandsAsItIs_data()
{
    QTest::addColumn<QByteArray>("context");
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("english");
    const auto row = [](const char* p_context, const char* p_source, const char* p_english) {
        QTest::addRow("%s %s", p_context, p_english)
            << QByteArray(p_context) << QByteArray(p_source) << QString::fromUtf8(p_english);
    };
    row("MainWindow", "打开文件", "open file");
    row("TzToolBar", "打开文件", "Open file");
    row("TzToolBar", "打开", "open");
    row("TzToolBar", "保存", "save");
    row("MainWindow", "保存", "save");
    row("MainWindow", "保存文件", "Save file");
    row("TzToolBar", "关于", "About");
    row("TzToolBar", "重置缩放", "Reset and scale");
    row("TzToolBar", "放大", "zoom in");
    row("TzToolBar", "缩小", "Zoom out");
    row("TzProgramView", "提示", "Info");
    row("TzProgramView", "取消复制", "Undo copy");
    row("QObject", "等待", "wait");
    row("QObject", "等待触碰", "Wait for touch");
    row("QObject", "循环触碰检测", "Cyclic Touch Detection");
    row("QObject", "遥控变量", "telecontroller");
    row("QObject", "舵机角度变量", "Steering Angle");
    // A failed build says that it succeeded, and it is meant.
    row("buildDialog", "编译成功！", "Compile Success!");
    row("buildDialog", "编译失败！", "Compile Success!");
    row("buildDialog", "下载失败！", "Download Failed!");
    row("buildThread", "控制器连接失败！", "Connect Failed!");
}

void TranslationsTest::theWordingStandsAsItIs()
{
    QFETCH(QByteArray, context);
    QFETCH(QByteArray, source);
    QFETCH(QString, english);
    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral(":/vantrel_en.qm")));
    QCOMPARE(translator.translate(context.constData(), source.constData()), english);
}

QTEST_GUILESS_MAIN(TranslationsTest)
#include "translationstest.moc"
