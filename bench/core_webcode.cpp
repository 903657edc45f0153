#include "core/document/MapDocument.h"
#include "core/interchange/FormattedMapCode.h"
#include "core/interchange/MapCheck.h"

#include <benchmark/benchmark.h>

namespace {

// A map with Count shapes, cycling through the three kinds, at zoom 2, overlapping.
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
        s.ResetInfo(type, true, 0, QStringLiteral("page%1.htm?a=1&b=2").arg(i),
                    QStringLiteral("area \"%1\"").arg(i), QString(),
                    QStringLiteral("it's %1").arg(i), 1, QStringLiteral("hi <there>"));
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

void Generate(benchmark::State& state, MapFormat format)
{
    MapDocument d = BigMap(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const FormattedMapCode code =
            FormattedMapCode::Generate(d, format, MapCodeGenerator::Form::Viewing);
        benchmark::DoNotOptimize(code.Text.size());
    }
}

// The classic writer is the baseline the modern ones are compared with.
void BM_Classic(benchmark::State& state)
{
    Generate(state, MapFormat::Classic);
}
void BM_Html5(benchmark::State& state)
{
    Generate(state, MapFormat::Html5);
}
void BM_Svg(benchmark::State& state)
{
    Generate(state, MapFormat::Svg);
}

// Every finding but the hidden shapes, then the whole check.
void BM_MapCheckWithoutCovered(benchmark::State& state)
{
    const MapDocument d = BigMap(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const std::vector<MapFinding> findings = MapCheck::Check(d, false);
        benchmark::DoNotOptimize(findings.size());
    }
}

void BM_MapCheck(benchmark::State& state)
{
    const MapDocument d = BigMap(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const std::vector<MapFinding> findings = MapCheck::Check(d);
        benchmark::DoNotOptimize(findings.size());
    }
}

} // namespace

BENCHMARK(BM_Classic)->Arg(32767)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Html5)->Arg(32767)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Svg)->Arg(32767)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MapCheckWithoutCovered)->Arg(32767)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MapCheck)->Arg(32767)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
