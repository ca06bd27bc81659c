// Timings of `veltro-cli site` on twenty yearly snapshots of the sixteen-
// race game on the huge map, every view at 800 and 1600 pixels: the whole
// command as a host runs it after each turn, and the writing alone from
// turns already loaded. The folder's size per year is a counter.

#include "GameGenerator.h"
#include "History.h"
#include "SiteCommand.h"
#include "WebMap.h"

#include <QDirIterator>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>

namespace {

constexpr int Turns = 20;

struct Snapshots {
    QTemporaryDir dir;
    QList<Snapshot> snapshots;
    std::unique_ptr<History> history; // loaded once for the writing
};

Snapshots &game()
{
    static Snapshots snapshots;
    return snapshots;
}

double megabytesPerYear(const QString &folder)
{
    qint64 bytes = 0;
    for (QDirIterator it(folder, QDir::Files, QDirIterator::Subdirectories); it.hasNext();) {
        it.next();
        bytes += it.fileInfo().size();
    }
    return double(bytes) / 1e6 / Turns;
}

void BM_SiteCommand(benchmark::State &state)
{
    const QString out = game().dir.filePath("site");
    QStringList arguments{"veltro-cli", "site"};
    for (const Snapshot &s : game().snapshots)
        arguments << s.mapFile;
    arguments << "-o" << out;
    for (auto _ : state)
        if (runSite(arguments) != 0)
            state.SkipWithError("the command failed");
    state.counters["MB_per_year"] = megabytesPerYear(out);
}

void BM_WriteWebMap(benchmark::State &state)
{
    const History &history = *game().history;
    std::vector<WebMapYear> years;
    for (int i = 0; i < history.size(); ++i)
        years.push_back({history.year(i), &history.turn(i).data, history.legend(i)});
    const QString out = game().dir.filePath("written");
    for (auto _ : state)
        writeWebMap(out, years, {QStringLiteral("GAME"), 800});
}

BENCHMARK(BM_SiteCommand)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_WriteWebMap)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    try {
        gamegen::GameOptions options;
        options.mapPath = QStringLiteral(VELTRO_TEST_MAPS "/huge-packed-00001.map");
        options.outDir = game().dir.filePath("turns");
        options.players = 16;
        options.gameYear = 2450;
        for (const gamegen::GeneratedGame &turn : gamegen::generateHistory(options, Turns))
            game().snapshots << snapshotFromArgument(turn.mapFile);
        game().history = std::make_unique<History>(loadHistory(game().snapshots, GameChoice{}), StableRaceColours{});
    } catch (const std::exception &e) {
        std::fprintf(stderr, "veltro-site-bench: %s\n", e.what());
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    game().history.reset();
    return 0;
}
