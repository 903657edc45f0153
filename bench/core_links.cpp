#include "core/document/MapDocument.h"
#include "core/interchange/LinkTableModel.h"
#include "core/interchange/URLCheckList.h"
#include "tests/support/LocalHttpServer.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <ctime>

// The URL checker's table at up to 32,767 links: listing and resolving them (against
// copying the bare list, the baseline), and checking them, with the longest time the
// event loop was kept from running (CPU time of the thread) reported as max_stall_ms.

namespace {

// CPU time of this thread: the machine may be busy with other work, and a stall is
// what this thread itself spends between two turns of the event loop.
qint64 ThreadNs()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return qint64{now.tv_sec} * 1000000000 + now.tv_nsec;
}

const QTemporaryDir& Folder()
{
    static const QTemporaryDir folder;
    return folder;
}

// Relative links, half of them to files that exist, or links to a local server.
MapDocument LinkedMap(int Count, const QString& Prefix = QString())
{
    MapDocument d;
    d.ImagePath = Folder().path() + QLatin1Char('/');
    for (int i = 0; i < Count; ++i) {
        PatShape& s = d.Shape(d.AddShape());
        s.URL = Prefix + QStringLiteral("page%1.html").arg(i);
        if (Prefix.isEmpty() && i % 2 == 0) {
            QFile file(Folder().filePath(s.URL));
            if (!file.exists() && !file.open(QIODevice::WriteOnly))
                std::abort();
        }
    }
    d.DefURL = QStringLiteral("index.html");
    return d;
}

// A mix of what maps hold: relative pages, absolute addresses of several schemes.
MapDocument MixedMap(int Count)
{
    MapDocument d;
    d.ImagePath = Folder().path() + QLatin1Char('/');
    for (int i = 0; i < Count; ++i) {
        PatShape& s = d.Shape(d.AddShape());
        switch (i % 4) {
        case 0:
            s.URL = QStringLiteral("page%1.html").arg(i);
            break;
        case 1:
            s.URL = QStringLiteral("../up/%1.html#part").arg(i);
            break;
        case 2:
            s.URL = QStringLiteral("https://example.com/a/%1?x=1").arg(i);
            break;
        default:
            s.URL = QStringLiteral("mailto:someone%1@example.com").arg(i);
        }
    }
    return d;
}

void BM_CopyLinkList(benchmark::State& state)
{
    const MapDocument d = MixedMap(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const URLCheckList list(d);
        benchmark::DoNotOptimize(list.Entries().size());
    }
}

void BM_ListAndResolve(benchmark::State& state)
{
    const MapDocument d = MixedMap(static_cast<int>(state.range(0)));
    LinkTableModel model;
    for (auto _ : state) {
        // As the URL checker opens: the base first, so each link is resolved once.
        model.SetBase(QStringLiteral("https://www.example.com/site/"), d.ImagePath);
        model.SetLinks(URLCheckList(d).Entries());
        benchmark::DoNotOptimize(model.rowCount());
    }
}

// Runs CheckAll to the end; the longest gap between two turns of the event loop.
double CheckAllAndMeasureStall(LinkTableModel& Model)
{
    QEventLoop wait;
    QObject::connect(&Model, &LinkTableModel::Finished, &wait, &QEventLoop::quit);
    QTimer ticker;
    qint64 lastTick = ThreadNs();
    qint64 longest = 0;
    QObject::connect(&ticker, &QTimer::timeout, &wait, [&] {
        const qint64 now = ThreadNs();
        longest = qMax(longest, now - lastTick);
        lastTick = now;
    });
    ticker.start(0);
    Model.CheckAll();
    if (Model.IsChecking())
        wait.exec();
    return static_cast<double>(longest) / 1e6;
}

void BM_CheckFileLinks(benchmark::State& state)
{
    const MapDocument d = LinkedMap(static_cast<int>(state.range(0)));
    LinkTableModel model;
    model.SetLinks(URLCheckList(d).Entries());
    double stall = 0;
    for (auto _ : state) {
        model.SetBase(QString(), d.ImagePath);
        stall = qMax(stall, CheckAllAndMeasureStall(model));
        if (model.BrokenCount() != state.range(0) / 2 + 1)
            std::abort();
    }
    state.counters["max_stall_ms"] = stall;
}

void BM_CheckWebLinks(benchmark::State& state)
{
    static LocalHttpServer server;
    const MapDocument d = LinkedMap(static_cast<int>(state.range(0)), QStringLiteral("ok?"));
    LinkTableModel model;
    model.SetLinks(URLCheckList(d).Entries());
    double stall = 0;
    for (auto _ : state) {
        model.SetBase(server.Url(QStringLiteral("/")).toString(), QString());
        stall = qMax(stall, CheckAllAndMeasureStall(model));
        if (model.BrokenCount() != 1) // index.html: the server has no such page
            std::abort();
    }
    state.counters["max_stall_ms"] = stall;
}

} // namespace

BENCHMARK(BM_CopyLinkList)->Arg(1000)->Arg(32767)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ListAndResolve)->Arg(1000)->Arg(32767)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CheckFileLinks)->Arg(1000)->Arg(32767)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CheckWebLinks)->Arg(1000)->Arg(5000)->Unit(benchmark::kMillisecond)->Iterations(1);

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
