#include "ShapeRow.h"
#include "core/interchange/AreaGeometry.h"
#include "core/interchange/FormattedMapCode.h"
#include "core/interchange/MapArea.h"

#include <QApplication>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QWebEnginePage>
#include <QWebEngineView>
#include <cmath>

namespace {

constexpr int Width = 400;
constexpr int Height = 300;

// A point of each shape that no earlier shape covers, with a margin of two pixels on every
// side so that edge rules cannot matter; none when earlier shapes cover it. Hrefs gets the
// link each point leads to.
QList<QPoint> ClickablePoints(MapDocument& d, QStringList& hrefs)
{
    std::vector<MapArea> areas;
    for (int i = 0; i <= d.ItemCount(); ++i)
        areas.push_back(MapArea::FromShape(d.Shape(std::int16_t(i)), i));
    QList<QPoint> points;
    for (std::size_t i = 0; i < areas.size(); ++i) {
        const QPainterPath own = AreaGeometry::PathOf(areas[i], Width, Height);
        const QRect box =
            AreaGeometry::BoundsOf(areas[i], Width, Height) & QRect(0, 0, Width, Height);
        const auto inside = [&](QPoint p) {
            for (QPoint o :
                 {QPoint(0, 0), QPoint(-2, -2), QPoint(2, -2), QPoint(2, 2), QPoint(-2, 2)}) {
                const QPointF q = p + o + QPointF(0.5, 0.5);
                if (!own.contains(q))
                    return false;
                for (std::size_t j = 0; j < i; ++j) {
                    if (AreaGeometry::PathOf(areas[j], Width, Height).contains(q))
                        return false;
                }
            }
            return true;
        };
        bool found = false;
        for (int y = box.top() + 3; y < box.bottom() - 2 && !found; y += 3) {
            for (int x = box.left() + 3; x < box.right() - 2 && !found; x += 3) {
                if (inside(QPoint(x, y))) {
                    points << QPoint(x, y);
                    hrefs << QStringLiteral("s%1.htm").arg(i);
                    found = true;
                }
            }
        }
    }
    return points;
}

void AddShape(MapDocument& d, int type, const QString& coords)
{
    const int index = d.ItemCount() + 1;
    AddShapeRow(d, QStringLiteral("%1|%2|s%3.htm|Shape %3|||0|").arg(type).arg(coords).arg(index));
}

// Rectangles, circles and star-shaped polygons scattered over the picture, overlapping.
MapDocument RandomMap(quint32 seed)
{
    QRandomGenerator random(seed);
    MapDocument d;
    for (int i = 0; i < 14; ++i) {
        const int type = random.bounded(3);
        const int x = random.bounded(20, Width - 80), y = random.bounded(20, Height - 80);
        const int w = random.bounded(20, 70), h = random.bounded(20, 70);
        if (type == Polygon) {
            QStringList xy;
            const int corners = random.bounded(3, 8);
            for (int k = 0; k < corners; ++k) {
                const double angle = 2 * M_PI * k / corners;
                const double r = random.bounded(15, 35);
                xy << QString::number(x + 35 + qRound(r * std::cos(angle)))
                   << QString::number(y + 35 + qRound(r * std::sin(angle)));
            }
            AddShape(d, type, xy.join(','));
        } else {
            AddShape(d, type,
                     QStringLiteral("%1,%2,%3,%2,%3,%4,%1,%4").arg(x).arg(y).arg(x + w).arg(y + h));
        }
    }
    return d;
}

} // namespace

