#include "core/forms/CommonDialogStuff.h"
#include "core/forms/ZoomStep.h"

#include <QTest>

// The frame's rules that need no window: save names and the zoom pixel limit.
class TestFrameCommands : public QObject
{
    Q_OBJECT
private slots:
    void saveNameGetsMapExtension_data()
    {
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<QString>("saved");
        QTest::newRow("bare") << "plan"
                              << "plan.imp";
        QTest::newRow("upper case kept") << "plan.IMP"
                                         << "plan.IMP";
        QTest::newRow(".imp inside") << "my.imports.txt"
                                     << "my.imports.txt";
        QTest::newRow("other extension") << "/home/ann/plan.map"
                                         << "/home/ann/plan.map.imp";
    }
    void saveNameGetsMapExtension()
    {
        QFETCH(QString, chosen);
        QFETCH(QString, saved);
        QCOMPARE(CommonDialogStuff::WithMapExtension(chosen), saved);
    }

    void zoomPixelLimitIsInclusive()
    {
        QCOMPARE(ZoomStep::Out(1.1, 2000, 2000).outcome, ZoomStep::Outcome::Zoomed);
        QCOMPARE(ZoomStep::Out(1.1, 2000, 2001).outcome, ZoomStep::Outcome::Refused);
        // 1.5 x 1335 = 2002.5 rounds half to even: 2002 x 1998 fits.
        QCOMPARE(ZoomStep::In(1.4, 1335, 1332).outcome, ZoomStep::Outcome::Zoomed);
    }
};

QTEST_GUILESS_MAIN(TestFrameCommands)
#include "tst_framecommands.moc"
