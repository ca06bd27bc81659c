#pragma once
// "Value after Terraforming": the own race's report tells what each planet
// would be worth once terraformed; one disc per planet in view shows it.

#include "Canvas.h"
#include "GameData.h"

// Grey for zero or unknown, red for negative, green for positive, drawn in
// that order over the picture as it stands, so good planets end on top.
void drawTerraformedValues(const GameData &d, Canvas &canvas);
