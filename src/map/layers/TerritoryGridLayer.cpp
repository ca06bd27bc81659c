#include "MapLayers.h"

#include "Colour.h"
#include "Conversions.h"

#include <array>
#include <cmath>

namespace {

// The colour of a cell won with strength s (0..100) by a race: the race
// colour dimmed to s %, each component rounded half to even.
int32_t dimmed(int32_t race, int strength)
{
    const double share = strength / 100.0;
    return rgb(conv::toInt16(share * redOf(race)), conv::toInt16(share * greenOf(race)),
               conv::toInt16(share * blueOf(race)));
}

} // namespace

void drawTerritoryGrid(const GameData &d, Canvas &canvas, RedrawHost &host)
{
    const int size = d.GridSize;
    host.progressStart(size + 1);
    DrawingState &s = canvas.state();
    s.DrawStyle = 0;
    s.DrawWidth = conv::toInt16(std::floor(canvas.widthTwips() / double(Canvas::ScaleWidth)) + 1);
    s.DrawMode = 13;

    // 424,000 cells share 16 x 101 colours and 651 positions per axis:
    // work them out once.
    std::array<std::array<int32_t, 101>, MaxPlayers> colours{};
    std::array<bool, MaxPlayers> coloured{};
    std::vector<float> position(size_t(size + 1));
    for (int g = 0; g <= size; ++g)
        position[size_t(g)] = conv::toSingle(g * d.GridStep * d.Scale);

    // The grid ignores the view window: it is only drawn in the full view.
    std::vector<Dot> column;
    column.reserve(size_t(size + 1));
    for (int gx = 0; gx <= size; ++gx) {
        column.clear();
        for (int gy = 0; gy <= size; ++gy) {
            const int k = d.Grid.owner(gx, gy);
            if (k <= 0)
                continue;
            const int strength = d.Grid.strength(gx, gy);
            int32_t colour;
            if (k <= MaxPlayers && strength >= 0 && strength <= 100) {
                if (!coloured[size_t(k - 1)]) {
                    for (int v = 0; v <= 100; ++v)
                        colours[size_t(k - 1)][size_t(v)] = dimmed(d.raceColour(k), v);
                    coloured[size_t(k - 1)] = true;
                }
                colour = colours[size_t(k - 1)][size_t(strength)];
            } else {
                colour = dimmed(d.raceColour(k), strength);
            }
            column.push_back({position[size_t(gx)], position[size_t(gy)], colour});
        }
        canvas.psets(column);
        host.progressStep();
    }
}
