#pragma once
// Where the main window's controls go when it is resized. The rules are in
// twips (1/1440 inch), 15 to a logical pixel, and count from the top left of
// the client area, below the menu bar: the map is a square sized by the
// window's outer height alone, the readouts sit under it, the race legend
// hugs the right edge.

#include <QRect>
#include <QSize>
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

// What the client area holds besides the rule's controls, measured from the
// widgets, in logical pixels.
struct ClientMeasures {
    QSize area;            // the client area: the window below its menu bar
    QSize frame;           // the outer size less the client area
    int readoutHeight;     // the row of readouts under the map
    int stripWidth;        // the buttons above the map, side by side
    int columnMinimumWidth; // the panel and the drawing tools beside the map
    int legendHeight;      // sixteen legend rows
    int scrollBarExtent;
};

// The rule applied to a client area that may be too small for what it
// holds. The map's side comes from the outer height, except that the
// readouts always keep their row above the bottom edge (a tall title bar
// costs the map, not the readouts). A window too narrow for the map, the
// panel and the legend side by side, or too low for the legend, is laid out
// as if it were large enough and scrolls.
struct ClientLayout {
    MainWindowGeometry rule; // twips
    QSize content;           // the laid-out client, pixels
    QSize needed;            // the least client that needs no scrolling
};
std::optional<ClientLayout> fitClientArea(const ClientMeasures &m);
