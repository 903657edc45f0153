#include "FileBytes.h"
#include "FileSizeLimit.h"
#include "ShapeRow.h"
#include "core/interchange/MapFile.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString CannotLoad = QStringLiteral("Error, map cannot be loaded.");
const QString NotFound = QStringLiteral("Image for map not found.");
const QString SaveError = QStringLiteral("There was an error while trying to save the file.");

const QString RectangleRow = QStringLiteral(
    " 1 |10,20,110,20,110,80,10,80,|http://a.example/|Alpha|_blank|Status A|-1 |Alert A");
const QString CircleRow =
    QStringLiteral(" 0 |50,50,90,50,90,90,50,90,|b.htm|Beta, with a comma||| 0 |");
const QString PolygonRow =
    QStringLiteral(" 2 |10,40,30,5,50,40,|http://c.example/?q=1,2|Gamma|main|Status C| 0 |Alert C");

// Every setting away from its default; the picture lies in PictureFolder.
MapDocument SettingsDocument(const QString& PictureFolder = QStringLiteral("/pics/"))
{
    MapDocument doc;
    doc.ImagePath = PictureFolder;
    doc.ImageName = QStringLiteral("pic.png");
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
    doc.BorderColor = RGBColor(1, 2, 3);
    doc.DefURL = QStringLiteral("http://example.com/");
    doc.DefComment = QStringLiteral("Harbour, town");
    doc.DefTarget = QStringLiteral("_top");
    doc.DefStatus = QStringLiteral("Welcome");
    doc.DefAlertVal = -1;
    doc.DefAlert = QStringLiteral("Hi");
    return doc;
}

QByteArray Crlf(const QStringList& lines)
{
    return (lines.join(QLatin1String("\r\n")) + QLatin1String("\r\n")).toUtf8();
}

void AddShape(MapDocument& doc, const QString& row)
{
    doc.BringToTop(AddShapeRow(doc, row, doc.ZoomLevel));
}

} // namespace

