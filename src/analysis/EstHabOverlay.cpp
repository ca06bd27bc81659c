#include "EstHabOverlay.h"

#include "Colour.h"
#include "Conversions.h"
#include "MapView.h"
#include "HabScale.h"
#include "PlanetDisc.h"


void drawEstimatedHab(const GameData &d, Canvas &canvas, const QString &raceName, HabCarry &carry)
{
    DrawingState &s = canvas.state();
    s.set(15, 5, 1, 0);
    const HabBounds race = habBoundsOf(d, raceName);
    carry.gravityRatio = carry.temperatureRatio = carry.radiationRatio = 0.0;
    for (const PlanetInfo &p : d.Planets) {
        // Scored before the view test: planets out of view still wear down
        // the carried count.
        const int32_t h = estimateHab(race, p, carry);
        if (!inView(d, p))
            continue;
        if (p[AgeText].isBlank()) // never reported: the estimate rests on nothing
            drawPlanetDisc(d, canvas, p, 30, UnexploredColour);
        else
            drawPlanetDisc(d, canvas, p, habRadius(conv::toInt16(h)), habColour(h));
    }
}
