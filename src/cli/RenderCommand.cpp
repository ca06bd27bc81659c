#include "RenderCommand.h"

#include "CliOptions.h"
#include "EstHabOverlay.h"
#include "MapPicture.h"
#include "MineralOverlays.h"
#include "OutputTarget.h"
#include "PlanetNames.h"
#include "QuotedText.h"
#include "RaceColourOption.h"
#include "StargateOverlay.h"
#include "TerraformOverlay.h"
#include "TraceRecorder.h"

#include <QHash>
#include <QtConcurrent/QtConcurrentRun>
#include <exception>
#include <functional>
#include <memory>
#include <optional>

namespace {

// A menu overlay, drawn over the finished redraw.
using MenuOverlay = std::function<void(const GameData &, Canvas &)>;

// The overlay menu's entries by their command-line names; "esthab=RACE" is
// the "Show Est Hab" button with RACE chosen in the race list. All estimates
// of one run share the carried out-of-range count, as they share it in the
// window for as long as the program runs.
MenuOverlay menuOverlay(const QString &name, HabCarry &carry)
{
    static const QLatin1String estHab("esthab=");
    if (name.startsWith(estHab)) {
        const QString race = name.mid(estHab.size());
        return [race, &carry](const GameData &d, Canvas &c) { drawEstimatedHab(d, c, race, carry); };
    }
    static const QHash<QString, MenuOverlay> entries = {
        {QStringLiteral("iron"), [](const GameData &d, Canvas &c) { drawMineralConcentration(d, c, Mineral::Ironium); }},
        {QStringLiteral("bora"), [](const GameData &d, Canvas &c) { drawMineralConcentration(d, c, Mineral::Boranium); }},
        {QStringLiteral("germ"), [](const GameData &d, Canvas &c) { drawMineralConcentration(d, c, Mineral::Germanium); }},
        {QStringLiteral("avgmc"), drawAverageMineralConcentration},
        {QStringLiteral("age"), drawReportAge},
        {QStringLiteral("terra"), drawTerraformedValues},
        {QStringLiteral("stargate-safe"), [](const GameData &d, Canvas &c) { drawStargateNetwork(d, c, true); }},
        {QStringLiteral("stargate-all"), [](const GameData &d, Canvas &c) { drawStargateNetwork(d, c, false); }},
        {QStringLiteral("names"), drawPlanetNames},
    };
    const auto entry = entries.constFind(name);
    if (entry == entries.constEnd())
        throw CliFailure(2, QStringLiteral("--overlay: unknown overlay %1").arg(quoted(name)));
    return *entry;
}

// The races the estimates were asked for must be in the game: a name that
// matches no column of the race table would only divide by zero.
void requireEstimatedRaces(const QStringList &races, const GameData &data)
{
    for (const QString &race : races) {
        bool known = false;
        QStringList names;
        for (int k = 1; k <= MaxPlayers; ++k) {
            known = known || data.player(k)[RaceName].is(race);
            if (k <= data.PlayerCount)
                names << escapeControls(data.player(k)[RaceName].text());
        }
        if (!known)
            throw CliFailure(2, QStringLiteral("--overlay esthab=%1: no race of that name in this game; its races are: %2")
                                    .arg(escapeControls(race), names.join(QStringLiteral(", "))));
    }
}

// The picture's format by the file's extension; standard output takes PNG.
QByteArray pictureFormat(const QString &out)
{
    if (out == u"-" || out.endsWith(QLatin1String(".png"), Qt::CaseInsensitive))
        return "png";
    if (out.endsWith(QLatin1String(".bmp"), Qt::CaseInsensitive))
        return "bmp";
    throw CliFailure(2, QStringLiteral("-o takes a picture file ending in .png or .bmp, or - for a PNG on standard output"));
}

// A picture made ready beside the loading, or why it could not be.
struct BlankPicture {
    std::unique_ptr<MapPicture> picture;
    std::exception_ptr failure;
};

} // namespace

