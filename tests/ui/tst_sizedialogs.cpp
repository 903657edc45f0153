#include "FakeCanvasHost.h"
#include "canvas/ShapeCanvas.h"
#include "frame/ImageSize.h"
#include "frame/Zoom.h"

#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <memory>

// The image size and zoom dialogs on a real map window.
class TestSizeDialogs : public QObject
{
    Q_OBJECT
private slots:
    void cleanup();

    void imageSizeShowsTheShownSize();
    void imageSizeAcceptsTwentyByTwenty();
    void imageSizeRefusals_data();
    void imageSizeRefusals();
    void imageSizeUpToFourMillionPixels();
    void imageSizeResizesAtOneHundredPerCent();
    void imageSizeTakesDigitsOnly();
    void imageSizeAbout();

    void zoomShowsTheCurrentLevel();
    void zoomRoundsThePercentToTens_data();
    void zoomRoundsThePercentToTens();
    void zoomTooGreatIsRefused();
    void zoomOutOfRangeTextIsPutBack();
    void zoomCancelChangesNothing();

private:
    ShapeCanvas& Map(int width, int height);
    static QLineEdit* Box(QWidget& dialog, const char* name)
    {
        return dialog.findChild<QLineEdit*>(QLatin1String(name));
    }
    static void Click(QWidget& dialog, const char* name)
    {
        QTest::mouseClick(dialog.findChild<QPushButton*>(QLatin1String(name)), Qt::LeftButton);
    }

    std::unique_ptr<FakeCanvasHost> m_host;
    std::unique_ptr<ShapeCanvas> m_map;
};

ShapeCanvas& TestSizeDialogs::Map(int width, int height)
{
    m_host = std::make_unique<FakeCanvasHost>();
    m_map = std::make_unique<ShapeCanvas>(*m_host);
    m_host->active = m_map.get();
    QImage picture(width, height, QImage::Format_RGB32);
    picture.fill(Qt::white);
    m_map->resize(500, 400);
    m_map->show();
    m_map->SetNewPicture(picture, QStringLiteral("/maps/pic.png"));
    return *m_map;
}

void TestSizeDialogs::cleanup()
{
    m_map.reset();
    m_host.reset();
}

void TestSizeDialogs::imageSizeShowsTheShownSize()
{
    ShapeCanvas& map = Map(320, 240);
    ImageSize dialog(map, m_host->ui);
    QCOMPARE(Box(dialog, "txtWidth")->text(), QStringLiteral("320"));
    QCOMPARE(Box(dialog, "txtHeight")->text(), QStringLiteral("240"));
}

void TestSizeDialogs::imageSizeAcceptsTwentyByTwenty()
{
    ShapeCanvas& map = Map(320, 240);
    ImageSize dialog(map, m_host->ui);
    dialog.show();
    Box(dialog, "txtWidth")->setText(QStringLiteral("20"));
    Box(dialog, "txtHeight")->setText(QStringLiteral("20"));
    Click(dialog, "Command1");
    QVERIFY(m_host->ui.messages.isEmpty());
    QVERIFY(!dialog.isVisible());
    QCOMPARE(m_map->Document().SWidth, 20);
    QCOMPARE(m_map->Document().SHeight, 20);
    QCOMPARE(m_map->Document().RealWidth, 320);
    QCOMPARE(m_map->findChild<QWidget*>("TheCanvas")->size(), QSize(20, 20));
}

void TestSizeDialogs::imageSizeRefusals_data()
{
    QTest::addColumn<QString>("width");
    QTest::addColumn<QString>("height");
    QTest::addColumn<QString>("message");
    QTest::newRow("19 wide") << "19"
                             << "300"
                             << "The width of the image is too small.";
    QTest::newRow("both 19: width first") << "19"
                                          << "19"
                                          << "The width of the image is too small.";
    QTest::newRow("19 high") << "20"
                             << "19"
                             << "The height of the image is too small.";
    QTest::newRow("empty width") << ""
                                 << "300"
                                 << "The width of the image is too small.";
    QTest::newRow("2000 x 2001") << "2000"
                                 << "2001"
                                 << "The image size is too big.";
}

void TestSizeDialogs::imageSizeRefusals()
{
    QFETCH(QString, width);
    QFETCH(QString, height);
    QFETCH(QString, message);
    ShapeCanvas& map = Map(320, 240);
    ImageSize dialog(map, m_host->ui);
    dialog.show();
    Box(dialog, "txtWidth")->setText(width);
    Box(dialog, "txtHeight")->setText(height);
    Click(dialog, "Command1");
    QCOMPARE(m_host->ui.messageTexts(), QStringList({message}));
    QCOMPARE(m_host->ui.messages[0].icon, ModalUi::Icon::Critical);
    QVERIFY(dialog.isVisible());
    QCOMPARE(Box(dialog, "txtWidth")->text(), width);
    QCOMPARE(Box(dialog, "txtHeight")->text(), height);
    QCOMPARE(m_map->Document().SWidth, 320);
    QCOMPARE(m_map->Document().SHeight, 240);
}

void TestSizeDialogs::imageSizeUpToFourMillionPixels()
{
    ShapeCanvas& map = Map(100, 100);
    ImageSize dialog(map, m_host->ui);
    dialog.show();
    Box(dialog, "txtWidth")->setText(QStringLiteral("2000"));
    Box(dialog, "txtHeight")->setText(QStringLiteral("2000"));
    Click(dialog, "Command1");
    QVERIFY(m_host->ui.messages.isEmpty());
    QVERIFY(!dialog.isVisible());
    QCOMPARE(m_map->Document().SWidth, 2000);
    QCOMPARE(m_map->Document().SHeight, 2000);
}

