#include "interchange/HtmlImporter.h"
#include "interchange/MapCodeGenerator.h"
#include "interchange/MapFile.h"
#include "interchange/TestPage.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

struct Run
{
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

Run Cli(const QStringList& arguments, const QString& workingDirectory = QString())
{
    QProcess process;
    if (!workingDirectory.isEmpty())
        process.setWorkingDirectory(workingDirectory);
    process.start(QStringLiteral(VANTREL_CLI), arguments);
    Run run;
    if (!process.waitForFinished(30000) || process.exitStatus() != QProcess::NormalExit)
        return run;
    run.exitCode = process.exitCode();
    run.out = process.readAllStandardOutput();
    run.err = process.readAllStandardError();
    return run;
}

QByteArray ReadFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool WriteFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray Lines(const QStringList& messages)
{
    return (messages.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8();
}

const QString NoShapes = QStringLiteral("No shape areas have been created.");
const QString CannotLoad = QStringLiteral("Error, map cannot be loaded.");
const QString SaveError = QStringLiteral("There was an error while trying to save the file.");

} // namespace

class TestCli : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void wrongUsage_data();
    void wrongUsage();
    void help();
    void htmlPrintsTheCodeAndNothingElse_data();
    void htmlPrintsTheCodeAndNothingElse();
    void failuresPrintTheEditorsMessages_data();
    void failuresPrintTheEditorsMessages();
    void dumpIsTheDocumentAsJson();
    void saveRecordsTheNewAbsolutePath();
    void importReplacesTheShapes();
    void importReportsTheImportMessage();
    void newMapFromPicture();
    void newRefusesWhatIsNoPicture();
    void testPageIsWritten();
    void sampleMapWorksFromTheRepository();

private:
    QString Path(const QString& name) const { return m_dir.filePath(name); }

    QTemporaryDir m_dir;
    MapDocument m_map; // three shapes over pic.png, saved as map.imp
};

void TestCli::initTestCase()
{
    QVERIFY(m_dir.isValid());
    QImage picture(120, 80, QImage::Format_RGB32);
    picture.fill(Qt::green);
    QVERIFY(picture.save(Path("pic.png")));

    m_map.ImagePath = m_dir.path() + QLatin1Char('/');
    m_map.ImageName = QStringLiteral("pic.png");
    m_map.RealWidth = m_map.SWidth = 120;
    m_map.RealHeight = m_map.SHeight = 80;
    m_map.MapName = QString::fromUtf8("Caf\xc3\xa9 map");
    m_map.DefURL = QStringLiteral("rest.htm");
    m_map.DefComment = QStringLiteral("say \"hi\"\\");
    const std::int16_t types[] = {Rectangle, Circle, Polygon};
    for (std::int16_t type : types) {
        const std::int16_t i = m_map.AddShape();
        PatShape& s = m_map.Shape(i);
        s.ResetInfo(type, true, 0, QStringLiteral("page%1.htm").arg(i),
                    QString::fromUtf8("Shape \xe2\x82\xac%1").arg(i), QStringLiteral("_top"),
                    QStringLiteral("status %1").arg(i), i == 1 ? -1 : 0, QStringLiteral("alert"));
        s.ResetPoints(3);
        s.SetPoint(0, 10 * i, 5);
        s.SetPoint(1, 10 * i + 20, 5);
        s.SetPoint(2, 10 * i + 20, 25);
        s.SetPoint(3, 10 * i, 25);
        s.SetOpenGeneralInfo(nullptr, 1.0);
        m_map.BringToTop(i);
    }
    m_map.BringToTop(1);
    QVERIFY(MapFile::SaveMap(m_map, Path("map.imp")).ok);

    MapDocument empty = m_map;
    empty.ResizeShapeArray(-1, true);
    QVERIFY(MapFile::SaveMap(empty, Path("empty.imp")).ok);

    QStringList lines = QString::fromUtf8(ReadFile(Path("map.imp"))).split("\r\n");
    lines[3] = QStringLiteral("gone.png");
    QVERIFY(WriteFile(Path("nopicture.imp"), lines.join("\r\n").toUtf8()));
}

