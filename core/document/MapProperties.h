#pragma once

#include <QString>
#include <cstdint>

class MapDocument;

// The map-level fields a user edits (names, colours, grid, image size, default area),
// without the view's zoom and the loaded picture: what an undo step keeps of the map
// itself.
struct MapProperties
{
    std::int32_t FocusColor = 0;
    std::int32_t NonFocusColor = 0;
    std::int32_t BorderColor = 0;
    double GridSpacing = 0.0;
    std::int32_t GridColor = 0;
    std::int32_t GridStyle = 0;
    std::int16_t GridColorNum = 0;
    bool ShouldDrawGrid = false;
    bool GridSnap = false;
    std::int32_t RealWidth = 0;
    std::int32_t RealHeight = 0;
    std::int32_t SWidth = 0;
    std::int32_t SHeight = 0;
    QString DefURL;
    QString DefComment;
    QString DefTarget;
    QString DefStatus;
    QString DefAlert;
    std::int16_t DefAlertVal = 0;
    QString MapName;
    std::int16_t MapStyle = 0;
    QString Target;
    std::int16_t MapOnClick = 0;
    std::int16_t MapBorder = 0;
    QString ImageName;
    QString ImagePath;

    static MapProperties Of(const MapDocument& Document);
    void ApplyTo(MapDocument& Document) const;
    // True when the picture on screen must be rebuilt to show the other's values
    // (image size or grid).
    bool ViewDiffers(const MapProperties& Other) const;
    std::size_t Cost() const;
    bool operator==(const MapProperties& Other) const;
    bool operator!=(const MapProperties& Other) const { return !(*this == Other); }
};
