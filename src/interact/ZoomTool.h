#pragma once
// The zoom's two corner clicks and the square between them. The redraw arms
// the zoom; the first click fixes the view's top left corner, the square
// then follows the pointer (always growing right and down, its border
// shimmering in light colours), and the second click makes the square the
// new view.

#include "Canvas.h"
#include "GameData.h"
#include "MapRedraw.h"
#include "OverlayButtons.h"

#include <cstdint>
#include <functional>

class InteractionHost;

// The square floating over the map, in canvas units; never part of the picture.
struct ZoomBox {
    bool visible = false;
    float left = 0;
    float top = 0;
    float width = 0;
    float height = 0;
    int32_t colour = 0xFFFFFF;
};

class ZoomTool {
public:
    ZoomTool(GameData &data, ZoomFlags &zoom, OverlayButtons &buttons, Canvas &canvas);

    const ZoomBox &box() const { return m_box; }

    // A click while the zoom is armed.
    void firstCorner(float x, float y);
    // A click while the square follows the pointer: the square as last
    // sized decides, not where this click is. DivisionByZeroError when the
    // square is too small to give a view; nothing has been redrawn then.
    void secondCorner(InteractionHost &host);
    // Gives up a zoom whose second corner failed: hides the square and
    // releases "Zoom In", whose redraw brings back the full view and every
    // overlay button.
    void abandon();
    // The user changed their mind (Escape) while the zoom is armed or the
    // square follows the pointer: the view and the picture stay as they
    // were before "Zoom In", which is released without a redraw, and every
    // overlay button is enabled again. False when no zoom was under way.
    bool cancel();
    // The pointer moved while the square follows it.
    void follow(float x);

    // Uniform on [0, 1): the shimmer's steps. Tests replace it.
    std::function<double()> random;

private:
    GameData &d;
    ZoomFlags &zoom;
    OverlayButtons &buttons;
    Canvas &canvas;
    ZoomBox m_box;
    // The view's corner before the first corner click moved it.
    int32_t m_originX = 0;
    int32_t m_originY = 0;
    int16_t ZoomRed = 255;
    int16_t ZoomGreen = 255;
    int16_t ZoomBlue = 255;
};
