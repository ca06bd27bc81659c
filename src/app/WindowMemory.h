#pragma once
// The main window's size and place on the screen and the overlay buttons
// pressed over its map, kept between runs in the desktop program's settings.

#include "OverlayButtons.h"

#include <QList>

class QWidget;

namespace windowMemory {

void rememberGeometry(const QWidget &window);
// Puts the window where it was, moved within the screen if the screen has
// changed; false when nothing was remembered.
bool restoreGeometry(QWidget &window);

// The layers pressed (the universe, borders ... "VMK"); "Clear Map" and
// "Zoom In" are moments, not layers, and are never kept.
QList<int> pressedLayers(const OverlayButtons &buttons);
void rememberOverlays(const OverlayButtons &buttons);
QList<int> rememberedOverlays();

} // namespace windowMemory
