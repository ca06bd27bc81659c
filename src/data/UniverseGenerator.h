#pragma once
// Turns a confirmed file choice into the game data: planets from the map,
// the reports merged newest first, strengths of influence, races and their
// statistics, the territory grid, tolerance estimates, attack scores and the
// annotation text. A fault in a file ends the run with a LoadError.

#include "GameData.h"
#include "GenerationObserver.h"

QString windowCaption(const GameData &data);

void generateUniverse(GameData &data, GenerationObserver &observer);

// Tells `observer` what a generation that ended with `data` told its own,
// in the same order, progress aside: for a game generated away from the
// window and taken over whole once it succeeded.
void announceGeneration(const GameData &data, GenerationObserver &observer);
