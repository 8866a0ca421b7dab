#include "shell/appearance.h"
#include "support/system/datatable.h"

#include <QDir>
#include <QIcon>
#include <QImage>
#include <QSettings>
#include <QtTest>

/** The icon of the program in windows, and what a desktop is told of it. */
class ProgramIconTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { setUpAppearance(); }

    void everyWindowHasTheIconInAllSizes_data()
    {
        numberRows("side", {16, 24, 32, 48, 64, 128, 256});
    }

    void everyWindowHasTheIconInAllSizes()
    {
        QFETCH(int, side);
        const QWidget window;
        QVERIFY(window.windowIcon().availableSizes().contains(QSize(side, side)));
        const QImage shown = window.windowIcon().pixmap(side, side).toImage();
        QCOMPARE(shown, QPixmap(QStringLiteral(":/icon/%1.png").arg(side)).toImage());
        // A white face with dark eyes, whatever its size: along their line light, dark, light,
        // dark, light.
        int changes = 0;
        bool light = false;
        for (int x = 0; x < side; ++x) {
            const QRgb pixel = shown.pixel(x, side * 29 / 64);
            const bool now = light ? qGray(pixel) > 110 : qGray(pixel) > 190;
            changes += now != light ? 1 : 0;
            light = now;
        }
        QVERIFY2(changes >= 6, qPrintable(QString::number(changes)));
    }

    void theDesktopEntryNamesProgramAndIcon()
    {
        const QDir source(QStringLiteral(TILER_SOURCE_DIR));
        const QString name = QGuiApplication::desktopFileName() + QStringLiteral(".desktop");
        const QString path = source.filePath("packaging/" + name);
        QVERIFY2(QFile::exists(path), qPrintable(path));
        QSettings entry(path, QSettings::IniFormat);
        entry.beginGroup(QStringLiteral("Desktop Entry"));
        QCOMPARE(entry.value("Type").toString(), QStringLiteral("Application"));
        QCOMPARE(entry.value("Icon").toString(), QGuiApplication::desktopFileName());
        QCOMPARE(entry.value("Exec").toString(), QStringLiteral("vantrel %f"));
        QVERIFY(!entry.value("Name").toString().isEmpty());
    }
};

QTEST_MAIN(ProgramIconTest)
#include "programicontest.moc"
