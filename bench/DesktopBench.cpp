// Timings of the desktop program with the huge sixteen-race game: from
// "Load && Generate Data" to the enabled overlay buttons, and from nothing
// to a main window on screen (offscreen platform).

#include "BenchMain.h"
#include "MainWindow.h"

#include <QApplication>
#include <QTest>
#include <benchmark/benchmark.h>

namespace {


void BM_LoadAndGenerateInWindow(benchmark::State &state)
{
    MainWindow window;
    window.show();
    for (auto _ : state) {
        window.gameData() = hugeGame()->selected();
        if (!window.generate())
            state.SkipWithError("the generation failed");
    }
}

void BM_MainWindowVisible(benchmark::State &state)
{
    for (auto _ : state) {
        MainWindow window;
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            state.SkipWithError("the window was not shown");
    }
}

BENCHMARK(BM_LoadAndGenerateInWindow)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MainWindowVisible)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    return runBenchmarks(argc, argv, "veltro-desktop-bench");
}
