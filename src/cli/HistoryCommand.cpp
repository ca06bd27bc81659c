#include "HistoryCommand.h"

#include "CliOptions.h"
#include "Conversions.h"
#include "GifAnimation.h"
#include "History.h"
#include "LoadError.h"
#include "OutputTarget.h"
#include "QuotedText.h"
#include "RaceColourOption.h"
#include "TurnsOptions.h"

#include <QDir>
#include <QTextStream>
#include <QtConcurrent/QtConcurrentRun>
#include <optional>

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

// A frame, or the message of its failure (the drawing threads cannot throw
// to the command).
struct DrawnFrame {
    QImage image;
    std::optional<CliFailure> failure;
};

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
    parser.addOption({QStringLiteral("o"), QStringLiteral("The animation, a GIF."), QStringLiteral("FILE")});
    parser.setApplicationDescription(QStringLiteral(
        "Draws a game's turns as an animated GIF, one frame per year, each race in the same colour throughout."));
    parser.addPositionalArgument(QStringLiteral("history"), QStringLiteral("The command, always the first argument."),
                                 QStringLiteral("history"));
    parser.addPositionalArgument(QStringLiteral("SNAPSHOT"),
                                 QStringLiteral("A turn: MAPFILE@YEAR, or a MAPFILE in a folder named by the year, "
                                                "with that year's reports beside it."),
                                 QStringLiteral("SNAPSHOT..."));
    parseCommandLine(parser, arguments);

    QStringList positional = parser.positionalArguments();
    positional.removeFirst(); // the subcommand's name
    refuseYearOptions(parser, QStringLiteral("history"));
    const QList<Snapshot> snapshots = snapshotsOf(QStringLiteral("history"), positional);
    const OverlayButtons layers = parseLayers(parser.value(QStringLiteral("layers")));
    const int pixels = pictureSize(parser);
    const int delay = frameDelay(parser);
    const auto raceColours = parseRaceColours(parser.values(QStringLiteral("race-colour")));
    const QString out = parser.value(QStringLiteral("o"));
    if (!out.endsWith(QLatin1String(".gif"), Qt::CaseInsensitive) && out != u"-")
        throw CliFailure(2, QStringLiteral("-o takes an animation file ending in .gif, or - for standard output"));
    const QString framesDir = parser.value(QStringLiteral("frames"));
    refuseClashingOutputs(out, framesDir, snapshots);
    if (!framesDir.isEmpty() && !QDir().mkpath(framesDir))
        throw CliFailure(1, QStringLiteral("%1: cannot create the folder").arg(escapeControls(framesDir)));
    const GameChoice choice = gameChoice(parser);

    Progress progress(QStringLiteral("history"));
    std::vector<HistoryTurn> turns = loadTurns(snapshots, choice, progress);
    StableRaceColours colours = chosenColours(raceColours, turns);
    History history(std::move(turns), std::move(colours));
    const HistoryFrameLayout layout = history.layout(pixels);

    OutputFile file(out);
    try {
        GifAnimation gif(file.device(), layout.size(), delay);
        // Frames are drawn on every core while this thread encodes them in
        // year order; the pool waits for its threads before `history` goes.
        QThreadPool pool;
        std::vector<QFuture<DrawnFrame>> frames;
        for (int i = 0; i < history.size(); ++i)
            frames.push_back(QtConcurrent::run(&pool, [&, i] {
                DrawnFrame drawn;
                try {
                    ConsoleHost host;
                    try {
                        drawn.image = history.drawFrame(i, layers, layout, host);
                    } catch (const std::exception &e) {
                        throw CliFailure(1, QStringLiteral("%1: drawing the map failed: %2")
                                                .arg(escapeControls(history.turn(i).snapshot.mapFile), QString::fromUtf8(e.what())));
                    }
                    history.release(i);
                    if (!framesDir.isEmpty())
                        writeImage(framePath(framesDir, history.year(i)), drawn.image, "png");
                } catch (const CliFailure &failure) {
                    drawn.failure = failure;
                }
                return drawn;
            }));
        for (int i = 0; i < history.size(); ++i) {
            const DrawnFrame drawn = frames[size_t(i)].result();
            frames[size_t(i)] = {};
            if (drawn.failure)
                throw *drawn.failure;
            gif.addFrame(drawn.image);
            progress.step(QStringLiteral("frames written"), i + 1, history.size());
        }
        gif.finish();
    } catch (const GifError &e) {
        file.fail(QString::fromUtf8(e.what()));
    }
    file.commit();
    return 0;
}
