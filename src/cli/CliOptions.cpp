#include "CliOptions.h"

#include "Conversions.h"
#include "GameChoice.h"
#include "LayerNames.h"
#include "LoadError.h"
#include "QuotedText.h"
#include "Subcommands.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QTextStream>
#include <cmath>

namespace {

int playerNumber(const QString &text, int lowest, const QString &option)
{
    bool ok = false;
    const int n = text.toInt(&ok);
    if (!ok || n < lowest || n > MaxPlayers)
        throw CliFailure(2, QStringLiteral("%1 takes a player number from %2 to 16, not %3")
                                .arg(option).arg(lowest).arg(quoted(text)));
    return n;
}

// A year box's text from the command line: a whole number, signed or not,
// that fits the game's 16-bit years. The window takes any text and reads
// its leading number; a script that writes "2,431" or "1e3" has made a
// mistake and is told so.
QString yearText(const QString &text, const QString &option)
{
    bool ok = false;
    const int year = text.toInt(&ok);
    static const QRegularExpression whole(QStringLiteral("^[+-]?[0-9]+$"));
    if (!ok || !whole.match(text).hasMatch() || year < -32768 || year > 32767)
        throw CliFailure(2, QStringLiteral("%1 takes a whole year from -32768 to 32767, not %2").arg(option, quoted(text)));
    return text;
}

} // namespace

void addGameSelectionOptions(QCommandLineParser &parser, bool yearsListed)
{
    parser.addOption({QStringLiteral("own"), QStringLiteral("Player number of your own race."), QStringLiteral("N")});
    QCommandLineOption year(QStringLiteral("year"), QStringLiteral("The current game year."), QStringLiteral("Y"));
    QCommandLineOption reportYear(QStringLiteral("report-year"), QStringLiteral("Year in which report N was exported."),
                                  QStringLiteral("N=Y"));
    if (!yearsListed) {
        year.setFlags(QCommandLineOption::HiddenFromHelp);
        reportYear.setFlags(QCommandLineOption::HiddenFromHelp);
    }
    parser.addOption(year);
    parser.addOption(reportYear);
    parser.addOption({QStringLiteral("skip"), QStringLiteral("Do not read report N."), QStringLiteral("N")});
}

void parseCommandLine(QCommandLineParser &parser, const QStringList &arguments)
{
    parser.addHelpOption();
    parser.addVersionOption();
    if (!parser.parse(arguments))
        throw CliFailure(2, escapeControls(parser.errorText()));
    // Only help and version are left for process() to act on; its own
    // handling of errors would exit with 1, not the usage status.
    parser.process(arguments);
}

QString parseWithMapFile(QCommandLineParser &parser, const QStringList &arguments, const QString &command)
{
    const Subcommand *subcommand = findSubcommand(command);
    Q_ASSERT(subcommand);
    parser.setApplicationDescription(QString::fromLatin1(subcommand->summary));
    parser.addPositionalArgument(command, QStringLiteral("The command, always the first argument."), command);
    parser.addPositionalArgument(QStringLiteral("MAPFILE"), QStringLiteral("The game's universe map file."));
    parseCommandLine(parser, arguments);
    QStringList positional = parser.positionalArguments();
    positional.removeFirst(); // the subcommand's name
    if (positional.size() != 1)
        throw CliFailure(2, QStringLiteral("%1 takes one MAPFILE").arg(command));
    return positional.first();
}

GameChoice gameChoice(const QCommandLineParser &parser)
{
    GameChoice choice;
    if (parser.isSet(QStringLiteral("own")))
        choice.ownRace = playerNumber(parser.value(QStringLiteral("own")), 1, QStringLiteral("--own"));
    if (parser.isSet(QStringLiteral("year")))
        choice.gameYearText = yearText(parser.value(QStringLiteral("year")), QStringLiteral("--year"));
    for (const QString &pair : parser.values(QStringLiteral("report-year"))) {
        const qsizetype eq = pair.indexOf(u'=');
        if (eq < 0)
            throw CliFailure(2, QStringLiteral("--report-year takes N=Y, not %1").arg(quoted(pair)));
        const int n = playerNumber(pair.left(eq), 1, QStringLiteral("--report-year"));
        choice.reportYearTexts[n] = yearText(pair.mid(eq + 1), QStringLiteral("--report-year %1=Y").arg(n));
    }
    for (const QString &n : parser.values(QStringLiteral("skip")))
        choice.skipped << playerNumber(n, 0, QStringLiteral("--skip"));
    return choice;
}

