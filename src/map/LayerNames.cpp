#include "LayerNames.h"

#include <QLatin1StringView>
#include <array>

namespace {

const std::array table{
    LayerName{"scanned", ScannedButton, "Scanned"}, LayerName{"borders", BordersButton, "Borders"},
    LayerName{"territory", TerritoryButton, "Territory"}, LayerName{"universe", UniverseButton, "Universe"},
    LayerName{"hab", HabButton, "Hab"}, LayerName{"owned", OwnedButton, "Owned"},
    LayerName{"attack", AttackButton, "Attack"}, LayerName{"growth", GrowthButton, "Growth"},
    LayerName{"vmk", VmkButton, "VMK"},
};

} // namespace

std::span<const LayerName> layerNames()
{
    return table;
}

std::optional<OverlayButton> layerButton(QStringView name)
{
    for (const LayerName &layer : table)
        if (name == QLatin1StringView(layer.name))
            return layer.button;
    return std::nullopt;
}
