#include "FileSizeLimit.h"
#include "interchange/MapFile.h"
#include "interchange/MapTextReader.h"
#include "interchange/MapTextWriter.h"
#include "shape/Numeric.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString CannotLoad = QStringLiteral("Error, map cannot be loaded.");
const QString NotFound = QStringLiteral("Image for map not found.");

struct ShapeSpec
{
    std::int16_t type;
    std::vector<ShapePoint> points;
    QString url, comment, target, status;
    std::int16_t alert;
    QString alertText;
};

void AddShape(MapDocument& doc, const ShapeSpec& spec)
{
    const std::int16_t i = doc.AddShape();
    PatShape& s = doc.Shape(i);
    s.ResetInfo(spec.type, true, doc.NonFocusColor, spec.url, spec.comment, spec.target,
                spec.status, spec.alert, spec.alertText);
    s.ResetPoints(static_cast<std::int16_t>(spec.points.size() - 1));
    for (std::size_t j = 0; j < spec.points.size(); ++j)
        s.SetPoint(static_cast<std::int16_t>(j), spec.points[j].x, spec.points[j].y);
    s.SetOpenGeneralInfo(nullptr, doc.ZoomLevel);
    doc.BringToTop(i);
}

const ShapeSpec RectangleSpec{Rectangle,
                              {{10, 20}, {110, 20}, {110, 80}, {10, 80}},
                              "http://a.example/",
                              "Alpha",
                              "_blank",
                              "Status A",
                              -1,
                              "Alert A"};
const ShapeSpec CircleSpec{
    Circle, {{50, 50}, {90, 50}, {90, 90}, {50, 90}}, "b.htm", "Beta, with a comma", "", "", 0, ""};
const ShapeSpec PolygonSpec{Polygon,
                            {{10, 40}, {30, 5}, {50, 40}},
                            "http://c.example/?q=1,2",
                            "Gamma",
                            "main",
                            "Status C",
                            0,
                            "Alert C"};

MapDocument SettingsDocument()
{
    MapDocument doc;
    doc.ImagePath = QStringLiteral("/pics/");
    doc.ImageName = QStringLiteral("harbour.png");
    doc.MapName = QStringLiteral("Harbour");
    doc.MapStyle = 2;
    doc.MapOnClick = 3;
    doc.MapBorder = 1;
    doc.RealWidth = 480;
    doc.RealHeight = 320;
    doc.SWidth = 240;
    doc.SHeight = 160;
    doc.ZoomLevel = 1.5;
    doc.GridSpacing = 0.5;
    doc.GridColor = 255;
    doc.GridStyle = 1;
    doc.GridColorNum = 4;
    doc.ShouldDrawGrid = true;
    doc.GridSnap = false;
    doc.BorderColor = RGBColor(1, 2, 3);
    doc.DefURL = QStringLiteral("http://example.com/");
    doc.DefComment = QStringLiteral("Harbour, town");
    doc.DefTarget = QStringLiteral("_top");
    doc.DefStatus = QStringLiteral("Welcome");
    doc.DefAlertVal = -1;
    doc.DefAlert = QStringLiteral("Hi");
    return doc;
}

QStringList HeaderLines(const QString& count)
{
    return {"1.0.0",     "/maps/harbour.imp",
            "/pics/",    "harbour.png",
            "Harbour",   " 2 ",
            " 3 ",       " 1 ",
            " 480 ",     " 320 ",
            " 240 ",     " 160 ",
            " 1.5 ",     " .5 ",
            " 255 ",     " 1 ",
            " 4 ",       "True",
            "False",     " 11827200 ",
            " 7895160 ", " 197121 ",
            count};
}

const QStringList DefaultAreaLines{
    "http://example.com/", "Harbour, town", "_top", "Welcome", "-1 ", "Hi"};

QByteArray Crlf(const QStringList& lines)
{
    return (lines.join(QLatin1String("\r\n")) + QLatin1String("\r\n")).toUtf8();
}

