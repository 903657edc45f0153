#include "ShapeBuilders.h"
#include "ShapeRow.h"
#include "TableCase.h"
#include "core/document/MapDocument.h"
#include "core/document/ShapeListModel.h"
#include "core/forms/GeometryForm.h"

#include <QSignalSpy>
#include <QTest>

namespace {

MapDocument ThreeShapes(double zoom = 1.0)
{
    MapDocument doc;
    doc.SWidth = 400;
    doc.SHeight = 300;
    doc.ZoomLevel = zoom;
    for (const char* row : {"1|10,20,110,20,110,70,10,70|http://example.com/shop|Shop|||0|",
                            "0|200,100,260,100,260,160,200,160|about.html||_blank||0|",
                            "2|300,10,390,10,350,90|contact.html|Write to the SHOP|||0|"})
        doc.Shape(AddShapeRow(doc, QString::fromLatin1(row))).ResetPointsToZoom(zoom);
    doc.BringToTop(1); // the last shape on top, the first at the bottom
    doc.BringToTop(2);
    return doc;
}

QString Cell(const QAbstractItemModel& model, int row, int column)
{
    return model.index(row, column).data().toString();
}

} // namespace

// The Shapes panel's list and geometry numbers against the document they show.
class TestShapeListModel : public QObject
{
    Q_OBJECT
private slots:
    void rowsShowEveryShapeInPicturePixels()
    {
        for (const double zoom : {1.0, 2.0}) {
            MapDocument doc = ThreeShapes(zoom);
            ShapeListModel model;
            model.SetDocument(&doc);
            QCOMPARE(Cell(model, 1, ShapeListModel::Type), QStringLiteral("Circle"));
            QCOMPARE(Cell(model, 2, ShapeListModel::Type), QStringLiteral("Polygon"));
            QCOMPARE(Cell(model, 1, ShapeListModel::Target), QStringLiteral("_blank"));
            QStringList box;
            for (int c = ShapeListModel::Left; c <= ShapeListModel::Height; ++c)
                box << Cell(model, 0, c);
            QCOMPARE(box.join(QLatin1Char(',')), QStringLiteral("10,20,100,50"));
            QCOMPARE(model.headerData(ShapeListModel::Alt, Qt::Horizontal).toString(),
                     QStringLiteral("Alt Text"));
        }
    }

    // A typed URL reaches the document in the Shapes panel's filter test, a target in the
    // filter cases here.
    void onlyTextCellsAreEditedAndEachEditIsTold()
    {
        MapDocument doc = ThreeShapes();
        ShapeListModel model;
        model.SetDocument(&doc);
        QSignalSpy edited(&model, &ShapeListModel::ShapeEdited);
        QVERIFY(model.flags(model.index(0, ShapeListModel::Url)) & Qt::ItemIsEditable);
        QVERIFY(!(model.flags(model.index(0, ShapeListModel::Left)) & Qt::ItemIsEditable));
        QVERIFY(!model.setData(model.index(1, ShapeListModel::Left), 5));
        QVERIFY(model.setData(model.index(1, ShapeListModel::Alt), QStringLiteral("New")));
        QCOMPARE(doc.GetComment(1), QStringLiteral("New"));
        QCOMPARE(edited.count(), 1);
        QCOMPARE(edited.first().first().value<std::int16_t>(), std::int16_t(1));
    }

