#pragma once
// The map layers by the names scripts and windows give them: one overlay
// button each, listed in the order the redraw draws them.

#include "OverlayButtons.h"

#include <QString>
#include <QStringView>
#include <optional>
#include <span>

struct LayerName {
    const char *name;    // as --layers writes it
    OverlayButton button;
    const char *caption; // a short caption for a window
};

std::span<const LayerName> layerNames();
// The button of a layer name, or nothing for an unknown name.
std::optional<OverlayButton> layerButton(QStringView name);
