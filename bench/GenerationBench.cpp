// Timings of loading a large game: the whole generation from the files on
// disk, and the territory grid on its own, fast builder against the plain
// every-cell-every-source loop.

#include "HugeGame.h"
#include "ReferenceTerritoryGrid.h"
#include "UniverseGenerator.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>

namespace {

std::unique_ptr<HugeGame> game;

void BM_GenerateUniverse(benchmark::State &state)
{
    GameData data = game->selected();
    GenerationObserver silent;
    for (auto _ : state) {
        generateUniverse(data, silent);
        benchmark::DoNotOptimize(data.Planets.data());
    }
}

template <auto Build>
void gridBenchmark(benchmark::State &state)
{
    const GameData &d = game->loaded();
    TerritoryGrid grid;
    for (auto _ : state) {
        std::array<int32_t, MaxPlayers> cellsWon{};
        Build(game->sources(), d.GridSize, d.GridStep, d.PlayerCount, grid, cellsWon);
        benchmark::DoNotOptimize(cellsWon);
    }
    state.counters["sources"] = double(game->sources().size());
}

void fastGrid(const std::vector<InfluenceSource> &sources, int gridSize, double gridStep, int playerCount,
              TerritoryGrid &grid, std::array<int32_t, MaxPlayers> &cellsWon)
{
    buildTerritoryGrid(sources, gridSize, gridStep, playerCount, grid, cellsWon);
}

void BM_TerritoryGridFast(benchmark::State &state) { gridBenchmark<fastGrid>(state); }
void BM_TerritoryGridReference(benchmark::State &state) { gridBenchmark<referenceTerritoryGrid>(state); }

BENCHMARK(BM_GenerateUniverse)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TerritoryGridFast)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TerritoryGridReference)->Unit(benchmark::kMillisecond);

// Timing the fast grid means nothing unless it is the same grid.
bool gridsAgree()
{
    const GameData &d = game->loaded();
    TerritoryGrid fast, reference;
    std::array<int32_t, MaxPlayers> fastWon{}, referenceWon{};
    buildTerritoryGrid(game->sources(), d.GridSize, d.GridStep, d.PlayerCount, fast, fastWon);
    referenceTerritoryGrid(game->sources(), d.GridSize, d.GridStep, d.PlayerCount, reference, referenceWon);
    return fast == reference && fastWon == referenceWon && fast == d.Grid;
}

} // namespace

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    try {
        game = std::make_unique<HugeGame>();
    } catch (const std::exception &e) {
        std::fprintf(stderr, "veltro-bench: %s\n", e.what());
        return 1;
    }
    if (!gridsAgree()) {
        std::fputs("veltro-bench: the fast territory grid differs from the reference\n", stderr);
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    game.reset();
    return 0;
}
