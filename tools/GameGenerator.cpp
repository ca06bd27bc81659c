#include "GameGenerator.h"

#include "Annotations.h"
#include "GameModel.h"
#include "PlanetReport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <stdexcept>

namespace gamegen {

namespace {

[[noreturn]] void fail(const QString &message)
{
    throw std::runtime_error(message.toStdString());
}

void writeFile(const QDir &dir, const QString &name, const QByteArray &bytes, GeneratedGame &game)
{
    QFile file(dir.filePath(name));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        fail(QStringLiteral("%1: %2").arg(file.fileName(), file.errorString()));
    game.files << name;
}

void copyFile(const QString &from, const QDir &dir, const QString &name, GeneratedGame &game)
{
    QFile source(from);
    if (!source.open(QIODevice::ReadOnly))
        fail(QStringLiteral("%1: %2").arg(from, source.errorString()));
    writeFile(dir, name, source.readAll(), game);
}

// Reports of an earlier run with more players, or an annotation file that
// is no longer wanted, would be read as part of this game. Only names this
// tool writes are removed.
void removeOldGameFiles(const QDir &dir, const QString &base)
{
    QStringList names{base + QStringLiteral(".PLA"), base + QStringLiteral(".VMK")};
    for (int n = 1; n <= 16; ++n)
        names << base + QStringLiteral(".P") + QString::number(n);
    for (const QString &name : names)
        if (QFileInfo::exists(dir.filePath(name)) && !QFile::remove(dir.filePath(name)))
            fail(QStringLiteral("%1: cannot remove an old game file").arg(dir.filePath(name)));
}

void checkOptions(const GameOptions &options)
{
    if (options.players < 1 || options.players > 16)
        fail(QStringLiteral("a game has 1 to 16 players, not %1").arg(options.players));
    if (options.gameYear <= FirstYear || options.gameYear > 32767)
        fail(QStringLiteral("the game year must lie between %1 and 32767").arg(FirstYear + 1));
}

// The game's files as of `year` in `outDir`; with `lagging` the other
// players exported their reports up to three years earlier.
GeneratedGame writeGame(const GameModel &model, const GameOptions &options, const QString &outDir, int year,
                        bool lagging)
{
    QDir dir(outDir);
    if (!dir.mkpath(QStringLiteral(".")))
        fail(QStringLiteral("%1: cannot create the folder").arg(outDir));
    removeOldGameFiles(dir, options.base);

    GeneratedGame game;
    game.mapFile = dir.filePath(options.base + QStringLiteral(".map"));
    copyFile(options.mapPath, dir, options.base + QStringLiteral(".map"), game);
    // The maps come with a licence notice that has to travel with them.
    const QDir mapDir = QFileInfo(options.mapPath).absoluteDir();
    for (const QString &notice : mapDir.entryList({QStringLiteral("LICENSE*")}, QDir::Files))
        copyFile(mapDir.filePath(notice), dir, notice, game);

    for (const Race &race : model.races)
        game.races << race.name;

    // Player 1 exported this year; the others up to three years ago.
    QRandomGenerator rng(options.seed ^ 0x5eed0001u);
    const int reports = options.oldStyle ? 1 : int(model.races.size());
    for (int player = 1; player <= reports; ++player) {
        const int lag = player == 1 || !lagging ? 0 : int(rng.bounded(4u));
        game.reportYears.push_back(std::max(FirstYear + 1, year - lag));
        const QString name = options.oldStyle ? options.base + QStringLiteral(".PLA")
                                              : options.base + QStringLiteral(".P") + QString::number(player);
        const QByteArray report = planetReport(model, player - 1, game.reportYears.back(),
                                               options.oldStyle ? ReportLayout::OldStyle : ReportLayout::PerPlayer,
                                               options.seed + quint32(player) * 7919u + quint32(year - options.gameYear));
        writeFile(dir, name, report, game);
    }
    if (options.annotations)
        writeFile(dir, options.base + QStringLiteral(".VMK"), annotationFile(model), game);
    return game;
}

} // namespace

GeneratedGame generateGame(const GameOptions &options)
{
    checkOptions(options);
    const GameModel model = buildGameModel(readUniverseMap(options.mapPath), options.players, options.gameYear, options.seed);
    return writeGame(model, options, options.outDir, options.gameYear, true);
}

std::vector<GeneratedGame> generateHistory(const GameOptions &options, int turns)
{
    checkOptions(options);
    const int firstYear = options.gameYear - turns + 1;
    if (turns < 1 || firstYear <= FirstYear)
        fail(QStringLiteral("%1 turns up to %2 would start before %3").arg(turns).arg(options.gameYear).arg(FirstYear + 1));
    GameModel model = buildGameModel(readUniverseMap(options.mapPath), options.players, options.gameYear, options.seed);
    addConquests(model, options.seed);
    std::vector<GeneratedGame> games;
    for (int year = firstYear; year <= options.gameYear; ++year)
        games.push_back(writeGame(model, options, QDir(options.outDir).filePath(QString::number(year)), year, false));
    return games;
}

QString loadArguments(const GeneratedGame &game, int gameYear)
{
    QString args = QStringLiteral("--year %1").arg(gameYear);
    for (size_t i = 0; i < game.reportYears.size(); ++i)
        args += QStringLiteral(" --report-year %1=%2").arg(i + 1).arg(game.reportYears[i]);
    return args;
}

} // namespace gamegen
