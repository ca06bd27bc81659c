#pragma once
// "File ▸ Recent Games": the last eight games loaded, newest first, each
// with the choice it was loaded with (own race, years, reports left out),
// kept between runs in the desktop program's settings.

#include "GameChoice.h"
#include "GameData.h"

#include <QList>
#include <QString>

struct RecentGame {
    QString mapFile; // absolute path
    GameChoice choice;
    QString ownRaceName;
    // What the menu shows: the file name, the own race, the game year.
    QString caption() const;
};

class RecentGames {
public:
    static constexpr int Kept = 8;

    QList<RecentGame> games() const;
    // The game `data` now holds goes first, in place of an older entry of
    // the same map file.
    void loaded(const GameData &data);
    void forget(const QString &mapFile);

private:
    void store(const QList<RecentGame> &games);
};
