#include "bench/Ratio.h"
#include "core/document/MapDocument.h"
#include "core/interchange/MapFile.h"
#include "core/interchange/RecoveryStore.h"

#include <QCoreApplication>
#include <QImage>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdlib>

// The pause a recovery write makes in the editor, every 30 seconds while a big map
// changes. Baseline: saving the same map with File > Save, timed in the same run.

namespace {

MapDocument BigMap(const QString& Folder, int Count)
{
    QImage picture(64, 48, QImage::Format_RGB32);
    picture.fill(Qt::cyan);
    picture.save(Folder + QStringLiteral("/pic.png"));
    MapDocument d;
    d.ImagePath = Folder + QLatin1Char('/');
    d.ImageName = QStringLiteral("pic.png");
    d.RealWidth = d.SWidth = 4000;
    d.RealHeight = d.SHeight = 3000;
    for (int i = 0; i < Count; ++i) {
        PatShape& s = d.Shape(d.AddShape());
        const std::int16_t type = static_cast<std::int16_t>(i % 3);
        s.ResetInfo(type, true, d.NonFocusColor,
                    QStringLiteral("https://example.com/%1.html").arg(i),
                    QStringLiteral("Area number %1").arg(i), QStringLiteral("_blank"),
                    QStringLiteral("Status of area %1").arg(i), 0, QString());
        const int x = (i * 37) % 3900;
        const int y = (i * 53) % 2900;
        s.ResetPoints(3);
        s.SetPoint(0, x, y);
        s.SetPoint(1, x + 40, y);
        s.SetPoint(2, x + 40, y + 30);
        s.SetPoint(3, x, y + 30);
        s.SetOpenGeneralInfo(nullptr, 1.0);
        d.BringToTop(d.ItemCount());
    }
    d.SetShapeColors();
    return d;
}

void BM_RecoveryWrite(benchmark::State& state)
{
    QTemporaryDir folder;
    const MapDocument d = BigMap(folder.path(), static_cast<int>(state.range(0)));
    RecoveryStore store(folder.filePath(QStringLiteral("recovery")));
    if (!store.Start())
        std::abort();
    RecoveryStore::Source source;
    source.document = [&d]() -> const MapDocument& { return d; };
    source.caption = [] { return QStringLiteral("big.imp"); };
    source.fileName = [&folder] { return folder.filePath(QStringLiteral("big.imp")); };
    source.modified = [] { return true; };
    source.busy = [] { return false; };
    const int id = store.Track(source);
    const QString saved = folder.filePath(QStringLiteral("big.imp"));
    Ratio ratio;
    for (auto _ : state) {
        store.MapChanged(id);
        ratio.measured += Ratio::Time([&] { store.WriteDue(); });
        state.PauseTiming();
        if (store.FileOf(id).isEmpty())
            std::abort();
        ratio.baseline += Ratio::Time([&] {
            if (!MapFile::SaveMap(d, saved).ok)
                std::abort();
        });
        state.ResumeTiming();
    }
    ratio.Report(state);
}

} // namespace

BENCHMARK(BM_RecoveryWrite)->Arg(1000)->Arg(32767)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
