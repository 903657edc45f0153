#include "canvas/MapDocument.h"
#include "interchange/MapCodeGenerator.h"
#include "shape/PatShape.h"

#include <QTest>

namespace {

const QString CRLF = QStringLiteral("\r\n");

struct ShapeSpec
{
    std::int16_t type = Rectangle;
    std::vector<ShapePoint> points;
    double zoom = 1.0;
    QString url = QStringLiteral("http://a.com/");
    QString comment;
    QString target;
    QString status;
    std::int16_t alertBox = 0;
    QString alert;
};

void AddShape(MapDocument& d, const ShapeSpec& spec)
{
    const std::int16_t i = d.AddShape();
    PatShape& s = d.Shape(i);
    s.ResetInfo(spec.type, true, 0, spec.url, spec.comment, spec.target, spec.status, spec.alertBox,
                spec.alert);
    s.ResetPoints(static_cast<std::int16_t>(spec.points.size() - 1));
    for (std::size_t p = 0; p < spec.points.size(); ++p)
        s.SetPoint(static_cast<std::int16_t>(p), spec.points[p].x, spec.points[p].y);
    s.SetOpenGeneralInfo(nullptr, spec.zoom);
}

std::vector<ShapePoint> Box(int l, int t, int r, int b)
{
    return {{l, t}, {r, t}, {r, b}, {l, b}};
}

MapDocument OneRectMap()
{
    MapDocument d;
    d.SWidth = 200;
    d.SHeight = 100;
    d.ImageName = QStringLiteral("pic.gif");
    d.ImagePath = QStringLiteral("D:\\web\\img\\");
    ShapeSpec spec;
    spec.points = Box(10, 20, 30, 40);
    AddShape(d, spec);
    return d;
}

const QString RectArea = QStringLiteral("<area shape=\"rect\" coords=\"10,20,30,40\" "
                                        "href=\"http://a.com/\">");
const QString PlainImg = QStringLiteral("<img src=\"pic.gif\" usemap=\"#MyMap\" border=0");

QString MapOf(const QString& areas)
{
    return QStringLiteral("<map name=\"MyMap\">") + CRLF + areas + QStringLiteral("</map>") + CRLF;
}

} // namespace

Q_DECLARE_METATYPE(ShapeSpec)

class TestMapCode : public QObject
{
    Q_OBJECT
private slots:
    void areaElement_data();
    void areaElement();
    void zoomedShapeIsWrittenAtZoomOneAndKeepsItsPoints();
    void areasFollowArrayOrderNotStacking();
    void effects_data();
    void effects();
    void borders_data();
    void borders();
    void defaultArea_data();
    void defaultArea();
    void testFormPictureAddress_data();
    void testFormPictureAddress();
    void emptyMapGivesNoCode();
    void fullShapeListIsWritten();
};

