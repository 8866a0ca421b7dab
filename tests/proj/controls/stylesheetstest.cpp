#include "proj/controls/stylesheets.h"

#include <QtTest>

/** The style sheets that several parts share. */
class StyleSheetsTest : public QObject
{
    Q_OBJECT

private slots:
    void theButtonStyleIsThreeRules()
    {
        QCOMPARE(buttonStyleSheet(QStringLiteral(":/a.png"), QStringLiteral(":/b.png"),
                                  QStringLiteral(":/c.png"), QStringLiteral("white")),
                 QStringLiteral("QPushButton {color:white;border-image:url(:/a.png);}"
                                "QPushButton:hover {border-image:url(:/b.png);}"
                                "QPushButton:pressed {border-image:url(:/c.png);}"));
    }

    void aPercentSignInAPictureStaysAsItIs()
    {
        QCOMPARE(buttonStyleSheet(QStringLiteral("%2"), QStringLiteral("%1"), QStringLiteral("%3"),
                                  QStringLiteral("%1")),
                 QStringLiteral("QPushButton {color:%1;border-image:url(%2);}"
                                "QPushButton:hover {border-image:url(%1);}"
                                "QPushButton:pressed {border-image:url(%3);}"));
    }
};

QTEST_GUILESS_MAIN(StyleSheetsTest)
#include "stylesheetstest.moc"
