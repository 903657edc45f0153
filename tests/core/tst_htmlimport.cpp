#include "canvas/MapDocument.h"
#include "interchange/HtmlImporter.h"
#include "interchange/MapCodeGenerator.h"
#include "shape/PatShape.h"

#include <QTest>

namespace {

const QString ErrorText =
    QStringLiteral("There was an error, please check the HTML code you paste in.");

using Points = std::vector<ShapePoint>;

Points Box(int l, int t, int r, int b)
{
    return {{l, t}, {r, t}, {r, b}, {l, b}};
}

void AddShape(MapDocument& d, std::int16_t type, const Points& points, const QString& url,
              double zoom = 1.0)
{
    PatShape& s = d.Shape(d.AddShape());
    s.ResetInfo(type, true, 0, url, QString(), QString(), QString(), 0, QString());
    s.ResetPoints(static_cast<std::int16_t>(points.size() - 1));
    for (std::size_t i = 0; i < points.size(); ++i)
        s.SetPoint(static_cast<std::int16_t>(i), points[i].x, points[i].y);
    s.SetOpenGeneralInfo(nullptr, zoom);
}

// A map with one shape and a default area, to see that failures leave it alone.
MapDocument ExistingMap()
{
    MapDocument d;
    d.SWidth = 300;
    d.SHeight = 200;
    d.DefURL = QStringLiteral("old.htm");
    d.DefStatus = QStringLiteral("old status");
    AddShape(d, Circle, Box(0, 0, 10, 10), QStringLiteral("keep.htm"));
    return d;
}

QString Wrap(const QString& areas)
{
    return QStringLiteral("<map name=\"m\">\n") + areas + QStringLiteral("\n</map>");
}

} // namespace

class TestHtmlImport : public QObject
{
    Q_OBJECT
private slots:
    void failures_data();
    void failures();
    void shapes_data();
    void shapes();
    void upperCaseIsFoundAndValuesComeOutLowerCase();
    void defaultAreaSetsTheMapDefaults();
    void codeWithoutDefaultAreaClearsTheDefaults();
    void generatedCodeRoundTrips();
    void zoomedMapGetsScaledShapes();
    void applyReplacesTheShapeList();
    void manyAreas();
    void manyAreasWithAnUnclosedQuote();
};

void TestHtmlImport::failures_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("message");

    QTest::newRow("no map tag") << "<area shape=\"rect\" coords=\"1,2,3,4\">"
                                << QStringLiteral("Map tag not found.");
    QTest::newRow("map tag without blank") << "<map>" << QStringLiteral("Map tag not found.");
    QTest::newRow("no name") << "<map id=\"x\"><area shape=\"rect\" coords=\"1,2,3,4\"></map>"
                             << QStringLiteral("Map name not found.");
    QTest::newRow("no areas") << "<map name=\"x\"></map>"
                              << QStringLiteral("No shape objects found.");
    QTest::newRow("area without blank")
        << "<map name=\"x\"><area></map>" << QStringLiteral("No shape objects found.");
    QTest::newRow("name quote never closed") << "<map name=\"x><area shape=rect>" << ErrorText;
    QTest::newRow("coords missing") << Wrap("<area shape=\"rect\" href=\"a\">") << ErrorText;
    QTest::newRow("coords after the end of the area")
        << Wrap("<area shape=\"rect\" href=\"a\"> coords=\"1,2,3,4\"") << ErrorText;
    QTest::newRow("default area without coords")
        << Wrap("<area shape=\"rect\" coords=\"1,2,3,4\"><area shape=\"default\" href=\"a\">")
        << ErrorText;
    QTest::newRow("area never ends")
        << "<map name=\"x\"><area shape=\"rect\" coords=\"1,2,3,4\"" << ErrorText;
    QTest::newRow("href quote never closed")
        << Wrap("<area shape=\"rect\" coords=\"1,2,3,4\" href=\"a.htm>") << ErrorText;
    QTest::newRow("value runs into the next area")
        << Wrap("<area shape=\"rect\" coords=\"1,2,3,4\" alt=x><area shape=\"rect\" "
                "coords=\"1,2,3,4\">")
        << ErrorText;
    QTest::newRow("rectangle with three numbers")
        << Wrap("<area shape=\"rect\" coords=\"1,2,3\">") << ErrorText;
    QTest::newRow("circle with two numbers")
        << Wrap("<area shape=\"circle\" coords=\"1,2\">") << ErrorText;
    QTest::newRow("polygon without a point")
        << Wrap("<area shape=\"poly\" coords=\"5\">") << ErrorText;
    QTest::newRow("number too large for a double")
        << Wrap("<area shape=\"rect\" coords=\"1e400,2,3,4\">") << ErrorText;
    QTest::newRow("number too large for a coordinate")
        << Wrap("<area shape=\"rect\" coords=\"3000000000,2,3,4\">") << ErrorText;
    QTest::newRow("circle edge out of range")
        << Wrap("<area shape=\"circle\" coords=\"2147483000,0,1000\">") << ErrorText;
    QTest::newRow("bad area after a good one")
        << Wrap("<area shape=\"rect\" coords=\"1,2,3,4\">\n<area shape=\"poly\">") << ErrorText;
}

