#include "core/base/Module1.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace Module1 {

namespace {

qsizetype LastSeparator(const QString& path)
{
    return std::max(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\')));
}

QString WithSeparator(QString folder)
{
    if (!folder.endsWith(QLatin1Char('/')) && !folder.endsWith(QLatin1Char('\\')))
        folder += QDir::separator();
    return folder;
}

} // namespace

QString CutAtNul(const QString& text)
{
    const qsizetype nul = text.indexOf(QChar(0));
    return nul < 0 ? text : text.left(nul);
}

QString FileNameOfPath(const QString& path)
{
    return path.mid(LastSeparator(path) + 1);
}

QString FolderOfPath(const QString& path)
{
    return path.left(LastSeparator(path) + 1);
}

QString FileTitle(const QString& path)
{
    return FileNameOfPath(path).trimmed();
}

QString ApplicationFolder()
{
    const QString dir = QCoreApplication::instance() != nullptr
                            ? QCoreApplication::applicationDirPath()
                            : QDir::currentPath();
    return WithSeparator(QDir::toNativeSeparators(dir));
}

QString WritableProgramFolder()
{
    const QString own = ApplicationFolder();
    if (QFileInfo(own).isWritable())
        return own;
    const QString data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QDir().mkpath(data);
    return WithSeparator(QDir::toNativeSeparators(data));
}

int RedOf(std::int32_t colour)
{
    return colour & 255;
}

int GreenOf(std::int32_t colour)
{
    return (colour / 256) & 255;
}

int BlueOf(std::int32_t colour)
{
    return (colour / 65536) & 255;
}

QString ColorToHex(std::int32_t colour)
{
    const auto part = [](int value) {
        return QStringLiteral("%1").arg(value, 2, 16, QLatin1Char('0')).toUpper();
    };
    return part(colour & 255) + part((colour >> 8) & 255) + part((colour >> 16) & 255);
}

bool PointInRect(std::int32_t x, std::int32_t y, std::int32_t left, std::int32_t top,
                 std::int32_t right, std::int32_t bottom)
{
    return left <= x && x <= right && top <= y && y <= bottom;
}

} // namespace Module1
