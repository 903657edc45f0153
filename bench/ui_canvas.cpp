#include "bench/BenchMap.h"
#include "bench/UiBenchMain.h"
#include "core/forms/ZoomStep.h"
#include "ui/frame/ShapeClipboard.h"

#include <QMouseEvent>
#include <QPainter>
#include <benchmark/benchmark.h>

// What the user waits for in a map window of 1,000 and 32,767 shapes. Every case reports,
// as "ratio", its time over filling the same area with the picture alone, timed in the
// same run: the least any repaint can cost.

namespace {

void SendMouse(QWidget* w, QEvent::Type type, QPoint at, Qt::MouseButtons buttons)
{
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, QPointF(at), QPointF(w->mapToGlobal(at)), button, buttons,
                      Qt::NoModifier);
    QApplication::sendEvent(w, &event);
}

QRect VisiblePart(const CanvasSurface& surface)
{
    return surface.visibleRegion().boundingRect();
}

// Runs Step for every iteration, timed together with the repaint it causes; Undo (not
// timed) puts the map back as it was.
template <class Step, class Undo>
void MeasureWithRepaint(benchmark::State& state, BenchMap& map, Step&& step, Undo&& undo)
{
    CanvasSurface& surface = map.canvas->Surface();
    Ratio clock;
    for (auto _ : state) {
        clock.measured += Ratio::Time([&] {
            step();
            QApplication::processEvents();
        });
        state.PauseTiming();
        undo();
        QApplication::processEvents();
        clock.baseline += PictureFillMs(surface.Background(), VisiblePart(surface));
        state.ResumeTiming();
    }
    clock.Report(state);
}

void BM_FullRepaint(benchmark::State& state)
{
    BenchMap map(static_cast<int>(state.range(0)));
    CanvasSurface& surface = map.canvas->Surface();
    QImage target(surface.size(), QImage::Format_RGB32);
    Ratio clock;
    for (auto _ : state) {
        clock.measured += Ratio::Time([&] {
            QPainter painter(&target);
            surface.Render(painter, QRegion(surface.rect()));
            painter.end();
            benchmark::DoNotOptimize(target.constBits());
        });
        state.PauseTiming();
        clock.baseline += PictureFillMs(surface.Background(), surface.rect());
        state.ResumeTiming();
    }
    clock.Report(state);
}

// The whole surface drawn from nothing, as after a new picture: every shape is drawn.
void BM_FullRepaintCold(benchmark::State& state)
{
    BenchMap map(static_cast<int>(state.range(0)));
    CanvasSurface& surface = map.canvas->Surface();
    QImage target(surface.size(), QImage::Format_RGB32);
    Ratio clock;
    for (auto _ : state) {
        state.PauseTiming();
        surface.SetBackground(surface.Background());
        clock.baseline += PictureFillMs(surface.Background(), surface.rect());
        state.ResumeTiming();
        clock.measured += Ratio::Time([&] {
            QPainter painter(&target);
            surface.Render(painter, QRegion(surface.rect()));
            painter.end();
            benchmark::DoNotOptimize(target.constBits());
        });
    }
    clock.Report(state);
}

// Times one pointer move to At(step) per iteration, with Buttons held, against filling the
// visible part with the picture alone.
template <typename Place>
void TimeMoves(benchmark::State& state, CanvasSurface& surface, Qt::MouseButtons Buttons, Place At)
{
    int step = 0;
    Ratio clock;
    for (auto _ : state) {
        const QPoint at = At(step++);
        clock.measured += Ratio::Time([&] {
            SendMouse(&surface, QEvent::MouseMove, at, Buttons);
            QApplication::processEvents();
        });
        state.PauseTiming();
        clock.baseline += PictureFillMs(surface.Background(), VisiblePart(surface));
        state.ResumeTiming();
    }
    clock.Report(state);
}

void BM_DragStep(benchmark::State& state)
{
    BenchMap map(static_cast<int>(state.range(0)));
    CanvasSurface& surface = map.canvas->Surface();
    SendMouse(&surface, QEvent::MouseButtonPress, {30, 20}, Qt::LeftButton);
    // Back and forth, so the shape stays where the picture is.
    TimeMoves(state, surface, Qt::LeftButton,
              [](int step) { return QPoint(30 + (step % 2 == 0 ? 3 : 0), 20); });
    SendMouse(&surface, QEvent::MouseButtonRelease, {30, 20}, Qt::NoButton);
}

// A pointer move with no button held over a crowded part of the map: the pointer's shape
// shows what a press would do there, so every move looks for the shape under it.
void BM_HoverStep(benchmark::State& state)
{
    BenchMap map(static_cast<int>(state.range(0)));
    TimeMoves(state, map.canvas->Surface(), Qt::NoButton,
              [](int step) { return QPoint(100 + step % 600, 100 + step * 7 % 400); });
}

