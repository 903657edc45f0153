#include "TableCase.h"
#include "core/base/Module1.h"
#include "core/base/Numeric.h"

#include <QTest>
#include <limits>

// The helpers every layer uses: file names, colours, rounding and narrowing.
class TestModule1 : public QObject
{
    Q_OBJECT
private slots:
    void cutAtNulAndTitle()
    {
        const QChar nul(0);
        // At the first NUL.
        QCOMPARE(Module1::CutAtNul(QStringLiteral("a") + nul + "b " + nul), QStringLiteral("a"));
        QCOMPARE(Module1::FileTitle(QStringLiteral("C:\\maps\\  my map.imp  ")),
                 QStringLiteral("my map.imp"));
    }

    void pathParts()
    {
        // The last / or \ ends the folder.
        for (const auto& [path, folder] :
             {std::pair("C:\\maps\\a.imp", "C:\\maps\\"),
              std::pair("/home/ann/pic.gif", "/home/ann/"),
              std::pair("D:\\web/img.gif", "D:\\web/"), std::pair("C:/maps\\x.imp", "C:/maps\\"),
              std::pair("plan.imp", ""), std::pair("C:\\maps\\", "C:\\maps\\")}) {
            QCOMPARE(Module1::FolderOfPath(path), QString::fromUtf8(folder));
            QCOMPARE(Module1::FileNameOfPath(path), QString::fromUtf8(path).mid(qstrlen(folder)));
        }
    }

    void colourParts()
    {
        const int colour = 5 | 10 << 8 | 255 << 16;
        QVERIFY(Module1::RedOf(colour) == 5 && Module1::GreenOf(colour) == 10);
        QCOMPARE(Module1::BlueOf(colour), 255);
        QCOMPARE(Module1::ColorToHex(colour), QStringLiteral("050AFF"));
        // The high byte is no colour.
        QCOMPARE(Module1::ColorToHex(0x7F0A0B0C), QStringLiteral("0C0B0A"));
    }

    void pointInRect()
    {
        // The rectangle (10, 10, 20, 20): both edges are inside.
        QVERIFY(Module1::PointInRect(10, 10, 10, 10, 20, 20));
        QVERIFY(Module1::PointInRect(20, 20, 10, 10, 20, 20));
        for (const QPoint& p : {QPoint(21, 10), QPoint(9, 15), QPoint(15, 9), QPoint(15, 21)})
            QVERIFY(!Module1::PointInRect(p.x(), p.y(), 10, 10, 20, 20));
        // A rectangle given the wrong way round holds nothing.
        QVERIFY(!Module1::PointInRect(15, 15, 20, 20, 10, 10));
    }

    void roundsAndNarrows()
    {
        for (const auto& [value, rounded] :
             {std::pair(0.5, 0LL), std::pair(1.5, 2LL), std::pair(2.5, 2LL), std::pair(-2.5, -2LL),
              std::pair(-3.5, -4LL), std::pair(2.5001, 3LL),
              std::pair(4294967296.5, 4294967296LL)}) {
            const TableCase row(value);
            QCOMPARE(qint64(RoundHalfEven(value)), qint64(rounded));
        }
        QVERIFY_THROWS_EXCEPTION(OverflowError, RoundHalfEven(qQNaN()));
        QVERIFY_THROWS_EXCEPTION(OverflowError, RoundHalfEven(qInf()));
        QCOMPARE(RoundToInt16(32767.4), std::int16_t(32767));
        QCOMPARE(RoundToInt16(-32768.5), std::int16_t(-32768));
        QCOMPARE(ToInt32(-2147483648LL), std::numeric_limits<std::int32_t>::min());
        QCOMPARE(RoundToInt32(2147483646.5), 2147483646);
        QVERIFY_THROWS_EXCEPTION(OverflowError, RoundToInt16(32767.5));
        QVERIFY_THROWS_EXCEPTION(OverflowError, RoundToInt16(-32769));
        QVERIFY_THROWS_EXCEPTION(OverflowError, ToInt32(2147483648LL));
        QVERIFY_THROWS_EXCEPTION(OverflowError, ToInt32(-2147483649LL));
        QVERIFY_THROWS_EXCEPTION(OverflowError, RoundToInt32(2147483647.5));
        // The errors are the ones a user's command catches.
        QVERIFY_THROWS_EXCEPTION(std::overflow_error, ToInt16(32768));
    }
};

QTEST_APPLESS_MAIN(TestModule1)
#include "tst_module1.moc"
