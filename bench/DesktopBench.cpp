// Timings of the desktop program with the huge sixteen-race game: from
// "Load && Generate Data" to the enabled overlay buttons, from nothing to a
// main window on screen, and the pointer over the map (offscreen platform).

#include "AnnotationToolBox.h"
#include "BenchMain.h"
#include "DetailPanel.h"
#include "MainWindow.h"
#include "MapCanvasWidget.h"
#include "OverlayButtonBar.h"

#include <QApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QRadioButton>
#include <QTest>
#include <QToolButton>
#include <benchmark/benchmark.h>

namespace {

// The huge game loaded in a shown window whose map is 1000 pixels square,
// with borders, planets and owners drawn.
class LoadedWindow {
public:
    LoadedWindow()
    {
        // The map's side follows the window's height.
        m_window.resize(1500, 1102);
        m_window.show();
        if (!QTest::qWaitForWindowExposed(&m_window))
            throw std::runtime_error("the window was not shown");
        m_window.gameData() = hugeGame()->selected();
        if (!m_window.generate())
            throw std::runtime_error("the generation failed");
        for (int b : {BordersButton, UniverseButton, OwnedButton})
            QTest::mouseClick(m_window.overlayBar()->button(b), Qt::LeftButton);
        QApplication::processEvents();
    }
    MainWindow &window() { return m_window; }
    MapCanvasWidget *map() { return m_window.mapWidget(); }

    // One motion of the pointer, and the repaint it asked for.
    void move(const QPoint &p)
    {
        QMouseEvent event(QEvent::MouseMove, QPointF(p), map()->mapToGlobal(QPointF(p)), Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(map(), &event);
        QApplication::processEvents();
    }
    void click(const QPoint &p)
    {
        QTest::mouseClick(map(), Qt::LeftButton, {}, p);
        QApplication::processEvents();
    }

private:
    MainWindow m_window;
};

// A motion while a line's rubber band follows the pointer: the readout,
// the pick scan over every planet, and the repaint of what the band covered.
void BM_PointerMotionWithBand(benchmark::State &state)
{
    LoadedWindow w;
    w.window().annotationTools()->toolButton(DrawTool::Line)->click();
    w.click(QPoint(200, 200));
    int step = 0;
    for (auto _ : state) {
        step ^= 1;
        w.move(QPoint(600 + step * 20, 500 + step * 10));
    }
    state.counters["map_pixels"] = w.map()->width();
}

// A click on a planet that fills the detail panel, the hab of all sixteen
// races and both pies included, and shows it.
void BM_ClickFillsPanel(benchmark::State &state)
{
    LoadedWindow w;
    const GameData &d = w.window().gameData();
    int row = 1;
    while (row < d.PlanetCount && d.planet(row)[Owner].text().isEmpty())
        ++row;
    const double k = w.map()->width() / double(Canvas::ScaleWidth);
    const QPoint at(int(d.planet(row)[X].val() * d.Scale * k) + 1, int(d.planet(row)[Y].val() * d.Scale * k) + 1);
    for (auto _ : state)
        w.click(at);
    if (w.window().detailPanel()->valueLabel(PlanetNameLabel)->text().isEmpty())
        state.SkipWithError("no planet was picked");
    state.counters["races"] = d.PlayerCount;
}


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
BENCHMARK(BM_PointerMotionWithBand)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ClickFillsPanel)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    return runBenchmarks(argc, argv, "veltro-desktop-bench");
}
