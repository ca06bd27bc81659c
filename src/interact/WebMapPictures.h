#pragma once
// The web map's pictures as PNG files: a view of the map exactly as the
// redraw draws it at that size (what `render --layers ... --size N`
// writes, pixel for pixel), and the planet names alone on a transparent
// ground, to lay over any view as `render --overlay names` draws them.

#include "GameData.h"
#include "OverlayButtons.h"

#include <QByteArray>
#include <QImage>
#include <vector>

// Draws `game` (copied: a redraw sets the view) with the layers pressed.
// Drawing errors go up as they come.
QByteArray viewPicturePng(const GameData &game, const std::vector<OverlayButton> &layers, int pixels);

// The names of the planets in view, white on transparent.
QByteArray namesPicturePng(const GameData &game, int pixels);

// A PNG of exactly these pixels: a palette of them where there are at most
// 256 colours (the map's flat colours mostly are), else true colour.
QByteArray exactPng(const QImage &image);
