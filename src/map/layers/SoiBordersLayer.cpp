#include "MapLayers.h"

#include "MapView.h"

void drawSoiBorders(const GameData &d, Canvas &canvas)
{
    DrawingState &s = canvas.state();
    s.DrawStyle = 5;
    s.DrawWidth = 1;
    for (const PlanetInfo &p : d.Planets) {
        if (!(p[OwnerIndex].val() > 0) || !inView(d, p))
            continue;
        const CanvasPoint c = mapToCanvas(d, p);
        const float radius = lengthToCanvas(d, p[SOI].val());
        // Merge the race colour into whatever is there, then hatch the disc
        // in black right away: a later disc recolours the hatch lines of
        // earlier ones under it, so contested ground shows the mixed colour.
        s.DrawMode = 15;
        s.FillColor = d.raceColour(int(p[OwnerIndex].val()));
        s.FillStyle = 0;
        canvas.circle(c.x, c.y, radius);
        s.DrawMode = 13;
        s.FillColor = 0;
        s.FillStyle = 7;
        canvas.circle(c.x, c.y, radius);
    }
}
