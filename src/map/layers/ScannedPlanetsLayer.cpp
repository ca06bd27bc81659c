#include "MapLayers.h"

#include "Colour.h"
#include "MapView.h"

namespace {

void scannerPass(const GameData &d, Canvas &canvas, int field, int32_t colour)
{
    canvas.state().FillColor = colour;
    for (const PlanetInfo &p : d.Planets) {
        if (!inView(d, p) || !(p[field].val() > 0))
            continue;
        const CanvasPoint c = mapToCanvas(d, p);
        canvas.circle(c.x, c.y, lengthToCanvas(d, p[field].val()), colour);
    }
}

} // namespace

void drawScannedPlanets(const GameData &d, Canvas &canvas)
{
    DrawingState &s = canvas.state();
    s.set(13, 0, 4, 0);
    if (d.ReportFormat == 30) {
        // The second scanner paints over the first.
        scannerPass(d, canvas, ScannerRange, rgb(64, 0, 0));
        scannerPass(d, canvas, ScannerRange2, rgb(64, 64, 0));
    }
    for (const PlanetInfo &p : d.Planets) {
        if (!inView(d, p) || !(p[AgeText].text() == u"Current"))
            continue;
        const CanvasPoint c = mapToCanvas(d, p);
        canvas.pset(c.x, c.y, rgb(255, 255, 0));
    }
}