void TestMapCode::areaElement_data()
{
    QTest::addColumn<ShapeSpec>("spec");
    QTest::addColumn<QString>("expected");

    ShapeSpec rect;
    rect.points = Box(10, 20, 30, 40);
    QTest::newRow("rectangle") << rect << RectArea;

    ShapeSpec unordered = rect;
    unordered.points = {{30, 40}, {10, 40}, {10, 20}, {30, 20}};
    QTest::newRow("rectangle from its bounding box") << unordered << RectArea;

    ShapeSpec circle;
    circle.type = Circle;
    circle.points = Box(10, 10, 21, 30);
    QTest::newRow("circle in the top-left square")
        << circle
        << QStringLiteral("<area shape=\"circle\" coords=\"16,16,6\" href=\"http://a.com/\">");

    ShapeSpec poly;
    poly.type = Polygon;
    poly.points = {{10, 10}, {50, 10}, {30, 40}};
    QTest::newRow("polygon with trailing comma")
        << poly
        << QStringLiteral(
               "<area shape=\"poly\" coords=\"10,10,50,10,30,40,\" href=\"http://a.com/\">");

    ShapeSpec blank = rect;
    blank.url = QStringLiteral("  ");
    QTest::newRow("blank url gives #")
        << blank << QStringLiteral("<area shape=\"rect\" coords=\"10,20,30,40\" href=\"#\">");

    ShapeSpec padded = rect;
    padded.url = QStringLiteral(" x.htm ");
    QTest::newRow("url kept as stored")
        << padded
        << QStringLiteral("<area shape=\"rect\" coords=\"10,20,30,40\" href=\" x.htm \">");

    ShapeSpec all = rect;
    all.comment = QStringLiteral("Ann's \"page\"");
    all.target = QStringLiteral("_blank");
    all.status = QStringLiteral("Ann's page");
    all.alertBox = 1;
    all.alert = QStringLiteral("it's <b>");
    QTest::newRow("every attribute, apostrophes escaped only in scripts")
        << all
        << QStringLiteral("<area shape=\"rect\" coords=\"10,20,30,40\" href=\"http://a.com/\" "
                          "alt=\"Ann's \"page\"\" target=\"_blank\" "
                          "OnFocus=\"window.status='Ann\\'s page'\" OnBlur=\"window.status=''\" "
                          "OnClick=\"javascript:alert('it\\'s <b>')\">");

    ShapeSpec blanks = rect;
    blanks.comment = QStringLiteral(" ");
    blanks.target = QStringLiteral("   ");
    blanks.status = QStringLiteral("  ");
    QTest::newRow("blank comment, target and status are left out") << blanks << RectArea;

    ShapeSpec tab = rect;
    tab.url = QStringLiteral("\t");
    tab.target = QStringLiteral("\t");
    QTest::newRow("a tab is not a blank")
        << tab
        << QStringLiteral("<area shape=\"rect\" coords=\"10,20,30,40\" href=\"\t\" "
                          "target=\"\t\">");

    ShapeSpec alertOff = rect;
    alertOff.alert = QStringLiteral("hello");
    QTest::newRow("alert text with the switch off") << alertOff << RectArea;

    ShapeSpec alertEmpty = rect;
    alertEmpty.alertBox = 1;
    QTest::newRow("alert switch on with no text") << alertEmpty << RectArea;

    ShapeSpec alertBlank = rect;
    alertBlank.alertBox = -1;
    alertBlank.alert = QStringLiteral(" ");
    QTest::newRow("alert of one blank is written")
        << alertBlank
        << QStringLiteral("<area shape=\"rect\" coords=\"10,20,30,40\" href=\"http://a.com/\" "
                          "OnClick=\"javascript:alert(' ')\">");

    ShapeSpec negative = rect;
    negative.points = Box(-5, -7, 3, 4);
    QTest::newRow("negative coordinates")
        << negative
        << QStringLiteral("<area shape=\"rect\" coords=\"-5,-7,3,4\" href=\"http://a.com/\">");

    ShapeSpec far = rect;
    far.points = Box(150000, 200000, 150010, 200020);
    QTest::newRow("coordinates beyond 100000")
        << far
        << QStringLiteral("<area shape=\"rect\" coords=\"150000,200000,150010,200020\" "
                          "href=\"http://a.com/\">");
}

void TestMapCode::areaElement()
{
    QFETCH(ShapeSpec, spec);
    QFETCH(QString, expected);
    MapDocument d;
    d.ImageName = QStringLiteral("pic.gif");
    AddShape(d, spec);
    QCOMPARE(MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Viewing),
             MapOf(expected + CRLF) + PlainImg + QLatin1Char('>'));
}

