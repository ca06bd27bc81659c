#pragma once
// Questions the tests ask of a map picture.

#include <QColor>
#include <QImage>
#include <QRect>
#include <algorithm>
#include <cstdlib>
#include <utility>

// Bounding box and number of the pixels that have any colour.
inline std::pair<QRect, int> paintedArea(const QImage &image)
{
    QRect box;
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if ((image.pixel(x, y) & 0xFFFFFF) != 0) {
                box |= QRect(x, y, 1, 1);
                ++count;
            }
    return {box, count};
}

// How many pixels of `image` have exactly `colour`.
inline int countColour(const QImage &image, const QColor &colour)
{
    int n = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            n += image.pixelColor(x, y) == colour;
    return n;
}

// True when no pixel has any colour: nothing drawn since the last clear.
inline bool pictureIsBlack(const QImage &image) { return paintedArea(image).second == 0; }

// The largest difference of two same-sized pictures in any channel of any pixel.
inline int worstChannelError(const QImage &a, const QImage &b)
{
    int worst = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
            worst = std::max({worst, std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                              std::abs(qBlue(p) - qBlue(q))});
        }
    return worst;
}
