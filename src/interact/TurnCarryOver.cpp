#include "TurnCarryOver.h"

TurnCarryOver::TurnCarryOver(const GameData &data, const OverlayButtons &buttons, const ZoomFlags &zoom,
                             const PlanetMarker &marker)
    : m_zoom(zoom), m_scale(data.Scale), m_originX(data.OriginX), m_originY(data.OriginY), m_farX(data.FarX),
      m_farY(data.FarY), m_annotationText(data.AnnotationText), m_drawColourIndex(data.DrawColourIndex),
      m_planet(marker.planet())
{
    for (int i = 0; i < OverlayButtonCount; ++i) {
        m_pressed[size_t(i)] = buttons.pressed(i);
        m_enabled[size_t(i)] = buttons.enabled(i);
    }
    if (m_planet > 0 && m_planet <= data.PlanetCount)
        m_planetName = data.planet(m_planet)[Name].text();
    else
        m_planet = 0;
}

int TurnCarryOver::restore(GameData &data, OverlayButtons &buttons, ZoomFlags &zoom, PlanetMarker &marker) const
{
    for (int i = 0; i < OverlayButtonCount; ++i) {
        buttons.setPressedQuietly(i, m_pressed[size_t(i)]);
        buttons.setEnabled(i, m_enabled[size_t(i)]);
    }
    zoom = m_zoom;
    data.Scale = m_scale;
    data.OriginX = m_originX;
    data.OriginY = m_originY;
    data.FarX = m_farX;
    data.FarY = m_farY;
    data.AnnotationText = m_annotationText;
    data.DrawColourIndex = m_drawColourIndex;

    int row = 0;
    if (m_planet) {
        if (m_planet <= data.PlanetCount && data.planet(m_planet)[Name].text() == m_planetName)
            row = m_planet;
        for (int i = 1; i <= data.PlanetCount && !row; ++i)
            if (data.planet(i)[Name].text() == m_planetName)
                row = i;
    }
    marker.mark(row);
    return row;
}
