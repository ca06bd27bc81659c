#pragma once
// One turn of a game kept for its history: a universe map file with that
// year's reports beside it. Hosts keep a backup folder per turn
// (backups/2431/GAME.map); players may instead name each copy of the map by
// its year (GAME-2431.map).

#include <QList>
#include <QString>
#include <stdexcept>

struct Snapshot {
    QString mapFile;
    int year = 0;
};

// A snapshot that cannot be placed in the history; the message names it.
struct SnapshotError : std::runtime_error {
    explicit SnapshotError(const QString &message) : std::runtime_error(message.toStdString()), message(message) {}
    QString message;
};

// "MAPFILE@YEAR", or a MAPFILE whose folder is named by the year, or whose
// base name ends in the year. Throws SnapshotError when no year is found.
Snapshot snapshotFromArgument(const QString &argument);

// The turns kept in `folder`: its subfolders named by a year, each with one
// map file; without such subfolders, its map files whose names end in a
// year. Throws SnapshotError when there are none or a turn is ambiguous.
QList<Snapshot> snapshotsInFolder(const QString &folder);

// Puts the snapshots in year order; two of one year are an error.
void sortByYear(QList<Snapshot> &snapshots);
