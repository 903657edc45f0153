#pragma once

// A map window with thousands of shapes, for the editor's benchmarks.

#include "bench/Ratio.h"
#include "core/base/ModalUi.h"
#include "core/document/CanvasHost.h"
#include "ui/canvas/CanvasSurface.h"
#include "ui/canvas/ShapeCanvas.h"

#include <QApplication>
#include <QPainter>
#include <QRandomGenerator>
#include <benchmark/benchmark.h>
#include <memory>

class SilentUi : public ModalUi
{
public:
    void Message(const QString&, Icon) override {}
    bool Question(const QString&) override { return true; }
    QString AskForPicture() override { return {}; }
    QString AskForMapToOpen() override { return {}; }
    QString AskForMapNameToSave() override { return {}; }
    std::optional<QString> Prompt(const QString&, const QString&, const QString&) override
    {
        return std::nullopt;
    }
    bool OpenWithDesktop(const QString&) override { return false; }
};

class BenchHost : public CanvasHost
{
public:
    SilentUi ui;
    ShapeCanvas* active = nullptr;
    DrawingMode CurrentDrawingMode() const override { return DrawingMode::Pointer; }
    void SetStatusText(const QString&) override {}
    ShapeCanvas* ActiveMapWindow() const override { return active; }
    void SetMapCommandsEnabled(bool) override {}
    ModalUi& Dialogs() override { return ui; }
    void ShowShapeProperties(ShapeCanvas&, int) override {}
    void ShowGeneratedCode(const QString&) override {}
    void ShowUrlChecker(ShapeCanvas&) override {}
};

// A 1600 x 1200 map with Count rectangles, circles and polygons scattered over it; the
// window shows an 800 x 600 part.
struct BenchMap
{
    BenchHost host;
    std::unique_ptr<ShapeCanvas> canvas;

    explicit BenchMap(int Count)
    {
        canvas = std::make_unique<ShapeCanvas>(host);
        host.active = canvas.get();
        canvas->resize(840, 640);
        canvas->show();
        QImage picture(1600, 1200, QImage::Format_RGB32);
        picture.fill(QColor(230, 220, 200));
        canvas->SetNewPicture(picture, QStringLiteral("/bench/picture.png"));
        QRandomGenerator random(7);
        std::vector<PatShape> shapes(static_cast<std::size_t>(Count));
        std::vector<std::int16_t> order(static_cast<std::size_t>(Count));
        for (int i = 0; i < Count; ++i) {
            PatShape& s = shapes[static_cast<std::size_t>(i)];
            const int x = random.bounded(1560);
            const int y = random.bounded(1160);
            const int w = 8 + random.bounded(32);
            const int h = 8 + random.bounded(32);
            const auto type = static_cast<std::int16_t>(i % 3);
            s.SetInfo(nullptr, 0, type == Polygon ? std::int16_t{Rectangle} : type, 1.0, x, y);
            s.MorphTo(type);
            s.SetPoint(1, x + w, y);
            s.SetPoint(2, x + w, y + h);
            s.SetPoint(3, x, y + h);
            order[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(i);
        }
        MapDocument& doc = canvas->Document();
        doc.AdoptShapes(std::move(shapes), std::move(order));
        doc.SetShapeColors();
        // A shape of known place on top, to drag.
        PatShape grab;
        grab.SetInfo(nullptr, 0, Rectangle, 1.0, 0, 0);
        grab.SetPoint(1, 60, 0);
        grab.SetPoint(2, 60, 40);
        grab.SetPoint(3, 0, 40);
        doc.DeleteShape();
        doc.SetNewShape(grab);
        QApplication::processEvents();
    }
};

// The least a repaint of Area can cost: filling it with the picture alone.
inline double PictureFillMs(const QImage& Picture, const QRect& Area)
{
    QImage target(Area.size(), QImage::Format_RGB32);
    return Ratio::Time([&] {
        QPainter painter(&target);
        painter.drawImage(QPoint(0, 0), Picture, Area);
        painter.end();
        benchmark::DoNotOptimize(target.constBits());
    });
}