void TestMapCode::zoomedShapeIsWrittenAtZoomOneAndKeepsItsPoints()
{
    MapDocument d;
    d.ImageName = QStringLiteral("pic.gif");
    ShapeSpec spec;
    spec.zoom = 2.0;
    spec.points = Box(20, 40, 60, 80);
    AddShape(d, spec);
    const QString code = MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Viewing);
    QVERIFY(code.contains(RectArea));
    QCOMPARE(d.Shape(0).Points(), Box(20, 40, 60, 80));
    QCOMPARE(d.Shape(0).Zoom(), 2.0);

    // Halves round to even going down, so 5 at zoom 2 is written as 2.
    MapDocument odd;
    spec.points = Box(5, 7, 9, 11);
    AddShape(odd, spec);
    QVERIFY(MapCodeGenerator::GenerateMapCode(odd, MapCodeGenerator::Form::Viewing)
                .contains(QStringLiteral("coords=\"2,4,4,6\"")));
}

void TestMapCode::areasFollowArrayOrderNotStacking()
{
    MapDocument d;
    ShapeSpec a;
    a.points = Box(1, 1, 2, 2);
    ShapeSpec b;
    b.points = Box(3, 3, 4, 4);
    AddShape(d, a);
    AddShape(d, b);
    d.BringToTop(1);
    const QString code = MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Viewing);
    QVERIFY(code.startsWith(MapOf(
        QStringLiteral("<area shape=\"rect\" coords=\"1,1,2,2\" href=\"http://a.com/\">") + CRLF +
        QStringLiteral("<area shape=\"rect\" coords=\"3,3,4,4\" href=\"http://a.com/\">") + CRLF)));
}

void TestMapCode::effects_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<int>("onClick");
    QTest::addColumn<QString>("attributes");

    const QString hover[] = {
        QString(),
        QStringLiteral(" style=\"filter:gray()\" onmouseover=\"this.style.filter-='gray()'\" "
                       "onmouseout=\"this.style.filter='gray()'\""),
        QStringLiteral(" style=\"filter:alpha(style=1,opacity=60,finishopacity=60)\" "
                       "onmouseover=\"this.style.filter-='alpha(style=1,opacity=60,"
                       "finishopacity=60)'\" onmouseout=\"this.style.filter='alpha(style=1,"
                       "opacity=60,finishopacity=60)'\""),
        QStringLiteral(" style=\"filter:blur(strength=10,direction=90)\" "
                       "onmouseover=\"this.style.filter-='blur(strength=10,direction=90)'\" "
                       "onmouseout=\"this.style.filter='blur(strength=10,direction=90)'\""),
        QStringLiteral(" style=\"filter:invert()\" onmouseover=\"this.style.filter-='invert()'\" "
                       "onmouseout=\"this.style.filter='invert()'\""),
        QStringLiteral(" style=\"filter:xray()\" onmouseover=\"this.style.filter-='xray()'\" "
                       "onmouseout=\"this.style.filter='xray()'\""),
    };
    const QString press[] = {
        QString(),
        QStringLiteral(" onmousedown=\"this.style.filter='gray()'\" "
                       "onmouseup=\"this.style.filter-='gray()'\""),
        QStringLiteral(" onmousedown=\"this.style.filter='alpha(style=1,opacity=60,"
                       "finishopacity=60)'\" onmouseup=\"this.style.filter-='alpha(style=1,"
                       "opacity=60,finishopacity=60)'\""),
        QStringLiteral(" onmousedown=\"this.style.filter='blur(strength=10,direction=90)'\" "
                       "onmouseup=\"this.style.filter-='blur(strength=10,direction=90)'\""),
        QStringLiteral(" onmousedown=\"this.style.filter='invert()'\" "
                       "onmouseup=\"this.style.filter-='invert()'\""),
        QStringLiteral(" onmousedown=\"this.style.filter='xray()'\" "
                       "onmouseup=\"this.style.filter-='xray()'\""),
    };
    for (int i = 0; i <= 5; ++i) {
        QTest::addRow("style %d", i) << i << 0 << hover[i];
        QTest::addRow("on click %d", i) << 0 << i << press[i];
    }
    QTest::newRow("blur hover then invert press") << 3 << 4 << hover[3] + press[4];
    QTest::newRow("both out of range") << 6 << -1 << QString();
    QTest::newRow("hover out of range, press kept") << 9 << 5 << press[5];
}

