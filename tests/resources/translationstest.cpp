#include "wordings.h"

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

/** A window whose texts are translated already, while no source asks for them yet. */
struct ToCome {
    const char* context;
    /** Whether the class stands in the sources already, for now without a text. */
    bool standsWithoutTexts;
};

/**
 * The translations hold the texts of windows to come, so that each window finds its English
 * ready when it is built. Until then these contexts alone may have texts that no source asks
 * for. Whoever builds one of them takes it off this list: the test then sees to it that the new
 * window asks for each of its texts.
 */
const ToCome s_windowsToCome[] = {
    {"codeedittoolbar", false}, {"searchDialog", false},    {"replaceDialog", false},
    {"gotoDialog", false},      {"editActionWindow", true}, {"editactionstoolbar", false},
};

/** A single text to come in a context that asks for its other texts already. */
struct TextToCome {
    const char* context;
    const char* source;
};

const TextToCome s_textsToCome[] = {
    // The update of the controller's firmware through the dialog that downloads programs.
    {"buildDialog", "控制器固件有更新,请更新至新的版本"},
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

QString keyOf(const QString& p_context, const QString& p_source)
{
    return p_context + QLatin1Char('|') + p_source;
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
            found.insert(keyOf(name, message.firstChildElement(QStringLiteral("source")).text()),
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

QString contextOf(const QString& p_key) { return p_key.left(p_key.indexOf(QLatin1Char('|'))); }

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

/** What the sources of the program ask for, in a list of lupdate; empty if they can't be read. */
Messages messagesOfSources()
{
    QTemporaryDir folder;
    const QString fresh = folder.filePath(QStringLiteral("fresh.ts"));
    QProcess lupdate;
    lupdate.start(qEnvironmentVariable("TILER_LUPDATE"), roomFolders()
                                                             << QStringLiteral("-ts") << fresh);
    if (!lupdate.waitForFinished(60000) || lupdate.exitCode() != 0) {
        return {};
    }
    // A text without a context is never found at run time.
    const QByteArray said = lupdate.readAllStandardError();
    if (said.contains("cannot")) {
        qWarning("%s", said.constData());
        return {};
    }
    return messagesOf(fresh);
}

QSet<QString> contextsOf(const Messages& p_messages)
{
    QSet<QString> contexts;
    for (auto it = p_messages.constBegin(); it != p_messages.constEnd(); ++it) {
        contexts.insert(contextOf(it.key()));
    }
    return contexts;
}

/** The texts that wait for their windows: those of the lists above whose wording is settled. */
QSet<QString> keysToCome()
{
    QSet<QString> keys;
    for (const Wording& wording : wordings()) {
        for (const ToCome& window : s_windowsToCome) {
            if (wording.context == QLatin1String(window.context)) {
                keys.insert(keyOf(wording.context, wording.source));
            }
        }
    }
    for (const TextToCome& text : s_textsToCome) {
        keys.insert(keyOf(QString::fromUtf8(text.context), QString::fromUtf8(text.source)));
    }
    return keys;
}

/** Whether a source declares the class with its body, or a form draws it. */
bool classStands(const QString& p_name)
{
    const QRegularExpression declared(
        QStringLiteral("\\b(class|struct)\\s+(\\w+\\s+)?%1\\b[^;{]*\\{|<class>%1</class>")
            .arg(p_name));
    for (const QString& room : roomFolders()) {
        QDirIterator files(room,
                           {QStringLiteral("*.cpp"), QStringLiteral("*.h"), QStringLiteral("*.ui")},
                           QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (file.open(QIODevice::ReadOnly) &&
                declared.match(QString::fromUtf8(file.readAll())).hasMatch()) {
                return true;
            }
        }
    }
    return false;
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
    void everySourceTextIsInBothTranslations()
    {
        const Messages needed = messagesOfSources();
        QVERIFY(needed.size() > 100);
        const QSet<QString> toCome = keysToCome();
        for (const char* language : {"en", "zh_cn"}) {
            const Messages there = messagesIn(language);
            for (auto it = needed.constBegin(); it != needed.constEnd(); ++it) {
                QVERIFY2(!there.value(it.key()).isEmpty(),
                         qPrintable(QStringLiteral("not in resources/translations/vantrel_%1.ts: ")
                                        .arg(QLatin1String(language)) +
                                    it.key()));
            }
            for (auto it = there.constBegin(); it != there.constEnd(); ++it) {
                QVERIFY2(needed.contains(it.key()) || toCome.contains(it.key()),
                         qPrintable(QStringLiteral("left over: ") + it.key()));
            }
        }
    }

    void windowsToComeLeaveTheListWhenTheyAreBuilt()
    {
        const Messages needed = messagesOfSources();
        QVERIFY(needed.size() > 100);
        const QSet<QString> asking = contextsOf(needed);
        QVERIFY(asking.contains(QStringLiteral("MainWindow")));
        QVERIFY(classStands(QStringLiteral("MainWindow")));
        QSet<QString> worded;
        for (const Wording& wording : wordings()) {
            worded.insert(wording.context);
        }
        for (const ToCome& window : s_windowsToCome) {
            const QString name = QString::fromLatin1(window.context);
            QVERIFY2(worded.contains(name), window.context);
            const QByteArray advice =
                QByteArray("built by now? Take it off the list: ") + window.context;
            QVERIFY2(!asking.contains(name), advice.constData());
            QVERIFY2(classStands(name) == window.standsWithoutTexts, advice.constData());
        }
        for (const TextToCome& text : s_textsToCome) {
            const QString context = QString::fromUtf8(text.context);
            const QByteArray advice =
                QByteArray("used by now? Take it off the list: ") + text.source;
            QVERIFY2(asking.contains(context), text.context);
            QVERIFY2(!needed.contains(keyOf(context, QString::fromUtf8(text.source))),
                     advice.constData());
        }
    }

    void everyChineseTextOfTheSourcesAsksForItsTranslation()
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
                for (const Literal& literal :
                     chineseLiteralsOf(QString::fromUtf8(file.readAll()))) {
                    if (untranslated.contains(literal.text)) {
                        usedExceptions.insert(literal.text);
                        continue;
                    }
                    ++count;
                    QVERIFY2(asksForTranslation(literal.before),
                             qPrintable(QStringLiteral("%1:%2 %3")
                                            .arg(file.fileName())
                                            .arg(literal.line)
                                            .arg(literal.text)));
                }
            }
        }
        QVERIFY(count > 100);
        QCOMPARE(usedExceptions.size(), untranslated.size());
    }

    void theEnglishTextsAreEnglish()
    {
        const Messages texts = messagesIn("en");
        QVERIFY(texts.size() > 100);
        for (auto it = texts.constBegin(); it != texts.constEnd(); ++it) {
            QVERIFY2(!chinese().match(it.value()).hasMatch(),
                     qPrintable(it.key() + QStringLiteral(" -> ") + it.value()));
        }
    }

    void theChineseTextsAreThoseOfTheSources()
    {
        const Messages texts = messagesIn("zh_cn");
        QVERIFY(texts.size() > 100);
        for (auto it = texts.constBegin(); it != texts.constEnd(); ++it) {
            QCOMPARE(it.value(), sourceOf(it.key()));
        }
    }

    void placesOfNumbersStayInATranslation()
    {
        QCOMPARE(placesIn(QStringLiteral("%2 of %1")), (QStringList{"%1", "%2"}));
        for (const char* language : {"en", "zh_cn"}) {
            const Messages texts = messagesIn(language);
            for (auto it = texts.constBegin(); it != texts.constEnd(); ++it) {
                QVERIFY2(placesIn(it.value()) == placesIn(sourceOf(it.key())),
                         qPrintable(it.key()));
            }
        }
    }

    void bothTranslationsLoad()
    {
        QTranslator english;
        QVERIFY(english.load(QStringLiteral(":/vantrel_en.qm")));
        QCOMPARE(english.translate("QObject", "前进"), QStringLiteral("Forward"));
        QTranslator chinese;
        QVERIFY(chinese.load(QStringLiteral(":/vantrel_zh_cn.qm")));
        QCOMPARE(chinese.translate("QObject", "前进"), QStringLiteral("前进"));
    }

    void noWordingIsGivenTwice()
    {
        QSet<QString> keys;
        for (const Wording& wording : wordings()) {
            const QString key = keyOf(wording.context, wording.source);
            QVERIFY2(!keys.contains(key), qPrintable(key));
            keys.insert(key);
        }
        QVERIFY(keys.size() > 200);
    }

    void theWordingStandsAsItIs_data()
    {
        QTest::addColumn<QByteArray>("context");
        QTest::addColumn<QByteArray>("source");
        QTest::addColumn<QString>("english");
        for (const Wording& wording : wordings()) {
            const QByteArray context = wording.context.toUtf8();
            const QByteArray source = wording.source.toUtf8();
            QTest::addRow("%s %s", context.constData(),
                          QByteArray(source).replace('\n', ' ').constData())
                << context << source << wording.english;
        }
    }

    void theWordingStandsAsItIs()
    {
        QFETCH(QByteArray, context);
        QFETCH(QByteArray, source);
        QFETCH(QString, english);
        for (const char* language : {"en", "zh_cn"}) {
            QTranslator translator;
            QVERIFY(
                translator.load(QStringLiteral(":/vantrel_%1.qm").arg(QLatin1String(language))));
            // The program falls back on the source, which would hide that a text is missing.
            QVERIFY(!translator.translate(context.constData(), source.constData()).isEmpty());
            QVERIFY(QCoreApplication::installTranslator(&translator));
            QCOMPARE(QCoreApplication::translate(context.constData(), source.constData()),
                     qstrcmp(language, "en") == 0 ? english : QString::fromUtf8(source));
        }
    }
};

/** As the program asks for it: through the translator that it installs. */
QTEST_GUILESS_MAIN(TranslationsTest)
#include "translationstest.moc"
