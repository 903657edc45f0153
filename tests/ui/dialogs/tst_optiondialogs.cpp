#include "CanvasFixture.h"
#include "FrameFixture.h"
#include "TableCase.h"
#include "core/forms/SteppedNumberEntry.h"
#include "ui/dialogs/ColorPicker.h"
#include "ui/dialogs/GridForm.h"
#include "ui/dialogs/ImageSize.h"
#include "ui/dialogs/Zoom.h"
#include "ui/dialogs/frmOptions.h"

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabBar>

// The colour, grid, image size, zoom and properties dialogs on a real map window. The
// Properties tab strip, on small and on very big maps: the same captions in the same order,
// the right shape edited and written back, and never a tab per shape up front.
class TestOptionDialogs : public QObject, CanvasFixture
{
    Q_OBJECT
private slots:
    void init() { NewCanvas(); }

    void coloursApplyLiveAndResetRestores()
    {
        MapDocument& doc = NewCanvas().Document();
        doc.FocusColor = RGBColor(64, 128, 255);
        doc.BorderColor = RGBColor(1, 2, 3);
        // The one shape is on top.
        doc.Shape(doc.AddShape()).SetInfo(doc.Surface(), doc.NonFocusColor, Rectangle, 1.0, 10, 10);
        ColorPicker picker(*m_canvas, m_host->ui);
        Child<QScrollBar>(picker, "ScrollRed")->setValue(200);
        QCOMPARE(doc.FocusColor, RGBColor(200, 128, 255));
        QCOMPARE(doc.TopShape().ShapeColor, RGBColor(200, 128, 255));
        Child<QRadioButton>(picker, "Option3")->click();
        Child<QScrollBar>(picker, "ScrollGreen")->setValue(250);
        ::Click(picker, "Command1");
        QCOMPARE(doc.FocusColor, RGBColor(64, 128, 255));
        QCOMPARE(doc.BorderColor, RGBColor(1, 2, 3));
        QCOMPARE(doc.TopShape().ShapeColor, RGBColor(64, 128, 255));
        // The bars show the selected colour as it was at opening.
        QCOMPARE(Child<QScrollBar>(picker, "ScrollGreen")->value(), 2);

        // Enter, as the dialog opens or on the choices, closes and keeps the colours chosen.
        for (const char* name : {"", "Option1"}) {
            ColorPicker fresh(*m_canvas, m_host->ui);
            fresh.show();
            QVERIFY(QTest::qWaitForWindowActive(&fresh));
            Child<QScrollBar>(fresh, "ScrollRed")->setValue(10);
            QWidget* at = *name != 0 ? Child<QWidget>(fresh, name) : fresh.focusWidget();
            QVERIFY(at != nullptr);
            at->setFocus();
            QTest::keyClick(at, Qt::Key_Return);
            QCOMPARE(doc.FocusColor, RGBColor(10, 128, 255));
            QCOMPARE(fresh.result(), int(QDialog::Accepted));
        }
    }

    // The spacing box: typing moves the bar only in range (-1: it stays), leaving corrects
    // the text (a number in range and one above it are typed in the grid dialog's test).
    void spacingEntry()
    {
        const SteppedNumberEntry spacing(4, 100);
        for (const auto& [text, bar, left] :
             {std::tuple("4", 4, "4"), std::tuple("100", 100, "100"), std::tuple("3", -1, "20"),
              std::tuple("", -1, "20")}) {
            const TableCase row(text);
            QCOMPARE(spacing.ScrollValueFor(text).value_or(-1), bar);
            QCOMPARE(spacing.TextOnLeave(text, 20), QString::fromLatin1(left));
        }
    }

    void gridSpacingAndCheckBoxes()
    {
        GridForm form(NewCanvas(), m_host->ui);
        form.show();
        form.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QLineEdit* box = Child<QLineEdit>(form, "txtSpacing");
        auto* display = Child<QCheckBox>(form, "Check1");
        auto* snap = Child<QCheckBox>(form, "Check2");
        box->setFocus();
        box->clear();
        QTest::keyClicks(box, QStringLiteral("3a-x.0"));
        QCOMPARE(box->text(), QStringLiteral("30"));
        QCOMPARE(Child<QScrollBar>(form, "WidthSize")->value(), 30);
        box->setText(QStringLiteral("150"));
        display->setFocus();
        QTRY_COMPARE(box->text(), QStringLiteral("30"));
        snap->click();
        QVERIFY(display->isChecked());
        display->click();
        QVERIFY(!snap->isChecked());
        display->click();
        QVERIFY(!snap->isChecked());
    }

