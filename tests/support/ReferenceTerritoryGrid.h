#pragma once
// The territory grid the plain way, every cell looking at every source: slow,
// obviously right; the fast builder must agree with it on every cell.

#include "Conversions.h"
#include "GameData.h"
#include "TerritoryGridBuilder.h"

#include <algorithm>
#include <cmath>

inline void referenceTerritoryGrid(const std::vector<InfluenceSource> &sources, int gridSize, double gridStep,
                                   int playerCount, TerritoryGrid &grid, std::array<int32_t, MaxPlayers> &cellsWon)
{
    grid.resize(gridSize);
    std::array<int32_t, MaxPlayers + 1> totals{};
    for (int gx = 0; gx <= gridSize; ++gx) {
        const int32_t cx = conv::toInt32(gx * gridStep);
        for (int gy = 0; gy <= gridSize; ++gy) {
            const int32_t cy = conv::toInt32(gy * gridStep);
            int count = 0;
            for (const InfluenceSource &s : sources) {
                if (s.x < cx - 150 || s.x > cx + 150 || s.y < cy - 150 || s.y > cy + 150)
                    continue;
                const double dx = s.x - cx, dy = s.y - cy;
                const int32_t dist = std::max(conv::toInt32(std::sqrt(dx * dx + dy * dy)), 1);
                if (dist < 151) {
                    const int32_t strength = dist <= 100
                        ? conv::intDiv(s.soi * 100, dist)
                        : conv::intDiv(s.soi * 100, conv::toInt32(dist * (1 + (dist - 100) * 0.12)));
                    if (s.owner > 0)
                        totals[size_t(s.owner)] += strength;
                    ++count;
                }
            }
            if (count > 0) {
                int winner = 0;
                int32_t best = 0;
                for (int k = 1; k <= playerCount; ++k) {
                    if (totals[size_t(k)] > best) {
                        best = totals[size_t(k)];
                        winner = k;
                    }
                    totals[size_t(k)] = 0;
                }
                if (winner > 0) {
                    grid.set(gx, gy, winner, std::min(best, 100));
                    ++cellsWon[size_t(winner - 1)];
                }
            }
        }
    }
}
