#include "ExportCommand.h"

#include "CliOptions.h"
#include "GameExport.h"
#include "OutputTarget.h"
#include "QuotedText.h"

int runExport(const QStringList &arguments)
{
    QCommandLineParser parser;
    addGameSelectionOptions(parser);
    const QCommandLineOption format(QStringLiteral("format"), QStringLiteral("json (default) or csv."),
                                    QStringLiteral("FORMAT"), QStringLiteral("json"));
    const QCommandLineOption grid(QStringLiteral("grid"), QStringLiteral("Include the territory grid (JSON)."));
    const QCommandLineOption output = outputOption(QStringLiteral("Write to FILE instead of standard output."));
    parser.addOptions({format, grid, output});
    const QString mapFile = parseWithMapFile(parser, arguments, QStringLiteral("export"));
    const QString formatName = parser.value(format);
    if (formatName != u"json" && formatName != u"csv")
        throw CliFailure(2, QStringLiteral("--format is json or csv, not %1").arg(quoted(formatName)));
    const QString out = outputPath(parser, output);
    refuseClashingTargets({{QStringLiteral("-o"), out}}, gameInputs(mapFile));

    GameData data;
    loadGame(mapFile, parser, data);
    const bool withGrid = parser.isSet(grid);
    writeOutput(out, [&](QIODevice &device) {
        if (formatName == u"csv")
            exportCsv(data, device);
        else
            exportJson(data, withGrid, device);
    });
    return 0;
}
