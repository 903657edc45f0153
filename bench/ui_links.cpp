#include "bench/UiBenchMain.h"
#include "core/interchange/BrokenLinkFilter.h"
#include "core/interchange/LinkTableModel.h"

#include <QApplication>
#include <QEventLoop>
#include <QFile>
#include <QHeaderView>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <ctime>

// The URL checker's table on screen while 32,767 links are checked: the whole check,
// with the longest time the window could not repaint or take input as max_stall_ms,
// showing every row or the broken ones only.

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

// Relative links beside the picture; every other one exists.
QStringList FileLinks(int Count)
{
    QStringList links;
    for (int i = 0; i < Count; ++i) {
        links << QStringLiteral("page%1.html").arg(i);
        QFile file(Folder().filePath(links.last()));
        if (i % 2 == 0 && !file.exists() && !file.open(QIODevice::WriteOnly))
            std::abort();
    }
    links << QString();
    return links;
}

void BM_CheckInTable(benchmark::State& state)
{
    const QStringList links = FileLinks(static_cast<int>(state.range(0)));
    LinkTableModel model;
    BrokenLinkFilter filter(model);
    filter.SetBrokenOnly(state.range(1) != 0);
    QTableView view;
    view.setModel(&filter);
    view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view.horizontalHeader()->setStretchLastSection(true);
    view.resize(900, 400);
    view.show();
    model.SetBase(QString(), Folder().path());
    model.SetLinks(links);
    QApplication::processEvents();

    double stall = 0;
    for (auto _ : state) {
        model.SetBase(QString(), Folder().path() + QLatin1Char('/'));
        QEventLoop wait;
        QObject::connect(&model, &LinkTableModel::Finished, &wait, &QEventLoop::quit);
        QTimer ticker;
        qint64 lastTick = ThreadNs();
        qint64 longest = 0;
        QObject::connect(&ticker, &QTimer::timeout, &wait, [&] {
            const qint64 now = ThreadNs();
            longest = qMax(longest, now - lastTick);
            lastTick = now;
        });
        ticker.start(0);
        model.CheckAll();
        if (model.IsChecking())
            wait.exec();
        QApplication::processEvents();
        stall = qMax(stall, static_cast<double>(longest) / 1e6);
        if (model.BrokenCount() != state.range(0) / 2)
            std::abort();
    }
    state.counters["max_stall_ms"] = stall;
    state.counters["rows_shown"] = filter.rowCount();
}

} // namespace

BENCHMARK(BM_CheckInTable)
    ->Args({1000, 0})
    ->Args({32767, 0})
    ->Args({32767, 1})
    ->Unit(benchmark::kMillisecond);

VANTREL_UI_BENCHMARK_MAIN()
