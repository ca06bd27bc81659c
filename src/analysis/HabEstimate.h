#pragma once
// How habitable a planet is for a race whose tolerances we only estimated:
// 100 at the centre of all three ranges, 0 on their edges, down to -45
// outside. The map's "Show Est Hab" overlay and the planet detail panel both
// score planets with it.

#include "GameData.h"

#include <QString>
#include <cstdint>

// A race's estimated tolerance ranges: gravity in g, temperature in degrees,
// radiation 0..100.
struct HabBounds {
    double minGrav = 0.0;
    double maxGrav = 0.0;
    double minTemp = 0.0;
    double maxTemp = 0.0;
    double minRad = 0.0;
    double maxRad = 0.0;
};

// The working values of the estimate. A planet without a gravity reading
// computes no ratios: it is scored on whatever the previous planet left
// here, and its out-of-range count is worn down again. Callers keep one of
// these for as long as that carrying must last (a click, a run, the program).
struct HabCarry {
    double gravityRatio = 0.0;     // 1 at the centre of the range, 0 on a bound,
    double temperatureRatio = 0.0; // negative outside
    double radiationRatio = 0.0;
    int32_t outOfRange = 0;        // axes with a negative ratio
};

// A ratio that divided by zero, with the planet field of its axis
// (Gravity, Temperature or Radiation).
struct HabAxisError : conv::DivisionByZeroError {
    explicit HabAxisError(PlanetField axis) : axis(axis) {}
    PlanetField axis;
};

// Race column's six bounds.
HabBounds habBounds(const PlayerInfo &race);

// The bounds of the race called `raceName`: every column is tried and the
// last match wins; all 0 when no column matches. "" matches unused columns.
HabBounds habBoundsOf(const GameData &d, const QString &raceName);

// Position of a gravity on the game's uneven 0..100 gravity scale, and back.
int16_t gravityToScale(double g);
double scaleToGravity(int s);

// Sets the out-of-range count to 3 and works out the three ratios.
void computeHabRatios(const HabBounds &race, double gravity, double temperature, double radiation,
                      HabCarry &carry);

// Scores the ratios in `carry`, taking one off its out-of-range count for
// every ratio that is 0 or more.
int32_t scoreHabRatios(HabCarry &carry);

// One planet's estimate for one race. Ratios are worked out only when the
// gravity is above 0; otherwise the carried ones are scored again.
int32_t estimateHab(const HabBounds &race, double gravity, double temperature, double radiation, HabCarry &carry);

// The same for a planet's current gravity, temperature and radiation.
int32_t estimateHab(const HabBounds &race, const PlanetInfo &planet, HabCarry &carry);
