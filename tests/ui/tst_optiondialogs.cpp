#include "FakeCanvasHost.h"
#include "canvas/CanvasSurface.h"
#include "canvas/ShapeCanvas.h"
#include "frame/ColorPicker.h"
#include "frame/GridForm.h"
#include "frame/Module1.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTest>
#include <memory>

// The colour and grid dialogs on a real map window.
class TestOptionDialogs : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void colorPickerShowsTheFocusColour();
    void scrollingRecoloursTheShapesAtOnce();
    void borderColourDoesNotTouchTheShapes();
    void colorResetRestoresTheColoursAtOpening();
    void colorOpenAndCloseChangesNothing();

    void gridShowsTheMapsSettings();
    void gridSpacingTakesDigitsOnly();
    void gridSpacingFollowsTypingInRange();
    void gridSpacingOutOfRangeIsCorrectedOnLeaving();
    void gridBarRewritesTheText();
    void gridCheckBoxesDependOnEachOther();
    void gridOkStoresEveryFieldAndRedraws();
    void gridCancelStoresNothing();

private:
    template <typename T> T* Child(QWidget& dialog, const char* name)
    {
        T* child = dialog.findChild<T*>(QLatin1String(name));
        if (child == nullptr)
            qFatal("no child %s", name);
        return child;
    }
    static QColor PreviewColour(QWidget& dialog)
    {
        return dialog.findChild<QFrame*>("ColorPreview")->palette().color(QPalette::Window);
    }
    // Moves the focus out of Box the way a user's click elsewhere does.
    static void Leave(QLineEdit* box, QWidget* elsewhere)
    {
        box->setFocus();
        QTRY_VERIFY(box->hasFocus());
        elsewhere->setFocus();
        QTRY_VERIFY(!box->hasFocus());
    }

    std::unique_ptr<FakeCanvasHost> m_host;
    std::unique_ptr<ShapeCanvas> m_map;
};

void TestOptionDialogs::init()
{
    m_host = std::make_unique<FakeCanvasHost>();
    m_map = std::make_unique<ShapeCanvas>(*m_host);
    m_host->active = m_map.get();
    QImage picture(200, 150, QImage::Format_RGB32);
    picture.fill(Qt::white);
    m_map->SetNewPicture(picture, QStringLiteral("/maps/pic.png"));
    m_map->show();
    MapDocument& doc = m_map->Document();
    doc.FocusColor = 16744512; // FF8040: red 64, green 128, blue 255
    doc.NonFocusColor = RGBColor(10, 20, 30);
    doc.BorderColor = RGBColor(1, 2, 3);
    for (int i = 0; i < 2; ++i) {
        const std::int16_t index = doc.AddShape();
        doc.Shape(index).SetInfo(doc.Surface(), doc.NonFocusColor, Rectangle, 1.0, 10 + 50 * i, 10);
        doc.Shape(index).MoveVertex(2, 40 + 50 * i, 40);
        doc.BringToTop(index);
    }
}

void TestOptionDialogs::cleanup()
{
    m_map.reset();
    m_host.reset();
}

void TestOptionDialogs::colorPickerShowsTheFocusColour()
{
    ColorPicker picker(*m_map, m_host->ui);
    QCOMPARE(picker.windowTitle(), QStringLiteral("Pick A Color"));
    QVERIFY(Child<QRadioButton>(picker, "Option1")->isChecked());
    QCOMPARE(Child<QScrollBar>(picker, "ScrollRed")->value(), 64);
    QCOMPARE(Child<QScrollBar>(picker, "ScrollGreen")->value(), 128);
    QCOMPARE(Child<QScrollBar>(picker, "ScrollBlue")->value(), 255);
    QCOMPARE(Child<QScrollBar>(picker, "ScrollBlue")->maximum(), 255);
    QCOMPARE(PreviewColour(picker), QColor(64, 128, 255));
    Child<QRadioButton>(picker, "Option2")->click();
    QCOMPARE(Child<QScrollBar>(picker, "ScrollRed")->value(), 10);
    QCOMPARE(Child<QScrollBar>(picker, "ScrollBlue")->value(), 30);
    QCOMPARE(PreviewColour(picker), QColor(10, 20, 30));
}

