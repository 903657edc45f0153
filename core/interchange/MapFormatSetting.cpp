#include "core/interchange/MapFormatSetting.h"

#include <QSettings>

namespace {

const QString Key = QStringLiteral("code/format");

} // namespace

MapFormat MapFormatSetting::Load()
{
    // Anything unreadable falls back to the classic form, the default everywhere.
    return MapFormats::FromName(QSettings().value(Key).toString()).value_or(MapFormat::Classic);
}

void MapFormatSetting::Save(MapFormat Format)
{
    QSettings().setValue(Key, MapFormats::Name(Format));
}
