#include "FileBytes.h"
#include "FileSizeLimit.h"
#include "ShapeRow.h"
#include "core/document/MapDocument.h"
#include "core/interchange/MapCodeGenerator.h"
#include "core/interchange/TestPage.h"

#include <QTemporaryDir>
#include <QTest>

namespace {

const QString CRLF = QStringLiteral("\r\n");
const QString RectArea =
    QStringLiteral("<area shape=\"rect\" coords=\"10,20,30,40\" href=\"http://a.com/\">");
const QString PlainImg = QStringLiteral("<img src=\"pic.gif\" usemap=\"#MyMap\" border=0");

QString Rect(int l, int t, int r, int b)
{
    return QString::asprintf("1|%d,%d,%d,%d,%d,%d,%d,%d|http://a.com/||||0|", l, t, r, t, r, b, l,
                             b);
}

MapDocument OneRectMap()
{
    MapDocument d;
    d.SWidth = 200;
    d.SHeight = 100;
    d.ImageName = QStringLiteral("pic.gif");
    d.ImagePath = QStringLiteral("D:\\web\\img\\");
    AddShapeRow(d, Rect(10, 20, 30, 40));
    return d;
}

QString MapOf(const QString& areas)
{
    return QStringLiteral("<map name=\"MyMap\">") + CRLF + areas + QStringLiteral("</map>") + CRLF;
}

QString Viewing(MapDocument& d)
{
    return MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Viewing);
}

} // namespace

