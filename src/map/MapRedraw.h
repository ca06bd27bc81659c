#pragma once
// The one routine that repaints the map: it clears the canvas and draws
// every pressed overlay in a fixed order, and handles the start and the end
// of a zoom. It runs on every overlay button click, nested ones included.

#include "Canvas.h"
#include "GameData.h"
#include "OverlayButtons.h"
#include "RedrawHost.h"

// The zoom's two flags: armed by the redraw, driven through its corner
// clicks (0 idle, 1 armed, 2 dragging).
struct ZoomFlags {
    int16_t ZoomArmed = 0;
    int16_t ZoomState = 0;
};

class MapRedraw {
public:
    MapRedraw(GameData &data, Canvas &canvas, OverlayButtons &buttons, ZoomFlags &zoom, RedrawHost &host);

    void redrawUniverse();
    // The pressed layers once more on a clear canvas, in the view as it
    // stands, with the zoom and the drawing tools left alone: the picture a
    // redraw would give, for a canvas that changed size.
    void repaintLayers();

private:
    void drawLayers();

    GameData &d;
    Canvas &canvas;
    OverlayButtons &buttons;
    ZoomFlags &zoom;
    RedrawHost &host;
};
