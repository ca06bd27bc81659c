#include "ZoomTool.h"

#include "Colour.h"
#include "Conversions.h"
#include "InteractionHost.h"

#include <QRandomGenerator>
#include <cmath>

ZoomTool::ZoomTool(GameData &data, ZoomFlags &zoom, OverlayButtons &buttons, Canvas &canvas)
    : random([] { return QRandomGenerator::global()->generateDouble(); }), d(data), zoom(zoom), buttons(buttons),
      canvas(canvas)
{
}

void ZoomTool::firstCorner(float x, float y)
{
    buttons.setEnabled(ClearMapButton, false);
    for (int i = UniverseButton; i <= VmkButton; ++i)
        buttons.setEnabled(i, false);
    m_originX = d.OriginX;
    m_originY = d.OriginY;
    // Rounded, not floored as the readout is, and without the view minimum:
    // a zoom always starts from the full view, where it is 0.
    d.OriginX = conv::toInt32(x / d.Scale);
    d.OriginY = conv::toInt32(y / d.Scale);
    zoom.ZoomState = 2;
    m_box = {true, x, y, 1, 1, m_box.colour};
    ZoomRed = ZoomGreen = ZoomBlue = 255;
    buttons.setEnabled(ZoomInButton, false);
}

void ZoomTool::secondCorner(InteractionHost &host)
{
    // The width serves both axes: the view stays square.
    d.FarX = conv::toInt32(m_box.width / d.Scale + d.OriginX);
    d.FarY = conv::toInt32(m_box.width / d.Scale + d.OriginY);
    d.Scale = conv::divide(10000, double(d.FarX) - d.OriginX);
    zoom.ZoomState = 0;
    canvas.cls();
    m_box.visible = false;
    for (int i = 0; i < OverlayButtonCount; ++i)
        buttons.setEnabled(i, true);
    // The territory grid ignores the view window: it stays off while zoomed.
    buttons.setPressed(TerritoryButton, false);
    buttons.setEnabled(TerritoryButton, false);
    zoom.ZoomState = 0;
    host.redraw();
}

void ZoomTool::abandon()
{
    m_box.visible = false;
    zoom.ZoomState = 0;
    zoom.ZoomArmed = 0;
    buttons.setEnabled(ZoomInButton, true);
    buttons.setPressed(ZoomInButton, false);
}

bool ZoomTool::cancel()
{
    if (zoom.ZoomState == 0)
        return false;
    if (zoom.ZoomState == 2) {
        d.OriginX = m_originX;
        d.OriginY = m_originY;
    }
    m_box.visible = false;
    zoom.ZoomState = 0;
    zoom.ZoomArmed = 0;
    // Quietly: a click would redraw, and the picture is still the one the
    // user had before arming the zoom.
    buttons.setPressedQuietly(ZoomInButton, false);
    for (int i = 0; i < OverlayButtonCount; ++i)
        buttons.setEnabled(i, true);
    return true;
}

void ZoomTool::follow(float x)
{
    m_box.width = std::fabs(x - m_box.left);
    m_box.height = m_box.width;
    const int16_t steps[3] = {conv::toInt16(random() * 20 - 10), conv::toInt16(random() * 20 - 10),
                              conv::toInt16(random() * 20 - 10)};
    ZoomRed = int16_t(ZoomRed + steps[0]);
    ZoomGreen = int16_t(ZoomGreen + steps[1]);
    ZoomBlue = int16_t(ZoomBlue + steps[2]);
    for (int16_t *c : {&ZoomRed, &ZoomGreen, &ZoomBlue}) {
        if (*c > 255)
            *c = 255;
        if (*c < 150)
            *c = 150;
    }
    m_box.colour = rgb(ZoomRed, ZoomGreen, ZoomBlue);
}
