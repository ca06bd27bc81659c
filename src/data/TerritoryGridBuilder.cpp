#include "TerritoryGridBuilder.h"

#include "Conversions.h"

#include <algorithm>
#include <iterator>
#include <cmath>

namespace {

constexpr int Reach = 150;
// The largest squared distance whose rounded root is still 150: a source
// reaches exactly the cells with dx² + dy² <= 22650.
constexpr int32_t MaxSquare = 22650;

// Strength by SOI (0..100) and rounded distance (0..150), and the rounded
// distance by squared offset: the grid needs no square root per cell. The
// distance table is bytes so that it stays in the first-level cache.
struct InfluenceTables {
    std::vector<uint8_t> distanceBySquare; // index dx² + dy², 0..MaxSquare
    std::vector<int32_t> strength;         // index soi * 151 + dist

    InfluenceTables() : distanceBySquare(MaxSquare + 1), strength(101 * (Reach + 1))
    {
        for (size_t d2 = 0; d2 < distanceBySquare.size(); ++d2) {
            const int32_t d = conv::toInt32(std::sqrt(double(d2)));
            distanceBySquare[d2] = uint8_t(d == 0 ? 1 : d);
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

    // Sources without an owner add to no race and so decide no cell. The
    // rest sorted by X so that each column only looks at its 300-ly band.
    std::vector<InfluenceSource> sources;
    std::copy_if(sourcesInOrder.begin(), sourcesInOrder.end(), std::back_inserter(sources),
                 [](const InfluenceSource &s) { return s.owner > 0; });
    std::stable_sort(sources.begin(), sources.end(),
                     [](const InfluenceSource &a, const InfluenceSource &b) { return a.x < b.x; });

    // Per column: the influence totals race by race (one race's cells side
    // by side, so that a source adds along consecutive memory), and the
    // races present. The winner scan empties the totals again. A cell's
    // winner needs a total above 0, so a cell that only weak or ownerless
    // sources reach is left as it is without counting them.
    std::vector<int32_t> totals(size_t(cells) * MaxPlayers);
    std::array<bool, MaxPlayers> present{};
    std::vector<int> races;

    size_t first = 0;
    for (int gx = 0; gx < cells; ++gx) {
        const int32_t cx = coord[size_t(gx)];
        if (ascending)
            while (first < sources.size() && sources[first].x < cx - Reach)
                ++first;
        int touchedFrom = cells, touchedTo = -1;
        for (size_t s = ascending ? first : 0; s < sources.size(); ++s) {
            const InfluenceSource &src = sources[s];
            if (src.x > cx + Reach) {
                if (ascending)
                    break;
                continue;
            }
            const int32_t dx = int32_t(src.x) - cx;
            const int32_t room = MaxSquare - dx * dx;
            if (room < 0)
                continue;
            // Rows whose cell lies on the source's disc.
            int gyFrom = 0;
            int gyTo = cells - 1;
            if (ascending) {
                const int32_t reachY = int32_t(std::sqrt(double(room)));
                gyFrom = int(std::lower_bound(coord.begin(), coord.end(), int32_t(src.y) - reachY) - coord.begin());
                gyTo = int(std::upper_bound(coord.begin(), coord.end(), int32_t(src.y) + reachY) - coord.begin()) - 1;
            }
            touchedFrom = std::min(touchedFrom, gyFrom);
            touchedTo = std::max(touchedTo, gyTo);
            if (!present[size_t(src.owner - 1)]) {
                present[size_t(src.owner - 1)] = true;
                races.push_back(src.owner);
            }
            const int32_t *strengthRow = &t.strength[size_t(src.soi) * (Reach + 1)];
            int32_t *raceTotals = &totals[size_t(src.owner - 1) * size_t(cells)];
            for (int gy = gyFrom; gy <= gyTo; ++gy) {
                const int32_t dy = int32_t(src.y) - coord[size_t(gy)];
                const int32_t d2 = dx * dx + dy * dy;
                if (d2 > MaxSquare)
                    continue;
                raceTotals[gy] += strengthRow[t.distanceBySquare[size_t(d2)]];
            }
        }
        // Only the races present can win; in column order, so that the
        // lower column keeps a tie.
        std::sort(races.begin(), races.end());
        for (int gy = touchedFrom; gy <= touchedTo; ++gy) {
            int winner = 0;
            int32_t best = 0;
            for (int k : races) {
                int32_t &total = totals[size_t(k - 1) * size_t(cells) + size_t(gy)];
                if (k <= playerCount && total > best) {
                    best = total;
                    winner = k;
                }
                total = 0;
            }
            if (winner > 0) {
                grid.set(gx, gy, winner, std::min(best, 100));
                ++cellsWon[size_t(winner - 1)];
            }
        }
        for (int k : races)
            present[size_t(k - 1)] = false;
        races.clear();
        if (columnDone)
            columnDone(gx);
    }
}
