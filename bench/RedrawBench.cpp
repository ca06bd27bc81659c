// Timings of drawing the huge sixteen-race game at 1000 x 1000 pixels: a
// redraw with every overlay pressed, the territory grid layer alone, and the
// grid's dots painted the naive way (one painter call per dot) for comparison.

#include "BenchMain.h"
#include "MapRedraw.h"
#include "RasterSurface.h"
#include "layers/MapLayers.h"

#include <QGuiApplication>
#include <QPainter>
#include <benchmark/benchmark.h>

namespace {

constexpr int Pixels = 1000;

// One QPainter call per dot: what the grid layer would cost without the
// surface's direct scanline writes.
class PainterPerDotSurface : public RasterSurface {
public:
    using RasterSurface::RasterSurface;
    void psets(const DrawingState &s, const std::vector<Dot> &dots) override
    {
        QImage &image = const_cast<QImage &>(this->image());
        QPainter painter(&image);
        const double scale = Pixels / double(Canvas::ScaleWidth);
        for (const Dot &d : dots)
            painter.fillRect(QRectF(d.x * scale - s.DrawWidth / 2.0, d.y * scale - s.DrawWidth / 2.0, s.DrawWidth,
                                    s.DrawWidth),
                             QColor(d.colour & 0xFF, (d.colour >> 8) & 0xFF, (d.colour >> 16) & 0xFF));
    }
};

void redrawWith(benchmark::State &state, std::initializer_list<int> pressed)
{
    GameData data = hugeGame()->loaded();
    Canvas canvas(Pixels * 15);
    canvas.addSurface(std::make_shared<RasterSurface>(Pixels));
    OverlayButtons buttons;
    for (int b : pressed)
        buttons.setPressedQuietly(b, true);
    ZoomFlags zoom;
    RedrawHost host;
    MapRedraw redraw(data, canvas, buttons, zoom, host);
    for (auto _ : state)
        redraw.redrawUniverse();
}

void BM_RedrawEveryLayer(benchmark::State &state)
{
    redrawWith(state, {ScannedButton, BordersButton, TerritoryButton, UniverseButton, HabButton, OwnedButton,
                       AttackButton, GrowthButton, VmkButton});
}

void BM_TerritoryLayer(benchmark::State &state)
{
    const GameData &data = hugeGame()->loaded();
    Canvas canvas(Pixels * 15);
    canvas.addSurface(std::make_shared<RasterSurface>(Pixels));
    RedrawHost host;
    for (auto _ : state)
        drawTerritoryGrid(data, canvas, host);
}

void BM_TerritoryLayerPainterPerDot(benchmark::State &state)
{
    const GameData &data = hugeGame()->loaded();
    Canvas canvas(Pixels * 15);
    canvas.addSurface(std::make_shared<PainterPerDotSurface>(Pixels));
    RedrawHost host;
    for (auto _ : state)
        drawTerritoryGrid(data, canvas, host);
}

BENCHMARK(BM_RedrawEveryLayer)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TerritoryLayer)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TerritoryLayerPainterPerDot)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    return runBenchmarks(argc, argv, "veltro-redraw-bench");
}
