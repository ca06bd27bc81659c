#include "Subcommands.h"

#include "ExportCommand.h"
#include "HistoryCommand.h"
#include "PlanetCommand.h"
#include "RenderCommand.h"
#include "SiteCommand.h"

#include <QLatin1StringView>
#include <array>

namespace {

const std::array table{
    Subcommand{"export", "Writes the game data after loading, as JSON or as a CSV planet table.", false, runExport},
    Subcommand{"render", "Draws the map with the chosen layers and overlays into a PNG or BMP picture.", true,
               runRender},
    Subcommand{"planet", "Writes what the window shows about one spot of the map: the readout and the detail panel.",
               false, runPlanet},
    Subcommand{"history", "Draws a game's turns, one snapshot per year, as an animated GIF or WebP in stable race colours.",
               true, runHistory},
    Subcommand{"site", "Writes a game's turns as a web map: a folder with index.html for any browser.", true, runSite},
};

} // namespace

std::span<const Subcommand> subcommands()
{
    return table;
}

const Subcommand *findSubcommand(QStringView name)
{
    for (const Subcommand &s : table)
        if (name == QLatin1StringView(s.name))
            return &s;
    return nullptr;
}
