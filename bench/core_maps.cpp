#include "bench/Ratio.h"
#include "core/document/MapDocument.h"
#include "core/forms/GeometryForm.h"
#include "core/interchange/HtmlImporter.h"
#include "core/interchange/MapCodeGenerator.h"
#include "core/interchange/MapFile.h"
#include "core/interchange/MapTextCodec.h"

#include <QFile>
#include <QImage>
#include <QSaveFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <optional>

// Opening, saving, generating and importing whole maps of 1,000 to 32,767 shapes: a mix
// of 8-vertex polygons, rectangles and circles with every text field filled. Beside them,
// a polygon of as many vertices typed back in the Shapes panel.

namespace {

const QTemporaryDir& Folder()
{
    static const QTemporaryDir folder;
    return folder;
}

QString PicturePath()
{
    const QString path = Folder().filePath(QStringLiteral("pic.png"));
    if (!QFile::exists(path)) {
        QImage picture(64, 48, QImage::Format_RGB32);
        picture.fill(Qt::cyan);
        picture.save(path);
    }
    return path;
}

MapDocument BigMap(int Count)
{
    MapDocument d;
    PicturePath();
    d.ImagePath = Folder().path() + QLatin1Char('/');
    d.ImageName = QStringLiteral("pic.png");
    d.RealWidth = d.SWidth = 4000;
    d.RealHeight = d.SHeight = 3000;
    d.MapName = QStringLiteral("Benchmark");
    d.DefURL = QStringLiteral("https://example.com/rest.html");
    d.DefComment = QStringLiteral("Everything else");
    d.DefTarget = QStringLiteral("_top");
    d.DefStatus = QStringLiteral("Nothing here");
    d.DefAlert = QStringLiteral("Nothing here either");
    d.DefAlertVal = -1;
    for (int i = 0; i < Count; ++i) {
        PatShape& s = d.Shape(d.AddShape());
        const std::int16_t type = static_cast<std::int16_t>(i % 3);
        s.ResetInfo(type, true, d.NonFocusColor,
                    QStringLiteral("https://example.com/%1.html").arg(i),
                    QStringLiteral("Area number %1, with a comment").arg(i),
                    QStringLiteral("_blank"), QStringLiteral("Status of area %1").arg(i), -1,
                    QStringLiteral("Alert of area %1").arg(i));
        const int x = (i * 37) % 3800;
        const int y = (i * 53) % 2800;
        if (type == Polygon) {
            const int dx[] = {0, 40, 80, 100, 80, 40, 0, -20};
            const int dy[] = {0, -20, 0, 40, 80, 100, 80, 40};
            s.ResetPoints(7);
            for (std::int16_t p = 0; p < 8; ++p)
                s.SetPoint(p, x + 20 + dx[p], y + 20 + dy[p]);
        } else {
            s.ResetPoints(3);
            s.SetPoint(0, x, y);
            s.SetPoint(1, x + 90, y);
            s.SetPoint(2, x + 90, y + 60);
            s.SetPoint(3, x, y + 60);
        }
        s.SetOpenGeneralInfo(nullptr, 1.0);
    }
    if (Count > 0)
        d.BringToTop(static_cast<std::int16_t>(Count / 2));
    return d;
}

void Complexity(benchmark::State& state)
{
    state.SetComplexityN(state.range(0));
}

void BM_OpenMap(benchmark::State& state)
{
    const QString path = Folder().filePath(QStringLiteral("open-%1.imp").arg(state.range(0)));
    if (!MapFile::SaveMap(BigMap(static_cast<int>(state.range(0))), path).ok)
        std::abort();
    Ratio ratio;
    for (auto _ : state) {
        MapFile::ReadResult read;
        ratio.measured += Ratio::Time([&] {
            read = MapFile::OpenMapFile(path);
            if (!read.ok)
                std::abort();
            benchmark::DoNotOptimize(read.document.ItemCount());
        });
        state.PauseTiming();
        // Closing the map is not part of opening it.
        read = MapFile::ReadResult();
        // Baseline: reading the file's bytes and decoding them to text.
        ratio.baseline += Ratio::Time([&] {
            QFile file(path);
            if (!file.open(QIODevice::ReadOnly))
                std::abort();
            const std::optional<QString> text = MapTextCodec::Decode(file.readAll());
            benchmark::DoNotOptimize(text->size());
        });
        state.ResumeTiming();
    }
    ratio.Report(state);
    Complexity(state);
}

void BM_SaveMap(benchmark::State& state)
{
    const MapDocument d = BigMap(static_cast<int>(state.range(0)));
    const QString path = Folder().filePath(QStringLiteral("save-%1.imp").arg(state.range(0)));
    const qsizetype size = MapFile::MapBytes(d, path).size();
    const QByteArray same(size, 'x');
    const QString plain = Folder().filePath(QStringLiteral("plain-%1.bin").arg(state.range(0)));
    Ratio ratio;
    for (auto _ : state) {
        ratio.measured += Ratio::Time([&] {
            if (!MapFile::SaveMap(d, path).ok)
                std::abort();
        });
        state.PauseTiming();
        // Baseline: writing as many bytes through QSaveFile.
        ratio.baseline += Ratio::Time([&] {
            QSaveFile file(plain);
            if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ||
                file.write(same) != size || !file.commit())
                std::abort();
        });
        state.ResumeTiming();
    }
    ratio.Report(state);
    Complexity(state);
}

