#pragma once
// Finding a planet by its name, as a player asks "where is Zeta Tau?": the
// names to complete while the name is typed, the planet a typed text means,
// and that planet shown as a click on it shows it, ringed on the map, with
// a zoomed view moved over to it when it lies outside.

#include "GameData.h"
#include "MapRedraw.h"
#include "PlanetDetail.h"
#include "PlanetMarker.h"

#include <QStringList>

class PlanetFinder {
public:
    PlanetFinder(GameData &data, const ZoomFlags &zoom, PlanetMarker &marker, PlanetDetail &detail)
        : d(data), zoom(zoom), marker(marker), detail(detail) {}

    // Every planet name once, in alphabetical order whatever the case.
    QStringList names() const;
    // The planet a typed text means, whatever the case and the blanks
    // around it: the planet of that name, else the first whose name starts
    // with it, else the first whose name holds it, in table order; 0 when
    // no name holds it. The same order as the web map's search.
    int match(const QString &text) const;
    // Planet row `row` as a click on it shows it: ringed, and the panel
    // filled. A zoomed view that leaves it out is first moved to centre it
    // at the same scale; the map must then be drawn again. PanelFillError
    // when a value cannot be converted, after the view has moved.
    void show(int row);

private:
    GameData &d;
    const ZoomFlags &zoom;
    PlanetMarker &marker;
    PlanetDetail &detail;
};
