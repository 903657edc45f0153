#include "bench/BenchMap.h"
#include "bench/UiBenchMain.h"
#include "core/interchange/MapFile.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

// Start-up as the user sees it: the editor started with a map on the command line until
// that map is painted, timed as a separate run of the executable each time. Baseline:
// the same executable started with --version (loading, Qt start, exit). Beside it, the
// editor's peak resident size with that map painted.

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

// Recovery files the user's own editor left must not stop a run with a question.
QProcessEnvironment EditorEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_DATA_HOME"), DataHome());
    return environment;
}

// The peak resident size of one run of the editor, in MB, as the kernel accounts for the
// finished child (wait4): QProcess reaps its children without it.
double PeakResidentMb(const QStringList& Arguments)
{
    std::vector<QByteArray> texts{QFile::encodeName(Editor())};
    for (const QString& argument : Arguments)
        texts.push_back(QFile::encodeName(argument));
    const std::size_t argumentCount = texts.size();
    for (const QString& variable : EditorEnvironment().toStringList())
        texts.push_back(variable.toLocal8Bit());
    std::vector<char*> argv;
    std::vector<char*> envp;
    for (std::size_t i = 0; i < texts.size(); ++i)
        (i < argumentCount ? argv : envp).push_back(texts[i].data());
    argv.push_back(nullptr);
    envp.push_back(nullptr);
    // Everything is built before the fork: the child of a threaded process may only call
    // what is safe in a signal handler until it runs the editor.
    const pid_t child = fork();
    if (child == 0) {
        const int nothing = open("/dev/null", O_WRONLY);
        dup2(nothing, STDOUT_FILENO);
        dup2(nothing, STDERR_FILENO);
        execve(argv[0], argv.data(), envp.data());
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) ||
        WEXITSTATUS(status) != 0)
        std::abort();
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

double RunMs(const QStringList& Arguments)
{
    return Ratio::Time([&] {
        QProcess editor;
        editor.setStandardOutputFile(QProcess::nullDevice());
        editor.setStandardErrorFile(QProcess::nullDevice());
        editor.setProcessEnvironment(EditorEnvironment());
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

// Memory, not time: the peak resident size until a map of Count shapes is painted, against
// a map of one shape on the same picture, so that the ratio is the shapes' own share.
void BM_PeakResident(benchmark::State& state)
{
    const QString map = MapOf(static_cast<int>(state.range(0)));
    const QString one = MapOf(1);
    double peak = 0.0;
    double baseline = 0.0;
    for (auto _ : state) {
        peak += PeakResidentMb({QStringLiteral("--quit-after-first-paint"), map});
        baseline += PeakResidentMb({QStringLiteral("--quit-after-first-paint"), one});
    }
    const double runs = static_cast<double>(state.iterations());
    state.counters["peak_mb"] = peak / runs;
    state.counters["baseline_mb"] = baseline / runs;
    state.counters["ratio"] = peak / baseline;
}

} // namespace

// 0: the sample map of examples/.
BENCHMARK(BM_StartUpToFirstPaint)
    ->Arg(0)
    ->Arg(32767)
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(BM_PeakResident)->Arg(32767)->Iterations(1)->Unit(benchmark::kMillisecond);

VANTREL_UI_BENCHMARK_MAIN()
