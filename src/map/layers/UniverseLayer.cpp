#include "MapLayers.h"

#include "Colour.h"
#include "MapView.h"

void drawUniverse(const GameData &d, Canvas &canvas)
{
    DrawingState &s = canvas.state();
    s.set(13, 0, 2, 0);
    s.FillColor = rgb(0, 0, 0);
    for (const PlanetInfo &p : d.Planets) {
        if (!inView(d, p))
            continue;
        const CanvasPoint c = mapToCanvas(d, p);
        // A black disc blanks what earlier layers drew under the planet.
        canvas.circle(c.x, c.y, 30, rgb(0, 0, 0));
        canvas.pset(c.x, c.y, rgb(255, 255, 255));
    }
}
