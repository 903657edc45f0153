#include "core/document/MapDocument.h"
#include "core/forms/OptionsModel.h"

#include <QTest>

namespace {

MapDocument MapWithShapes(int count)
{
    MapDocument doc;
    for (std::int16_t i = 0; i < count; ++i) {
        doc.Shape(doc.AddShape()).SetInfo(nullptr, doc.FocusColor, Rectangle, 1.0, 10, 10);
        doc.SetURL(i, QStringLiteral("http://x/%1").arg(i));
        doc.SetAlertVal(i, -1);
    }
    return doc;
}

} // namespace

// The properties dialog's private copy of the map's link properties.
class TestOptionsModel : public QObject
{
    Q_OBJECT
private slots:
    void tabsOfAnEmptyMap()
    {
        MapDocument doc;
        OptionsModel model(doc, {});
        QCOMPARE(QStringList({model.TabCaption(1), model.TabCaption(model.TabCount())}),
                 (QStringList{"Map Properties", "Default Area"}));
        model.LoadUpArray();
        model.SelectTab(2);
        model.EditText(OptionsModel::Field::URL, QStringLiteral("index.html"));
        model.WriteBack();
        QCOMPARE(doc.DefURL, QStringLiteral("index.html"));
    }

    void editsSurviveTabSwitchesUntilWriteBack()
    {
        MapDocument doc = MapWithShapes(2);
        OptionsModel model(doc, {});
        model.LoadUpArray();
        // Filling a page fires change notifications, as text boxes do; they must not count.
        model.SetPageFiller([&model](int) {
            model.EditText(OptionsModel::Field::Comment, QStringLiteral("filled"));
        });
        model.SelectTab(2);
        model.EditText(OptionsModel::Field::URL, QStringLiteral("first.html"));
        model.SelectTab(3);
        model.EditText(OptionsModel::Field::Target, QStringLiteral("_blank"));
        model.ClickAlert(true);
        model.SelectTab(2);
        model.WriteBack();
        QCOMPARE(doc.GetURL(0), QStringLiteral("first.html"));
        QCOMPARE(doc.GetComment(0) + doc.GetComment(1), QString());
        QCOMPARE(doc.GetTarget(1), QStringLiteral("_blank"));
        // An undecided alert (-1) stays so unless its box was clicked.
        QCOMPARE(doc.GetAlertVal(0), std::int16_t(-1));
        QCOMPARE(doc.GetAlertVal(1), std::int16_t(1));
    }

    void onlyShapeTabsRestack()
    {
        MapDocument doc = MapWithShapes(3);
        QList<std::int16_t> calls;
        OptionsModel model(doc, [&calls](std::int16_t i) { calls.append(i); });
        model.LoadUpArray();
        for (int tab : {2, 2, 5, 1, 3}) // again, default area, map, another shape
            model.SelectTab(tab);
        QCOMPARE(calls, (QList<std::int16_t>{0, 1}));
    }
};

QTEST_GUILESS_MAIN(TestOptionsModel)
#include "tst_optionsmodel.moc"
