#pragma once
// The colours of one GIF frame, at most `size` of them however many the
// frame holds. A frame with few colours keeps them all. A busier one (the
// territory grid shades each race's colour by strength: up to 1616 shades
// for sixteen races) keeps its most common colours exactly, the black and
// the flat race colours among them, and covers the rest with colours chosen
// so that the worst pixel strays as little as it can: the farthest colour
// from those chosen so far is chosen next, then each chosen colour moves to
// the middle of the colours it stands for. Every colour of the frame then
// takes the nearest colour of the palette, nearest by its worst channel.

#include <QHash>
#include <QRgb>
#include <vector>

class FramePalette {
public:
    // `counts`: every colour of the frame (opaque) and how many pixels show it.
    FramePalette(const QHash<QRgb, qint64> &counts, int size);

    const std::vector<QRgb> &colours() const { return m_colours; }
    // The palette index of a colour of the frame.
    int indexOf(QRgb colour) const { return m_index.value(colour); }

private:
    std::vector<QRgb> m_colours;
    QHash<QRgb, int> m_index;
};
