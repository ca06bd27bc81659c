#include "MapView.h"

CanvasPoint mapToCanvas(const GameData &d, double x, double y)
{
    return {conv::toSingle((x - d.OriginX) * d.Scale), conv::toSingle((y - d.OriginY) * d.Scale)};
}

bool inView(const GameData &d, double x, double y)
{
    return x > d.OriginX && x < d.FarX && y > d.OriginY && y < d.FarY;
}
