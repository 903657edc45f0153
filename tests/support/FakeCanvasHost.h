#pragma once

#include "ScriptedModalUi.h"
#include "core/document/CanvasHost.h"
#include "core/document/MapDocument.h"

#include <QStringList>
#include <algorithm>

// A frame stand-in for map-window tests: a settable drawing mode and active window,
// and a record of what the window asked of its frame.
class FakeCanvasHost : public CanvasHost
{
public:
    DrawingMode mode = DrawingMode::Pointer;
    ShapeCanvas* active = nullptr;
    QString statusText;
    int propertiesTab = 0;
    QStringList codeShown;
    ScriptedModalUi ui;

    DrawingMode CurrentDrawingMode() const override { return mode; }
    void SetStatusText(const QString& Text) override { statusText = Text; }
    ShapeCanvas* ActiveMapWindow() const override { return active; }
    void SetMapCommandsEnabled(bool) override {}
    ModalUi& Dialogs() override { return ui; }
    void ShowShapeProperties(ShapeCanvas&, int TheIndex) override { propertiesTab = TheIndex; }
    void ShowGeneratedCode(const QString& Code) override { codeShown.append(Code); }
    void ShowUrlChecker(ShapeCanvas&) override {}
};

// Empty when the shape list is whole (sizes, stacking order, points as a map file holds
// them) and, once no polygon is being drawn, every shape is finished and coloured by its
// stacking; else what is wrong.
inline QString MapInconsistency(const MapDocument& d)
{
    const std::size_t count = std::size_t(d.ItemCount() + 1);
    std::vector<std::int16_t> order = d.ShapeOrder();
    std::sort(order.begin(), order.end());
    if (order.size() != count || d.Shapes().size() != count)
        return QStringLiteral("list sizes differ from ItemCount");
    for (std::size_t i = 0; i < count; ++i) {
        const PatShape& shape = d.Shapes()[i];
        if (order[i] != std::int16_t(i))
            return QStringLiteral("ShapeOrder is not a permutation");
        // Rectangles and circles are their four corners.
        if (shape.Points().empty() ||
            (shape.GetShapeType() != Polygon && shape.Points().size() != 4))
            return QStringLiteral("shape %1 has %2 points").arg(i).arg(shape.Points().size());
        if (d.PolygonInProgress)
            continue;
        if (!shape.IsShapeDone())
            return QStringLiteral("shape %1 is unfinished").arg(i);
        if (shape.ShapeColor !=
            (i == std::size_t(d.ShapeOrder().front()) ? d.FocusColor : d.NonFocusColor))
            return QStringLiteral("shape %1 has the wrong colour").arg(i);
    }
    return QString();
}
