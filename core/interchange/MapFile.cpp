#include "core/interchange/MapFile.h"

#include "core/base/Module1.h"
#include "core/base/Numeric.h"
#include "core/interchange/MapTextCodec.h"
#include "core/interchange/MapTextReader.h"
#include "core/interchange/MapTextWriter.h"
#include "core/interchange/PictureLoader.h"
#include "core/interchange/WholeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <exception>
#include <future>
#include <limits>
#include <optional>
#include <system_error>
#include <thread>

namespace {

using FormatError = MapTextReader::FormatError;

// Lines of one shape record and of the default-area record.
constexpr qsizetype ShapeRecordLines = 9;
constexpr qsizetype DefaultAreaLines = 6;

MapFile::ReadResult Failed(QStringList messages)
{
    MapFile::ReadResult result;
    result.messages = std::move(messages);
    return result;
}

std::int16_t InRange(std::int16_t value, std::int16_t low, std::int16_t high)
{
    if (value < low || value > high)
        throw FormatError();
    return value;
}

double Positive(double value)
{
    if (!(value > 0.0))
        throw FormatError();
    return value;
}

// The editor only ever sets zoom levels from 1 to 2. Far outside that a view cannot be
// built at all (a surface past the 32-bit range, or of no size), so such a file is refused
// rather than shown as an empty or overflowing window.
// Thrown for a zoom level outside the range a map file may hold.
struct UnviewableZoom
{
    double value;
};

double ViewableZoom(double value)
{
    if (!(value >= MapFile::LeastZoom && value <= MapFile::GreatestZoom))
        throw UnviewableZoom{value};
    return value;
}

// Thrown when the shape count line asks for more shapes than a map can hold.
struct TooManyShapes
{
};

QString WithSeparator(const QString& folder)
{
    return folder.endsWith(QDir::separator()) ? folder : folder + QDir::separator();
}

// The folder the picture is in: ImagePath when it is there, otherwise the map file's own
// folder (a map moved together with its picture). Nothing when it is in neither. A
// relative ImagePath would depend on the working folder, so it counts as elsewhere.
std::optional<QString> PictureFolder(const MapDocument& document, const QString& mapFile)
{
    const QString stored = document.ImagePath + document.ImageName;
    if (QDir::isAbsolutePath(stored) && QFileInfo(stored).isFile())
        return document.ImagePath;
    const QString beside =
        WithSeparator(QDir::toNativeSeparators(QFileInfo(mapFile).absolutePath()));
    if (QFileInfo(beside + document.ImageName).isFile())
        return beside;
    return std::nullopt;
}

void ReadSettings(MapTextReader& in, MapDocument& document)
{
    document.MapName = in.String();
    document.MapStyle = InRange(in.Int16(), 0, 5);
    document.MapOnClick = InRange(in.Int16(), 0, 5);
    document.MapBorder = InRange(in.Int16(), 0, 2);
    document.RealWidth = in.Int32();
    document.RealHeight = in.Int32();
    document.SWidth = in.Int32();
    document.SHeight = in.Int32();
    // Every later rescale divides by the zoom and the grid loops step by the spacing.
    document.ZoomLevel = ViewableZoom(in.Double());
    document.GridSpacing = Positive(in.Double());
    document.GridColor = in.Int32();
    document.GridStyle = in.Int32();
    document.GridColorNum = in.Int16();
    document.ShouldDrawGrid = in.Boolean();
    document.GridSnap = in.Boolean();
    document.FocusColor = in.Int32();
    document.NonFocusColor = in.Int32();
    document.BorderColor = in.Int32();
}

// Reads straight into Shape, a new one in place in the shape list: a big map has tens of
// thousands of shapes.
void ReadShape(MapTextReader& in, const MapDocument& document, ShapeSurface* surface,
               PatShape& shape)
{
    const std::int16_t type = InRange(in.Int16(), Circle, Polygon);
    std::vector<ShapePoint> points = in.Points();
    // Circles and rectangles are always their four corners; a polygon has a vertex at least.
    if (points.empty() || (type != Polygon && points.size() != 4) || points.size() > 32768)
        throw FormatError();
    // A new shape has no points yet, so this only sets its kind; its text values are
    // read straight into it.
    shape.MorphTo(type);
    shape.ShapeBuildingFinished = true;
    shape.ShapeColor = document.NonFocusColor;
    shape.URL = in.String();
    shape.Comment = in.String();
    shape.Target = in.String();
    shape.StatusString = in.String();
    shape.AlertBox = in.Int16();
    shape.AlertString = in.String();
    shape.SetPoints(std::move(points));
    shape.SetOpenGeneralInfo(surface, document.ZoomLevel);
}

// Shape i's record holds ShapeOrder entry i; read back it is taken as the position of
// shape i, the inverse for any order that is not its own inverse.
void PlaceInOrder(std::vector<std::int16_t>& order, std::int16_t position, qsizetype shape)
{
    if (order[static_cast<std::size_t>(position)] != -1)
        throw FormatError();
    order[static_cast<std::size_t>(position)] = static_cast<std::int16_t>(shape);
}

void ReadInOrder(MapTextReader& in, const MapDocument& document, ShapeSurface* surface,
                 std::int16_t N, std::vector<PatShape>& shapes, std::vector<std::int16_t>& order)
{
    const qsizetype count = qsizetype(N) + 1;
    shapes.reserve(static_cast<std::size_t>(count));
    order.assign(static_cast<std::size_t>(count), -1);
    for (qsizetype i = 0; i < count; ++i) {
        ReadShape(in, document, surface, shapes.emplace_back());
        PlaceInOrder(order, InRange(in.Int16(), 0, N), i);
    }
}

// From this many shapes on, the later records are read on another thread:
// below it, starting the thread costs more than it saves.
constexpr qsizetype SplitFrom = 4096;

// The records read in two parts at once, the later on a thread of its own. False, with
// In where it was, for a file with any fault: read in order, the first fault is the one
// named.
bool ReadSplit(MapTextReader& in, const MapDocument& document, ShapeSurface* surface,
               std::int16_t N, std::vector<PatShape>& shapes, std::vector<std::int16_t>& order)
{
    const qsizetype count = qsizetype(N) + 1;
    // The second thread reads its records about a seventh slower (measured); with this
    // share the two end together.
    const qsizetype split = count * 54 / 100;
    std::vector<PatShape> read;
    std::vector<std::int16_t> positions;
    const auto records = [&](MapTextReader& from, qsizetype first, qsizetype last) {
        for (qsizetype i = first; i < last; ++i) {
            ReadShape(from, document, surface, read[static_cast<std::size_t>(i)]);
            positions[static_cast<std::size_t>(i)] = InRange(from.Int16(), 0, N);
        }
    };
    // Whether the lists above were made: the second thread passes over the lines before its
    // part meanwhile.
    std::promise<bool> made;
    qsizetype end = 0;
    try {
        // The future waits for the thread however this scope is left. Each reader is made
        // on the thread that uses it: side by side they would share a cache line.
        std::future<qsizetype> second =
            std::async(std::launch::async, [&, ready = made.get_future()]() mutable {
                MapTextReader tail = in.Fork();
                tail.SkipLines(split * ShapeRecordLines);
                if (!ready.get())
                    return qsizetype(0);
                records(tail, split, count);
                return tail.Position();
            });
        try {
            read.resize(static_cast<std::size_t>(count));
            positions.resize(static_cast<std::size_t>(count));
        } catch (...) {
            made.set_value(false);
            throw;
        }
        made.set_value(true);
        MapTextReader head = in.Fork();
        records(head, 0, split);
        end = second.get();
        std::vector<std::int16_t> placed(static_cast<std::size_t>(count), -1);
        for (qsizetype i = 0; i < count; ++i)
            PlaceInOrder(placed, positions[static_cast<std::size_t>(i)], i);
        order = std::move(placed);
    } catch (const FormatError&) {
        return false;
    } catch (const std::system_error&) {
        // No thread to be had: the records are read in order instead.
        return false;
    }
    shapes = std::move(read);
    in.Resume(end);
    return true;
}

void ReadShapes(MapTextReader& in, MapDocument& document, ShapeSurface* surface)
{
    const std::int32_t wide = in.Int32();
    if (wide > std::numeric_limits<std::int16_t>::max())
        throw TooManyShapes();
    if (wide < -1)
        throw FormatError();
    const auto N = static_cast<std::int16_t>(wide);
    const qsizetype count = qsizetype(N) + 1;
    // A huge count in a short file must cost nothing: every line takes a byte at least. A missing
    // line further on fails its read.
    if (in.BytesLeft() + 1 < count * ShapeRecordLines + DefaultAreaLines)
        throw FormatError();
    std::vector<PatShape> shapes;
    std::vector<std::int16_t> order;
    const bool split = count >= SplitFrom && std::thread::hardware_concurrency() > 1 &&
                       ReadSplit(in, document, surface, N, shapes, order);
    if (!split)
        ReadInOrder(in, document, surface, N, shapes, order);
    document.SetSurface(surface);
    document.AdoptShownShapes(std::move(shapes), std::move(order));
    if (count > 0)
        document.TopShape().ShapeColor = document.FocusColor;
}

// What is wrong with the value the reader failed on, in the user's words.
QString FaultOf(const MapTextReader& in)
{
    if (!in.LastValueMissing()) {
        QString text = in.LastValueText().trimmed();
        if (text.size() > 40)
            text = text.left(40) + QStringLiteral("...");
        return MapFile::BadLineDetail(in.LineOfLastValue(), text);
    }
    const int lines = in.LineCount();
    return lines == 0 ? MapFile::EmptyDetail() : MapFile::EndsEarlyDetail(lines);
}

void ReadDefaultArea(MapTextReader& in, MapDocument& document)
{
    document.DefURL = in.String();
    document.DefComment = in.String();
    document.DefTarget = in.String();
    document.DefStatus = in.String();
    document.DefAlertVal = in.Int16();
    document.DefAlert = in.String();
}

} // namespace

