#pragma once
// The ring around the planet last clicked (or found): it floats over the
// map like the rubber band, never part of the picture, so a redraw, Save Map
// and the annotation file never hold it. It follows its planet through a
// zoom and hides while the view leaves the planet out.

#include "GameData.h"

#include <QPointF>
#include <optional>

class PlanetMarker {
public:
    explicit PlanetMarker(const GameData &data) : d(data) {}

    // Planet row 1..PlanetCount, or 0 for none.
    void mark(int planet) { m_planet = planet; }
    void clear() { m_planet = 0; }
    int planet() const { return m_planet; }

    // The ring's centre in canvas units, while a planet is marked and the
    // view shows it.
    std::optional<QPointF> centre() const;

private:
    const GameData &d;
    int m_planet = 0;
};
