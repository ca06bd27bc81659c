#pragma once
// The game the benchmarks load: sixteen generated reports on the huge
// packed map, written once into a temporary folder, selected as the file
// selection window would, with the influence sources of a first generation.

#include "GameData.h"
#include "TerritoryGridBuilder.h"

#include <QTemporaryDir>
#include <vector>

class HugeGame {
public:
    // Throws std::runtime_error when the game cannot be written or loaded.
    HugeGame();

    // A confirmed selection, ready for generateUniverse.
    const GameData &selected() const { return m_selected; }
    // The same after one generation.
    const GameData &loaded() const { return m_loaded; }
    // The strength-of-influence sources of the loaded planet table.
    const std::vector<InfluenceSource> &sources() const { return m_sources; }

private:
    QTemporaryDir m_dir;
    GameData m_selected;
    GameData m_loaded;
    std::vector<InfluenceSource> m_sources;
};
