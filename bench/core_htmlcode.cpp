#include "bench/Ratio.h"
#include "core/document/MapDocument.h"
#include "core/interchange/HtmlImporter.h"
#include "core/interchange/MapCodeGenerator.h"

#include <benchmark/benchmark.h>

namespace {

// A map with Count shapes, cycling through the three kinds, at zoom 2.
MapDocument BigMap(int Count)
{
    MapDocument d;
    d.SWidth = 4000;
    d.SHeight = 3000;
    d.ImageName = QStringLiteral("pic.gif");
    d.ImagePath = QStringLiteral("/srv/maps/");
    d.DefURL = QStringLiteral("rest.htm");
    d.MapStyle = 2;
    d.MapBorder = 2;
    for (int i = 0; i < Count; ++i) {
        PatShape& s = d.Shape(d.AddShape());
        const std::int16_t type = static_cast<std::int16_t>(i % 3);
        s.ResetInfo(type, true, 0, QStringLiteral("page%1.htm").arg(i), QStringLiteral("area"),
                    QString(), QStringLiteral("it's %1").arg(i), 1, QStringLiteral("hi"));
        const int x = (i * 7) % 3900;
        const int y = (i * 13) % 2900;
        if (type == Polygon) {
            s.ResetPoints(5);
            for (std::int16_t p = 0; p <= 5; ++p)
                s.SetPoint(p, x + p * 9, y + (p % 2) * 40);
        } else {
            s.ResetPoints(3);
            s.SetPoint(0, x, y);
            s.SetPoint(1, x + 60, y);
            s.SetPoint(2, x + 60, y + 40);
            s.SetPoint(3, x, y + 40);
        }
        s.SetOpenGeneralInfo(nullptr, 2.0);
    }
    return d;
}

void BM_GenerateMapCode(benchmark::State& state)
{
    MapDocument d = BigMap(static_cast<int>(state.range(0)));
    const qsizetype length =
        MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Test).size();
    Ratio ratio;
    for (auto _ : state) {
        ratio.measured += Ratio::Time([&] {
            const QString code = MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Test);
            benchmark::DoNotOptimize(code.size());
        });
        state.PauseTiming();
        ratio.baseline += Ratio::Time([&] { benchmark::DoNotOptimize(SameLength(length).size()); });
        state.ResumeTiming();
    }
    ratio.Report(state);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_GenerateMapCode)->RangeMultiplier(8)->Range(64, 32767)->Complexity();

void BM_ImportGeneratedCode(benchmark::State& state)
{
    MapDocument d = BigMap(static_cast<int>(state.range(0)) - 1);
    const QString code = MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Viewing);
    MapDocument target;
    Ratio ratio;
    for (auto _ : state) {
        ratio.measured += Ratio::Time([&] {
            const HtmlImporter::Result result = HtmlImporter::Convert(code, target);
            benchmark::DoNotOptimize(result.shapes.size());
        });
        state.PauseTiming();
        ratio.baseline +=
            Ratio::Time([&] { benchmark::DoNotOptimize(SameLength(code.size()).size()); });
        state.ResumeTiming();
    }
    ratio.Report(state);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_ImportGeneratedCode)->RangeMultiplier(8)->Range(64, 32767)->Complexity();

// Thousands of areas followed by a quote that never closes: the error must be found
// without rescanning the rest of the text for every area.
void BM_ImportUnclosedQuote(benchmark::State& state)
{
    QString html = QStringLiteral("<map name=\"m\">\n");
    for (int i = 0; i < state.range(0); ++i)
        html += QStringLiteral("<area shape=rect coords=1,2,3,4 href=x>\n");
    html += QLatin1Char('"');
    MapDocument target;
    Ratio ratio;
    for (auto _ : state) {
        ratio.measured += Ratio::Time([&] {
            const HtmlImporter::Result result = HtmlImporter::Convert(html, target);
            benchmark::DoNotOptimize(result.ok);
        });
        state.PauseTiming();
        ratio.baseline +=
            Ratio::Time([&] { benchmark::DoNotOptimize(SameLength(html.size()).size()); });
        state.ResumeTiming();
    }
    ratio.Report(state);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_ImportUnclosedQuote)->RangeMultiplier(8)->Range(64, 32768)->Complexity();

} // namespace

BENCHMARK_MAIN();
