#pragma once
// Where a point of the universe lands on the canvas, and whether the view
// window shows it. Marker sizes given in canvas units are not scaled: they
// keep their size on the screen whatever the zoom.

#include "Conversions.h"
#include "GameData.h"

#include <QPointF>

struct CanvasPoint {
    float x;
    float y;
};

// (X - OriginX) * Scale, (Y - OriginY) * Scale in doubles, then single precision.
CanvasPoint mapToCanvas(const GameData &d, double x, double y);
inline CanvasPoint mapToCanvas(const GameData &d, const PlanetInfo &p)
{
    return mapToCanvas(d, p[X].val(), p[Y].val());
}

// A light-year distance on the canvas.
inline float lengthToCanvas(const GameData &d, double lightYears) { return conv::toSingle(lightYears * d.Scale); }

// Strictly inside the view window on both axes.
bool inView(const GameData &d, double x, double y);
inline bool inView(const GameData &d, const PlanetInfo &p) { return inView(d, p[X].val(), p[Y].val()); }
