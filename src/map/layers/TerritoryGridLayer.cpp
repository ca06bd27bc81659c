#include "MapLayers.h"

#include "Colour.h"
#include "Conversions.h"

void drawTerritoryGrid(const GameData &d, Canvas &canvas, RedrawHost &host)
{
    const int size = d.GridSize;
    host.progressStart(size + 1);
    DrawingState &s = canvas.state();
    s.DrawStyle = 0;
    s.DrawWidth = conv::toInt16(std::floor(canvas.widthTwips() / double(Canvas::ScaleWidth)) + 1);
    s.DrawMode = 13;

    // The grid ignores the view window: it is only drawn in the full view.
    std::vector<Dot> column;
    column.reserve(size_t(size + 1));
    for (int gx = 0; gx <= size; ++gx) {
        column.clear();
        const float x = float(gx * d.GridStep * d.Scale);
        for (int gy = 0; gy <= size; ++gy) {
            const int k = d.Grid.owner(gx, gy);
            if (k <= 0)
                continue;
            const double share = d.Grid.strength(gx, gy) / 100.0;
            const int32_t race = d.raceColour(k);
            const int32_t colour = rgb(conv::toInt16(share * redOf(race)), conv::toInt16(share * greenOf(race)),
                                       conv::toInt16(share * blueOf(race)));
            column.push_back({x, float(gy * d.GridStep * d.Scale), colour});
        }
        canvas.psets(column);
        host.progressStep();
    }
}
