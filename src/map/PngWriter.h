#pragma once
// The map as a PNG, written with libpng directly. Qt's writer lets libpng
// try all five row filters on every row and compress at zlib's default
// level: on a map of 1000 x 1000 pixels that took longer than the whole
// redraw of every layer. The map is flat colours and shaded territory,
// which the "up" filter (each row against the one above) and the fastest
// zlib level compress nearly as well in a third of the time. The pixels
// are the same.

#include <QImage>
#include <QIODevice>

// A 32-bit RGB image as an 8-bit RGB PNG; false when the device refuses.
bool writePng(const QImage &image, QIODevice &out);