void TestCli::wrongUsage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("nothing") << QStringList{};
    QTest::newRow("unknown command") << QStringList{"render", "map.imp"};
    QTest::newRow("html without a map") << QStringList{"html"};
    QTest::newRow("html with two maps") << QStringList{"html", "a.imp", "b.imp"};
    QTest::newRow("unknown option") << QStringList{"html", "--fast", "map.imp"};
    QTest::newRow("--test on dump") << QStringList{"dump", "--test", "map.imp"};
    QTest::newRow("save without -o") << QStringList{"save", "map.imp"};
    QTest::newRow("-o without a name") << QStringList{"save", "map.imp", "-o"};
    QTest::newRow("-o twice") << QStringList{"save", "map.imp", "-o", "a.imp", "-o", "b.imp"};
    QTest::newRow("dump with -o") << QStringList{"dump", "map.imp", "-o", "x.json"};
    QTest::newRow("import without --into") << QStringList{"import", "code.html", "-o", "out.imp"};
    QTest::newRow("new without picture") << QStringList{"new", "-o", "out.imp"};
    QTest::newRow("testpage without -o") << QStringList{"testpage", "map.imp"};
}

void TestCli::wrongUsage()
{
    QFETCH(QStringList, arguments);
    const Run run = Cli(arguments, m_dir.path());
    QCOMPARE(run.exitCode, 2);
    QVERIFY(run.out.isEmpty());
    QVERIFY(run.err.startsWith("Usage: vantrel-cli"));
    QVERIFY(!QFile::exists(Path("out.imp")));
}

void TestCli::help()
{
    const Run run = Cli({"--help"});
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.out.startsWith("Usage: vantrel-cli"));
    QVERIFY(run.out.contains("testpage"));
    QVERIFY(run.err.isEmpty());
}

void TestCli::htmlPrintsTheCodeAndNothingElse_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("testForm");
    QTest::newRow("viewing form") << QStringList{"html", "map.imp"} << false;
    QTest::newRow("test form") << QStringList{"html", "--test", "map.imp"} << true;
    QTest::newRow("test form, option last") << QStringList{"html", "map.imp", "--test"} << true;
}

void TestCli::htmlPrintsTheCodeAndNothingElse()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, testForm);
    const Run run = Cli(arguments, m_dir.path());
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.err.isEmpty());
    MapDocument map = MapFile::OpenMapFile(Path("map.imp")).document;
    const QString code = MapCodeGenerator::GenerateMapCode(
        map, testForm ? MapCodeGenerator::Form::Test : MapCodeGenerator::Form::Viewing);
    QVERIFY(!code.isEmpty());
    QCOMPARE(run.out, code.toUtf8());
    QVERIFY(run.out.contains(QString::fromUtf8("Shape \xe2\x82\xac"
                                               "2")
                                 .toUtf8()));
}

void TestCli::failuresPrintTheEditorsMessages_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("messages");
    QTest::newRow("html of a map without shapes")
        << QStringList{"html", "empty.imp"} << QStringList{NoShapes};
    QTest::newRow("testpage of a map without shapes")
        << QStringList{"testpage", "empty.imp", "-o", "page.htm"} << QStringList{NoShapes};
    QTest::newRow("html of a missing map")
        << QStringList{"html", "none.imp"} << QStringList{CannotLoad};
    QTest::newRow("dump of what is no map")
        << QStringList{"dump", "pic.png"} << QStringList{CannotLoad};
    QTest::newRow("dump of a map whose picture is gone")
        << QStringList{"dump", "nopicture.imp"}
        << QStringList{"Image for map not found.", CannotLoad};
    QTest::newRow("save into a missing folder")
        << QStringList{"save", "map.imp", "-o", "no/such/folder/out.imp"} << QStringList{SaveError};
    QTest::newRow("import into a missing map")
        << QStringList{"import", "pic.png", "--into", "none.imp", "-o", "out.imp"}
        << QStringList{CannotLoad};
    QTest::newRow("import of a missing code file")
        << QStringList{"import", "none.html", "--into", "map.imp", "-o", "out.imp"}
        << QStringList{"There was an error while trying to load the file."};
}

void TestCli::failuresPrintTheEditorsMessages()
{
    QFETCH(QStringList, arguments);
    QFETCH(QStringList, messages);
    const Run run = Cli(arguments, m_dir.path());
    QCOMPARE(run.exitCode, 1);
    QVERIFY(run.out.isEmpty());
    QCOMPARE(run.err, Lines(messages));
    QVERIFY(!QFile::exists(Path("out.imp")));
    QVERIFY(!QFile::exists(Path("page.htm")));
}

