#include "PlanetMarker.h"

#include "MapView.h"

std::optional<QPointF> PlanetMarker::centre() const
{
    if (m_planet < 1 || m_planet > d.PlanetCount || m_planet > int(d.Planets.size()))
        return std::nullopt;
    const PlanetInfo &p = d.planet(m_planet);
    if (!inView(d, p))
        return std::nullopt;
    const CanvasPoint c = mapToCanvas(d, p);
    return QPointF(c.x, c.y);
}
