#include "HugeGame.h"

#include "FileSelection.h"
#include "GameGenerator.h"
#include "UniverseGenerator.h"

#include <stdexcept>

namespace {

constexpr int GameYear = 2431;

} // namespace

HugeGame::HugeGame()
{
    if (!m_dir.isValid())
        throw std::runtime_error("cannot create a temporary folder");
    gamegen::GameOptions options;
    options.mapPath = QStringLiteral(VELTRO_TEST_MAPS "/huge-packed-00001.map");
    options.outDir = m_dir.path();
    options.players = 16;
    options.gameYear = GameYear;
    options.annotations = true;
    const gamegen::GeneratedGame game = gamegen::generateGame(options);

    // Reports of different years, so that every line's age is shifted.
    FileSelection selection(m_selected);
    const QString message = selection.clickMapFile(m_dir.path(), QStringLiteral("GAME.map"));
    selection.gameYearText = QString::number(GameYear);
    for (size_t i = 0; i < game.reportYears.size(); ++i)
        selection.row(int(i) + 1).yearText = QString::number(game.reportYears[i]);
    if (!message.isEmpty() || !selection.confirm().isEmpty())
        throw std::runtime_error("the generated game cannot be selected");

    m_loaded = m_selected;
    GenerationObserver silent;
    generateUniverse(m_loaded, silent);
    // The sources exactly as the generation collects them: planets with
    // influence, in table order.
    for (int i = 1; i <= m_loaded.PlanetCount; ++i) {
        const PlanetInfo &p = m_loaded.planet(i);
        if (p[SOI].val() > 0)
            m_sources.push_back({conv::toInt16(p[X].val()), conv::toInt16(p[Y].val()), conv::toInt16(p[SOI].val()),
                                 conv::toInt16(p[OwnerIndex].val())});
    }
}
