#include "HistoryCommand.h"

#include "CliOptions.h"
#include "Conversions.h"
#include "Animation.h"
#include "History.h"
#include "LoadError.h"
#include "QuotedText.h"
#include "RaceColourOption.h"

#include <QDir>
#include <QElapsedTimer>
#include <QImageWriter>
#include <QMutex>
#include <QSaveFile>
#include <QTextStream>
#include <QtConcurrent/QtConcurrentRun>
#include <deque>
#include <exception>

namespace {

const QString DefaultLayers = QStringLiteral("borders,universe,owned");

// Counts on standard error, once a second, for runs that take longer.
class Progress {
public:
    Progress() { m_clock.start(); }

    // Called from any thread as each piece of `what` is done.
    void step(const QString &what, int done, int total)
    {
        const QMutexLocker lock(&m_mutex);
        const qint64 now = m_clock.elapsed();
        if (now < 1000 || (now - m_lastLine < 1000 && done < total))
            return;
        m_lastLine = now;
        QTextStream(stderr) << "history: " << what << ' ' << done << " of " << total << '\n';
    }

private:
    QMutex m_mutex;
    QElapsedTimer m_clock;
    qint64 m_lastLine = -1000;
};

QList<Snapshot> snapshotsOf(const QStringList &arguments)
{
    if (arguments.isEmpty())
        throw CliFailure(2, QStringLiteral("history takes one or more SNAPSHOT (MAPFILE@YEAR, or a MAPFILE in a "
                                           "folder named by the year)"));
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

// Hundredths of a second, as GIF frames count their time.
int frameDelay(const QCommandLineParser &parser)
{
    bool ok = false;
    const int ms = parser.value(QStringLiteral("delay")).toInt(&ok);
    if (!ok || ms < 10 || ms > 655350)
        throw CliFailure(2, QStringLiteral("--delay takes milliseconds from 10 to 655350"));
    return conv::toInt32(ms / 10.0);
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

// A load's failure as the command's.
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

// Every turn's races, the data let go as each is loaded: the colours and
// the frames' size need the races of all the turns before the first frame.
std::vector<HistoryTurn> loadTurns(const QList<Snapshot> &snapshots, const GameChoice &choice, Progress &progress)
{
    std::atomic_int loaded = 0;
    const int total = int(snapshots.size());
    return loading([&] {
        return loadHistory(snapshots, choice, [&] { progress.step(QStringLiteral("turns read"), ++loaded, total); },
                           nullptr, TurnData::Released);
    });
}

void savePng(const QImage &frame, const QString &path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !QImageWriter(&file, "png").write(frame) || !file.commit())
        throw CliFailure(1, QStringLiteral("%1: cannot write the picture").arg(escapeControls(path)));
}

// A frame, or its failure (the drawing threads cannot throw to the command).
struct DrawnFrame {
    QImage image;
    std::exception_ptr failure;
};

// Draws frames on every core, never more than a few ahead of the one being
// written, and hands them to `write` in order on this thread: memory holds
// a few frames and turns whatever the number of turns.
void drawInOrder(int count, const std::function<QImage(int)> &draw, const std::function<void(const QImage &)> &write)
{
    QThreadPool pool;
    const int ahead = 2 * pool.maxThreadCount();
    std::deque<QFuture<DrawnFrame>> pending;
    try {
        for (int i = 0, next = 0; i < count; ++i) {
            for (; next < count && next < i + ahead; ++next)
                pending.push_back(QtConcurrent::run(&pool, [&draw, next] {
                    DrawnFrame drawn;
                    try {
                        drawn.image = draw(next);
                    } catch (...) {
                        drawn.failure = std::current_exception();
                    }
                    return drawn;
                }));
            const DrawnFrame drawn = pending.front().result();
            pending.pop_front();
            if (drawn.failure)
                std::rethrow_exception(drawn.failure);
            write(drawn.image);
        }
    } catch (...) {
        pool.clear(); // the frames not yet begun
        throw;
    }
}

} // namespace

int runHistory(const QStringList &arguments)
{
    QCommandLineParser parser;
    addGameSelectionOptions(parser, false);
    parser.addOption({QStringLiteral("layers"),
                      QStringLiteral("Comma-separated overlay buttons to press (default %1).").arg(DefaultLayers),
                      QStringLiteral("LIST"), DefaultLayers});
    parser.addOption({QStringLiteral("size"), QStringLiteral("Side of the map square in pixels (default 800)."),
                      QStringLiteral("PX"), QStringLiteral("800")});
    parser.addOption({QStringLiteral("delay"), QStringLiteral("Time each year shows, in milliseconds (default 500)."),
                      QStringLiteral("MS"), QStringLiteral("500")});
    parser.addOption({QStringLiteral("frames"), QStringLiteral("Also write one PNG per year (YEAR.png) into DIR."),
                      QStringLiteral("DIR")});
    parser.addOption({QStringLiteral("race-colour"),
                      QStringLiteral("Draw race NAME in colour #RRGGBB in every year; red + green + blue must reach "
                                     "192 (repeatable)."),
                      QStringLiteral("NAME=#RRGGBB")});
    parser.addOption({QStringLiteral("o"),
                      QStringLiteral("The animation: a GIF (.gif), or a lossless WebP (.webp) whose frames keep "
                                     "every colour."),
                      QStringLiteral("FILE")});
    parser.setApplicationDescription(QStringLiteral("Draws a game's turns as an animated GIF or WebP, one frame per "
                                                    "year, each race in the same colour throughout."));
    parser.addPositionalArgument(QStringLiteral("history"), QStringLiteral("The command, always the first argument."),
                                 QStringLiteral("history"));
    parser.addPositionalArgument(QStringLiteral("SNAPSHOT"),
                                 QStringLiteral("A turn: MAPFILE@YEAR, or a MAPFILE in a folder named by the year, "
                                                "with that year's reports beside it."),
                                 QStringLiteral("SNAPSHOT..."));
    parseCommandLine(parser, arguments);

    QStringList positional = parser.positionalArguments();
    positional.removeFirst(); // the subcommand's name
    if (parser.isSet(QStringLiteral("year")) || parser.isSet(QStringLiteral("report-year")))
        throw CliFailure(2, QStringLiteral("history takes each turn's year from its snapshot, and its reports as of "
                                           "that year: --year and --report-year do not apply"));
    const QList<Snapshot> snapshots = snapshotsOf(positional);
    const OverlayButtons layers = parseLayers(parser.value(QStringLiteral("layers")));
    const int pixels = pictureSize(parser);
    const int delay = frameDelay(parser);
    const auto raceColours = parseRaceColours(parser.values(QStringLiteral("race-colour")));
    const QString out = parser.value(QStringLiteral("o"));
    const std::optional<AnimationFormat> format = animationFormat(out);
    if (!format)
        throw CliFailure(2, QStringLiteral("-o takes an animation file ending in .gif or .webp"));
    const QString framesDir = parser.value(QStringLiteral("frames"));
    if (!framesDir.isEmpty() && !QDir().mkpath(framesDir))
        throw CliFailure(1, QStringLiteral("%1: cannot create the folder").arg(escapeControls(framesDir)));
    const GameChoice choice = gameChoice(parser);

    Progress progress;
    std::vector<HistoryTurn> turns = loadTurns(snapshots, choice, progress);
    StableRaceColours colours = chosenColours(raceColours, turns);
    History history(std::move(turns), std::move(colours));
    const HistoryFrameLayout layout = history.layout(pixels);

    QSaveFile file(out);
    if (!file.open(QIODevice::WriteOnly))
        throw CliFailure(1, QStringLiteral("%1: cannot write the file (%2)").arg(escapeControls(out), file.errorString()));
    try {
        const std::unique_ptr<Animation> animation = startAnimation(*format, file, layout.size(), delay);
        int written = 0;
        drawInOrder(
            history.size(),
            [&](int i) {
                ConsoleHost host;
                loading([&] { history.reload(i, choice); });
                QImage frame;
                try {
                    frame = history.drawFrame(i, layers, layout, host);
                } catch (const std::bad_alloc &) {
                    throw;
                } catch (const std::exception &e) {
                    throw CliFailure(1, QStringLiteral("%1: drawing the map failed: %2")
                                            .arg(escapeControls(history.turn(i).snapshot.mapFile),
                                                 QString::fromUtf8(e.what())));
                }
                history.release(i);
                if (!framesDir.isEmpty())
                    savePng(frame, QDir(framesDir).filePath(QStringLiteral("%1.png").arg(history.year(i))));
                return frame;
            },
            [&](const QImage &frame) {
                animation->addFrame(frame);
                progress.step(QStringLiteral("frames written"), ++written, history.size());
            });
        animation->finish();
    } catch (const AnimationError &e) {
        throw CliFailure(1, QStringLiteral("%1: cannot write the animation (%2)").arg(escapeControls(out), QString::fromUtf8(e.what())));
    }
    if (!file.commit())
        throw CliFailure(1, QStringLiteral("%1: cannot write the file (%2)").arg(escapeControls(out), file.errorString()));
    return 0;
}
