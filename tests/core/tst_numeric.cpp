#include "shape/Numeric.h"

#include <QTest>
#include <limits>

class TestNumeric : public QObject
{
    Q_OBJECT
private slots:
    void roundsHalfToEven_data();
    void roundsHalfToEven();
    void narrowsTo16Bit_data();
    void narrowsTo16Bit();
    void narrowsTo32Bit();
    void notANumberOverflows();
};

void TestNumeric::roundsHalfToEven_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<qint64>("rounded");
    QTest::newRow("0.5") << 0.5 << qint64(0);
    QTest::newRow("1.5") << 1.5 << qint64(2);
    QTest::newRow("2.5") << 2.5 << qint64(2);
    QTest::newRow("5.5") << 5.5 << qint64(6);
    QTest::newRow("15.5") << 15.5 << qint64(16);
    QTest::newRow("-0.5") << -0.5 << qint64(0);
    QTest::newRow("-2.5") << -2.5 << qint64(-2);
    QTest::newRow("-3.5") << -3.5 << qint64(-4);
    QTest::newRow("2.4999") << 2.4999 << qint64(2);
    QTest::newRow("2.5001") << 2.5001 << qint64(3);
    QTest::newRow("large") << 4294967296.5 << qint64(4294967296);
}

void TestNumeric::roundsHalfToEven()
{
    QFETCH(double, value);
    QFETCH(qint64, rounded);
    QCOMPARE(qint64(RoundHalfEven(value)), rounded);
}

void TestNumeric::narrowsTo16Bit_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("overflows");
    QTest::addColumn<int>("result");
    QTest::newRow("32767") << 32767.0 << false << 32767;
    QTest::newRow("32767.4") << 32767.4 << false << 32767;
    QTest::newRow("32767.5 rounds to 32768") << 32767.5 << true << 0;
    QTest::newRow("32768") << 32768.0 << true << 0;
    QTest::newRow("-32768") << -32768.0 << false << -32768;
    QTest::newRow("-32768.5 rounds to even -32768") << -32768.5 << false << -32768;
    QTest::newRow("-32769") << -32769.0 << true << 0;
}

void TestNumeric::narrowsTo16Bit()
{
    QFETCH(double, value);
    QFETCH(bool, overflows);
    QFETCH(int, result);
    if (overflows) {
        QVERIFY_THROWS_EXCEPTION(OverflowError, RoundToInt16(value));
    } else {
        QCOMPARE(int(RoundToInt16(value)), result);
        QCOMPARE(int(ToInt16(result)), result);
    }
}

void TestNumeric::narrowsTo32Bit()
{
    QCOMPARE(ToInt32(2147483647), 2147483647);
    QCOMPARE(ToInt32(-2147483648LL), std::numeric_limits<std::int32_t>::min());
    QVERIFY_THROWS_EXCEPTION(OverflowError, ToInt32(2147483648LL));
    QVERIFY_THROWS_EXCEPTION(OverflowError, ToInt32(-2147483649LL));
    QCOMPARE(RoundToInt32(2147483646.5), 2147483646);
    QVERIFY_THROWS_EXCEPTION(OverflowError, RoundToInt32(2147483647.5));
    // The errors are the ones a user's command catches.
    QVERIFY_THROWS_EXCEPTION(std::overflow_error, ToInt16(40000));
}

void TestNumeric::notANumberOverflows()
{
    QVERIFY_THROWS_EXCEPTION(OverflowError,
                             RoundHalfEven(std::numeric_limits<double>::quiet_NaN()));
    QVERIFY_THROWS_EXCEPTION(OverflowError, RoundHalfEven(std::numeric_limits<double>::infinity()));
    QVERIFY_THROWS_EXCEPTION(OverflowError, RoundToInt16(-1e300));
}

QTEST_APPLESS_MAIN(TestNumeric)
#include "tst_numeric.moc"
