#include "CliRun.h"
#include "ShapeRow.h"
#include "core/interchange/MapCodeGenerator.h"
#include "core/interchange/MapFile.h"
#include "core/interchange/TestPage.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QTemporaryDir>
#include <QTest>

class TestCli : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
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
    }

    void failures_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QByteArray>("err"); // the whole of it, or how usage starts
        const QByteArray usage = "Usage: vantrel-cli COMMAND ...\n";
        // Wrong usage: no command, an unknown one, a missing or malformed value, an option
        // the command does not take.
        for (const QStringList& arguments :
             {QStringList{}, QStringList{"render", "map.imp"},
              QStringList{"dump", "--test", "map.imp"}, QStringList{"testpage", "map.imp"},
              QStringList{"lint", "--test", "map.imp"},
              QStringList{"html", "--format", "xhtml", "map.imp"},
              QStringList{"html", "map.imp", "--format"},
              QStringList{"dump", "--format", "svg", "map.imp"},
              QStringList{"html", "--keep-text", "map.imp"}, QStringList{"links"},
              QStringList{"links", "--base"}, QStringList{"links", "a", "b"},
              QStringList{"links", "--timeout", "0", "a.imp"},
              QStringList{"links", "--timeout", "soon", "a.imp"},
              QStringList{"dump", "--base", "x", "a.imp"}})
            QTest::addRow("usage: %s", qPrintable(arguments.join(' '))) << arguments << 2 << usage;
        QTest::newRow("html of a map without shapes")
            << QStringList{"html", "empty.imp"} << 1
            << QByteArray("No shape areas have been created.\n");
        QTest::newRow("dump of what is no map")
            << QStringList{"dump", "pic.png"} << 1 << QByteArray("Error, map cannot be loaded.\n");
        QTest::newRow("save into a missing folder")
            << QStringList{"save", "map.imp", "-o", "no/such/out.imp"} << 1
            << QByteArray("There was an error while trying to save the file.\n"
                          "No such file or directory\n");
        // The generic message stays as it is; the cause follows on a line of its own.
        QTest::newRow("save over a read-only map")
            << QStringList{"save", "map.imp", "-o", "locked.imp"} << 1
            << ("There was an error while trying to save the file.\n\"" +
                Path("locked.imp").toUtf8() + "\" is read-only.\n");
        for (const char* command : {"dump", "links"})
            QTest::addRow("%s of a map with 32,769 shapes", command)
                << QStringList{command, "many.imp"} << 1
                << QByteArray("Error, map cannot be loaded.\nA map holds at most 32,768 shapes.\n");
        QTest::newRow("import of 32,769 areas")
            << QStringList{"import", "areas.html", "--into", "map.imp", "-o", "out.imp"} << 1
            << QByteArray("There was an error, please check the HTML code you paste in.\n"
                          "A map holds at most 32,768 shapes.\n");
        QTest::newRow("new from a picture too large to load")
            << QStringList{"new", "big.png", "-o", "out.imp"} << 1
            << ("The picture \"big.png\" cannot be loaded.\nThe picture is 30,000 \xc3\x97 30,000 "
                "pixels; this program loads pictures of up to " +
                QLocale(QLocale::English)
                    .toString(qint64(QImageReader::allocationLimit()) * 1024 * 1024 / 4)
                    .toUtf8() +
                " pixels.\n");
        QTest::newRow("import of a missing code file")
            << QStringList{"import", "none.html", "--into", "map.imp", "-o", "out.imp"} << 1
            << QByteArray("There was an error while trying to load the file.\n");
        QTest::newRow("import of code without a map")
            << QStringList{"import", "map.imp", "--into", "map.imp", "-o", "out.imp"} << 1
            << QByteArray("Map tag not found.\n");
        QTest::newRow("new from what is no picture")
            << QStringList{"new", "map.imp", "-o", "out.imp"} << 1
            << QByteArray("The picture \"map.imp\" cannot be loaded.\nUnsupported image format\n");
    }

    void failures()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QByteArray, err);
        const Run run = Cli(arguments);
        QCOMPARE(run.exitCode, exitCode);
        QVERIFY(run.out.isEmpty());
        QCOMPARE(exitCode == 2 ? run.err.left(err.size()) : run.err, err);
        QVERIFY(!QFile::exists(Path("out.imp")));
    }

    void commandsDoTheirWork()
    {
        QCOMPARE(Cli({"html", "map.imp"}).out, Code(MapCodeGenerator::Form::Viewing).toUtf8());
        Run run = Cli({"html", "map.imp", "--test"});
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.out, Code(MapCodeGenerator::Form::Test).toUtf8());

        QCOMPARE(Cli({"testpage", "map.imp", "-o", "page.htm"}).exitCode, 0);
        QVERIFY(ReadBytes(Path("page.htm"))
                    .endsWith(TestPage::Text(Code(MapCodeGenerator::Form::Test)).toUtf8()));

        // save records the new absolute path on line 2.
        QCOMPARE(Cli({"save", "map.imp", "-o", "copy.imp"}).exitCode, 0);
        QVERIFY(ReadBytes(Path("copy.imp"))
                    .startsWith("1.0.0\r\n" + Path("copy.imp").toUtf8() + "\r\n"));

        QVERIFY(WriteBytes(Path("code.html"), "<map name=\"x\">\n<area shape=\"poly\" "
                                              "coords=\"5,5,50,5,25,30\" href=\"b\">\n</map>"));
        run = Cli({"import", "code.html", "--into", "map.imp", "-o", "imported.imp"});
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

private:
    Run Cli(const QStringList& arguments) const { return RunCli(m_dir.path(), arguments); }
    QString Path(const QString& name) const { return m_dir.filePath(name); }
    QString Code(MapCodeGenerator::Form form) const
    {
        MapDocument map = MapFile::OpenMapFile(Path("map.imp")).document;
        return MapCodeGenerator::GenerateMapCode(map, form);
    }

    QTemporaryDir m_dir;
    MapDocument m_map; // three shapes over pic.png, saved as map.imp
};

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
