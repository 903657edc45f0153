#include "ShapeBuilders.h"
#include "ShapeRow.h"
#include "core/document/MapDocument.h"
#include "core/interchange/HtmlImporter.h"
#include "core/interchange/MapCodeGenerator.h"

#include <QTest>

namespace {

const QString ErrorText =
    QStringLiteral("There was an error, please check the HTML code you paste in.");

using Points = std::vector<ShapePoint>;

QString Wrap(const QString& areas)
{
    return QStringLiteral("<map name=\"m\">\n") + areas + QStringLiteral("\n</map>");
}

} // namespace

// Upper-case tags, unquoted keywords, a missing map tag or coords: the convert dialog's test.
class TestHtmlImport : public QObject
{
    Q_OBJECT
private slots:
    // Each refusal changes nothing; the generic one says beside it which area is wrong.
    void failuresChangeNothing()
    {
        const auto area = [](int n, const char* why) {
            return QStringLiteral("Area %1 of the map: %2.").arg(n).arg(QLatin1String(why));
        };
        struct Case
        {
            QString html, message, detail;
        };
        for (const Case& c : std::initializer_list<Case>{
                 {"<map id=\"x\"><area shape=\"rect\" coords=\"1,2,3,4\"></map>",
                  "Map name not found.", ""},
                 {"<map name=\"x\"></map>", "No shape objects found.", ""},
                 {"<map name=x><area coords=1></map>", ErrorText,
                  "The map's name is not closed with a double quote."},
                 {Wrap("<area shape=\"rect\" coords=\"1,2,3\">"), ErrorText,
                  area(1, "its coords do not give the points of its shape")},
                 {Wrap("<area shape=\"rect\" coords=\"3000000000,2,3,4\">"), ErrorText,
                  area(1, "its coords do not give the points of its shape")},
                 {Wrap("<area shape='circle' coords='1,2,3'>"), ErrorText,
                  area(1, "a value in it is not closed with a double quote")},
                 {"<map name=\"x\"><area shape=\"rect\" coords=\"1,2,3,4\"", ErrorText,
                  area(1, "it has no closing \">\"")},
                 // a bad area after a good one
                 {Wrap("<area shape=\"rect\" coords=\"1,2,3,4\">\n<area shape=\"poly\">"),
                  ErrorText, area(2, "it has no coords")}}) {
            MapDocument d;
            d.DefURL = QStringLiteral("old.htm");
            AddShapeRow(d, "0|0,0,10,0,10,10,0,10|keep.htm||||0|");
            const QString before =
                MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Test);
            const HtmlImporter::Result result = HtmlImporter::Convert(c.html, d);
            QCOMPARE(result.message, c.message);
            QCOMPARE(result.detail, c.detail);
            HtmlImporter::Apply(result, d); // a failed result changes nothing
            QCOMPARE(MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Test), before);
        }
    }

    void shapesAtTheMapsZoom()
    {
        MapDocument d;
        d.ZoomLevel = 2.0;
        const HtmlImporter::Result result =
            HtmlImporter::Convert(Wrap("<area shape=\"circle\" coords=\"50,60,5\">\n"
                                       "<area shape=\"polygon\" coords=\"1,2,3,4,5\">\n"
                                       "<area shape=\"rect\" coords=\"2.5,3.5,-2.5,0.49\">"),
                                  d);
        HtmlImporter::Apply(result, d);
        // Read at zoom 1 (a circle to its square, a polygon spelt out without its odd piece,
        // halves to even), then doubled to the map's zoom.
        QCOMPARE(d.ItemCount(), std::int16_t(2));
        const std::vector<std::pair<std::int16_t, Points>> shapes{
            {Circle, Corners(90, 110, 110, 130)},
            {Polygon, {{2, 4}, {6, 8}}},
            {Rectangle, Corners(4, 8, -4, 0)}};
        for (std::int16_t i = 0; i < 3; ++i) {
            QCOMPARE(d.Shape(i).GetShapeType(), shapes[std::size_t(i)].first);
            QCOMPARE(d.Shape(i).Zoom(), 2.0);
            QCOMPARE(d.Shape(i).Points(), shapes[std::size_t(i)].second);
        }
    }

    void defaultAreaSetsTheMapDefaults()
    {
        MapDocument d;
        d.DefStatus = QStringLiteral("old status");
        d.DefAlertVal = 1;
        const HtmlImporter::Result result = HtmlImporter::Convert(
            Wrap("<area shape=\"rect\" coords=\"1,2,3,4\" href=\"a.htm\">\n"
                 "<area shape=default coords=\"0,0,9,9\" href=\"first.htm\" alt=\"first\">\n"
                 "<area coords=\"0,0,9,9\" href=\"rest.htm\" target=\"_top\">"),
            d);
        HtmlImporter::Apply(result, d);
        // The last area with no known shape word wins; what it lacks is cleared.
        QCOMPARE(d.ItemCount(), std::int16_t(0));
        QCOMPARE((QStringList{d.DefURL, d.DefComment, d.DefTarget, d.DefStatus,
                              QString::number(d.DefAlertVal)}),
                 (QStringList{"rest.htm", "", "_top", "", "0"}));
    }

    void generatedCodeRoundTrips()
    {
        MapDocument source;
        source.SWidth = 640;
        source.SHeight = 480;
        source.DefURL = QStringLiteral("rest.htm");
        source.MapStyle = 3;
        source.MapBorder = 2;
        AddShapeRow(source, "1|10,20,110,20,110,70,10,70|a.htm|first one|main|||");
        AddShapeRow(source, "0|200,200,240,200,240,240,200,240|||||0|");
        AddShapeRow(source, "2|300,10,150000,60,310,190000|c||||0|");
        for (const auto form : {MapCodeGenerator::Form::Viewing, MapCodeGenerator::Form::Test}) {
            const HtmlImporter::Result result = HtmlImporter::Convert(
                MapCodeGenerator::GenerateMapCode(source, form), MapDocument());
            // The default area comes back as one more rectangle over the whole picture.
            QCOMPARE(result.shapes.size(), std::size_t(4));
            for (std::size_t i = 0; i < 3; ++i) {
                const PatShape& want = source.Shapes()[i];
                QCOMPARE(result.shapes[i].GetShapeType(), want.GetShapeType());
                QCOMPARE(result.shapes[i].Points(), want.Points());
                QCOMPARE(result.shapes[i].URL, want.URL.isEmpty() ? QStringLiteral("#") : want.URL);
                QCOMPARE(result.shapes[i].Comment, want.Comment);
                QCOMPARE(result.shapes[i].Target, want.Target);
            }
            QCOMPARE(result.shapes[3].Points(), Corners(0, 0, 640, 480));
            QCOMPARE(result.shapes[3].URL, source.DefURL);
        }
    }
};

QTEST_APPLESS_MAIN(TestHtmlImport)
#include "tst_htmlimport.moc"
