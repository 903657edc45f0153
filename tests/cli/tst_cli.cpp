#include "CliRun.h"
#include "LocalHttpServer.h"
#include "ShapeBuilders.h"
#include "ShapeRow.h"
#include "core/interchange/FormattedMapCode.h"
#include "core/interchange/MapFile.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

namespace {

// A map of many shapes with long texts, so that a save takes long enough to be cut.
MapDocument LargeMap(const QString& folder, const QString& link)
{
    MapDocument doc;
    doc.ImagePath = folder + QLatin1Char('/');
    doc.ImageName = QStringLiteral("pic.png");
    doc.RealWidth = doc.SWidth = 64;
    doc.RealHeight = doc.SHeight = 48;
    std::vector<PatShape> shapes;
    std::vector<std::int16_t> order;
    for (int i = 0; i < 20000; ++i) {
        PatShape shape = MakeShape(Rectangle, Corners(i % 50, i % 40, i % 50 + 9, i % 40 + 7));
        shape.URL = link.arg(i);
        shape.Comment = QString(40, QLatin1Char('c'));
        shapes.push_back(std::move(shape));
        order.push_back(std::int16_t(i));
    }
    doc.AdoptShapes(std::move(shapes), std::move(order));
    return doc;
}

} // namespace

// vantrel-cli's commands and their failures, web formats, map check, lossless import, and
// link checks against a server on this machine (on a thread of its own, so waiting for the
// process blocks nothing it needs).
class TestCli : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY(m_server.IsListening());
        QImage picture(120, 80, QImage::Format_RGB32);
        picture.fill(Qt::green);
        QVERIFY(picture.save(Path("pic.png")));
        m_map.ImagePath = m_dir.path() + QLatin1Char('/');
        m_map.ImageName = QStringLiteral("pic.png");
        m_map.RealWidth = m_map.SWidth = 120;
        m_map.RealHeight = m_map.SHeight = 80;
        m_map.MapName = QString::fromUtf8("Caf\xc3\xa9 map");
        QVERIFY(MapFile::SaveMap(m_map, Path("empty.imp")).ok);
        m_map.DefComment = QStringLiteral("say \"hi\"\\");
        for (const char* row : {"1|10,5,30,5,30,25,10,25|page1.htm|\xe2\x82\xac|||0|alert",
                                "0|0,5,20,5,20,25,0,25|page0.htm|\xe2\x82\xac|||-1|alert",
                                "2|20,5,40,5,40,25,20,25|page2.htm|\xe2\x82\xac|||0|alert"})
            AddShapeRow(m_map, QString::fromUtf8(row));
        m_map.BringToTop(2);
        m_map.BringToTop(1); // order 1, 2, 0
        QVERIFY(MapFile::SaveMap(m_map, Path("map.imp")).ok);

        // For the causes added beside generic messages.
        QVERIFY(MapFile::SaveMap(m_map, Path("locked.imp")).ok);
        QVERIFY(QFile::setPermissions(Path("locked.imp"), QFile::ReadOwner | QFile::ReadGroup));
        QVERIFY(WriteBytes(
            Path("many.imp"),
            ReadBytes(Path("map.imp")).replace("\r\n 2 \r\n 1 \r\n", "\r\n 32768 \r\n 1 \r\n")));
        QVERIFY(WriteBytes(Path("areas.html"),
                           "<map name=\"x\">\n" +
                               QByteArray("<area shape=\"rect\" coords=\"1,1,5,5\" href=\"a\">\n")
                                   .repeated(32769) +
                               "</map>"));
        QVERIFY(WriteBytes(Path("big.png"), HugePng()));
        QVERIFY(QImage(1, 32768, QImage::Format_Mono).save(Path("tall.png")));
        QVERIFY(WriteBytes(Path("about.htm"), {}));
        QVERIFY(QDir(m_dir.path()).mkdir(QStringLiteral("sub")));

        // The sample map over its picture.
        QVERIFY(QFile::copy(VANTREL_SOURCE_DIR "/examples/harbour.png", Path("harbour.png")));
        MapDocument sample =
            MapFile::OpenMapFile(QStringLiteral(VANTREL_SOURCE_DIR "/examples/sample.imp"))
                .document;
        QVERIFY(sample.ItemCount() >= 0);
        sample.ImagePath = m_dir.path() + QLatin1Char('/');
        sample.MapStyle = 2;
        QVERIFY(MapFile::SaveMap(sample, Path("sample.imp")).ok);
    }

    void failures_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QByteArray>("err"); // the whole of it, or the usage's last line
        // Wrong usage: no command, an unknown one, a missing or malformed value, an option
        // the command does not take. The usage ends with what is wrong.
        const QString badValue = QStringLiteral("%1 is missing its value or has a wrong one");
        for (const auto& [arguments, why] : std::initializer_list<std::pair<QStringList, QString>>{
                 {{}, "no command given"},
                 {{"render", "map.imp"}, "unknown command \"render\""},
                 {{"dump", "--test", "map.imp"}, "dump has no option --test"},
                 {{"testpage", "map.imp"}, "testpage needs -o"},
                 {{"import", "c.html", "-o", "x.imp"}, "import needs --into"},
                 {{"dump", "map.imp", "-o", "x.imp"}, "dump has no option -o"},
                 {{"save", "map.imp", "-o", "x.imp", "-o", "y.imp"}, "-o is given twice"},
                 {{"save", "map.imp", "-o"}, "-o needs a file name"},
                 {{"lint", "--test", "map.imp"}, "lint has no option --test"},
                 {{"html", "--format", "xhtml", "map.imp"}, badValue.arg("--format")},
                 {{"html", "map.imp", "--format"}, badValue.arg("--format")},
                 {{"dump", "--format", "svg", "map.imp"}, "dump has no option --format"},
                 {{"html", "--keep-text", "map.imp"}, "html has no option --keep-text"},
                 {{"links"}, "links takes one file, not 0"},
                 {{"links", "--base"}, badValue.arg("--base")},
                 {{"links", "a", "b"}, "links takes one file, not 2"},
                 {{"links", "--timeout", "0", "a.imp"}, badValue.arg("--timeout")},
                 {{"links", "--timeout", "soon", "a.imp"}, badValue.arg("--timeout")},
                 {{"dump", "--base", "x", "a.imp"}, "dump has no option --base"}})
            QTest::addRow("usage: %s", qPrintable(arguments.join(' ')))
                << arguments << 2 << ("vantrel-cli: " + why + "\n").toUtf8();
        for (const char* format : {"classic", "html5", "svg"})
            QTest::addRow("%s of a map without shapes", format)
                << QStringList{"html", "--format", format, "empty.imp"} << 1
                << QByteArray("No shape areas have been created.\n");
        // The generic message stays as it is; its cause follows on a line of its own.
        const QString cannotLoad = QStringLiteral("Error, map cannot be loaded.\n");
        for (const char* command : {"dump", "lint", "links"})
            QTest::addRow("%s of what is no map", command)
                << QStringList{command, "pic.png"} << 1
                << (cannotLoad + "The file is not a text file.\n").toUtf8();
        const QString saveError =
            QStringLiteral("There was an error while trying to save the file.\n");
        const QString noFile = QStringLiteral("No such file or directory\n");
        const QString tooMany = QStringLiteral("A map holds at most 32,768 shapes.\n");
        const QStringList into{"--into", "map.imp", "-o", "out.imp"};
        const auto picture = [](const char* name) {
            return QStringLiteral("The picture \"%1\" cannot be loaded.\n").arg(name);
        };
        for (const auto& [arguments, err] : std::initializer_list<std::pair<QStringList, QString>>{
                 {{"dump", "sub"}, cannotLoad + "It is a folder, not a map file.\n"},
                 {{"links", "absent.imp"}, cannotLoad + noFile},
                 {{"dump", "many.imp"}, cannotLoad + tooMany},
                 {{"links", "many.imp"}, cannotLoad + tooMany},
                 {{"save", "map.imp", "-o", "no/such/out.imp"}, saveError + noFile},
                 {{"save", "map.imp", "-o", "locked.imp"},
                  saveError + "\"" + Path("locked.imp") + "\" is read-only.\n"},
                 {QStringList{"import", "areas.html"} + into,
                  "There was an error, please check the HTML code you paste in.\n" + tooMany},
                 {QStringList{"import", "none.html"} + into,
                  "There was an error while trying to load the file.\n" + noFile},
                 {QStringList{"import", "none.html"} + into + QStringList{"--keep-text"},
                  "There was an error while trying to load the file.\n" + noFile},
                 {QStringList{"import", "map.imp"} + into, "Map tag not found.\n"},
                 {{"new", "big.png", "-o", "out.imp"},
                  picture("big.png") +
                      "The picture is 30,000 \xc3\x97 30,000 pixels; this program loads pictures "
                      "of up to " +
                      QLocale(QLocale::English)
                          .toString(qint64(QImageReader::allocationLimit()) * 1024 * 1024 / 4) +
                      " pixels.\n"},
                 {{"new", "tall.png", "-o", "out.imp"},
                  picture("tall.png") + "The picture is 1 \xc3\x97 32,768 pixels; a map's picture "
                                        "may be at most 32,767 pixels wide and 32,767 pixels "
                                        "high.\n"},
                 {{"new", "sub", "-o", "out.imp"},
                  picture("sub") + "It is a folder, not a picture.\n"},
                 {{"new", "map.imp", "-o", "out.imp"},
                  picture("map.imp") + "Unsupported image format\n"}})
            QTest::addRow("%s", qPrintable(arguments.join(' '))) << arguments << 1 << err.toUtf8();
    }

    void failures()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QByteArray, err);
        const Run run = Cli(arguments);
        QCOMPARE(run.exitCode, exitCode);
        QVERIFY(run.out.isEmpty());
        if (exitCode == 2) {
            QVERIFY(run.err.startsWith("Usage: vantrel-cli COMMAND ...\n"));
            QCOMPARE(run.err.mid(run.err.lastIndexOf('\n', -2) + 1), err);
        } else {
            QCOMPARE(run.err, err);
        }
        QVERIFY(!QFile::exists(Path("out.imp")));
    }

    void commandsDoTheirWork()
    {
        // save records the new absolute path on line 2.
        QCOMPARE(Cli({"save", "map.imp", "-o", "copy.imp"}).exitCode, 0);
        QVERIFY(ReadBytes(Path("copy.imp"))
                    .startsWith("1.0.0\r\n" + Path("copy.imp").toUtf8() + "\r\n"));

        QVERIFY(WriteBytes(Path("code.html"), "<map name=\"x\">\n<area shape=\"poly\" "
                                              "coords=\"5,5,50,5,25,30\" href=\"b\">\n</map>"));
        Run run = Cli({"import", "code.html", "--into", "map.imp", "-o", "imported.imp"});
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.err.isEmpty());
        MapFile::ReadResult read = MapFile::OpenMapFile(Path("imported.imp"));
        QCOMPARE(read.document.ItemCount(), std::int16_t(0));
        QCOMPARE(read.document.Shape(0).GetShapeType(), std::int16_t(Polygon));
        QCOMPARE(read.document.MapName, m_map.MapName); // the map keeps its own settings

        QCOMPARE(Cli({"new", "pic.png", "-o", "fresh.imp"}).exitCode, 0);
        read = MapFile::OpenMapFile(Path("fresh.imp"));
        QCOMPARE(read.document.ItemCount(), std::int16_t(-1));
        QCOMPARE(QSize(read.document.SWidth, read.document.SHeight), QSize(120, 80));
        QCOMPARE(read.document.ImagePath,
                 QDir::toNativeSeparators(m_dir.path()) + QDir::separator());
        QCOMPARE(read.document.MapName, QStringLiteral("MyMap"));
        // Import with options: one map of several, added to the shapes, or refused.
        QVERIFY(
            WriteBytes(Path("code.html"),
                       "<map name=First><area shape=rect coords=1,1,5,5 href=One.htm></map>\n"
                       "<map name=Second><area shape=circle coords=20,20,4 href=Two.htm></map>"));
        const MapDocument before = MapFile::OpenMapFile(Path("sample.imp")).document;

        run = Cli({"import", "code.html", "--into", "sample.imp", "-o", "kept.imp", "--keep-text",
                   "--map", "Second"});
        QCOMPARE(run.exitCode, 0);
        MapDocument kept = MapFile::OpenMapFile(Path("kept.imp")).document;
        QCOMPARE(kept.ItemCount(), std::int16_t(0));
        QCOMPARE(kept.Shape(0).URL, QStringLiteral("Two.htm")); // the map named, as written

        run = Cli({"import", "code.html", "--into", "sample.imp", "-o", "added.imp", "--keep-text",
                   "--add"});
        QCOMPARE(run.exitCode, 0);
        MapDocument added = MapFile::OpenMapFile(Path("added.imp")).document;
        QCOMPARE(added.ItemCount(), std::int16_t(before.ItemCount() + 1));
        QCOMPARE(added.Shape(added.ItemCount()).URL, QStringLiteral("One.htm"));

        run = Cli({"import", "code.html", "--into", "sample.imp", "-o", "none.imp", "--keep-text",
                   "--map", "Third"});
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(run.err, QByteArray("The code holds no map named \"Third\".\n"));
        run = Cli(
            {"import", "code.html", "--into", "sample.imp", "-o", "none.imp", "--map", "First"});
        QCOMPARE(run.exitCode, 2);
        QVERIFY(!QFile::exists(Path("none.imp")));
    }

    void dumpIsTheDocumentAsJson()
    {
        const Run run = Cli({"dump", "map.imp"});
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.err.isEmpty());
        const QJsonObject json = QJsonDocument::fromJson(run.out).object();
        // The keys come in the document's order.
        const QStringList keys{"MapName",    "MapStyle",   "MapOnClick",    "MapBorder",
                               "ImagePath",  "ImageName",  "RealWidth",     "RealHeight",
                               "SWidth",     "SHeight",    "ZoomLevel",     "GridSpacing",
                               "GridColor",  "GridStyle",  "GridColorNum",  "ShouldDrawGrid",
                               "GridSnap",   "FocusColor", "NonFocusColor", "BorderColor",
                               "ShapeOrder", "Shapes",     "DefURL",        "DefComment",
                               "DefTarget",  "DefStatus",  "DefAlertVal",   "DefAlert"};
        QCOMPARE(json.size(), keys.size());
        qsizetype last = -1;
        for (const QString& key : keys) {
            const qsizetype at = run.out.indexOf("\"" + key.toUtf8() + "\":");
            QVERIFY2(at > last, qPrintable(key));
            last = at;
        }
        QCOMPARE(json["MapName"].toString(), m_map.MapName);
        QCOMPARE(json["DefComment"].toString(), m_map.DefComment);
        QCOMPARE(json["ShapeOrder"].toArray(), (QJsonArray{2, 0, 1})); // the inverse
        QCOMPARE(json["Shapes"].toArray()[2].toObject()["ShapeColor"].toInt(), m_map.FocusColor);
        const QJsonObject circle = json["Shapes"].toArray()[1].toObject();
        QCOMPARE(circle.keys(), (QStringList{"AlertBox", "AlertString", "Comment", "Points",
                                             "ShapeBuildingFinished", "ShapeColor", "ShapeType",
                                             "StatusString", "Target", "URL"}));
        QCOMPARE(circle["Points"].toArray(), (QJsonArray{QJsonArray{0, 5}, QJsonArray{20, 5},
                                                         QJsonArray{20, 25}, QJsonArray{0, 25}}));
        QCOMPARE(circle["Comment"].toString(), QString::fromUtf8("\xe2\x82\xac"));
        QCOMPARE(circle["AlertBox"].toInt(), -1);
        QCOMPARE(circle["ShapeColor"].toInt(), m_map.NonFocusColor);
    }

    void htmlAndTestPageInEachFormat()
    {
        using Form = MapCodeGenerator::Form;
        for (const QString map : {"map.imp", "sample.imp"}) {
            for (MapFormat format : {MapFormat::Classic, MapFormat::Html5, MapFormat::Svg}) {
                const QString name = MapFormats::Name(format);
                Run run = Cli({"html", "--format", name, map});
                QCOMPARE(run.exitCode, 0);
                QCOMPARE(run.out, Expected(map, format, Form::Viewing).Text.toUtf8());
                run = Cli({"html", map, "--test", "--format", name});
                QCOMPARE(run.exitCode, 0);
                QCOMPARE(run.out, Expected(map, format, Form::Test).Text.toUtf8());
                QCOMPARE(Cli({"testpage", "--format", name, map, "-o", name + ".htm"}).exitCode, 0);
                // The map with non-ASCII text gets a byte-order mark.
                QCOMPARE(ReadBytes(Path(name + ".htm")),
                         QByteArray(map == "map.imp" ? "\xEF\xBB\xBF" : "") +
                             Expected(map, format, Form::Test).TestPageText(format).toUtf8());
            }
        }
        // Classic stays the default.
        QCOMPARE(Cli({"html", "map.imp"}).out, Cli({"html", "--format", "classic", "map.imp"}).out);
    }

    void lintPrintsFindings()
    {
        Run run = Cli({"lint", "sample.imp"});
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.out.isEmpty() && run.err.isEmpty());

        MapDocument map = MapFile::OpenMapFile(Path("sample.imp")).document;
        map.SetComment(0, QString());
        map.SetURL(2, QStringLiteral("#"));
        QVERIFY(MapFile::SaveMap(map, Path("faulty.imp")).ok);
        run = Cli({"lint", "faulty.imp"});
        QCOMPARE(run.exitCode, 3);
        QCOMPARE(run.out, QByteArray("Shape #1: warning: no alt text: screen readers and search "
                                     "engines get nothing\n"
                                     "Shape #3: warning: placeholder URL \"#\": the area leads "
                                     "nowhere\n"));
        run = Cli({"lint", "--json", "faulty.imp"});
        QCOMPARE(run.exitCode, 3);
        const QJsonArray findings = QJsonDocument::fromJson(run.out).array();
        QCOMPARE(findings.size(), 2);
        QCOMPARE(findings[1].toObject().value("shape").toInt(), 3);
        QCOMPARE(findings[1].toObject().value("severity").toString(), QStringLiteral("warning"));
        QCOMPARE(findings[1].toObject().value("place").toString(), QStringLiteral("Shape #3"));
    }

    void printsOneLinePerLink()
    {
        const QString server = m_server.Url("").toString();
        // Every status comes from the link table (checked on its own); here, how each kind
        // is printed (a moved one against a base, below).
        SaveMap("all.imp",
                {server + "/ok", server + "/missing", server + "/slow", "about.htm", "gone.htm",
                 "mailto:ann@x.org"},
                QString());
        const Run run = Cli({"links", "--timeout", "0.5", "all.imp"});
        QCOMPARE(run.exitCode, 3);
        QCOMPARE(run.err, QByteArray());
        const QString folder = QUrl::fromLocalFile(m_dir.path()).toString();
        const QStringList expected{
            "Shape #1\tOK 200\t" + server + "/ok",
            "Shape #2\tBroken 404\t" + server + "/missing",
            "Shape #3\tTimed out\t" + server + "/slow",
            // Without a base, relative links are files beside the picture.
            "Shape #4\tOK (file)\t" + folder + "/about.htm",
            "Shape #5\tFile missing\t" + folder + "/gone.htm",
            "Shape #6\tNot checked (mailto)\tmailto:ann@x.org",
            "Default area\tNo address\t",
        };
        QCOMPARE(QString::fromUtf8(run.out).split(QLatin1Char('\n'), Qt::SkipEmptyParts), expected);
        // Against a base, plain and as JSON.
        SaveMap("relative.imp", {"ok", "nohead#part"}, QStringLiteral("moved"));
        const QString base = m_server.Url("/").toString();
        const Run plain = Cli({"links", "--base", base, "relative.imp"});
        QCOMPARE(plain.exitCode, 0);
        QCOMPARE(plain.out,
                 ("Shape #1\tOK 200\t" + base + "ok\nShape #2\tOK 200\t" + base +
                  "nohead#part\nDefault area\tMoved → " + base + "ok\t" + base + "moved\n")
                     .toUtf8());

        const Run asJson = Cli({"links", "--json", "--base", base, "relative.imp"});
        QCOMPARE(asJson.exitCode, 0);
        const QJsonObject json = QJsonDocument::fromJson(asJson.out).object();
        QCOMPARE(json.value("broken").toInt(), 0);
        QCOMPARE(json.value("summary").toString(),
                 QStringLiteral("3 links: 0 broken, 2 OK, 1 moved."));
        const QJsonArray links = json.value("links").toArray();
        QCOMPARE(links.size(), 3);
        QCOMPARE(links[2].toObject(), (QJsonObject{{"link", "Default area"},
                                                   {"url", "moved"},
                                                   {"address", base + "moved"},
                                                   {"status", "Moved → " + base + "ok"},
                                                   {"state", "moved"},
                                                   {"code", 200},
                                                   {"final", base + "ok"},
                                                   {"broken", false}}));

        // A broken link turns the exit status to 3, in JSON too.
        SaveMap("broken.imp", {m_server.Url("/missing").toString()}, QString());
        const Run broken = Cli({"links", "--json", "broken.imp"});
        QCOMPARE(broken.exitCode, 3);
        const QJsonObject first =
            QJsonDocument::fromJson(broken.out).object().value("links").toArray()[0].toObject();
        QCOMPARE(first.value("status").toString(), QStringLiteral("Broken 404"));
        QCOMPARE(first.value("code").toInt(), 404);
        QCOMPARE(first.value("broken").toBool(), true);
        QVERIFY(Cli({"--help"}).out.contains("links [--base URL] [--json]"));
    }

    // save killed at random moments: the target is always the old map or the new one, whole,
    // and nothing but a temporary beside it is left in its folder.
    void killedSaveLeavesOldOrNewFile()
    {
        QTemporaryDir dir;
        QImage picture(64, 48, QImage::Format_RGB32);
        picture.fill(Qt::gray);
        QVERIFY(picture.save(dir.filePath("pic.png")));
        const QString target = dir.filePath("target.imp");
        const QString source = dir.filePath("source.imp");
        QVERIFY(MapFile::SaveMap(LargeMap(dir.path(), "http://old.example/%1"), target).ok);
        QVERIFY(MapFile::SaveMap(LargeMap(dir.path(), "http://new.example/%1"), source).ok);
        const QByteArray before = ReadBytes(target);
        const QStringList files = QDir(dir.path()).entryList(QDir::Files | QDir::Hidden);

        // One whole save gives the new bytes and the time a save takes here.
        QProcess cli;
        const QStringList arguments{"save", source, "-o", target};
        QElapsedTimer timer;
        timer.start();
        cli.start(QStringLiteral(VANTREL_CLI), arguments);
        QVERIFY(cli.waitForFinished(60000));
        QCOMPARE(cli.exitCode(), 0);
        const int whole = int(timer.elapsed());
        const QByteArray after = ReadBytes(target);
        QVERIFY(after != before);

        const quint32 seed = qEnvironmentVariableIsSet("VANTREL_KILL_SEED")
                                 ? quint32(qEnvironmentVariableIntValue("VANTREL_KILL_SEED"))
                                 : QRandomGenerator::global()->generate();
        qInfo("seed %u (VANTREL_KILL_SEED repeats a run); a whole save takes %d ms", seed, whole);
        QRandomGenerator random(seed);
        int cut = 0;
        int round = 0;
        // Until 24 rounds have run and 6 of them were cut short: how many a round of
        // sleeping cuts short depends on the machine's load.
        for (; round < 96 && (round < 24 || cut < 6); ++round) {
            QVERIFY(WriteBytes(target, before));
            cli.start(QStringLiteral(VANTREL_CLI), arguments);
            QVERIFY(cli.waitForStarted());
            QThread::msleep(random.bounded(whole));
            cli.kill();
            QVERIFY(cli.waitForFinished(60000));
            cut += cli.exitStatus() == QProcess::CrashExit;
            const QByteArray found = ReadBytes(target);
            QVERIFY2(
                found == before || found == after,
                qPrintable(
                    QStringLiteral("round %1: a mix of %2 bytes").arg(round).arg(found.size())));
            // A kill in the instant between linking the written data under a temporary
            // name and renaming it over the target can leave that temporary behind; any
            // other file is a fault.
            for (const QString& name : QDir(dir.path()).entryList(QDir::Files | QDir::Hidden)) {
                if (files.contains(name))
                    continue;
                QVERIFY2(name.startsWith(QStringLiteral("target.imp.")),
                         qPrintable(QStringLiteral("round %1 left %2").arg(round).arg(name)));
                QVERIFY(QFile::remove(dir.filePath(name)));
            }
        }
        QVERIFY2(cut >= 6,
                 qPrintable(QStringLiteral("only %1 of %2 saves were killed").arg(cut).arg(round)));
    }

private:
    Run Cli(const QStringList& arguments) const { return RunCli(m_dir.path(), arguments); }
    QString Path(const QString& name) const { return m_dir.filePath(name); }
    FormattedMapCode Expected(const QString& name, MapFormat format,
                              MapCodeGenerator::Form form) const
    {
        MapDocument map = MapFile::OpenMapFile(Path(name)).document;
        return FormattedMapCode::Generate(map, format, form);
    }
    // Saves a map over pic.png whose shapes link to Urls, the default area to DefURL.
    void SaveMap(const QString& name, const QStringList& urls, const QString& defURL) const
    {
        MapDocument map;
        map.ImagePath = m_dir.path() + QLatin1Char('/');
        map.ImageName = QStringLiteral("pic.png");
        map.RealWidth = map.SWidth = 120;
        map.RealHeight = map.SHeight = 80;
        for (const QString& url : urls)
            AddShapeRow(map, "1|0,0,10,0,10,10,0,10|" + url + "||||0|");
        map.DefURL = defURL;
        QVERIFY(MapFile::SaveMap(map, Path(name)).ok);
    }

    QTemporaryDir m_dir;
    MapDocument m_map; // three shapes over pic.png, saved as map.imp
    LocalHttpServer m_server;
};

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
