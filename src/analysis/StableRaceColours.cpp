#include "StableRaceColours.h"

#include <algorithm>

void StableRaceColours::choose(const QString &race, RaceColour colour)
{
    m_chosen.insert(race, colour);
}

bool StableRaceColours::taken(const RaceColour &colour) const
{
    return std::any_of(m_races.begin(), m_races.end(), [&](const Race &r) { return r.colour == colour; })
           || std::find(m_chosen.cbegin(), m_chosen.cend(), colour) != m_chosen.cend();
}

// A new race's colour: the user's choice; else its column's start colour,
// as a single load would give it, unless that is taken; else the first free
// start colour; with all sixteen given, one no other race of this turn shows.
RaceColour StableRaceColours::colourFor(const QString &race, int column, const QStringList &turn) const
{
    if (const auto chosen = m_chosen.constFind(race); chosen != m_chosen.constEnd())
        return *chosen;
    const RaceColours starts = defaultRaceColours();
    const RaceColour own = starts[size_t(column)];
    if (!taken(own))
        return own;
    for (const RaceColour &c : starts)
        if (!taken(c))
            return c;
    for (const RaceColour &c : starts) {
        const bool shown = std::any_of(m_races.begin(), m_races.end(),
                                       [&](const Race &r) { return r.colour == c && turn.contains(r.name); });
        if (!shown)
            return c;
    }
    return own;
}

RaceColours StableRaceColours::nextTurn(const QStringList &racesByColumn)
{
    RaceColours table = defaultRaceColours();
    for (qsizetype k = 0; k < racesByColumn.size() && k < MaxPlayers; ++k) {
        const QString &name = racesByColumn[k];
        auto known = std::find_if(m_races.begin(), m_races.end(), [&](const Race &r) { return r.name == name; });
        if (known == m_races.end()) {
            m_races.push_back({name, colourFor(name, int(k), racesByColumn)});
            known = m_races.end() - 1;
        }
        table[size_t(k)] = known->colour;
    }
    return table;
}
