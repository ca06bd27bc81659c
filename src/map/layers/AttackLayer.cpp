#include "MapLayers.h"

#include "Colour.h"
#include "Conversions.h"
#include "MapView.h"
#include "PlanetDisc.h"

#include <cmath>

void drawDifficultyOfAttack(const GameData &d, Canvas &canvas)
{
    DrawingState &s = canvas.state();
    s.set(13, 0, 1, 0);
    for (const PlanetInfo &p : d.Planets) {
        const double population = p[Population].val();
        if (!(population > 0) || !inView(d, p))
            continue;
        // Single precision, so that a million colonists give exactly 205.
        int red = conv::toInt16(std::floor(conv::toSingle(population / 4878.0488)));
        if (!p[Starbase].is(u"None") && !p[Starbase].isBlank())
            red = conv::toInt16(red + 50);
        if (red > 255)
            red = 255;
        drawPlanetDisc(d, canvas, p, 50, rgb(red, 255 - red, 0));
    }
}
