// Timings of loading a large game: the whole generation from the files on
// disk, and the territory grid on its own, fast builder against the plain
// every-cell-every-source loop.

#include "BenchMain.h"
#include "ReferenceTerritoryGrid.h"
#include "UniverseGenerator.h"

#include <benchmark/benchmark.h>

namespace {


void BM_GenerateUniverse(benchmark::State &state)
{
    GameData data = hugeGame()->selected();
    GenerationObserver silent;
    for (auto _ : state) {
        generateUniverse(data, silent);
        benchmark::DoNotOptimize(data.Planets.data());
    }
}

template <auto Build>
void gridBenchmark(benchmark::State &state)
{
    const GameData &d = hugeGame()->loaded();
    TerritoryGrid grid;
    for (auto _ : state) {
        std::array<int32_t, MaxPlayers> cellsWon{};
        Build(hugeGame()->sources(), d.GridSize, d.GridStep, d.PlayerCount, grid, cellsWon);
        benchmark::DoNotOptimize(cellsWon);
    }
    state.counters["sources"] = double(hugeGame()->sources().size());
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
    const GameData &d = hugeGame()->loaded();
    TerritoryGrid fast, reference;
    std::array<int32_t, MaxPlayers> fastWon{}, referenceWon{};
    buildTerritoryGrid(hugeGame()->sources(), d.GridSize, d.GridStep, d.PlayerCount, fast, fastWon);
    referenceTerritoryGrid(hugeGame()->sources(), d.GridSize, d.GridStep, d.PlayerCount, reference, referenceWon);
    return fast == reference && fastWon == referenceWon && fast == d.Grid;
}

} // namespace

int main(int argc, char **argv)
{
    return runBenchmarks(argc, argv, "veltro-bench", [] {
        return gridsAgree() ? nullptr : "the fast territory grid differs from the reference";
    });
}