void TestOptionDialogs::scrollingRecoloursTheShapesAtOnce()
{
    ColorPicker picker(*m_map, m_host->ui);
    picker.show();
    Child<QScrollBar>(picker, "ScrollRed")->setValue(200);
    MapDocument& doc = m_map->Document();
    QCOMPARE(doc.FocusColor, RGBColor(200, 128, 255));
    QCOMPARE(doc.TopShape().ShapeColor, RGBColor(200, 128, 255));
    QCOMPARE(PreviewColour(picker), QColor(200, 128, 255));

    Child<QRadioButton>(picker, "Option2")->click();
    Child<QScrollBar>(picker, "ScrollGreen")->setValue(99);
    QCOMPARE(doc.NonFocusColor, RGBColor(10, 99, 30));
    const std::int16_t below = doc.ShapeOrder()[1];
    QCOMPARE(doc.Shape(below).ShapeColor, RGBColor(10, 99, 30));
    QCOMPARE(doc.FocusColor, RGBColor(200, 128, 255));
}

void TestOptionDialogs::borderColourDoesNotTouchTheShapes()
{
    ColorPicker picker(*m_map, m_host->ui);
    Child<QRadioButton>(picker, "Option3")->click();
    QCOMPARE(Child<QScrollBar>(picker, "ScrollBlue")->value(), 3);
    Child<QScrollBar>(picker, "ScrollRed")->setValue(255);
    const MapDocument& doc = m_map->Document();
    QCOMPARE(doc.BorderColor, RGBColor(255, 2, 3));
    QCOMPARE(doc.FocusColor, 16744512);
    QCOMPARE(doc.NonFocusColor, RGBColor(10, 20, 30));
}

void TestOptionDialogs::colorResetRestoresTheColoursAtOpening()
{
    ColorPicker picker(*m_map, m_host->ui);
    Child<QScrollBar>(picker, "ScrollRed")->setValue(0);
    Child<QRadioButton>(picker, "Option3")->click();
    Child<QScrollBar>(picker, "ScrollGreen")->setValue(250);
    QTest::mouseClick(Child<QPushButton>(picker, "Command1"), Qt::LeftButton);
    MapDocument& doc = m_map->Document();
    QCOMPARE(doc.FocusColor, 16744512);
    QCOMPARE(doc.NonFocusColor, RGBColor(10, 20, 30));
    QCOMPARE(doc.BorderColor, RGBColor(1, 2, 3));
    QCOMPARE(doc.TopShape().ShapeColor, 16744512);
    // The bars show the selected option's colour at opening.
    QCOMPARE(Child<QScrollBar>(picker, "ScrollRed")->value(), 1);
    QCOMPARE(Child<QScrollBar>(picker, "ScrollGreen")->value(), 2);
    QCOMPARE(PreviewColour(picker), QColor(1, 2, 3));
}

void TestOptionDialogs::colorOpenAndCloseChangesNothing()
{
    ColorPicker picker(*m_map, m_host->ui);
    picker.show();
    QTest::mouseClick(Child<QPushButton>(picker, "Command3"), Qt::LeftButton);
    QCOMPARE(m_host->ui.messages.size(), 1);
    QCOMPARE(m_host->ui.messages[0].icon, ModalUi::Icon::Information);
    QVERIFY(m_host->ui.messages[0].text.startsWith(
        QStringLiteral("Here you can set the different colors to use.")));
    QTest::mouseClick(Child<QPushButton>(picker, "Command2"), Qt::LeftButton);
    QVERIFY(!picker.isVisible());
    const MapDocument& doc = m_map->Document();
    QCOMPARE(doc.FocusColor, 16744512);
    QCOMPARE(doc.NonFocusColor, RGBColor(10, 20, 30));
    QCOMPARE(doc.BorderColor, RGBColor(1, 2, 3));
}

