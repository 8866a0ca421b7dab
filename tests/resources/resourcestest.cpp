#include "modules/catalogue/blocktables.h"
#include "proj/controls/variablepictures.h"
#include "support/canvas/blockdata.h"
#include "text/variables.h"

#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QTest>

/** The pictures that the program carries. */
class ResourcesTest : public QObject
{
    Q_OBJECT

private slots:
    void everyPictureCanBeReadAndShowsSomething()
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

    void everyBlockAndVariableHasItsPictures()
    {
        // As large as what lands: the body with its tab and its drawer, a loop with its bracket.
        for (const BlockRecord& record : blockRecords()) {
            const QSize size = loopTypes().contains(record.id)      ? QSize(280, 160)
                               : record.category == ControlCategory ? QSize(140, 160)
                                                                    : QSize(140, 140);
            QVERIFY2(QImage(record.image).size() == size,
                     qPrintable(QStringLiteral("not as large as others of its kind: %1 %2")
                                    .arg(QString::number(record.id), record.image)));
        }
        QCOMPARE(variableKinds().size(), 26);
        for (const VariableKind& kind : variableKinds()) {
            const VariablePictures pictures = variablePictures(kind.key);
            QVERIFY2(QFile::exists(pictures.normal), qPrintable(kind.prefix));
            QVERIFY2(QFile::exists(pictures.pressed), qPrintable(kind.prefix));
        }
        for (const CategoryRecord& record : categoryRecords()) {
            QVERIFY(QFile::exists(record.selectedImage));
            QVERIFY(QFile::exists(record.normalImage));
        }
    }

    void everyChooserHasItsPictures()
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
};

QTEST_MAIN(ResourcesTest)
#include "resourcestest.moc"
