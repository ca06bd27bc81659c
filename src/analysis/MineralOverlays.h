#pragma once
// The mineral concentration and report age overlays: one disc per planet in
// view, laid over the picture as it stands.

#include "Canvas.h"
#include "GameData.h"

enum class Mineral { Ironium, Boranium, Germanium };

// Radius = the concentration, in the mineral's colour (ironium blue,
// boranium green, germanium yellow). Keeps the draw mode it finds.
void drawMineralConcentration(const GameData &d, Canvas &canvas, Mineral mineral);

// Radius = mean of the three concentrations, colour mixed from them
// (germanium red, boranium green, ironium blue).
void drawAverageMineralConcentration(const GameData &d, Canvas &canvas);

// Green for this year's report, ten points redder a year, red from 26 years.
void drawReportAge(const GameData &d, Canvas &canvas);