void TestOptionDialogs::gridShowsTheMapsSettings()
{
    MapDocument& doc = m_map->Document();
    doc.GridColorNum = 5;
    doc.GridStyle = 1;
    doc.GridSpacing = 35;
    doc.ShouldDrawGrid = true;
    GridForm form(*m_map, m_host->ui);
    auto* colors = Child<QComboBox>(form, "ImageCombo1");
    QCOMPARE(colors->count(), 6);
    QCOMPARE(colors->currentText(), QStringLiteral("Green"));
    QCOMPARE(colors->itemData(2).toString(), QStringLiteral("key3"));
    QVERIFY(!colors->itemIcon(0).isNull());
    QCOMPARE(Child<QComboBox>(form, "StyleCombo")->currentText(), QStringLiteral("Dashed Lines"));
    QCOMPARE(Child<QLineEdit>(form, "txtSpacing")->text(), QStringLiteral("35"));
    QCOMPARE(Child<QScrollBar>(form, "WidthSize")->value(), 35);
    QCOMPARE(Child<QScrollBar>(form, "WidthSize")->minimum(), 4);
    QCOMPARE(Child<QScrollBar>(form, "WidthSize")->maximum(), 100);
    QVERIFY(Child<QCheckBox>(form, "Check1")->isChecked());
    QVERIFY(!Child<QCheckBox>(form, "Check2")->isChecked());
}

void TestOptionDialogs::gridSpacingTakesDigitsOnly()
{
    GridForm form(*m_map, m_host->ui);
    auto* box = Child<QLineEdit>(form, "txtSpacing");
    box->clear();
    QTest::keyClicks(box, QStringLiteral("3a-x.0"));
    QCOMPARE(box->text(), QStringLiteral("30"));
    QCOMPARE(Child<QScrollBar>(form, "WidthSize")->value(), 30);
}

void TestOptionDialogs::gridSpacingFollowsTypingInRange()
{
    GridForm form(*m_map, m_host->ui);
    auto* box = Child<QLineEdit>(form, "txtSpacing");
    auto* bar = Child<QScrollBar>(form, "WidthSize");
    box->clear();
    QTest::keyClicks(box, QStringLiteral("50"));
    QCOMPARE(bar->value(), 50);
    QTest::keyClicks(box, QStringLiteral("0"));
    QCOMPARE(box->text(), QStringLiteral("500"));
    QCOMPARE(bar->value(), 50);
}

void TestOptionDialogs::gridSpacingOutOfRangeIsCorrectedOnLeaving()
{
    GridForm form(*m_map, m_host->ui);
    form.show();
    form.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    auto* box = Child<QLineEdit>(form, "txtSpacing");
    auto* bar = Child<QScrollBar>(form, "WidthSize");
    auto* elsewhere = Child<QComboBox>(form, "StyleCombo");
    box->setFocus();
    box->clear();
    QTest::keyClicks(box, QStringLiteral("50"));
    QCOMPARE(bar->value(), 50);
    Leave(box, elsewhere);
    QCOMPARE(box->text(), QStringLiteral("50"));

    // Pasted at once: the bar stays, and leaving puts its value back.
    box->setFocus();
    box->setText(QStringLiteral("150"));
    QCOMPARE(bar->value(), 50);
    Leave(box, elsewhere);
    QCOMPARE(box->text(), QStringLiteral("50"));

    // Typed key by key, "15" is in range on the way to "150".
    box->setFocus();
    box->clear();
    QTest::keyClicks(box, QStringLiteral("150"));
    QCOMPARE(bar->value(), 15);
    Leave(box, elsewhere);
    QCOMPARE(box->text(), QStringLiteral("15"));

    box->setFocus();
    box->clear();
    QTest::keyClicks(box, QStringLiteral("3"));
    Leave(box, elsewhere);
    QCOMPARE(box->text(), QStringLiteral("15"));

    box->setFocus();
    box->clear();
    Leave(box, elsewhere);
    QCOMPARE(box->text(), QStringLiteral("15"));
}