int runRender(const QStringList &arguments)
{
    QCommandLineParser parser;
    addGameSelectionOptions(parser);
    parser.addOption({QStringLiteral("layers"), QStringLiteral("Comma-separated overlay buttons to press."),
                      QStringLiteral("LIST")});
    const QCommandLineOption zoom = zoomOption();
    parser.addOption(zoom);
    parser.addOption({QStringLiteral("size"), QStringLiteral("Picture size in pixels (default 1000)."),
                      QStringLiteral("PX"), QStringLiteral("1000")});
    parser.addOption({QStringLiteral("overlay"),
                      QStringLiteral("A menu overlay drawn after the redraw (repeatable, in order): iron, bora, germ, "
                                     "avgmc, age, terra, stargate-safe, stargate-all, names, esthab=RACENAME."),
                      QStringLiteral("NAME")});
    parser.addOption({QStringLiteral("race-colour"),
                      QStringLiteral("Draw race NAME (as the reports name it) in colour #RRGGBB, as the race colour "
                                     "editor would; red + green + blue must reach 192 (repeatable)."),
                      QStringLiteral("NAME=#RRGGBB")});
    const QCommandLineOption output = outputOption(QStringLiteral("The picture, PNG or BMP (- for a PNG on standard output)."));
    const QCommandLineOption trace(QStringLiteral("trace"), QStringLiteral("Also write every canvas operation."),
                                   QStringLiteral("FILE"));
    parser.addOptions({output, trace});
    const QString mapFile = parseWithMapFile(parser, arguments, QStringLiteral("render"));

    OverlayButtons buttons = parseLayers(parser.value(QStringLiteral("layers")));
    HabCarry habCarry;
    std::vector<MenuOverlay> overlays;
    QStringList estimatedRaces;
    for (const QString &name : parser.values(QStringLiteral("overlay"))) {
        overlays.push_back(menuOverlay(name, habCarry));
        if (name.startsWith(QLatin1String("esthab=")))
            estimatedRaces << name.mid(7);
    }
    const auto raceColours = parseRaceColours(parser.values(QStringLiteral("race-colour")));
    const int pixels = pictureSize(parser);
    const QString out = outputPath(parser, output, QString());
    const QByteArray format = pictureFormat(out);
    const QString tracePath = outputPath(parser, trace, QString());
    std::optional<ZoomWindow> zoomWindow;
    if (parser.isSet(zoom)) {
        zoomWindow = parseZoom(parser.value(zoom));
        if (buttons.pressed(TerritoryButton))
            throw CliFailure(2, QStringLiteral("territory cannot be drawn zoomed: the zoom disables it"));
    }
    QList<OutputTarget> targets{{QStringLiteral("-o"), out}};
    if (!tracePath.isEmpty())
        targets.append({QStringLiteral("--trace"), tracePath});
    refuseClashingTargets(targets, gameInputs(mapFile));

    // The picture's million pixels are allocated and cleared on another
    // core while the game loads: as much time again as the drawing.
    QFuture<BlankPicture> blank = QtConcurrent::run([pixels] {
        BlankPicture b;
        try {
            b.picture = std::make_unique<MapPicture>(pixels);
        } catch (...) {
            b.failure = std::current_exception();
        }
        return b;
    });
    GameData data;
    loadGame(mapFile, parser, data);
    applyRaceColours(raceColours, data);
    requireEstimatedRaces(estimatedRaces, data);
    BlankPicture ready = blank.takeResult();
    if (ready.failure)
        std::rethrow_exception(ready.failure);
    MapPicture &picture = *ready.picture;
    std::optional<OutputFile> traceFile;
    if (!tracePath.isEmpty()) {
        traceFile.emplace(tracePath);
        picture.canvas().addSurface(std::make_shared<TraceRecorder>(traceFile->device()));
    }

    ZoomFlags zoomFlags;
    ConsoleHost host;
    try {
        if (zoomWindow) {
            // The view of a finished zoom: the zoom button stays pressed.
            buttons.setPressedQuietly(ZoomInButton, true);
            zoomFlags.ZoomArmed = 1;
            zoomWindow->applyTo(data);
        }
        picture.redraw(data, buttons, zoomFlags, host);
        for (const MenuOverlay &overlay : overlays)
            overlay(data, picture.canvas());
    } catch (const std::exception &e) {
        throw CliFailure(1, QStringLiteral("drawing the map failed: %1").arg(QString::fromUtf8(e.what())));
    }

    // Both files are complete before either replaces what was there.
    OutputFile pictureFile(out);
    pictureFile.device().write(encodeImage(out, picture.raster().image(), format));
    if (traceFile)
        traceFile->commit();
    pictureFile.commit();
    return 0;
}
