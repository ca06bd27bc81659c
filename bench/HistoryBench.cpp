// Timings of `veltro-cli history` on fifty yearly snapshots of the sixteen-
// race game on the huge map, at 800 x 800 pixels: the whole command as a
// script runs it, and its three parts apart: loading every snapshot (in
// parallel), drawing every frame (in parallel) and encoding the GIF (in
// year order, on one thread).

#include "GameGenerator.h"
#include "GifAnimation.h"
#include "History.h"
#include "HistoryCommand.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QtConcurrent/QtConcurrentMap>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>
#include <numeric>

namespace {

constexpr int Turns = 50;
constexpr int Pixels = 800;
constexpr int Delay = 50;

struct Snapshots {
    QTemporaryDir dir;
    QList<Snapshot> snapshots;
    std::unique_ptr<History> history; // loaded once for the drawing
    std::vector<QImage> frames;       // drawn once for the encoding
};

Snapshots &game()
{
    static Snapshots snapshots;
    return snapshots;
}

OverlayButtons layers()
{
    OverlayButtons buttons;
    for (int b : {BordersButton, UniverseButton, OwnedButton})
        buttons.setPressedQuietly(b, true);
    return buttons;
}

std::vector<QImage> drawAll(History &history)
{
    const HistoryFrameLayout layout = history.layout(Pixels);
    std::vector<int> turns(size_t(history.size()));
    std::iota(turns.begin(), turns.end(), 0);
    std::vector<QImage> frames(turns.size());
    QThreadPool pool;
    QtConcurrent::blockingMap(&pool, turns, [&](int i) {
        RedrawHost host;
        frames[size_t(i)] = history.drawFrame(i, layers(), layout, host);
    });
    return frames;
}

void BM_HistoryCommand(benchmark::State &state)
{
    QStringList arguments{"veltro-cli", "history"};
    for (const Snapshot &s : game().snapshots)
        arguments << s.mapFile;
    arguments << "--size" << QString::number(Pixels) << "-o" << game().dir.filePath("history.gif");
    for (auto _ : state)
        if (runHistory(arguments) != 0)
            state.SkipWithError("the command failed");
}

void BM_LoadSnapshots(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(loadHistory(game().snapshots, GameChoice{}));
}

void BM_DrawFrames(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(drawAll(*game().history));
}

void BM_EncodeGif(benchmark::State &state)
{
    const std::vector<QImage> &frames = game().frames;
    qint64 bytes = 0;
    for (auto _ : state) {
        QBuffer out;
        out.open(QIODevice::WriteOnly);
        GifAnimation gif(out, frames.front().size(), Delay);
        for (const QImage &frame : frames)
            gif.addFrame(frame);
        gif.finish();
        bytes = out.size();
    }
    state.counters["GIF_MB"] = double(bytes) / 1e6;
}

BENCHMARK(BM_HistoryCommand)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_LoadSnapshots)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_DrawFrames)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_EncodeGif)->Unit(benchmark::kMillisecond)->UseRealTime();

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
        options.outDir = game().dir.path();
        options.players = 16;
        options.gameYear = 2450;
        for (const gamegen::GeneratedGame &turn : gamegen::generateHistory(options, Turns))
            game().snapshots << snapshotFromArgument(turn.mapFile);
        game().history = std::make_unique<History>(loadHistory(game().snapshots, GameChoice{}), StableRaceColours{});
        game().frames = drawAll(*game().history);
    } catch (const std::exception &e) {
        std::fprintf(stderr, "veltro-history-bench: %s\n", e.what());
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    game().history.reset();
    return 0;
}
