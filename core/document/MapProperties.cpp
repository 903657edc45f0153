#include "core/document/MapProperties.h"

#include "core/document/MapDocument.h"

#include <tuple>

namespace {

auto Fields(const MapProperties& p)
{
    return std::tie(p.FocusColor, p.NonFocusColor, p.BorderColor, p.GridSpacing, p.GridColor,
                    p.GridStyle, p.GridColorNum, p.ShouldDrawGrid, p.GridSnap, p.RealWidth,
                    p.RealHeight, p.SWidth, p.SHeight, p.DefURL, p.DefComment, p.DefTarget,
                    p.DefStatus, p.DefAlert, p.DefAlertVal, p.MapName, p.MapStyle, p.Target,
                    p.MapOnClick, p.MapBorder, p.ImageName, p.ImagePath);
}

template <class Source, class Target> void Copy(const Source& s, Target& t)
{
    t.FocusColor = s.FocusColor;
    t.NonFocusColor = s.NonFocusColor;
    t.BorderColor = s.BorderColor;
    t.GridSpacing = s.GridSpacing;
    t.GridColor = s.GridColor;
    t.GridStyle = s.GridStyle;
    t.GridColorNum = s.GridColorNum;
    t.ShouldDrawGrid = s.ShouldDrawGrid;
    t.GridSnap = s.GridSnap;
    t.RealWidth = s.RealWidth;
    t.RealHeight = s.RealHeight;
    t.SWidth = s.SWidth;
    t.SHeight = s.SHeight;
    t.DefURL = s.DefURL;
    t.DefComment = s.DefComment;
    t.DefTarget = s.DefTarget;
    t.DefStatus = s.DefStatus;
    t.DefAlert = s.DefAlert;
    t.DefAlertVal = s.DefAlertVal;
    t.MapName = s.MapName;
    t.MapStyle = s.MapStyle;
    t.Target = s.Target;
    t.MapOnClick = s.MapOnClick;
    t.MapBorder = s.MapBorder;
    t.ImageName = s.ImageName;
    t.ImagePath = s.ImagePath;
}

std::size_t TextCost(const QString& s)
{
    return static_cast<std::size_t>(s.capacity()) * sizeof(QChar);
}

} // namespace

MapProperties MapProperties::Of(const MapDocument& Document)
{
    MapProperties p;
    Copy(Document, p);
    return p;
}

void MapProperties::ApplyTo(MapDocument& Document) const
{
    Copy(*this, Document);
}

bool MapProperties::ViewDiffers(const MapProperties& Other) const
{
    return std::tie(SWidth, SHeight, RealWidth, RealHeight, GridSpacing, GridColor, GridStyle,
                    ShouldDrawGrid) !=
           std::tie(Other.SWidth, Other.SHeight, Other.RealWidth, Other.RealHeight,
                    Other.GridSpacing, Other.GridColor, Other.GridStyle, Other.ShouldDrawGrid);
}

std::size_t MapProperties::Cost() const
{
    return sizeof(MapProperties) + TextCost(DefURL) + TextCost(DefComment) + TextCost(DefTarget) +
           TextCost(DefStatus) + TextCost(DefAlert) + TextCost(MapName) + TextCost(Target) +
           TextCost(ImageName) + TextCost(ImagePath);
}

bool MapProperties::operator==(const MapProperties& Other) const
{
    return Fields(*this) == Fields(Other);
}
