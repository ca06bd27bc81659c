#pragma once
// The game data as JSON (named fields, null for empty) or as a CSV planet
// table, for scripts and hosts that publish a game's state.

#include "GameData.h"

#include <QByteArray>

QByteArray exportJson(const GameData &data, bool withGrid);
QByteArray exportCsv(const GameData &data);
