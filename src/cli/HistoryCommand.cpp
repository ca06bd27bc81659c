#include "HistoryCommand.h"

#include "CliOptions.h"
#include "Conversions.h"
#include "Animation.h"
#include "History.h"
#include "LoadError.h"
#include "OutputTarget.h"
#include "QuotedText.h"
#include "RaceColourOption.h"
#include "TurnsOptions.h"

#include <QDir>
#include <QTextStream>
#include <QtConcurrent/QtConcurrentRun>
#include <deque>
#include <exception>

namespace {

const QString DefaultLayers = QStringLiteral("borders,universe,owned");

// Hundredths of a second, as GIF frames count their time.
int frameDelay(const QCommandLineParser &parser)
{
    bool ok = false;
    const int ms = parser.value(QStringLiteral("delay")).toInt(&ok);
    if (!ok || ms < 10 || ms > 655350)
        throw CliFailure(2, QStringLiteral("--delay takes milliseconds from 10 to 655350"));
    return conv::toInt32(ms / 10.0);
}

QString framePath(const QString &framesDir, int year)
{
    return QDir(framesDir).filePath(QStringLiteral("%1.png").arg(year));
}

// Neither the animation nor a frame may be written over a file of a turn.
void refuseClashingOutputs(const QString &out, const QString &framesDir, const QList<Snapshot> &snapshots)
{
    QList<OutputTarget> targets{{QStringLiteral("-o"), out}};
    QStringList inputs;
    for (const Snapshot &snapshot : snapshots) {
        inputs << gameInputs(snapshot.mapFile);
        if (!framesDir.isEmpty())
            targets.append({QStringLiteral("--frames"), framePath(framesDir, snapshot.year)});
    }
    refuseClashingTargets(targets, inputs);
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
    addYearlyRaceColourOption(parser);
    parser.addOption({QStringLiteral("o"),
                      QStringLiteral("The animation: a GIF (.gif), or a lossless WebP (.webp) whose frames keep "
                                     "every colour."),
                      QStringLiteral("FILE")});
    const QList<Snapshot> snapshots = parseSnapshots(
        parser, arguments, QStringLiteral("history"),
        QStringLiteral("Draws a game's turns as an animated GIF or WebP, one frame per year, each race in the same "
                       "colour throughout."));
    const OverlayButtons layers = parseLayers(parser.value(QStringLiteral("layers")));
    const int pixels = pictureSize(parser);
    const int delay = frameDelay(parser);
    const auto raceColours = parseRaceColours(parser.values(QStringLiteral("race-colour")));
    const QString out = parser.value(QStringLiteral("o"));
    const std::optional<AnimationFormat> format = out == u"-" ? AnimationFormat::Gif : animationFormat(out);
    if (!format)
        throw CliFailure(2, QStringLiteral("-o takes an animation file ending in .gif or .webp, or - for a GIF on standard output"));
    const QString framesDir = parser.value(QStringLiteral("frames"));
    refuseClashingOutputs(out, framesDir, snapshots);
    if (!framesDir.isEmpty() && !QDir().mkpath(framesDir))
        throw CliFailure(1, QStringLiteral("%1: cannot create the folder").arg(escapeControls(framesDir)));
    const GameChoice choice = gameChoice(parser);

    Progress progress(QStringLiteral("history"));
    std::vector<HistoryTurn> turns = loadTurns(snapshots, choice, progress, TurnData::Released);
    StableRaceColours colours = chosenColours(raceColours, turns);
    History history(std::move(turns), std::move(colours));
    const HistoryFrameLayout layout = history.layout(pixels);

    OutputFile file(out);
    try {
        const std::unique_ptr<Animation> animation = startAnimation(*format, file.device(), layout.size(), delay);
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
                    writeImage(framePath(framesDir, history.year(i)), frame, "png");
                return frame;
            },
            [&](const QImage &frame) {
                animation->addFrame(frame);
                progress.step(QStringLiteral("frames written"), ++written, history.size());
            });
        animation->finish();
    } catch (const AnimationError &e) {
        file.fail(QString::fromUtf8(e.what()));
    }
    file.commit();
    return 0;
}
