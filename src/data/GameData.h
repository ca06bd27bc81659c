#pragma once
// The one store of everything known about the loaded game: the file choice,
// the merged planet table, the races, the territory grid, the race colours
// and the map view. Each generation rebuilds the tables from scratch.

#include "Value.h"

#include <QString>
#include <array>
#include <cstdint>
#include <vector>

// Fields of a planet row, numbered as the game data numbers them.
enum PlanetField : int {
    Number = 1, X, Y, Name, Owner, Starbase, AgeText, Population, SOI, Hab,
    Mines, Factories, Resources, Defenses, StoredIron, StoredBora, StoredGerm,
    IronMR, BoraMR, GermMR, IronMC, BoraMC, GermMC, ReportAge, TerraformedHab,
    OwnField28, OwnerIndex, InOwnReport, Gravity, Temperature, Radiation,
    Gravity2, Temperature2, Radiation2, GateRange, ScannerRange, ScannerRange2,
    AttackScore
};
constexpr int PlanetFieldCount = 38;

// Fields of a race column.
enum PlayerField : int {
    RaceName = 1, MajorPlanets, TotalPlanets, TotalPopulation, TotalMines,
    TotalFactories, TotalResources, MinGrav, MaxGrav, MinTemp, MaxTemp, MinRad,
    MaxRad, Territory, TotalIron, TotalBora, TotalGerm
};
constexpr int PlayerFieldCount = 17;
constexpr int MaxPlayers = 16;

// Limits of the game that bound the work of a load. The game's largest
// universes hold under a thousand planets, and it names a planet once or
// rarely twice. Generation merges every report line into every planet of
// its name and lays every planet's influence over the territory grid, so a
// damaged or crafted file with millions of planets, or thousands of one
// name, would hold the program for hours: such files are refused.
constexpr int MaxPlanets = 2000;
constexpr int MaxPlanetsOfOneName = 16;

// Field names as the exports and the planet grid know them, index = field number.
const char *planetFieldName(int field);
const char *playerFieldName(int field);

class PlanetInfo {
public:
    Value &operator[](int field) { return m_fields[field - 1]; }
    const Value &operator[](int field) const { return m_fields[field - 1]; }

private:
    std::array<Value, PlanetFieldCount> m_fields;
};

class PlayerInfo {
public:
    Value &operator[](int field) { return m_fields[field - 1]; }
    const Value &operator[](int field) const { return m_fields[field - 1]; }

private:
    std::array<Value, PlayerFieldCount> m_fields;
};

// The report files of a game, rows 0..16 (row = player number).
struct GameFileRow {
    QString path;      // column 1: full path, or empty
    QString included;  // column 2: "1" read, "0" not
    QString year;      // column 3: the year the report was exported, as typed
};

// Cells (0..G, 0..G): the owning race column (0 for none) and the winning
// influence capped at 100. Both fit a byte: the 651 x 651 cells of a
// full-size grid, cleared on every load, then take 0.8 MB instead of 3.4.
class TerritoryGrid {
public:
    void resize(int gridSize);
    int gridSize() const { return m_gridSize; }
    int32_t owner(int gx, int gy) const { return m_owner[index(gx, gy)]; }
    int32_t strength(int gx, int gy) const { return m_strength[index(gx, gy)]; }
    void set(int gx, int gy, int32_t owner, int32_t strength)
    {
        Q_ASSERT(owner >= 0 && owner <= MaxPlayers && strength >= 0 && strength <= 100);
        m_owner[index(gx, gy)] = uint8_t(owner);
        m_strength[index(gx, gy)] = uint8_t(strength);
    }
    bool operator==(const TerritoryGrid &o) const = default;

private:
    size_t index(int gx, int gy) const { return size_t(gx) * size_t(m_gridSize + 1) + size_t(gy); }
    int m_gridSize = -1;
    std::vector<uint8_t> m_owner;
    std::vector<uint8_t> m_strength;
};

using RaceColours = std::array<std::array<int16_t, 3>, MaxPlayers>;
RaceColours defaultRaceColours();

struct GameData {
    // Written by the file selection.
    QString MapFilePath;
    QString GameDir;
    QString StartDir;
    int16_t ReportFormat = 0;
    int16_t OwnRace = 0;
    QString AnnotationFilePath;
    int16_t GameYear = 0;
    int16_t OpenFileCancelled = 0;
    std::array<GameFileRow, MaxPlayers + 1> GameFiles;

    // Written by the generation.
    int32_t PlanetCount = 0;
    int32_t UniverseExtent = 0;
    QString OwnRaceName;
    int32_t PlayerCount = 0;
    std::vector<PlanetInfo> Planets;          // row i is Planets[i - 1]
    std::array<PlayerInfo, MaxPlayers> Players; // column k is Players[k - 1]
    TerritoryGrid Grid;
    RaceColours RaceRGB = defaultRaceColours();
    double GridStep = 0.0;
    int32_t GridSize = 0;
    // The annotations made or loaded, in the annotation file's format, and
    // the colour (1..7) of the next line or circle drawn.
    QString AnnotationText;
    int16_t DrawColourIndex = 1;

    // The map view.
    double Scale = 0.0;
    int32_t OriginX = 0;
    int32_t OriginY = 0;
    int32_t FarX = 0;
    int32_t FarY = 0;

    PlanetInfo &planet(int row) { return Planets[size_t(row - 1)]; }
    const PlanetInfo &planet(int row) const { return Planets[size_t(row - 1)]; }
    PlayerInfo &player(int column) { return Players[size_t(column - 1)]; }
    const PlayerInfo &player(int column) const { return Players[size_t(column - 1)]; }

    // The colour of race column k (1..16) as r + 256 g + 65536 b.
    int32_t raceColour(int column) const;
    void setFullView();
};
