#pragma once
// An imagined game on a real map: races with environment tolerances and
// scanner technology, the cluster of planets each one owns around its
// homeworld, populations, starbases, stargates, and the year each colony was
// founded, so that an old sighting can show the planet as it was then.

#include "UniverseMap.h"

#include <QString>
#include <array>
#include <cstdint>
#include <vector>

namespace gamegen {

constexpr int FirstYear = 2400;

// Gravity, temperature and radiation, each in clicks 0..100 of its scale.
using Environment = std::array<int, 3>;

struct Race {
    QString name;
    Environment ideal{};
    std::array<int, 3> tolerance{}; // half width of each habitable band, clicks
    int terraform = 0;               // clicks the race can move each scale
    int scanRange = 0;               // planetary scanner, light years
    int penRange = 0;                // penetrating scanner, 0 for none
    QString customStarbase;          // the race's own starbase design
    int homeworld = 0;               // planet index
};

struct PlanetState {
    Environment original{};
    Environment current{}; // after the owner's terraforming
    std::array<int, 3> concentration{};
    std::array<int, 3> surface{};
    int owner = -1;        // race index, -1 for none
    int founded = 0;       // year the colony was founded
    int population = 0;    // in the game year
    int mines = 0;
    int factories = 0;
    int defences = 0;
    QString starbase;      // empty for none
    int gateRange = 0;     // light years; 0 no gate, -1 no limit
    bool scanner = false;
    int remoteMinedBy = -1; // race index mining it from orbit
    int capturedBy = -1;   // race index that takes the planet over, -1 for none
    int capturedIn = 0;    // the year it does
};

struct GameModel {
    std::vector<MapPlanet> map;
    std::vector<PlanetState> planets;
    std::vector<Race> races;
    int gameYear = 0;

    // The planet's owner and population as of `year` (before the colony was
    // founded: no owner, no colonists).
    int ownerIn(int planet, int year) const;
    int populationIn(int planet, int year) const;
    // A colony gets its starbase two years after landing; homeworlds start with one.
    QString starbaseIn(int planet, int year) const;
};

// A deterministic game for `players` races (1..16) in `gameYear`.
GameModel buildGameModel(std::vector<MapPlanet> map, int players, int gameYear, quint32 seed);

// Wars along the borders: where two empires' colonies lie close, some
// colonies fall to the neighbour a few years after both were settled.
// Homeworlds hold. The planets' states in the game year change with it.
void addConquests(GameModel &game, quint32 seed);

// The planet's value in percent for a race: 100 at its ideal, falling off
// towards the edges of its bands, negative (down to -45) outside them.
int habValue(const Race &race, const Environment &env);

// The environment after the race has terraformed it as far as it can.
Environment terraformed(const Race &race, const Environment &env);

} // namespace gamegen
