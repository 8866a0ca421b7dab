#include "shell/interfacelanguage.h"
#include "shell/tztoolbar.h"
#include "support/system/datatable.h"

#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTranslator>

/** The interface in each language, read from live widgets. */
class InterfaceLanguageTest : public QObject
{
    Q_OBJECT

private slots:
    void fontAndTextsFollowTheLanguageCode_data()
    {
        columns<int, int, QString, QString>("code", "points", "download", "cancel");
        row("Simplified Chinese", 1, 10, QStringLiteral("下载"), QStringLiteral("取消"));
        row("any other language", 2, 8, QStringLiteral("Download"), QStringLiteral("Cancel"));
        row("Traditional Chinese sees the same", 3, 10, QStringLiteral("下载"),
            QStringLiteral("取消"));
    }

    void fontAndTextsFollowTheLanguageCode()
    {
        QFETCH(int, code);
        QFETCH(int, points);
        QFETCH(QString, download);
        QFETCH(QString, cancel);
        QTranslator ofQt;
        QTranslator translator;
        setUpInterface(code, translator, ofQt);
        TzToolBar toolBar;
        QCOMPARE(toolBar.font().pointSize(), points);
        QCOMPARE(toolBar.font().family(), QStringLiteral("微软雅黑"));
        QStringList toolTips;
        for (const QPushButton* button : toolBar.findChildren<QPushButton*>()) {
            toolTips << button->toolTip();
        }
        QVERIFY(toolTips.contains(download));
        const QMessageBox box(QMessageBox::Question, QString(), QString(), QMessageBox::Cancel);
        QCOMPARE(box.button(QMessageBox::Cancel)->text().remove(QLatin1Char('&')), cancel);
    }
};

QTEST_MAIN(InterfaceLanguageTest)
#include "interfacelanguagetest.moc"
