#include "MapRedraw.h"

#include "layers/MapLayers.h"

MapRedraw::MapRedraw(GameData &data, Canvas &canvas, OverlayButtons &buttons, ZoomFlags &zoom, RedrawHost &host)
    : d(data), canvas(canvas), buttons(buttons), zoom(zoom), host(host)
{
}

void MapRedraw::redrawUniverse()
{
    if (zoom.ZoomArmed == 0 && buttons.pressed(ZoomInButton)) {
        zoom.ZoomState = 1;
        zoom.ZoomArmed = 1;
        host.selectStopDrawing();
        return;
    }
    if (!buttons.pressed(ZoomInButton)) {
        d.setFullView();
        zoom.ZoomState = 0;
        zoom.ZoomArmed = 0;
        for (int i = 0; i < OverlayButtonCount; ++i)
            buttons.setEnabled(i, true);
        host.selectStopDrawing();
        host.enableDrawingTools();
    }
    canvas.cls();
    if (buttons.pressed(ClearMapButton)) {
        // Each release runs a nested redraw; the last one leaves a blank map.
        for (int i = UniverseButton; i <= VmkButton; ++i)
            buttons.setPressed(i, false);
        canvas.cls();
        buttons.setPressed(ClearMapButton, false);
    }
    drawLayers();
}

void MapRedraw::repaintLayers()
{
    canvas.cls();
    drawLayers();
}

void MapRedraw::drawLayers()
{
    if (buttons.pressed(ScannedButton))
        drawScannedPlanets(d, canvas);
    if (buttons.pressed(BordersButton))
        drawSoiBorders(d, canvas);
    if (buttons.pressed(TerritoryButton))
        drawTerritoryGrid(d, canvas, host);
    if (buttons.pressed(UniverseButton))
        drawUniverse(d, canvas);
    if (buttons.pressed(HabButton))
        drawHabLayer(d, canvas);
    if (buttons.pressed(OwnedButton))
        drawOwnedPlanets(d, canvas);
    if (buttons.pressed(AttackButton))
        drawDifficultyOfAttack(d, canvas);
    if (buttons.pressed(GrowthButton))
        drawGrowthLayer(d, canvas);
    if (buttons.pressed(VmkButton))
        replayAnnotations(d, canvas, host);
}
