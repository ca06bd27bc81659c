#pragma once
// How a hab value shows on the map, shared by the own race's hab layer and
// the estimated-hab overlay: red when hostile, magenta when marginal, yellow
// when poor, green when good; a disc of radius 30 to about 150.

#include "Colour.h"
#include "Conversions.h"

#include <cstdint>
#include <cstdlib>

inline int32_t habColour(double h)
{
    if (h < -10)
        return rgb(255, 0, 0);
    if (h < 0)
        return rgb(255, 0, 255);
    if (h <= 10)
        return rgb(255, 255, 0);
    return rgb(0, 255, 0);
}

// Hostile worlds grow by 3.33 a point, good ones only by 1.5 and marginal
// ones by 12 plus 30: the uneven scale is intended, so that -45, -10, 10 and
// 100 all reach about 150. Never below 30.
inline int32_t habRadius(int32_t k)
{
    if (k < -10)
        k = conv::toInt32(k * 3.33);
    else if (k <= 10)
        k = std::abs(k * 12) + 30;
    else
        k = conv::toInt32(k * 1.5);
    k = std::abs(k);
    return k < 30 ? 30 : k;
}
