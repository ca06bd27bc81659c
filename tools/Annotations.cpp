#include "Annotations.h"

#include <QPoint>
#include <algorithm>
#include <cmath>

namespace gamegen {

namespace {

// Annotations are kept in the coordinates of the loaded planet table: X from
// the map's left edge, Y flipped against the upper bound of the universe.
QPoint universePoint(const GameModel &game, int planet)
{
    const int extent = (game.map.back().x / 100 + 1) * 100;
    const MapPlanet &p = game.map[size_t(planet)];
    return {p.x - 1000, extent - p.y};
}

} // namespace

QByteArray annotationFile(const GameModel &game)
{
    const Race &own = game.races.front();
    const QPoint home = universePoint(game, own.homeworld);
    QString out = QStringLiteral("C,%1,%2,%3,3\r\n").arg(home.x()).arg(home.y()).arg(own.scanRange);

    std::vector<size_t> rivals;
    for (size_t r = 1; r < game.races.size(); ++r)
        rivals.push_back(r);
    const auto fromHome = [&](size_t r) { return distance(game.map[size_t(own.homeworld)], game.map[size_t(game.races[r].homeworld)]); };
    std::sort(rivals.begin(), rivals.end(), [&](size_t a, size_t b) { return fromHome(a) < fromHome(b); });

    for (size_t i = 0; i < rivals.size(); ++i) {
        const QPoint p = universePoint(game, game.races[rivals[i]].homeworld);
        if (i < 2)
            out += QStringLiteral("L,%1,%2,%3,%4,%5\r\n").arg(home.x()).arg(home.y()).arg(p.x()).arg(p.y()).arg(2 + int(i) * 3);
        out += QStringLiteral("T,%1,%2,%3,10\r\n").arg(p.x()).arg(p.y()).arg(game.races[rivals[i]].name);
    }
    // A size typed with a fraction, as players sometimes do.
    out += QStringLiteral("T,%1,%2,Home,12.5\r\n").arg(home.x()).arg(home.y());
    return out.toLatin1();
}

} // namespace gamegen