void TestSizeDialogs::imageSizeResizesAtOneHundredPerCent()
{
    ShapeCanvas& map = Map(300, 200);
    map.SetZoomLevel(1.5);
    ImageSize dialog(map, m_host->ui);
    dialog.show();
    Box(dialog, "txtWidth")->setText(QStringLiteral("150"));
    Box(dialog, "txtHeight")->setText(QStringLiteral("100"));
    Click(dialog, "Command1");
    QCOMPARE(map.Document().ZoomLevel, 1.0);
    QCOMPARE(map.Document().SWidth, 150);
    QCOMPARE(map.findChild<QWidget*>("TheCanvas")->size(), QSize(150, 100));
}

void TestSizeDialogs::imageSizeTakesDigitsOnly()
{
    ShapeCanvas& map = Map(320, 240);
    ImageSize dialog(map, m_host->ui);
    QLineEdit* width = Box(dialog, "txtWidth");
    width->clear();
    QTest::keyClicks(width, QStringLiteral("1x2-3.4"));
    QCOMPARE(width->text(), QStringLiteral("1234"));
}

void TestSizeDialogs::imageSizeAbout()
{
    ShapeCanvas& map = Map(320, 240);
    ImageSize dialog(map, m_host->ui);
    Click(dialog, "Command2");
    QCOMPARE(m_host->ui.messageTexts(),
             QStringList({"This feature effects the appearance of the image's size when it is "
                          "displayed on a webpage."}));
    QCOMPARE(m_host->ui.messages[0].icon, ModalUi::Icon::Information);
}

void TestSizeDialogs::zoomShowsTheCurrentLevel()
{
    ShapeCanvas& map = Map(300, 200);
    {
        Zoom dialog(map, m_host->ui);
        QCOMPARE(Box(dialog, "txtZooming")->text(), QStringLiteral("100"));
        auto* bar = dialog.findChild<QScrollBar*>("ZoomSize");
        QCOMPARE(bar->value(), 100);
        QCOMPARE(bar->minimum(), 100);
        QCOMPARE(bar->maximum(), 200);
        QCOMPARE(bar->singleStep(), 10);
        QCOMPARE(bar->pageStep(), 10);
    }
    map.SetZoomLevel(1.1 + 0.1 + 0.1 + 0.1 + 0.1);
    Zoom dialog(map, m_host->ui);
    QCOMPARE(Box(dialog, "txtZooming")->text(), QStringLiteral("150"));
    QCOMPARE(dialog.findChild<QScrollBar*>("ZoomSize")->value(), 150);
}

void TestSizeDialogs::zoomRoundsThePercentToTens_data()
{
    QTest::addColumn<QString>("percent");
    QTest::addColumn<double>("level");
    QTest::newRow("155") << "155" << 1.6;
    QTest::newRow("145") << "145" << 1.4;
    QTest::newRow("200") << "200" << 2.0;
}

void TestSizeDialogs::zoomRoundsThePercentToTens()
{
    QFETCH(QString, percent);
    QFETCH(double, level);
    ShapeCanvas& map = Map(300, 200);
    Zoom dialog(map, m_host->ui);
    dialog.show();
    Box(dialog, "txtZooming")->setText(percent);
    Click(dialog, "Command1");
    QVERIFY(!dialog.isVisible());
    QCOMPARE(m_map->Document().ZoomLevel, level);
    QCOMPARE(m_map->findChild<QWidget*>("TheCanvas")->width(), qRound(300 * level));
}

void TestSizeDialogs::zoomTooGreatIsRefused()
{
    ShapeCanvas& map = Map(2000, 1500);
    Zoom dialog(map, m_host->ui);
    dialog.show();
    Box(dialog, "txtZooming")->setText(QStringLiteral("120"));
    Click(dialog, "Command1");
    QCOMPARE(m_host->ui.messageTexts(),
             QStringList({"Zoom level is too great for an image of this size."}));
    QCOMPARE(m_host->ui.messages[0].icon, ModalUi::Icon::Critical);
    QVERIFY(dialog.isVisible());
    QCOMPARE(Box(dialog, "txtZooming")->text(), QStringLiteral("120"));
    QCOMPARE(m_map->Document().ZoomLevel, 1.0);

    Box(dialog, "txtZooming")->setText(QStringLiteral("110"));
    Click(dialog, "Command1");
    QVERIFY(!dialog.isVisible());
    QCOMPARE(m_map->Document().ZoomLevel, 1.1);
}

void TestSizeDialogs::zoomOutOfRangeTextIsPutBack()
{
    ShapeCanvas& map = Map(300, 200);
    Zoom dialog(map, m_host->ui);
    dialog.show();
    dialog.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QLineEdit* box = Box(dialog, "txtZooming");
    auto* bar = dialog.findChild<QScrollBar*>("ZoomSize");
    box->setFocus();
    QTRY_VERIFY(box->hasFocus());
    box->clear();
    QTest::keyClicks(box, QStringLiteral("130"));
    QCOMPARE(bar->value(), 130);
    box->clear();
    QTest::keyClicks(box, QStringLiteral("250"));
    QCOMPARE(bar->value(), 130);
    dialog.findChild<QPushButton*>("Command2")->setFocus();
    QTRY_VERIFY(!box->hasFocus());
    QCOMPARE(box->text(), QStringLiteral("130"));
}

void TestSizeDialogs::zoomCancelChangesNothing()
{
    ShapeCanvas& map = Map(300, 200);
    Zoom dialog(map, m_host->ui);
    dialog.show();
    Box(dialog, "txtZooming")->setText(QStringLiteral("180"));
    Click(dialog, "Command2");
    QVERIFY(!dialog.isVisible());
    QCOMPARE(m_map->Document().ZoomLevel, 1.0);
}

QTEST_MAIN(TestSizeDialogs)
#include "tst_sizedialogs.moc"
