#pragma once
// Each race's estimated habitability ranges, guessed from the environment
// of the planets it owns (the reports never give them).

#include "GameData.h"

#include <array>

// Start values beyond the far end of every scale, so that the first planet
// sets both bounds.
void setToleranceStartValues(PlayerInfo &race);

// Narrows each race's ranges to its planets' values, widens them where they
// collapsed, and converts the race's won grid cells to its territory size.
void estimateTolerancesAndTerritory(GameData &data, const std::array<int32_t, MaxPlayers> &cellsWon);
