#pragma once
// What the empire statistics window works out for one race: the averages
// per planet beside the totals, and the checks for a new estimated
// habitability bound typed in by the user.

#include "GameData.h"

#include <QString>
#include <array>

// Population, mines, factories and resources per planet, floored; ironium,
// boranium and germanium per planet to 3 decimals. A race without planets
// averages 0 everywhere.
std::array<QString, 7> empireAverages(const PlayerInfo &race);

// A bound field (MinGrav .. MaxRad) and what may be entered for it.
struct RangeBound {
    const char *prompt; // followed directly by the race name
    double lowest;
    double highest;
};

// The accepted values for `field` (8..13): a fixed end of the game's scale
// and the race's other bound on the same axis, both included.
RangeBound rangeBound(const PlayerInfo &race, int field);

enum class RangeAnswer { Unchanged, Stored, Refused };

// An answer typed for `field`: empty leaves everything as it is; otherwise
// its leading number, rounded to 2 decimals, is stored when it lies within
// the accepted values and refused when not.
RangeAnswer applyRangeAnswer(PlayerInfo &race, int field, const QString &answer);

inline const QString &rangeRefusedMessage()
{
    static const QString text = QStringLiteral("New Value either exceeds minimum or maximum allowed");
    return text;
}
