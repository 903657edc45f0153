#include "core/base/Numeric.h"

#include <QTest>
#include <limits>

class TestNumeric : public QObject
{
    Q_OBJECT
private slots:
    void roundsAndNarrows();
};

void TestNumeric::roundsAndNarrows()
{
    for (const auto& [value, rounded] :
         {std::pair(0.5, 0LL), std::pair(1.5, 2LL), std::pair(2.5, 2LL), std::pair(-2.5, -2LL),
          std::pair(-3.5, -4LL), std::pair(2.5001, 3LL), std::pair(4294967296.5, 4294967296LL)})
        QCOMPARE(qint64(RoundHalfEven(value)), qint64(rounded));
    QVERIFY_THROWS_EXCEPTION(OverflowError,
                             RoundHalfEven(std::numeric_limits<double>::quiet_NaN()));
    QVERIFY_THROWS_EXCEPTION(OverflowError, RoundHalfEven(std::numeric_limits<double>::infinity()));
    QCOMPARE(RoundToInt16(32767.4), std::int16_t(32767));
    QCOMPARE(RoundToInt16(-32768.5), std::int16_t(-32768));
    QCOMPARE(ToInt32(-2147483648LL), std::numeric_limits<std::int32_t>::min());
    QCOMPARE(RoundToInt32(2147483646.5), 2147483646);
    QVERIFY_THROWS_EXCEPTION(OverflowError, RoundToInt16(32767.5));
    QVERIFY_THROWS_EXCEPTION(OverflowError, RoundToInt16(-32769));
    QVERIFY_THROWS_EXCEPTION(OverflowError, ToInt16(40000));
    QVERIFY_THROWS_EXCEPTION(OverflowError, ToInt32(2147483648LL));
    QVERIFY_THROWS_EXCEPTION(OverflowError, ToInt32(-2147483649LL));
    QVERIFY_THROWS_EXCEPTION(OverflowError, RoundToInt32(2147483647.5));
    // The errors are the ones a user's command catches.
    QVERIFY_THROWS_EXCEPTION(std::overflow_error, ToInt16(32768));
}

QTEST_APPLESS_MAIN(TestNumeric)
#include "tst_numeric.moc"
