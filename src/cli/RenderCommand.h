#pragma once
// `veltro-cli render`: loads a game, presses the named overlay buttons, runs
// the map redraw once, draws the --overlay menu overlays over it in the order
// given and writes the picture (and optionally its trace).

#include <QStringList>

int runRender(const QStringList &arguments);
