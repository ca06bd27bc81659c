#include "RenderCommand.h"

#include "CliOptions.h"
#include "MapRedraw.h"
#include "RasterSurface.h"
#include "TraceRecorder.h"

#include <QFile>
#include <QHash>
#include <QSaveFile>
#include <QTextStream>

namespace {

const QHash<QString, int> &layerButtons()
{
    static const QHash<QString, int> buttons = {
        {QStringLiteral("universe"), UniverseButton}, {QStringLiteral("borders"), BordersButton},
        {QStringLiteral("territory"), TerritoryButton}, {QStringLiteral("hab"), HabButton},
        {QStringLiteral("owned"), OwnedButton}, {QStringLiteral("scanned"), ScannedButton},
        {QStringLiteral("attack"), AttackButton}, {QStringLiteral("growth"), GrowthButton},
        {QStringLiteral("vmk"), VmkButton},
    };
    return buttons;
}

// The command line has no window: messages go to standard error.
class ConsoleHost : public RedrawHost {
public:
    void showMessage(const QString &text) override { QTextStream(stderr) << text << '\n'; }
};

struct ZoomWindow {
    int32_t x, y, width;
};

ZoomWindow parseZoom(const QString &text)
{
    const QStringList parts = text.split(u',');
    bool ok = parts.size() == 3;
    ZoomWindow z{};
    if (ok)
        z = {parts[0].toInt(&ok), 0, 0};
    if (ok)
        z.y = parts[1].toInt(&ok);
    if (ok)
        z.width = parts[2].toInt(&ok);
    if (!ok)
        throw CliFailure(2, QStringLiteral("--zoom takes X,Y,W in whole light years, not \"%1\"").arg(text));
    return z;
}

} // namespace

int runRender(const QStringList &arguments)
{
    QCommandLineParser parser;
    addGameSelectionOptions(parser);
    parser.addOption({QStringLiteral("layers"), QStringLiteral("Comma-separated overlay buttons to press."),
                      QStringLiteral("LIST")});
    parser.addOption({QStringLiteral("zoom"), QStringLiteral("View window X,Y,W in light years."),
                      QStringLiteral("X,Y,W")});
    parser.addOption({QStringLiteral("size"), QStringLiteral("Picture size in pixels (default 1000)."),
                      QStringLiteral("PX"), QStringLiteral("1000")});
    parser.addOption({QStringLiteral("o"), QStringLiteral("The picture, PNG or BMP."), QStringLiteral("FILE")});
    parser.addOption({QStringLiteral("trace"), QStringLiteral("Also write every canvas operation."),
                      QStringLiteral("FILE")});
    const QString mapFile = parseWithMapFile(parser, arguments, QStringLiteral("render"));

    OverlayButtons buttons;
    const QString layers = parser.value(QStringLiteral("layers"));
    for (const QString &name : layers.split(u',', Qt::SkipEmptyParts)) {
        const auto button = layerButtons().constFind(name.trimmed());
        if (button == layerButtons().constEnd())
            throw CliFailure(2, QStringLiteral("--layers: unknown layer \"%1\"").arg(name));
        buttons.setPressedQuietly(*button, true);
    }
    bool ok = false;
    const int pixels = parser.value(QStringLiteral("size")).toInt(&ok);
    if (!ok || pixels < 1 || pixels > 20000)
        throw CliFailure(2, QStringLiteral("--size takes a number of pixels from 1 to 20000"));
    const QString out = parser.value(QStringLiteral("o"));
    if (!out.endsWith(QLatin1String(".png"), Qt::CaseInsensitive)
        && !out.endsWith(QLatin1String(".bmp"), Qt::CaseInsensitive))
        throw CliFailure(2, QStringLiteral("-o takes a picture file ending in .png or .bmp"));
    std::optional<ZoomWindow> zoomWindow;
    if (parser.isSet(QStringLiteral("zoom"))) {
        zoomWindow = parseZoom(parser.value(QStringLiteral("zoom")));
        if (buttons.pressed(TerritoryButton))
            throw CliFailure(2, QStringLiteral("territory cannot be drawn zoomed: the zoom disables it"));
    }

    GameData data;
    loadGame(mapFile, parser, data);

    Canvas canvas(pixels * 15);
    auto raster = std::make_shared<RasterSurface>(pixels);
    canvas.addSurface(raster);
    QSaveFile traceFile(parser.value(QStringLiteral("trace")));
    if (parser.isSet(QStringLiteral("trace"))) {
        if (!traceFile.open(QIODevice::WriteOnly))
            throw CliFailure(1, QStringLiteral("%1: cannot write the file (%2)")
                                    .arg(traceFile.fileName(), traceFile.errorString()));
        canvas.addSurface(std::make_shared<TraceRecorder>(static_cast<QIODevice &>(traceFile)));
    }

    ZoomFlags zoom;
    ConsoleHost host;
    try {
        if (zoomWindow) {
            // The view of a finished zoom: the zoom button stays pressed.
            buttons.setPressedQuietly(ZoomInButton, true);
            zoom.ZoomArmed = 1;
            data.OriginX = zoomWindow->x;
            data.OriginY = zoomWindow->y;
            data.FarX = zoomWindow->x + zoomWindow->width;
            data.FarY = zoomWindow->y + zoomWindow->width;
            if (zoomWindow->width == 0)
                throw conv::DivisionByZeroError();
            data.Scale = 10000.0 / zoomWindow->width;
        }
        MapRedraw redraw(data, canvas, buttons, zoom, host);
        buttons.onClick = [&redraw](int) { redraw.redrawUniverse(); };
        redraw.redrawUniverse();
    } catch (const std::exception &e) {
        throw CliFailure(1, QStringLiteral("drawing the map failed: %1").arg(QString::fromUtf8(e.what())));
    }

    if (traceFile.isOpen() && !traceFile.commit())
        throw CliFailure(1, QStringLiteral("%1: cannot write the file").arg(traceFile.fileName()));
    if (!raster->save(out))
        throw CliFailure(1, QStringLiteral("%1: cannot write the picture").arg(out));
    return 0;
}
