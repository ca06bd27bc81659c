// Timings of the planet grid with the huge sixteen-race game (955 planets):
// opening it (snapshot, window, first painting of the whole window), and
// sorting by each column, alone and with the table's rows repainted as the
// user sees them (offscreen platform).

#include "BenchMain.h"
#include "PlanetGridWindow.h"

#include <QApplication>
#include <QTableView>
#include <benchmark/benchmark.h>

namespace {

void BM_PlanetGridOpen(benchmark::State &state)
{
    for (auto _ : state) {
        PlanetGridWindow grid;
        grid.fill(hugeGame()->loaded());
        grid.show();
        benchmark::DoNotOptimize(grid.grab());
    }
}

// The main window keeps its grid and refills it for every showing.
void BM_PlanetGridRefill(benchmark::State &state)
{
    PlanetGridWindow grid;
    grid.show();
    for (auto _ : state) {
        grid.fill(hugeGame()->loaded());
        benchmark::DoNotOptimize(grid.grab());
    }
}

// A heading click: the sort, then the rows painted again.
void BM_PlanetGridSort(benchmark::State &state)
{
    PlanetGridWindow grid;
    grid.fill(hugeGame()->loaded());
    grid.show();
    QApplication::processEvents();
    const int column = int(state.range(0));
    bool ascending = true;
    for (auto _ : state) {
        grid.model().sort(column, ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
        grid.table()->viewport()->repaint();
        ascending = !ascending;
    }
}

void BM_PlanetGridModelSort(benchmark::State &state)
{
    PlanetGridModel model;
    model.fill(hugeGame()->loaded());
    const int column = int(state.range(0));
    bool ascending = true;
    for (auto _ : state) {
        model.sort(column, ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
        ascending = !ascending;
    }
}

BENCHMARK(BM_PlanetGridOpen)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PlanetGridRefill)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PlanetGridSort)->DenseRange(0, PlanetGridColumns - 1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PlanetGridModelSort)->DenseRange(0, PlanetGridColumns - 1)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    return runBenchmarks(argc, argv, "veltro-windows-bench", [] {
        return hugeGame()->loaded().PlanetCount == 955 ? nullptr : "the huge game has not 955 planets";
    });
}