void WritePicture(const QString& path)
{
    QImage picture(8, 6, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    QVERIFY(picture.save(path));
}

bool WriteFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray ReadFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

Q_DECLARE_METATYPE(ShapeSpec)

class TestMapFile : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();

    void numberForms_data();
    void numberForms();
    void writesExactBytes_data();
    void writesExactBytes();
    void readsBackWhatItWrote();
    void reopenedStackingOrderIsTheInverse();
    void acceptsLooseLineEndsAndBlanks();
    void pointsLine_data();
    void pointsLine();
    void refusesBrokenFiles_data();
    void refusesBrokenFiles();
    void refusesWhatIsNoFile();
    void missingPicture_data();
    void missingPicture();
    void findsMovedPictureBesideTheMap_data();
    void findsMovedPictureBesideTheMap();
    void storedFileName_data();
    void storedFileName();
    void textEncodings_data();
    void textEncodings();
    void readsOldWindowsFile();
    void lineBreakInValueKeepsFileReadable();
    void largestMapLoads();
    void saveReplacesPreviousFile();
    void failedSaveLeavesPreviousFileWhole();
    void saveToMissingFolderFails();

private:
    // A valid two-shape map over dir/pic.png, as lines without line ends.
    QStringList ValidLines() const;
    MapFile::ReadResult ReadLines(const QStringList& lines) const;

    QTemporaryDir m_dir;
    QString m_picture;
};

void TestMapFile::initTestCase()
{
    QVERIFY(m_dir.isValid());
    m_picture = m_dir.filePath(QStringLiteral("pic.png"));
    WritePicture(m_picture);
}

QStringList TestMapFile::ValidLines() const
{
    MapDocument doc = SettingsDocument();
    doc.ImagePath = m_dir.path() + QLatin1Char('/');
    doc.ImageName = QStringLiteral("pic.png");
    AddShape(doc, RectangleSpec);
    AddShape(doc, PolygonSpec);
    QStringList lines = MapFile::MapText(doc, m_dir.filePath("map.imp")).split("\r\n");
    lines.removeLast();
    return lines;
}

MapFile::ReadResult TestMapFile::ReadLines(const QStringList& lines) const
{
    const QString path = m_dir.filePath(QStringLiteral("lines.imp"));
    if (!WriteFile(path, lines.isEmpty() ? QByteArray() : Crlf(lines)))
        return {};
    return MapFile::OpenMapFile(path);
}

void TestMapFile::numberForms_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("integer");
    QTest::addColumn<QString>("text");
    QTest::newRow("integer") << 3.0 << true << " 3 ";
    QTest::newRow("negative integer") << -3.0 << true << "-3 ";
    QTest::newRow("zero") << 0.0 << true << " 0 ";
    QTest::newRow("half") << 0.5 << false << " .5 ";
    QTest::newRow("whole double") << 1.0 << false << " 1 ";
    QTest::newRow("one and a half") << 1.5 << false << " 1.5 ";
    QTest::newRow("negative fraction") << -0.25 << false << "-.25 ";
    QTest::newRow("negative zero") << -0.0 << false << " 0 ";
    QTest::newRow("zoomed in twice") << 1.0 + 0.1 + 0.1 << false << " 1.2 ";
    QTest::newRow("huge") << 1e20 << false << " 1E+20 ";
}

void TestMapFile::numberForms()
{
    QFETCH(double, value);
    QFETCH(bool, integer);
    QFETCH(QString, text);
    QCOMPARE(integer ? MapTextWriter::IntegerText(static_cast<std::int64_t>(value))
                     : MapTextWriter::DoubleText(value),
             text);
}

