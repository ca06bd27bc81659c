#include "MapLayers.h"

#include "HabScale.h"
#include "MapView.h"
#include "PlanetDisc.h"

void drawHabLayer(const GameData &d, Canvas &canvas)
{
    DrawingState &s = canvas.state();
    s.set(15, 5, 1, 0);
    for (const PlanetInfo &p : d.Planets) {
        if (p[Hab].isBlank() || !inView(d, p))
            continue;
        if (p[Hab].isText())
            throw conv::TypeMismatchError();
        // The colour follows the value itself, the radius its rounding
        // (10.4 is green but as large as 10).
        const double h = p[Hab].val();
        int32_t colour = habColour(h);
        int32_t k = conv::toInt32(h);
        if (k == 0 && p[AgeText].isBlank()) {
            k = 30;
            colour = UnexploredColour;
        } else if (!p[AgeText].isBlank()) {
            k = habRadius(k);
        }
        k = std::abs(k);
        drawPlanetDisc(d, canvas, p, k < 30 ? 30 : k, colour);
    }
}
