#include "ShapeRow.h"
#include "core/document/MapDocument.h"
#include "core/forms/BrowserSandbox.h"
#include "core/forms/CommonDialogStuff.h"
#include "core/forms/DroppedFiles.h"
#include "core/forms/EditorCommandLine.h"
#include "core/forms/FolderMemory.h"
#include "core/forms/OptionsModel.h"
#include "core/forms/RecentFiles.h"
#include "core/forms/ScreenFit.h"
#include "core/forms/ZoomStep.h"

#include <QDir>
#include <QFile>
#include <QMimeData>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

namespace {

// Rectangles whose alert is undecided.
MapDocument MapWithShapes(int count)
{
    MapDocument doc;
    for (int i = 0; i < count; ++i)
        AddShapeRow(doc, QStringLiteral("1|0,0,9,0,9,9,0,9|http://x/%1||||-1|").arg(i));
    return doc;
}

} // namespace

// The frame's and its dialogs' rules that need no window: which command lines print and
// quit before any window exists and what the editor opens, save names, the zoom pixel
// limit, where a window goes on a screen's free area, what the editor remembers between
// runs, which dropped things are files, and the properties dialog's private copy of the
// map's link properties.
class TestFrameCommands : public QObject
{
    Q_OBJECT
    QTemporaryDir m_dir;

    QString Settings() const { return m_dir.filePath(QStringLiteral("settings.ini")); }
    QString File(const QString& name) const { return m_dir.filePath(name); }

private slots:
    // A bare name and one holding ".IMP": the map window's save test.
    void saveNameGetsMapExtension()
    {
        QCOMPARE(CommonDialogStuff::WithMapExtension("my.imports.txt"), "my.imports.txt");
        QCOMPARE(CommonDialogStuff::WithMapExtension("/home/ann/plan.map"),
                 "/home/ann/plan.map.imp");
        // Only a name the extension turns into an existing file needs asking about again.
        QFile existing(File("site.v2.imp"));
        QVERIFY(existing.open(QIODevice::WriteOnly));
        QCOMPARE(CommonDialogStuff::ReplaceQuestion(File("site.v2")),
                 "site.v2.imp already exists.\nDo you want to replace it?");
        QVERIFY(CommonDialogStuff::ReplaceQuestion(File("site.v3")).isEmpty());
        QVERIFY(CommonDialogStuff::ReplaceQuestion(File("site.v2.imp")).isEmpty());
    }

    void zoomedSidesRoundHalfToEven()
    {
        // The limit itself is the zoom dialog's test.
        // 1.5 x 1335 = 2002.5 rounds half to even: 2002 x 1998 fits.
        QCOMPARE(ZoomStep::In(1.4, 1335, 1332).outcome, ZoomStep::Outcome::Zoomed);
    }

    // The bare --version, -v, --help and -h run without a display in the command-line test.
    // Qt's own options are the windowing system's to read: the windowed path takes them.
    void commandLine()
    {
        QVERIFY(EditorCommandLine::OnlyPrints({"vantrel", "map.imp", "-h"}));
        for (const QStringList& windowed :
             {QStringList{"vantrel"}, QStringList{"vantrel", "map.imp", "pic.png"},
              QStringList{"vantrel", "--help-all"},
              QStringList{"vantrel", "-platform", "offscreen", "--version"},
              QStringList{"vantrel", "--frobnicate", "-v"}})
            QVERIFY2(!EditorCommandLine::OnlyPrints(windowed), qPrintable(windowed.join(' ')));
        // The files to open, and the timing switch for scripts.
        EditorCommandLine line;
        QVERIFY(line.Parse({"vantrel", "a.imp", "--quit-after-first-paint", "b c.png"}));
        QCOMPARE(line.Files(), QStringList({"a.imp", "b c.png"}));
        QVERIFY(line.QuitAfterFirstPaint());
        EditorCommandLine plain;
        QVERIFY(plain.Parse({"vantrel", "a.imp"}) && !plain.QuitAfterFirstPaint());
    }

    // Root's editor gets a browser that starts instead of one that ends the program; a
    // value the user set stays. No browser runs in this test.
    void rootRunsTheBrowserWithoutSandbox()
    {
        const char* const name = "QTWEBENGINE_DISABLE_SANDBOX";
        qunsetenv(name);
        BrowserSandbox::Prepare(false);
        QVERIFY(!qEnvironmentVariableIsSet(name));
        BrowserSandbox::Prepare(true);
        QCOMPARE(qgetenv(name), QByteArray("1"));
        qputenv(name, QByteArray("0"));
        BrowserSandbox::Prepare(true);
        QCOMPARE(qgetenv(name), QByteArray("0"));
    }

