#include "StargateOverlay.h"

#include "Colour.h"
#include "Conversions.h"
#include "layers/MapLayers.h"
#include "MapView.h"

#include <cmath>

namespace {

// The safe range in light years; a report's "no limit" is stored as 10000.
// Text that is not a number stops the overlay, as the game's own conversion would.
int32_t gateRange(const Value &v)
{
    if (v.isNumber())
        return conv::toInt32(v.rawNumber());
    const auto number = conv::wholeNumber(v.text());
    if (!number)
        throw conv::TypeMismatchError();
    return conv::toInt32(*number);
}

int32_t wholeLightYears(const Value &v) { return conv::toInt32(v.val()); }

} // namespace

void drawStargateNetwork(const GameData &d, Canvas &canvas, bool safeOnly)
{
    DrawingState &s = canvas.state();
    s.DrawStyle = 0;
    s.DrawMode = 13;
    s.DrawWidth = 1;
    for (const PlanetInfo &from : d.Planets) {
        const int32_t range = gateRange(from[GateRange]);
        if (range <= 0)
            continue;
        const int32_t xi = wholeLightYears(from[X]);
        const int32_t yi = wholeLightYears(from[Y]);
        // Lines are drawn whatever the view: a gate out of view still
        // reaches into it.
        for (const PlanetInfo &to : d.Planets) {
            if (&to == &from || !(to[GateRange].val() > 0))
                continue;
            const double dx = double(xi) - wholeLightYears(to[X]);
            const double dy = double(yi) - wholeLightYears(to[Y]);
            const int32_t distance = conv::toInt32(std::sqrt(dy * dy + dx * dx));
            const CanvasPoint a = mapToCanvas(d, from);
            const CanvasPoint b = mapToCanvas(d, to);
            if (!safeOnly && distance <= conv::toInt32(5.0 * range))
                canvas.line(a.x, a.y, b.x, b.y, rgb(255, 0, 0));
            if (distance <= range)
                canvas.line(a.x, a.y, b.x, b.y, rgb(0, 255, 0));
        }
    }
    // The marks are exactly those of the owned-planets layer, state included.
    drawOwnedPlanets(d, canvas);
}
