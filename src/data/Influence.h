#pragma once
// A planet's weight in the game of territory: the population a starbase
// stands for, the strength of influence and the difficulty-of-attack score.

#include "Value.h"

#include <cstdint>

// Field 5 with a starbase's stand-in population when the planet has a
// starbase but no colonists.
Value starbaseSubstitute(const Value &starbase, const Value &population);

// Strength of influence in light years (capped at 100) from the population,
// the starbase and the report's defence field.
int32_t strengthOfInfluence(const Value &population, const Value &starbase, const Value &defence);

// Score for the difficulty-of-attack overlay.
int32_t attackScore(const Value &population, const Value &starbase, const Value &resources);
