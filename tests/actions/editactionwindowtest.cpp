#include "actions/editactionwindow.h"
#include "actions/model/actionimage.h"

#include <QTemporaryDir>
#include <QtTest>

class EditActionWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void itWorksOnTheImageThatItIsGiven()
    {
        const QTemporaryDir dir;
        const QString path = dir.filePath("car.tlrx");
        ActionImage image;
        image.page(3)->nextPage = 7;
        image.setModified(true);
        editActionWindow window(image);

        window.appendActionBlock(path);
        QVERIFY(!image.isModified());
        QCOMPARE(QFileInfo(path).size(), qint64(57472));

        image.setModified(true);
        window.resetActionBlock();
        QCOMPARE(int(image.page(3)->nextPage), 0);
        QCOMPARE(int(image.step(0, 0)->runTime), 100);
        QVERIFY(image.isModified());

        window.loadActionBlock(path);
        QCOMPARE(int(image.page(3)->nextPage), 7);
        QCOMPARE(int(image.step(0, 0)->runTime), 50);
        QVERIFY(!image.isModified());
    }

    void makingAndClosingItLeavesTheImage()
    {
        ActionImage image;
        image.page(3)->nextPage = 7;
        image.setModified(true);
        const QByteArray before = image.bytes();
        {
            editActionWindow window(image);
            window.show();
            window.close();
        }
        QCOMPARE(image.bytes(), before);
        QVERIFY(image.isModified());
    }
};

QTEST_MAIN(EditActionWindowTest)
#include "editactionwindowtest.moc"
