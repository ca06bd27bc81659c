#pragma once
// Small drawn icons for the overlay buttons, one per button index.

#include <QIcon>

QIcon overlayIcon(int button);
