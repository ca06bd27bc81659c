#pragma once
// Questions the window tests ask of a map picture.

#include <QImage>
#include <algorithm>
#include <cstdlib>

// True when no pixel has any colour: nothing drawn since the last clear.
inline bool pictureIsBlack(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if ((image.pixel(x, y) & 0xFFFFFF) != 0)
                return false;
    return true;
}

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
