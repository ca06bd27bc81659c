#pragma once
// "Show Est Hab": one disc per planet in view, coloured and sized by how
// habitable the planet is estimated to be for the chosen race.

#include "Canvas.h"
#include "GameData.h"
#include "HabEstimate.h"

#include <QString>

// Draws over the picture as it stands, in merge pen. The ratios start from
// 0 on every run; the out-of-range count in `carry` goes on from where the
// previous run left it, so keep one carry for the life of the program.
// A race that matches no column has all bounds 0 and stops with a
// division by zero at the first planet with a gravity reading.
void drawEstimatedHab(const GameData &d, Canvas &canvas, const QString &raceName, HabCarry &carry);