void TestMapFile::writesExactBytes_data()
{
    QTest::addColumn<QList<ShapeSpec>>("shapes");
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("no shapes") << QList<ShapeSpec>{} << Crlf(HeaderLines("-1 ") + DefaultAreaLines);
    QTest::newRow("rectangle") << QList<ShapeSpec>{RectangleSpec}
                               << Crlf(HeaderLines(" 0 ") +
                                       QStringList{" 1 ", "10,20,110,20,110,80,10,80,",
                                                   "http://a.example/", "Alpha", "_blank",
                                                   "Status A", "-1 ", "Alert A", " 0 "} +
                                       DefaultAreaLines);
    QTest::newRow("circle") << QList<ShapeSpec>{CircleSpec}
                            << Crlf(HeaderLines(" 0 ") +
                                    QStringList{" 0 ", "50,50,90,50,90,90,50,90,", "b.htm",
                                                "Beta, with a comma", "", "", " 0 ", "", " 0 "} +
                                    DefaultAreaLines);
    QTest::newRow("polygon") << QList<ShapeSpec>{PolygonSpec}
                             << Crlf(HeaderLines(" 0 ") +
                                     QStringList{" 2 ", "10,40,30,5,50,40,",
                                                 "http://c.example/?q=1,2", "Gamma", "main",
                                                 "Status C", " 0 ", "Alert C", " 0 "} +
                                     DefaultAreaLines);
    // Each new shape goes on top: ShapeOrder is 2, 1, 0 and entry i goes with shape i.
    QTest::newRow("three shapes")
        << QList<ShapeSpec>{RectangleSpec, CircleSpec, PolygonSpec}
        << Crlf(HeaderLines(" 2 ") +
                QStringList{" 1 ", "10,20,110,20,110,80,10,80,", "http://a.example/", "Alpha",
                            "_blank", "Status A", "-1 ", "Alert A", " 2 "} +
                QStringList{" 0 ", "50,50,90,50,90,90,50,90,", "b.htm", "Beta, with a comma", "",
                            "", " 0 ", "", " 1 "} +
                QStringList{" 2 ", "10,40,30,5,50,40,", "http://c.example/?q=1,2", "Gamma", "main",
                            "Status C", " 0 ", "Alert C", " 0 "} +
                DefaultAreaLines);
}

void TestMapFile::writesExactBytes()
{
    QFETCH(QList<ShapeSpec>, shapes);
    QFETCH(QByteArray, bytes);
    MapDocument doc = SettingsDocument();
    for (const ShapeSpec& spec : shapes)
        AddShape(doc, spec);
    const QString path = m_dir.filePath(QStringLiteral("harbour.imp"));
    QCOMPARE(MapFile::MapBytes(doc, QStringLiteral("/maps/harbour.imp")), bytes);

    // SaveMap writes the same bytes, with its own path on line 2.
    const MapFile::WriteResult saved = MapFile::SaveMap(doc, path);
    QVERIFY(saved.ok);
    QVERIFY(saved.message.isEmpty());
    QCOMPARE(ReadFile(path), QByteArray(bytes).replace("/maps/harbour.imp", path.toUtf8()));
}

