#include "GameData.h"

#include "Colour.h"

#include <stdexcept>

namespace {

const char *const planetNames[PlanetFieldCount] = {
    "Number", "X", "Y", "Name", "Owner", "Starbase", "AgeText", "Population", "SOI", "Hab",
    "Mines", "Factories", "Resources", "Defenses", "StoredIron", "StoredBora", "StoredGerm",
    "IronMR", "BoraMR", "GermMR", "IronMC", "BoraMC", "GermMC", "ReportAge", "TerraformedHab",
    "OwnField28", "OwnerIndex", "InOwnReport", "Gravity", "Temperature", "Radiation",
    "Gravity2", "Temperature2", "Radiation2", "GateRange", "ScannerRange", "ScannerRange2",
    "AttackScore",
};

const char *const playerNames[PlayerFieldCount] = {
    "RaceName", "MajorPlanets", "TotalPlanets", "TotalPopulation", "TotalMines",
    "TotalFactories", "TotalResources", "MinGrav", "MaxGrav", "MinTemp", "MaxTemp", "MinRad",
    "MaxRad", "Territory", "TotalIron", "TotalBora", "TotalGerm",
};

} // namespace

const char *planetFieldName(int field) { return planetNames[field - 1]; }
const char *playerFieldName(int field) { return playerNames[field - 1]; }

void TerritoryGrid::resize(int gridSize)
{
    m_gridSize = gridSize;
    const size_t cells = size_t(gridSize + 1) * size_t(gridSize + 1);
    m_owner.assign(cells, 0);
    m_strength.assign(cells, 0);
}

RaceColours defaultRaceColours()
{
    return {{{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 0},
             {255, 0, 255}, {0, 255, 255}, {200, 200, 255}, {255, 128, 0},
             {255, 0, 128}, {0, 255, 128}, {128, 255, 0}, {0, 128, 255},
             {128, 0, 255}, {255, 64, 0}, {0, 255, 64}, {64, 0, 255}}};
}

int32_t GameData::raceColour(int column) const
{
    if (column < 1 || column > MaxPlayers)
        throw std::out_of_range("Subscript out of range");
    const auto &c = RaceRGB[size_t(column - 1)];
    return rgb(c[0], c[1], c[2]);
}

void GameData::setFullView()
{
    if (UniverseExtent == 1000)
        throw conv::DivisionByZeroError();
    Scale = 10000.0 / double(UniverseExtent - 1000);
    OriginX = 0;
    OriginY = 0;
    FarX = UniverseExtent;
    FarY = UniverseExtent;
}
