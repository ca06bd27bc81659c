#pragma once
// The "biggest is best" territory grid: every grid point sums, per race, the
// influence of the planets within 150 light years, and the race with the
// strictly greatest sum (the lower column on a tie) wins the cell.

#include "GameData.h"

#include <cstdint>
#include <functional>
#include <vector>

struct InfluenceSource {
    int16_t x;
    int16_t y;
    int16_t soi;
    int16_t owner; // race column, 0 for none
};

// Cell coordinate of grid index g: CLng(g * step).
int32_t gridCoordinate(int g, double step);

// Strength that a source of the given SOI exerts at a (rounded) distance
// in light years, for distances 1..150.
int32_t influenceAt(int32_t soi, int32_t dist);

// Fills `grid` (sized G + 1 square) and adds the cells each race wins to
// `cellsWon` (index = race column - 1). `columnDone(gx)` is called after
// each column of cells.
void buildTerritoryGrid(const std::vector<InfluenceSource> &sources, int gridSize, double gridStep,
                        int playerCount, TerritoryGrid &grid, std::array<int32_t, MaxPlayers> &cellsWon,
                        const std::function<void(int)> &columnDone = {});
