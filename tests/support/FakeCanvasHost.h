#pragma once

#include "ScriptedModalUi.h"
#include "canvas/CanvasHost.h"

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

// A frame stand-in for map-window tests: a settable drawing mode and active window,
// and a record of everything the window asked of its frame.
class FakeCanvasHost : public CanvasHost
{
public:
    DrawingMode mode = DrawingMode::Pointer;
    ShapeCanvas* active = nullptr;
    QString statusText;
    int statusUpdates = 0;
    QList<bool> commandsEnabled;
    QList<QPair<ShapeCanvas*, int>> propertiesShown;
    QStringList codeShown;
    QList<ShapeCanvas*> urlCheckers;
    ScriptedModalUi ui;

    DrawingMode CurrentDrawingMode() const override { return mode; }
    void SetStatusText(const QString& Text) override
    {
        statusText = Text;
        ++statusUpdates;
    }
    ShapeCanvas* ActiveMapWindow() const override { return active; }
    void SetMapCommandsEnabled(bool Enabled) override { commandsEnabled.append(Enabled); }
    ModalUi& Dialogs() override { return ui; }
    void ShowShapeProperties(ShapeCanvas& Canvas, int TheIndex) override
    {
        propertiesShown.append({&Canvas, TheIndex});
    }
    void ShowGeneratedCode(const QString& Code) override { codeShown.append(Code); }
    void ShowUrlChecker(ShapeCanvas& Canvas) override { urlCheckers.append(&Canvas); }
};
