#include "MapLayers.h"

#include "Colour.h"
#include "Conversions.h"
#include "MapView.h"

#include <cmath>

namespace {

int32_t habColour(double h)
{
    if (h < -10)
        return rgb(255, 0, 0);
    if (h < 0)
        return rgb(255, 0, 255);
    if (h <= 10)
        return rgb(255, 255, 0);
    return rgb(0, 255, 0);
}

} // namespace

void drawHabLayer(const GameData &d, Canvas &canvas)
{
    DrawingState &s = canvas.state();
    s.DrawMode = 15;
    s.FillStyle = 0;
    s.DrawStyle = 5;
    s.DrawWidth = 1;
    for (const PlanetInfo &p : d.Planets) {
        if (p[Hab].isBlank() || !inView(d, p))
            continue;
        if (p[Hab].isText())
            throw conv::TypeMismatchError();
        const double h = p[Hab].val();
        int32_t colour = habColour(h);
        // The scale is uneven on purpose: hostile worlds are enlarged by
        // 3.33, good ones only by 1.5, marginal ones by 12 plus 30.
        int32_t k = conv::toInt32(h);
        if (k == 0 && p[AgeText].isBlank()) {
            k = 30;
            colour = rgb(80, 60, 60);
        } else if (!p[AgeText].isBlank()) {
            if (k < -10)
                k = conv::toInt32(k * 3.33);
            else if (k <= 10)
                k = std::abs(k * 12) + 30;
            else
                k = conv::toInt32(k * 1.5);
        }
        k = std::abs(k);
        if (k < 30)
            k = 30;
        s.FillColor = colour;
        const CanvasPoint c = mapToCanvas(d, p);
        canvas.circle(c.x, c.y, float(k), colour);
    }
}
