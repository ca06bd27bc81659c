#pragma once
// The answer to "what is at this spot of the map?" as JSON: the pointer
// readout after the motion, the planets picked, and the detail panel after
// the click. `veltro-cli planet` writes it, and the web map carries it for
// every planet, so that both say exactly the same.

#include "MapPointer.h"
#include "MeasureTool.h"
#include "PlanetDetail.h"

#include <QJsonObject>
#include <QList>

// `readout` is null when no pointer moved (a panel asked for by row): the
// readout keys are then null. `Detail` is null when no planet was picked.
QJsonObject planetQueryJson(const PointerReadout *readout, const QList<int> &picked, const PlanetDetail &detail);

// The panel of planet row `row` alone, as a click on that planet alone
// leaves it in a game just loaded, with the readout keys null.
// PanelFillError when a value of the planet cannot be converted.
QJsonObject planetPanelJson(const GameData &d, int row);

// A trip as the Measure tool gives it: both ends (light years, and the
// planet's row and name or null), the distance to a tenth of a light year
// as the status line shows it, and the years at warp 5 to 10.
QJsonObject tripJson(const GameData &d, const MeasureEnd &from, const MeasureEnd &to);
