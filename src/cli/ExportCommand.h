#pragma once
// `veltro-cli export`: the game data after a generation as JSON or CSV.

#include <QStringList>

int runExport(const QStringList &arguments);