// The generated maps in a real browser engine: each point goes to the area a visitor
// expects, the earlier shape winning where they overlap.
class TestWebHit : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        QImage picture(Width, Height, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        QVERIFY(picture.save(m_dir.filePath("pic.png")));
        m_view = std::make_unique<QWebEngineView>();
        m_view->resize(900, 700);
        m_view->show();
    }

    void pointsReachTheirAreas_data()
    {
        QTest::addColumn<int>("format");
        QTest::addColumn<quint32>("seed");
        for (MapFormat format : {MapFormat::Html5, MapFormat::Svg}) {
            QTest::addRow("%s, overlapping shapes", qPrintable(MapFormats::Name(format)))
                << int(format) << 0u;
            for (quint32 seed : {7u, 1234u})
                QTest::addRow("%s, random map %u", qPrintable(MapFormats::Name(format)), seed)
                    << int(format) << seed;
        }
    }

    void pointsReachTheirAreas()
    {
        QFETCH(int, format);
        QFETCH(quint32, seed);
        MapDocument d;
        if (seed == 0) {
            AddShape(d, Rectangle, "20,20,160,20,160,140,20,140");
            AddShape(d, Circle, "120,60,220,60,220,160,120,160");    // half under the rectangle
            AddShape(d, Rectangle, "40,40,80,40,80,80,40,80");       // wholly under it: never wins
            AddShape(d, Polygon, "180,130,380,170,300,280,170,260"); // partly under the circle
            d.DefURL = QStringLiteral("rest.htm");
        } else {
            d = RandomMap(seed);
        }
        d.SWidth = Width;
        d.SHeight = Height;
        d.ImageName = QStringLiteral("pic.png");
        d.MapName = QStringLiteral("Hits");
        d.MapStyle = 1; // effects must not get in the way

        QStringList expected;
        QList<QPoint> points = ClickablePoints(d, expected);
        if (seed == 0) {
            QCOMPARE(points.size(), 3); // shape 2 is covered
            // Where the rectangle and the circle overlap, the rectangle (written first) wins;
            // where the circle and the polygon do, the circle.
            points << QPoint(140, 100) << QPoint(190, 140) << QPoint(390, 10);
            expected << QStringLiteral("s0.htm") << QStringLiteral("s1.htm")
                     << QStringLiteral("rest.htm");
        }

        const MapFormat chosen = static_cast<MapFormat>(format);
        const FormattedMapCode code =
            FormattedMapCode::Generate(d, chosen, MapCodeGenerator::Form::Viewing);
        QVERIFY(Load(code.TestPageText(chosen)));
        QCOMPARE(HrefsAt(points), expected);

        if (chosen == MapFormat::Svg) {
            // The overlay scales with the picture.
            Run(QStringLiteral("document.querySelector('.map-Hits').style.width = '%1px';")
                    .arg(Width / 2));
            QCOMPARE(HrefsAt(points), expected);
        }
    }

private:
    bool Load(const QString& page)
    {
        QSignalSpy loaded(m_view.get(), &QWebEngineView::loadFinished);
        m_view->setHtml(page, QUrl::fromLocalFile(m_dir.path() + QLatin1Char('/')));
        return loaded.wait(60000) && loaded.first().first().toBool();
    }
    // The script's value as text, once the page has answered.
    QString Run(const QString& script)
    {
        QString result;
        bool done = false;
        m_view->page()->runJavaScript(script, [&](const QVariant& value) {
            result = value.toString();
            done = true;
        });
        return QTest::qWaitFor([&] { return done; }, 30000) ? result : QStringLiteral("no answer");
    }
    // The href of the area or link under each point (picture pixels scaled to the
    // picture's current size on the page).
    QStringList HrefsAt(const QList<QPoint>& points)
    {
        QJsonArray xy;
        for (const QPoint& point : points)
            xy.append(QJsonArray{point.x(), point.y()});
        const QString result =
            Run(QStringLiteral(
                    "(function(points){"
                    "var r = document.querySelector('img').getBoundingClientRect();"
                    "return JSON.stringify(points.map(function(p){"
                    "  var e = document.elementFromPoint(r.left + (p[0] + 0.5) * r.width / %1,"
                    "                                    r.top + (p[1] + 0.5) * r.height / %2);"
                    "  var link = e && e.closest('area, a');"
                    "  return link ? link.getAttribute('href') : (e ? e.tagName : 'nothing');"
                    "}));})(%3)")
                    .arg(Width)
                    .arg(Height)
                    .arg(QString::fromUtf8(QJsonDocument(xy).toJson(QJsonDocument::Compact))));
        QStringList hrefs; // none when the page did not answer
        for (const QJsonValue& v : QJsonDocument::fromJson(result.toUtf8()).array())
            hrefs << v.toString();
        return hrefs;
    }

    QTemporaryDir m_dir;
    std::unique_ptr<QWebEngineView> m_view;
};

int main(int argc, char** argv)
{
    // The embedded browser shares its graphics context with the widgets.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    TestWebHit test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_webhit.moc"
