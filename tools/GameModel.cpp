#include "GameModel.h"

#include <QRandomGenerator>
#include <algorithm>
#include <cmath>

namespace gamegen {

namespace {

// Plain names without commas or quotes: other players' reports are read
// item by item, so a comma would cut their lines short.
const char *const RaceNames[] = {
    "Drevani", "Quillfolk", "Halcyons", "Morrow Kin", "Ashari", "Tessellates", "Vorn", "K\xfcstari",
    "Pelagians", "Sable Court", "Ironbound", "Lumen", "Obsidians", "Ferrals", "Wendish", "Cinder Folk",
};
const char *const CustomStarbases[] = {
    "Picket Post", "Harbour II", "Watchtower", "Anvil Mk3", "Gatehouse", "Bulwark",
    "Needle", "Lantern", "Citadel B", "Drydock Four", "Warden", "Spindle",
};
const int GateRanges[] = {100, 150, 250, 300, 500, 600, -1};

int pick(QRandomGenerator &rng, int from, int to) // inclusive
{
    return from + int(rng.bounded(quint32(to - from + 1)));
}

bool chance(QRandomGenerator &rng, double p)
{
    return rng.generateDouble() < p;
}

int logUniform(QRandomGenerator &rng, double low, double high)
{
    const double v = low * std::pow(high / low, rng.generateDouble());
    return int(std::lround(v / 100)) * 100;
}

Race makeRace(QRandomGenerator &rng, int index, int nameOffset)
{
    Race race;
    race.name = QString::fromLatin1(RaceNames[(nameOffset + index) % 16]);
    for (int k = 0; k < 3; ++k) {
        race.ideal[size_t(k)] = pick(rng, 15, 85);
        race.tolerance[size_t(k)] = pick(rng, 15, 40);
    }
    race.terraform = pick(rng, 0, 3) * 5;
    race.scanRange = std::array{80, 125, 150, 200, 250}[rng.bounded(5)];
    race.penRange = std::array{0, 0, 50, 85, 120}[rng.bounded(5)];
    race.customStarbase = QString::fromLatin1(CustomStarbases[(nameOffset + 5 * index) % 12]);
    return race;
}

// Homeworlds as far from each other as the map allows: each next one is the
// planet farthest from all chosen so far.
std::vector<int> spreadHomeworlds(const std::vector<MapPlanet> &map, int count, QRandomGenerator &rng)
{
    std::vector<int> chosen{int(rng.bounded(quint32(map.size())))};
    std::vector<double> nearest(map.size(), 1e300);
    while (int(chosen.size()) < count) {
        const MapPlanet &last = map[size_t(chosen.back())];
        for (size_t i = 0; i < map.size(); ++i)
            nearest[i] = std::min(nearest[i], distance(map[i], last));
        chosen.push_back(int(std::max_element(nearest.begin(), nearest.end()) - nearest.begin()));
    }
    return chosen;
}

// The next colony of a race: among the six nearest free planets the most
// habitable, though now and then simply the nearest, for its position.
int nextColony(const GameModel &game, const Race &race, QRandomGenerator &rng)
{
    const MapPlanet &home = game.map[size_t(race.homeworld)];
    std::vector<int> free;
    for (size_t i = 0; i < game.planets.size(); ++i)
        if (game.planets[i].owner < 0)
            free.push_back(int(i));
    if (free.empty())
        return -1;
    const size_t n = std::min<size_t>(6, free.size());
    std::partial_sort(free.begin(), free.begin() + std::ptrdiff_t(n), free.end(), [&](int a, int b) {
        return distance(game.map[size_t(a)], home) < distance(game.map[size_t(b)], home);
    });
    if (chance(rng, 0.2))
        return free.front();
    return *std::max_element(free.begin(), free.begin() + std::ptrdiff_t(n), [&](int a, int b) {
        return habValue(race, game.planets[size_t(a)].original) < habValue(race, game.planets[size_t(b)].original);
    });
}

void settle(PlanetState &p, const Race &race, bool homeworld, int gameYear, QRandomGenerator &rng)
{
    const int years = gameYear - p.founded;
    p.population = homeworld ? logUniform(rng, 900000, 2000000)
                             : logUniform(rng, 10000, std::min(1800000, 20000 + 80000 * years));
    p.factories = int(p.population / 1000 * (0.3 + 0.7 * rng.generateDouble()));
    p.mines = int(p.population / 1000 * (0.3 + 0.7 * rng.generateDouble()));
    p.defences = homeworld ? 100 : p.population >= 50000 ? pick(rng, 0, 100) : 0;
    for (int k = 0; k < 3; ++k)
        p.surface[size_t(k)] = pick(rng, 50, 5000);
    p.scanner = homeworld || chance(rng, 0.7);

    const QString designs[] = {QStringLiteral("Orbital Fort"), QStringLiteral("Space Dock"), QStringLiteral("Starter Colony"),
                               race.customStarbase, race.customStarbase, QStringLiteral("Space Station")};
    if (homeworld) {
        const double roll = rng.generateDouble();
        p.starbase = roll < 0.7 ? QStringLiteral("Space Station") : roll < 0.9 ? QStringLiteral("Ultra Station")
                                                                               : QStringLiteral("Death Star");
    } else if (years >= 2 && chance(rng, 0.55)) {
        p.starbase = designs[rng.bounded(6)];
    }
    // Forts and starter colonies are too small to carry a gate.
    const bool canGate = !p.starbase.isEmpty() && p.starbase != u"Orbital Fort" && p.starbase != u"Starter Colony";
    if (canGate && chance(rng, homeworld ? 0.7 : 0.4))
        p.gateRange = GateRanges[rng.bounded(7)];

    for (int k = 0; k < 3; ++k) {
        const int gap = race.ideal[size_t(k)] - p.original[size_t(k)];
        const int step = std::min(std::abs(gap), pick(rng, 0, race.terraform));
        p.current[size_t(k)] = p.original[size_t(k)] + (gap < 0 ? -step : step);
    }
}

} // namespace

int GameModel::ownerIn(int planet, int year) const
{
    const PlanetState &p = planets[size_t(planet)];
    if (p.capturedBy >= 0 && year >= p.capturedIn)
        return p.capturedBy;
    return p.owner >= 0 && year >= p.founded ? p.owner : -1;
}

int GameModel::populationIn(int planet, int year) const
{
    if (ownerIn(planet, year) < 0)
        return 0;
    // Colonies grow by about a tenth a year until they fill up.
    const double then = planets[size_t(planet)].population * std::pow(1.1, year - gameYear);
    return std::max(2500, int(std::lround(then / 100)) * 100);
}

QString GameModel::starbaseIn(int planet, int year) const
{
    const PlanetState &p = planets[size_t(planet)];
    const bool homeworld = p.owner >= 0 && races[size_t(p.owner)].homeworld == planet;
    // Invaders shoot the starbase down first.
    const bool captured = p.capturedBy >= 0 && year >= p.capturedIn;
    return ownerIn(planet, year) >= 0 && !captured && (homeworld || year >= p.founded + 2) ? p.starbase : QString();
}

int habValue(const Race &race, const Environment &env)
{
    double inside = 1.0;
    int outside = 0;
    for (int k = 0; k < 3; ++k) {
        const int off = std::abs(env[size_t(k)] - race.ideal[size_t(k)]);
        const int width = race.tolerance[size_t(k)];
        if (off > width)
            outside += off - width;
        else
            inside *= 1.0 - 0.7 * (double(off) / width) * (double(off) / width);
    }
    if (outside > 0)
        return -std::min(45, outside);
    return std::max(1, int(std::lround(100 * inside)));
}

Environment terraformed(const Race &race, const Environment &env)
{
    Environment result = env;
    for (int k = 0; k < 3; ++k) {
        const int gap = race.ideal[size_t(k)] - env[size_t(k)];
        const int step = std::min(std::abs(gap), race.terraform);
        result[size_t(k)] += gap < 0 ? -step : step;
    }
    return result;
}

void addConquests(GameModel &game, quint32 seed)
{
    QRandomGenerator rng(seed ^ 0xC0DE0003u);
    std::vector<bool> homeworld(game.planets.size(), false);
    for (const Race &race : game.races)
        homeworld[size_t(race.homeworld)] = true;
    for (size_t i = 0; i < game.planets.size(); ++i) {
        PlanetState &p = game.planets[i];
        if (p.owner < 0 || homeworld[i])
            continue;
        // A colony on the front: a rival's planet lies not much further off
        // than the colony's nearest own neighbour.
        int nearest = -1;
        double ownDistance = 1e300, rivalDistance = 1e300;
        for (size_t j = 0; j < game.planets.size(); ++j) {
            const int owner = game.planets[j].owner;
            const double d = distance(game.map[i], game.map[j]);
            if (j == i || owner < 0)
                continue;
            if (owner == p.owner) {
                ownDistance = std::min(ownDistance, d);
            } else if (d < rivalDistance) {
                rivalDistance = d;
                nearest = int(j);
            }
        }
        if (nearest < 0 || rivalDistance > 2 * ownDistance || !chance(rng, 0.5))
            continue;
        const int year = std::max(p.founded, game.planets[size_t(nearest)].founded) + pick(rng, 1, 6);
        if (year > game.gameYear)
            continue;
        p.capturedBy = game.planets[size_t(nearest)].owner;
        p.capturedIn = year;
    }
}

GameModel buildGameModel(std::vector<MapPlanet> map, int players, int gameYear, quint32 seed)
{
    QRandomGenerator rng(seed);
    GameModel game;
    game.map = std::move(map);
    game.gameYear = gameYear;
    game.planets.resize(game.map.size());
    for (PlanetState &p : game.planets) {
        for (int k = 0; k < 3; ++k) {
            p.original[size_t(k)] = pick(rng, 0, 100);
            p.concentration[size_t(k)] = pick(rng, 1, 120);
            p.surface[size_t(k)] = pick(rng, 0, 400);
        }
        p.current = p.original;
    }

    players = std::min(players, int(game.map.size()));
    const int nameOffset = int(rng.bounded(16));
    const std::vector<int> homes = spreadHomeworlds(game.map, players, rng);
    std::vector<int> targets;
    for (int r = 0; r < players; ++r) {
        Race race = makeRace(rng, r, nameOffset);
        race.homeworld = homes[size_t(r)];
        PlanetState &home = game.planets[size_t(race.homeworld)];
        home.original = home.current = race.ideal;
        home.owner = r;
        home.founded = FirstYear;
        game.races.push_back(race);
        // Colonies take up to about a third of a race's share of the map.
        const double share = double(game.map.size()) / players;
        targets.push_back(int(share * (0.12 + 0.2 * rng.generateDouble())));
    }

    // Races expand in turns so that no cluster swallows its neighbours'.
    std::vector<std::vector<int>> colonies(static_cast<size_t>(players));
    for (bool grew = true; grew;) {
        grew = false;
        for (int r = 0; r < players; ++r) {
            if (int(colonies[size_t(r)].size()) >= targets[size_t(r)])
                continue;
            const int planet = nextColony(game, game.races[size_t(r)], rng);
            if (planet < 0)
                break;
            game.planets[size_t(planet)].owner = r;
            colonies[size_t(r)].push_back(planet);
            grew = true;
        }
    }

    for (int r = 0; r < players; ++r) {
        const Race &race = game.races[size_t(r)];
        // Nearer colonies were settled first.
        std::vector<int> years;
        for (size_t i = 0; i < colonies[size_t(r)].size(); ++i)
            years.push_back(pick(rng, std::min(FirstYear + 2, gameYear), gameYear));
        std::sort(years.begin(), years.end());
        for (size_t i = 0; i < years.size(); ++i)
            game.planets[size_t(colonies[size_t(r)][i])].founded = years[i];
        settle(game.planets[size_t(race.homeworld)], race, true, gameYear, rng);
        for (int planet : colonies[size_t(r)])
            settle(game.planets[size_t(planet)], race, false, gameYear, rng);

        // One free planet near home is mined from orbit.
        int mined = -1;
        for (size_t i = 0; i < game.planets.size(); ++i) {
            const PlanetState &p = game.planets[i];
            const double d = distance(game.map[i], game.map[size_t(race.homeworld)]);
            if (p.owner < 0 && p.remoteMinedBy < 0 && d <= 200
                && (mined < 0 || d < distance(game.map[size_t(mined)], game.map[size_t(race.homeworld)])))
                mined = int(i);
        }
        if (mined >= 0)
            game.planets[size_t(mined)].remoteMinedBy = r;
    }
    return game;
}

} // namespace gamegen
