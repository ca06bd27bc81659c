#pragma once
// One player's planet report as the game exports it: a header of field
// titles, then one tab-separated line per planet the player knows, CR LF
// line ends, single-byte text.
//
// A player describes its own planets in full; planets in its scanners'
// reach as they are now (with details inside the penetrating scanners'
// reach); planets further out that its ships passed as they were then, some
// of them with nothing but their value for the player.

#include "GameModel.h"

#include <QByteArray>

namespace gamegen {

enum class ReportLayout {
    PerPlayer, // 37 fields: environment, scanners, stargates
    OldStyle,  // the older single report: fields up to the resources
};

QByteArray planetReport(const GameModel &game, int race, int exportYear, ReportLayout layout, quint32 seed);

} // namespace gamegen
