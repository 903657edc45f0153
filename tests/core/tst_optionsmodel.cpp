#include "canvas/MapDocument.h"
#include "frame/OptionsModel.h"

#include <QTest>

// The properties dialog's private copy: tabs, loading, editing, write-back, cancel.
class TestOptionsModel : public QObject
{
    Q_OBJECT
private slots:
    void tabsOfAnEmptyMap();
    void tabsNameShapesByIndex();
    void loadUpArrayCopiesShapesAndDefaultArea();
    void editsStayInTheArrayAcrossTabSwitches();
    void pageFillingNeverOverwritesTheArray();
    void shapeTabRestacksDefaultAreaDoesNot();
    void alertValueMinusOneStaysUntilClicked();
    void writeBackSetsEverything();
    void discardedModelLeavesDocumentUnchanged();
    void listsHaveSixEntriesEach();
};

namespace {

MapDocument MapWithShapes(int count)
{
    MapDocument doc;
    for (int i = 0; i < count; ++i) {
        PatShape s;
        s.SetInfo(nullptr, doc.FocusColor, Rectangle, 1.0, 10 * i, 10 * i);
        s.SetPoint(2, 10 * i + 30, 10 * i + 20);
        s.URL = QStringLiteral("http://x/%1").arg(i);
        s.Comment = QStringLiteral("shape %1").arg(i);
        doc.SetNewShape(s);
    }
    return doc;
}

struct Restacks
{
    QList<std::int16_t> calls;
    MapDocument* doc = nullptr;
    std::function<void(std::int16_t)> fn()
    {
        return [this](std::int16_t i) {
            calls.append(i);
            doc->ReStackArrayFromOptions(i);
        };
    }
};

} // namespace

void TestOptionsModel::tabsOfAnEmptyMap()
{
    MapDocument doc;
    OptionsModel model(doc, {});
    model.LoadUpArray();
    QCOMPARE(model.TabCount(), 2);
    QCOMPARE(model.TabCaption(1), QStringLiteral("Map Properties"));
    QCOMPARE(model.TabCaption(2), QStringLiteral("Default Area"));
    QCOMPARE(model.Records().size(), std::size_t(1));
    model.SelectTab(2);
    model.EditText(OptionsModel::Field::URL, QStringLiteral("index.html"));
    model.WriteBack();
    QCOMPARE(doc.DefURL, QStringLiteral("index.html"));
}

void TestOptionsModel::tabsNameShapesByIndex()
{
    MapDocument doc = MapWithShapes(3);
    OptionsModel model(doc, {});
    QCOMPARE(model.TabCount(), 5);
    QCOMPARE(model.TabCaption(2), QStringLiteral("Shape #1"));
    QCOMPARE(model.TabCaption(4), QStringLiteral("Shape #3"));
    QCOMPARE(model.TabCaption(5), QStringLiteral("Default Area"));
    QVERIFY(model.IsShapeTab(4));
    QVERIFY(!model.IsShapeTab(5));
    QVERIFY(model.IsDefaultAreaTab(5));
}

void TestOptionsModel::loadUpArrayCopiesShapesAndDefaultArea()
{
    MapDocument doc = MapWithShapes(2);
    doc.DefURL = QStringLiteral("default.html");
    doc.DefAlertVal = 1;
    OptionsModel model(doc, {});
    model.LoadUpArray();
    QCOMPARE(model.Records().size(), std::size_t(3));
    QCOMPARE(model.RecordOfTab(2).URL, QStringLiteral("http://x/0"));
    QCOMPARE(model.RecordOfTab(3).Comment, QStringLiteral("shape 1"));
    QCOMPARE(model.RecordOfTab(4).URL, QStringLiteral("default.html"));
    QCOMPARE(model.RecordOfTab(4).AlertVal, std::int16_t(1));
}

void TestOptionsModel::editsStayInTheArrayAcrossTabSwitches()
{
    MapDocument doc = MapWithShapes(2);
    OptionsModel model(doc, {});
    model.LoadUpArray();
    model.SelectTab(2);
    model.EditText(OptionsModel::Field::URL, QStringLiteral("first.html"));
    model.SelectTab(3);
    model.EditText(OptionsModel::Field::Target, QStringLiteral("_blank"));
    model.SelectTab(2);
    QCOMPARE(model.RecordOfTab(2).URL, QStringLiteral("first.html"));
    QCOMPARE(model.RecordOfTab(3).Target, QStringLiteral("_blank"));
    QCOMPARE(model.RecordOfTab(3).URL, QStringLiteral("http://x/1"));
    // Nothing reached the document yet.
    QCOMPARE(doc.GetURL(0), QStringLiteral("http://x/0"));
}

void TestOptionsModel::pageFillingNeverOverwritesTheArray()
{
    MapDocument doc = MapWithShapes(2);
    OptionsModel model(doc, {});
    model.LoadUpArray();
    // A page filler that fires change notifications, as text boxes do when filled.
    model.SetPageFiller([&model](int tab) {
        if (tab >= 2)
            model.EditText(OptionsModel::Field::URL, model.RecordOfTab(tab).URL);
        model.EditText(OptionsModel::Field::Comment, QStringLiteral("filled"));
    });
    model.SelectTab(2);
    model.SelectTab(3);
    model.SelectTab(2);
    QCOMPARE(model.RecordOfTab(2).Comment, QStringLiteral("shape 0"));
    QCOMPARE(model.RecordOfTab(3).Comment, QStringLiteral("shape 1"));
    QCOMPARE(model.RecordOfTab(3).URL, QStringLiteral("http://x/1"));
    QCOMPARE(model.ShownTab(), 2);
}

