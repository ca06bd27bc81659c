#pragma once
// The map drawn off screen at a size in pixels, as the command line and the
// history draw it: a canvas with its raster picture, and the redraw run once
// with the pressed buttons, clicks it raises running it again as in the window.

#include "Canvas.h"
#include "MapRedraw.h"
#include "RasterSurface.h"

#include <memory>

class MapPicture {
public:
    // `pixels` square; on a high-density screen drawn at its device pixels.
    explicit MapPicture(int pixels, double devicePixelRatio = 1.0);

    // Further surfaces (a trace) and the menu overlays draw on this canvas.
    Canvas &canvas() { return m_canvas; }
    const RasterSurface &raster() const { return *m_raster; }

    void redraw(GameData &data, OverlayButtons &buttons, ZoomFlags &zoom, RedrawHost &host);

private:
    Canvas m_canvas;
    std::shared_ptr<RasterSurface> m_raster;
};
