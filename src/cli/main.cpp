// veltro-cli: loads a game exactly as the desktop program does and exports
// its data or renders its map, for scripts, game hosts and test suites.

#include "CliOptions.h"
#include "PictureAllocation.h"
#include "QuotedText.h"
#include "Subcommands.h"
#include "Version.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QTextStream>
#include <csignal>
#include <cstdlib>
#include <memory>

namespace {

// Qt's own warnings (a missing runtime folder offscreen, font fallbacks) are
// not the command's business: its standard error carries only its messages.
void quietQtMessages(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        QTextStream(stderr) << message << '\n';
}

QStringList subcommandNames()
{
    QStringList names;
    for (const Subcommand &s : subcommands())
        names << QString::fromLatin1(s.name);
    return names;
}

// Without a subcommand: --help, --version, or a usage error.
int runTopLevel(const QStringList &arguments)
{
    QString description = QStringLiteral("Loads a Stars! game as the desktop program does, then exports its data or "
                                         "draws its map.\n\nCommands:");
    for (const Subcommand &s : subcommands())
        description += QStringLiteral("\n  %1  %2").arg(QString::fromLatin1(s.name), -8).arg(QString::fromLatin1(s.summary));
    QCommandLineParser parser;
    parser.setApplicationDescription(description);
    parser.addPositionalArgument(QStringLiteral("command"),
                                 QStringLiteral("One of the commands above, then the game's map file and the "
                                                "command's options: \"veltro-cli COMMAND --help\" lists them."),
                                 QStringLiteral("COMMAND MAPFILE"));
    parseCommandLine(parser, arguments);
    const QStringList positional = parser.positionalArguments();
    if (positional.isEmpty())
        throw CliFailure(2, QStringLiteral("missing command: %1 (see veltro-cli --help)")
                                .arg(subcommandNames().join(QStringLiteral(", "))));
    throw CliFailure(2, QStringLiteral("unknown command %1: %2 (see veltro-cli --help)")
                            .arg(quoted(positional.first()), subcommandNames().join(QStringLiteral(", "))));
}

// Qt reads every argument, and every file name, as UTF-8: a name in another
// encoding (Latin-1 bytes from an old archive) would turn into other
// characters and name no file. Such an argument is refused for what it is,
// its odd bytes shown, instead of a file said to be missing.
void refuseArgumentsNotInUtf8(int argc, char *argv[])
{
    for (int i = 1; i < argc; ++i) {
        const QByteArray bytes(argv[i]);
        if (QString::fromUtf8(bytes).toUtf8() == bytes)
            continue;
        QString shown;
        for (const char c : bytes)
            shown += c >= 0x20 && c < 0x7F ? QString(QLatin1Char(c))
                                           : QStringLiteral("\\x") + QString::number(uchar(c), 16).toUpper().rightJustified(2, u'0');
        QTextStream(stderr) << "argument " << i << " is not UTF-8 text: \"" << shown
                            << "\"; file names are read as UTF-8, so give the file a UTF-8 name\n";
        std::exit(2);
    }
}

int runCommand(const Subcommand *subcommand)
{
    try {
        const QStringList arguments = QCoreApplication::arguments();
        return subcommand ? subcommand->run(arguments) : runTopLevel(arguments);
    } catch (const CliFailure &failure) {
        QTextStream(stderr) << failure.message << '\n';
        return failure.status;
    } catch (const std::bad_alloc &e) {
        // A picture too large for the memory names its size.
        QTextStream(stderr) << (dynamic_cast<const NotEnoughMemory *>(&e) ? e.what() : "not enough memory") << '\n';
        return 1;
    }
}

} // namespace

int main(int argc, char *argv[])
{
    qInstallMessageHandler(quietQtMessages);
    refuseArgumentsNotInUtf8(argc, argv);
    // Past a file size limit (ulimit -f) the system stops the process at the
    // write that crosses it, leaving a temporary file behind; ignored, that
    // write fails with "File too large" and the command reports it.
    std::signal(SIGXFSZ, SIG_IGN);
    const Subcommand *subcommand = argc > 1 ? findSubcommand(QString::fromLocal8Bit(argv[1])) : nullptr;
    const bool drawsPictures = subcommand && subcommand->drawsPictures;
    // Drawing needs fonts and images; without a display it runs offscreen.
    if (drawsPictures && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    std::unique_ptr<QCoreApplication> app;
    if (drawsPictures)
        app = std::make_unique<QGuiApplication>(argc, argv);
    else
        app = std::make_unique<QCoreApplication>(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("veltro-cli"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VELTRO_VERSION));

    const int status = runCommand(subcommand);
    // Taking the application down would have the font database read
    // fontconfig's whole configuration only to free it again (tens of
    // milliseconds): everything is written and flushed by now, so the
    // process ends with the application still standing.
    (void)app.release();
    return status;
}