void TestOptionsModel::shapeTabRestacksDefaultAreaDoesNot()
{
    MapDocument doc = MapWithShapes(3);
    Restacks restacks;
    restacks.doc = &doc;
    OptionsModel model(doc, restacks.fn());
    model.LoadUpArray();
    QCOMPARE(doc.ShapeOrder().front(), std::int16_t(2));
    model.SelectTab(2);
    QCOMPARE(restacks.calls, QList<std::int16_t>{0});
    QCOMPARE(doc.ShapeOrder().front(), std::int16_t(0));
    model.SelectTab(2); // already on show: nothing
    model.SelectTab(5); // default area
    model.SelectTab(1); // map
    QCOMPARE(restacks.calls, QList<std::int16_t>{0});
    model.SelectTab(3);
    QCOMPARE(restacks.calls, (QList<std::int16_t>{0, 1}));
    QCOMPARE(doc.ShapeOrder().front(), std::int16_t(1));
}

void TestOptionsModel::alertValueMinusOneStaysUntilClicked()
{
    MapDocument doc = MapWithShapes(2);
    doc.SetAlertVal(0, -1);
    doc.SetAlertVal(1, -1);
    OptionsModel model(doc, {});
    model.LoadUpArray();
    model.SelectTab(2);
    model.SelectTab(3);
    model.ClickAlert(true);
    model.WriteBack();
    QCOMPARE(doc.GetAlertVal(0), std::int16_t(-1));
    QCOMPARE(doc.GetAlertVal(1), std::int16_t(1));
}

void TestOptionsModel::writeBackSetsEverything()
{
    MapDocument doc = MapWithShapes(1);
    OptionsModel model(doc, {});
    model.LoadMapFields();
    model.LoadUpArray();
    QCOMPARE(model.MapName, QStringLiteral("MyMap"));
    model.SelectTab(2);
    model.EditText(OptionsModel::Field::URL, QStringLiteral("a.html"));
    model.EditText(OptionsModel::Field::Comment, QStringLiteral("Alt"));
    model.EditText(OptionsModel::Field::Target, QStringLiteral("main"));
    model.EditText(OptionsModel::Field::Status, QStringLiteral("Go to A"));
    model.EditText(OptionsModel::Field::Alert, QStringLiteral("Bye"));
    model.ClickAlert(true);
    model.SelectTab(3);
    model.EditText(OptionsModel::Field::URL, QStringLiteral(""));
    model.EditText(OptionsModel::Field::Status, QStringLiteral("Nowhere"));
    model.MapName = QStringLiteral("Plan");
    model.MapStyle = 3;
    model.MapOnClick = 5;
    model.MapBorder = 2;
    model.WriteBack();
    const PatShape& s = doc.Shape(0);
    QCOMPARE(s.URL, QStringLiteral("a.html"));
    QCOMPARE(s.Comment, QStringLiteral("Alt"));
    QCOMPARE(s.Target, QStringLiteral("main"));
    QCOMPARE(s.StatusString, QStringLiteral("Go to A"));
    QCOMPARE(s.AlertString, QStringLiteral("Bye"));
    QCOMPARE(s.AlertBox, std::int16_t(1));
    QCOMPARE(doc.DefURL, QString());
    QCOMPARE(doc.DefStatus, QStringLiteral("Nowhere"));
    QCOMPARE(doc.MapName, QStringLiteral("Plan"));
    QCOMPARE(doc.MapStyle, std::int16_t(3));
    QCOMPARE(doc.MapOnClick, std::int16_t(5));
    QCOMPARE(doc.MapBorder, std::int16_t(2));
}

void TestOptionsModel::discardedModelLeavesDocumentUnchanged()
{
    MapDocument doc = MapWithShapes(2);
    Restacks restacks;
    restacks.doc = &doc;
    {
        OptionsModel model(doc, restacks.fn());
        model.LoadMapFields();
        model.LoadUpArray();
        model.SelectTab(2);
        model.EditText(OptionsModel::Field::URL, QStringLiteral("changed.html"));
        model.MapName = QStringLiteral("Changed");
    }
    QCOMPARE(doc.GetURL(0), QStringLiteral("http://x/0"));
    QCOMPARE(doc.MapName, QStringLiteral("MyMap"));
    // The restacking done while editing stays.
    QCOMPARE(doc.ShapeOrder().front(), std::int16_t(0));
}

void TestOptionsModel::listsHaveSixEntriesEach()
{
    QCOMPARE(OptionsModel::MapStyleNames().size(), 6);
    QCOMPARE(OptionsModel::OnClickNames().size(), 6);
    QCOMPARE(OptionsModel::MapStyleNames().at(5), QStringLiteral("Un-XRay On Mouse Over"));
    QCOMPARE(OptionsModel::OnClickNames().at(4), QStringLiteral("Invert Click"));
    QCOMPARE(OptionsModel::BorderNames(), (QStringList{"Normal", "Shadow", "Glow"}));
    QVERIFY(OptionsModel::HelpText.contains(QStringLiteral("shapes.  Like what URLs")));
}

QTEST_GUILESS_MAIN(TestOptionsModel)
#include "tst_optionsmodel.moc"
