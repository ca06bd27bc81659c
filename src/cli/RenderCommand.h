#pragma once
// `veltro-cli render`: loads a game, presses the named overlay buttons, runs
// the map redraw once and writes the picture (and optionally its trace).

#include <QStringList>

int runRender(const QStringList &arguments);