void TestCli::dumpIsTheDocumentAsJson()
{
    const Run run = Cli({"dump", Path("map.imp")});
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.err.isEmpty());
    QJsonParseError error{};
    const QJsonObject json = QJsonDocument::fromJson(run.out, &error).object();
    QCOMPARE(error.error, QJsonParseError::NoError);

    const QStringList keys{"MapName",    "MapStyle",   "MapOnClick",    "MapBorder",
                           "ImagePath",  "ImageName",  "RealWidth",     "RealHeight",
                           "SWidth",     "SHeight",    "ZoomLevel",     "GridSpacing",
                           "GridColor",  "GridStyle",  "GridColorNum",  "ShouldDrawGrid",
                           "GridSnap",   "FocusColor", "NonFocusColor", "BorderColor",
                           "ShapeOrder", "Shapes",     "DefURL",        "DefComment",
                           "DefTarget",  "DefStatus",  "DefAlertVal",   "DefAlert"};
    QStringList sorted = keys;
    sorted.sort();
    QCOMPARE(json.keys(), sorted);
    // The keys come in the document's order.
    qsizetype last = -1;
    for (const QString& key : keys) {
        const qsizetype at = run.out.indexOf("\"" + key.toUtf8() + "\":");
        QVERIFY2(at > last, qPrintable(key));
        last = at;
    }

    QCOMPARE(json["MapName"].toString(), m_map.MapName);
    QCOMPARE(json["DefComment"].toString(), m_map.DefComment);
    QCOMPARE(json["ImageName"].toString(), QStringLiteral("pic.png"));
    QVERIFY(json["RealWidth"].isDouble());
    QCOMPARE(json["RealWidth"].toInt(), 120);
    QCOMPARE(json["ZoomLevel"].toDouble(), 1.0);
    QCOMPARE(json["GridSpacing"].toDouble(), 20.0);
    QCOMPARE(json["ShouldDrawGrid"].toBool(true), false);
    QCOMPARE(json["FocusColor"].toInt(), m_map.FocusColor);
    // Written order 1, 2, 0 comes back as its inverse.
    QCOMPARE(json["ShapeOrder"].toArray(), (QJsonArray{2, 0, 1}));

    const QJsonArray shapes = json["Shapes"].toArray();
    QCOMPARE(shapes.size(), 3);
    const QJsonObject circle = shapes[1].toObject();
    QCOMPARE(circle.keys(),
             (QStringList{"AlertBox", "AlertString", "Comment", "Points", "ShapeBuildingFinished",
                          "ShapeColor", "ShapeType", "StatusString", "Target", "URL"}));
    QCOMPARE(circle["ShapeType"].toInt(-1), 0);
    QCOMPARE(circle["Points"].toArray(), (QJsonArray{QJsonArray{10, 5}, QJsonArray{30, 5},
                                                     QJsonArray{30, 25}, QJsonArray{10, 25}}));
    QCOMPARE(circle["URL"].toString(), QStringLiteral("page1.htm"));
    QCOMPARE(circle["Comment"].toString(), QString::fromUtf8("Shape \xe2\x82\xac"
                                                             "1"));
    QCOMPARE(circle["AlertBox"].toInt(), -1);
    QCOMPARE(circle["ShapeBuildingFinished"].toBool(false), true);
    QCOMPARE(shapes[2].toObject()["ShapeColor"].toInt(), m_map.FocusColor);
    QCOMPARE(shapes[0].toObject()["ShapeColor"].toInt(), m_map.NonFocusColor);
    QCOMPARE(shapes[0].toObject()["AlertBox"].toInt(-5), 0);
}

void TestCli::saveRecordsTheNewAbsolutePath()
{
    QVERIFY(QDir(m_dir.path()).mkpath("copies"));
    const Run run = Cli({"save", "map.imp", "-o", "copies/copy.imp"}, m_dir.path());
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.err.isEmpty());
    QVERIFY(run.out.isEmpty());
    const QString copy = Path("copies/copy.imp");
    const MapFile::ReadResult read = MapFile::OpenMapFile(copy);
    QVERIFY(read.ok);
    QCOMPARE(read.fileName, copy);
    // The copy is the source map as opened, written under its new name.
    const MapDocument source = MapFile::OpenMapFile(Path("map.imp")).document;
    QCOMPARE(ReadFile(copy), MapFile::MapBytes(source, copy));
    QVERIFY(ReadFile(copy).startsWith("1.0.0\r\n" + copy.toUtf8() + "\r\n"));
}

