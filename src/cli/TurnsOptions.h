#pragma once
// What the commands over a game's turns (history, site) share on the
// command line: the SNAPSHOT arguments, the game selection that applies to
// every turn, loading the turns, the race colours held from turn to turn
// with --race-colour, and progress for long runs.

#include "CliOptions.h"
#include "History.h"
#include "LoadError.h"
#include "RaceColourOption.h"

#include <QElapsedTimer>
#include <QMutex>

// Counts on standard error, once a second, for runs that take longer.
class Progress {
public:
    explicit Progress(QString command) : m_command(std::move(command)) { m_clock.start(); }

    // Called from any thread as each piece of `what` is done.
    void step(const QString &what, int done, int total);

private:
    QString m_command;
    QMutex m_mutex;
    QElapsedTimer m_clock;
    qint64 m_lastLine = -1000;
};

// --race-colour NAME=#RRGGBB, a race's colour in every year.
void addYearlyRaceColourOption(QCommandLineParser &parser);

// Parses the command line of a command over turns (its options already
// given to the parser) and returns its SNAPSHOT arguments in year order.
// The turns are dated by their snapshots, so --year and --report-year are a
// usage error (2), as are no snapshot, a snapshot without a year, a missing
// map file and two snapshots of one year.
QList<Snapshot> parseSnapshots(QCommandLineParser &parser, const QStringList &arguments, const QString &command,
                               const QString &description);

// Runs a load of turns, its failures as the command's: status 2 for a
// refused selection, 1 for a file that cannot be loaded.
template <typename Load>
auto loading(Load load)
{
    try {
        return load();
    } catch (const SelectionRefused &refused) {
        throw CliFailure(2, refused.message);
    } catch (const LoadError &e) {
        throw CliFailure(1, e.message());
    }
}

// Loads every turn, keeping its data or only its races (a command that
// draws the turns one by one loads each again when it comes to it).
std::vector<HistoryTurn> loadTurns(const QList<Snapshot> &snapshots, const GameChoice &choice, Progress &progress,
                                   TurnData keep = TurnData::Kept);

// The colours the races keep through the turns, those given fixed; a name
// that is no race of any turn is a usage error.
StableRaceColours chosenColours(const std::vector<RaceColourRequest> &requests, const std::vector<HistoryTurn> &turns);