void TestOptionDialogs::gridBarRewritesTheText()
{
    GridForm form(*m_map, m_host->ui);
    Child<QScrollBar>(form, "WidthSize")->setValue(77);
    QCOMPARE(Child<QLineEdit>(form, "txtSpacing")->text(), QStringLiteral("77"));
}

void TestOptionDialogs::gridCheckBoxesDependOnEachOther()
{
    GridForm form(*m_map, m_host->ui);
    auto* display = Child<QCheckBox>(form, "Check1");
    auto* snap = Child<QCheckBox>(form, "Check2");
    QCOMPARE(display->text(), QStringLiteral("Display Grid On Image"));
    QCOMPARE(snap->text(), QStringLiteral("Snap Shapes To Grid"));
    QVERIFY(!display->isChecked());
    snap->click();
    QVERIFY(snap->isChecked());
    QVERIFY(display->isChecked());
    display->click();
    QVERIFY(!display->isChecked());
    QVERIFY(!snap->isChecked());
    display->click();
    QVERIFY(display->isChecked());
    QVERIFY(!snap->isChecked());
}

void TestOptionDialogs::gridOkStoresEveryFieldAndRedraws()
{
    GridForm form(*m_map, m_host->ui);
    form.show();
    Child<QComboBox>(form, "ImageCombo1")->setCurrentIndex(2); // Gray
    Child<QComboBox>(form, "StyleCombo")->setCurrentIndex(2);
    Child<QLineEdit>(form, "txtSpacing")->setText(QStringLiteral("25"));
    Child<QCheckBox>(form, "Check2")->click();
    QTest::mouseClick(Child<QPushButton>(form, "Command1"), Qt::LeftButton);
    QVERIFY(!form.isVisible());
    const MapDocument& doc = m_map->Document();
    QCOMPARE(doc.GridColorNum, std::int16_t(3));
    QCOMPARE(doc.GridColor, RGBColor(170, 170, 170));
    QCOMPARE(doc.GridStyle, 2);
    QCOMPARE(doc.GridSpacing, 25.0);
    QVERIFY(doc.ShouldDrawGrid);
    QVERIFY(doc.GridSnap);
    QVERIFY(m_host->ui.messages.isEmpty());
    // The grid is in the shown picture now: its first (dotted) line runs along the left
    // edge.
    QImage shown(m_map->Surface().size(), QImage::Format_RGB32);
    m_map->Surface().render(&shown);
    int greyOnLine = 0;
    int greyBetween = 0;
    for (int y = 1; y < 24; ++y) {
        greyOnLine += QColor(shown.pixel(0, y)) == QColor(170, 170, 170);
        greyBetween += QColor(shown.pixel(5, y)) == QColor(170, 170, 170);
    }
    QVERIFY(greyOnLine > 0);
    QCOMPARE(greyBetween, 0);
}

void TestOptionDialogs::gridCancelStoresNothing()
{
    GridForm form(*m_map, m_host->ui);
    form.show();
    Child<QComboBox>(form, "ImageCombo1")->setCurrentIndex(3);
    Child<QLineEdit>(form, "txtSpacing")->setText(QStringLiteral("60"));
    Child<QCheckBox>(form, "Check1")->click();
    QTest::mouseClick(Child<QPushButton>(form, "Command2"), Qt::LeftButton);
    QVERIFY(!form.isVisible());
    const MapDocument& doc = m_map->Document();
    QCOMPARE(doc.GridColorNum, std::int16_t(1));
    QCOMPARE(doc.GridSpacing, 20.0);
    QVERIFY(!doc.ShouldDrawGrid);
}

QTEST_MAIN(TestOptionDialogs)
#include "tst_optiondialogs.moc"
