#pragma once
// The value overlays all mark a planet the same way: a disc filled and
// rimmed in one colour, its radius in canvas units whatever the zoom.

#include "Canvas.h"
#include "Colour.h"
#include "GameData.h"
#include "MapView.h"

// The dull grey of a planet no report has ever described.
constexpr int32_t UnexploredColour = rgb(80, 60, 60);

inline void drawPlanetDisc(const GameData &d, Canvas &canvas, const PlanetInfo &p, int32_t radius, int32_t colour)
{
    canvas.state().FillColor = colour;
    const CanvasPoint c = mapToCanvas(d, p);
    canvas.circle(c.x, c.y, float(radius), colour);
}
