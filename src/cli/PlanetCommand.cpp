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

struct Spot {
    double x, y;
};

Spot parseSpot(const QString &text)
{
    const QStringList parts = text.split(u',');
    bool ok = parts.size() == 2;
    Spot s{};
    if (ok)
        s.x = parts[0].toDouble(&ok);
    if (ok)
        s.y = parts[1].toDouble(&ok);
    if (!ok || !std::isfinite(s.x) || !std::isfinite(s.y))
        throw CliFailure(2, QStringLiteral("--at takes X,Y as two finite numbers of light years, not %1").arg(quoted(text)));
    return s;
}

} // namespace

int runPlanet(const QStringList &arguments)
{
    QCommandLineParser parser;
    addGameSelectionOptions(parser);
    parser.addOption({QStringLiteral("at"), QStringLiteral("The pointer at universe position X,Y, moved there, then clicked."),
                      QStringLiteral("X,Y")});
    parser.addOption({QStringLiteral("number"), QStringLiteral("The panel of planet row N alone, without a pointer."),
                      QStringLiteral("N")});
    const QCommandLineOption zoom = zoomOption();
    const QCommandLineOption output = outputOption(QStringLiteral("Write to FILE instead of standard output."));
    parser.addOptions({zoom, output});
    const QString mapFile = parseWithMapFile(parser, arguments, QStringLiteral("planet"));
    const bool pointer = parser.isSet(QStringLiteral("at"));
    if (pointer == parser.isSet(QStringLiteral("number")))
        throw CliFailure(2, QStringLiteral("planet takes one of --at X,Y and --number N"));
    const Spot spot = pointer ? parseSpot(parser.value(QStringLiteral("at"))) : Spot{};
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
    } catch (const PanelFillError &e) {
        throw CliFailure(1, e.message);
    } catch (const std::exception &e) {
        throw CliFailure(1, QStringLiteral("the spot could not be looked up: %1").arg(QString::fromUtf8(e.what())));
    }

    const QByteArray text = QJsonDocument(o).toJson(QJsonDocument::Indented);
    writeOutput(out, [&](QIODevice &device) { device.write(text); });
    return 0;
}