void TestMapCode::effects()
{
    QFETCH(int, style);
    QFETCH(int, onClick);
    QFETCH(QString, attributes);
    MapDocument d = OneRectMap();
    d.MapStyle = static_cast<std::int16_t>(style);
    d.MapOnClick = static_cast<std::int16_t>(onClick);
    QCOMPARE(MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Viewing),
             MapOf(RectArea + CRLF) + PlainImg + attributes + QLatin1Char('>'));
    QCOMPARE(MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Test),
             MapOf(RectArea + CRLF) +
                 QStringLiteral("<img src=\"file:///D|\\web\\img\\pic.gif\" usemap=\"#MyMap\" "
                                "height=100 width=200 border=0") +
                 attributes + QLatin1Char('>'));
}

void TestMapCode::borders_data()
{
    QTest::addColumn<int>("border");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::newRow("normal") << 0 << QString() << QString();
    QTest::newRow("shadow")
        << 1
        << QStringLiteral("<div style=\"width:200pt;height:100pt;filter:dropshadow(offx=5, "
                          "offy=5, color=#FF0800)\">")
        << QStringLiteral("</div>");
    QTest::newRow("glow") << 2
                          << QStringLiteral(
                                 "<div style=\"width:200pt;height:100pt;filter:glow(color=#FF0800, "
                                 "strength=5)\"><table cellpadding=5><tr><td>")
                          << QStringLiteral("</td></tr></table></div>");
    QTest::newRow("unknown") << 3 << QString() << QString();
}

void TestMapCode::borders()
{
    QFETCH(int, border);
    QFETCH(QString, before);
    QFETCH(QString, after);
    MapDocument d = OneRectMap();
    d.MapBorder = static_cast<std::int16_t>(border);
    d.BorderColor = RGBColor(255, 8, 0);
    d.MapStyle = 1;
    const QString code = MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Viewing);
    QCOMPARE(code, MapOf(RectArea + CRLF) + before + PlainImg +
                       QStringLiteral(" style=\"filter:gray()\" onmouseover=\"this.style.filter-="
                                      "'gray()'\" onmouseout=\"this.style.filter='gray()'\">") +
                       after);
    QVERIFY(!code.endsWith(CRLF));
}

void TestMapCode::defaultArea_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("comment");
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("status");
    QTest::addColumn<QString>("alert");
    QTest::addColumn<int>("alertVal");
    QTest::addColumn<QString>("expected");

    QTest::newRow("all empty") << ""
                               << ""
                               << ""
                               << ""
                               << "" << 1 << QString();
    QTest::newRow("only target") << ""
                                 << ""
                                 << "_top"
                                 << ""
                                 << "" << 0 << QString();
    QTest::newRow("blank url gives #")
        << " "
        << ""
        << ""
        << ""
        << "" << 0 << QStringLiteral("<area shape=\"rect\" href=\"#\" coords=\"0,0,200,100\">");
    QTest::newRow("url, comment and target")
        << "rest.htm"
        << "The rest"
        << "_top"
        << ""
        << "" << 0
        << QStringLiteral("<area shape=\"rect\" href=\"rest.htm\" coords=\"0,0,200,100\" "
                          "alt=\"The rest\" target=\"_top\">");
    QTest::newRow("comment alone")
        << ""
        << "x"
        << ""
        << ""
        << "" << 0
        << QStringLiteral("<area shape=\"rect\" href=\"#\" coords=\"0,0,200,100\" alt=\"x\">");
    QTest::newRow("status and alert escaped")
        << ""
        << ""
        << ""
        << "don't"
        << "won't" << 1
        << QStringLiteral("<area shape=\"rect\" href=\"#\" coords=\"0,0,200,100\" "
                          "OnFocus=\"window.status='don\\'t'\" OnBlur=\"window.status=''\" "
                          "OnClick=\"javascript:alert('won\\'t')\">");
    QTest::newRow("alert text with switch off still makes the area")
        << ""
        << ""
        << ""
        << ""
        << "hi" << 0 << QStringLiteral("<area shape=\"rect\" href=\"#\" coords=\"0,0,200,100\">");
    QTest::newRow("blank status makes the area but no script")
        << ""
        << ""
        << ""
        << " "
        << "" << 1 << QStringLiteral("<area shape=\"rect\" href=\"#\" coords=\"0,0,200,100\">");
    QTest::newRow("tab url and target are content")
        << "\t"
        << ""
        << "\t"
        << ""
        << "" << 0
        << QStringLiteral("<area shape=\"rect\" href=\"\t\" coords=\"0,0,200,100\" "
                          "target=\"\t\">");
}