class TestMapFile : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        QImage picture(8, 6, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        QVERIFY(picture.save(m_dir.filePath(QStringLiteral("pic.png"))));
    }

    void writesExactBytes_data()
    {
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QString>("shapeLines");
        QTest::newRow("no shapes") << QStringList() << "-1 ";
        // Each new shape goes on top: ShapeOrder is 2, 1, 0 and entry i goes with shape i.
        QTest::newRow("one of each kind")
            << QStringList{RectangleRow, CircleRow, PolygonRow}
            << " 2 |" + RectangleRow + "| 2 |" + CircleRow + "| 1 |" + PolygonRow + "| 0 ";
    }

    void writesExactBytes()
    {
        QFETCH(QStringList, rows);
        QFETCH(QString, shapeLines);
        MapDocument doc = SettingsDocument();
        for (const QString& row : rows)
            AddShape(doc, row);
        const QString header =
            QStringLiteral("1.0.0|/maps/harbour.imp|/pics/|pic.png|Harbour| 2 | 3 | 1 | 480 | 320 "
                           "| 240 | 160 | 1.5 "
                           "| .5 | 255 | 1 | 4 |True|False| 11827200 | 7895160 | 197121 |");
        const QString defaults =
            QStringLiteral("|http://example.com/|Harbour, town|_top|Welcome|-1 |Hi");
        const QByteArray bytes = Crlf((header + shapeLines + defaults).split(QLatin1Char('|')));
        // Line 2 records the name the map is saved under; saveIsWholeOrNothing shows a save
        // writes these bytes.
        QCOMPARE(MapFile::MapBytes(doc, QStringLiteral("/maps/harbour.imp")), bytes);
    }

    void readsBackWhatItWrote()
    {
        MapDocument doc = Local();
        for (const QString& row : {RectangleRow, CircleRow, PolygonRow})
            AddShape(doc, row);
        doc.BringToTop(1); // stacked 1, 2, 0
        const QString path = m_dir.filePath(QStringLiteral("roundtrip.imp"));
        const MapFile::ReadResult read = MapFile::ReadMap(MapFile::MapBytes(doc, path), path);
        // The stacking order comes back as its inverse, with the new top shape in focus colour.
        QCOMPARE(read.document.ShapeOrder(), (std::vector<std::int16_t>{2, 0, 1}));
        QCOMPARE(read.document.Shape(2).ShapeColor, doc.FocusColor);
        QCOMPARE(read.document.Shape(1).ShapeColor, doc.NonFocusColor);
        doc.BringToTop(0);
        doc.BringToTop(2);
        QCOMPARE(MapFile::MapBytes(read.document, path), MapFile::MapBytes(doc, path));
    }

    // Each refusal says why beside its message: the line at fault and what it holds.
    void refusesBrokenFiles_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("messages");
        QTest::addColumn<QString>("detail");
        const QStringList valid = ValidLines();
        const auto with = [&](int index, const QString& value, int count = -1) {
            QStringList lines = valid.mid(0, count);
            lines[index] = value;
            return Crlf(lines);
        };
        const QStringList cannot{CannotLoad};
        const QStringList noPicture{NotFound, CannotLoad};
        const auto bad = [](int line, const QString& text) {
            return MapFile::BadLineDetail(line, text);
        };
        const QString ends10 = MapFile::EndsEarlyDetail(10);

        QTest::newRow("empty file") << QByteArray() << cannot << MapFile::EmptyDetail();
        QTest::newRow("header cut short") << Crlf(valid.mid(0, 10)) << cannot << ends10;
        // A last line without its line end still counts, LF alone as well as CR LF.
        QTest::newRow("cut without a line end")
            << Crlf(valid.mid(0, 10)).chopped(2) << cannot << ends10;
        QTest::newRow("cut, LF alone") << valid.mid(0, 10).join('\n').toUtf8() << cannot << ends10;
        QTest::newRow("shape record cut short")
            << Crlf(valid.mid(0, 28)) << cannot << MapFile::EndsEarlyDetail(28);
        QTest::newRow("word for map style") << with(5, "three") << cannot << bad(6, "three");
        QTest::newRow("map style out of range") << with(5, " 6 ") << cannot << bad(6, "6");
        QTest::newRow("word in the points line") << with(24, "10,20,x,20,110,80,10,80,") << cannot
                                                 << bad(25, "10,20,x,20,110,80,10,80,");
        QTest::newRow("rectangle with three points")
            << with(24, "10,20,110,20,110,80,") << cannot << bad(25, "10,20,110,20,110,80,");
        QTest::newRow("shape count below -1") << with(22, "-2 ") << cannot << bad(23, "-2");
        QTest::newRow("huge shape count in a short file")
            << with(22, " 32767 ") << cannot << bad(23, "32767");
        QTest::newRow("stacking entry repeated") << with(31, " 0 ") << cannot << bad(41, "0");
        // Zoom levels no command can set: a view past the 32-bit range or of no size at all.
        QTest::newRow("zoom 7.7E+80")
            << with(12, "7.7E+80") << cannot << MapFile::UnviewableZoomDetail(7.7E+80);
        QTest::newRow("zoom 1E-300")
            << with(12, "1E-300") << cannot << MapFile::UnviewableZoomDetail(1E-300);
        QTest::newRow("byte-order mark before a number")
            << with(5, QChar(0xFEFF) + QString(" 2 ")) << cannot
            << bad(6, QChar(0xFEFF) + QString(" 2"));
        QTest::newRow("point past 32 bits")
            << with(24, "10,20,110,20,110,80,10,2147483648,") << cannot
            << bad(25, "10,20,110,20,110,80,10,2147483648,");
        QTest::newRow("number of 19 digits")
            << with(8, "1234567890123456789") << cannot << bad(9, "1234567890123456789");
        QTest::newRow("long line cut")
            << with(8, QString(50, 'x')) << cannot << bad(9, QString(40, 'x') + "...");
        QTest::newRow("NUL byte") << with(4, QStringLiteral("Har") + QChar(0) + "bour") << cannot
                                  << MapFile::NotTextDetail();
        QTest::newRow("picture deleted") << with(3, "gone.png") << noPicture << QString();
        // The picture is looked for right after its name; a later fault adds nothing.
        QTest::newRow("picture deleted, rest cut")
            << with(3, "gone.png", 6) << noPicture << QString();
    }

    void refusesBrokenFiles()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, messages);
        QFETCH(QString, detail);
        const MapFile::ReadResult read = MapFile::ReadMap(bytes, m_dir.filePath("lines.imp"));
        QVERIFY(!read.ok);
        QCOMPARE(read.messages, messages);
        QCOMPARE(read.document.ItemCount(), std::int16_t(-1));
        QCOMPARE(read.detail, detail);
    }

    void findsMovedPictureBesideTheMap_data()
    {
        QTest::addColumn<QString>("imagePath");
        QTest::addColumn<QString>("stored");
        QTest::newRow("folder that is gone") << m_dir.filePath("gone/") << m_dir.filePath("x.imp");
        QTest::newRow("no folder") << QString() << QString("harbour.imp");
        QTest::newRow("relative folder") << QString("./") << QString();
    }

    void findsMovedPictureBesideTheMap()
    {
        QFETCH(QString, imagePath);
        QFETCH(QString, stored);
        QTemporaryDir moved;
        QVERIFY(QFile::copy(m_dir.filePath("pic.png"), moved.filePath("beside.png")));
        QStringList lines = ValidLines();
        lines[1] = stored;
        lines[2] = imagePath;
        lines[3] = QStringLiteral("beside.png");
        QVERIFY(WriteBytes(moved.filePath(QStringLiteral("moved.imp")), Crlf(lines)));

        // Opened by a relative name from inside the map's folder, where "./" would happen to work.
        const QString previous = QDir::currentPath();
        QVERIFY(QDir::setCurrent(moved.path()));
        const MapFile::ReadResult read = MapFile::OpenMapFile(QStringLiteral("moved.imp"));
        QDir::setCurrent(previous);
        QVERIFY(read.ok);
        QCOMPARE(read.document.ImagePath,
                 QDir::toNativeSeparators(moved.path()) + QDir::separator());
        QCOMPARE(read.document.ImageName, QStringLiteral("beside.png"));
        QCOMPARE(read.document.OrigPic.size(), QSize(8, 6));
        // The map is the file it was opened from, whatever line 2 says: a copy saved after
        // editing must never overwrite its original.
        QCOMPARE(read.fileName, moved.filePath(QStringLiteral("moved.imp")));
    }

    void textEncodings_data()
    {
        QTest::addColumn<QString>("comment");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("readBack"); // the comment itself when empty
        const auto row = [](const char* name, const QString& comment, const QByteArray& bytes,
                            const QString& back = {}) {
            QTest::newRow(name) << comment << bytes << back;
        };
        row("windows-1252", QString::fromUtf8("Caf\xc3\xa9 \xe2\x82\xac 5"), "Caf\xe9 \x80 5");
        row("beyond windows-1252", QString::fromUtf8("\xe6\x97\xa5 caf\xc3\xa9"),
            "\xe6\x97\xa5 caf\xc3\xa9");
        // Fits the code page, but its bytes would read back as UTF-8 "é".
        row("code-page bytes that look like UTF-8", QString::fromUtf8("\xc3\x83\xc2\xa9"),
            "\xc3\x83\xc2\xa9");
        // A line break inside a value would shift every later line.
        row("line break", "two\r\nlines", "two  lines", "two  lines");
    }

    void textEncodings()
    {
        QFETCH(QString, comment);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, readBack);
        MapDocument doc = Local();
        AddShape(doc, QString(CircleRow).replace("Beta, with a comma", comment));
        const QByteArray written = MapFile::MapBytes(doc, QString());
        QVERIFY(written.contains("\r\n" + bytes + "\r\n"));
        const MapFile::ReadResult read = MapFile::ReadMap(written, m_dir.filePath("encoding.imp"));
        QVERIFY(read.ok);
        QCOMPARE(read.document.Shape(0).Comment, readBack.isEmpty() ? comment : readBack);
        QCOMPARE(read.document.Shape(0).Target, QString());
    }

    void readsEveryFormOfValue_data()
    {
        // A line of the valid map replaced by other bytes; that line as the map read from
        // them writes it back (as given when empty). Every other line comes back as it was.
        QTest::addColumn<int>("index");
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QByteArray>("back");
        const auto row = [](const char* name, int index, const QByteArray& line,
                            const QByteArray& back = {}) {
            QTest::newRow(name) << index << line << back;
        };
        row("as written", 8, " 480 ");
        row("blanks of every kind around a number", 8, "\t\v\f 480 \r", " 480 ");
        // Octal escapes: a hex escape would take the digits after it in.
        row("no-break spaces around a number, UTF-8", 8, "\302\240480\302\240", " 480 ");
        row("no-break spaces around a number, code page", 8, "\240480\240", " 480 ");
        row("zeros before a number, past 18 digits", 8, "00000000000000000000480", " 480 ");
        row("plus sign", 8, "+480", " 480 ");
        row("seven digits", 8, "1234567", " 1234567 ");
        row("eight digits", 8, "12345678", " 12345678 ");
        row("points between blanks, a piece never taken", 24, "10 ,\t20,+110,20,110,80,10, 80,junk",
            "10,20,110,20,110,80,10,80,");
        row("long points line, minus signs", 24, "-1234567,20,110,-20,1234567,80,10,8000000,");
        row("point of eight digits", 24, "10,20,110,20,110,80,10,12345678,");
        row("polygon without the trailing comma", 33, "10,40,30,5,50,40", "10,40,30,5,50,40,");
        row("text that starts with a byte-order mark", 26, "\357\273\277Alpha");
        row("UTF-8 text", 26, "Caf\xc3\xa9", "Caf\xe9");
        row("code-page text", 26, "Caf\xe9");
    }

    void readsEveryFormOfValue()
    {
        QFETCH(int, index);
        QFETCH(QByteArray, line);
        QFETCH(QByteArray, back);
        QList<QByteArray> lines = Crlf(ValidLines()).split('\n'); // each ends in '\r'
        lines[index] = line + '\r';
        const MapFile::ReadResult read =
            MapFile::ReadMap(lines.join('\n'), m_dir.filePath("forms.imp"));
        QVERIFY(read.ok);
        lines[index] = (back.isEmpty() ? line : back) + '\r';
        QCOMPARE(MapFile::MapBytes(read.document, m_dir.filePath("map.imp")), lines.join('\n'));
    }

    // A big map is read in two parts at once. Wherever the parts meet, every shape and the
    // stacking come back whole, and of several faults the first in the file is named.
    void readsBigMapsAsInOrder_data()
    {
        QTest::addColumn<bool>("lf");
        QTest::addColumn<QString>("lastUrl");
        // File lines (from 1) made unreadable, and the line whose stacking entry is set to
        // that of an earlier record.
        QTest::addColumn<QList<int>>("broken");
        QTest::addColumn<int>("repeated");
        QTest::addColumn<QString>("detail");
        const QList<int> none;
        QTest::newRow("CR LF") << false << "z.htm" << none << 0 << QString();
        QTest::newRow("LF") << true << "z.htm" << none << 0 << QString();
        QTest::newRow("Windows-1252 text") << false << "Zürich.htm" << none << 0 << QString();
        QTest::newRow("fault in the later part") << false << "z.htm" << QList<int>{Line(4000, 0)}
                                                 << 0 << MapFile::BadLineDetail(Line(4000, 0), "x");
        QTest::newRow("faults in both parts")
            << true << "z.htm" << QList<int>{Line(4000, 0), Line(100, 8)} << 0
            << MapFile::BadLineDetail(Line(100, 8), "x");
        // Record 100's entry is 100 * 7919 % 5000.
        QTest::newRow("one place twice, once in each part")
            << false << "z.htm" << none << Line(4000, 8)
            << MapFile::BadLineDetail(Line(4000, 8), "1900");
    }

    void readsBigMapsAsInOrder()
    {
        QFETCH(bool, lf);
        QFETCH(QString, lastUrl);
        QFETCH(QList<int>, broken);
        QFETCH(int, repeated);
        QFETCH(QString, detail);
        constexpr int Count = 5000;
        MapDocument doc = Local();
        std::vector<std::int16_t> order(Count);
        std::vector<std::int16_t> back(Count);
        for (int i = 0; i < Count; ++i) {
            const int x = i % 300;
            const int y = i / 300;
            AddShapeRow(doc, QStringLiteral(" %1 |%2,%3,%4,%3,%4,%5,%2,%5,|p%6.htm|c%6||| 0 |")
                                 .arg(i % 3)
                                 .arg(x)
                                 .arg(y)
                                 .arg(x + 5)
                                 .arg(y + 5)
                                 .arg(i));
            // A permutation that is not its own inverse: 7919 is prime to Count.
            order[i] = static_cast<std::int16_t>(i * 7919 % Count);
            back[order[i]] = static_cast<std::int16_t>(i);
        }
        doc.Shape(Count - 1).URL = lastUrl;
        const QString path = m_dir.filePath(QStringLiteral("big.imp"));
        const QByteArray written = MapFile::MapBytes(doc, path, order);
        QList<QByteArray> lines = written.split('\n');
        for (const int line : broken)
            lines[line - 1] = "x\r";
        if (repeated > 0)
            lines[repeated - 1] = lines[Line(100, 8) - 1];
        QByteArray bytes = lines.join('\n');
        if (lf)
            bytes.replace("\r\n", "\n");

        const MapFile::ReadResult read = MapFile::ReadMap(bytes, path);
        QCOMPARE(read.detail, detail);
        QCOMPARE(read.ok, detail.isEmpty());
        if (read.ok) {
            QCOMPARE(read.document.ShapeOrder(), back);
            QCOMPARE(MapFile::MapBytes(read.document, path, order), written);
        }
    }

    // A save replaces a longer file whole and keeps its permissions; one that fails says why
    // and leaves the previous file as it was, with nothing beside it.
    void saveIsWholeOrNothing()
    {
        // The owner's, group's and others' bits; the "user" bits only say what we may do.
        const auto modeOf = [](const QString& path) {
            return QFile::permissions(path) &
                   ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser);
        };
        const auto refused = [&](const QString& name, const MapFile::WriteResult& saved,
                                 const QByteArray& previous, const QString& detail) {
            QVERIFY(!saved.ok);
            QCOMPARE(saved.message, SaveError);
            QCOMPARE(saved.detail, detail);
            QCOMPARE(ReadBytes(m_dir.filePath(name)), previous);
            QCOMPARE(QDir(m_dir.path()).entryList({name + '*'}, QDir::Files), QStringList{name});
        };
        MapDocument doc = SettingsDocument();
        const QString path = m_dir.filePath(QStringLiteral("whole.imp"));
        QVERIFY(WriteBytes(path, QByteArray(100000, 'x')));
        const QFile::Permissions ownerAndGroup =
            QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::WriteGroup;
        QVERIFY(QFile::setPermissions(path, ownerAndGroup));
        QVERIFY(MapFile::SaveMap(doc, path).ok);
        const QByteArray previous = MapFile::MapBytes(doc, path);
        QCOMPARE(ReadBytes(path), previous);
        QCOMPARE(modeOf(path), ownerAndGroup);

        // A file-size limit makes the write fail part way, as a full disk would; the cause
        // comes beside the message, in the system's words.
        doc.MapName = QString(4096, QLatin1Char('m'));
        MapFile::WriteResult saved;
        {
            const FileSizeLimit limit(1024);
            QVERIFY(limit.Active());
            saved = MapFile::SaveMap(doc, path);
        }
        refused(QStringLiteral("whole.imp"), saved, previous, QStringLiteral("File too large"));

        // Read-only is refused, for root too.
        const QString locked = m_dir.filePath(QStringLiteral("locked.imp"));
        QVERIFY(WriteBytes(locked, "old"));
        const QFile::Permissions readOnly = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
        QVERIFY(QFile::setPermissions(locked, readOnly));
        refused(QStringLiteral("locked.imp"), MapFile::SaveMap(doc, locked), "old",
                QStringLiteral("\"%1\" is read-only.").arg(locked));
        QCOMPARE(modeOf(locked), readOnly);
    }

private:
    // The file line (from 1) of line Of of shape Record's record: 22 lines of settings and
    // the shape count come first, then 9 lines a shape.
    static int Line(int Record, int Of) { return 24 + 9 * Record + Of; }
    MapDocument Local() const { return SettingsDocument(m_dir.path() + QLatin1Char('/')); }
    // A valid two-shape map over dir/pic.png, as lines without line ends.
    QStringList ValidLines() const
    {
        MapDocument doc = Local();
        AddShape(doc, RectangleRow);
        AddShape(doc, PolygonRow);
        return MapFile::MapText(doc, m_dir.filePath("map.imp")).chopped(2).split("\r\n");
    }

    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(TestMapFile)
#include "tst_mapfile.moc"
