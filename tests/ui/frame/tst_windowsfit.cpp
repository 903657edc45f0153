#include "FrameFixture.h"
#include "TableCase.h"
#include "ui/dialogs/ColorPicker.h"
#include "ui/dialogs/GridForm.h"
#include "ui/dialogs/ImageSize.h"
#include "ui/dialogs/WidePrompt.h"
#include "ui/dialogs/Zoom.h"
#include "ui/dialogs/frmOptions.h"
#include "ui/frame/Credits.h"
#include "ui/frame/ScreenFitter.h"
#include "ui/frame/StartUp.h"
#include "ui/frame/ToolStrip.h"
#include "ui/frame/frmSplash.h"
#include "ui/tools/ConvertHTMLtoMap.h"
#include "ui/tools/GeneratedCodeForm.h"
#include "ui/tools/MapCheckWindow.h"
#include "ui/tools/URLChecker.h"

#include <QApplication>
#include <QDir>
#include <QDockWidget>
#include <QFileDialog>
#include <QIcon>
#include <QMessageBox>
#include <QScreen>
#include <QTemporaryFile>
#include <QToolButton>
#include <QWebEngineProfile>
#include <QWebEngineUrlRequestInterceptor>

// Every window of the program on small screens at a scale factor of 2: a 1280 x 1024
// screen (640 x 512 at 2x) and one that gives 853 x 682, as 1280 x 1024 does at 1.5x.
// Run with the fitter installed on the application, as the editor runs.
class TestWindowsFit : public QObject, FrameFixture
{
    Q_OBJECT
    using Factory = std::function<QWidget*(MDIForm1&, ShapeCanvas&)>;

    ScreenFitter m_fitter;

    QScreen* Screen(int index) const { return QGuiApplication::screens().value(index); }
    // The frame moved onto a screen, with a big map open.
    ShapeCanvas* FrameOn(int screen)
    {
        m_frame->hide();
        m_frame->move(Screen(screen)->availableGeometry().topLeft() + QPoint(10, 10));
        m_frame->show();
        if (m_frame->ActiveMapWindow() != nullptr)
            return m_frame->ActiveMapWindow();
        m_run->NewMap(SavePicture(m_dir.filePath("pic.png"), {2400, 1600}, Qt::darkCyan));
        // Enough shapes for a run of tabs in Properties and a long list in the panel.
        AdoptRectangles(m_frame->ActiveMapWindow()->Document(), 200,
                        QStringLiteral("https://www.example.com/a/rather/long/path/"));
        return m_frame->ActiveMapWindow();
    }
    template <typename T> static std::pair<const char*, Factory> Dialog(const char* name)
    {
        return {name,
                [](MDIForm1& f, ShapeCanvas& m) -> QWidget* { return new T(m, f.Dialogs(), &f); }};
    }
    // Inside the free area of the screen it is on, with room for everything it holds.
    static void CheckFits(const QWidget& window)
    {
        const QScreen* screen = QGuiApplication::screenAt(window.frameGeometry().center());
        QString where;
        QDebug(&where) << window.objectName() << window.frameGeometry() << "minimum"
                       << window.minimumSizeHint() << "on" << window.screen()->availableGeometry();
        QVERIFY2(screen != nullptr &&
                     screen->availableGeometry().contains(window.frameGeometry()) &&
                     window.width() >= window.minimumSizeHint().width() &&
                     window.height() >= window.minimumSizeHint().height(),
                 qPrintable(where));
    }

private slots:
    void initTestCase()
    {
        QCOMPARE(QGuiApplication::screens().size(), 2);
        QCOMPARE(Screen(0)->geometry(), QRect(0, 0, 640, 512));
        QCOMPARE(Screen(1)->geometry().size(), QSize(853, 682));
        qApp->installEventFilter(&m_fitter);
        OpenFrame();
    }
    void cleanupTestCase() { CloseFrame(); }

    void everyIconIsDrawnForTheScreen()
    {
        // Scalable pictures only: drawn for twice the pixels, a 26-pixel icon is 52 wide.
        const QStringList icons = QDir(QStringLiteral(":/icons")).entryList(QDir::Files);
        QVERIFY(icons.size() > 30);
        for (const QString& name : icons) {
            QVERIFY2(name.endsWith(QLatin1String(".svg")), qPrintable(name));
            const QPixmap pixmap = QIcon(QStringLiteral(":/icons/") + name)
                                       .pixmap(QSize(26, 26), Screen(0)->devicePixelRatio());
            QVERIFY2(pixmap.width() == 52 && !pixmap.toImage().isNull(), qPrintable(name));
        }
    }

    void toolStripShrinksWhenShort()
    {
        ToolStrip strip;
        strip.resize(strip.width(), 600);
        strip.show();
        QVERIFY(QTest::qWaitForWindowExposed(&strip));
        const auto buttons = strip.findChildren<QToolButton*>();
        QVERIFY(!buttons.isEmpty());
        const auto allShown = [&] {
            for (const QToolButton* button : buttons) {
                const QRect onStrip(button->mapTo(&strip, QPoint(0, 0)), button->size());
                if (!strip.rect().contains(onStrip))
                    return false;
            }
            return true;
        };
        QVERIFY(allShown());
        const int fullSize = buttons.first()->height();
        // As short as the strip may be: smaller buttons, every one of them still there.
        strip.resize(strip.width(), strip.minimumHeight());
        QVERIFY(buttons.first()->height() < fullSize);
        QVERIFY(allShown());
        strip.resize(strip.width(), 600);
        QCOMPARE(buttons.first()->height(), fullSize);
    }

    void frameWithShapesPanel_data()
    {
        QTest::addColumn<int>("screen");
        QTest::newRow("1280 x 1024 at 2x") << 0;
        QTest::newRow("1280 x 1024 at 1.5x") << 1;
    }