void TestCli::importReplacesTheShapes()
{
    QVERIFY(WriteFile(Path("code.html"),
                      "<map name=\"x\">\n"
                      "<area shape=\"rect\" coords=\"1,2,30,40\" href=\"a.htm\" alt=\"A\">\n"
                      "<area shape=\"poly\" coords=\"5,5,50,5,25,30\" href=\"b.htm\">\n"
                      "</map>\n"));
    const Run run =
        Cli({"import", "code.html", "--into", "map.imp", "-o", "imported.imp"}, m_dir.path());
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.err.isEmpty());
    const MapFile::ReadResult read = MapFile::OpenMapFile(Path("imported.imp"));
    QVERIFY(read.ok);
    QCOMPARE(read.fileName, Path("imported.imp"));
    QCOMPARE(read.document.ItemCount(), std::int16_t(1));
    QCOMPARE(read.document.Shape(0).URL, QStringLiteral("a.htm"));
    QCOMPARE(read.document.Shape(1).GetShapeType(), std::int16_t(Polygon));
    QCOMPARE(read.document.MapName, m_map.MapName); // the map keeps its own settings
}

void TestCli::importReportsTheImportMessage()
{
    const QByteArray code = "<p>no map here</p>";
    QVERIFY(WriteFile(Path("nomap.html"), code));
    const HtmlImporter::Result expected = HtmlImporter::Convert(QString::fromUtf8(code), m_map);
    QVERIFY(!expected.ok);
    const Run run =
        Cli({"import", "nomap.html", "--into", "map.imp", "-o", "out.imp"}, m_dir.path());
    QCOMPARE(run.exitCode, 1);
    QCOMPARE(run.err, Lines({expected.message}));
    QVERIFY(!QFile::exists(Path("out.imp")));
}

void TestCli::newMapFromPicture()
{
    const Run run = Cli({"new", "pic.png", "-o", "fresh.imp"}, m_dir.path());
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.err.isEmpty());
    const MapFile::ReadResult read = MapFile::OpenMapFile(Path("fresh.imp"));
    QVERIFY(read.ok);
    QCOMPARE(read.document.ItemCount(), std::int16_t(-1));
    QCOMPARE(read.document.SWidth, 120);
    QCOMPARE(read.document.SHeight, 80);
    QCOMPARE(read.document.ZoomLevel, 1.0);
    QCOMPARE(read.document.ImageName, QStringLiteral("pic.png"));
    QCOMPARE(read.document.ImagePath, QDir::toNativeSeparators(m_dir.path()) + QDir::separator());
    QCOMPARE(read.document.MapName, QStringLiteral("MyMap"));
}

void TestCli::newRefusesWhatIsNoPicture()
{
    const Run run = Cli({"new", "map.imp", "-o", "out.imp"}, m_dir.path());
    QCOMPARE(run.exitCode, 1);
    QVERIFY(run.err.contains("map.imp"));
    QCOMPARE(run.err.count('\n'), 1);
    QVERIFY(!QFile::exists(Path("out.imp")));
}

void TestCli::testPageIsWritten()
{
    const Run run = Cli({"testpage", "map.imp", "-o", "page.htm"}, m_dir.path());
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.err.isEmpty());
    MapDocument map = MapFile::OpenMapFile(Path("map.imp")).document;
    const QString code = MapCodeGenerator::GenerateMapCode(map, MapCodeGenerator::Form::Test);
    const QByteArray page = ReadFile(Path("page.htm"));
    QVERIFY(page.endsWith(TestPage::Text(code).toUtf8()));
    QVERIFY(QFile::remove(Path("page.htm")));
}

void TestCli::sampleMapWorksFromTheRepository()
{
    const Run run = Cli({"html", "examples/sample.imp"}, QStringLiteral(VANTREL_SOURCE_DIR));
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.out.contains("shape=\"rect\""));
    QVERIFY(run.out.contains("shape=\"circle\""));
    QVERIFY(run.out.contains("shape=\"poly\""));
    QVERIFY(run.out.contains("<img src=\"harbour.png\""));
}

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
