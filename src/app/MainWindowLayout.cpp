#include "MainWindowLayout.h"

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
