#include "actions/editactionwindow.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace
{

constexpr int imageSize = 57472;
constexpr int secondMark = 57468;

QByteArray bytesOf(const ActionBlock& p_block)
{
    return QByteArray(reinterpret_cast<const char*>(&p_block), int(sizeof p_block));
}

QByteArray builtBytes() { return bytesOf(*std::make_unique<ActionBlock>(builtActionBlock())); }

QByteArray resetBytes()
{
    const auto block = std::make_unique<ActionBlock>(builtActionBlock());
    resetActionBlock(*block);
    return bytesOf(*block);
}

// An image that is like no other, with both format marks 0.
QByteArray ownBytes()
{
    QByteArray bytes(imageSize, '\0');
    for (int i = 0; i < imageSize; ++i) {
        bytes[i] = static_cast<char>(i * 7 + i / 256);
    }
    bytes[5] = 0;
    bytes[secondMark] = 0;
    return bytes;
}

} // namespace

class EditActionWindowTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;

    QString path() const { return m_dir->filePath("car.tlrx"); }

    void write(const QByteArray& p_content)
    {
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        QCOMPARE(file.write(p_content), qint64(p_content.size()));
    }

    QByteArray content() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
    }

    void aNewWindowHasTheBuiltImage()
    {
        const editActionWindow window;
        QVERIFY(bytesOf(window.actionBlock()) == builtBytes());
        QCOMPARE(int(window.actionBlock().pages[0].steps[0].runTime), 50);
        QVERIFY(!window.modified());
    }

    void aResetImageHasTheOtherRunTime()
    {
        editActionWindow window;
        window.setModified(true);
        window.resetActionBlock();
        QVERIFY(bytesOf(window.actionBlock()) == resetBytes());
        QCOMPARE(int(window.actionBlock().pages[127].steps[7].runTime), 100);
        QVERIFY(window.modified());
    }

    void aSavedProjectEndsInTheImageAndSavingAgainReplacesIt()
    {
        editActionWindow window;
        for (const QByteArray& xml : {QByteArray("<project>long</project>"), QByteArray("<p/>")}) {
            write(xml);
            window.appendActionBlock(path());
            QVERIFY(content() == xml + builtBytes());
        }
    }

    void appendingClearsTheModifiedFlag()
    {
        editActionWindow window;
        window.setModified(true);
        window.appendActionBlock(path());
        QVERIFY(!window.modified());
        QCOMPARE(content().size(), imageSize);
    }

    void aFileThatCannotBeOpenedForAppendingIsPassedOver()
    {
        editActionWindow window;
        window.setModified(true);
        window.appendActionBlock(m_dir->filePath("none/car.tlrx"));
        window.appendActionBlock(m_dir->path());
        QVERIFY(window.modified());
        QVERIFY(QDir(m_dir->path()).isEmpty());
    }

    void aCompiledProgramGrowsByImageAndTrailer()
    {
        editActionWindow window;
        const QByteArray program = "compiled";
        write(program);
        window.appendActionBlock(path());
        appendActionTrailer(path());
        QCOMPARE(content().size(), program.size() + 57536);
        QVERIFY(content().startsWith(program + builtBytes() + "\x55\xAA\x5A\x5A"));
        window.appendActionBlock(path());
        appendActionTrailer(path());
        QCOMPARE(content().size(), program.size() + 2 * 57536);
    }

    void aFileOfExactlyTheImagesSizeLoads()
    {
        write(ownBytes());
        editActionWindow window;
        window.setModified(true);
        window.loadActionBlock(path());
        QVERIFY(bytesOf(window.actionBlock()) == ownBytes());
        QVERIFY(!window.modified());
    }

    void onlyTheLastBytesOfAFileAreTheImage()
    {
        write("<project>" + QByteArray(70000, 'x') + "</project>" + ownBytes());
        editActionWindow window;
        window.loadActionBlock(path());
        QVERIFY(bytesOf(window.actionBlock()) == ownBytes());
    }

    void whatIsLoadedIsSavedAgainByteByByte()
    {
        write("<p/>" + ownBytes());
        editActionWindow window;
        window.loadActionBlock(path());
        write("<q/>");
        window.appendActionBlock(path());
        QVERIFY(content() == "<q/>" + ownBytes());
    }

    void aFileTooShortChangesNothing()
    {
        editActionWindow window;
        write(ownBytes());
        window.loadActionBlock(path());
        window.setModified(true);
        for (int size : {0, 1, imageSize - 1}) {
            write(QByteArray(size, '\0'));
            window.loadActionBlock(path());
            QVERIFY(bytesOf(window.actionBlock()) == ownBytes());
            QVERIFY(window.modified());
        }
    }

    void aFileThatCannotBeReadChangesNothing()
    {
        editActionWindow window;
        window.setModified(true);
        window.loadActionBlock(m_dir->filePath("none.tlrx"));
        window.loadActionBlock(m_dir->path());
        QVERIFY(bytesOf(window.actionBlock()) == builtBytes());
        QVERIFY(window.modified());
    }

    void aFormatMarkResetsTheImage_data()
    {
        QTest::addColumn<int>("offset");
        QTest::addColumn<int>("mark");
        QTest::newRow("first") << 5 << 1;
        QTest::newRow("first, high bit") << 5 << 0x80;
        QTest::newRow("second") << secondMark << 1;
        QTest::newRow("second, high bit") << secondMark << 0xFF;
    }

    void aFormatMarkResetsTheImage()
    {
        QFETCH(int, offset);
        QFETCH(int, mark);
        QByteArray bytes = ownBytes();
        bytes[offset] = static_cast<char>(mark);
        write(bytes);
        editActionWindow window;
        window.setModified(true);
        window.loadActionBlock(path());
        QVERIFY(bytesOf(window.actionBlock()) == resetBytes());
        QVERIFY(!window.modified());
    }
};

QTEST_MAIN(EditActionWindowTest)
#include "editactionwindowtest.moc"
