#pragma once
// `render --race-colour NAME=#RRGGBB`: a host who publishes a map every turn
// keeps each race in the colour its players know, whatever order the
// reports list the races in.

#include "GameData.h"

#include <QStringList>
#include <vector>

struct RaceColourRequest {
    QString race;
    int red, green, blue;
};

// Reads every NAME=#RRGGBB; a malformed value or a colour whose red + green
// + blue is below 192 is a usage error (CliFailure, status 2).
std::vector<RaceColourRequest> parseRaceColours(const QStringList &values);

// Stores the colours in the loaded game, as the race colour editor would, in
// the order given; a name that is no race of the game is a usage error.
void applyRaceColours(const std::vector<RaceColourRequest> &requests, GameData &data);
