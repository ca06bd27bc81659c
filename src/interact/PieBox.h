#pragma once
// One of the detail panel's two pie charts: a square picture box of
// 1680 x 1680 units with its own canvas. Besides whatever surfaces show it,
// the box keeps the slices drawn since it was last cleared.

#include "Canvas.h"

#include <memory>
#include <vector>

struct PieSlice {
    float start;        // radians, counter-clockwise from pointing right
    float end;
    int32_t fillColour; // the canvas's fill colour when the slice was drawn
};

class PieBox {
public:
    static constexpr float Size = 1680.0f;

    PieBox();

    Canvas &canvas() { return m_canvas; }
    const std::vector<PieSlice> &slices() const;

    // Draws the pie of three amounts (ironium blue, boranium green,
    // germanium yellow) over the cleared box; nothing when their leading
    // numbers add up to 0 or less. Type mismatch or overflow when an amount
    // is not wholly a number; division by zero when the amounts round to a
    // total of 0. `failedField` then holds the index (0..2) of the amount
    // being converted or divided by.
    void draw(const QString amounts[3], int &failedField);

private:
    class SliceRecorder;
    Canvas m_canvas;
    std::shared_ptr<SliceRecorder> m_recorder;
};
