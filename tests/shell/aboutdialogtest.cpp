#include "shell/aboutdialog.h"
#include "base/programversion.h"
#include "support/system/datatable.h"

#include <QDesktopServices>
#include <QLabel>
#include <QPushButton>
#include <QTranslator>
#include <QtTest>

/** Takes the place of the desktop when a link is opened. */
class Desktop : public QObject
{
    Q_OBJECT

public:
    Desktop() { QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "open"); }
    ~Desktop() override { QDesktopServices::unsetUrlHandler(QStringLiteral("https")); }
    Q_DISABLE_COPY(Desktop)

    QList<QUrl> m_opened;

public slots:
    void open(const QUrl& p_url) { m_opened.append(p_url); }
};

namespace
{
/** Moves the mouse over a widget, its left button down, by way of the widgets below it. */
void moveMouse(QWidget& p_widget, const QPoint& p_global)
{
    QMouseEvent move(QEvent::MouseMove, p_widget.mapFromGlobal(p_global), p_global, Qt::LeftButton,
                     Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&p_widget, &move);
}
} // namespace

/** The about box. */
class AboutDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void itTellsNameAndVersionAndLinksToTheSite()
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

    void itsTextsAreTranslated()
    {
        QTranslator english;
        QVERIFY(english.load(QStringLiteral(":/vantrel_en.qm")));
        QVERIFY(QCoreApplication::installTranslator(&english));
        const aboutDialog dialog;
        const QString title = english.translate("QObject", "塔勒积木编程");
        QVERIFY(!title.isEmpty());
        const auto text = [&dialog](const char* p_name) {
            return dialog.findChild<QLabel*>(QString::fromLatin1(p_name))->text();
        };
        QCOMPARE(text("titleLabel"), title);
        QCOMPARE(dialog.windowTitle(), title);
        QCOMPARE(text("nameLabel"), QStringLiteral("Name: ") + title);
        QCOMPARE(text("versionLabel"), QStringLiteral("Version: ") + programVersion());
        QVERIFY(text("infoLabel").startsWith(QStringLiteral("More Information")));
    }

    void itsTextsHaveTheirFontAndColour()
    {
        aboutDialog dialog;
        dialog.show();
        for (const QLabel* label : dialog.findChildren<QLabel*>()) {
            QVERIFY(label->styleSheet().contains(QStringLiteral("font: 9pt \"微软雅黑\";")));
            QCOMPARE(label->font().pointSize(), 9);
            QCOMPARE(label->font().family(), QStringLiteral("微软雅黑"));
        }
        const auto* info = dialog.findChild<QLabel*>(QStringLiteral("infoLabel"));
        QVERIFY(info->text().contains(QStringLiteral("<a style=\"color:white;\"")));
    }

    void everyTextIsShownWhole() { checkThatTextsAreShownWhole(); }

    void everyTextIsShownWholeInEnglish()
    {
        QTranslator english;
        QVERIFY(english.load(QStringLiteral(":/vantrel_en.qm")));
        QVERIFY(QCoreApplication::installTranslator(&english));
        checkThatTextsAreShownWhole();
    }

    void itsCornersAreRound()
    {
        const aboutDialog dialog;
        const QImage picture(QStringLiteral(":/guanyutankuang-400x210.png"));
        QCOMPARE(qAlpha(picture.pixel(0, 0)), 0);
        QVERIFY(dialog.mask().contains(dialog.rect().center()));
        QVERIFY(!dialog.mask().contains(dialog.rect().topLeft()));
        QVERIFY(!dialog.mask().contains(dialog.rect().bottomRight()));
    }

    void thePictureIsItsBackground()
    {
        aboutDialog dialog;
        const QList<QWidget*> children = dialog.findChildren<QWidget*>();
        qDeleteAll(children);
        const QImage picture = QImage(QStringLiteral(":/guanyutankuang-400x210.png"))
                                   .convertToFormat(QImage::Format_RGB32);
        QCOMPARE(picture.size(), dialog.size());
        const QImage shown = dialog.grab().toImage().convertToFormat(QImage::Format_RGB32);
        for (int x = 20; x < picture.width() - 20; x += 7) {
            for (int y = 20; y < picture.height() - 20; y += 7) {
                QCOMPARE(QColor(shown.pixel(x, y)), QColor(picture.pixel(x, y)));
            }
        }
    }

    void theCloseButtonClosesIt()
    {
        aboutDialog dialog;
        dialog.show();
        QTest::mouseClick(dialog.findChild<QPushButton*>(), Qt::LeftButton);
        QVERIFY(!dialog.isVisible());
    }

    void itIsDraggedByAllButItsButton_data()
    {
        columns<QString, QPoint, QPoint, QPoint>("part", "press", "to", "way");
        row("the box itself", QString(), QPoint(20, 60), QPoint(50, 45), QPoint(30, -15));
        row("a text", "nameLabel", QPoint(3, 4), QPoint(13, -16), QPoint(10, -20));
        row("the button", "QPushButton", QPoint(3, 4), QPoint(13, -16), QPoint(0, 0));
    }

    void itIsDraggedByAllButItsButton()
    {
        QFETCH(QString, part);
        QFETCH(QPoint, press);
        QFETCH(QPoint, to);
        QFETCH(QPoint, way);
        aboutDialog dialog;
        dialog.move(100, 100);
        dialog.show();
        const QPoint before = dialog.pos();
        QWidget* under = part.isEmpty()                         ? &dialog
                         : part == QLatin1String("QPushButton") ? dialog.findChild<QPushButton*>()
                                                                : dialog.findChild<QWidget*>(part);
        QTest::mousePress(under, Qt::LeftButton, Qt::NoModifier, press);
        moveMouse(*under, under->mapToGlobal(to));
        QCOMPARE(dialog.pos() - before, way);
    }

    void aPressOutsideOfItIsNotSeen()
    {
        QWidget other;
        other.setGeometry(300, 300, 100, 100);
        other.show();
        aboutDialog dialog;
        dialog.move(100, 100);
        dialog.show();
        const QPoint before = dialog.pos();
        const QPoint start = dialog.mapToGlobal(QPoint(20, 60));
        QTest::mousePress(&dialog, Qt::LeftButton, Qt::NoModifier, QPoint(20, 60));
        QTest::mousePress(&other, Qt::LeftButton, Qt::NoModifier, QPoint(20, 60));
        moveMouse(other, other.mapToGlobal(QPoint(50, 45)));
        QCOMPARE(dialog.pos(), before);
        // The next move over the box goes on from the press on the box itself.
        moveMouse(dialog, start + QPoint(7, 9));
        QCOMPARE(dialog.pos() - before, QPoint(7, 9));
    }

    void aMoveWithoutAPressStartsFromZero()
    {
        aboutDialog dialog;
        dialog.move(100, 100);
        dialog.show();
        moveMouse(dialog, QPoint(33, 44));
        QCOMPARE(dialog.pos(), QPoint(33, 44));
    }

    void theLinkOpensOutside()
    {
        const Desktop desktop;
        aboutDialog dialog;
        dialog.show();
        auto* info = dialog.findChild<QLabel*>(QStringLiteral("infoLabel"));
        // Through the text from its end, where the link stands.
        for (int x = info->sizeHint().width() - 2; x > 0 && desktop.m_opened.isEmpty(); x -= 10) {
            QTest::mouseClick(info, Qt::LeftButton, Qt::NoModifier, QPoint(x, info->height() / 2));
        }
        QCOMPARE(desktop.m_opened.size(), 1);
        QCOMPARE(desktop.m_opened.first().scheme(), QStringLiteral("https"));
        QVERIFY(info->text().contains(desktop.m_opened.first().toString()));
    }

private:
    static void checkThatTextsAreShownWhole()
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
};

QTEST_MAIN(AboutDialogTest)
#include "aboutdialogtest.moc"
