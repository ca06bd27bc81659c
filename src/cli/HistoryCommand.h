#pragma once
// `veltro-cli history`: loads a game's turns, one snapshot each, as export
// and render load a game, draws every turn with the same redraw and race
// colours that hold from turn to turn, and writes them as an animated GIF
// (and optionally one PNG per year).

#include <QStringList>

int runHistory(const QStringList &arguments);
