#pragma once
// The planets of a universe map file as the game exports it: a header line,
// then number, X, Y and name per planet, separated by tabs.

#include <QString>
#include <vector>

namespace gamegen {

struct MapPlanet {
    int number = 0;
    int x = 0;
    int y = 0;
    QString name;
};

// Throws std::runtime_error when the file cannot be read or a record is
// not number, X, Y and name.
std::vector<MapPlanet> readUniverseMap(const QString &path);

// Light years between two planets.
double distance(const MapPlanet &a, const MapPlanet &b);

} // namespace gamegen