void TestHtmlImport::failures()
{
    QFETCH(QString, html);
    QFETCH(QString, message);
    MapDocument d = ExistingMap();
    const QString before = MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Test);
    const HtmlImporter::Result result = HtmlImporter::Convert(html, d);
    QVERIFY(!result.ok);
    QCOMPARE(result.message, message);
    QVERIFY(result.shapes.empty());
    HtmlImporter::Apply(result, d); // a failed result changes nothing
    QCOMPARE(MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Test), before);
    QCOMPARE(d.DefStatus, QStringLiteral("old status"));
}

void TestHtmlImport::shapes_data()
{
    QTest::addColumn<QString>("areas");
    QTest::addColumn<int>("type");
    QTest::addColumn<Points>("points");

    QTest::newRow("rectangle") << "<area shape=\"rect\" coords=\"10,20,30,40\">" << 1
                               << Box(10, 20, 30, 40);
    QTest::newRow("circle to its square")
        << "<area shape=\"circle\" coords=\"50,60,5\">" << 0 << Box(45, 55, 55, 65);
    QTest::newRow("polygon with trailing comma")
        << "<area shape=\"poly\" coords=\"10,10,50,10,30,40,\">" << 2
        << Points{{10, 10}, {50, 10}, {30, 40}};
    QTest::newRow("polygon spelt out, odd piece dropped")
        << "<area shape=\"polygon\" coords=\"1,2,3,4,5\">" << 2 << Points{{1, 2}, {3, 4}};
    QTest::newRow("unquoted keyword")
        << "<area shape=rect coords=\"1,2,3,4\">" << 1 << Box(1, 2, 3, 4);
    QTest::newRow("unquoted circle")
        << "<area shape=circle coords=\"8,8,2\">" << 0 << Box(6, 6, 10, 10);
    QTest::newRow("blanks, tabs and line breaks in numbers")
        << "<area shape=\"rect\" coords=\" 1 0,\n2\t0 ,\r\n30 , 4\n0\">" << 1
        << Box(10, 20, 30, 40);
    QTest::newRow("halves round to even")
        << "<area shape=\"rect\" coords=\"2.5,3.5,-2.5,0.49\">" << 1 << Box(2, 4, -2, 0);
    QTest::newRow("reading stops at the first stranger")
        << "<area shape=\"rect\" coords=\"12px,+7,1-2,.5e1\">" << 1 << Box(12, 7, 1, 5);
    QTest::newRow("pieces without numbers are 0")
        << "<area shape=\"rect\" coords=\"x,,-,e5\">" << 1 << Box(0, 0, 0, 0);
    QTest::newRow("extra numbers ignored")
        << "<area shape=\"rect\" coords=\"1,2,3,4,5,6\">" << 1 << Box(1, 2, 3, 4);
    QTest::newRow("attributes in any order")
        << "<area href=\"a\" coords=\"1,2,3,4\" alt=\"b\" shape=\"rect\">" << 1 << Box(1, 2, 3, 4);
}

void TestHtmlImport::shapes()
{
    QFETCH(QString, areas);
    QFETCH(int, type);
    QFETCH(Points, points);
    MapDocument d;
    const HtmlImporter::Result result = HtmlImporter::Convert(Wrap(areas), d);
    QVERIFY2(result.ok, qPrintable(result.message));
    QCOMPARE(result.shapes.size(), std::size_t(1));
    const PatShape& s = result.shapes[0];
    QCOMPARE(int(s.GetShapeType()), type);
    QCOMPARE(s.Points(), points);
    QVERIFY(s.IsShapeDone());
    QCOMPARE(s.ShapeColor, d.NonFocusColor);
    QCOMPARE(s.Zoom(), 1.0);
}

void TestHtmlImport::upperCaseIsFoundAndValuesComeOutLowerCase()
{
    MapDocument d;
    const QString html = QStringLiteral(
        "<MAP NAME=\"Big\">\r\n<AREA SHAPE=RECT COORDS=\"1,2,3,4\" HREF=\"HTTP://A.COM/X.HTM\" "
        "ALT=\"Home Page\" TARGET=\"_TOP\">\r\n</MAP>");
    const HtmlImporter::Result result = HtmlImporter::Convert(html, d);
    QVERIFY2(result.ok, qPrintable(result.message));
    QCOMPARE(result.shapes.size(), std::size_t(1));
    QCOMPARE(result.shapes[0].URL, QStringLiteral("http://a.com/x.htm"));
    QCOMPARE(result.shapes[0].Comment, QStringLiteral("home page"));
    QCOMPARE(result.shapes[0].Target, QStringLiteral("_top"));
    QCOMPARE(result.shapes[0].Points(), Box(1, 2, 3, 4));
}

