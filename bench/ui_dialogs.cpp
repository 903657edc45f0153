#include "bench/BenchMap.h"
#include "bench/UiBenchMain.h"
#include "ui/dialogs/frmOptions.h"

#include <QElapsedTimer>
#include <benchmark/benchmark.h>

namespace {

// Opening Properties as a double click does: the dialog is built, filled, opened on
// the middle shape's tab and shown until its first paint.
double OpenProperties(BenchMap& map, int Tab)
{
    QElapsedTimer timer;
    timer.start();
    {
        frmOptions dialog(*map.canvas, map.host.ui);
        dialog.OpenOnTab(Tab);
        dialog.show();
        dialog.repaint();
        QApplication::processEvents();
        dialog.Model().SelectTab(1);
        dialog.hide();
    }
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

void BM_PropertiesOpen(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    BenchMap map(count);
    BenchMap empty(0);
    double baseline = 0.0;
    double measured = 0.0;
    for (auto _ : state) {
        state.PauseTiming();
        baseline += OpenProperties(empty, 1);
        state.ResumeTiming();
        measured += OpenProperties(map, count / 2 + 2);
    }
    // Baseline: the same dialog on a map without shapes.
    state.counters["baseline_ms"] = baseline / static_cast<double>(state.iterations());
    state.counters["ratio"] = measured / baseline;
}

} // namespace

BENCHMARK(BM_PropertiesOpen)->Arg(1000)->Arg(32767)->Unit(benchmark::kMillisecond);

VANTREL_UI_BENCHMARK_MAIN()
