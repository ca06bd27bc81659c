#include "MapPicture.h"

// The canvas box's outer width in twips is 15 per pixel.
MapPicture::MapPicture(int pixels, double devicePixelRatio)
    : m_canvas(pixels * 15), m_raster(std::make_shared<RasterSurface>(pixels, devicePixelRatio))
{
    m_canvas.addSurface(m_raster);
}

void MapPicture::redraw(GameData &data, OverlayButtons &buttons, ZoomFlags &zoom, RedrawHost &host)
{
    MapRedraw redraw(data, m_canvas, buttons, zoom, host);
    // The buttons outlive this redraw: they must not keep calling it.
    struct Unhook {
        OverlayButtons &buttons;
        ~Unhook() { buttons.onClick = nullptr; }
    } unhook{buttons};
    buttons.onClick = [&redraw](int) { redraw.redrawUniverse(); };
    redraw.redrawUniverse();
}