void TestMapFile::readsBackWhatItWrote()
{
    MapDocument doc = SettingsDocument();
    doc.ImagePath = m_dir.path() + QLatin1Char('/');
    doc.ImageName = QStringLiteral("pic.png");
    AddShape(doc, RectangleSpec);
    AddShape(doc, CircleSpec);
    AddShape(doc, PolygonSpec);
    doc.ShouldDrawGrid = false;
    doc.GridSnap = true;
    const QString path = m_dir.filePath(QStringLiteral("roundtrip.imp"));
    QVERIFY(MapFile::SaveMap(doc, path).ok);

    const MapFile::ReadResult read = MapFile::OpenMapFile(path);
    QVERIFY(read.ok);
    QVERIFY(read.messages.isEmpty());
    QCOMPARE(read.fileName, path);
    const MapDocument& back = read.document;
    QCOMPARE(back.ImagePath, doc.ImagePath);
    QCOMPARE(back.ImageName, doc.ImageName);
    QCOMPARE(back.MapName, doc.MapName);
    QCOMPARE(back.MapStyle, doc.MapStyle);
    QCOMPARE(back.MapOnClick, doc.MapOnClick);
    QCOMPARE(back.MapBorder, doc.MapBorder);
    QCOMPARE(back.RealWidth, doc.RealWidth);
    QCOMPARE(back.RealHeight, doc.RealHeight);
    QCOMPARE(back.SWidth, doc.SWidth);
    QCOMPARE(back.SHeight, doc.SHeight);
    QCOMPARE(back.ZoomLevel, doc.ZoomLevel);
    QCOMPARE(back.GridSpacing, doc.GridSpacing);
    QCOMPARE(back.GridColor, doc.GridColor);
    QCOMPARE(back.GridStyle, doc.GridStyle);
    QCOMPARE(back.GridColorNum, doc.GridColorNum);
    QCOMPARE(back.ShouldDrawGrid, false);
    QCOMPARE(back.GridSnap, true);
    QCOMPARE(back.FocusColor, doc.FocusColor);
    QCOMPARE(back.NonFocusColor, doc.NonFocusColor);
    QCOMPARE(back.BorderColor, doc.BorderColor);
    QCOMPARE(back.DefURL, doc.DefURL);
    QCOMPARE(back.DefComment, QStringLiteral("Harbour, town"));
    QCOMPARE(back.DefTarget, doc.DefTarget);
    QCOMPARE(back.DefStatus, doc.DefStatus);
    QCOMPARE(back.DefAlertVal, std::int16_t(-1));
    QCOMPARE(back.DefAlert, doc.DefAlert);
    QCOMPARE(back.OrigPic.size(), QSize(8, 6));

    QCOMPARE(back.ItemCount(), std::int16_t(2));
    for (std::int16_t i = 0; i <= 2; ++i) {
        const PatShape& a = doc.Shape(i);
        const PatShape& b = back.Shape(i);
        QCOMPARE(b.GetShapeType(), a.GetShapeType());
        QVERIFY(b.Points() == a.Points());
        QCOMPARE(b.URL, a.URL);
        QCOMPARE(b.Comment, a.Comment);
        QCOMPARE(b.Target, a.Target);
        QCOMPARE(b.StatusString, a.StatusString);
        QCOMPARE(b.AlertBox, a.AlertBox);
        QCOMPARE(b.AlertString, a.AlertString);
        QVERIFY(b.IsShapeDone());
        QCOMPARE(b.Zoom(), 1.5);
    }
}

void TestMapFile::reopenedStackingOrderIsTheInverse()
{
    MapDocument doc = SettingsDocument();
    doc.ImagePath = m_dir.path() + QLatin1Char('/');
    doc.ImageName = QStringLiteral("pic.png");
    AddShape(doc, RectangleSpec);
    AddShape(doc, CircleSpec);
    AddShape(doc, PolygonSpec);
    doc.BringToTop(0); // order 0, 2, 1: its own inverse
    doc.BringToTop(1); // order 1, 0, 2: its own inverse
    doc.BringToTop(2); // order 2, 1, 0
    doc.BringToTop(0); // order 0, 2, 1
    doc.BringToTop(1); // order 1, 0, 2
    doc.DeleteShape(); // order 0, 1 over two shapes
    AddShape(doc, PolygonSpec);
    doc.BringToTop(1); // order 1, 2, 0: not its own inverse
    QCOMPARE(doc.ShapeOrder(), (std::vector<std::int16_t>{1, 2, 0}));
    const QString path = m_dir.filePath(QStringLiteral("order.imp"));
    QVERIFY(MapFile::SaveMap(doc, path).ok);

    const MapFile::ReadResult read = MapFile::OpenMapFile(path);
    QVERIFY(read.ok);
    QCOMPARE(read.document.ShapeOrder(), (std::vector<std::int16_t>{2, 0, 1}));
    QCOMPARE(read.document.Shape(2).ShapeColor, doc.FocusColor);
    QCOMPARE(read.document.Shape(0).ShapeColor, doc.NonFocusColor);
    QCOMPARE(read.document.Shape(1).ShapeColor, doc.NonFocusColor);
}

