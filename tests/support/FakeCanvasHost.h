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
    QList<bool> commandsEnabled;
    int propertiesShown = 0;
    int propertiesTab = 0;
    QStringList codeShown;
    ScriptedModalUi ui;

    DrawingMode CurrentDrawingMode() const override { return mode; }
    void SetStatusText(const QString& Text) override { statusText = Text; }
    ShapeCanvas* ActiveMapWindow() const override { return active; }
    void SetMapCommandsEnabled(bool Enabled) override { commandsEnabled.append(Enabled); }
    ModalUi& Dialogs() override { return ui; }
    void ShowShapeProperties(ShapeCanvas&, int TheIndex) override
    {
        ++propertiesShown;
        propertiesTab = TheIndex;
    }
    void ShowGeneratedCode(const QString& Code) override { codeShown.append(Code); }
    void ShowUrlChecker(ShapeCanvas&) override {}
};

// Empty when the shape list is whole and coloured by its stacking, else what is wrong.
inline QString MapInconsistency(const MapDocument& d)
{
    std::vector<std::int16_t> order = d.ShapeOrder();
    std::sort(order.begin(), order.end());
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (order[i] != std::int16_t(i))
            return QStringLiteral("ShapeOrder is not a permutation");
    }
    if (order.size() != d.Shapes().size() || int(order.size()) != d.ItemCount() + 1)
        return QStringLiteral("list sizes differ from ItemCount");
    for (int i = 0; i <= d.ItemCount() && !d.PolygonInProgress; ++i) {
        if (d.Shape(std::int16_t(i)).ShapeColor !=
            (i == d.ShapeOrder().front() ? d.FocusColor : d.NonFocusColor))
            return QStringLiteral("shape %1 has the wrong colour").arg(i);
    }
    return QString();
}
