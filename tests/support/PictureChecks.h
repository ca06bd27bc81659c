#pragma once
// Questions the window tests ask of a map picture.

#include <QImage>

// True when no pixel has any colour: nothing drawn since the last clear.
inline bool pictureIsBlack(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if ((image.pixel(x, y) & 0xFFFFFF) != 0)
                return false;
    return true;
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
