// veltro-gamegen: writes a plausible game folder (map, reports, annotations)
// from a real universe map, for demonstrations, tests and benchmarks.

#include "GameGenerator.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

namespace {

int numberOption(const QCommandLineParser &parser, const QString &name)
{
    bool ok = false;
    const int n = parser.value(name).toInt(&ok);
    if (!ok)
        throw std::runtime_error(QStringLiteral("--%1 takes a whole number").arg(name).toStdString());
    return n;
}

} // namespace

using namespace gamegen;

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Writes a generated game for a universe map file."));
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("map"), QStringLiteral("The universe map file to play on."), QStringLiteral("FILE")},
        {QStringLiteral("out"), QStringLiteral("Folder to write the game to (its old files of this base name are replaced)."),
         QStringLiteral("DIR")},
        {QStringLiteral("base"), QStringLiteral("Base name of the game's files."), QStringLiteral("NAME"), QStringLiteral("GAME")},
        {QStringLiteral("players"), QStringLiteral("Number of races, 1 to 16."), QStringLiteral("N"), QStringLiteral("5")},
        {QStringLiteral("seed"), QStringLiteral("Seed of the game."), QStringLiteral("S"), QStringLiteral("1")},
        {QStringLiteral("year"), QStringLiteral("The current game year."), QStringLiteral("Y"), QStringLiteral("2431")},
        {QStringLiteral("old-style"), QStringLiteral("Write the single old-style report instead of one per player.")},
        {QStringLiteral("annotations"), QStringLiteral("Also write an annotation file.")},
        {QStringLiteral("turns"),
         QStringLiteral("Write N yearly snapshots of the game, up to --year, each in a folder named by its year."),
         QStringLiteral("N")},
    });
    parser.process(app);

    QTextStream out(stdout), err(stderr);
    if (!parser.isSet(QStringLiteral("map")) || !parser.isSet(QStringLiteral("out"))) {
        err << "veltro-gamegen: --map and --out are required\n";
        return 2;
    }
    try {
        GameOptions options;
        options.mapPath = parser.value(QStringLiteral("map"));
        options.outDir = parser.value(QStringLiteral("out"));
        options.base = parser.value(QStringLiteral("base"));
        options.players = numberOption(parser, QStringLiteral("players"));
        options.seed = quint32(numberOption(parser, QStringLiteral("seed")));
        options.gameYear = numberOption(parser, QStringLiteral("year"));
        options.oldStyle = parser.isSet(QStringLiteral("old-style"));
        options.annotations = parser.isSet(QStringLiteral("annotations"));

        if (parser.isSet(QStringLiteral("turns"))) {
            const int turns = numberOption(parser, QStringLiteral("turns"));
            generateHistory(options, turns);
            out << "Wrote " << turns << " turns, " << options.gameYear - turns + 1 << " to " << options.gameYear
                << ", to " << options.outDir << '\n';
            out << "Animate with: veltro-cli history " << options.outDir << "/*/" << options.base
                << ".map -o history.gif\n";
            return 0;
        }
        const GeneratedGame game = generateGame(options);
        out << "Wrote " << game.files.join(QStringLiteral(", ")) << " to " << options.outDir << '\n';
        for (qsizetype i = 0; i < game.races.size(); ++i)
            out << "Player " << i + 1 << ": " << game.races[i] << '\n';
        out << "Load with: veltro-cli export " << game.mapFile << ' ' << loadArguments(game, options.gameYear) << '\n';
        return 0;
    } catch (const std::runtime_error &e) {
        err << "veltro-gamegen: " << e.what() << '\n';
        return 1;
    }
}
