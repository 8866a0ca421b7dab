#include "aboutdialog.h"
#include "programversion.h"

#include <QLabel>
#include <QPushButton>
#include <QtTest>

/** The about box. */
class AboutDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void itTellsNameAndVersionAndLinksToTheSite();
    void everyTextIsShownWhole();
    void theCloseButtonClosesIt();
    void itIsDraggedByItsBody();
};

void AboutDialogTest::itTellsNameAndVersionAndLinksToTheSite()
{
    aboutDialog dialog;
    const auto text = [&dialog](const char* p_name) {
        return dialog.findChild<QLabel*>(QString::fromLatin1(p_name))->text();
    };
    QCOMPARE(text("titleLabel"), QStringLiteral("塔勒积木编程"));
    QCOMPARE(text("nameLabel"), QStringLiteral("名称: 塔勒积木编程"));
    QCOMPARE(text("versionLabel"), QStringLiteral("版本: ") + programVersion());
    QVERIFY(text("infoLabel").contains(QStringLiteral("更多信息请访问")));
    QVERIFY(text("infoLabel").contains(QStringLiteral("href=\"https://")));
    QVERIFY(dialog.findChild<QLabel*>(QStringLiteral("infoLabel"))->openExternalLinks());
    QVERIFY(dialog.windowFlags() & Qt::FramelessWindowHint);
    QVERIFY(dialog.testAttribute(Qt::WA_TranslucentBackground));
}

void AboutDialogTest::everyTextIsShownWhole()
{
    aboutDialog dialog;
    dialog.show();
    const QList<QLabel*> labels = dialog.findChildren<QLabel*>();
    QCOMPARE(labels.size(), 4);
    for (const QLabel* label : labels) {
        const QSize needed = label->sizeHint();
        QVERIFY2(needed.width() <= label->width(), qPrintable(label->text()));
        QVERIFY2(needed.height() <= label->height(), qPrintable(label->text()));
        QVERIFY(dialog.rect().contains(label->geometry()));
    }
}

void AboutDialogTest::theCloseButtonClosesIt()
{
    aboutDialog dialog;
    dialog.show();
    QTest::mouseClick(dialog.findChild<QPushButton*>(), Qt::LeftButton);
    QVERIFY(!dialog.isVisible());
}

void AboutDialogTest::itIsDraggedByItsBody()
{
    aboutDialog dialog;
    dialog.move(100, 100);
    dialog.show();
    const QPoint before = dialog.pos();
    QTest::mousePress(&dialog, Qt::LeftButton, Qt::NoModifier, QPoint(20, 60));
    const QPoint target = dialog.mapToGlobal(QPoint(50, 45));
    QMouseEvent move(QEvent::MouseMove, dialog.mapFromGlobal(target), target, Qt::LeftButton,
                     Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&dialog, &move);
    QCOMPARE(dialog.pos() - before, QPoint(30, -15));
}

QTEST_MAIN(AboutDialogTest)
#include "aboutdialogtest.moc"
