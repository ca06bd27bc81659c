#pragma once
// Drawing on the map: lines, circles and texts in one of seven colours.
// Each drawing goes on the canvas at once and is written down, in light
// years, as a record of the annotation text; "Save VMK" keeps the text in
// the annotation file beside the game, which the map replays on redraw.
//
// A line or circle takes two clicks. The first shows a rubber band that
// follows the pointer from there; the second finishes it, as a line or as a
// circle depending on the tool chosen at that moment, so a pending band
// survives tool changes.

#include "Canvas.h"
#include "GameData.h"

#include <cstdint>

class InteractionHost;
class OverlayButtons;

// The rubber band floating over the map, in canvas units; never part of the picture.
struct RubberLine {
    bool visible = false;
    float x1 = 0;
    float y1 = 0;
    float x2 = 0;
    float y2 = 0;
    int32_t colour = 0xFFFFFF;
};

class AnnotationTools {
public:
    AnnotationTools(GameData &data, Canvas &canvas);

    const RubberLine &rubberLine() const { return m_line; }

    // The pointer moved: a pending band's free end follows it.
    void follow(float x, float y);
    // Clicks with the line, circle and text tools.
    void lineStep(float x, float y);
    void circleStep(float x, float y);
    void textStep(float x, float y, InteractionHost &host);
    // The colour button `index` (0..6) was chosen.
    void colourClick(int index);

    // Writes the annotation text to the game's annotation file, replacing it
    // only once the new file is complete. The message to show: where it was
    // saved, or why it could not be.
    QString save() const;
    // Forgets the annotations (the file stays until the next save), releases
    // "Display VMK" and redraws.
    void clear(OverlayButtons &buttons, InteractionHost &host);

private:
    // Starts the band at the click, or returns false when one is pending.
    bool startBand(float x, float y);
    // Copy pen, width 2, solid: the settings every finished drawing leaves.
    void setPen();
    QString universePoint(float x, float y) const;

    GameData &d;
    Canvas &canvas;
    RubberLine m_line;
};