    void imageSize()
    {
        for (const auto& [width, height, message] :
             {std::tuple(20, 20, ""), std::tuple(19, 19, "The width of the image is too small."),
              std::tuple(20, 19, "The height of the image is too small."),
              std::tuple(2000, 2001, "The image size is too big.")}) {
            ShapeCanvas& map = NewCanvas(300, 200);
            ImageSize dialog(map, m_host->ui);
            dialog.show();
            Child<QLineEdit>(dialog, "txtWidth")->setText(QString::number(width));
            Child<QLineEdit>(dialog, "txtHeight")->setText(QString::number(height));
            ::Click(dialog, "Command1");
            const bool refused = *message != 0;
            QCOMPARE(m_host->ui.messageTexts().join(QString()), QString::fromLatin1(message));
            QCOMPARE(dialog.isVisible(), refused);
            QCOMPARE(Child<QLineEdit>(dialog, "txtWidth")->text(), QString::number(width));
            QCOMPARE(map.Document().SWidth, refused ? 300 : width);
            QCOMPARE(map.Document().SHeight, refused ? 200 : height);
        }
    }

    void zoom()
    {
        // 1.0: refused; 4,000,000 pixels are allowed, one row more is not.
        for (const auto& [width, height, percent, level] :
             {std::tuple(300, 200, "155", 1.6), std::tuple(300, 200, "145", 1.4),
              std::tuple(1000, 1000, "200", 2.0), std::tuple(1000, 1001, "200", 1.0)}) {
            ShapeCanvas& map = NewCanvas(width, height);
            Zoom dialog(map, m_host->ui);
            dialog.show();
            Child<QLineEdit>(dialog, "txtZooming")->setText(QString::fromLatin1(percent));
            ::Click(dialog, "Command1");
            QCOMPARE(map.Document().ZoomLevel, level);
            const bool refused = level == 1.0;
            QCOMPARE(dialog.isVisible(), refused);
            QCOMPARE(m_host->ui.messageTexts(),
                     refused ? QStringList({"Zoom level is too great for an image of this size."})
                             : QStringList());
        }
    }
    void smallMapHasATabForEveryShape()
    {
        AddShapes(3);
        frmOptions dialog(*m_canvas, m_host->ui);
        dialog.OpenOnTab(3);
        QTabBar* tabs = Tabs(dialog);
        QStringList captions;
        for (int i = 0; i < tabs->count(); ++i)
            captions << tabs->tabText(i);
        QCOMPARE(captions, (QStringList{"Map Properties", "Shape #1", "Shape #2", "Shape #3",
                                        "Default Area"}));
        QCOMPARE(tabs->currentIndex(), 2);
        QCOMPARE(Text(dialog, "txtURL"), QStringLiteral("u1"));

        // From the keyboard: Ctrl+Page Down and Ctrl+Tab go on a tab, Ctrl+Page Up and
        // Ctrl+Shift+Tab back, from whichever box has the focus, and stop at either end.
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        const auto press = [&](Qt::Key key, Qt::KeyboardModifiers modifiers) {
            QTest::keyClick(QApplication::focusWidget(), key, modifiers);
            QCoreApplication::processEvents();
            return tabs->tabText(tabs->currentIndex());
        };
        QCOMPARE(press(Qt::Key_PageUp, Qt::ControlModifier), QStringLiteral("Shape #1"));
        QCOMPARE(Text(dialog, "txtURL"), QStringLiteral("u0"));
        QCOMPARE(press(Qt::Key_PageUp, Qt::ControlModifier), QStringLiteral("Map Properties"));
        QCOMPARE(press(Qt::Key_PageUp, Qt::ControlModifier), QStringLiteral("Map Properties"));
        QCOMPARE(press(Qt::Key_PageDown, Qt::ControlModifier), QStringLiteral("Shape #1"));
        QCOMPARE(press(Qt::Key_Tab, Qt::ControlModifier), QStringLiteral("Shape #2"));
        QCOMPARE(press(Qt::Key_Tab, Qt::ControlModifier), QStringLiteral("Shape #3"));
        QCOMPARE(press(Qt::Key_PageDown, Qt::ControlModifier), QStringLiteral("Default Area"));
        QCOMPARE(press(Qt::Key_PageDown, Qt::ControlModifier), QStringLiteral("Default Area"));
        QCOMPARE(press(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier),
                 QStringLiteral("Shape #3"));
        QCOMPARE(Text(dialog, "txtURL"), QStringLiteral("u2"));
    }