MapFile::ReadResult MapFile::OpenMapFile(const QString& FileNameToOpen, ShapeSurface* Surface)
{
    QFile file(FileNameToOpen);
    const bool read = file.open(QIODevice::ReadOnly);
    const QByteArray bytes = read ? file.readAll() : QByteArray();
    if (!read || file.error() != QFileDevice::NoError) {
        ReadResult failed = Failed({CannotLoadMessage()});
        // Qt's own words for a folder are "file to open is a directory".
        failed.detail = QFileInfo(FileNameToOpen).isDir()
                            ? QStringLiteral("It is a folder, not a map file.")
                            : file.errorString();
        return failed;
    }
    return ReadMap(bytes, FileNameToOpen, Surface);
}

MapFile::ReadResult MapFile::ReadMap(const QByteArray& Bytes, const QString& FileNameToOpen,
                                     ShapeSurface* Surface)
{
    // Outside the try: what it read last says what is wrong with the file.
    std::optional<MapTextReader> reader;
    try {
        std::optional<MapTextCodec::Utf8Text> text = MapTextCodec::DecodeToUtf8(Bytes);
        if (!text) {
            ReadResult failed = Failed({CannotLoadMessage()});
            failed.detail = NotTextDetail();
            return failed;
        }
        MapTextReader& in = reader.emplace(std::move(text->bytes), text->ascii);
        MapDocument document;
        in.String(); // the format version is never checked
        in.String(); // where it was last saved; a copy keeps its original's name here
        document.ImagePath = in.String();
        document.ImageName = in.String();
        const std::optional<QString> pictureFolder = PictureFolder(document, FileNameToOpen);
        if (!pictureFolder) {
            ReadResult failed = Failed({PictureNotFoundMessage(), CannotLoadMessage()});
            failed.missingPicture = document.ImagePath + document.ImageName;
            return failed;
        }
        document.ImagePath = *pictureFolder;

        ReadSettings(in, document);
        ReadShapes(in, document, Surface);
        ReadDefaultArea(in, document);

        // Decoded last: a file that fails above never pays for its picture.
        PictureLoader::Result picture =
            PictureLoader::Load(document.ImagePath + document.ImageName);
        if (!picture.ok) {
            // Which picture, and why: the map itself was read.
            ReadResult failed = Failed({CannotLoadMessage()});
            failed.detail = picture.message + QLatin1Char(' ') + picture.detail;
            return failed;
        }
        document.OrigPic = std::move(picture.image);

        ReadResult result;
        result.ok = true;
        result.document = std::move(document);
        // The map is the file it was opened from: line 2 may name the original of a copy,
        // and Save must never write there.
        result.fileName = QFileInfo(FileNameToOpen).absoluteFilePath();
        return result;
    } catch (const UnviewableZoom& zoom) {
        ReadResult failed = Failed({CannotLoadMessage()});
        failed.detail = UnviewableZoomDetail(zoom.value);
        return failed;
    } catch (const FormatError&) {
        ReadResult failed = Failed({CannotLoadMessage()});
        failed.detail = reader ? FaultOf(*reader) : QString();
        return failed;
    } catch (const TooManyShapes&) {
        ReadResult failed = Failed({CannotLoadMessage()});
        failed.detail = TooManyShapesDetail();
        return failed;
    } catch (const std::exception&) {
        return Failed({CannotLoadMessage()});
    }
}

