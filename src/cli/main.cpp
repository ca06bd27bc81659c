// veltro-cli: loads a game exactly as the desktop program does and exports
// its data or renders its map, for scripts, game hosts and test suites.

#include "CliOptions.h"
#include "ExportCommand.h"
#include "PlanetCommand.h"
#include "RenderCommand.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QTextStream>
#include <cstdio>
#include <memory>

namespace {

void printUsage()
{
    std::fputs("usage: veltro-cli export MAPFILE [selection] [--format json|csv] [--grid] [-o FILE]\n"
               "       veltro-cli render MAPFILE [selection] [--layers LIST] [--zoom X,Y,W] [--size PX]\n"
               "                         [--overlay NAME]... [--race-colour NAME=#RRGGBB]...\n"
               "                         -o OUT.png|OUT.bmp [--trace FILE]\n"
               "       veltro-cli planet MAPFILE [selection] (--at X,Y | --number N) [--zoom X,Y,W] [-o FILE]\n"
               "selection: [--own N] [--year Y] [--report-year N=Y]... [--skip N]...\n",
               stderr);
}

// Qt's own warnings (a missing runtime folder offscreen, font fallbacks) are
// not the command's business: its standard error carries only its messages.
void quietQtMessages(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        QTextStream(stderr) << message << '\n';
}

} // namespace

int main(int argc, char *argv[])
{
    qInstallMessageHandler(quietQtMessages);
    const QString command = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString();
    // Rendering needs fonts and images; without a display it runs offscreen.
    if (command == u"render" && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    std::unique_ptr<QCoreApplication> app;
    if (command == u"render")
        app = std::make_unique<QGuiApplication>(argc, argv);
    else
        app = std::make_unique<QCoreApplication>(argc, argv);

    QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 2) {
        printUsage();
        return 2;
    }
    arguments.removeAt(1);
    try {
        if (command == u"export")
            return runExport(arguments);
        if (command == u"render")
            return runRender(arguments);
        if (command == u"planet")
            return runPlanet(arguments);
        printUsage();
        return 2;
    } catch (const CliFailure &failure) {
        QTextStream(stderr) << failure.message << '\n';
        return failure.status;
    }
}
