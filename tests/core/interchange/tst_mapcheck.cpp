#include "ShapeRow.h"
#include "core/interchange/MapCheck.h"

#include <QTest>

namespace {

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

// The map check: each kind of finding on a map made to have it, none on a clean map (the
// sample map is checked clean through vantrel-cli lint). A shape hidden by one earlier
// shape is found at zoom 2 and among the many shapes.
class TestMapCheck : public QObject
{
    Q_OBJECT
private slots:
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
    }

    void mapNameAndDefaultArea()
    {
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

QTEST_GUILESS_MAIN(TestMapCheck)
#include "tst_mapcheck.moc"