QString MapFile::MapText(const MapDocument& Document, const QString& FileName)
{
    return MapText(Document, FileName, Document.ShapeOrder());
}

QString MapFile::MapText(const MapDocument& Document, const QString& FileName,
                         const std::vector<std::int16_t>& ShapeOrder)
{
    qsizetype expected = 512;
    for (const PatShape& shape : Document.Shapes()) {
        expected += 64 + qsizetype(shape.Points().size()) * 14 + shape.URL.size() +
                    shape.Comment.size() + shape.Target.size() + shape.StatusString.size() +
                    shape.AlertString.size();
    }
    MapTextWriter out(expected);
    out.String(QStringLiteral("1.0.0"));
    out.String(FileName);
    out.String(Document.ImagePath);
    out.String(Document.ImageName);
    out.String(Document.MapName);
    out.Integer(Document.MapStyle);
    out.Integer(Document.MapOnClick);
    out.Integer(Document.MapBorder);
    out.Integer(Document.RealWidth);
    out.Integer(Document.RealHeight);
    out.Integer(Document.SWidth);
    out.Integer(Document.SHeight);
    out.Double(Document.ZoomLevel);
    out.Double(Document.GridSpacing);
    out.Integer(Document.GridColor);
    out.Integer(Document.GridStyle);
    out.Integer(Document.GridColorNum);
    out.Boolean(Document.ShouldDrawGrid);
    out.Boolean(Document.GridSnap);
    out.Integer(Document.FocusColor);
    out.Integer(Document.NonFocusColor);
    out.Integer(Document.BorderColor);
    out.Integer(Document.ItemCount());
    const std::vector<PatShape>& shapes = Document.Shapes();
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        const PatShape& shape = shapes[i];
        out.Integer(shape.GetShapeType());
        out.Points(shape.Points());
        out.String(shape.URL);
        out.String(shape.Comment);
        out.String(shape.Target);
        out.String(shape.StatusString);
        out.Integer(shape.AlertBox != 0 ? -1 : 0);
        out.String(shape.AlertString);
        out.Integer(ShapeOrder[i]);
    }
    out.String(Document.DefURL);
    out.String(Document.DefComment);
    out.String(Document.DefTarget);
    out.String(Document.DefStatus);
    out.Integer(Document.DefAlertVal != 0 ? -1 : 0);
    out.String(Document.DefAlert);
    return out.Text();
}