    void bigMapOpensOnTheShapeAndWritesItBack()
    {
        AddShapes(5000);
        MapDocument& doc = m_canvas->Document();
        frmOptions dialog(*m_canvas, m_host->ui);
        dialog.OpenOnTab(2502); // Shape #2501, Shapes[2500]
        QTabBar* tabs = Tabs(dialog);
        QVERIFY(tabs->count() < 100);
        QCOMPARE(tabs->tabText(tabs->currentIndex()), QStringLiteral("Shape #2501"));
        QCOMPARE(tabs->tabText(0), QStringLiteral("Map Properties"));
        QCOMPARE(tabs->tabText(tabs->count() - 1), QStringLiteral("Default Area"));
        QCOMPARE(Text(dialog, "txtURL"), QStringLiteral("u2500"));
        QCOMPARE(doc.ShapeOrder().front(), std::int16_t(2500));
        dialog.findChild<QLineEdit*>(QStringLiteral("txtURL"))->setText(QStringLiteral("new"));

        // Shape numbers run on without gaps between the map and default area tabs.
        for (int i = 2; i < tabs->count() - 1; ++i)
            QCOMPARE(tabs->tabText(i),
                     QStringLiteral("Shape #%1").arg(tabs->tabText(1).mid(7).toInt() + i - 1));

        tabs->setCurrentIndex(tabs->currentIndex() + 1);
        QCOMPARE(doc.ShapeOrder().front(), std::int16_t(2501));
        QCOMPARE(Text(dialog, "txtURL"), QStringLiteral("u2501"));
        dialog.findChild<QLineEdit*>(QStringLiteral("txtComment"))->setText(QStringLiteral("c"));
        tabs->setCurrentIndex(tabs->count() - 1);
        dialog.findChild<QLineEdit*>(QStringLiteral("txtURL"))->setText(QStringLiteral("rest"));
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);

        QCOMPARE(doc.GetURL(2500), QStringLiteral("new"));
        QCOMPARE(doc.GetComment(2501), QStringLiteral("c"));
        QCOMPARE(doc.GetURL(2501), QStringLiteral("u2501"));
        QCOMPARE(doc.DefURL, QStringLiteral("rest"));
        for (const std::int16_t untouched : {0, 2499, 2502, 4999})
            QCOMPARE(doc.GetURL(untouched), QStringLiteral("u%1").arg(untouched));
    }

    // Stepping through the tabs one by one reaches every shape, in order, and the end.
    void steppingWalksTheWholeRange()
    {
        AddShapes(300);
        frmOptions dialog(*m_canvas, m_host->ui);
        dialog.OpenOnTab(2);
        QTabBar* tabs = Tabs(dialog);
        QCOMPARE(tabs->tabText(tabs->currentIndex()), QStringLiteral("Shape #1"));
        for (int shape = 2; shape <= 300; ++shape) {
            tabs->setCurrentIndex(tabs->currentIndex() + 1);
            QCoreApplication::processEvents(); // the strip moves along after the click
            QCOMPARE(tabs->tabText(tabs->currentIndex()), QStringLiteral("Shape #%1").arg(shape));
            QCOMPARE(Text(dialog, "txtURL"), QStringLiteral("u%1").arg(shape - 1));
        }
        tabs->setCurrentIndex(tabs->currentIndex() + 1);
        QCOMPARE(tabs->tabText(tabs->currentIndex()), QStringLiteral("Default Area"));
        tabs->setCurrentIndex(0);
        QCOMPARE(dialog.Model().ShownTab(), 1);
    }

private:
    void AddShapes(int Count) { AdoptRectangles(m_canvas->Document(), Count, QStringLiteral("u")); }
    static QTabBar* Tabs(QDialog& dialog)
    {
        return dialog.findChild<QTabBar*>(QStringLiteral("tbsOptions"));
    }
    static QString Text(QDialog& dialog, const char* name)
    {
        return dialog.findChild<QLineEdit*>(QLatin1String(name))->text();
    }
};

QTEST_MAIN(TestOptionDialogs)
#include "tst_optiondialogs.moc"
