#include "MapPointer.h"

#include "Conversions.h"
#include "MapPick.h"

MapPointer::MapPointer(GameData &data, ZoomFlags &zoom, ZoomTool &zoomTool, AnnotationTools &annotations,
                       PlanetDetail &detail)
    : marker(data), measure(data), d(data), zoom(zoom), zoomTool(zoomTool), annotations(annotations), detail(detail)
{
}

void MapPointer::chooseTool(DrawTool chosen)
{
    if (chosen != DrawTool::Measure)
        measure.cancel();
    tool = chosen;
}

QList<int> MapPointer::pickedAt(float x, float y) const
{
    QList<int> picked;
    for (int i = 1; i <= d.PlanetCount; ++i)
        if (pickRule(d, d.planet(i), x, y))
            picked << i;
    return picked;
}

void MapPointer::mouseMove(float x, float y)
{
    // Before any game the view has no scale: the readout shows canvas units.
    if (d.Scale == 0)
        d.Scale = 1;
    annotations.follow(x, y);
    measure.follow(x, y);
    if (zoom.ZoomState == 2)
        zoomTool.follow(x);
    if (zoom.ZoomState == 0) {
        m_readout.thePlanet = QStringLiteral(" Deep Space");
        m_readout.toolTip.clear();
        // Every planet is tried: of several under the pointer the last in the table is named.
        for (int i : pickedAt(x, y)) {
            const QString name = d.planet(i)[Name].text();
            m_readout.thePlanet = u' ' + name;
            m_readout.toolTip = QStringLiteral("Click for more information on ") + name;
        }
    }
    m_readout.XYCoord = QStringLiteral(" X:") + conv::shortestText(canvasToUniverseX(d, x)) + QStringLiteral(" Y:") +
                        conv::shortestText(canvasToUniverseY(d, y));
}

QList<int> MapPointer::mouseDown(float x, float y, InteractionHost &host)
{
    if (tool == DrawTool::Line)
        annotations.lineStep(x, y);
    if (tool == DrawTool::Circle)
        annotations.circleStep(x, y);
    if (tool == DrawTool::Text)
        annotations.textStep(x, y, host);
    if (tool == DrawTool::Measure)
        measure.click(x, y);
    if (zoom.ZoomState != 0 || tool != DrawTool::StopDrawing) {
        // Zoom corners count only with "Stop Drawing" chosen.
        if (tool != DrawTool::StopDrawing)
            return {};
        if (zoom.ZoomState == 1)
            zoomTool.firstCorner(x, y);
        else
            zoomTool.secondCorner(host);
        return {};
    }
    // The working values of the hab estimate start afresh with each click.
    HabCarry carry;
    const QList<int> picked = pickedAt(x, y);
    for (int i : picked) {
        marker.mark(i);
        detail.fill(d, i, carry);
    }
    return picked;
}
