#pragma once
// Colours as the game data keeps them: r + 256 g + 65536 b.

#include <algorithm>
#include <cstdint>

// Components below 0 count as 0, above 255 as 255.
constexpr int32_t rgb(int r, int g, int b)
{
    auto clamp = [](int c) { return std::clamp(c, 0, 255); };
    return clamp(r) + 256 * clamp(g) + 65536 * clamp(b);
}
constexpr int redOf(int32_t c) { return c & 0xFF; }
constexpr int greenOf(int32_t c) { return (c >> 8) & 0xFF; }
constexpr int blueOf(int32_t c) { return (c >> 16) & 0xFF; }