void TestMapFile::acceptsLooseLineEndsAndBlanks()
{
    QStringList lines = ValidLines();
    lines[5] = QStringLiteral("\t4");     // MapStyle
    lines[12] = QStringLiteral("  2.  "); // ZoomLevel
    lines[17] = QStringLiteral(" true "); // ShouldDrawGrid
    lines[18] = QStringLiteral("-1");     // GridSnap as an old numeric truth value
    lines[22] = QStringLiteral("+1");     // highest shape index
    const QString path = m_dir.filePath(QStringLiteral("lf.imp"));
    QVERIFY(WriteFile(path, (lines.join('\n')).toUtf8())); // LF only, none after the last
    const MapFile::ReadResult read = MapFile::OpenMapFile(path);
    QVERIFY(read.ok);
    QCOMPARE(read.document.MapStyle, std::int16_t(4));
    QCOMPARE(read.document.ZoomLevel, 2.0);
    QCOMPARE(read.document.ShouldDrawGrid, true);
    QCOMPARE(read.document.GridSnap, true);
    QCOMPARE(read.document.ItemCount(), std::int16_t(1));
    QCOMPARE(read.document.DefAlert, QStringLiteral("Hi"));
}

void TestMapFile::pointsLine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QList<int>>("coordinates");
    QTest::newRow("trailing comma") << "10,20,30,40," << QList<int>{10, 20, 30, 40};
    QTest::newRow("blanks around numbers") << " 5 , -6 ," << QList<int>{5, -6};
    QTest::newRow("no trailing comma, odd") << "1,2,3" << QList<int>{1, 2};
    // u = 3 gives round(0.5) + 1 = 1 point: the last pair is dropped.
    QTest::newRow("no trailing comma, even") << "1,2,3,4" << QList<int>{1, 2};
    QTest::newRow("one pair bare") << "7,8" << QList<int>{7, 8};
    QTest::newRow("single number") << "5" << QList<int>{};
    QTest::newRow("empty") << "" << QList<int>{};
}

void TestMapFile::pointsLine()
{
    QFETCH(QString, line);
    QFETCH(QList<int>, coordinates);
    MapTextReader in(line + QLatin1String("\r\n"));
    QList<int> read;
    for (const ShapePoint& p : in.Points())
        read << p.x << p.y;
    QCOMPARE(read, coordinates);
}

void TestMapFile::refusesBrokenFiles_data()
{
    QTest::addColumn<QStringList>("lines");
    const QStringList valid = ValidLines();
    QCOMPARE(valid.size(), 23 + 2 * 9 + 6);
    const auto with = [&](int index, const QString& value) {
        QStringList lines = valid;
        lines[index] = value;
        return lines;
    };

    QTest::newRow("empty file") << QStringList{};
    QTest::newRow("header cut short") << valid.mid(0, 10);
    QTest::newRow("shape record cut short") << valid.mid(0, 28);
    QTest::newRow("last default-area line missing") << valid.mid(0, valid.size() - 1);
    QTest::newRow("word for map style") << with(5, "three");
    QTest::newRow("map style out of range") << with(5, " 6 ");
    QTest::newRow("border out of range") << with(7, " 3 ");
    QTest::newRow("16-bit line too large") << with(16, " 32768 ");
    QTest::newRow("32-bit line too large") << with(8, " 2147483648 ");
    QTest::newRow("decimal in an integer line") << with(9, " 320.5 ");
    QTest::newRow("comma as decimal point") << with(12, " 1,5 ");
    QTest::newRow("zero zoom") << with(12, " 0 ");
    QTest::newRow("zoom not a number") << with(12, "nan");
    QTest::newRow("negative grid spacing") << with(13, "-20 ");
    QTest::newRow("grid switch neither True nor False") << with(17, "Maybe");
    QTest::newRow("empty colour line") << with(19, "");
    QTest::newRow("shape count below -1") << with(22, "-2 ");
    QTest::newRow("huge shape count in a short file") << with(22, " 32767 ");
    QTest::newRow("shape count beyond 16 bits") << with(22, " 40000 ");
    QTest::newRow("unknown shape type") << with(23, " 3 ");
    QTest::newRow("word in the points line") << with(24, "10,20,x,20,110,80,10,80,");
    QTest::newRow("points line missing a y") << with(24, "10,");
    QTest::newRow("empty points line") << with(24, "");
    QTest::newRow("rectangle with three points") << with(24, "10,20,110,20,110,80,");
    QTest::newRow("alert flag not a number") << with(29, "yes");
    // Both records claim the top place; the order is no permutation.
    QTest::newRow("stacking entry repeated") << with(31, " 0 ");
    QTest::newRow("stacking entry out of range") << with(40, " 2 ");
    QTest::newRow("negative stacking entry") << with(40, "-1 ");
    QTest::newRow("NUL byte") << with(4, QStringLiteral("Har") + QChar(0) + "bour");
}

