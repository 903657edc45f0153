#include "bench/BenchMap.h"
#include "bench/UiBenchMain.h"
#include "core/interchange/MapFile.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdlib>

// Start-up as the user sees it: the editor started with a map on the command line until
// that map is painted, timed as a separate run of the executable each time. Baseline:
// the same executable started with --version (loading, Qt start, exit).

namespace {

QString Editor()
{
    const QByteArray configured = qgetenv("VANTREL_EXE");
    return configured.isEmpty() ? QCoreApplication::applicationDirPath() + "/vantrel"
                                : QString::fromLocal8Bit(configured);
}

QString DataHome()
{
    static const QTemporaryDir folder;
    return folder.path();
}

double RunMs(const QStringList& Arguments)
{
    return Ratio::Time([&] {
        QProcess editor;
        editor.setStandardOutputFile(QProcess::nullDevice());
        editor.setStandardErrorFile(QProcess::nullDevice());
        // Recovery files the user's own editor left must not stop a run with a question.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_DATA_HOME"), DataHome());
        editor.setProcessEnvironment(environment);
        editor.start(Editor(), Arguments);
        if (!editor.waitForFinished(60000) || editor.exitCode() != 0)
            std::abort();
    });
}

const QTemporaryDir& Folder()
{
    static const QTemporaryDir folder;
    return folder;
}

// A 1600 x 1200 picture with Count shapes scattered over it, saved as a map file.
QString MapOf(int Count)
{
    const QString path = Folder().filePath(QStringLiteral("map-%1.imp").arg(Count));
    if (QFile::exists(path))
        return path;
    BenchMap map(Count);
    QImage picture(1600, 1200, QImage::Format_RGB32);
    picture.fill(QColor(230, 220, 200));
    const QString picturePath = Folder().filePath(QStringLiteral("picture.png"));
    picture.save(picturePath);
    MapDocument& doc = map.canvas->Document();
    doc.ImagePath = Folder().path() + QLatin1Char('/');
    doc.ImageName = QStringLiteral("picture.png");
    if (!MapFile::SaveMap(doc, path).ok)
        std::abort();
    return path;
}

QString SampleMap()
{
    const QByteArray configured = qgetenv("VANTREL_SAMPLE_MAP");
    return configured.isEmpty() ? QCoreApplication::applicationDirPath() + "/../examples/sample.imp"
                                : QString::fromLocal8Bit(configured);
}

void BM_StartUpToFirstPaint(benchmark::State& state)
{
    const QString map = state.range(0) == 0 ? SampleMap() : MapOf(static_cast<int>(state.range(0)));
    Ratio clock;
    for (auto _ : state) {
        clock.measured += RunMs({QStringLiteral("--quit-after-first-paint"), map});
        state.PauseTiming();
        clock.baseline += RunMs({QStringLiteral("--version")});
        state.ResumeTiming();
    }
    clock.Report(state);
}

} // namespace

// 0: the sample map of examples/.
BENCHMARK(BM_StartUpToFirstPaint)
    ->Arg(0)
    ->Arg(32767)
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

VANTREL_UI_BENCHMARK_MAIN()
