#include "SiteCommand.h"

#include "TurnsOptions.h"
#include "WebMap.h"
#include "WebMapFolder.h"

#include <QFileInfo>

namespace {

// The map's side at 100 %; its pictures are drawn at twice that too.
int mapPixels(const QCommandLineParser &parser)
{
    bool ok = false;
    const int pixels = parser.value(QStringLiteral("size")).toInt(&ok);
    if (!ok || pixels < 1 || pixels > 10000)
        throw CliFailure(2, QStringLiteral("--size takes a number of pixels from 1 to 10000"));
    return pixels;
}

} // namespace

int runSite(const QStringList &arguments)
{
    QCommandLineParser parser;
    addGameSelectionOptions(parser, false);
    parser.addOption({QStringLiteral("size"),
                      QStringLiteral("Side of the map in the page at 100 %, in pixels (default 800); the pictures are "
                                     "also drawn at twice that, for zooming in and dense screens."),
                      QStringLiteral("PX"), QStringLiteral("800")});
    addYearlyRaceColourOption(parser);
    parser.addOption({QStringLiteral("title"),
                      QStringLiteral("The page's heading (default: the name of the last snapshot's map file)."),
                      QStringLiteral("TEXT")});
    parser.addOption({QStringLiteral("o"),
                      QStringLiteral("The folder to write: new, empty, or holding a web map written before, which "
                                     "is replaced."),
                      QStringLiteral("DIR")});
    const QList<Snapshot> snapshots = parseSnapshots(
        parser, arguments, QStringLiteral("site"),
        QStringLiteral("Writes a game's turns as a web map, one snapshot per year: a folder with index.html that a "
                       "browser opens from disk or any static web server, with the views, the year slider, the "
                       "pointer readout and the planet detail panel."));
    const int pixels = mapPixels(parser);
    const auto raceColours = parseRaceColours(parser.values(QStringLiteral("race-colour")));
    const QString out = parser.value(QStringLiteral("o"));
    if (out.isEmpty())
        throw CliFailure(2, QStringLiteral("site takes -o DIR, the folder to write the web map to"));
    try {
        WebMapFolder::checkTarget(out);
    } catch (const WebMapError &e) {
        throw CliFailure(2, e.message);
    }
    const GameChoice choice = gameChoice(parser);

    Progress progress(QStringLiteral("site"));
    std::vector<HistoryTurn> turns = loadTurns(snapshots, choice, progress);
    StableRaceColours colours = chosenColours(raceColours, turns);
    const History history(std::move(turns), std::move(colours));

    std::vector<WebMapYear> years;
    for (int i = 0; i < history.size(); ++i)
        years.push_back({history.year(i), &history.turn(i).data, history.legend(i)});
    WebMapOptions options;
    options.title = parser.isSet(QStringLiteral("title")) ? parser.value(QStringLiteral("title"))
                                                          : QFileInfo(snapshots.last().mapFile).completeBaseName();
    options.mapPixels = pixels;
    try {
        writeWebMap(out, years, options,
                    [&](int done, int total) { progress.step(QStringLiteral("pictures written"), done, total); });
    } catch (const WebMapError &e) {
        throw CliFailure(1, e.message);
    }
    return 0;
}
