#pragma once
// The game data as JSON (named fields, null for empty) or as a CSV planet
// table, for scripts and hosts that publish a game's state.

#include "GameData.h"

#include <QIODevice>

// Both write as they go: the JSON text of a large game is over a megabyte,
// which a one-shot process would otherwise fault in page by page.
void exportJson(const GameData &data, bool withGrid, QIODevice &out);
void exportCsv(const GameData &data, QIODevice &out);
