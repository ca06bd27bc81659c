#include "TurnsOptions.h"

#include "QuotedText.h"

#include <QFileInfo>
#include <QTextStream>

void Progress::step(const QString &what, int done, int total)
{
    const QMutexLocker lock(&m_mutex);
    const qint64 now = m_clock.elapsed();
    if (now < 1000 || (now - m_lastLine < 1000 && done < total))
        return;
    m_lastLine = now;
    QTextStream(stderr) << m_command << ": " << what << ' ' << done << " of " << total << '\n';
}

namespace {

void refuseYearOptions(const QCommandLineParser &parser, const QString &command)
{
    if (parser.isSet(QStringLiteral("year")) || parser.isSet(QStringLiteral("report-year")))
        throw CliFailure(2, QStringLiteral("%1 takes each turn's year from its snapshot, and its reports as of "
                                           "that year: --year and --report-year do not apply")
                                .arg(command));
}

QList<Snapshot> snapshotsOf(const QString &command, const QStringList &arguments)
{
    if (arguments.isEmpty())
        throw CliFailure(2, QStringLiteral("%1 takes one or more SNAPSHOT (MAPFILE@YEAR, or a MAPFILE in a "
                                           "folder named by the year)")
                                .arg(command));
    QList<Snapshot> snapshots;
    try {
        for (const QString &argument : arguments) {
            const Snapshot snapshot = snapshotFromArgument(argument);
            if (!QFileInfo(snapshot.mapFile).isFile())
                throw CliFailure(2, QStringLiteral("%1: no such map file").arg(escapeControls(snapshot.mapFile)));
            snapshots << snapshot;
        }
        sortByYear(snapshots);
    } catch (const SnapshotError &e) {
        throw CliFailure(2, e.message);
    }
    return snapshots;
}

} // namespace

void addYearlyRaceColourOption(QCommandLineParser &parser)
{
    parser.addOption({QStringLiteral("race-colour"),
                      QStringLiteral("Draw race NAME in colour #RRGGBB in every year; red + green + blue must reach "
                                     "192 (repeatable)."),
                      QStringLiteral("NAME=#RRGGBB")});
}

QList<Snapshot> parseSnapshots(QCommandLineParser &parser, const QStringList &arguments, const QString &command,
                               const QString &description)
{
    parser.setApplicationDescription(description);
    parser.addPositionalArgument(command, QStringLiteral("The command, always the first argument."), command);
    parser.addPositionalArgument(QStringLiteral("SNAPSHOT"),
                                 QStringLiteral("A turn: MAPFILE@YEAR, or a MAPFILE in a folder named by the year, "
                                                "with that year's reports beside it."),
                                 QStringLiteral("SNAPSHOT..."));
    parseCommandLine(parser, arguments);
    QStringList positional = parser.positionalArguments();
    positional.removeFirst(); // the command's name
    refuseYearOptions(parser, command);
    return snapshotsOf(command, positional);
}

std::vector<HistoryTurn> loadTurns(const QList<Snapshot> &snapshots, const GameChoice &choice, Progress &progress,
                                   TurnData keep)
{
    std::atomic_int loaded = 0;
    const int total = int(snapshots.size());
    const QString what = keep == TurnData::Kept ? QStringLiteral("loaded") : QStringLiteral("turns read");
    return loading([&] {
        return loadHistory(snapshots, choice, [&] { progress.step(what, ++loaded, total); }, nullptr, keep);
    });
}

StableRaceColours chosenColours(const std::vector<RaceColourRequest> &requests, const std::vector<HistoryTurn> &turns)
{
    QStringList races;
    for (const HistoryTurn &turn : turns)
        for (const QString &name : turn.races)
            if (!races.contains(name))
                races << name;
    StableRaceColours colours;
    for (const RaceColourRequest &request : requests) {
        if (!races.contains(request.race))
            throw CliFailure(2, QStringLiteral("--race-colour: no race named %1 in any snapshot; the races are: %2")
                                    .arg(quoted(request.race), races.join(QStringLiteral(", "))));
        colours.choose(request.race, {int16_t(request.red), int16_t(request.green), int16_t(request.blue)});
    }
    return colours;
}