void BM_GenerateHtml(benchmark::State& state)
{
    MapDocument d = BigMap(static_cast<int>(state.range(0)));
    const qsizetype length =
        MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Viewing).size();
    Ratio ratio;
    for (auto _ : state) {
        ratio.measured += Ratio::Time([&] {
            const QString code =
                MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Viewing);
            benchmark::DoNotOptimize(code.size());
        });
        state.PauseTiming();
        ratio.baseline += Ratio::Time([&] { benchmark::DoNotOptimize(SameLength(length).size()); });
        state.ResumeTiming();
    }
    ratio.Report(state);
    Complexity(state);
}

void BM_ImportHtml(benchmark::State& state)
{
    MapDocument d = BigMap(static_cast<int>(state.range(0)));
    const QString code = MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Viewing);
    Ratio ratio;
    for (auto _ : state) {
        ratio.measured += Ratio::Time([&] {
            const HtmlImporter::Result result = HtmlImporter::Convert(code, d);
            if (!result.ok)
                std::abort();
            benchmark::DoNotOptimize(result.shapes.size());
        });
        state.PauseTiming();
        ratio.baseline +=
            Ratio::Time([&] { benchmark::DoNotOptimize(SameLength(code.size()).size()); });
        state.ResumeTiming();
    }
    ratio.Report(state);
    Complexity(state);
}

// The vertex table of a polygon of Count vertices applied as it stands, some of them off
// the picture (kept, as a shape dragged partly off it may be). Baseline: reading the
// vertices out for the table.
void BM_ApplyVertices(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    MapDocument d;
    d.RealWidth = d.SWidth = 4000;
    d.RealHeight = d.SHeight = 3000;
    PatShape& polygon = d.Shape(d.AddShape());
    polygon.ResetInfo(Polygon, true, d.NonFocusColor, QString(), QString(), QString(), QString(),
                      -1, QString());
    polygon.ResetPoints(static_cast<std::int16_t>(count - 1));
    for (int i = 0; i < count; ++i)
        polygon.SetPoint(static_cast<std::int16_t>(i), i % 4100 - 50, i / 4 % 3100 - 50);
    polygon.SetOpenGeneralInfo(nullptr, 1.0);
    QList<QStringList> rows;
    for (const QPoint& p : GeometryForm::Vertices(d, 0))
        rows.append({QString::number(p.x()), QString::number(p.y())});
    Ratio ratio;
    for (auto _ : state) {
        ratio.measured += Ratio::Time([&] {
            if (!GeometryForm::ApplyVertices(d, 0, rows).isEmpty())
                std::abort();
        });
        state.PauseTiming();
        ratio.baseline +=
            Ratio::Time([&] { benchmark::DoNotOptimize(GeometryForm::Vertices(d, 0).size()); });
        state.ResumeTiming();
    }
    ratio.Report(state);
    Complexity(state);
}

} // namespace

#define MAP_SIZES ->Arg(1000)->Arg(10000)->Arg(32767)->Unit(benchmark::kMillisecond)->Complexity()
BENCHMARK(BM_OpenMap) MAP_SIZES;
BENCHMARK(BM_SaveMap) MAP_SIZES;
BENCHMARK(BM_GenerateHtml) MAP_SIZES;
BENCHMARK(BM_ImportHtml) MAP_SIZES;
BENCHMARK(BM_ApplyVertices) MAP_SIZES;

BENCHMARK_MAIN();
