#pragma once

// Ratios to a baseline timed in the same run, so that figures from a busy machine
// still compare.

#include <QElapsedTimer>
#include <QString>
#include <benchmark/benchmark.h>

// Milliseconds of the measured work and of its baseline, reported as the counters
// baseline_ms (per iteration) and ratio.
struct Ratio
{
    double measured = 0.0;
    double baseline = 0.0;

    template <class Work> static double Time(Work&& work)
    {
        QElapsedTimer timer;
        timer.start();
        work();
        return static_cast<double>(timer.nsecsElapsed()) / 1e6;
    }
    void Report(benchmark::State& state) const
    {
        const double n = static_cast<double>(state.iterations());
        state.counters["baseline_ms"] = baseline / n;
        state.counters["ratio"] = baseline > 0.0 ? measured / baseline : 0.0;
    }
};

// Baseline of the HTML cases: building a string of the same length piece by piece.
inline QString SameLength(qsizetype Length)
{
    QString text;
    const QString piece = QStringLiteral("<area shape=\"rect\" href=\"#\">\n");
    while (text.size() < Length)
        text += piece;
    text.truncate(Length);
    return text;
}
