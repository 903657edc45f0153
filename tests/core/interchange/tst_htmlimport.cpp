#include "ShapeBuilders.h"
#include "ShapeRow.h"
#include "TableCase.h"
#include "core/document/MapDocument.h"
#include "core/interchange/FormattedMapCode.h"
#include "core/interchange/HtmlImporter.h"
#include "core/interchange/HtmlMapReader.h"
#include "core/interchange/LosslessImporter.h"
#include "core/interchange/MapCodeGenerator.h"

#include <QRandomGenerator>
#include <QTest>

namespace {

const QString ErrorText =
    QStringLiteral("There was an error, please check the HTML code you paste in.");

using Points = std::vector<ShapePoint>;

QString Wrap(const QString& areas)
{
    return QStringLiteral("<map name=\"m\">\n") + areas + QStringLiteral("\n</map>");
}

// What the HTML can carry of a map: shapes, their texts, the default area and the name.
QStringList Describe(const MapDocument& d)
{
    QStringList lines{QStringLiteral("name=") + d.MapName};
    for (const PatShape& s : d.Shapes()) {
        QStringList xy;
        for (const ShapePoint& p : s.Points())
            xy << QString::number(p.x) << QString::number(p.y);
        // One pass of arg(): a text holding "%20" stays as it is.
        lines << QStringLiteral("%1|%2|%3|%4|%5|%6|%7|%8")
                     .arg(QString::number(s.GetShapeType()), xy.join(','), s.URL, s.Comment,
                          s.Target, s.StatusString, QString::number(s.AlertBox != 0),
                          s.AlertBox != 0 ? s.AlertString : QString());
    }
    lines << QStringList{d.DefURL, d.DefComment, d.DefTarget, d.DefStatus,
                         d.DefAlertVal != 0 ? d.DefAlert : QString()}
                 .join('|');
    return lines;
}

// A random text: plain letters mixed with everything that needs care in HTML and scripts.
QString RandomText(QRandomGenerator& random, bool allowEmpty = true)
{
    static const QStringList pieces =
        QString::fromUtf8("a|Zz| |&|&amp;|\"|'|<|>|\\|\n|\r|\r\n|\t|\xc3\xa9|\xe2\x80\xa8|"
                          "\xf0\x9f\x98\x80|&#39;|--|</map>|alert('x')|%20")
            .split(QLatin1Char('|'));
    const int length = random.bounded(allowEmpty ? 0 : 1, 6);
    QString text;
    for (int i = 0; i < length; ++i)
        text += pieces[random.bounded(int(pieces.size()))];
    return text;
}

MapDocument RandomDocument(quint32 seed)
{
    QRandomGenerator random(seed);
    MapDocument d;
    d.SWidth = 800;
    d.SHeight = 600;
    d.MapName = QStringLiteral("Map") + QString::number(seed);
    const int count = random.bounded(1, 25);
    for (int i = 0; i < count; ++i) {
        const int type = random.bounded(3);
        const int x = random.bounded(-50, 800), y = random.bounded(-50, 600);
        QStringList xy;
        if (type == Polygon) {
            for (int p = random.bounded(1, 9); p > 0; --p)
                xy << QString::number(random.bounded(-100, 900))
                   << QString::number(random.bounded(-100, 700));
        } else {
            // Circles as the HTML describes them: a square box with an even side.
            const int w = random.bounded(0, 200), h = type == Circle ? w : random.bounded(0, 200);
            const int r = x + (type == Circle ? 2 * (w / 2) : w),
                      b = y + (type == Circle ? 2 * (w / 2) : h);
            for (const int v : {x, y, r, y, r, b, x, b})
                xy << QString::number(v);
        }
        const QString url = random.bounded(5) == 0 ? QString() : RandomText(random, false) + "x";
        const QString alert = random.bounded(2) == 0 ? QString() : RandomText(random, false);
        AddShapeRow(d, QStringList{QString::number(type), xy.join(','), url, RandomText(random),
                                   RandomText(random), RandomText(random),
                                   alert.isEmpty() ? "0" : "1", alert}
                           .join('|'));
    }
    if (random.bounded(2) == 0) {
        d.DefURL = RandomText(random, false) + "y";
        d.DefComment = RandomText(random);
        d.DefTarget = RandomText(random);
        d.DefStatus = RandomText(random);
        d.DefAlert = RandomText(random);
        d.DefAlertVal = d.DefAlert.isEmpty() ? 0 : 1;
    }
    return d;
}

LosslessImporter::Result Convert(const QString& code, const MapDocument& d = MapDocument())
{
    return LosslessImporter::Convert(code, d);
}

} // namespace

