#include "CliOptions.h"

#include "Conversions.h"
#include "GameChoice.h"
#include "LayerNames.h"
#include "LoadError.h"
#include "QuotedText.h"
#include "Subcommands.h"

#include <QFileInfo>
#include <QSaveFile>
#include <QFile>
#include <QTextStream>
#include <cstdio>

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
        throw CliFailure(2, parser.errorText());
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
    choice.gameYearText = parser.value(QStringLiteral("year"));
    for (const QString &pair : parser.values(QStringLiteral("report-year"))) {
        const qsizetype eq = pair.indexOf(u'=');
        if (eq < 0)
            throw CliFailure(2, QStringLiteral("--report-year takes N=Y, not %1").arg(quoted(pair)));
        const int n = playerNumber(pair.left(eq), 1, QStringLiteral("--report-year"));
        choice.reportYearTexts[n] = pair.mid(eq + 1);
    }
    for (const QString &n : parser.values(QStringLiteral("skip")))
        choice.skipped << playerNumber(n, 0, QStringLiteral("--skip"));
    return choice;
}

void loadGame(const QString &mapFile, const GameChoice &choice, GameData &data)
{
    if (!QFileInfo(mapFile).isFile())
        throw CliFailure(2, QStringLiteral("%1: no such map file").arg(escapeControls(mapFile)));
    GenerationObserver silent;
    try {
        loadChosenGame(mapFile, choice, data, silent);
    } catch (const SelectionRefused &refused) {
        throw CliFailure(2, refused.message);
    } catch (const LoadError &e) {
        throw CliFailure(1, e.message());
    }
}

void loadGame(const QString &mapFile, const QCommandLineParser &parser, GameData &data)
{
    if (!QFileInfo(mapFile).isFile())
        throw CliFailure(2, QStringLiteral("%1: no such map file").arg(escapeControls(mapFile)));
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
    return z;
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
    QTextStream(stderr) << text << '\n';
}

void writeOutput(const QString &path, const std::function<void(QIODevice &)> &write)
{
    if (path.isEmpty()) {
        QFile out;
        if (!out.open(stdout, QIODevice::WriteOnly))
            throw CliFailure(1, QStringLiteral("cannot write to standard output (%1)").arg(out.errorString()));
        write(out);
        if (!out.flush() || out.error() != QFileDevice::NoError)
            throw CliFailure(1, QStringLiteral("cannot write to standard output (%1)").arg(out.errorString()));
        return;
    }
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        write(file);
        if (file.commit())
            return;
    }
    throw CliFailure(1, QStringLiteral("%1: cannot write the file (%2)").arg(escapeControls(path), file.errorString()));
}
