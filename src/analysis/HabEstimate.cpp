#include "HabEstimate.h"

#include "Conversions.h"

#include <cmath>

namespace {

// Bounds edited down to a point, or a race nobody matched (all bounds 0),
// must stop the estimate rather than score a planet infinitely well.
using conv::divide;

// Runs one axis's part of the estimate; a division by zero names the axis.
template <typename Work> auto onAxis(PlanetField axis, Work work)
{
    try {
        return work();
    } catch (const conv::DivisionByZeroError &) {
        throw HabAxisError(axis);
    }
}

// The game's text round trip: a number written with 15 significant digits
// and read back. It makes 0.4999999999999999 a clean 0.5 before comparisons.
double fifteenDigits(double x) { return conv::val(conv::numberText(x)); }

// 1 at the centre, 0 on either bound, measured on the side the value lies.
double axisRatio(double v, double lo, double hi, double centre)
{
    if (v <= centre)
        return divide(v - lo, centre - lo);
    return divide(hi - v, hi - centre);
}

} // namespace

HabBounds habBounds(const PlayerInfo &race)
{
    return {race[MinGrav].val(), race[MaxGrav].val(), race[MinTemp].val(),
            race[MaxTemp].val(), race[MinRad].val(),  race[MaxRad].val()};
}

HabBounds habBoundsOf(const GameData &d, const QString &raceName)
{
    HabBounds b;
    for (int k = 1; k <= MaxPlayers; ++k)
        if (d.player(k)[RaceName].is(raceName))
            b = habBounds(d.player(k));
    return b;
}

int16_t gravityToScale(double g)
{
    g = fifteenDigits(g);
    if (g < 0.5)
        return conv::toInt16(100 - (divide(1, g) + 16) / 0.24);
    if (g < 1)
        return conv::toInt16(100 - (divide(1, g) + 1) / 0.04);
    if (g < 2)
        return conv::toInt16((g + 1) / 0.04);
    return conv::toInt16((g + 16) / 0.24);
}

double scaleToGravity(int s)
{
    double g;
    if (s < 25)
        g = conv::round2(std::fabs(divide(1, 0.24 * s - 8)));
    else if (s < 50)
        g = conv::round2(std::fabs(divide(1, 0.04 * s - 3)));
    else if (s < 75)
        g = 0.04 * s - 1;
    else
        g = 0.24 * s - 16;
    return conv::round2(g);
}

void computeHabRatios(const HabBounds &race, double gravity, double temperature, double radiation,
                      HabCarry &carry)
{
    carry.outOfRange = 3;
    carry.gravityRatio = onAxis(Gravity, [&] {
        // The gravity centre is found on the game's scale, not halfway in g:
        // 1 g to 2 g centres on 1.48 g, not 1.5 g.
        const int16_t sum = conv::toInt16(double(gravityToScale(race.minGrav)) + gravityToScale(race.maxGrav));
        const double centre = scaleToGravity(conv::floorInt32(sum / 2.0));
        return axisRatio(gravity, race.minGrav, race.maxGrav, centre);
    });
    carry.temperatureRatio = onAxis(Temperature, [&] {
        return axisRatio(temperature, race.minTemp, race.maxTemp, (race.minTemp + race.maxTemp) / 2);
    });
    carry.radiationRatio = onAxis(Radiation, [&] {
        return axisRatio(radiation, race.minRad, race.maxRad, (race.minRad + race.maxRad) / 2);
    });
}

int32_t scoreHabRatios(HabCarry &carry)
{
    for (double ratio : {carry.gravityRatio, carry.temperatureRatio, carry.radiationRatio})
        if (ratio >= 0)
            --carry.outOfRange;
    if (carry.outOfRange < 0)
        carry.outOfRange = 0;
    const double rg = fifteenDigits(carry.gravityRatio);
    const double rt = fifteenDigits(carry.temperatureRatio);
    const double rr = fifteenDigits(carry.radiationRatio);
    // Each axis outside its range costs 2 on top of its own negative ratio.
    int32_t h = conv::floorInt32(((rg + rt) + rr - 2.0 * carry.outOfRange) / 3 * 100);
    // Hostile worlds are squeezed so that -100 reads as -17.
    if (h < 0)
        h = conv::floorInt32(h / 6.11);
    return h < -45 ? -45 : h;
}

int32_t estimateHab(const HabBounds &race, double gravity, double temperature, double radiation, HabCarry &carry)
{
    if (gravity > 0)
        computeHabRatios(race, gravity, temperature, radiation, carry);
    return scoreHabRatios(carry);
}

int32_t estimateHab(const HabBounds &race, const PlanetInfo &planet, HabCarry &carry)
{
    return estimateHab(race, planet[Gravity].val(), planet[Temperature].val(), planet[Radiation].val(), carry);
}
