#include "project/checktag.h"

#include <QTest>

class CheckTagTest : public QObject
{
    Q_OBJECT

private slots:
    void theTagIsTheComplementOfTheSumPlusOne_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<quint32>("tag");
        QTest::newRow("empty") << QByteArray() << 0xfffffffeU;
        // 97 + 1 = 98 = 0x62.
        QTest::newRow("a") << QByteArray("a") << 0xffffff9dU;
        QTest::newRow("order does not matter") << QByteArray("ba") << ~(97U + 98U + 1U);
        // 0xff is -1, so that the sum and 1 make nothing.
        QTest::newRow("255 counts as -1") << QByteArray("\xff") << 0xffffffffU;
        // 0x80 is -128: ~(-127) = 126.
        QTest::newRow("128 counts as -128") << QByteArray("\x80") << 126U;
        QTest::newRow("NULs count nothing") << QByteArray("\0\0", 2) << 0xfffffffeU;
    }

    void theTagIsTheComplementOfTheSumPlusOne()
    {
        QFETCH(QByteArray, text);
        QFETCH(quint32, tag);
        QCOMPARE(checkTag(text), tag);
    }

    void theSumWraps()
    {
        // 127 * 33,818,641 = 4,294,967,407 = 2^32 + 111.
        const QByteArray text(33818641, '\x7f');
        QCOMPARE(checkTag(text), ~(111U + 1U));
    }
};

QTEST_APPLESS_MAIN(CheckTagTest)
#include "checktagtest.moc"
