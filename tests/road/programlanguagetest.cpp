#include "support/probe/probedprogram.h"

#include <QJsonArray>
#include <QTest>

namespace
{
const char* const s_untitled = " v1.1.2 2020-12-17:  untitled[*]";

QStringList textsOf(const QJsonObject& p_widget)
{
    QStringList texts;
    const QJsonArray actions = p_widget[QStringLiteral("actions")].toArray();
    for (const auto& text : actions) {
        texts << text.toString();
    }
    return texts;
}

QStringList toolTipsOf(const QList<QJsonObject>& p_widgets)
{
    QStringList toolTips;
    for (const QJsonObject& widget : p_widgets) {
        const QString toolTip = widget[QStringLiteral("toolTip")].toString();
        if (!toolTip.isEmpty()) {
            toolTips << toolTip;
        }
    }
    toolTips.sort();
    return toolTips;
}

QStringList words(const char* p_words)
{
    return QString::fromUtf8(p_words).split(QLatin1Char('|'));
}
} // namespace

/** The real program, started on systems of different languages. */
class ProgramLanguageTest : public QObject
{
    Q_OBJECT

private slots:
    void titleMenusAndFontFollowTheSystem_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<bool>("chinese");
        // The texts don't depend on whether the C library knows these locales.
        QTest::newRow("American English") << QStringLiteral("en_US.UTF-8") << false;
        QTest::newRow("Chinese of China") << QStringLiteral("zh_CN.UTF-8") << true;
        QTest::newRow("Chinese of Taiwan: Simplified texts all the same")
            << QStringLiteral("zh_TW.UTF-8") << true;
        QTest::newRow("Japanese: English texts") << QStringLiteral("ja_JP.UTF-8") << false;
        QTest::newRow("no language: English texts") << QStringLiteral("C") << false;
    }

    void titleMenusAndFontFollowTheSystem()
    {
        QFETCH(QString, locale);
        QFETCH(bool, chinese);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("LANGUAGE"));
        for (const QString& name : environment.keys()) {
            if (name.startsWith(QStringLiteral("LC_"))) {
                environment.remove(name);
            }
        }
        environment.insert(QStringLiteral("LANG"), locale);
        ProbedProgram program(environment);
        QVERIFY2(program.run({}), qPrintable(program.story()));

        const QList<QJsonObject> windows = program.visibleWindows();
        QCOMPARE(windows.size(), 1);
        QCOMPARE(windows.first()[QStringLiteral("windowTitle")].toString(),
                 QString::fromUtf8(chinese ? "塔勒积木编程" : "Tiler") + QLatin1String(s_untitled));

        QList<QStringList> menus;
        for (const QJsonObject& menu : program.widgets(QStringLiteral("QMenu"))) {
            const QString title = menu[QStringLiteral("title")].toString();
            // What the menu with a title holds is the user's.
            menus << QStringList(title) + (title.isEmpty() ? textsOf(menu) : QStringList());
        }
        const QList<QStringList> expected{
            words(chinese ? "|新建|打开|保存|另存为|关闭" : "|new|open|save|save as|close"),
            words(chinese ? "|选择控制器|固件升级|检测软件更新|关于"
                          : "|Select Controller|Firmware update|Software Update|About"),
            words(chinese ? "|复制|黏贴|复制并黏贴|取消复制|删除"
                          : "|copy|paste|Copy and paste|Undo copy|Delete"),
            words(chinese ? "最近文档" : "Recent document"),
        };
        for (const QStringList& menu : expected) {
            QVERIFY2(menus.contains(menu), qPrintable(menu.join(QLatin1Char('|'))));
        }
        QStringList toolTips = words(chinese ? "文件|放大|重置缩放|缩小|下载|最近文档|C 语言程序"
                                             : "file|zoom in|Reset and scale|Zoom out|Download|"
                                               "Recent document|C program");
        toolTips.sort();
        QCOMPARE(toolTipsOf(program.widgets(QStringLiteral("QPushButton"))), toolTips);

        QStringList labels;
        for (const QJsonObject& label : program.widgets(QStringLiteral("QLabel"))) {
            labels << label[QStringLiteral("text")].toString();
        }
        QVERIFY(labels.contains(QString::fromUtf8(chinese ? " 程序名: " : " Program name: ")));

        const QJsonObject font{{QStringLiteral("family"), QStringLiteral("微软雅黑")},
                               {QStringLiteral("points"), chinese ? 10 : 8},
                               {QStringLiteral("weight"), 50},
                               {QStringLiteral("italic"), false}};
        QCOMPARE(program.font(), font);
        for (const char* name :
             {"MainWindow", "TzToolBar", "TzBlockWidget", "TzProgramView", "QMenu"}) {
            const QList<QJsonObject> widgets = program.widgets(QLatin1String(name));
            QVERIFY2(!widgets.isEmpty(), name);
            for (const QJsonObject& widget : widgets) {
                QCOMPARE(widget[QStringLiteral("font")].toObject(), font);
            }
        }
    }
};

QTEST_GUILESS_MAIN(ProgramLanguageTest)
#include "programlanguagetest.moc"
