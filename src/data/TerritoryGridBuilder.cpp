#include "TerritoryGridBuilder.h"

#include "Conversions.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int Reach = 150;

// Strength by SOI (0..100) and rounded distance (0..150), and the rounded
// distance by squared offset: the grid needs no square root per cell.
struct InfluenceTables {
    std::vector<int32_t> distanceBySquare; // index dx² + dy², up to 2 * 150²
    std::vector<int32_t> strength;         // index soi * 151 + dist

    InfluenceTables() : distanceBySquare(2 * Reach * Reach + 1), strength(101 * (Reach + 1))
    {
        for (size_t d2 = 0; d2 < distanceBySquare.size(); ++d2) {
            const int32_t d = conv::toInt32(std::sqrt(double(d2)));
            distanceBySquare[d2] = d == 0 ? 1 : d;
        }
        for (int soi = 0; soi <= 100; ++soi)
            for (int d = 1; d <= Reach; ++d)
                strength[size_t(soi * (Reach + 1) + d)] = influenceAt(soi, d);
    }
};

const InfluenceTables &tables()
{
    static const InfluenceTables t;
    return t;
}

} // namespace

int32_t gridCoordinate(int g, double step)
{
    return conv::toInt32(g * step);
}

int32_t influenceAt(int32_t soi, int32_t dist)
{
    const int32_t power = soi * 100;
    if (dist <= 100)
        return conv::intDiv(power, dist);
    return conv::intDiv(power, conv::toInt32(dist * (1 + (dist - 100) * 0.12)));
}

void buildTerritoryGrid(const std::vector<InfluenceSource> &sourcesInOrder, int gridSize, double gridStep,
                        int playerCount, TerritoryGrid &grid, std::array<int32_t, MaxPlayers> &cellsWon,
                        const std::function<void(int)> &columnDone)
{
    grid.resize(gridSize);
    if (gridSize < 0)
        return;
    const InfluenceTables &t = tables();
    const int cells = gridSize + 1;

    std::vector<int32_t> coord(static_cast<size_t>(cells));
    for (int g = 0; g < cells; ++g)
        coord[size_t(g)] = gridCoordinate(g, gridStep);
    const bool ascending = std::is_sorted(coord.begin(), coord.end());

    // Sources sorted by X so that each column only looks at its 300-ly band.
    std::vector<InfluenceSource> sources = sourcesInOrder;
    std::stable_sort(sources.begin(), sources.end(),
                     [](const InfluenceSource &a, const InfluenceSource &b) { return a.x < b.x; });

    // Per column: the influence totals of every race in every cell, and the
    // number of sources each cell saw.
    std::vector<int32_t> totals(size_t(cells) * MaxPlayers);
    std::vector<int32_t> counts(static_cast<size_t>(cells));

    size_t first = 0;
    for (int gx = 0; gx < cells; ++gx) {
        const int32_t cx = coord[size_t(gx)];
        std::fill(totals.begin(), totals.end(), 0);
        std::fill(counts.begin(), counts.end(), 0);
        if (ascending)
            while (first < sources.size() && sources[first].x < cx - Reach)
                ++first;
        for (size_t s = ascending ? first : 0; s < sources.size(); ++s) {
            const InfluenceSource &src = sources[s];
            if (src.x > cx + Reach) {
                if (ascending)
                    break;
                continue;
            }
            if (src.x < cx - Reach)
                continue;
            const int32_t dx = int32_t(src.x) - cx;
            // Rows whose cell Y lies within reach of the source.
            int gyFrom = 0;
            int gyTo = cells - 1;
            if (ascending) {
                gyFrom = int(std::lower_bound(coord.begin(), coord.end(), int32_t(src.y) - Reach) - coord.begin());
                gyTo = int(std::upper_bound(coord.begin(), coord.end(), int32_t(src.y) + Reach) - coord.begin()) - 1;
            }
            const int32_t *strengthRow = &t.strength[size_t(src.soi) * (Reach + 1)];
            for (int gy = gyFrom; gy <= gyTo; ++gy) {
                const int32_t dy = int32_t(src.y) - coord[size_t(gy)];
                if (dy < -Reach || dy > Reach)
                    continue;
                const int32_t dist = t.distanceBySquare[size_t(dx * dx + dy * dy)];
                if (dist >= 151)
                    continue;
                ++counts[size_t(gy)];
                if (src.owner > 0)
                    totals[size_t(gy) * MaxPlayers + size_t(src.owner - 1)] += strengthRow[dist];
            }
        }
        for (int gy = 0; gy < cells; ++gy) {
            if (counts[size_t(gy)] == 0)
                continue;
            const int32_t *cell = &totals[size_t(gy) * MaxPlayers];
            int winner = 0;
            int32_t best = 0;
            for (int k = 1; k <= playerCount; ++k) {
                if (cell[k - 1] > best) {
                    best = cell[k - 1];
                    winner = k;
                }
            }
            if (winner > 0) {
                grid.set(gx, gy, winner, std::min(best, 100));
                ++cellsWon[size_t(winner - 1)];
            }
        }
        if (columnDone)
            columnDone(gx);
    }
}
