#include "EstHabOverlay.h"

#include "Colour.h"
#include "Conversions.h"
#include "MapView.h"
#include "PlanetDisc.h"

#include <cstdlib>

namespace {

int32_t estHabColour(int32_t h)
{
    if (h < -10)
        return rgb(255, 0, 0);
    if (h < 0)
        return rgb(255, 0, 255);
    if (h <= 10)
        return rgb(255, 255, 0);
    return rgb(0, 255, 0);
}

// Hostile worlds grow by 3.33 a point, good ones by 1.5 and marginal ones by
// 12 plus 30, so that -45, -10, 10 and 100 all reach about 150.
int32_t estHabRadius(int16_t h)
{
    int32_t r;
    if (h < -10)
        r = conv::toInt32(h * 3.33);
    else if (h <= 10)
        r = std::abs(h * 12) + 30;
    else
        r = conv::toInt32(h * 1.5);
    r = std::abs(r);
    return r < 30 ? 30 : r;
}

} // namespace

void drawEstimatedHab(const GameData &d, Canvas &canvas, const QString &raceName, HabCarry &carry)
{
    DrawingState &s = canvas.state();
    s.DrawMode = 15;
    s.FillStyle = 0;
    s.DrawStyle = 5;
    s.DrawWidth = 1;
    const HabBounds race = habBoundsOf(d, raceName);
    carry.gravityRatio = carry.temperatureRatio = carry.radiationRatio = 0.0;
    for (const PlanetInfo &p : d.Planets) {
        // Scored before the view test: planets out of view still wear down
        // the carried count.
        const int32_t h = estimateHab(race, p, carry);
        if (!inView(d, p))
            continue;
        int32_t colour = estHabColour(h);
        int32_t radius;
        if (p[AgeText].isBlank()) {
            // Never reported: the estimate rests on nothing.
            colour = rgb(80, 60, 60);
            radius = 30;
        } else {
            radius = estHabRadius(conv::toInt16(h));
        }
        drawPlanetDisc(d, canvas, p, radius, colour);
    }
}