    void refreshFollowsTheDocument()
    {
        MapDocument doc = ThreeShapes();
        ShapeListModel model;
        model.SetDocument(&doc);
        QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        // A moved top shape: only its row (and the current one) is announced.
        doc.TopShape().SetPoint(0, 0, 0);
        model.Refresh(false);
        QCOMPARE(reset.count(), 0);
        QVERIFY(changed.count() >= 1);
        for (const QList<QVariant>& signal : changed)
            QCOMPARE(signal.at(0).toModelIndex().row(), signal.at(1).toModelIndex().row());
        // A deleted shape: until the model hears of it, its row shows and takes nothing.
        doc.DeleteShape();
        QCOMPARE(model.rowCount(), 3);
        QVERIFY(!model.index(2, ShapeListModel::Url).data().isValid());
        QVERIFY(!model.setData(model.index(2, ShapeListModel::Url), "gone.html"));
        // Then the rows are counted again (the panel's test sees them go).
        model.Refresh(false);
        QCOMPARE(reset.count(), 1);
        changed.clear();
        model.Refresh(true);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.first().at(1).toModelIndex().row(), 1);
        model.SetDocument(nullptr);
        QCOMPARE(model.rowCount(), 0);
        model.Refresh(true);
    }

    void filterMatchesUrlAltAndTarget()
    {
        // Any case; the type is not searched.
        for (const auto& [text, rows] :
             std::initializer_list<std::pair<QString, QList<int>>>{{QString(), {0, 1, 2}},
                                                                   {"shop", {0, 2}},
                                                                   {"_BLANK", {1}},
                                                                   {"Circle", {}},
                                                                   {".html", {1, 2}}}) {
            const TableCase row(text);
            MapDocument doc = ThreeShapes();
            ShapeListModel model;
            model.SetDocument(&doc);
            model.SetFilter(text);
            QList<int> shown;
            for (int r = 0; r < model.rowCount(); ++r) {
                shown << model.ShapeAt(r);
                QCOMPARE(model.RowOf(model.ShapeAt(r)), r);
                QCOMPARE(Cell(model, r, ShapeListModel::Number),
                         QStringLiteral("Shape #%1").arg(model.ShapeAt(r) + 1));
            }
            QCOMPARE(shown, rows);
            if (!text.isEmpty() && !rows.contains(0))
                QCOMPARE(model.RowOf(0), -1);
            // Edits through a filtered row reach the right shape.
            if (!rows.isEmpty()) {
                QVERIFY(model.setData(model.index(0, ShapeListModel::Target), "t"));
                QCOMPARE(doc.GetTarget(std::int16_t(rows.first())), QStringLiteral("t"));
            }
        }
    }

    void geometryFieldsRoundTrip()
    {
        for (const double zoom : {1.0, 2.0}) {
            MapDocument doc = ThreeShapes(zoom);
            QCOMPARE(GeometryForm::Fields(doc, 0), (QList<int>{10, 20, 100, 50}));
            QCOMPARE(GeometryForm::Fields(doc, 1), (QList<int>{230, 130, 30}));
            QCOMPARE(GeometryForm::Vertices(doc, 2),
                     (QList<QPoint>{{300, 10}, {390, 10}, {350, 90}}));

            QCOMPARE(GeometryForm::ApplyFields(doc, 0, {"5", " 6 ", "70", "80"}), QString());
            const auto z = [zoom](int v) { return static_cast<std::int32_t>(v * zoom); };
            QCOMPARE(doc.Shape(0).Points(), Corners(z(5), z(6), z(75), z(86)));
            QCOMPARE(GeometryForm::ApplyFields(doc, 1, {"100", "100", "40"}), QString());
            QCOMPARE(doc.Shape(1).Points(), Corners(z(60), z(60), z(140), z(140)));
            QCOMPARE(GeometryForm::ApplyVertices(
                         doc, 2, {{"0", "0"}, {"400", "0"}, {"400", "300"}, {"0", "300"}}),
                     QString());
            QCOMPARE(doc.Shape(2).Points(), Corners(0, 0, z(400), z(300)));
        }
    }

    void refusedGeometryLeavesTheShape()
    {
        const QString outside = GeometryForm::OutsideMessage(ThreeShapes());
        const auto refused = [](std::int16_t shape, const QList<QStringList>& input,
                                const QString& message) {
            MapDocument doc = ThreeShapes();
            const std::vector<ShapePoint> before = doc.Shape(shape).Points();
            QCOMPARE(shape == 2 ? GeometryForm::ApplyVertices(doc, shape, input)
                                : GeometryForm::ApplyFields(doc, shape, input.first()),
                     message);
            QCOMPARE(doc.Shape(shape).Points(), before);
        };
        refused(0, {{"1", "x2", "3", "4"}}, GeometryForm::NotANumberMessage("x2"));
        refused(0, {{"1", "", "3", "4"}}, GeometryForm::NotANumberMessage(""));
        refused(0, {{"300", "0", "101", "4"}}, outside); // past the right edge
        refused(0, {{"-1", "0", "10", "4"}}, outside);
        refused(0, {{"0", "0", "99999", "4"}}, outside); // past 16 bits
        refused(0, {{"0", "0", "0", "4"}}, GeometryForm::TooSmallMessage());
        refused(1, {{"100", "10", "20"}}, outside); // a circle off the top
        refused(2, {{"1", "1"}, {"5", "5"}}, GeometryForm::TooFewVerticesMessage());
        refused(2, {{"1", "1"}, {"5", "5"}, {"5", "301"}}, outside);
        // Dragged partly off the picture, the shape keeps its edge there while its size
        // changes; an edge moved further off is refused.
        MapDocument doc = ThreeShapes();
        const std::vector<ShapePoint> off = Corners(-10, 20, 90, 70);
        for (std::size_t i = 0; i < off.size(); ++i)
            doc.Shape(0).SetPoint(std::int16_t(i), off[i].x, off[i].y);
        QCOMPARE(GeometryForm::ApplyFields(doc, 0, {"-10", "20", "110", "60"}), QString());
        QCOMPARE(doc.Shape(0).Points(), Corners(-10, 20, 100, 80));
        QCOMPARE(GeometryForm::ApplyFields(doc, 0, {"-11", "20", "110", "60"}), outside);
    }
};

QTEST_MAIN(TestShapeListModel)
#include "tst_shapelistmodel.moc"
