#pragma once
// Where the main window's controls go when it is resized. The rules are in
// twips (1/1440 inch), 15 to a logical pixel: the map is a square sized by
// the window's height alone, the readouts sit under it, the race legend
// hugs the right edge.

#include <QRect>
#include <optional>

struct MainWindowGeometry {
    QRect universe;   // the map canvas
    QRect xyCoord;    // pointer coordinates
    QRect thePlanet;  // planet under the pointer
    QRect progress;
    int raceLabelLeft;
    int raceSwatchLeft;
    int detailLeft;
};

constexpr int TwipsPerPixel = 15;

// Geometry in twips for a window of outer height h and width w twips;
// nothing when the window is too small to move anything.
std::optional<MainWindowGeometry> layoutMainWindow(int h, int w);

// The same in logical pixels.
QRect twipsToPixels(const QRect &twips);