    void place()
    {
        // 1280 x 1024 at 2x leaves 640 x 512, here less a 24-pixel panel at the top.
        const QRect available(0, 24, 640, 488);
        const QMargins decoration(4, 26, 4, 4);
        const auto places = [&](const QRect& window, const QSize& minimum, const QRect& placed) {
            const QRect result = ScreenFit::Place(available, window, decoration, minimum);
            QCOMPARE(result, placed);
            QCOMPARE(ScreenFit::Fits(available, result, decoration),
                     minimum.width() <= 632 && minimum.height() <= 458);
            // Placing again changes nothing.
            QCOMPARE(ScreenFit::Place(available, result, decoration, minimum), result);
        };
        // Fits exactly, frame and all.
        places(QRect(4, 50, 632, 458), QSize(100, 100), QRect(4, 50, 632, 458));
        // Off the right and bottom edges, or the left and top: moved in, size kept.
        places(QRect(500, 400, 300, 200), QSize(100, 100), QRect(336, 308, 300, 200));
        places(QRect(-50, 0, 300, 200), QSize(100, 100), QRect(4, 50, 300, 200));
        // 920 x 680 centred on the whole screen: shrunk to the free area about its centre.
        places(QRect(-140, -84, 920, 680), QSize(400, 200), QRect(4, 50, 632, 458));
        // Too wide only: height and centre kept.
        places(QRect(-100, 150, 840, 200), QSize(300, 100), QRect(4, 150, 632, 200));
        // Never below the minimum; its top left stays on the screen.
        places(QRect(0, 0, 920, 680), QSize(700, 500), QRect(4, 50, 700, 500));
        // A window on a second screen to the right stays there, moved in from its right edge.
        const QRect second(1280, 0, 853, 682);
        QCOMPARE(ScreenFit::Place(second, QRect(2000, 100, 400, 300), QMargins(), QSize(50, 50)),
                 QRect(1733, 100, 400, 300));
        QVERIFY(!ScreenFit::Fits(second, QRect(1200, 100, 400, 300), QMargins()));
    }

    void init() { QFile::remove(Settings()); }

    void newestFirstOncePerFileAtMostEight()
    {
        QSettings settings(Settings(), QSettings::IniFormat);
        RecentFiles recent(settings);
        for (int i = 0; i < 10; ++i)
            recent.Add(File(QStringLiteral("map%1.imp").arg(i)));
        // Newest first (the frame's test shows it in the menu); the two oldest are gone.
        QCOMPARE(recent.Paths().size(), RecentFiles::Capacity);
        QCOMPARE(recent.Paths().last(), File(QStringLiteral("map2.imp")));
        // The same file by another spelling moves to the front instead of doubling.
        recent.Add(m_dir.path() + QStringLiteral("/./map5.imp"));
        QCOMPARE(recent.Paths().first(), File(QStringLiteral("map5.imp")));
        QCOMPARE(recent.Paths().count(File(QStringLiteral("map5.imp"))), 1);
        QCOMPARE(recent.Paths().size(), RecentFiles::Capacity);
        recent.Remove(File(QStringLiteral("map5.imp")));
        QVERIFY(!recent.Paths().contains(File(QStringLiteral("map5.imp"))));
        recent.Add(QString());
        QCOMPARE(recent.Paths().size(), RecentFiles::Capacity - 1);
        // Kept for the next run.
        settings.sync();
        QSettings again(Settings(), QSettings::IniFormat);
        QCOMPARE(RecentFiles(again).Paths(), recent.Paths());
        QVERIFY(RecentFiles::MissingMessage(QStringLiteral("/x/a.imp")).contains("/x/a.imp"));
        // Files of the same name show their folders.
        const QStringList paths{"/home/ann/web/harbour.imp", "/home/ann/old/harbour.imp",
                                "/srv/maps/plan.imp", "/home/ann/harbour.imp",
                                "/home/annex/harbour.imp"};
        QCOMPARE(RecentFiles::Labels(paths, QStringLiteral("/home/ann")),
                 QStringList({"harbour.imp (~/web)", "harbour.imp (~/old)", "plan.imp",
                              "harbour.imp (~)", "harbour.imp (/home/annex)"}));
        QCOMPARE(RecentFiles::Labels({"/a/x.imp", "/b/y.imp"}, QStringLiteral("/home/ann")),
                 QStringList({"x.imp", "y.imp"}));
    }

    void eachKindOfFileHasItsFolder()
    {
        QSettings settings(Settings(), QSettings::IniFormat);
        FolderMemory folders(settings);
        QCOMPARE(folders.Folder(FolderMemory::Kind::Map, QStringLiteral("/fallback")),
                 QStringLiteral("/fallback"));
        QVERIFY(QDir(m_dir.path()).mkpath(QStringLiteral("pictures")));
        folders.Remember(FolderMemory::Kind::Picture, File(QStringLiteral("pictures/a.png")));
        folders.Remember(FolderMemory::Kind::Map, File(QStringLiteral("b.imp")));
        QCOMPARE(folders.Folder(FolderMemory::Kind::Picture, QString()),
                 File(QStringLiteral("pictures")));
        QCOMPARE(folders.Folder(FolderMemory::Kind::Map, QString()), m_dir.path());
        // A folder that has gone gives the fallback again.
        QVERIFY(QDir(File(QStringLiteral("pictures"))).removeRecursively());
        QCOMPARE(folders.Folder(FolderMemory::Kind::Picture, QStringLiteral("/fallback")),
                 QStringLiteral("/fallback"));
    }

    // A text alone is refused in the frame's test.
    void onlyLocalFilesAreDropped()
    {
        QMimeData data;
        QVERIFY(DroppedFiles::Paths(nullptr).isEmpty());
        data.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/a.png")),
                      QUrl(QStringLiteral("https://example.com/b.png")),
                      QUrl::fromLocalFile(QStringLiteral("/tmp/m.imp"))});
        QCOMPARE(DroppedFiles::Paths(&data),
                 (QStringList{QStringLiteral("/tmp/a.png"), QStringLiteral("/tmp/m.imp")}));
    }

    void propertiesTabs()
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
        // Only shape tabs restack: again, default area, map, another shape.
        MapDocument three = MapWithShapes(3);
        QList<std::int16_t> calls;
        OptionsModel restacking(three, [&calls](std::int16_t i) { calls.append(i); });
        restacking.LoadUpArray();
        for (int tab : {2, 2, 5, 1, 3})
            restacking.SelectTab(tab);
        QCOMPARE(calls, (QList<std::int16_t>{0, 1}));
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
};

QTEST_GUILESS_MAIN(TestFrameCommands)
#include "tst_framecommands.moc"