void TestHtmlImport::defaultAreaSetsTheMapDefaults()
{
    MapDocument d = ExistingMap();
    d.DefAlert = QStringLiteral("old alert");
    d.DefAlertVal = 1;
    const QString html =
        Wrap("<area shape=\"rect\" coords=\"1,2,3,4\" href=\"a.htm\">\n"
             "<area shape=default coords=\"0,0,9,9\" href=\"first.htm\" alt=\"first\">\n"
             "<area shape=\"poly\" coords=\"1,1,5,1,3,3\" href=\"b.htm\">\n"
             "<area shape=\"default\" coords=\"0,0,9,9\" href=\"rest.htm\" target=\"_top\">\n"
             "<area coords=\"0,0,9,9\" alt=\"no shape word\">");
    const HtmlImporter::Result result = HtmlImporter::Convert(html, d);
    QVERIFY2(result.ok, qPrintable(result.message));
    QCOMPARE(result.shapes.size(), std::size_t(2));
    QCOMPARE(result.shapes[0].URL, QStringLiteral("a.htm"));
    QCOMPARE(result.shapes[1].URL, QStringLiteral("b.htm"));
    // The last area without a known shape word is the default area.
    QCOMPARE(result.DefURL, QString());
    QCOMPARE(result.DefComment, QStringLiteral("no shape word"));
    QCOMPARE(result.DefTarget, QString());

    const QString withTarget =
        Wrap("<area shape=\"rect\" coords=\"1,2,3,4\">\n"
             "<area shape=\"default\" coords=\"0,0,9,9\" href=\"rest.htm\" target=\"_top\">");
    const HtmlImporter::Result second = HtmlImporter::Convert(withTarget, d);
    QVERIFY(second.ok);
    HtmlImporter::Apply(second, d);
    QCOMPARE(d.DefURL, QStringLiteral("rest.htm"));
    QCOMPARE(d.DefComment, QString());
    QCOMPARE(d.DefTarget, QStringLiteral("_top"));
    QCOMPARE(d.DefStatus, QString());
    QCOMPARE(d.DefAlert, QString());
    QCOMPARE(d.DefAlertVal, std::int16_t(0));
    QCOMPARE(d.ItemCount(), std::int16_t(0));
}

void TestHtmlImport::codeWithoutDefaultAreaClearsTheDefaults()
{
    MapDocument d = ExistingMap();
    const HtmlImporter::Result result =
        HtmlImporter::Convert(Wrap("<area shape=\"rect\" coords=\"1,2,3,4\">"), d);
    QVERIFY(result.ok);
    HtmlImporter::Apply(result, d);
    QVERIFY(d.DefURL.isEmpty());
    QVERIFY(d.DefStatus.isEmpty());
    QCOMPARE(d.Shape(0).URL, QString()); // no href: no URL, written back as "#"
}

void TestHtmlImport::generatedCodeRoundTrips()
{
    MapDocument source;
    source.SWidth = 640;
    source.SHeight = 480;
    source.ImageName = QStringLiteral("pic.gif");
    source.DefURL = QStringLiteral("rest.htm");
    source.DefComment = QStringLiteral("rest");
    source.DefTarget = QStringLiteral("_top");
    source.DefStatus = QStringLiteral("lost");
    source.MapStyle = 3;
    source.MapOnClick = 4;
    source.MapBorder = 2;
    AddShape(source, Rectangle, Box(10, 20, 110, 70), QStringLiteral("a.htm"));
    AddShape(source, Circle, Box(200, 200, 240, 240), QStringLiteral("b.htm"));
    AddShape(source, Polygon, {{300, 10}, {350, 60}, {310, 90}, {290, 40}},
             QStringLiteral("c.htm"));
    AddShape(source, Rectangle, Box(0, 0, 5, 5), QString());
    PatShape& rich = source.Shape(0);
    rich.Comment = QStringLiteral("first one");
    rich.Target = QStringLiteral("main");
    rich.StatusString = QStringLiteral("it's here");
    rich.AlertBox = 1;
    rich.AlertString = QStringLiteral("hello");

    for (const auto form : {MapCodeGenerator::Form::Viewing, MapCodeGenerator::Form::Test}) {
        const QString code = MapCodeGenerator::GenerateMapCode(source, form);
        MapDocument target;
        const HtmlImporter::Result result = HtmlImporter::Convert(code, target);
        QVERIFY2(result.ok, qPrintable(result.message));
        // The default area is written as a rectangle over the whole picture, so it comes
        // back as one more shape.
        QCOMPARE(result.shapes.size(), source.Shapes().size() + 1);
        for (std::size_t i = 0; i < source.Shapes().size(); ++i) {
            const PatShape& want = source.Shapes()[i];
            const PatShape& got = result.shapes[i];
            QCOMPARE(got.GetShapeType(), want.GetShapeType());
            QCOMPARE(got.Points(), want.Points());
            QCOMPARE(got.URL, want.URL.isEmpty() ? QStringLiteral("#") : want.URL);
            QCOMPARE(got.Comment, want.Comment);
            QCOMPARE(got.Target, want.Target);
            QVERIFY(got.StatusString.isEmpty());
            QVERIFY(got.AlertString.isEmpty());
            QCOMPARE(got.AlertBox, std::int16_t(0));
        }
        const PatShape& whole = result.shapes.back();
        QCOMPARE(whole.GetShapeType(), std::int16_t(Rectangle));
        QCOMPARE(whole.Points(), Box(0, 0, 640, 480));
        QCOMPARE(whole.URL, source.DefURL);
        QCOMPARE(whole.Comment, source.DefComment);
        QCOMPARE(whole.Target, source.DefTarget);
        QVERIFY(result.DefURL.isEmpty());
    }
}

