#include "proj/controls/widgethelper.h"
#include "support/system/datatable.h"

#include <QApplication>
#include <QFile>
#include <QFontDatabase>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>
#include <QWidget>

#include <cstdio>
#include <cstring>

/** A subclass that has nothing of its own to paint. */
class Plain : public QWidget
{
    Q_OBJECT

public:
    Plain(bool p_paintsStyle, QWidget* p_parent) : QWidget(p_parent), m_paintsStyle(p_paintsStyle)
    {
        setStyleSheet(QStringLiteral("background-color: rgb(10, 200, 30);"
                                     "border: 3px solid rgb(200, 10, 30);"));
        resize(40, 30);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        if (m_paintsStyle) {
            paintStyle(*this);
        }
    }

private:
    bool m_paintsStyle;
};

namespace
{
const char s_printFont[] = "--print-font";

QColor colourAt(QWidget& p_widget, int p_x, int p_y)
{
    return p_widget.grab().toImage().pixelColor(p_x, p_y);
}

QString fileWith(const QTemporaryDir& p_folder, const QByteArray& p_content)
{
    QFile file(p_folder.filePath(QStringLiteral("style.qss")));
    if (file.open(QIODevice::WriteOnly)) {
        file.write(p_content);
    }
    return file.fileName();
}
} // namespace

/** The helpers with widgets, fonts and styles that several parts share. */
class WidgetHelperTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { qApp->setStyleSheet(QString()); }

    void aStyleSheetTakesEffectOnAPlainWidget()
    {
        // A widget that is painted by itself would get its background in any case.
        QWidget window;
        window.resize(80, 30);
        Plain styled(true, &window);
        Plain plain(false, &window);
        plain.move(40, 0);
        QCOMPARE(colourAt(window, 20, 15), QColor(10, 200, 30));
        QCOMPARE(colourAt(window, 1, 15), QColor(200, 10, 30));
        QCOMPARE(colourAt(window, 60, 15), window.palette().color(QPalette::Window));
    }

    void theApplicationGetsTheStyleOfAFile()
    {
        const QTemporaryDir folder;
        setApplicationStyle(fileWith(folder, "QWidget{background-color: rgb(1, 2, 250);}"));
        QCOMPARE(qApp->styleSheet(), QStringLiteral("QWidget{background-color: rgb(1, 2, 250);}"));
        QWidget widget;
        widget.resize(20, 20);
        QCOMPARE(colourAt(widget, 10, 10), QColor(1, 2, 250));
    }

    void theStyleOfAFileEndsAtAZeroByte()
    {
        const QTemporaryDir folder;
        const QByteArray rule("QLabel{color:red;}");
        setApplicationStyle(fileWith(folder, rule + '\0' + "QLabel{color:blue;}"));
        QCOMPARE(qApp->styleSheet(), QString::fromLatin1(rule));
    }

    void aFileWithoutAStyleTakesTheStyleAway_data()
    {
        columns<bool, QByteArray>("isThere", "content");
        QTest::newRow("no file") << false << QByteArray();
        QTest::newRow("an empty file") << true << QByteArray();
        QTest::newRow("a zero byte first") << true << QByteArray("\0QLabel{color:red;}", 19);
    }

    void aFileWithoutAStyleTakesTheStyleAway()
    {
        QFETCH(bool, isThere);
        QFETCH(QByteArray, content);
        const QTemporaryDir folder;
        qApp->setStyleSheet(QStringLiteral("QLabel{color:red;}"));
        setApplicationStyle(isThere ? fileWith(folder, content)
                                    : folder.filePath(QStringLiteral("none.qss")));
        QCOMPARE(qApp->styleSheet(), QString());
    }

    void withoutTheChineseFontTheApplicationsOwnStands()
    {
        const QFontDatabase fonts;
        if (fonts.hasFamily(QStringLiteral("微软雅黑")) ||
            fonts.hasFamily(QStringLiteral("Microsoft YaHei"))) {
            QSKIP("the font is installed here");
        }
        const QFont before = QApplication::font();
        QApplication::setFont(QFont(QStringLiteral("some family"), 17));
        QCOMPARE(applicationFont(), QApplication::font());
        QCOMPARE(applicationFont().pointSize(), 17);
        QApplication::setFont(before);
    }

#ifdef Q_OS_LINUX

    void theChineseFontIsKnownByEitherName_data()
    {
        columns<QString, QString>("installed", "used");
        const QString chinese = QStringLiteral("微软雅黑");
        const QString english = QStringLiteral("Microsoft YaHei");
        QTest::newRow("in Chinese") << chinese << chinese;
        QTest::newRow("in English") << english << english;
        QTest::newRow("another one") << QStringLiteral("Some Sans") << QString();
    }

    // Fonts are looked for when a program starts, so another one starts, which sees a single font
    // under the name in question.
    void theChineseFontIsKnownByEitherName()
    {
        QFETCH(QString, installed);
        QFETCH(QString, used);
        QProcess match;
        match.start(QStringLiteral("fc-match"), {QStringLiteral("-f"), QStringLiteral("%{file}")});
        const bool found = match.waitForFinished() && match.exitCode() == 0;
        const QString anyFont = QFile::decodeName(match.readAllStandardOutput());
        if (!found || !QFile::exists(anyFont)) {
            QSKIP("no font to rename");
        }
        const QTemporaryDir folder;
        const QString file = QStringLiteral("font.") + QFileInfo(anyFont).suffix();
        QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("fonts")));
        QVERIFY(QFile::copy(anyFont, folder.filePath(QStringLiteral("fonts/") + file)));
        QFile settings(folder.filePath(QStringLiteral("fonts.conf")));
        QVERIFY(settings.open(QIODevice::WriteOnly));
        settings.write(
            QStringLiteral("<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">"
                           "<fontconfig><dir>%1/fonts</dir><cachedir>%1/cache</cachedir>"
                           "<match target=\"scan\"><edit name=\"family\" mode=\"assign\">"
                           "<string>%2</string></edit></match></fontconfig>")
                .arg(folder.path(), installed)
                .toUtf8());
        settings.close();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("FONTCONFIG_FILE"), settings.fileName());
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(QCoreApplication::applicationFilePath(), {QLatin1String(s_printFont)});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitCode(), 0);
        const QString family = QString::fromUtf8(program.readAllStandardOutput()).trimmed();
        QCOMPARE(family, used.isEmpty() ? QStringLiteral("default") : used);
    }

#endif
};

int main(int p_argc, char** p_argv)
{
    const QApplication application(p_argc, p_argv);
    if (p_argc == 2 && std::strcmp(p_argv[1], s_printFont) == 0) {
        QApplication::setFont(QFont(QStringLiteral("default")));
        std::puts(applicationFont().family().toUtf8().constData());
        return 0;
    }
    WidgetHelperTest test;
    return QTest::qExec(&test, p_argc, p_argv);
}

#include "widgethelpertest.moc"