void TestMapCode::defaultArea()
{
    QFETCH(QString, url);
    QFETCH(QString, comment);
    QFETCH(QString, target);
    QFETCH(QString, status);
    QFETCH(QString, alert);
    QFETCH(int, alertVal);
    QFETCH(QString, expected);
    MapDocument d = OneRectMap();
    d.DefURL = url;
    d.DefComment = comment;
    d.DefTarget = target;
    d.DefStatus = status;
    d.DefAlert = alert;
    d.DefAlertVal = static_cast<std::int16_t>(alertVal);
    const QString areas = RectArea + CRLF + (expected.isEmpty() ? QString() : expected + CRLF);
    QCOMPARE(MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Viewing),
             MapOf(areas) + PlainImg + QLatin1Char('>'));
}

void TestMapCode::testFormPictureAddress_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("src");
    QTest::newRow("windows folder") << "D:\\web\\img\\"
                                    << "pic.gif" << QStringLiteral("file:///D|\\web\\img\\pic.gif");
    QTest::newRow("posix folder") << "/home/ann/maps/"
                                  << "pic.gif" << QStringLiteral("file:///home/ann/maps/pic.gif");
    QTest::newRow("posix folder keeps colons")
        << "/srv/a:b/"
        << "p.png" << QStringLiteral("file:///srv/a:b/p.png");
    QTest::newRow("no folder") << ""
                               << "pic.gif" << QStringLiteral("file:///pic.gif");
    QTest::newRow("no picture") << "C:\\maps\\"
                                << "" << QStringLiteral("file:///C|\\maps\\");
}

void TestMapCode::testFormPictureAddress()
{
    QFETCH(QString, folder);
    QFETCH(QString, name);
    QFETCH(QString, src);
    MapDocument d = OneRectMap();
    d.ImagePath = folder;
    d.ImageName = name;
    d.MapName = QString();
    QCOMPARE(MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Test),
             QStringLiteral("<map name=\"\">") + CRLF + RectArea + CRLF + QStringLiteral("</map>") +
                 CRLF + QStringLiteral("<img src=\"") + src +
                 QStringLiteral("\" usemap=\"#\" height=100 width=200 border=0>"));
}

void TestMapCode::emptyMapGivesNoCode()
{
    MapDocument d;
    d.DefURL = QStringLiteral("x.htm");
    QVERIFY(MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Viewing).isEmpty());
    QVERIFY(MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Test).isEmpty());
    QCOMPARE(MapCodeGenerator::NoShapesMessage(),
             QStringLiteral("No shape areas have been created."));
}

void TestMapCode::fullShapeListIsWritten()
{
    MapDocument d;
    ShapeSpec spec;
    // The most a 16-bit shape list holds: indices 0 to 32767.
    for (int i = 0; i < 32768; ++i) {
        spec.points = Box(i, 0, i + 1, 1);
        AddShape(d, spec);
    }
    QCOMPARE(d.ItemCount(), std::int16_t(32767));
    const QString code = MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Viewing);
    QCOMPARE(code.count(QStringLiteral("<area ")), 32768);
    QVERIFY(code.contains(QStringLiteral("coords=\"32767,0,32768,1\"")));
    QCOMPARE(code.count(CRLF), 32768 + 2);
}

QTEST_APPLESS_MAIN(TestMapCode)
#include "tst_mapcode.moc"