// The classic map code and the test page it is shown in.
class TestMapCode : public QObject
{
    Q_OBJECT
private slots:
    void areaElement_data()
    {
        QTest::addColumn<QString>("row");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, const QString& fields, const QString& area) {
            QTest::newRow(name) << fields << area;
        };
        const QString box = QStringLiteral("1|10,20,30,20,30,40,10,40|");
        const QString rect = QStringLiteral("<area shape=\"rect\" coords=\"10,20,30,40\" href=");
        row("rectangle from its bounding box", "1|30,40,10,40,10,20,30,20|http://a.com/||||0|",
            RectArea);
        row("circle in the top-left square", "0|10,10,21,10,21,30,10,30|http://a.com/||||0|",
            "<area shape=\"circle\" coords=\"16,16,6\" href=\"http://a.com/\">");
        row("polygon with trailing comma", "2|10,10,50,10,30,40|http://a.com/||||0|",
            "<area shape=\"poly\" coords=\"10,10,50,10,30,40,\" href=\"http://a.com/\">");
        row("blank url gives #", box + "  ||||0|", rect + "\"#\">");
        row("every attribute, apostrophes escaped only in scripts",
            box + "http://a.com/|Ann's \"page\"|_blank|Ann's page|1|it's <b>",
            rect + "\"http://a.com/\" alt=\"Ann's \"page\"\" target=\"_blank\" "
                   "OnFocus=\"window.status='Ann\\'s page'\" OnBlur=\"window.status=''\" "
                   "OnClick=\"javascript:alert('it\\'s <b>')\">");
        row("blank comment, target and status are left out", box + "http://a.com/| |   |  |0|",
            RectArea);
        row("a tab is not a blank", box + "\t|\t|\t||0|",
            rect + "\"\t\" alt=\"\t\" target=\"\t\">");
        row("alert of one blank is written", box + "http://a.com/||||-1| ",
            rect + "\"http://a.com/\" OnClick=\"javascript:alert(' ')\">");
        row("coordinates beyond 100000", Rect(150000, -200000, 150010, 200020),
            "<area shape=\"rect\" coords=\"150000,-200000,150010,200020\" href=\"http://a.com/\">");
    }

    void areaElement()
    {
        QFETCH(QString, row);
        QFETCH(QString, expected);
        MapDocument d;
        d.ImageName = QStringLiteral("pic.gif");
        AddShapeRow(d, row);
        QCOMPARE(Viewing(d), MapOf(expected + CRLF) + PlainImg + QLatin1Char('>'));
    }

    void effectsAndBorders_data()
    {
        QTest::addColumn<int>("style");
        QTest::addColumn<int>("onClick");
        QTest::addColumn<int>("border");
        QTest::addColumn<QString>("code");

        const QStringList filters{"gray()", "alpha(style=1,opacity=60,finishopacity=60)",
                                  "blur(strength=10,direction=90)", "invert()", "xray()"};
        const auto hover = [&](int i) {
            return QStringLiteral(" style=\"filter:%1\" onmouseover=\"this.style.filter-='%1'\" "
                                  "onmouseout=\"this.style.filter='%1'\"")
                .arg(filters[i - 1]);
        };
        const auto press = [&](int i) {
            return QStringLiteral(" onmousedown=\"this.style.filter='%1'\" "
                                  "onmouseup=\"this.style.filter-='%1'\"")
                .arg(filters[i - 1]);
        };
        const QString img = MapOf(RectArea + CRLF) + PlainImg;
        for (int i = 1; i <= 5; ++i) {
            QTest::addRow("hover %d", i) << i << 0 << 0 << img + hover(i) + ">";
            QTest::addRow("press %d", i) << 0 << i << 0 << img + press(i) + ">";
        }
        QTest::newRow("blur hover then invert press")
            << 3 << 4 << 0 << img + hover(3) + press(4) + ">";
        QTest::newRow("all out of range") << 6 << -1 << 3 << img + ">";
        QTest::newRow("shadow border")
            << 1 << 0 << 1
            << MapOf(RectArea + CRLF) +
                   "<div style=\"width:200pt;height:100pt;filter:dropshadow(offx=5, offy=5, "
                   "color=#FF0800)\">" +
                   PlainImg + hover(1) + "></div>";
        QTest::newRow("glow border")
            << 0 << 0 << 2
            << MapOf(RectArea + CRLF) +
                   "<div style=\"width:200pt;height:100pt;filter:glow(color=#FF0800, strength=5)\">"
                   "<table cellpadding=5><tr><td>" +
                   PlainImg + "></td></tr></table></div>";
    }

    void effectsAndBorders()
    {
        QFETCH(int, style);
        QFETCH(int, onClick);
        QFETCH(int, border);
        QFETCH(QString, code);
        MapDocument d = OneRectMap();
        d.MapStyle = static_cast<std::int16_t>(style);
        d.MapOnClick = static_cast<std::int16_t>(onClick);
        d.MapBorder = static_cast<std::int16_t>(border);
        d.BorderColor = RGBColor(255, 8, 0);
        QCOMPARE(Viewing(d), code);
    }

    void defaultArea_data()
    {
        QTest::addColumn<QString>("fields"); // url|comment|target|status|alert|alert switch
        QTest::addColumn<QString>("expected");
        const QString area = QStringLiteral("<area shape=\"rect\" href=");
        const QString whole = QStringLiteral(" coords=\"0,0,200,100\"");
        QTest::newRow("all empty") << "|||||1" << QString();
        QTest::newRow("blank url gives #") << " |||||0" << area + "\"#\"" + whole + ">";
        QTest::newRow("url, comment and target")
            << "rest.htm|The rest|_top|||0"
            << area + "\"rest.htm\"" + whole + " alt=\"The rest\" target=\"_top\">";
        QTest::newRow("status and alert escaped")
            << "|||don't|won't|1"
            << area + "\"#\"" + whole +
                   " OnFocus=\"window.status='don\\'t'\" OnBlur=\"window.status=''\" "
                   "OnClick=\"javascript:alert('won\\'t')\">";
        QTest::newRow("alert text with switch off still makes the area")
            << "||||hi|0" << area + "\"#\"" + whole + ">";
    }

    void defaultArea()
    {
        QFETCH(QString, fields);
        QFETCH(QString, expected);
        const QStringList f = fields.split(QLatin1Char('|'));
        MapDocument d = OneRectMap();
        d.DefURL = f[0];
        d.DefComment = f[1];
        d.DefTarget = f[2];
        d.DefStatus = f[3];
        d.DefAlert = f[4];
        d.DefAlertVal = static_cast<std::int16_t>(f[5].toInt());
        const QString areas = RectArea + CRLF + (expected.isEmpty() ? QString() : expected + CRLF);
        QCOMPARE(Viewing(d), MapOf(areas) + PlainImg + QLatin1Char('>'));
    }

    void testFormPictureAddress()
    {
        for (const auto& [folder, src] :
             {std::pair("D:\\web\\img\\", "file:///D|\\web\\img\\pic.gif"),
              std::pair("/srv/a:b/", "file:///srv/a:b/pic.gif")}) {
            MapDocument d = OneRectMap();
            d.ImagePath = QString::fromLatin1(folder);
            d.MapStyle = 1;
            QCOMPARE(
                MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Test),
                MapOf(RectArea + CRLF) + "<img src=\"" + src +
                    "\" usemap=\"#MyMap\" height=100 width=200 border=0 style=\"filter:gray()\" "
                    "onmouseover=\"this.style.filter-='gray()'\" "
                    "onmouseout=\"this.style.filter='gray()'\">");
        }
    }

    void fullShapeListIsWritten()
    {
        // The most a 16-bit shape list holds, indices 0 to 32767; areas follow the shape list,
        // not the stacking order.
        MapDocument d;
        d.ImageName = QStringLiteral("pic.gif");
        QString areas;
        for (int i = 0; i < 32768; ++i) {
            AddShapeRow(d, Rect(i, 0, i + 1, 1));
            areas += QString::asprintf(
                "<area shape=\"rect\" coords=\"%d,0,%d,1\" href=\"http://a.com/\">\r\n", i, i + 1);
        }
        d.BringToTop(32767);
        QCOMPARE(Viewing(d), MapOf(areas) + PlainImg + QLatin1Char('>'));
    }

    // The page's name is checked where the map test writes and opens it.
    void testPageIsWrittenWholeOrNotAtAll()
    {
        const QString path = m_dir.filePath(TestPage::FileName());
        QVERIFY(TestPage::Write(path, QStringLiteral("first, a longer code than the second")));
        QVERIFY(
            TestPage::Write(path, QStringLiteral("<map name=\"m\">\r\n</map>\r\n<img src=\"x\">")));
        const QByteArray page("<HTML><HEAD><TITLE>This Is A Test</TITLE></HEAD>\r\n"
                              "<BODY BGCOLOR=\"#FFFFFF\">\r\n"
                              "<map name=\"m\">\r\n</map>\r\n<img src=\"x\">\r\n"
                              "</BODY></HTML>\r\n");
        QCOMPARE(ReadBytes(path), page);
        QVERIFY(!TestPage::Write(m_dir.path(), QStringLiteral("x"))); // a folder, not a file
        // The disk fills up part way through the page: the previous one stays.
        const FileSizeLimit limit(1024);
        QVERIFY(limit.Active());
        QVERIFY(!TestPage::Write(path, QString(4096, QLatin1Char('x'))));
        QCOMPARE(ReadBytes(path), page);
    }

private:
    QTemporaryDir m_dir;
};

QTEST_APPLESS_MAIN(TestMapCode)
#include "tst_mapcode.moc"
