#include "actions/model/actionblock.h"

#include <QtTest>

#include <cstring>
#include <memory>

namespace
{

QByteArray bytesOf(const ActionBlock& p_block)
{
    return QByteArray(reinterpret_cast<const char*>(&p_block), int(sizeof p_block));
}

// The image written down byte by byte, without the types under test.
QByteArray expectedImage(const QByteArray& p_runTime)
{
    const QByteArray step = p_runTime + QByteArray(2, '\0') +
                            QByteArray("\x00\x02", 2).repeated(20) + QByteArray(4, '\xFF') +
                            QByteArray(1, '\0') + QByteArray(3, '\xFF');
    const QByteArray page =
        QByteArray("\x00\x00\x01\x00\x64\x00", 6) + step.repeated(8) + QByteArray(26, '\0');
    return QByteArray("\xFF\xFF\xFF\x01\x01\x00\x00\x00\x00\x00\xFF\xFF\xFF\xFF", 14) +
           QByteArray(26, '\xFF') + page.repeated(128) + QByteArray(84, '\0') +
           QByteArray(1, '\0') + QByteArray(3, '\xFF');
}

} // namespace

class ActionBlockTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<ActionBlock> m_block;

    char* byteAt(int p_offset) { return reinterpret_cast<char*>(m_block.get()) + p_offset; }

private slots:
    void init() { m_block = std::make_unique<ActionBlock>(builtActionBlock()); }

    void theBuiltImageIsAsToldByteByByte()
    {
        const QByteArray expected = expectedImage(QByteArray("\x32\x00", 2));
        QCOMPARE(expected.size(), 57472);
        QVERIFY(bytesOf(*m_block) == expected);
    }

    void theResetImageDiffersInTheRunTimesAlone()
    {
        std::memset(static_cast<void*>(m_block.get()), 0xA5, sizeof *m_block);
        resetActionBlock(*m_block);
        QVERIFY(bytesOf(*m_block) == expectedImage(QByteArray("\x64\x00", 2)));
    }

    void aStepLiesWhereThePageAndItsNumberSay_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<int>("step");
        QTest::newRow("first") << 0 << 0;
        QTest::newRow("last of the first page") << 0 << 7;
        QTest::newRow("middle") << 77 << 3;
        QTest::newRow("last") << 127 << 7;
    }

    void aStepLiesWhereThePageAndItsNumberSay()
    {
        QFETCH(int, page);
        QFETCH(int, step);
        const int offset = 46 + 448 * page + 52 * step;
        // Run time -2, wait time 258, position 19 = 1000, servo 10 out of the mask, in use.
        std::memcpy(byteAt(offset), "\xFE\xFF\x02\x01", 4);
        std::memcpy(byteAt(offset + 4 + 2 * 19), "\xE8\x03", 2);
        *byteAt(offset + 44 + 1) = '\xFD';
        *byteAt(offset + 48) = 1;
        const ActionStep& found = m_block->pages[page].steps[step];
        QCOMPARE(int(found.runTime), -2);
        QCOMPARE(int(found.waitTime), 258);
        QCOMPARE(int(found.position[18]), 512);
        QCOMPARE(int(found.position[19]), 1000);
        QCOMPARE(int(found.servoMask[1]), 0xFD);
        QCOMPARE(int(found.used), 1);
    }

    void aPageLiesWhereItsNumberSays()
    {
        const int offset = 40 + 448 * 127;
        std::memcpy(byteAt(offset), "\x80\x05\xFF\x00\x9C\xFF", 6);
        const ActionPage& page = m_block->pages[127];
        QCOMPARE(int(page.nextPage), 128);
        QCOMPARE(int(page.exitPage), 5);
        QCOMPARE(int(page.repeat), 255);
        QCOMPARE(int(page.rate), -100);
    }

    void theFormatMarksLieAtTheirPlaces()
    {
        *byteAt(5) = 7;
        *byteAt(57468) = 9;
        QCOMPARE(int(m_block->firstFormatMark), 7);
        QCOMPARE(int(m_block->secondFormatMark), 9);
    }

    void aNameEndsAtItsFirstZero()
    {
        QCOMPARE(actionPageName(*m_block, 0), QByteArray());
        std::memcpy(m_block->pages[3].name, "wave", 4);
        QCOMPARE(actionPageName(*m_block, 3), QByteArray("wave"));
        std::memcpy(m_block->pages[3].name, "bow", 4);
        QCOMPARE(actionPageName(*m_block, 3), QByteArray("bow"));
    }

    void aNameThatFillsItsFieldRunsOnIntoTheNextPage()
    {
        std::memset(m_block->pages[3].name, 'n', sizeof m_block->pages[3].name);
        QCOMPARE(actionPageName(*m_block, 3), QByteArray(26, 'n'));
        m_block->pages[4].nextPage = 'x';
        m_block->pages[4].exitPage = 'y';
        m_block->pages[4].repeat = 'z';
        QCOMPARE(actionPageName(*m_block, 3), QByteArray(26, 'n') + "xyz");
    }

    void theLastPagesNameStopsAtTheEndOfTheImage()
    {
        std::memset(m_block->pages[127].name, 'n', sizeof m_block->pages[127].name);
        QCOMPARE(actionPageName(*m_block, 127), QByteArray(26, 'n'));
        // Not one zero byte anywhere, nor behind the image.
        struct Guarded {
            ActionBlock block;
            char behind[64];
        };
        const auto guarded = std::make_unique<Guarded>();
        std::memset(static_cast<void*>(guarded.get()), 'n', sizeof(Guarded));
        QCOMPARE(actionPageName(guarded->block, 127), QByteArray(26 + 84 + 1 + 3, 'n'));
        QCOMPARE(actionPageName(guarded->block, 0), QByteArray(57472 - 40 - 422, 'n'));
    }

    void theTrailerIsAsToldByteByByte()
    {
        const ActionTrailer trailer = buildActionTrailer();
        const QByteArray expected = QByteArray::fromHex("55AA5A5A55AA5A5A") +
                                    QByteArray(" Korvane Kinetic Edition\0\0", 26) +
                                    QByteArray(30, '\xFF');
        QCOMPARE(expected.size(), 64);
        QCOMPARE(QByteArray(reinterpret_cast<const char*>(&trailer), sizeof trailer), expected);
    }
};

QTEST_GUILESS_MAIN(ActionBlockTest)
#include "actionblocktest.moc"
