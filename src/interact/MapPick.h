#pragma once
// The pointer on the map: a canvas position back in light years, and the
// rule that decides whether a planet lies under the pointer. The readout,
// the planet lookup and the annotation records all use these two.

#include "GameData.h"

// floor(c / Scale) + the view minimum, per axis. The floor differs from the
// zoom corner's rounding on purpose: each keeps its own rule.
double canvasToUniverseX(const GameData &d, float x);
double canvasToUniverseY(const GameData &d, float y);

// Where the pick rule places planet `p`: (X - OriginX) * Scale and
// (Y - OriginY) * Scale in doubles, each rounded half to even to whole
// canvas units. Overflow beyond 32 bits.
struct PickPoint {
    int32_t x, y;
};
PickPoint pickPoint(const GameData &d, const PlanetInfo &p);

// True when planet `p` lies under the pointer at canvas (x, y): its point,
// rounded half to even to whole canvas units, may be at most 20 units to
// the right of or below the pointer and at most 60 units to the left of or
// above it. The box leans towards the lower right, where the cursor's arrow
// points from; the view window is not consulted.
bool pickRule(const GameData &d, const PlanetInfo &p, float x, float y);

// The planet the readout names for the pointer at canvas (x, y): of those
// under it, the last in table order; 0 in deep space.
int planetUnder(const GameData &d, float x, float y);