// What the user waits for when the window is repainted with nothing changed.
void BM_WindowRepaint(benchmark::State& state)
{
    BenchMap map(static_cast<int>(state.range(0)));
    CanvasSurface& surface = map.canvas->Surface();
    Ratio clock;
    for (auto _ : state) {
        clock.measured += Ratio::Time([&] { surface.repaint(); });
        state.PauseTiming();
        clock.baseline += PictureFillMs(surface.Background(), VisiblePart(surface));
        state.ResumeTiming();
    }
    clock.Report(state);
}

// The visible window drawn from nothing (a new picture): every shape in it is drawn.
void BM_WindowRepaintCold(benchmark::State& state)
{
    BenchMap map(static_cast<int>(state.range(0)));
    CanvasSurface& surface = map.canvas->Surface();
    Ratio clock;
    for (auto _ : state) {
        state.PauseTiming();
        clock.baseline += PictureFillMs(surface.Background(), VisiblePart(surface));
        state.ResumeTiming();
        clock.measured += Ratio::Time([&] {
            surface.SetBackground(surface.Background());
            surface.repaint();
        });
    }
    clock.Report(state);
}

// A press that picks the shape under the pointer, brings it to the top and repaints
// what changed.
void BM_PressAndRelease(benchmark::State& state)
{
    BenchMap map(static_cast<int>(state.range(0)));
    CanvasSurface& surface = map.canvas->Surface();
    Ratio clock;
    for (auto _ : state) {
        clock.measured += Ratio::Time([&] {
            SendMouse(&surface, QEvent::MouseButtonPress, {700, 500}, Qt::LeftButton);
            SendMouse(&surface, QEvent::MouseButtonRelease, {700, 500}, Qt::NoButton);
            QApplication::processEvents();
        });
        state.PauseTiming();
        clock.baseline += PictureFillMs(surface.Background(), VisiblePart(surface));
        state.ResumeTiming();
    }
    clock.Report(state);
}

// View > Zoom In from 1.0 to 1.1 (every shape rescaled, the picture stretched again).
void BM_ZoomStep(benchmark::State& state)
{
    BenchMap map(static_cast<int>(state.range(0)));
    MapDocument& doc = map.canvas->Document();
    MeasureWithRepaint(
        state, map,
        [&] {
            const ZoomStep::Result in = ZoomStep::In(doc.ZoomLevel, doc.SWidth, doc.SHeight);
            map.canvas->SetZoomLevel(in.NewLevel);
        },
        [&] { map.canvas->SetZoomLevel(1.0); });
}

void BM_Delete(benchmark::State& state)
{
    BenchMap map(static_cast<int>(state.range(0)));
    PatShape held;
    MeasureWithRepaint(
        state, map,
        [&] {
            map.canvas->SetShapeEqualToTopShape(held);
            map.canvas->DeleteShape();
        },
        [&] { map.canvas->SetNewShape(held); });
}

void BM_Cut(benchmark::State& state)
{
    BenchMap map(static_cast<int>(state.range(0)));
    ShapeClipboard clipboard;
    MeasureWithRepaint(
        state, map, [&] { clipboard.Cut(*map.canvas); },
        [&] { clipboard.Paste(*map.canvas, map.host.ui); });
}

void BM_Paste(benchmark::State& state)
{
    BenchMap map(static_cast<int>(state.range(0)));
    ShapeClipboard clipboard;
    clipboard.Copy(*map.canvas);
    MeasureWithRepaint(
        state, map, [&] { clipboard.Paste(*map.canvas, map.host.ui); },
        [&] { map.canvas->DeleteShape(); });
}

// Bring to top, as the properties dialog does when a shape's tab is chosen.
void BM_BringToTop(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    BenchMap map(count);
    QRandomGenerator random(11);
    MeasureWithRepaint(
        state, map,
        [&] {
            map.canvas->ReStackArrayFromOptions(static_cast<std::int16_t>(random.bounded(count)));
        },
        [] {});
}

} // namespace

#define MAP_SIZES ->Arg(1000)->Arg(32767)->Unit(benchmark::kMillisecond)
BENCHMARK(BM_WindowRepaint) MAP_SIZES;
BENCHMARK(BM_WindowRepaintCold) MAP_SIZES;
BENCHMARK(BM_FullRepaint) MAP_SIZES;
BENCHMARK(BM_FullRepaintCold) MAP_SIZES;
BENCHMARK(BM_PressAndRelease) MAP_SIZES;
BENCHMARK(BM_DragStep) MAP_SIZES;
BENCHMARK(BM_HoverStep) MAP_SIZES;
BENCHMARK(BM_ZoomStep) MAP_SIZES;
BENCHMARK(BM_Delete) MAP_SIZES;
BENCHMARK(BM_Cut) MAP_SIZES;
BENCHMARK(BM_Paste) MAP_SIZES;
BENCHMARK(BM_BringToTop) MAP_SIZES;

VANTREL_UI_BENCHMARK_MAIN()
