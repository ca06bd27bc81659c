#pragma once
// "Stargate Network": lines between stargate planets within gating range,
// then the owned planets marked on top as the owned-planets layer marks them.

#include "Canvas.h"
#include "GameData.h"

// With `safeOnly` false, red lines also join gates up to five times the
// starting gate's safe range; green lines within the safe range are drawn
// over them. Each pair is visited from both ends, so the later planet in
// table order decides the colour that remains.
void drawStargateNetwork(const GameData &d, Canvas &canvas, bool safeOnly);