namespace {

// The load's warnings, held back until it succeeds: a failure is one line.
class ConsoleObserver : public GenerationObserver {
public:
    void warning(const QString &text) override { m_warnings << text; }
    void printWarnings() const
    {
        for (const QString &text : m_warnings)
            QTextStream(stderr) << "warning: " << escapeControls(text) << '\n';
    }

private:
    QStringList m_warnings;
};

void requireMapFile(const QString &mapFile)
{
    const QFileInfo info(mapFile);
    if (!info.exists())
        throw CliFailure(2, QStringLiteral("%1: no such map file").arg(escapeControls(mapFile)));
    if (!info.isFile())
        throw CliFailure(2, QStringLiteral("%1: not a regular file, so not a map file").arg(escapeControls(mapFile)));
}

} // namespace

void loadGame(const QString &mapFile, const GameChoice &choice, GameData &data)
{
    requireMapFile(mapFile);
    ConsoleObserver observer;
    try {
        loadChosenGame(mapFile, choice, data, observer);
    } catch (const SelectionRefused &refused) {
        throw CliFailure(2, refused.file.isEmpty() ? refused.message
                                                   : QStringLiteral("%1: %2").arg(escapeControls(refused.file), refused.message));
    } catch (const LoadError &e) {
        throw CliFailure(1, e.message());
    }
    observer.printWarnings();
}

void loadGame(const QString &mapFile, const QCommandLineParser &parser, GameData &data)
{
    requireMapFile(mapFile);
    loadGame(mapFile, gameChoice(parser), data);
}

void ZoomWindow::applyTo(GameData &data) const
{
    data.OriginX = x;
    data.OriginY = y;
    data.FarX = x + width;
    data.FarY = y + width;
    data.Scale = conv::divide(10000.0, width);
}

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
        throw CliFailure(2, QStringLiteral("--zoom takes X,Y,W in whole light years, not %1").arg(quoted(text)));
    // A width of 0 is the game's own division by zero, reported when the
    // view is set; a negative one is no square at all.
    if (z.width < 0)
        throw CliFailure(2, QStringLiteral("--zoom: the width W must not be negative, not %1").arg(z.width));
    if (qint64(z.x) + z.width > INT32_MAX || qint64(z.y) + z.width > INT32_MAX)
        throw CliFailure(2, QStringLiteral("--zoom: X + W and Y + W must stay below 2147483648, not %1").arg(quoted(text)));
    return z;
}

QCommandLineOption zoomOption()
{
    return {QStringLiteral("zoom"), QStringLiteral("View window X,Y,W in light years."), QStringLiteral("X,Y,W")};
}

QCommandLineOption spotOption(const QString &name, const QString &description)
{
    return {name, description, QStringLiteral("X,Y")};
}

UniverseSpot parseSpot(const QCommandLineParser &parser, const QCommandLineOption &option)
{
    const QString text = parser.value(option);
    const QStringList parts = text.split(u',');
    bool ok = parts.size() == 2;
    UniverseSpot s{};
    if (ok)
        s.x = parts[0].toDouble(&ok);
    if (ok)
        s.y = parts[1].toDouble(&ok);
    if (!ok || !std::isfinite(s.x) || !std::isfinite(s.y))
        throw CliFailure(2, QStringLiteral("--%1 takes X,Y as two finite numbers of light years, not %2")
                                .arg(option.names().first(), quoted(text)));
    return s;
}

QCommandLineOption outputOption(const QString &description)
{
    return {QStringLiteral("o"), description, QStringLiteral("FILE")};
}

QString outputPath(const QCommandLineParser &parser, const QCommandLineOption &option, const QString &fallback)
{
    if (!parser.isSet(option))
        return fallback;
    const QString path = parser.value(option);
    const QString name = option.names().first();
    if (path.isEmpty())
        throw CliFailure(2, QStringLiteral("%1%2 takes a file name, or - for standard output")
                                .arg(name.size() == 1 ? QStringLiteral("-") : QStringLiteral("--"), name));
    return path;
}

OverlayButtons parseLayers(const QString &list)
{
    OverlayButtons buttons;
    for (const QString &name : list.split(u',', Qt::SkipEmptyParts)) {
        const auto button = layerButton(name.trimmed());
        if (!button)
            throw CliFailure(2, QStringLiteral("--layers: unknown layer %1").arg(quoted(name)));
        buttons.setPressedQuietly(*button, true);
    }
    return buttons;
}

int pictureSize(const QCommandLineParser &parser)
{
    bool ok = false;
    const int pixels = parser.value(QStringLiteral("size")).toInt(&ok);
    if (!ok || pixels < 1 || pixels > 20000)
        throw CliFailure(2, QStringLiteral("--size takes a number of pixels from 1 to 20000"));
    return pixels;
}

void ConsoleHost::showMessage(const QString &text)
{
    QTextStream(stderr) << escapeControls(text) << '\n';
}

void ConsoleHost::showFileMessage(const QString &file, const QString &text)
{
    showMessage(QStringLiteral("%1: %2").arg(file, text));
}

