#include "ShapeRow.h"
#include "core/interchange/FormattedMapCode.h"
#include "core/interchange/MapCheck.h"
#include "core/interchange/MapFile.h"
#include "core/interchange/MapFormat.h"

#include <QProcess>
#include <QTest>
#include <QXmlStreamReader>

namespace {

// Every text a user can type in, with everything that needs escaping somewhere. The URL
// keeps to characters that are legal in an href as written.
const QString Nasty =
    QString::fromUtf8("Ann's \"best\" <b>caf\xc3\xa9</b> & more\\ \xe2\x80\xa8 end");
const QString NastyUrl = QStringLiteral("page.htm?a=1&b='2'#top");

MapDocument SampleMap()
{
    return MapFile::OpenMapFile(QStringLiteral(VANTREL_SOURCE_DIR "/examples/sample.imp")).document;
}

// One shape of each kind, every text special, every effect on, at zoom 2.
MapDocument SpecialMap()
{
    MapDocument d;
    d.SWidth = 300;
    d.SHeight = 200;
    d.ImageName = QStringLiteral("pic.png");
    d.ImagePath = QStringLiteral("D:\\web\\img\\");
    d.MapName = QStringLiteral("Special");
    d.MapStyle = 1;
    d.MapOnClick = 5;
    d.MapBorder = 1;
    d.BorderColor = RGBColor(255, 8, 0);
    const QString texts = NastyUrl + '|' + Nasty + '|' + Nasty + '|' + Nasty + "|1|" + Nasty;
    AddShapeRow(d, "1|20,20,100,20,100,80,20,80|" + texts, 2.0);
    AddShapeRow(d, "0|200,20,260,20,260,80,200,80|" + texts, 2.0);
    AddShapeRow(d, "2|20,300,100,240,180,300|" + texts, 2.0);
    d.DefURL = NastyUrl;
    d.DefComment = Nasty;
    d.DefStatus = Nasty;
    d.DefAlert = Nasty;
    d.DefAlertVal = 1;
    return d;
}

FormattedMapCode Code(MapDocument& d, MapFormat format,
                      MapCodeGenerator::Form form = MapCodeGenerator::Form::Viewing)
{
    return FormattedMapCode::Generate(d, format, form);
}

// tidy's complaints about a whole page; empty when it has none.
QString TidyComplaints(const QString& page)
{
    QProcess tidy;
    tidy.start(QStringLiteral("tidy"), {QStringLiteral("-q"), QStringLiteral("-e")});
    if (!tidy.waitForStarted())
        return QStringLiteral("tidy could not be started");
    tidy.write(page.toUtf8());
    tidy.closeWriteChannel();
    tidy.waitForFinished(30000);
    const QString complaints = QString::fromUtf8(tidy.readAllStandardError());
    return tidy.exitCode() == 0 ? complaints : complaints + QStringLiteral(" (tidy failed)");
}

QStringList Lines(const MapDocument& d)
{
    QStringList lines;
    for (const MapFinding& finding : MapCheck::Check(d))
        lines << finding.Line();
    return lines;
}

QString Rect(int l, int t, int r, int b, const QString& texts = "a.htm|Alt|||0|")
{
    return QStringLiteral("1|%1,%2,%3,%2,%3,%4,%1,%4|").arg(l).arg(t).arg(r).arg(b) + texts;
}

const QString Covered =
    QStringLiteral("warning: earlier shapes cover it completely, so no visitor can click it");

MapDocument Picture(int w = 400, int h = 300)
{
    MapDocument d;
    d.SWidth = w;
    d.SHeight = h;
    return d;
}

} // namespace

// The HTML5 and SVG forms of a map: valid, escaped, scoped, and the shapes untouched. And the
// map check: each kind of finding on a map made to have it, none on a clean map (the sample
// map is checked clean through vantrel-cli lint); a shape hidden by one earlier shape is
// found at zoom 2 and among the many shapes.
class TestWebCode : public QObject
{
    Q_OBJECT
private slots:
    void html5PagesPassTidy()
    {
        QString page;
        for (MapDocument d : {SampleMap(), SpecialMap()}) {
            QVERIFY(d.ItemCount() >= 0);
            page = Code(d, MapFormat::Html5, MapCodeGenerator::Form::Test)
                       .TestPageText(MapFormat::Html5);
            QCOMPARE(TidyComplaints(page), QString());
        }
        // The style block sits in the page's head.
        QVERIFY(page.indexOf("<style>") < page.indexOf("</head>"));
        QVERIFY(page.contains("src=\"file:///D:/web/img/pic.png\""));
    }

