// veltro-cli: loads a game exactly as the desktop program does and exports
// its data or renders its map, for scripts, game hosts and test suites.

#include "CliOptions.h"
#include "GameExport.h"

#include <QCoreApplication>
#include <QTextStream>
#include <cstdio>

namespace {

int runExport(const QStringList &arguments)
{
    QCommandLineParser parser;
    addGameSelectionOptions(parser);
    parser.addOption({QStringLiteral("format"), QStringLiteral("json (default) or csv."), QStringLiteral("FORMAT"),
                      QStringLiteral("json")});
    parser.addOption({QStringLiteral("grid"), QStringLiteral("Include the territory grid (JSON).")});
    parser.addOption({QStringLiteral("o"), QStringLiteral("Write to FILE instead of standard output."),
                      QStringLiteral("FILE")});
    parser.addPositionalArgument(QStringLiteral("MAPFILE"), QStringLiteral("The game's universe map file."));
    if (!parser.parse(arguments))
        throw CliFailure(2, parser.errorText());
    const QStringList positional = parser.positionalArguments();
    if (positional.size() != 1)
        throw CliFailure(2, QStringLiteral("export takes one MAPFILE"));
    const QString format = parser.value(QStringLiteral("format"));
    if (format != u"json" && format != u"csv")
        throw CliFailure(2, QStringLiteral("--format is json or csv, not \"%1\"").arg(format));

    GameData data;
    loadGame(positional.first(), parser, data);
    writeOutput(parser.value(QStringLiteral("o")),
                format == u"csv" ? exportCsv(data) : exportJson(data, parser.isSet(QStringLiteral("grid"))));
    return 0;
}

void printUsage()
{
    std::fputs("usage: veltro-cli export MAPFILE [--own N] [--year Y] [--report-year N=Y]... [--skip N]...\n"
               "                        [--format json|csv] [--grid] [-o FILE]\n",
               stderr);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 2) {
        printUsage();
        return 2;
    }
    const QString command = arguments.takeAt(1);
    try {
        if (command == u"export")
            return runExport(arguments);
        printUsage();
        return 2;
    } catch (const CliFailure &failure) {
        QTextStream(stderr) << failure.message << '\n';
        return failure.status;
    }
}
