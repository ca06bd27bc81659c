#pragma once
// "Save Map": the canvas's picture as a Windows bitmap in the game's folder,
// named after the game year when one was given.

#include "GameData.h"

#include <QString>

// GameDir/Universe Map.bmp, or GameDir/Universe Map2410.bmp for the year 2410.
QString mapBitmapPath(const GameData &data);
