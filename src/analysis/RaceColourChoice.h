#pragma once
// Choosing a race's colour: borders, planets and grid rows are drawn in it,
// so it must stay visible on the black map.

#include "GameData.h"

#include <QString>

// Red + green + blue must reach this for a colour to be accepted.
constexpr int MinimumColourSum = 192;

constexpr bool brightEnough(int red, int green, int blue)
{
    return red + green + blue >= MinimumColourSum;
}

// Stores the colour (components 0..255) of race column 1..16.
void storeRaceColour(GameData &d, int column, int red, int green, int blue);

// The race column 1..PlayerCount whose name is exactly `name`, or 0.
int raceColumnNamed(const GameData &d, const QString &name);
