#include "MapLayers.h"

#include "Colour.h"
#include "Conversions.h"
#include "MapView.h"
#include "PlanetDisc.h"

#include <cmath>

void drawGrowthLayer(const GameData &d, Canvas &canvas)
{
    DrawingState &s = canvas.state();
    s.set(13, 0, 1, 0);
    for (const PlanetInfo &p : d.Planets) {
        const double population = p[Population].val();
        if (!(population > 0) || !(p[Resources].val() > 0) || p[Owner].text() != d.OwnRaceName || !inView(d, p))
            continue;
        const double h = p[Hab].val();
        // A planet of h % holds h % of a million colonists; below 5 % the
        // capacity counts as 5 %.
        double fill = (h >= 0 && h <= 5) ? population / (5.0 / 100 * 1000000) : population / (h / 100 * 1000000);
        if (p[IronMR].val() > 0 && p[Mines].val() < 10 && !p[Starbase].is(u"None") && h > 0)
            fill = population / 3000000;
        const double g = std::floor(fill * 100);
        int red = conv::toInt16(std::fabs(g) / 100 * 255);
        if (red >= 255)
            red = 255;
        int green = 0, blue = 0;
        if (g < 0) {
            blue = 255;
            red = conv::toInt16(255 - std::fabs(h) * 5.65);
        } else {
            green = 255 - red;
        }
        drawPlanetDisc(d, canvas, p, 50, rgb(red, green, blue));
    }
}
