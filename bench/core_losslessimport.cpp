#include "core/document/MapDocument.h"
#include "core/interchange/HtmlImporter.h"
#include "core/interchange/LosslessImporter.h"

#include <benchmark/benchmark.h>

namespace {

// A page of about 50 MB: text around four maps of 25,000 areas each (a map holds at most
// 32,768 shapes) with long alt texts.
const QString& BigPage()
{
    static const QString page = [] {
        QString text = QStringLiteral("<!DOCTYPE html><html><head><title>Big</title></head><body>"
                                      "<p>Intro &amp; more</p>\n");
        const QString alt = QStringLiteral("A long &quot;description&quot; of the area &amp; "
                                           "what lies behind it. ")
                                .repeated(5);
        for (int i = 0; i < 100000; ++i) {
            if (i % 25000 == 0)
                text += QStringLiteral("%1<map name=\"Big%2\">\n")
                            .arg(i == 0 ? QString() : QStringLiteral("</map>\n"))
                            .arg(i / 25000);
            text += QStringLiteral("<area shape=\"rect\" coords=\"%1,%2,%3,%4\" href=\"page%5.htm"
                                   "\" alt=\"%6\" title=\"Area %5\">\n")
                        .arg(i % 4000)
                        .arg(i % 3000)
                        .arg(i % 4000 + 20)
                        .arg(i % 3000 + 20)
                        .arg(i)
                        .arg(alt);
        }
        text += QStringLiteral("</map><img src=\"big.png\" usemap=\"#Big0\" alt=\"Big\">\n");
        while (text.size() < 50'000'000)
            text += QStringLiteral("<p>Filler paragraph with <b>some</b> markup.</p>\n");
        return text + QStringLiteral("</body></html>");
    }();
    return page;
}

// The classic conversion is the baseline.
void BM_ClassicImport50MB(benchmark::State& state)
{
    MapDocument target;
    for (auto _ : state) {
        const HtmlImporter::Result result = HtmlImporter::Convert(BigPage(), target);
        benchmark::DoNotOptimize(result.shapes.size());
    }
}

void BM_LosslessImport50MB(benchmark::State& state)
{
    MapDocument target;
    for (auto _ : state) {
        const LosslessImporter::Result result = LosslessImporter::Convert(BigPage(), target);
        if (!result.ok)
            state.SkipWithError(qPrintable(result.message));
        benchmark::DoNotOptimize(result.shapes.size());
    }
    state.counters["areas"] = 100000;
    state.counters["MB"] = double(BigPage().toUtf8().size()) / 1e6;
}

} // namespace

BENCHMARK(BM_ClassicImport50MB)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_LosslessImport50MB)->Unit(benchmark::kMillisecond)->Iterations(2);

BENCHMARK_MAIN();