QByteArray MapFile::MapBytes(const MapDocument& Document, const QString& FileName)
{
    return MapTextCodec::Encode(MapText(Document, FileName));
}

QByteArray MapFile::MapBytes(const MapDocument& Document, const QString& FileName,
                             const std::vector<std::int16_t>& ShapeOrder)
{
    return MapTextCodec::Encode(MapText(Document, FileName, ShapeOrder));
}

MapFile::WriteResult MapFile::SaveMap(const MapDocument& Document, const QString& FileName)
{
    WriteResult result;
    const QFileInfo existing(FileName);
    // Root may write anything, so the mode bits decide: a file nobody may write to was
    // made read-only on purpose and is not replaced behind its owner's back.
    const QFile::Permissions writeBits = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    if (existing.isFile() && (!existing.isWritable() || !(existing.permissions() & writeBits))) {
        result.message = SaveErrorMessage();
        result.detail = ReadOnlyDetail(QDir::toNativeSeparators(FileName));
        return result;
    }
    // The new file takes the old one's mode before it replaces it.
    const WholeFile::Result written = WholeFile::Replace(
        FileName, MapBytes(Document, FileName),
        existing.isFile() ? std::optional(existing.permissions()) : std::nullopt);
    if (!written.ok) {
        result.message = SaveErrorMessage();
        result.detail = written.detail;
        return result;
    }
    result.ok = true;
    return result;
}
