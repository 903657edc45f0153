#pragma once

#include <QString>

class ModalUi;
class ShapeCanvas;

// What a map window needs of the frame that holds it. The frame implements it; tests
// use a small fake.
class CanvasHost
{
public:
    enum class DrawingMode { Pointer, Rectangle, Circle, Polygon };

    virtual ~CanvasHost() = default;
    // The selected mode button (read at every press).
    virtual DrawingMode CurrentDrawingMode() const = 0;
    // First panel of the status bar.
    virtual void SetStatusText(const QString& Text) = 0;
    virtual ShapeCanvas* ActiveMapWindow() const = 0;
    // Enables or disables every command that needs an open map.
    virtual void SetMapCommandsEnabled(bool Enabled) = 0;
    virtual ModalUi& Dialogs() = 0;
    // The properties dialog on tab TheIndex (1 the map, 2.. the shapes, last the
    // default area), applied to Canvas on OK.
    virtual void ShowShapeProperties(ShapeCanvas& Canvas, int TheIndex) = 0;
    // The "Map Code" window with Code, modal.
    virtual void ShowGeneratedCode(const QString& Code) = 0;
    // The URL checker on Canvas's map, modal.
    virtual void ShowUrlChecker(ShapeCanvas& Canvas) = 0;
};
