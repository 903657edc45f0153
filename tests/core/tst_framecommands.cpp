#include "frame/CommonDialogStuff.h"
#include "frame/HelpFile.h"
#include "frame/ZoomStep.h"
#include "shape/Numeric.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

// The frame's command rules that need no window: the save-name extension, the file
// dialog filters, the zoom steps and where the manual is found.
class TestFrameCommands : public QObject
{
    Q_OBJECT
private slots:
    void saveNameGetsMapExtension_data();
    void saveNameGetsMapExtension();
    void pictureFilterShowsClassicCaptionAndMatchesItsPatterns();
    void mapFilterIsImpOnly();

    void zoomStep_data();
    void zoomStep();
    void zoomStepsWalkTheWholeRange();
    void zoomProductOverflowIsAnError();

    void helpFileIsFoundInTheSourceTree();
};

void TestFrameCommands::saveNameGetsMapExtension_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("saved");
    QTest::newRow("bare name") << "plan"
                               << "plan.imp";
    QTest::newRow("upper-case extension kept") << "plan.IMP"
                                               << "plan.IMP";
    QTest::newRow(".imp inside the name") << "my.imports.txt"
                                          << "my.imports.txt";
    QTest::newRow("other extension") << "/home/ann/plan.map"
                                     << "/home/ann/plan.map.imp";
    QTest::newRow("cut at NUL first")
        << QStringLiteral("plan") + QChar(0) + QStringLiteral("junk") << "plan.imp";
    QTest::newRow("NUL after .imp is kept")
        << QStringLiteral("a.imp") + QChar(0) + QStringLiteral("x")
        << QStringLiteral("a.imp") + QChar(0) + QStringLiteral("x");
}

void TestFrameCommands::saveNameGetsMapExtension()
{
    QFETCH(QString, chosen);
    QFETCH(QString, saved);
    QCOMPARE(CommonDialogStuff::WithMapExtension(chosen), saved);
}

// Qt reads a filter's patterns from its last parentheses and, with the details hidden,
// shows what comes before them.
static void SplitFilter(const QString& filter, QString& caption, QStringList& patterns)
{
    const QRegularExpression re(QStringLiteral("^(.*)\\(([^()]*)\\)$"));
    const QRegularExpressionMatch m = re.match(filter);
    QVERIFY2(m.hasMatch(), qPrintable(filter));
    caption = m.captured(1).trimmed();
    patterns = m.captured(2).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

void TestFrameCommands::pictureFilterShowsClassicCaptionAndMatchesItsPatterns()
{
    const QStringList filters = CommonDialogStuff::PictureFilters();
    QVERIFY(filters.size() >= 2);
    QString caption;
    QStringList patterns;
    SplitFilter(filters.first(), caption, patterns);
    QCOMPARE(caption, QStringLiteral("Picture Files (*.jpg;*.gif;*.bmp)"));
    for (const char* name : {"a.jpg", "b.GIF", "c.bmp", "d.jpeg"}) {
        QVERIFY2(QDir::match(patterns, QString::fromLatin1(name)), name);
    }
    QVERIFY(!QDir::match(patterns, QStringLiteral("map.imp")));

    SplitFilter(filters.at(1), caption, patterns);
    QVERIFY(QDir::match(patterns, QStringLiteral("photo.png")));
    QVERIFY(QDir::match(patterns, QStringLiteral("photo.jpg")));
}

void TestFrameCommands::mapFilterIsImpOnly()
{
    QCOMPARE(CommonDialogStuff::MapFilters(), QStringList{"Image Map Files (*.imp)"});
    QCOMPARE(CommonDialogStuff::PictureTitle, QStringLiteral("Load Picture"));
    QCOMPARE(CommonDialogStuff::OpenMapTitle, QStringLiteral("Open Map"));
    QCOMPARE(CommonDialogStuff::SaveMapTitle, QStringLiteral("Save Map"));
}

void TestFrameCommands::zoomStep_data()
{
    QTest::addColumn<bool>("zoomIn");
    QTest::addColumn<double>("level");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("outcome");
    QTest::addColumn<double>("newLevel");
    const int unchanged = int(ZoomStep::Outcome::Unchanged);
    const int refused = int(ZoomStep::Outcome::Refused);
    const int zoomed = int(ZoomStep::Outcome::Zoomed);
    QTest::newRow("in from 1.0") << true << 1.0 << 400 << 300 << zoomed << 1.1;
    QTest::newRow("in from 2.0 does nothing") << true << 2.0 << 400 << 300 << unchanged << 2.0;
    QTest::newRow("out from 1.0 does nothing") << false << 1.0 << 400 << 300 << unchanged << 1.0;
    QTest::newRow("out from 1.1 reaches 1.0") << false << 1.1 << 400 << 300 << zoomed << 1.0;
    QTest::newRow("1500 square to 1.3") << true << 1.2 << 1500 << 1500 << zoomed << 1.3;
    QTest::newRow("1500 square to 1.4 refused") << true << 1.3 << 1500 << 1500 << refused << 1.4;
    QTest::newRow("exactly 4,000,000 fits") << false << 1.1 << 2000 << 2000 << zoomed << 1.0;
    QTest::newRow("one row more is refused") << false << 1.1 << 2000 << 2001 << refused << 1.0;
    // 1.5 x 1335 = 2002.5 rounds to 2002: 2002 x 1998 fits, 2003 x 1998 would not.
    QTest::newRow("rounded half to even") << true << 1.4 << 1335 << 1332 << zoomed << 1.5;
    QTest::newRow("zoom out checks the area too") << false << 1.5 << 2000 << 1600 << refused << 1.4;
}

void TestFrameCommands::zoomStep()
{
    QFETCH(bool, zoomIn);
    QFETCH(double, level);
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, outcome);
    QFETCH(double, newLevel);
    const ZoomStep::Result r =
        zoomIn ? ZoomStep::In(level, width, height) : ZoomStep::Out(level, width, height);
    QCOMPARE(int(r.outcome), outcome);
    QVERIFY(qAbs(r.NewLevel - newLevel) < 1e-9);
}