    void frameWithShapesPanel()
    {
        QFETCH(int, screen);
        QVERIFY(FrameOn(screen) != nullptr);
        QVERIFY(QTest::qWaitForWindowExposed(m_frame));
        auto* panel = m_frame->findChild<QDockWidget*>();
        QVERIFY(panel != nullptr);
        panel->show();
        QCoreApplication::processEvents();
        QCOMPARE(m_frame->screen(), Screen(screen));
        CheckFits(*m_frame);
        // A panel pulled off the frame stays where the user put it when it fits there, and
        // comes back onto the screen when it does not.
        panel->setFloating(true);
        const QRect free = Screen(screen)->availableGeometry();
        for (const auto& [at, fits] : {std::pair{free.topLeft() + QPoint(30, 30), true},
                                       std::pair{free.bottomRight() - QPoint(20, 20), false}}) {
            const TableCase row(at);
            panel->move(at);
            panel->hide();
            panel->show();
            QVERIFY(QTest::qWaitForWindowExposed(panel));
            CheckFits(*panel);
            QCOMPARE(panel->pos() == at, fits);
        }
        panel->setFloating(false);
    }

    void everyWindow_data()
    {
        QTest::addColumn<int>("screen");
        QTest::addColumn<Factory>("make");
        const std::pair<const char*, Factory> windows[] = {
            Dialog<frmOptions>("properties"),
            Dialog<ColorPicker>("colours"),
            Dialog<GridForm>("grid"),
            Dialog<ImageSize>("image size"),
            Dialog<Zoom>("zoom"),
            {"code window",
             [](MDIForm1& f, ShapeCanvas& m) {
                 auto* form = new GeneratedCodeForm(QString(80, QLatin1Char('x')), f.Dialogs(), &f);
                 form->SetFormats(GeneratedCodeForm::FormatsOf(m));
                 return form;
             }},
            Dialog<ConvertHTMLtoMap>("HTML import"),
            Dialog<URLChecker>("URL checker"),
            {"check map",
             [](MDIForm1& f, ShapeCanvas& m) {
                 auto* window = new MapCheckWindow(&f);
                 window->Check(m);
                 return window;
             }},
            {"credits", [](MDIForm1& f, ShapeCanvas&) { return new Credits(&f); }},
            {"start-up", [](MDIForm1& f, ShapeCanvas&) { return new StartUp(f.Dialogs(), &f); }},
            {"splash", [](MDIForm1&, ShapeCanvas&) { return new frmSplash; }},
            {"message",
             [](MDIForm1& f, ShapeCanvas&) {
                 return new QMessageBox(QMessageBox::Critical, QStringLiteral("Corvane"),
                                        QStringLiteral("There was an error while trying to load "
                                                       "the file."),
                                        QMessageBox::Ok, &f);
             }},
            {"prompt",
             [](MDIForm1& f, ShapeCanvas&) {
                 return new WidePrompt(QStringLiteral("Map name:"), QStringLiteral("Map"),
                                       QStringLiteral("MyMap"), &f);
             }},
            {"file dialog",
             [](MDIForm1& f, ShapeCanvas&) {
                 return new QFileDialog(&f, QStringLiteral("Load Picture"), QDir::tempPath());
             }},
        };
        for (const auto& [name, make] : windows) {
            QTest::addRow("%s at 2x", name) << 0 << make;
            QTest::addRow("%s at 1.5x", name) << 1 << make;
        }
    }

    void everyWindow()
    {
        QFETCH(int, screen);
        QFETCH(Factory, make);
        ShapeCanvas* map = FrameOn(screen);
        QVERIFY(map != nullptr);
        std::unique_ptr<QWidget> window(make(*m_frame, *map));
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        CheckFits(*window);
        // A message, prompt or file dialog opens over the window it belongs to, with or
        // without a window manager: centred on it, as far as its screen allows. (The
        // program's own dialogs centre themselves on the screen.)
        if (!window->inherits("QMessageBox") && !window->inherits("QInputDialog") &&
            !window->inherits("QFileDialog"))
            return;
        const QRect free = Screen(screen)->availableGeometry();
        QRect centred(QPoint(), window->frameGeometry().size());
        centred.moveCenter(m_frame->frameGeometry().center());
        centred.moveLeft(qBound(free.left(), centred.left(), free.right() - centred.width() + 1));
        centred.moveTop(qBound(free.top(), centred.top(), free.bottom() - centred.height() + 1));
        QString where;
        QDebug(&where) << window->frameGeometry() << "over" << m_frame->frameGeometry();
        QVERIFY2((window->frameGeometry().center() - centred.center()).manhattanLength() <= 4,
                 qPrintable(where));
    }
};

namespace {

// The URL checker's page stays on this machine.
struct LocalOnly : QWebEngineUrlRequestInterceptor
{
    void interceptRequest(QWebEngineUrlRequestInfo& info) override
    {
        info.block(!QStringList{"file", "data"}.contains(info.requestUrl().scheme()));
    }
};

} // namespace

int main(int argc, char** argv)
{
    QTemporaryFile screens;
    if (!screens.open())
        return 1;
    screens.write(R"({"screens": [
        {"name": "a", "x": 0, "y": 0, "width": 1280, "height": 1024},
        {"name": "b", "x": 1280, "y": 0, "width": 1706, "height": 1364}]})");
    screens.flush();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screens.fileName().toLocal8Bit());
    qputenv("QT_SCALE_FACTOR", "2");
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    LocalOnly localOnly;
    QWebEngineProfile::defaultProfile()->setUrlRequestInterceptor(&localOnly);
    TestWindowsFit test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_windowsfit.moc"
