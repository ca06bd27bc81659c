#pragma once
// The pointer over the map canvas: motion and clicks, in canvas units.
// Motion updates the readout (where the pointer is, which planet lies
// under it) and moves the floating rubber band, zoom square and measured
// trip. A click goes to the drawing or measuring tool chosen, else to the
// zoom's corners, else to the planet lookup that fills the detail panel.

#include "AnnotationTools.h"
#include "GameData.h"
#include "MapRedraw.h"
#include "MeasureTool.h"
#include "PlanetDetail.h"
#include "PlanetMarker.h"
#include "ZoomTool.h"

#include <QList>
#include <QString>

class InteractionHost;

// The drawing tools, in the order of their option buttons; Measure draws
// nothing on the map.
enum class DrawTool { StopDrawing, Circle, Line, Text, Measure };

struct PointerReadout {
    QString XYCoord;   // " X:412 Y:1730"
    QString thePlanet; // " Deep Space", or " " + the planet's name
    QString toolTip;   // the map's tooltip
};

class MapPointer {
public:
    MapPointer(GameData &data, ZoomFlags &zoom, ZoomTool &zoomTool, AnnotationTools &annotations,
               PlanetDetail &detail);

    DrawTool tool = DrawTool::StopDrawing;
    // The planet the panel shows, ringed on the map.
    PlanetMarker marker;
    MeasureTool measure;
    const PointerReadout &readout() const { return m_readout; }

    // Another tool chosen: a trip being measured goes with the old one.
    void chooseTool(DrawTool chosen);

    void mouseMove(float x, float y);
    // The planets that filled the panel, in table order (the last one is
    // what the panel shows). PanelFillError when a planet's value cannot be
    // converted; the zoom's and tools' own errors pass through.
    QList<int> mouseDown(float x, float y, InteractionHost &host);

    // The planets under the pointer, in table order.
    QList<int> pickedAt(float x, float y) const;

private:
    GameData &d;
    ZoomFlags &zoom;
    ZoomTool &zoomTool;
    AnnotationTools &annotations;
    PlanetDetail &detail;
    PointerReadout m_readout;
};
