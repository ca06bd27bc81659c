#pragma once
#include <QStringList>

// veltro-cli planet: what the main window shows about one spot of the map.
int runPlanet(const QStringList &arguments);
