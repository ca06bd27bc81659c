#include "TerraformOverlay.h"

#include "Colour.h"
#include "Conversions.h"
#include "MapView.h"
#include "PlanetDisc.h"

#include <cmath>

void drawTerraformedValues(const GameData &d, Canvas &canvas)
{
    DrawingState &s = canvas.state();
    s.set(13, 5, 1, 0);
    // A planet the report does not list has no value, which reads as 0.
    for (const PlanetInfo &p : d.Planets)
        if (p[TerraformedHab].val() == 0 && inView(d, p))
            drawPlanetDisc(d, canvas, p, 30, UnexploredColour);
    // No minimum radius here: a value of 0.3 gives a disc of radius 0.
    for (const PlanetInfo &p : d.Planets) {
        const double v = p[TerraformedHab].val();
        if (v < 0 && inView(d, p))
            drawPlanetDisc(d, canvas, p, conv::toInt32(std::fabs(v * 3.33)), rgb(255, 0, 0));
    }
    for (const PlanetInfo &p : d.Planets) {
        const double v = p[TerraformedHab].val();
        if (v > 0 && inView(d, p))
            drawPlanetDisc(d, canvas, p, conv::toInt32(std::fabs(v * 1.5)), rgb(0, 255, 0));
    }
}