void TestMapFile::refusesBrokenFiles()
{
    QFETCH(QStringList, lines);
    const MapFile::ReadResult read = ReadLines(lines);
    QVERIFY(!read.ok);
    QCOMPARE(read.messages, QStringList{CannotLoad});
    QCOMPARE(read.document.ItemCount(), std::int16_t(-1));
    QVERIFY(read.document.OrigPic.isNull());
    QVERIFY(read.fileName.isEmpty());
}

void TestMapFile::refusesWhatIsNoFile()
{
    for (const QString& path : {m_dir.filePath("nothing.imp"), m_dir.path()}) {
        const MapFile::ReadResult read = MapFile::OpenMapFile(path);
        QVERIFY(!read.ok);
        QCOMPARE(read.messages, QStringList{CannotLoad});
    }
}

void TestMapFile::missingPicture_data()
{
    QTest::addColumn<QString>("imageName");
    QTest::addColumn<int>("keepLines");
    QTest::addColumn<QStringList>("messages");
    QTest::newRow("picture deleted") << "gone.png" << -1 << QStringList{NotFound, CannotLoad};
    QTest::newRow("no picture name") << "" << -1 << QStringList{NotFound, CannotLoad};
    // The picture is looked for right after its name; a later fault adds nothing.
    QTest::newRow("picture deleted, rest cut")
        << "gone.png" << 6 << QStringList{NotFound, CannotLoad};
    QTest::newRow("cut before the name") << "gone.png" << 3 << QStringList{CannotLoad};
    QTest::newRow("file that is no picture") << "lines.imp" << -1 << QStringList{CannotLoad};
}

void TestMapFile::missingPicture()
{
    QFETCH(QString, imageName);
    QFETCH(int, keepLines);
    QFETCH(QStringList, messages);
    QStringList lines = ValidLines();
    lines[3] = imageName;
    if (keepLines >= 0)
        lines = lines.mid(0, keepLines);
    const MapFile::ReadResult read = ReadLines(lines);
    QVERIFY(!read.ok);
    QCOMPARE(read.messages, messages);
}

void TestMapFile::findsMovedPictureBesideTheMap_data()
{
    QTest::addColumn<QString>("imagePath");
    QTest::newRow("windows folder") << "C:\\Users\\ann\\Pictures\\";
    QTest::newRow("folder that is gone") << m_dir.filePath("gone/");
    QTest::newRow("no folder") << "";
    QTest::newRow("relative folder") << "./";
}