    void html5Areas_data()
    {
        QTest::addColumn<QString>("row");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, const char* fields, const char* area) {
            QTest::newRow(name) << QString(fields) << QString(area);
        };
        row("rectangle, no comment: empty alt", "1|30,40,10,40,10,20,30,20|a.htm||||0|",
            "<area shape=\"rect\" coords=\"10,20,30,40\" href=\"a.htm\" alt=\"\">");
        row("circle", "0|10,10,21,10,21,30,10,30|a.htm|Sun|||0|",
            "<area shape=\"circle\" coords=\"16,16,6\" href=\"a.htm\" alt=\"Sun\">");
        row("polygon without trailing comma", "2|10,10,50,10,30,40|a.htm|x|||0|",
            "<area shape=\"poly\" coords=\"10,10,50,10,30,40\" href=\"a.htm\" alt=\"x\">");
        row("no link: no href and no alt", "1|10,20,30,20,30,40,10,40| ||||0|",
            "<area shape=\"rect\" coords=\"10,20,30,40\">");
        row("every text escaped; status as title; alert as onclick",
            "1|10,20,30,20,30,40,10,40|a.htm?x=1&y=\"2\"|<Ann's>|_blank|50% "
            "\"off\"|1|it's\n\"ok\"\\",
            "<area shape=\"rect\" coords=\"10,20,30,40\" href=\"a.htm?x=1&amp;y=&quot;2&quot;\" "
            "alt=\"&lt;Ann's&gt;\" target=\"_blank\" title=\"50% &quot;off&quot;\" "
            "onclick=\"alert('it\\'s\\n&quot;ok&quot;\\\\')\">");
        row("alert switched off is not written", "1|10,20,30,20,30,40,10,40|a.htm|||x|0|hidden",
            "<area shape=\"rect\" coords=\"10,20,30,40\" href=\"a.htm\" alt=\"\" title=\"x\">");
    }

    void html5Areas()
    {
        QFETCH(QString, row);
        QFETCH(QString, expected);
        MapDocument d;
        AddShapeRow(d, row);
        const QString body = Code(d, MapFormat::Html5).Body;
        QVERIFY2(body.contains(expected + "\r\n"), qPrintable(body));
    }

    void html5PictureAndEffects()
    {
        MapDocument d = SpecialMap();
        const FormattedMapCode code = Code(d, MapFormat::Html5);
        QVERIFY(code.Body.contains("<map name=\"Special\" id=\"Special\">"));
        QVERIFY(code.Body.contains("<img src=\"pic.png\" alt=\"" +
                                   Nasty.toHtmlEscaped().replace("&#39;", "'") +
                                   "\" width=\"300\" height=\"200\" usemap=\"#Special\">"));
        // The default area comes last and covers the rest of the picture.
        const qsizetype defaultArea = code.Body.indexOf("<area shape=\"default\" href=");
        QVERIFY(defaultArea > code.Body.lastIndexOf("<area shape=\"poly\""));
        // Grey until hover, x-ray while pressed, a red shadow: all on this map's class only.
        QVERIFY(code.Head.contains(".map-Special img { filter: grayscale(100%) "
                                   "drop-shadow(5px 5px 0 #FF0800); }"));
        QVERIFY(code.Head.contains(
            ".map-Special:hover img { filter: drop-shadow(5px 5px 0 #FF0800); }"));
        QVERIFY(code.Head.contains(
            ".map-Special:active img { filter: grayscale(100%) invert(100%) drop-shadow"));
        QVERIFY(code.Body.startsWith("<div class=\"map-Special\">"));
        QVERIFY(code.Text.startsWith("<!--"));
        QVERIFY(code.Text.endsWith(code.Body));
        QVERIFY(!code.Text.contains("filter:gray()") && !code.Text.contains("window.status"));

        // Two maps on one page keep their own rules.
        d.MapName = QStringLiteral("Other map");
        QVERIFY(Code(d, MapFormat::Html5).Head.contains(".map-Other_map:hover img"));

        // HTML5 wants a name without spaces, and one at all; the picture uses the same.
        for (const auto& [written, name] : {std::pair(" Other \t map ", "Other_map"),
                                            std::pair("  ", "map"), std::pair("", "map")}) {
            d.MapName = QString::fromLatin1(written);
            const QString body = Code(d, MapFormat::Html5).Body;
            QVERIFY2(body.contains(QStringLiteral("<map name=\"%1\" id=\"%1\">").arg(name)) &&
                         body.contains(QStringLiteral("usemap=\"#%1\">").arg(name)),
                     qPrintable(body));
        }

        // Without effects there is no style block and no comment about it.
        MapDocument plain;
        AddShapeRow(plain, "1|1,1,5,1,5,5,1,5|a.htm||||0|");
        const FormattedMapCode plainCode = Code(plain, MapFormat::Html5);
        QVERIFY(plainCode.Head.isEmpty());
        QCOMPARE(plainCode.Text, plainCode.Body);
    }

    void svgBlockIsWellFormedWithEarlierShapesOnTop()
    {
        MapDocument d = SpecialMap();
        // A map file may hold any character; XML has no way at all to write a control one.
        d.Shape(0).Comment = QStringLiteral("red") + QChar(1) + QStringLiteral("house");
        const QString block = Code(d, MapFormat::Svg).Text;
        QXmlStreamReader xml(block);
        QStringList shapes;
        QStringList labels;
        QString viewBox;
        while (!xml.atEnd()) {
            xml.readNext();
            if (!xml.isStartElement())
                continue;
            if (xml.name() == QLatin1String("svg"))
                viewBox = xml.attributes().value("viewBox").toString();
            if (xml.name() == QLatin1String("a"))
                labels << xml.attributes().value("aria-label").toString();
            if (QStringList{"rect", "circle", "polygon"}.contains(xml.name().toString()))
                shapes << xml.name().toString();
        }
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
        QCOMPARE(viewBox, QStringLiteral("0 0 300 200"));
        // Default area first (lowest), then the shapes last to first: shape 0 lies on top.
        QCOMPARE(shapes, QStringList({"rect", "polygon", "circle", "rect"}));
        QCOMPARE(labels, QStringList({Nasty, Nasty, Nasty, QStringLiteral("red\uFFFDhouse")}));
        QVERIFY(block.contains("preserveAspectRatio=\"none\""));
        QVERIFY(block.contains("<rect x=\"10\" y=\"10\" width=\"40\" height=\"30\"/>"));
        QVERIFY(block.contains("<polygon points=\"10,150 50,120 90,150\"/>"));
        QVERIFY(block.contains(".map-Special a:focus"));
    }

    void codeLeavesTheMapAsItIs()
    {
        // At zoom 3 the classic form's rescale there and back may move a point; the modern
        // forms read a copy.
        MapDocument d;
        AddShapeRow(d, "2|1,1,10,1,5,8|a.htm||||0|", 3.0);
        const std::vector<ShapePoint> before = d.Shape(0).Points();
        for (MapFormat format : {MapFormat::Html5, MapFormat::Svg})
            Code(d, format);
        QVERIFY(d.Shape(0).Points() == before);
        // An empty map gives no code in any form.
        MapDocument empty;
        for (MapFormat format : {MapFormat::Classic, MapFormat::Html5, MapFormat::Svg})
            QVERIFY(Code(empty, format).Text.isEmpty());
    }

    void formatNames()
    {
        for (const QString& name : MapFormats::Names())
            QCOMPARE(MapFormats::Name(*MapFormats::FromName(name)), name);
        QCOMPARE(MapFormats::Names(), QStringList({"classic", "html5", "svg"}));
        QVERIFY(!MapFormats::FromName("HTML5"));
    }

    void eachKindOfFinding()
    {
        const auto finds = [](const QStringList& rows, const QStringList& expected) {
            MapDocument d = Picture();
            for (const QString& row : rows)
                AddShapeRow(d, row);
            QCOMPARE(Lines(d), expected);
        };
        const QString first = Rect(10, 10, 50, 50);
        const auto quote = [](const char* field) {
            return QStringLiteral(
                       "Shape #1: warning: the double quote in its %1 breaks the classic "
                       "code (the HTML5 and SVG formats escape it)")
                .arg(QLatin1String(field));
        };
        // Blank alt text and a placeholder URL with blanks round it.
        finds({first, Rect(60, 10, 90, 50, " # |  |||0|")},
              {"Shape #2: warning: no alt text: screen readers and search engines get nothing",
               "Shape #2: warning: placeholder URL \"#\": the area leads nowhere"});
        finds({first, Rect(60, 10, 90, 50, "|Alt|||0|")},
              {"Shape #2: warning: no URL: the area leads nowhere"});
        // The link a new shape starts with, never typed over.
        finds(
            {Rect(60, 10, 90, 50, "http://|Alt|||0|"), Rect(10, 60, 50, 90, "https:///a|Alt|||0|")},
            {"Shape #1: warning: placeholder URL \"http://\": the area leads nowhere",
             "Shape #2: warning: placeholder URL \"https:///a\": the area leads nowhere"});
        finds({Rect(60, 10, 90, 50, "http://exa mple.com/|Alt|||0|")},
              {"Shape #1: error: the URL \"http://exa mple.com/\" does not parse"});
        finds({Rect(380, 10, 420, 50)},
              {"Shape #1: warning: the shape lies partly outside the picture"});
        finds({"0|500,10,540,10,540,50,500,50|a.htm|Alt|||0|"},
              {"Shape #1: error: the shape lies outside the picture"});
        // On the picture's last line is inside.
        finds({Rect(350, 250, 400, 300)}, {});
        finds({Rect(10, 10, 50, 10)}, {"Shape #1: error: the rectangle has no area"});
        finds({"2|10,10,50,50,10,10|a.htm|Alt|||0|"},
              {"Shape #1: error: the polygon has fewer than three distinct points"});
        finds({"2|10,10,20,20,30,30|a.htm|Alt|||0|"}, {"Shape #1: error: the polygon has no area"});
        finds({"2|10,10,50,50,50,10,10,50|a.htm|Alt|||0|"},
              {"Shape #1: warning: the polygon crosses itself: browsers may disagree "
               "about what is inside"});
        // Concave polygon is fine.
        finds({"2|10,10,50,10,30,20,50,40,10,40|a.htm|Alt|||0|"}, {});
        // Covered by two earlier shapes together.
        finds({Rect(10, 10, 30, 50), Rect(30, 10, 50, 50), Rect(15, 15, 45, 45)},
              {"Shape #3: " + Covered});
        // A one-pixel gap keeps it reachable.
        finds({Rect(10, 10, 29, 50), Rect(30, 10, 50, 50), Rect(15, 15, 45, 45)}, {});
        // A later shape covers nothing earlier.
        finds({Rect(20, 20, 40, 40), first}, {});
        finds({Rect(10, 10, 50, 50, "a\"b.htm|say \"hi\"|x\"y||0|")},
              {"Shape #1: error: the URL \"a\"b.htm\" does not parse", quote("URL"),
               quote("alt text"), quote("target")});
        // The map's name and default area.
        MapDocument d = Picture();
        AddShapeRow(d, Rect(10, 10, 50, 50));
        d.MapName = QStringLiteral("My map");
        d.DefURL = QStringLiteral("ht tp://x");
        QCOMPARE(Lines(d),
                 QStringList({"Map: error: the map name \"My map\" contains spaces, which "
                              "a map name must not",
                              "Default area: error: the URL \"ht tp://x\" does not parse"}));
        d.MapName.clear();
        d.DefURL.clear();
        QCOMPARE(Lines(d),
                 QStringList({"Map: error: the map has no name, so the picture cannot use it"}));
        // Shapes are counted from 1 at zoom 2 as well, in picture pixels.
        d.MapName = QStringLiteral("M");
        AddShapeRow(d, Rect(40, 40, 80, 80), 2.0);
        QCOMPARE(Lines(d), QStringList({"Shape #2: " + Covered}));
    }

    void coveredShapesAtFullSize()
    {
        // 32,767 shapes over a picture bigger than the check's buffer: a grid of small
        // squares; every hundredth shape a copy of an earlier square (hidden); every
        // hundred-and-first one pixel wider than the square before it, so that only a
        // one-pixel strip of it is free (reachable).
        MapDocument d = Picture(9000, 7000);
        std::vector<QRect> rects;
        QStringList expected;
        for (int i = 0; i < 32767; ++i) {
            QRect r;
            if (i % 100 == 99) {
                r = rects[std::size_t(i - 50)];
                expected << QStringLiteral("Shape #%1: ").arg(i + 1) + Covered;
            } else if (i % 101 == 100) {
                r = rects.back().adjusted(0, 0, 1, 0);
            } else {
                const int slot = int(rects.size());
                r = QRect(QPoint((slot % 300) * 30, (slot / 300) * 30), QSize(20, 20));
            }
            rects.push_back(r);
            AddShapeRow(d, Rect(r.left(), r.top(), r.left() + r.width(), r.top() + r.height()));
        }
        QCOMPARE(Lines(d), expected);
    }
};

QTEST_GUILESS_MAIN(TestWebCode)
#include "tst_webcode.moc"
