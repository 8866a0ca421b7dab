#include "actions/model/servoangle.h"

#include <QtTest>

#include <limits>

/** The one rule of servo angles. */
class ServoAngleTest : public QObject
{
    Q_OBJECT

private slots:
    void anglesAndPositionsFollowTheRule_data()
    {
        QTest::addColumn<int>("angle");
        QTest::addColumn<int>("position");
        QTest::addColumn<int>("back");
        QTest::newRow("150 degrees") << 15000 << 68 << 15000;
        QTest::newRow("1 degree") << 100 << 510 << 67;
        QTest::newRow("centre") << 0 << 512 << 0;
        QTest::newRow("-1 degree") << -100 << 514 << -67;
        QTest::newRow("-150 degrees") << -15000 << 956 << -15000;
        QTest::newRow("under one count") << 33 << 512 << 0;
        QTest::newRow("under one count below") << -33 << 512 << 0;
    }

    void anglesAndPositionsFollowTheRule()
    {
        QFETCH(int, angle);
        QFETCH(int, position);
        QFETCH(int, back);
        QCOMPARE(angleToServoPosition(angle), position);
        QCOMPARE(servoPositionToAngle(position), back);
    }

    void aPositionOutOfTheEditorsRangeIsNotClamped()
    {
        QCOMPARE(servoPositionToAngle(1000), -16486);
        QCOMPARE(servoPositionToAngle(0), 17297);
        QCOMPARE(servoPositionToAngle(65535), -2196722);
    }

    void wholeDegreesFollowTheSameRule()
    {
        QCOMPARE(ServoCentre, 512);
        // Rounded toward the middle, 2.96 counts a degree.
        QCOMPARE(angleToServoPosition(45 * 100), 379);
        QCOMPARE(angleToServoPosition(-45 * 100), 645);
        QCOMPARE(angleToServoPosition(149 * 100), 71);
        QCOMPARE(angleToServoPosition(-149 * 100), 953);
    }

    void anyAngleThatAFileCanHoldHasAPosition()
    {
        // 888 * 2,147,483,647 / 300 and the middle, less 32 bits.
        QCOMPARE(angleToServoPosition(std::numeric_limits<int>::max() * Q_INT64_C(100)),
                 static_cast<int>(Q_INT64_C(-6356551595) + 512));
    }
};

QTEST_GUILESS_MAIN(ServoAngleTest)
#include "servoangletest.moc"