void TestMapFile::findsMovedPictureBesideTheMap()
{
    QFETCH(QString, imagePath);
    QTemporaryDir moved;
    QVERIFY(moved.isValid());
    WritePicture(moved.filePath(QStringLiteral("beside.png")));
    QStringList lines = ValidLines();
    lines[2] = imagePath;
    lines[3] = QStringLiteral("beside.png");
    const QString path = moved.filePath(QStringLiteral("moved.imp"));
    QVERIFY(WriteFile(path, Crlf(lines)));

    // Also from inside the map's folder, where a relative path would happen to work.
    const QString previous = QDir::currentPath();
    QVERIFY(QDir::setCurrent(moved.path()));
    const MapFile::ReadResult read = MapFile::OpenMapFile(QStringLiteral("moved.imp"));
    QDir::setCurrent(previous);
    QVERIFY(read.ok);
    QCOMPARE(read.document.ImagePath, QDir::toNativeSeparators(moved.path()) + QDir::separator());
    QCOMPARE(read.document.ImageName, QStringLiteral("beside.png"));
    QCOMPARE(read.document.OrigPic.size(), QSize(8, 6));
    QCOMPARE(read.fileName, m_dir.filePath("map.imp"));
}

void TestMapFile::storedFileName_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("keepsStored");
    QTest::newRow("existing folder") << m_dir.filePath("elsewhere.imp") << true;
    QTest::newRow("folder that does not exist") << m_dir.filePath("no/such/dir/map.imp") << false;
    QTest::newRow("windows path") << "D:\\maps\\harbour.imp" << false;
    QTest::newRow("no folder") << "harbour.imp" << false;
    QTest::newRow("empty") << "" << false;
}

void TestMapFile::storedFileName()
{
    QFETCH(QString, stored);
    QFETCH(bool, keepsStored);
    QStringList lines = ValidLines();
    lines[1] = stored;
    const QString path = m_dir.filePath(QStringLiteral("lines.imp"));
    const MapFile::ReadResult read = ReadLines(lines);
    QVERIFY(read.ok);
    QCOMPARE(read.fileName, keepsStored ? stored : path);
}

void TestMapFile::textEncodings_data()
{
    QTest::addColumn<QString>("comment");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("ascii") << "Plain" << QByteArray("Plain");
    QTest::newRow("windows-1252") << QString::fromUtf8("Caf\xc3\xa9 \xe2\x82\xac 5")
                                  << QByteArray("Caf\xe9 \x80 5");
    QTest::newRow("beyond windows-1252")
        << QString::fromUtf8("\xe6\x97\xa5\xe6\x9c\xac caf\xc3\xa9")
        << QByteArray("\xe6\x97\xa5\xe6\x9c\xac caf\xc3\xa9");
    // Fits the code page, but its bytes would read back as UTF-8 "é".
    QTest::newRow("code-page bytes that look like UTF-8")
        << QString::fromUtf8("\xc3\x83\xc2\xa9") << QByteArray("\xc3\x83\xc2\xa9");
}

void TestMapFile::textEncodings()
{
    QFETCH(QString, comment);
    QFETCH(QByteArray, bytes);
    MapDocument doc = SettingsDocument();
    doc.ImagePath = m_dir.path() + QLatin1Char('/');
    doc.ImageName = QStringLiteral("pic.png");
    ShapeSpec spec = CircleSpec;
    spec.comment = comment;
    AddShape(doc, spec);
    doc.MapName = comment;
    const QString path = m_dir.filePath(QStringLiteral("encoding.imp"));
    QVERIFY(MapFile::SaveMap(doc, path).ok);
    QVERIFY(ReadFile(path).contains("\r\n" + bytes + "\r\n"));

    const MapFile::ReadResult read = MapFile::OpenMapFile(path);
    QVERIFY(read.ok);
    QCOMPARE(read.document.MapName, comment);
    QCOMPARE(read.document.Shape(0).Comment, comment);
}

void TestMapFile::readsOldWindowsFile()
{
    QStringList lines = ValidLines();
    QByteArray bytes = Crlf(lines);
    bytes.replace("Harbour, town", "Caf\xe9 \x93quoted\x94");
    const QString path = m_dir.filePath(QStringLiteral("old.imp"));
    QVERIFY(WriteFile(path, bytes));
    const MapFile::ReadResult read = MapFile::OpenMapFile(path);
    QVERIFY(read.ok);
    QCOMPARE(read.document.DefComment,
             QString::fromUtf8("Caf\xc3\xa9 \xe2\x80\x9cquoted\xe2\x80\x9d"));
}

