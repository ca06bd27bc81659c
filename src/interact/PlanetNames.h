#pragma once
// "Show Names": every planet in view gets its name written centred under it.

#include "Canvas.h"
#include "GameData.h"

// White 6-point text, its top 50 canvas units below the planet at any zoom.
// Close planets' names overlap; the later planet in table order is on top.
void drawPlanetNames(const GameData &d, Canvas &canvas);
