#include "frame/ImageSizeRules.h"
#include "frame/LeadingNumber.h"
#include "frame/SteppedNumberEntry.h"
#include "frame/ZoomRules.h"

#include <QTest>

// The number rules shared by the grid, image size and zoom dialogs.
class TestDialogRules : public QObject
{
    Q_OBJECT
private slots:
    void leadingNumber_data();
    void leadingNumber();
    void typingMovesTheBarOnlyInRange_data();
    void typingMovesTheBarOnlyInRange();
    void leavingPutsOutOfRangeTextBack_data();
    void leavingPutsOutOfRangeTextBack();
    void imageSizeRefusals_data();
    void imageSizeRefusals();
    void zoomPercentRoundsToTens_data();
    void zoomPercentRoundsToTens();
    void zoomPixelLimit_data();
    void zoomPixelLimit();
};

void TestDialogRules::leadingNumber_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    QTest::newRow("digits") << "150" << 150.0;
    QTest::newRow("empty") << "" << 0.0;
    QTest::newRow("letters") << "abc" << 0.0;
    QTest::newRow("leading blanks") << "  42" << 42.0;
    QTest::newRow("trailing text") << "12px" << 12.0;
    QTest::newRow("decimal") << "12.5" << 12.5;
    QTest::newRow("sign") << "-7" << -7.0;
    QTest::newRow("sign alone") << "-" << 0.0;
    QTest::newRow("second point stops") << "1.2.3" << 1.2;
}

void TestDialogRules::leadingNumber()
{
    QFETCH(QString, text);
    QFETCH(double, value);
    QCOMPARE(LeadingNumber::Of(text), value);
}

void TestDialogRules::typingMovesTheBarOnlyInRange_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("bar"); // -1: the bar stays
    QTest::newRow("50") << "50" << 50;
    QTest::newRow("lowest") << "4" << 4;
    QTest::newRow("highest") << "100" << 100;
    QTest::newRow("3 is below") << "3" << -1;
    QTest::newRow("150 is above") << "150" << -1;
    QTest::newRow("empty") << "" << -1;
}

void TestDialogRules::typingMovesTheBarOnlyInRange()
{
    QFETCH(QString, text);
    QFETCH(int, bar);
    const SteppedNumberEntry spacing(4, 100);
    const std::optional<int> moved = spacing.ScrollValueFor(text);
    QCOMPARE(moved.has_value(), bar != -1);
    if (moved)
        QCOMPARE(*moved, bar);
}

void TestDialogRules::leavingPutsOutOfRangeTextBack_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("left");
    QTest::newRow("in range stays") << "50"
                                    << "50";
    QTest::newRow("too small") << "3"
                               << "20";
    QTest::newRow("too big") << "150"
                             << "20";
    QTest::newRow("empty counts as 0") << ""
                                       << "20";
}

void TestDialogRules::leavingPutsOutOfRangeTextBack()
{
    QFETCH(QString, text);
    QFETCH(QString, left);
    QCOMPARE(SteppedNumberEntry(4, 100).TextOnLeave(text, 20), left);
}

void TestDialogRules::imageSizeRefusals_data()
{
    QTest::addColumn<QString>("width");
    QTest::addColumn<QString>("height");
    QTest::addColumn<QString>("message");
    const QString width = QStringLiteral("The width of the image is too small.");
    const QString height = QStringLiteral("The height of the image is too small.");
    const QString big = QStringLiteral("The image size is too big.");
    QTest::newRow("20 x 20") << "20"
                             << "20" << QString();
    QTest::newRow("19 wide") << "19"
                             << "20" << width;
    QTest::newRow("both small: width first") << "19"
                                             << "19" << width;
    QTest::newRow("19 high") << "20"
                             << "19" << height;
    QTest::newRow("empty width") << ""
                                 << "500" << width;
    QTest::newRow("2000 x 2000") << "2000"
                                 << "2000" << QString();
    QTest::newRow("2000 x 2001") << "2000"
                                 << "2001" << big;
    QTest::newRow("no side limit") << "100000"
                                   << "40" << QString();
}

void TestDialogRules::imageSizeRefusals()
{
    QFETCH(QString, width);
    QFETCH(QString, height);
    QFETCH(QString, message);
    QCOMPARE(ImageSizeRules::Refusal(width, height), message);
}

void TestDialogRules::zoomPercentRoundsToTens_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("level");
    QTest::newRow("155") << "155" << 1.6;
    QTest::newRow("145") << "145" << 1.4;
    QTest::newRow("100") << "100" << 1.0;
    QTest::newRow("123") << "123" << 1.2;
    QTest::newRow("200") << "200" << 2.0;
}

void TestDialogRules::zoomPercentRoundsToTens()
{
    QFETCH(QString, text);
    QFETCH(double, level);
    QCOMPARE(ZoomRules::LevelFromPercentText(text), level);
}

void TestDialogRules::zoomPixelLimit_data()
{
    QTest::addColumn<double>("level");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<bool>("fits");
    QTest::newRow("110% of 2000x1500") << 1.1 << 2000 << 1500 << true;
    QTest::newRow("120% of 2000x1500") << 1.2 << 2000 << 1500 << false;
    QTest::newRow("exactly 4,000,000") << 1.0 << 2000 << 2000 << true;
    QTest::newRow("one pixel more") << 1.0 << 2000 << 2001 << false;
    QTest::newRow("130% of 1500x1500") << 1.3 << 1500 << 1500 << true;
    QTest::newRow("140% of 1500x1500") << 1.4 << 1500 << 1500 << false;
}

void TestDialogRules::zoomPixelLimit()
{
    QFETCH(double, level);
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(bool, fits);
    QCOMPARE(ZoomRules::Fits(level, width, height), fits);
}

QTEST_APPLESS_MAIN(TestDialogRules)
#include "tst_dialogrules.moc"