void TestMapFile::lineBreakInValueKeepsFileReadable()
{
    MapDocument doc = SettingsDocument();
    doc.ImagePath = m_dir.path() + QLatin1Char('/');
    doc.ImageName = QStringLiteral("pic.png");
    ShapeSpec spec = RectangleSpec;
    spec.comment = QStringLiteral("two\r\nlines");
    AddShape(doc, spec);
    const QString path = m_dir.filePath(QStringLiteral("break.imp"));
    QVERIFY(MapFile::SaveMap(doc, path).ok);
    const MapFile::ReadResult read = MapFile::OpenMapFile(path);
    QVERIFY(read.ok);
    QCOMPARE(read.document.Shape(0).Comment, QStringLiteral("two  lines"));
    QCOMPARE(read.document.Shape(0).Target, QStringLiteral("_blank"));
}

void TestMapFile::largestMapLoads()
{
    MapDocument doc = SettingsDocument();
    doc.ImagePath = m_dir.path() + QLatin1Char('/');
    doc.ImageName = QStringLiteral("pic.png");
    for (int i = 0; i < 32768; ++i)
        doc.AddShape();
    for (int i = 0; i <= doc.ItemCount(); ++i)
        doc.Shape(std::int16_t(i)).SetInfo(nullptr, 0, i % 2 == 0 ? Rectangle : Circle, 1.5, i, i);
    QVERIFY_THROWS_EXCEPTION(OverflowError, doc.AddShape());
    const QString path = m_dir.filePath(QStringLiteral("largest.imp"));
    QVERIFY(MapFile::SaveMap(doc, path).ok);

    const MapFile::ReadResult read = MapFile::OpenMapFile(path);
    QVERIFY(read.ok);
    QCOMPARE(read.document.ItemCount(), std::int16_t(32767));
    QCOMPARE(read.document.Shape(32767).GetPoint(2), (ShapePoint{32767, 32767}));
    QCOMPARE(read.document.Shape(32767).GetShapeType(), std::int16_t(Circle));
}

void TestMapFile::saveReplacesPreviousFile()
{
    const QString path = m_dir.filePath(QStringLiteral("replace.imp"));
    QVERIFY(WriteFile(path, QByteArray(100000, 'x')));
    const MapDocument doc = SettingsDocument();
    QVERIFY(MapFile::SaveMap(doc, path).ok);
    QCOMPARE(ReadFile(path), MapFile::MapBytes(doc, path));
}

void TestMapFile::failedSaveLeavesPreviousFileWhole()
{
    const QString path = m_dir.filePath(QStringLiteral("whole.imp"));
    const QByteArray previous = Crlf(ValidLines());
    QVERIFY(WriteFile(path, previous));

    // A file-size limit makes the write fail part way, as a full disk would.
    MapDocument doc = SettingsDocument();
    doc.MapName = QString(4096, QLatin1Char('m'));
    MapFile::WriteResult saved;
    {
        const FileSizeLimit limit(1024);
        QVERIFY(limit.Active());
        saved = MapFile::SaveMap(doc, path);
    }

    QVERIFY(!saved.ok);
    QCOMPARE(saved.message, QStringLiteral("There was an error while trying to save the file."));
    QCOMPARE(ReadFile(path), previous);
    QCOMPARE(QDir(m_dir.path()).entryList({"whole.imp*"}, QDir::Files), QStringList{"whole.imp"});
}

void TestMapFile::saveToMissingFolderFails()
{
    const QString path = m_dir.filePath(QStringLiteral("missing/folder/map.imp"));
    const MapFile::WriteResult saved = MapFile::SaveMap(SettingsDocument(), path);
    QVERIFY(!saved.ok);
    QCOMPARE(saved.message, QStringLiteral("There was an error while trying to save the file."));
    QVERIFY(!QFile::exists(path));
}

QTEST_GUILESS_MAIN(TestMapFile)
#include "tst_mapfile.moc"
