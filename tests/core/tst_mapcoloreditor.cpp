#include "canvas/MapDocument.h"
#include "frame/MapColorEditor.h"
#include "frame/Module1.h"

#include <QTest>

class TestMapColorEditor : public QObject
{
    Q_OBJECT
private slots:
    void focusAndNormalChangesRedraw();
    void borderChangeDoesNotRedraw();
    void resetRestoresColoursAtOpening();
    void selectingReadsTheMatchingColour();
    void colourSplitsIntoItsParts();

private:
    static MapDocument Document()
    {
        MapDocument doc;
        doc.FocusColor = RGBColor(1, 2, 3);
        doc.NonFocusColor = RGBColor(4, 5, 6);
        doc.BorderColor = RGBColor(7, 8, 9);
        return doc;
    }
};

void TestMapColorEditor::focusAndNormalChangesRedraw()
{
    MapDocument doc = Document();
    int redraws = 0;
    MapColorEditor editor(doc, [&] { ++redraws; });
    QCOMPARE(editor.Apply(64, 128, 255), 16744512);
    QCOMPARE(doc.FocusColor, 16744512);
    QCOMPARE(redraws, 1);
    editor.Select(MapColorEditor::Which::Normal);
    editor.Apply(10, 20, 30);
    QCOMPARE(doc.NonFocusColor, RGBColor(10, 20, 30));
    QCOMPARE(doc.FocusColor, 16744512);
    QCOMPARE(redraws, 2);
}

void TestMapColorEditor::borderChangeDoesNotRedraw()
{
    MapDocument doc = Document();
    int redraws = 0;
    MapColorEditor editor(doc, [&] { ++redraws; });
    editor.Select(MapColorEditor::Which::Border);
    editor.Apply(255, 0, 0);
    QCOMPARE(doc.BorderColor, RGBColor(255, 0, 0));
    QCOMPARE(doc.FocusColor, RGBColor(1, 2, 3));
    QCOMPARE(redraws, 0);
}

void TestMapColorEditor::resetRestoresColoursAtOpening()
{
    MapDocument doc = Document();
    int redraws = 0;
    MapColorEditor editor(doc, [&] { ++redraws; });
    editor.Apply(100, 100, 100);
    editor.Select(MapColorEditor::Which::Border);
    editor.Apply(200, 200, 200);
    redraws = 0;
    // The selected option's starting colour comes back for the scroll bars.
    QCOMPARE(editor.Reset(), RGBColor(7, 8, 9));
    QCOMPARE(doc.FocusColor, RGBColor(1, 2, 3));
    QCOMPARE(doc.NonFocusColor, RGBColor(4, 5, 6));
    QCOMPARE(doc.BorderColor, RGBColor(7, 8, 9));
    QCOMPARE(redraws, 1);
}

void TestMapColorEditor::selectingReadsTheMatchingColour()
{
    MapDocument doc = Document();
    MapColorEditor editor(doc, {});
    QCOMPARE(editor.Current(), RGBColor(1, 2, 3));
    QCOMPARE(editor.Select(MapColorEditor::Which::Normal), RGBColor(4, 5, 6));
    QCOMPARE(editor.Select(MapColorEditor::Which::Border), RGBColor(7, 8, 9));
    QCOMPARE(doc.FocusColor, RGBColor(1, 2, 3));
}

void TestMapColorEditor::colourSplitsIntoItsParts()
{
    QCOMPARE(Module1::RedOf(16744512), 64);
    QCOMPARE(Module1::GreenOf(16744512), 128);
    QCOMPARE(Module1::BlueOf(16744512), 255);
    QVERIFY(MapColorEditor::AboutText().startsWith(
        QStringLiteral("Here you can set the different colors to use.  Focus Color")));
    QVERIFY(MapColorEditor::AboutText().contains(
        QStringLiteral("working with.  \n\nBorder Color is the color")));
}

QTEST_APPLESS_MAIN(TestMapColorEditor)
#include "tst_mapcoloreditor.moc"
