#pragma once
// The command line: the game selection every subcommand takes and the
// loading it leads to, with the exit statuses scripts rely on.

#include "GameChoice.h"
#include "GameData.h"
#include "OverlayButtons.h"
#include "RedrawHost.h"

#include <QCommandLineParser>
#include <QString>
#include <stdexcept>

// A run that must end: status 2 for usage and selection errors, 1 for a
// failure while loading or drawing; the message goes to standard error.
struct CliFailure : std::runtime_error {
    CliFailure(int status, const QString &message)
        : std::runtime_error(message.toStdString()), status(status), message(message) {}
    int status;
    QString message;
};

// Adds --own, --year, --report-year and --skip to the parser. Without
// `yearsListed` the two year options are known but left out of --help, for
// a command that takes its years elsewhere and refuses them with a reason.
void addGameSelectionOptions(QCommandLineParser &parser, bool yearsListed = true);

// Parses the command line with --help and --version added: a usage error
// throws with status 2; --help, --help-all and --version print and exit 0,
// as every QCommandLineParser program does.
void parseCommandLine(QCommandLineParser &parser, const QStringList &arguments);

// Parses a subcommand's command line (program, subcommand, MAPFILE and the
// options the parser was given) and returns its one MAPFILE.
QString parseWithMapFile(QCommandLineParser &parser, const QStringList &arguments, const QString &command);

// The selection options as a choice of files; a bad player number is a
// usage error.
GameChoice gameChoice(const QCommandLineParser &parser);

// Picks MAPFILE as the file selection window would, applies the choice,
// runs its checks and then the generation; a failed check names the file it
// concerns. Prints the load's warnings once it has succeeded. Throws
// CliFailure.
void loadGame(const QString &mapFile, const GameChoice &choice, GameData &data);
void loadGame(const QString &mapFile, const QCommandLineParser &parser, GameData &data);

// The view of a finished zoom, --zoom X,Y,W: the square of side W light
// years from (X, Y).
struct ZoomWindow {
    int32_t x, y, width;
    // Sets the view; DivisionByZeroError for a width of 0.
    void applyTo(GameData &data) const;
};
// Usage error (2) for anything but three whole numbers, a negative width,
// or a view whose far edges do not fit 32 bits.
ZoomWindow parseZoom(const QString &text);
QCommandLineOption zoomOption();

// A point of the universe, X,Y in light years, decimals allowed: --at and
// --from of planet.
struct UniverseSpot {
    double x, y;
};
QCommandLineOption spotOption(const QString &name, const QString &description);
// Usage error (2) for anything but two finite numbers.
UniverseSpot parseSpot(const QCommandLineParser &parser, const QCommandLineOption &option);

// -o FILE, with the command's own description.
QCommandLineOption outputOption(const QString &description);
// The option's path; `fallback` when it is not given ("-" is standard
// output). An empty name is a usage error.
QString outputPath(const QCommandLineParser &parser, const QCommandLineOption &option,
                   const QString &fallback = QStringLiteral("-"));

// --layers LIST: the overlay buttons pressed, by their layer names in any
// order; an unknown name is a usage error.
OverlayButtons parseLayers(const QString &list);

// --size PX: the picture's side, 1 to 20000 pixels, else a usage error.
int pictureSize(const QCommandLineParser &parser);

// The command line has no window: the redraw's messages go to standard error.
class ConsoleHost : public RedrawHost {
public:
    void showMessage(const QString &text) override;
    void showFileMessage(const QString &file, const QString &text) override;
};
