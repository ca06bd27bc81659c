#pragma once
// The web map's data, written as scripts that hand it to the page (a page
// opened from disk may load scripts beside it, but not read files): the
// site's index, and for each year what the pointer and the detail panel
// need, worked out by the same code as `planet`'s answers.

#include "GameData.h"
#include "HistoryFrame.h"

#include <QByteArray>
#include <QString>
#include <vector>

// veltroMap.site({...}): the title, the detail panel's label names, the
// map's size, the years, the views.
QByteArray siteScript(const QString &title, int mapPixels, const std::vector<int> &years);

// veltroMap.year({...}) for `game` in the full view: what the pointer
// needs, the view values, every planet's pick point and name, and the races
// present with their colours and the "Hab" tab's race names. Small, so
// that the map answers the pointer as soon as it shows.
QByteArray yearScript(int year, const GameData &game, const HistoryLegend &legend);

// veltroMap.panels({...}): every planet's panel as `planet --number N`
// gives it (or the message `planet` would stop with), its labels' values
// in the order of the site's label names and its pie slices as [start,
// end, FillColor].
QByteArray panelsScript(int year, const GameData &game);
