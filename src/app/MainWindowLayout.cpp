#include "MainWindowLayout.h"

#include <algorithm>

std::optional<MainWindowGeometry> layoutMainWindow(int h, int w)
{
    if (h < 2001 || w < 3001)
        return std::nullopt;
    MainWindowGeometry g{};
    const int side = h - 1585;
    const int readoutHeight = 285;
    g.universe = QRect(0, 560, side, side);
    g.xyCoord = QRect(0, h - 1020, side / 5, readoutHeight);
    g.thePlanet = QRect(g.xyCoord.width() + 50, h - 1020, int(side / 3.3), readoutHeight);
    g.progress = QRect(g.xyCoord.width() + g.thePlanet.width() + 100, h - 1020, int(side / 2.05), readoutHeight);
    g.raceLabelLeft = w - 2505;
    g.raceSwatchLeft = w - 1140;
    g.detailLeft = side + 100;
    return g;
}

QRect twipsToPixels(const QRect &t)
{
    return QRect(t.x() / TwipsPerPixel, t.y() / TwipsPerPixel, t.width() / TwipsPerPixel,
                 t.height() / TwipsPerPixel);
}

namespace {

constexpr int Gap = 8;        // between the panel column and the legend
constexpr int BottomGap = 2;  // under the readouts

// The outer width in twips that leaves the panel column its minimum
// between the map and the legend.
int neededOuterWidth(const ClientMeasures &m, int outerHeight)
{
    const int detailLeft = (outerHeight - 1585 + 100) / TwipsPerPixel;
    return (detailLeft + m.columnMinimumWidth + Gap) * TwipsPerPixel + 2505;
}

} // namespace

std::optional<ClientLayout> fitClientArea(const ClientMeasures &m)
{
    const int outerHeight = (m.area.height() + m.frame.height()) * TwipsPerPixel;
    bool across = false; // a horizontal scroll bar takes the bottom of the area
    bool down = false;   // a vertical one its right edge
    int h = 0;
    QSize needed;
    // Twice: a scroll bar that one pass finds takes room the next must count.
    for (int pass = 0; pass < 2; ++pass) {
        const int areaHeight = m.area.height() - (across ? m.scrollBarExtent : 0);
        const int areaWidth = m.area.width() - (down ? m.scrollBarExtent : 0);
        h = std::min(outerHeight, (areaHeight - m.readoutHeight - BottomGap) * TwipsPerPixel + 1020);
        const int width = (neededOuterWidth(m, h) + TwipsPerPixel - 1) / TwipsPerPixel - m.frame.width();
        const int readoutBottom = (h - 1020) / TwipsPerPixel + m.readoutHeight + BottomGap;
        needed = QSize(std::max(width, m.stripWidth), std::max(readoutBottom, 560 / TwipsPerPixel + m.legendHeight));
        across = needed.width() > areaWidth;
        down = needed.height() > areaHeight;
    }
    const QSize area(m.area.width() - (down ? m.scrollBarExtent : 0), m.area.height() - (across ? m.scrollBarExtent : 0));
    const QSize content = needed.expandedTo(area);
    const auto rule = layoutMainWindow(h, (content.width() + m.frame.width()) * TwipsPerPixel);
    if (!rule)
        return std::nullopt;
    return ClientLayout{*rule, content, needed};
}
