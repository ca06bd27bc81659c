#include "MineralOverlays.h"

#include "Colour.h"
#include "Conversions.h"
#include "MapView.h"
#include "PlanetDisc.h"

#include <algorithm>

namespace {

// A concentration is a whole number as text, or "Unknown" when the planet
// was never surveyed; anything that is not wholly a number counts as 0.
int32_t concentrationRadius(const Value &v)
{
    if (v.isNumber())
        return conv::toInt32(v.rawNumber());
    const auto number = conv::wholeNumber(v.text());
    return number ? conv::toInt32(*number) : 0;
}

// Concentrations 0..100 scaled to a colour component.
int component(double concentration) { return std::min(conv::toInt32(concentration * 2.55), 255); }

} // namespace

void drawMineralConcentration(const GameData &d, Canvas &canvas, Mineral mineral)
{
    DrawingState &s = canvas.state();
    s.FillStyle = 0;
    s.DrawStyle = 5;
    s.DrawWidth = 1;
    int field = IronMC;
    int32_t colour = rgb(0, 0, 255);
    if (mineral == Mineral::Boranium) {
        field = BoraMC;
        colour = rgb(0, 255, 0);
    } else if (mineral == Mineral::Germanium) {
        field = GermMC;
        colour = rgb(255, 255, 0);
    }
    for (const PlanetInfo &p : d.Planets) {
        if (!inView(d, p))
            continue;
        const int32_t radius = concentrationRadius(p[field]);
        // Only a planet no report lists gets the grey marker; a surveyed
        // planet without the mineral gets an invisible disc of radius 0.
        if (radius == 0 && p[AgeText].isBlank())
            drawPlanetDisc(d, canvas, p, 30, UnexploredColour);
        else
            drawPlanetDisc(d, canvas, p, radius, colour);
    }
}

void drawAverageMineralConcentration(const GameData &d, Canvas &canvas)
{
    DrawingState &s = canvas.state();
    s.set(13, 5, 1, 0);
    for (const PlanetInfo &p : d.Planets) {
        if (!inView(d, p))
            continue;
        const double iron = p[IronMC].val();
        const double bora = p[BoraMC].val();
        const double germ = p[GermMC].val();
        // Boranium alone decides "nothing known": a planet without boranium
        // is grey whatever else it holds.
        if (bora == 0) {
            drawPlanetDisc(d, canvas, p, 30, UnexploredColour);
            continue;
        }
        const int32_t radius = conv::toInt32((iron + bora + germ) / 3);
        drawPlanetDisc(d, canvas, p, radius, rgb(component(germ), component(bora), component(iron)));
    }
}

void drawReportAge(const GameData &d, Canvas &canvas)
{
    DrawingState &s = canvas.state();
    s.set(13, 0, 1, 0);
    for (const PlanetInfo &p : d.Planets) {
        // A planet never reported has no age and no "Current": no disc.
        const double age = p[ReportAge].val();
        if (!(age > 0 || p[AgeText].is(u"Current")) || !inView(d, p))
            continue;
        const int red = std::min<int>(conv::toInt16(age * 10), 255);
        drawPlanetDisc(d, canvas, p, 60, rgb(red, 255 - red, 0));
    }
}
