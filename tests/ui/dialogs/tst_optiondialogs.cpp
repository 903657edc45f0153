#include "CanvasFixture.h"
#include "FrameFixture.h"
#include "TableCase.h"
#include "core/base/Module1.h"
#include "core/forms/SteppedNumberEntry.h"
#include "ui/dialogs/ColorPicker.h"
#include "ui/dialogs/GridForm.h"
#include "ui/dialogs/ImageSize.h"
#include "ui/dialogs/Zoom.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>

// The colour, grid, image size and zoom dialogs on a real map window.
class TestOptionDialogs : public QObject, CanvasFixture
{
    Q_OBJECT
private slots:
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
};

QTEST_MAIN(TestOptionDialogs)
#include "tst_optiondialogs.moc"
