#include "actions/model/actionimage.h"
#include "support/system/files.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <climits>
#include <cstring>
#include <memory>

namespace
{

constexpr int imageSize = 57472;
constexpr int firstMark = 5;
constexpr int secondMark = 57468;

// The two states that an image is put into; actionblocktest.cpp tells them byte by byte.
QByteArray builtBytes()
{
    const auto block = std::make_unique<ActionBlock>(builtActionBlock());
    return QByteArray(reinterpret_cast<const char*>(block.get()), sizeof(ActionBlock));
}

QByteArray resetBytes()
{
    const auto block = std::make_unique<ActionBlock>(builtActionBlock());
    resetActionBlock(*block);
    return QByteArray(reinterpret_cast<const char*>(block.get()), sizeof(ActionBlock));
}

// An image that is like no other, with both format marks 0.
QByteArray ownBytes()
{
    QByteArray bytes(imageSize, '\0');
    for (int i = 0; i < imageSize; ++i) {
        bytes[i] = static_cast<char>(i * 7 + i / 256);
    }
    bytes[firstMark] = 0;
    bytes[secondMark] = 0;
    return bytes;
}

QByteArray trailerBytes()
{
    return QByteArray::fromHex("55AA5A5A55AA5A5A") +
           QByteArray(" Korvane Kinetic Edition\0\0", 26) + QByteArray(30, '\xFF');
}

} // namespace

class ActionImageTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;

    QString path() const { return m_dir->filePath("car.tlrx"); }

    void write(const QByteArray& p_content) { putFile(path(), p_content); }
    QByteArray content() const { return contentOf(path()); }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
    }

    void aNewImageIsTheBuiltOne()
    {
        const ActionImage image;
        QCOMPARE(ActionImage::Size, imageSize);
        QCOMPARE(image.bytes().size(), imageSize);
        QVERIFY(image.bytes() == builtBytes());
        QCOMPARE(int(image.step(0, 0)->runTime), 50);
        QVERIFY(!image.isModified());
    }

    void aResetImageHasTheOtherRunTime()
    {
        ActionImage image;
        QVERIFY(image.setBytes(ownBytes()));
        for (const bool modified : {true, false}) {
            image.setModified(modified);
            image.reset();
            QVERIFY(image.bytes() == resetBytes());
            QCOMPARE(int(image.step(127, 7)->runTime), 100);
            QCOMPARE(image.isModified(), modified);
        }
    }

    void aCopyIsAnImageOfItsOwn()
    {
        ActionImage image;
        QVERIFY(image.setBytes(ownBytes()));
        image.setModified(true);
        ActionImage copy = image;
        QVERIFY(copy.isModified());
        copy.reset();
        QVERIFY(image.bytes() == ownBytes());
        QVERIFY(copy.bytes() == resetBytes());
    }

    void pagesAndStepsLieWhereTheirNumbersSay()
    {
        const QByteArray own = ownBytes();
        ActionImage image;
        QVERIFY(image.setBytes(own));
        const ActionImage& constant = image;
        for (int page = 0; page < 128; ++page) {
            const int offset = 40 + 448 * page;
            QCOMPARE(image.page(page)->nextPage, quint8(own.at(offset)));
            QCOMPARE(constant.page(page), image.page(page));
            for (int step = 0; step < 8; ++step) {
                QCOMPARE(image.step(page, step)->used, quint8(own.at(offset + 6 + 52 * step + 48)));
                QCOMPARE(constant.step(page, step), image.step(page, step));
            }
        }
        QByteArray changed = own;
        image.page(127)->exitPage = 99;
        image.step(127, 7)->used = 98;
        changed[40 + 448 * 127 + 1] = 99;
        changed[46 + 448 * 127 + 52 * 7 + 48] = 98;
        QVERIFY(image.bytes() == changed);
        QVERIFY(!image.isModified());
    }

    void aNumberOutOfRangeFindsNothing()
    {
        ActionImage image;
        const ActionImage& constant = image;
        for (const int page : {-1, 128, 255, INT_MIN, INT_MAX}) {
            QVERIFY(!image.page(page));
            QVERIFY(!constant.page(page));
            QVERIFY(!image.step(page, 0));
            QVERIFY(!constant.step(page, 0));
            QCOMPARE(image.pageName(page), QByteArray());
        }
        for (const int step : {-1, 8, INT_MIN, INT_MAX}) {
            QVERIFY(!image.step(0, step));
            QVERIFY(!constant.step(127, step));
        }
    }

    void aNameIsReadUpToTheFirstZero()
    {
        ActionImage image;
        std::memcpy(image.page(3)->name, "wave", 4);
        QCOMPARE(image.pageName(3), QByteArray("wave"));
        std::memset(image.page(3)->name, 'n', sizeof image.page(3)->name);
        image.page(4)->nextPage = 'x';
        QCOMPARE(image.pageName(3), QByteArray(26, 'n') + "x");
        QCOMPARE(image.pageName(127), QByteArray());
    }

    void aSavedProjectEndsInTheImageAndSavingAgainReplacesIt()
    {
        ActionImage image;
        for (const QByteArray& xml : {QByteArray("<project>long</project>"), QByteArray("<p/>")}) {
            write(xml);
            QVERIFY(image.appendTo(path()));
            QVERIFY(content() == xml + builtBytes());
        }
    }

    void appendingMakesTheFileAndClearsTheModifiedFlag()
    {
        for (const ActionTail tail : {ActionTail::Image, ActionTail::ImageAndTrailer}) {
            QFile::remove(path());
            ActionImage image;
            image.setModified(true);
            QVERIFY(image.appendTo(path(), tail));
            QVERIFY(!image.isModified());
            QVERIFY(content().startsWith(builtBytes()));
        }
    }

    void theImageIsAppendedWhateverItHolds()
    {
        ActionImage image;
        QVERIFY(image.setBytes(ownBytes()));
        QVERIFY(image.appendTo(path()));
        QVERIFY(content() == ownBytes());
    }

    void aFileThatCannotBeOpenedForAppendingIsPassedOver()
    {
        ActionImage image;
        image.setModified(true);
        for (const ActionTail tail : {ActionTail::Image, ActionTail::ImageAndTrailer}) {
            QVERIFY(!image.appendTo(m_dir->filePath("none/car.tlrx"), tail));
            QVERIFY(!image.appendTo(m_dir->path(), tail));
            QVERIFY(!image.appendTo(QString(), tail));
        }
        QVERIFY(image.isModified());
        QVERIFY(QDir(m_dir->path()).isEmpty());
    }

    void aCompiledProgramGrowsByImageAndTrailer()
    {
        ActionImage image;
        QVERIFY(image.setBytes(ownBytes()));
        const QByteArray program = "compiled";
        write(program);
        QVERIFY(image.appendTo(path(), ActionTail::ImageAndTrailer));
        QCOMPARE(content().size(), program.size() + 57536);
        QVERIFY(content() == program + ownBytes() + trailerBytes());
        QVERIFY(image.appendTo(path(), ActionTail::ImageAndTrailer));
        QVERIFY(content() == program + (ownBytes() + trailerBytes()).repeated(2));
    }

    void bytesOfExactlyTheImagesSizeAreTaken()
    {
        ActionImage image;
        image.setModified(true);
        QVERIFY(image.setBytes(ownBytes()));
        QVERIFY(image.bytes() == ownBytes());
        QVERIFY(!image.isModified());

        write(ownBytes());
        ActionImage loaded;
        loaded.setModified(true);
        QVERIFY(loaded.loadFrom(path()));
        QVERIFY(loaded.bytes() == ownBytes());
        QVERIFY(!loaded.isModified());
    }

    void onlyTheLastBytesAreTheImage()
    {
        const QByteArray whole = "<project>" + QByteArray(70000, 'x') + "</project>" + ownBytes();
        ActionImage image;
        QVERIFY(image.setBytes(whole));
        QVERIFY(image.bytes() == ownBytes());
        write(whole);
        ActionImage loaded;
        QVERIFY(loaded.loadFrom(path()));
        QVERIFY(loaded.bytes() == ownBytes());
    }

    void tooFewBytesChangeNothing()
    {
        ActionImage image;
        QVERIFY(image.setBytes(ownBytes()));
        image.setModified(true);
        for (const int size : {0, 1, imageSize - 1}) {
            write(QByteArray(size, '\0'));
            QVERIFY(!image.setBytes(content()));
            QVERIFY(!image.loadFrom(path()));
            QVERIFY(image.bytes() == ownBytes());
            QVERIFY(image.isModified());
        }
    }

    void aFileThatCannotBeReadChangesNothing()
    {
        ActionImage image;
        image.setModified(true);
        QVERIFY(!image.loadFrom(m_dir->filePath("none.tlrx")));
        QVERIFY(!image.loadFrom(m_dir->path()));
        QVERIFY(image.bytes() == builtBytes());
        QVERIFY(image.isModified());
    }

    void aFormatMarkResetsTheImage_data()
    {
        QTest::addColumn<int>("offset");
        QTest::addColumn<int>("mark");
        QTest::newRow("first") << firstMark << 1;
        QTest::newRow("first, high bit") << firstMark << 0x80;
        QTest::newRow("second") << secondMark << 1;
        QTest::newRow("second, high bit") << secondMark << 0xFF;
    }

    void aFormatMarkResetsTheImage()
    {
        QFETCH(int, offset);
        QFETCH(int, mark);
        QByteArray bytes = ownBytes();
        bytes[offset] = static_cast<char>(mark);
        ActionImage image;
        image.setModified(true);
        QVERIFY(image.setBytes(bytes));
        QVERIFY(image.bytes() == resetBytes());
        QVERIFY(!image.isModified());

        write(bytes);
        ActionImage loaded;
        loaded.setModified(true);
        QVERIFY(loaded.loadFrom(path()));
        QVERIFY(loaded.bytes() == resetBytes());
        QVERIFY(!loaded.isModified());
    }
};

QTEST_GUILESS_MAIN(ActionImageTest)
#include "actionimagetest.moc"
