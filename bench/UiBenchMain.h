#pragma once

#include <QApplication>
#include <QByteArray>
#include <benchmark/benchmark.h>

// BENCHMARK_MAIN for benchmarks that need widgets: an offscreen QApplication around the run.
#define VANTREL_UI_BENCHMARK_MAIN()                                                                \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        qputenv("QT_QPA_PLATFORM", "offscreen");                                                   \
        QApplication app(argc, argv);                                                              \
        benchmark::Initialize(&argc, argv);                                                        \
        benchmark::RunSpecifiedBenchmarks();                                                       \
        benchmark::Shutdown();                                                                     \
        return 0;                                                                                  \
    }
