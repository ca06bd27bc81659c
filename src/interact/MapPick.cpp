#include "MapPick.h"

#include "Conversions.h"

#include <cmath>

double canvasToUniverseX(const GameData &d, float x)
{
    return std::floor(x / d.Scale) + d.OriginX;
}

double canvasToUniverseY(const GameData &d, float y)
{
    return std::floor(y / d.Scale) + d.OriginY;
}

PickPoint pickPoint(const GameData &d, const PlanetInfo &p)
{
    return {conv::toInt32((p[X].val() - d.OriginX) * d.Scale), conv::toInt32((p[Y].val() - d.OriginY) * d.Scale)};
}

bool pickRule(const GameData &d, const PlanetInfo &p, float x, float y)
{
    const auto [px, py] = pickPoint(d, p);
    const double cx = x, cy = y;
    return cx - 60 <= px && px <= cx + 20 && cy - 60 <= py && py <= cy + 20;
}

int planetUnder(const GameData &d, float x, float y)
{
    int under = 0;
    for (int i = 1; i <= d.PlanetCount; ++i)
        if (pickRule(d, d.planet(i), x, y))
            under = i;
    return under;
}
