#include "FramePalette.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

// In a frame with more colours than the palette holds, the colours that
// cover at least an even share of the pixels (the black and the flat race
// colours: filled discs, the strongest territory) stay exact, up to this
// many; more would leave too few for the rest, whose worst error grows
// past 12 levels on a sixteen-race territory grid.
constexpr size_t MostKept = 16;
// Rounds of moving the chosen colours to the middle of what they stand
// for; the worst error rarely improves after the second.
constexpr int Rounds = 4;

int channelError(QRgb a, QRgb b)
{
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
}

// The worst channel first; of two colours equally far that way, the one
// closer in all three channels. (Squares add up to at most 3 x 255², below 2^18.)
quint32 distance(QRgb a, QRgb b)
{
    const int r = qRed(a) - qRed(b), g = qGreen(a) - qGreen(b), bl = qBlue(a) - qBlue(b);
    return quint32(channelError(a, b)) << 18 | quint32(r * r + g * g + bl * bl);
}

struct Counted {
    QRgb colour;
    qint64 count;
};

// Each colour's nearest palette entry, and the worst channel error of all.
struct Assignment {
    std::vector<int> entry;
    int worst = 0;
};

Assignment assign(const std::vector<Counted> &colours, const std::vector<QRgb> &palette)
{
    Assignment a;
    a.entry.resize(colours.size());
    for (size_t i = 0; i < colours.size(); ++i) {
        quint32 best = UINT32_MAX;
        for (size_t p = 0; p < palette.size(); ++p)
            if (const quint32 d = distance(colours[i].colour, palette[p]); d < best) {
                best = d;
                a.entry[i] = int(p);
            }
        a.worst = std::max(a.worst, int(best >> 18));
    }
    return a;
}

// Moves every entry from `first` on to the middle of the box around the
// colours it stands for, where the worst of them is nearest.
std::vector<QRgb> centred(const std::vector<Counted> &colours, const Assignment &a, const std::vector<QRgb> &palette,
                          size_t first)
{
    struct Box {
        std::array<int, 3> low{255, 255, 255}, high{0, 0, 0};
        bool empty = true;
    };
    std::vector<Box> boxes(palette.size());
    for (size_t i = 0; i < colours.size(); ++i) {
        Box &box = boxes[size_t(a.entry[i])];
        const std::array<int, 3> c{qRed(colours[i].colour), qGreen(colours[i].colour), qBlue(colours[i].colour)};
        for (int k = 0; k < 3; ++k) {
            box.low[k] = std::min(box.low[k], c[k]);
            box.high[k] = std::max(box.high[k], c[k]);
        }
        box.empty = false;
    }
    std::vector<QRgb> moved = palette;
    for (size_t p = first; p < palette.size(); ++p)
        if (const Box &b = boxes[p]; !b.empty)
            moved[p] = qRgb((b.low[0] + b.high[0]) / 2, (b.low[1] + b.high[1]) / 2, (b.low[2] + b.high[2]) / 2);
    return moved;
}

} // namespace

FramePalette::FramePalette(const QHash<QRgb, qint64> &counts, int size)
{
    std::vector<Counted> colours;
    colours.reserve(size_t(counts.size()));
    for (auto it = counts.cbegin(); it != counts.cend(); ++it)
        colours.push_back({it.key(), it.value()});
    std::sort(colours.begin(), colours.end(), [](const Counted &a, const Counted &b) {
        return a.count != b.count ? a.count > b.count : a.colour < b.colour;
    });

    if (colours.size() <= size_t(size)) {
        for (const Counted &c : colours) {
            m_index.insert(c.colour, int(m_colours.size()));
            m_colours.push_back(c.colour);
        }
        return;
    }

    // The common colours exactly, then each time the colour farthest from
    // every one chosen (the more common of equally far ones).
    qint64 pixels = 0;
    for (const Counted &c : colours)
        pixels += c.count;
    size_t kept = 0;
    while (kept < std::min(MostKept, size_t(size)) && colours[kept].count * size >= pixels)
        ++kept;
    std::vector<QRgb> palette;
    std::vector<quint32> nearest(colours.size(), UINT32_MAX);
    auto choose = [&](QRgb colour) {
        palette.push_back(colour);
        for (size_t i = 0; i < colours.size(); ++i)
            nearest[i] = std::min(nearest[i], distance(colours[i].colour, colour));
    };
    for (size_t i = 0; i < kept; ++i)
        choose(colours[i].colour);
    while (palette.size() < size_t(size)) {
        const size_t farthest = size_t(std::max_element(nearest.begin(), nearest.end()) - nearest.begin());
        if (nearest[farthest] == 0)
            break;
        choose(colours[farthest].colour);
    }

    Assignment best = assign(colours, palette);
    for (int round = 0; round < Rounds && best.worst > 0; ++round) {
        std::vector<QRgb> moved = centred(colours, best, palette, kept);
        Assignment next = assign(colours, moved);
        if (next.worst >= best.worst)
            break;
        palette = std::move(moved);
        best = std::move(next);
    }

    m_colours = std::move(palette);
    for (size_t i = 0; i < colours.size(); ++i)
        m_index.insert(colours[i].colour, best.entry[i]);
}
