#include "Tolerances.h"

#include <cmath>

void setToleranceStartValues(PlayerInfo &race)
{
    race[MinGrav] = Value(8);
    race[MaxGrav] = Value(0.12);
    race[MinTemp] = Value(200);
    race[MaxTemp] = Value(-200);
    race[MinRad] = Value(100);
    race[MaxRad] = Value(0);
}

namespace {

void widen(PlayerInfo &race)
{
    double minGrav = race[MinGrav].val(), maxGrav = race[MaxGrav].val();
    if (minGrav == maxGrav)
        maxGrav = minGrav * 1.75;
    if (minGrav / maxGrav > 0.75)
        maxGrav = maxGrav + 0.5;
    if (maxGrav > 8)
        maxGrav = 8;
    race[MaxGrav] = Value(maxGrav);

    const double minTemp = race[MinTemp].val();
    double maxTemp = race[MaxTemp].val();
    if (minTemp == maxTemp)
        maxTemp = minTemp + 80;
    if (maxTemp > 200)
        maxTemp = 200;
    race[MaxTemp] = Value(maxTemp);

    const double minRad = race[MinRad].val();
    double maxRad = race[MaxRad].val();
    if (minRad == maxRad)
        maxRad = minRad + 20;
    if (maxRad > 100)
        maxRad = 100;
    race[MaxRad] = Value(maxRad);
}

void narrowTo(PlayerInfo &race, double value, PlayerField low, PlayerField high)
{
    if (value < race[low].val())
        race[low] = Value(value);
    if (value > race[high].val())
        race[high] = Value(value);
}

} // namespace

void estimateTolerancesAndTerritory(GameData &data, const std::array<int32_t, MaxPlayers> &cellsWon)
{
    for (int i = 1; i <= data.PlanetCount; ++i) {
        const PlanetInfo &p = data.planet(i);
        if (p[Owner].isBlank())
            continue;
        for (int k = 1; k <= data.PlayerCount; ++k) {
            PlayerInfo &race = data.player(k);
            if (race[RaceName].text() != p[Owner].text())
                continue;
            narrowTo(race, p[Gravity].val(), MinGrav, MaxGrav);
            narrowTo(race, p[Temperature].val(), MinTemp, MaxTemp);
            narrowTo(race, p[Radiation].val(), MinRad, MaxRad);
            if (race[MinGrav].val() < 0.12)
                race[MinGrav] = Value(0.12);
        }
    }
    const double g = data.GridSize;
    const double ue = data.UniverseExtent;
    for (int k = 1; k <= data.PlayerCount; ++k) {
        widen(data.player(k));
        data.player(k)[Territory] =
            Value(std::floor(double(cellsWon[size_t(k - 1)]) / std::pow(g, 2) * std::pow(ue, 2)));
    }
}
