#include "ExportCommand.h"

#include "CliOptions.h"
#include "GameExport.h"
#include "QuotedText.h"

int runExport(const QStringList &arguments)
{
    QCommandLineParser parser;
    addGameSelectionOptions(parser);
    parser.addOption({QStringLiteral("format"), QStringLiteral("json (default) or csv."), QStringLiteral("FORMAT"),
                      QStringLiteral("json")});
    parser.addOption({QStringLiteral("grid"), QStringLiteral("Include the territory grid (JSON).")});
    parser.addOption({QStringLiteral("o"), QStringLiteral("Write to FILE instead of standard output."),
                      QStringLiteral("FILE")});
    const QString mapFile = parseWithMapFile(parser, arguments, QStringLiteral("export"));
    const QString format = parser.value(QStringLiteral("format"));
    if (format != u"json" && format != u"csv")
        throw CliFailure(2, QStringLiteral("--format is json or csv, not %1").arg(quoted(format)));

    GameData data;
    loadGame(mapFile, parser, data);
    const bool grid = parser.isSet(QStringLiteral("grid"));
    writeOutput(parser.value(QStringLiteral("o")), [&](QIODevice &out) {
        if (format == u"csv")
            exportCsv(data, out);
        else
            exportJson(data, grid, out);
    });
    return 0;
}
