#pragma once
// Race colours that hold across the turns of a game. Each load gives race
// column k the k-th start colour, and the columns follow the order in which
// the reports first mention the races, which changes from turn to turn; a
// history drawn that way shows a race in a new colour whenever the order
// changes. Here a race keeps the colour of its first turn, and a race that
// appears later never takes a colour already given while others are free.

#include "GameData.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <vector>

using RaceColour = std::array<int16_t, 3>;

class StableRaceColours {
public:
    // A colour the user gave the race: kept in every turn and reserved from
    // the start, so no other race gets it while others are free.
    void choose(const QString &race, RaceColour colour);

    // The races of the next turn in year order, by column; returns that
    // turn's colour table (columns beyond the races keep the start colours).
    RaceColours nextTurn(const QStringList &racesByColumn);

    struct Race {
        QString name;
        RaceColour colour;
    };
    // Every race met so far, in order of first appearance.
    const std::vector<Race> &races() const { return m_races; }

private:
    bool taken(const RaceColour &colour) const;
    RaceColour colourFor(const QString &race, int column, const QStringList &turn) const;

    std::vector<Race> m_races;
    QHash<QString, RaceColour> m_chosen;
};
