#include "MapLayers.h"

#include "Colour.h"
#include "MapView.h"

namespace {

bool isOwned(const PlanetInfo &p) { return p[OwnerIndex].val() > 0; }

} // namespace

void drawOwnedPlanets(const GameData &d, Canvas &canvas)
{
    DrawingState &s = canvas.state();
    s.set(13, 0, 1, 0);
    s.FillColor = rgb(0, 0, 0);
    // All black surrounds first, so no surround covers a neighbour's marker.
    for (const PlanetInfo &p : d.Planets) {
        if (!isOwned(p) || !inView(d, p))
            continue;
        const CanvasPoint c = mapToCanvas(d, p);
        canvas.circle(c.x, c.y, 90, rgb(0, 0, 0));
    }
    for (const PlanetInfo &p : d.Planets) {
        if (!isOwned(p) || !inView(d, p))
            continue;
        const CanvasPoint c = mapToCanvas(d, p);
        s.FillStyle = 0;
        s.FillColor = d.raceColour(int(p[OwnerIndex].val()));
        canvas.circle(c.x, c.y, 30, rgb(0, 0, 0));
        s.FillStyle = 1;
        if (!p[Starbase].is(u"None") && !p[Starbase].isBlank())
            canvas.circle(c.x, c.y, 70, rgb(255, 255, 0));
    }
}