// Map code pasted in, read the classic way (upper-case tags, unquoted keywords, a missing
// map tag or coords: the convert dialog's test) and "keeping text as written", as a browser
// reads it.
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
        const auto unread = [](int n, const char* coords) {
            return QStringLiteral("Area #%1 has coordinates that cannot be read: \"%2\".")
                .arg(n)
                .arg(QLatin1String(coords));
        };
        struct Case
        {
            bool keepText;
            QString html, message, detail;
        };
        for (const Case& c : std::initializer_list<Case>{
                 {false, "<map id=\"x\"><area shape=\"rect\" coords=\"1,2,3,4\"></map>",
                  "Map name not found.", ""},
                 {false, "<map name=\"x\"></map>", "No shape objects found.", ""},
                 {false, "<map name=x><area coords=1></map>", ErrorText,
                  "The map's name is not closed with a double quote."},
                 {false, Wrap("<area shape=\"rect\" coords=\"1,2,3\">"), ErrorText,
                  area(1, "its coords do not give the points of its shape")},
                 {false, Wrap("<area shape=\"rect\" coords=\"3000000000,2,3,4\">"), ErrorText,
                  area(1, "its coords do not give the points of its shape")},
                 {false, Wrap("<area shape='circle' coords='1,2,3'>"), ErrorText,
                  area(1, "a value in it is not closed with a double quote")},
                 {false, "<map name=\"x\"><area shape=\"rect\" coords=\"1,2,3,4\"", ErrorText,
                  area(1, "it has no closing \">\"")},
                 // a bad area after a good one
                 {false, Wrap("<area shape=\"rect\" coords=\"1,2,3,4\">\n<area shape=\"poly\">"),
                  ErrorText, area(2, "it has no coords")},
                 // Kept as written: no map, no areas, or coordinates no browser reads.
                 {true, "<area shape=rect coords=1,1,2,2>", "Map tag not found.", ""},
                 {true, "", "Map tag not found.", ""},
                 {true, "<map name=x></map><area coords=1,2,3,4>", "No shape objects found.", ""},
                 {true, "<map name=x><area shape=default href=a></map>", "No shape objects found.",
                  ""},
                 {true,
                  "<map name=x><area shape=rect coords=1,1,2,2><area shape=rect "
                  "coords=\"1,a,2,2\"></map>",
                  unread(2, "1,a,2,2"), ""},
                 {true, "<map name=x><area shape=circle coords=\"5,5\"></map>", unread(1, "5,5"),
                  ""},
                 {true, "<map name=x><area shape=rect coords=\"1,1,9e99,2\"></map>",
                  unread(1, "1,1,9e99,2"), ""}}) {
            const TableCase row(c.html);
            MapDocument d;
            d.DefURL = QStringLiteral("old.htm");
            AddShapeRow(d, "0|0,0,10,0,10,10,0,10|keep.htm||||0|");
            const QStringList before = Describe(d);
            if (c.keepText) {
                const LosslessImporter::Result result = Convert(c.html, d);
                QVERIFY(!result.ok && !LosslessImporter::Apply(result, d, false));
                QCOMPARE(result.message, c.message);
            } else {
                const HtmlImporter::Result result = HtmlImporter::Convert(c.html, d);
                QCOMPARE(result.message, c.message);
                QCOMPARE(result.detail, c.detail);
                HtmlImporter::Apply(result, d); // a failed result changes nothing
            }
            QCOMPARE(Describe(d), before);
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
        // The last area with no known shape word sets the map's defaults; what it lacks is
        // cleared.
        MapDocument m;
        m.DefStatus = QStringLiteral("old status");
        m.DefAlertVal = 1;
        HtmlImporter::Apply(
            HtmlImporter::Convert(
                Wrap("<area shape=\"rect\" coords=\"1,2,3,4\" href=\"a.htm\">\n"
                     "<area shape=default coords=\"0,0,9,9\" href=\"first.htm\" alt=\"first\">\n"
                     "<area coords=\"0,0,9,9\" href=\"rest.htm\" target=\"_top\">"),
                m),
            m);
        QCOMPARE(m.ItemCount(), std::int16_t(0));
        QCOMPARE((QStringList{m.DefURL, m.DefComment, m.DefTarget, m.DefStatus,
                              QString::number(m.DefAlertVal)}),
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

    void html5OutputComesBackTheSame()
    {
        for (quint32 seed = 1; seed <= 60; ++seed) {
            MapDocument original = RandomDocument(seed);
            const QString code = FormattedMapCode::Generate(original, MapFormat::Html5,
                                                            MapCodeGenerator::Form::Viewing)
                                     .Text;
            MapDocument imported;
            imported.MapName = QStringLiteral("before");
            imported.DefTarget = QStringLiteral("stale");
            QVERIFY(LosslessImporter::Apply(Convert(code), imported, false));
            QCOMPARE(Describe(imported), Describe(original));
        }
    }

    void markupAsWritten_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("shape"); // Describe() line of shape 0
        QTest::newRow("letter case kept") << "<MAP NAME=Nav><AREA SHAPE=RECT COORDS=1,2,3,4 "
                                             "HREF=\"Page.HTM\" ALT=\"Home Page\"></MAP>"
                                          << "1|1,2,3,2,3,4,1,4|Page.HTM|Home Page|||0|";
        QTest::newRow("entities decoded, single quotes, unquoted values")
            << "<map name='n'><area shape=circle coords='10,10,5' href=a.htm?x=1&amp;y=2 "
               "alt='Caf&eacute; &quot;x&quot; &#39;y&#39;' target=_top></map>"
            << QString::fromUtf8(
                   "0|5,5,15,5,15,15,5,15|a.htm?x=1&y=2|Caf\xc3\xa9 \"x\" 'y'|_top||0|");
        QTest::newRow("title is the status, onclick the alert")
            << "<map name=n><area shape=poly coords=\"1,1, 9,1 5,8,\" href=x title=\"Hi "
               "&lt;you&gt;\" "
               "onclick=\"alert('it\\'s\\n&quot;ok&quot;')\"></map>"
            << "2|1,1,9,1,5,8|x|||Hi <you>|1|it's\n\"ok\"";
        QTest::newRow("nohref and no shape keyword")
            << "<map name=n><area coords=\"0,0,5,5\" nohref alt=\"\"></map>"
            << "1|0,0,5,0,5,5,0,5|||||0|";
        QTest::newRow("decimal coordinates round half to even")
            << "<map name=n><area shape=rect coords=\"0.5,1.5,2.5,3.49\" href=x></map>"
            << "1|0,2,2,2,2,3,0,3|x||||0|";
    }

    void markupAsWritten()
    {
        QFETCH(QString, code);
        QFETCH(QString, shape);
        MapDocument d;
        QVERIFY(LosslessImporter::Apply(Convert(code), d, false));
        QCOMPARE(Describe(d).at(1), shape);
    }

    void classicCodeKeepsStatusAndAlert()
    {
        MapDocument original;
        AddShapeRow(original, "1|10,20,30,20,30,40,10,40|Page.htm|Ann's page|_blank|It's here|1|"
                              "Don't!");
        const QString classic =
            MapCodeGenerator::GenerateMapCode(original, MapCodeGenerator::Form::Viewing);
        MapDocument imported;
        QVERIFY(LosslessImporter::Apply(Convert(classic), imported, false));
        QCOMPARE(Describe(imported), Describe(original));
    }

    void severalMaps()
    {
        const QString code = "<p>Two maps</p><map name=\"first\"><area shape=rect coords=1,1,2,2 "
                             "href=a></map>\n<div><map id=\"second\"><area shape=rect "
                             "coords=3,3,4,4 href=b><area shape=default href=c></map></div>";
        QString refusal;
        const std::vector<HtmlMapReader::Map> maps = HtmlMapReader::ReadMaps(code, refusal);
        QCOMPARE(maps.size(), std::size_t(2));
        const LosslessImporter::Result result = LosslessImporter::Convert(maps, 1, MapDocument());
        QCOMPARE(result.MapName, QStringLiteral("second"));
        QCOMPARE(result.shapes.size(), std::size_t(1));
        QCOMPARE(result.shapes[0].URL, QStringLiteral("b"));
        QCOMPARE(result.DefURL, QStringLiteral("c"));
        // The first is taken when nobody chooses.
        QCOMPARE(Convert(code).MapName, QStringLiteral("first"));

        // Map code inside a script or a comment is no map, as in a browser.
        const QString hidden =
            "<script>document.write('<map name=s><area coords=1,1,2,2>')</script>"
            "<!-- <map name=c><area coords=1,1,2,2> --><textarea><map name=t>"
            "</textarea><map name=real><area coords=0,0,1,1 href=r></map>";
        const std::vector<HtmlMapReader::Map> real = HtmlMapReader::ReadMaps(hidden, refusal);
        QCOMPARE(real.size(), std::size_t(1));
        QCOMPARE(real[0].name, QStringLiteral("real"));
    }

    void addingKeepsTheCurrentShapes()
    {
        MapDocument d;
        d.MapName = QStringLiteral("Mine");
        d.DefURL = QStringLiteral("home.htm");
        AddShapeRow(d, "1|1,1,5,1,5,5,1,5|one.htm||||0|");
        AddShapeRow(d, "1|6,6,9,6,9,9,6,9|two.htm||||0|");
        d.BringToTop(1);
        const QString code = "<map name=other><area shape=rect coords=10,10,20,20 href=three.htm>"
                             "<area shape=circle coords=30,30,5 href=four.htm></map>";
        QVERIFY(LosslessImporter::Apply(Convert(code, d), d, true));
        // Without a default area in the code the map keeps its own, and its name.
        QCOMPARE(Describe(d),
                 QStringList({"name=Mine", "1|1,1,5,1,5,5,1,5|one.htm||||0|",
                              "1|6,6,9,6,9,9,6,9|two.htm||||0|",
                              "1|10,10,20,10,20,20,10,20|three.htm||||0|",
                              "0|25,25,35,25,35,35,25,35|four.htm||||0|", "home.htm||||"}));
        QCOMPARE(d.ShapeOrder(), std::vector<std::int16_t>({1, 0, 2, 3}));
        QCOMPARE(d.Shape(1).ShapeColor, d.FocusColor);
        QCOMPARE(d.Shape(2).ShapeColor, d.NonFocusColor);

        // Past the 16-bit limit nothing is added.
        MapDocument full;
        for (int i = 0; i < 32767; ++i)
            full.AddShape();
        const LosslessImporter::Result result = Convert(code, full);
        QVERIFY(!LosslessImporter::AddLimitMessage(result, full).isEmpty());
        QVERIFY(!LosslessImporter::Apply(result, full, true));
        QCOMPARE(full.ItemCount(), std::int16_t(32766));
    }

    void deepNestingIsRefusedShallowIsRead()
    {
        const QString map = "<map name=deep><area shape=rect coords=1,1,2,2 href=x></map>";
        // Browsers nest 512 levels; sloppy pages with thousands of unclosed paragraphs and
        // list items, comments and scripts full of tags are no deeper than they look.
        QString code =
            QStringLiteral("<div><span>").repeated(250) +
            QStringLiteral("<p>x<li>y<br><img src=a><!-- <div><div> --><td>").repeated(5000) +
            QStringLiteral("<script>if (a<b) document.write('<div><div>')</script>")
                .repeated(1000) +
            map;
        LosslessImporter::Result result = Convert(code);
        QCOMPARE(result.shapes.size(), std::size_t(1));

        code = QStringLiteral("<div><span>").repeated(100000) + map;
        result = Convert(code);
        QVERIFY(!result.ok);
        QCOMPARE(result.message, HtmlMapReader::TooDeepMessage());
    }
};

QTEST_GUILESS_MAIN(TestHtmlImport)
#include "tst_htmlimport.moc"
