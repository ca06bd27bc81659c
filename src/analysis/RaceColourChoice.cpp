#include "RaceColourChoice.h"

#include "Conversions.h"

#include <stdexcept>

void storeRaceColour(GameData &d, int column, int red, int green, int blue)
{
    if (column < 1 || column > MaxPlayers)
        throw std::out_of_range("Subscript out of range");
    d.RaceRGB[size_t(column - 1)] = {conv::toInt16(red), conv::toInt16(green), conv::toInt16(blue)};
}

int raceColumnNamed(const GameData &d, const QString &name)
{
    for (int k = 1; k <= d.PlayerCount; ++k)
        if (d.player(k)[RaceName].is(name))
            return k;
    return 0;
}
