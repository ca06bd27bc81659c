#pragma once
// Writes a whole game folder from a real universe map: the map itself, its
// licence notice, one planet report per player (or the single old-style
// report) and optionally an annotation file. The same options and seed
// always give the same bytes.

#include <QString>
#include <QStringList>
#include <vector>

namespace gamegen {

struct GameOptions {
    QString mapPath;
    QString outDir;
    QString base = QStringLiteral("GAME");
    int players = 5;
    quint32 seed = 1;
    int gameYear = 2431;
    bool oldStyle = false;
    bool annotations = false;
};

struct GeneratedGame {
    QString mapFile;            // the copied map
    QStringList races;          // race names by player number - 1
    std::vector<int> reportYears; // export year of each written report, by player number - 1
    QStringList files;          // names of the files written
};

// Throws std::runtime_error when an option is out of range or a file
// cannot be read or written.
GeneratedGame generateGame(const GameOptions &options);

// Writes `turns` yearly snapshots of one game into folders named by the year
// under options.outDir, the last in options.gameYear: empires grow, meet and
// take planets from each other; every player exports its report each year.
// Throws std::runtime_error as generateGame does.
std::vector<GeneratedGame> generateHistory(const GameOptions &options, int turns);

// The veltro-cli selection options that load the game with its years.
QString loadArguments(const GeneratedGame &game, int gameYear);

} // namespace gamegen
