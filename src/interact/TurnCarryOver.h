#pragma once
// What stays on screen when the game is loaded again for its next turn: the
// overlay buttons as they were pressed and enabled, the view with its zoom,
// the planet on the panel, and the annotations drawn so far, saved or not.

#include "GameData.h"
#include "MapRedraw.h"
#include "OverlayButtons.h"
#include "PlanetMarker.h"

#include <QString>
#include <array>

class TurnCarryOver {
public:
    TurnCarryOver(const GameData &data, const OverlayButtons &buttons, const ZoomFlags &zoom, const PlanetMarker &marker);

    // Lays it over the game just loaded. The buttons are set without
    // their clicks: the caller redraws once. Returns the planet row to show
    // again (the same row while it bears the same name, else the first of
    // that name), or 0 for none.
    int restore(GameData &data, OverlayButtons &buttons, ZoomFlags &zoom, PlanetMarker &marker) const;

private:
    std::array<bool, OverlayButtonCount> m_pressed{};
    std::array<bool, OverlayButtonCount> m_enabled{};
    ZoomFlags m_zoom;
    double m_scale;
    int32_t m_originX, m_originY, m_farX, m_farY;
    QString m_annotationText;
    int16_t m_drawColourIndex;
    int m_planet;
    QString m_planetName;
};
