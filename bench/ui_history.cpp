#include "bench/BenchMap.h"
#include "bench/UiBenchMain.h"

#include <QKeyEvent>
#include <benchmark/benchmark.h>

// Undo and redo in a map window of 32,767 shapes, with the repaint each causes, and what
// the history holds after long runs of edits. Times report "ratio" over filling the
// visible part with the picture alone, timed in the same run.

namespace {

QRect VisiblePart(const CanvasSurface& surface)
{
    return surface.visibleRegion().boundingRect();
}

// The top shape grabbed, as a click on it leaves it, for the arrow keys to move.
void Grab(BenchMap& map)
{
    map.canvas->setWindowTitle(QStringLiteral("Bench[*]"));
    map.canvas->SelectShape(map.canvas->Document().ShapeOrder().front());
    map.canvas->UndoStack().clear();
}

void Key(ShapeCanvas& map, int key)
{
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(&map.Surface(), &press);
    QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
    QApplication::sendEvent(&map.Surface(), &release);
}

// Undo and redo in turn of the step on top of the history, each with its repaint.
void MeasureUndoRedo(benchmark::State& state, BenchMap& map)
{
    CanvasSurface& surface = map.canvas->Surface();
    Ratio clock;
    bool undo = true;
    for (auto _ : state) {
        clock.measured += Ratio::Time([&] {
            if (undo)
                map.canvas->Undo();
            else
                map.canvas->Redo();
            QApplication::processEvents();
        });
        undo = !undo;
        state.PauseTiming();
        clock.baseline += PictureFillMs(surface.Background(), VisiblePart(surface));
        state.ResumeTiming();
    }
    clock.Report(state);
}

// A one-shape step: a shape's place changed through the history, as the Shapes panel's
// geometry editor does it.
void BM_UndoRedoOneShape(benchmark::State& state)
{
    BenchMap map(static_cast<int>(state.range(0)));
    Grab(map);
    const std::int16_t index = 100;
    map.canvas->RecordEdit(QStringLiteral("Edit Geometry"), {index}, false, [&] {
        PatShape& shape = map.canvas->Document().Shape(index);
        shape.SetPoint(0, shape.Points()[0].x - 5, shape.Points()[0].y - 5);
    });
    MeasureUndoRedo(state, map);
}

// A merged run of arrow-key nudges of the top shape.
void BM_UndoRedoNudge(benchmark::State& state)
{
    BenchMap map(static_cast<int>(state.range(0)));
    Grab(map);
    for (int i = 0; i < 20; ++i)
        Key(*map.canvas, Qt::Key_Right);
    MeasureUndoRedo(state, map);
}

// Bytes held after 1,000 nudges (merged into one step) at 32,767 shapes.
void BM_HistoryAfterNudges(benchmark::State& state)
{
    BenchMap map(static_cast<int>(state.range(0)));
    Grab(map);
    Ratio clock;
    for (auto _ : state) {
        state.PauseTiming();
        map.canvas->UndoStack().clear();
        state.ResumeTiming();
        clock.measured += Ratio::Time([&] {
            for (int i = 0; i < 1000; ++i)
                Key(*map.canvas, i % 2 == 0 ? Qt::Key_Right : Qt::Key_Down);
        });
        state.PauseTiming();
        clock.baseline +=
            PictureFillMs(map.canvas->Surface().Background(), VisiblePart(map.canvas->Surface()));
        state.ResumeTiming();
    }
    clock.Report(state);
    state.counters["steps"] = map.canvas->UndoStack().count();
    state.counters["history_kB"] = double(map.canvas->History().Cost()) / 1024.0;
}

// Bytes held after 100 imports, each replacing every shape with a 1,000-shape page.
void BM_HistoryAfterImports(benchmark::State& state)
{
    BenchMap map(1000);
    Grab(map);
    QRandomGenerator random(11);
    std::vector<PatShape> page = map.canvas->Document().Shapes();
    Ratio clock;
    for (auto _ : state) {
        state.PauseTiming();
        map.canvas->UndoStack().clear();
        state.ResumeTiming();
        clock.measured += Ratio::Time([&] {
            for (int i = 0; i < 100; ++i) {
                for (PatShape& shape : page)
                    shape.URL = QStringLiteral("https://example.com/%1/%2.html")
                                    .arg(i)
                                    .arg(random.bounded(100000));
                map.canvas->RecordEditAll(QStringLiteral("Import HTML"), true, [&] {
                    map.canvas->Document().ReSetShapeArray(page, std::int16_t(page.size() - 1));
                });
            }
        });
        state.PauseTiming();
        clock.baseline +=
            PictureFillMs(map.canvas->Surface().Background(), VisiblePart(map.canvas->Surface()));
        state.ResumeTiming();
    }
    clock.Report(state);
    state.counters["steps"] = map.canvas->UndoStack().count();
    state.counters["history_MB"] = double(map.canvas->History().Cost()) / 1048576.0;
}

} // namespace

BENCHMARK(BM_UndoRedoOneShape)->Arg(1000)->Arg(32767)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_UndoRedoNudge)->Arg(1000)->Arg(32767)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HistoryAfterNudges)->Arg(32767)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HistoryAfterImports)->Iterations(1)->Unit(benchmark::kMillisecond);

VANTREL_UI_BENCHMARK_MAIN()