void TestFrameCommands::zoomStepsWalkTheWholeRange()
{
    // Ten steps up from 1.0 reach 2.0 and stop there; ten steps down come back.
    double level = 1.0;
    int steps = 0;
    for (ZoomStep::Result r = ZoomStep::In(level, 100, 100); r.outcome == ZoomStep::Outcome::Zoomed;
         r = ZoomStep::In(level, 100, 100)) {
        level = r.NewLevel;
        ++steps;
    }
    QCOMPARE(steps, 10);
    QVERIFY(qAbs(level - 2.0) < 1e-9);
    steps = 0;
    for (ZoomStep::Result r = ZoomStep::Out(level, 100, 100);
         r.outcome == ZoomStep::Outcome::Zoomed; r = ZoomStep::Out(level, 100, 100)) {
        level = r.NewLevel;
        ++steps;
    }
    QCOMPARE(steps, 10);
    QVERIFY(qAbs(level - 1.0) < 1e-9);
}

void TestFrameCommands::zoomProductOverflowIsAnError()
{
    QVERIFY_THROWS_EXCEPTION(OverflowError, ZoomStep::In(1.0, 60000, 60000));
}

void TestFrameCommands::helpFileIsFoundInTheSourceTree()
{
    const QStringList places = HelpFile::Candidates();
    QVERIFY(places.size() >= 2);
    QVERIFY(places.first().endsWith(QStringLiteral("Vantrel Help File.html")));
    const QString path = HelpFile::Path();
    QVERIFY2(QFileInfo::exists(path), qPrintable(path));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    // The manual covers the commands a user meets.
    for (const char* topic : {"New Map", "Save Map", "Shape Properties", "Generate Image Map Code",
                              "Convert HTML Code to Map", "URL Checker", ".imp"}) {
        QVERIFY2(text.contains(QString::fromLatin1(topic)), topic);
    }
}

QTEST_GUILESS_MAIN(TestFrameCommands)
#include "tst_framecommands.moc"