void TestHtmlImport::zoomedMapGetsScaledShapes()
{
    MapDocument d;
    d.ZoomLevel = 2.0;
    const HtmlImporter::Result result =
        HtmlImporter::Convert(Wrap("<area shape=\"rect\" coords=\"10,20,30,40\">"), d);
    QVERIFY(result.ok);
    HtmlImporter::Apply(result, d);
    QCOMPARE(d.Shape(0).Zoom(), 2.0);
    QCOMPARE(d.Shape(0).Points(), Box(20, 40, 60, 80));
    QVERIFY(MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Viewing)
                .contains(QStringLiteral("coords=\"10,20,30,40\"")));
}

void TestHtmlImport::applyReplacesTheShapeList()
{
    MapDocument d = ExistingMap();
    AddShape(d, Rectangle, Box(0, 0, 1, 1), QStringLiteral("two"));
    AddShape(d, Rectangle, Box(0, 0, 1, 1), QStringLiteral("three"));
    const HtmlImporter::Result result =
        HtmlImporter::Convert(Wrap("<area shape=\"rect\" coords=\"1,2,3,4\" href=\"x\">\n"
                                   "<area shape=\"circle\" coords=\"5,5,5\" href=\"y\">"),
                              d);
    QVERIFY(result.ok);
    HtmlImporter::Apply(result, d);
    QCOMPARE(d.ItemCount(), std::int16_t(1));
    QCOMPARE(d.ShapeOrder(), (std::vector<std::int16_t>{0, 1}));
    QCOMPARE(d.GetURL(0), QStringLiteral("x"));
    QCOMPARE(d.GetURL(1), QStringLiteral("y"));
    QCOMPARE(d.Shape(0).ShapeColor, d.FocusColor);
    QCOMPARE(d.Shape(1).ShapeColor, d.NonFocusColor);
}

void TestHtmlImport::manyAreas()
{
    QString html = QStringLiteral("<map name=\"big\">\n");
    for (int i = 0; i < 5000; ++i)
        html += QStringLiteral("<area shape=\"rect\" coords=\"%1,0,%2,9\" href=\"u%1\">\n")
                    .arg(i)
                    .arg(i + 5);
    html += QStringLiteral("</map>");
    MapDocument d;
    const HtmlImporter::Result result = HtmlImporter::Convert(html, d);
    QVERIFY(result.ok);
    QCOMPARE(result.shapes.size(), std::size_t(5000));
    QCOMPARE(result.shapes[4321].URL, QStringLiteral("u4321"));
    QCOMPARE(result.shapes[4321].Points(), Box(4321, 0, 4326, 9));
}

void TestHtmlImport::manyAreasWithAnUnclosedQuote()
{
    QString html = QStringLiteral("<map name=\"big\">\n");
    for (int i = 0; i < 20000; ++i)
        html += QStringLiteral("<area shape=\"rect\" coords=\"1,2,3,4\" href=\"u\">\n");
    html += QStringLiteral("<area shape=\"rect\" coords=\"1,2,3,4\" href=\"never closed>\n");
    for (int i = 0; i < 20000; ++i)
        html += QStringLiteral("<area shape=rect coords=1,2,3,4 href=u>\n");
    MapDocument d;
    const HtmlImporter::Result result = HtmlImporter::Convert(html, d);
    QVERIFY(!result.ok);
    QCOMPARE(result.message, ErrorText);
}

QTEST_APPLESS_MAIN(TestHtmlImport)
#include "tst_htmlimport.moc"
