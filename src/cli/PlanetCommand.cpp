#include "PlanetCommand.h"
#include "QuotedText.h"

#include "CliOptions.h"
#include "Conversions.h"
#include "InteractionHost.h"
#include "MapPointer.h"
#include "MapView.h"
#include "PlanetQuery.h"
#include "OutputTarget.h"

#include <QJsonDocument>
#include <QTextStream>
#include <cmath>

namespace {

// A window without a window: nothing to redraw, prompts answered empty.
class QuietHost : public InteractionHost {
public:
    void redraw() override {}
    QString askText(const QString &, const QString &, const QString &) override { return QString(); }
    void showMessage(const QString &text) override { QTextStream(stderr) << text << '\n'; }
};

} // namespace

int runPlanet(const QStringList &arguments)
{
    QCommandLineParser parser;
    addGameSelectionOptions(parser);
    const QCommandLineOption at = spotOption(QStringLiteral("at"),
                                             QStringLiteral("The pointer at universe position X,Y, moved there, then clicked."));
    const QCommandLineOption from = spotOption(
        QStringLiteral("from"), QStringLiteral("Also the trip from X,Y to the spot or planet asked about, as the Measure tool measures it."));
    parser.addOptions({at, from});
    parser.addOption({QStringLiteral("number"), QStringLiteral("The panel of planet row N alone, without a pointer."),
                      QStringLiteral("N")});
    const QCommandLineOption zoom = zoomOption();
    const QCommandLineOption output = outputOption(QStringLiteral("Write to FILE instead of standard output."));
    parser.addOptions({zoom, output});
    const QString mapFile = parseWithMapFile(parser, arguments, QStringLiteral("planet"));
    const bool pointer = parser.isSet(at);
    if (pointer == parser.isSet(QStringLiteral("number")))
        throw CliFailure(2, QStringLiteral("planet takes one of --at X,Y and --number N"));
    const UniverseSpot spot = pointer ? parseSpot(parser, at) : UniverseSpot{};
    std::optional<UniverseSpot> tripStart;
    if (parser.isSet(from))
        tripStart = parseSpot(parser, from);
    std::optional<ZoomWindow> zoomWindow;
    if (parser.isSet(zoom))
        zoomWindow = parseZoom(parser.value(zoom));
    const QString out = outputPath(parser, output);
    refuseClashingTargets({{QStringLiteral("-o"), out}}, gameInputs(mapFile));

    GameData data;
    loadGame(mapFile, parser, data);
    int number = 0;
    if (!pointer) {
        bool ok = false;
        number = parser.value(QStringLiteral("number")).toInt(&ok);
        if (!ok || number < 1 || number > data.PlanetCount)
            throw CliFailure(2, QStringLiteral("--number takes a planet row from 1 to %1, not %2")
                                    .arg(data.PlanetCount).arg(quoted(parser.value(QStringLiteral("number")))));
    }

    Canvas canvas;
    OverlayButtons buttons;
    ZoomFlags zoomFlags;
    ZoomTool zoomTool(data, zoomFlags, buttons, canvas);
    AnnotationTools annotations(data, canvas);
    PlanetDetail detail;
    detail.nameRaces(data);
    MapPointer mapPointer(data, zoomFlags, zoomTool, annotations, detail);
    QuietHost host;
    QJsonObject o;
    try {
        if (zoomWindow)
            zoomWindow->applyTo(data);
        if (pointer) {
            const CanvasPoint at = mapToCanvas(data, spot.x, spot.y);
            mapPointer.mouseMove(at.x, at.y);
            const QList<int> picked = mapPointer.mouseDown(at.x, at.y, host);
            o = planetQueryJson(&mapPointer.readout(), picked, detail);
        } else {
            o = planetPanelJson(data, number);
        }
        // Both ends as the Measure tool takes them from a pointer there: on
        // the planet under it, if any. The far end of a --number query is
        // that planet.
        if (tripStart) {
            const MeasureTool &measure = mapPointer.measure;
            const auto endAt = [&](const UniverseSpot &s) {
                const CanvasPoint c = mapToCanvas(data, s.x, s.y);
                return measure.endAt(c.x, c.y);
            };
            const MeasureEnd end = pointer ? endAt(spot) : measure.planetEnd(number);
            o.insert(u"Trip", tripJson(data, endAt(*tripStart), end));
        }
    } catch (const PanelFillError &e) {
        throw CliFailure(1, e.message);
    } catch (const std::exception &e) {
        throw CliFailure(1, QStringLiteral("the spot could not be looked up: %1").arg(QString::fromUtf8(e.what())));
    }

    const QByteArray text = QJsonDocument(o).toJson(QJsonDocument::Indented);
    writeOutput(out, [&](QIODevice &device) { device.write(text); });
    return 0;
}
