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

bool pickRule(const GameData &d, const PlanetInfo &p, float x, float y)
{
    const int32_t px = conv::toInt32((p[X].val() - d.OriginX) * d.Scale);
    const int32_t py = conv::toInt32((p[Y].val() - d.OriginY) * d.Scale);
    const double cx = x, cy = y;
    return cx - 60 <= px && px <= cx + 20 && cy - 60 <= py && py <= cy + 20;
}
