#pragma once
// The layers of the map redraw, in the order it draws them. Each sets all
// the drawing state it needs and leaves it set; planet layers walk the
// planet table in order and draw only the planets in view.

#include "Canvas.h"
#include "GameData.h"
#include "RedrawHost.h"

// Scanner coverage circles and a yellow dot on every planet seen this year.
void drawScannedPlanets(const GameData &d, Canvas &canvas);
// Hatched influence discs in race colours, merged where races meet.
void drawSoiBorders(const GameData &d, Canvas &canvas);
// The territory grid: one dot per cell won, dimmed by the strength of the win.
void drawTerritoryGrid(const GameData &d, Canvas &canvas, RedrawHost &host);
// Every planet as a white dot on a small black disc.
void drawUniverse(const GameData &d, Canvas &canvas);
// The own race's hab value of each planet as coloured discs.
void drawHabLayer(const GameData &d, Canvas &canvas);
// Owned planets in race colours, with a yellow ring for a starbase.
void drawOwnedPlanets(const GameData &d, Canvas &canvas);
// Green to red by colonists and starbase.
void drawDifficultyOfAttack(const GameData &d, Canvas &canvas);
// How full each of the own race's colonies is.
void drawGrowthLayer(const GameData &d, Canvas &canvas);
// Replays the annotation file at the current view.
void replayAnnotations(GameData &d, Canvas &canvas, RedrawHost &host);
