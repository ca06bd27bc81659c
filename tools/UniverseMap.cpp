#include "UniverseMap.h"

#include <QFile>
#include <QRegularExpression>
#include <cmath>
#include <stdexcept>

namespace gamegen {

std::vector<MapPlanet> readUniverseMap(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error(QStringLiteral("%1: %2").arg(path, file.errorString()).toStdString());
    // Map files are single-byte text; the names we meet are all Latin-1.
    const QStringList lines = QString::fromLatin1(file.readAll()).split(QRegularExpression(QStringLiteral("\r\n|\r|\n")));

    std::vector<MapPlanet> planets;
    for (qsizetype i = 1; i < lines.size(); ++i) {
        if (lines[i].isEmpty())
            continue;
        const QStringList f = lines[i].split(u'\t');
        bool okNumber = false, okX = false, okY = false;
        MapPlanet p;
        if (f.size() >= 4) {
            p.number = f[0].toInt(&okNumber);
            p.x = f[1].toInt(&okX);
            p.y = f[2].toInt(&okY);
            p.name = f.mid(3).join(u'\t');
        }
        if (!okNumber || !okX || !okY)
            throw std::runtime_error(QStringLiteral("%1:%2: not a planet record").arg(path).arg(i + 1).toStdString());
        planets.push_back(p);
    }
    if (planets.empty())
        throw std::runtime_error(QStringLiteral("%1: the map lists no planets").arg(path).toStdString());
    return planets;
}

double distance(const MapPlanet &a, const MapPlanet &b)
{
    return std::hypot(double(a.x - b.x), double(a.y - b.y));
}

} // namespace gamegen
