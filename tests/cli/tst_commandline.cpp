// veltro-cli's command line as QCommandLineParser programs behave: --help
// and --version on stdout with status 0, every usage error one line on
// stderr with status 2.

#include "CliRun.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <fcntl.h>
#include <unistd.h>

class CommandLineTest : public QObject {
    Q_OBJECT

private slots:
    void version()
    {
        const CliRun run = runCli({"--version"});
        QCOMPARE(run.status, 0);
        QVERIFY2(QRegularExpression(R"(^veltro-cli \d+\.\d+\.\d+\n$)").match(QString(run.out)).hasMatch(), run.out);
    }

    // Each level's help lists its own options and no other's.
    void help_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QStringList>("listed");
        QTest::addColumn<QString>("notListed");
        QTest::newRow("top level") << QStringList{"--help"} << QStringList{"export", "render", "--version"} << "--own";
        QTest::newRow("export") << QStringList{"export", "--help"}
                                << QStringList{"[options] export MAPFILE", "--own", "--report-year", "--format", "--grid"}
                                << "--layers";
        QTest::newRow("render, after other options") << QStringList{"render", "x.map", "--size", "9", "-h"}
                                                     << QStringList{"[options] render MAPFILE", "--skip", "--layers", "--overlay"}
                                                     << "--format";
    }
    void help()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QStringList, listed);
        QFETCH(QString, notListed);
        const CliRun run = runCli(arguments);
        QCOMPARE(run.status, 0);
        QVERIFY(run.out.startsWith("Usage: "));
        for (const QString &text : listed)
            QVERIFY2(run.out.contains(text.toUtf8()), qPrintable(text));
        QVERIFY(!run.out.contains(notListed.toUtf8()));
    }

    void usageErrors_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("message");
        const QString commands = ": export, render, planet, history, site (see veltro-cli --help)";
        QTest::newRow("nothing") << QStringList{} << "missing command" + commands;
        QTest::newRow("unknown command") << QStringList{"draw", "x.map"} << "unknown command \"draw\"" + commands;
        QTest::newRow("option before the command") << QStringList{"--year", "2400", "export", "x.map"}
                                                   << "Unknown option 'year'.";
        QTest::newRow("unknown option") << QStringList{"export", "x.map", "--colour"} << "Unknown option 'colour'.";
        QTest::newRow("no map file") << QStringList{"render", "-o", "x.png"} << "render takes one MAPFILE";
        QTest::newRow("option without its value") << QStringList{"export", "x.map", "--format"}
                                                  << "Missing value after '--format'.";
    }
    void usageErrors()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        const CliRun run = runCli(arguments);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.out, QByteArray());
        QCOMPARE(run.err, message + "\n");
    }

    // Values that mean nothing, on a real game: one line, status 2, nothing
    // written. A zoom of width 0 stays the game's own division by zero (1).
    void meaninglessValues_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("message");
        const QString year = "--year takes a whole year";
        for (const char *text : {"abc", "", "2,431", "2431abc", "1e3", " 2431", "32768"})
            QTest::addRow("--year \"%s\"", text) << QStringList{"export", "--year", text} << 2 << year;
        for (const char *text : {"1=abc", "1=", "1=2431=5"})
            QTest::addRow("--report-year %s", text) << QStringList{"export", "--year", "2431", "--report-year", text}
                                                   << 2 << "--report-year 1=Y takes a whole year";
        QTest::newRow("esthab of no race") << QStringList{"render", "--overlay", "esthab=Nobody", "-o", "-"} << 2
                                           << "no race of that name";
        QTest::newRow("zoom of width 0") << QStringList{"render", "--zoom", "0,0,0", "-o", "-"} << 1 << "Division by zero";
        QTest::newRow("zoom of negative width") << QStringList{"render", "--zoom", "100,100,-200", "-o", "-"} << 2
                                                << "must not be negative";
        QTest::newRow("zoom beyond 32 bits") << QStringList{"planet", "--at", "1,1", "--zoom", "2147483647,0,1"} << 2
                                             << "must stay below 2147483648";
        QTest::newRow("pointer at infinity") << QStringList{"planet", "--at", "1,-inf"} << 2 << "two finite numbers";
        QTest::newRow("output without a name") << QStringList{"planet", "--number", "1", "-o", ""} << 2
                                               << "-o takes a file name";
        QTest::newRow("control characters") << QStringList{"export", "--\x1b[2J\a\nx"} << 2 << "'\\e[2J\\a\\nx'";
        const QStringList colour{"render", "--year", "2431", "--layers", "owned", "-o", "-", "--race-colour"};
        QTest::newRow("race names match with case") << colour + QStringList{"vorn=#FFFFFF"} << 2
                                                    << "--race-colour: no race named \"vorn\" in this game;";
        QTest::newRow("race colour too dark") << colour + QStringList{"Vorn=#3F4040"} << 2
                                              << "red + green + blue is 191, at least 192 is needed";
        QTest::newRow("race colour by name") << colour + QStringList{"Vorn=red"} << 2
                                             << "--race-colour takes NAME=#RRGGBB, not \"Vorn=red\"";
        const QStringList planet{"planet", "--year", "2431"};
        QTest::newRow("planet: neither --at nor --number") << planet << 2
                                                           << "planet takes one of --at X,Y and --number N";
        QTest::newRow("planet: both") << planet + QStringList{"--at", "1,1", "--number", "1"} << 2
                                      << "planet takes one of --at X,Y and --number N";
        for (const char *row : {"0", "129"})
            QTest::addRow("planet: row %s", row)
                << planet + QStringList{"--number", row} << 2
                << QString("--number takes a planet row from 1 to 128, not \"%1\"").arg(row);
        QTest::newRow("planet: not a position") << planet + QStringList{"--at", "12"} << 2
                                                << "--at takes X,Y as two finite numbers of light years, not \"12\"";
        QTest::newRow("planet: not a start") << planet + QStringList{"--at", "1,1", "--from", "1;1"} << 2
                                             << "--from takes X,Y as two finite numbers of light years, not \"1;1\"";
        QTest::newRow("planet: zoom of width 0") << planet + QStringList{"--at", "1,1", "--zoom", "0,0,0"} << 1
                                                 << "the spot could not be looked up: Division by zero";
    }
    void meaninglessValues()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        arguments.insert(1, QString(VELTRO_SAMPLES) + "/MARCHES.map");
        const CliRun run = runCli(arguments);
        QTEST(run.status, "status");
        QCOMPARE(run.out, QByteArray());
        QVERIFY2(run.err.count(u'\n') == 1 && run.err.contains(message), qPrintable(run.err));
        QVERIFY(!run.err.contains(u'\x1b') && !run.err.contains(u'\a'));
    }

    // The last word on a race wins; 64 + 64 + 64 is just bright enough.
    void raceColourReachesTheDrawing()
    {
        QTemporaryDir dir;
        const CliRun run = runCli({"render", VELTRO_SAMPLES "/MARCHES.map", "--year", "2431", "--layers", "owned",
                                   "--race-colour", "Vorn=#A0B0C0", "--race-colour", "Vorn=#40C848", "--race-colour",
                                   "Morrow Kin=#404040", "-o", dir.filePath("map.png"), "--trace", "-"});
        QCOMPARE(run.err, QString());
        QCOMPARE(run.status, 0);
        const auto fill = [](int r, int g, int b) {
            return "\"FillColor\":" + QByteArray::number(r + 256 * g + 65536 * b) + "}";
        };
        QVERIFY(run.out.contains(fill(64, 200, 72)));
        QVERIFY(run.out.contains(fill(64, 64, 64)));
        QVERIFY(!run.out.contains(fill(160, 176, 192)));
    }

    // Qt reads arguments as UTF-8: a Latin-1 name is told apart from a missing file.
    void argumentNotInUtf8()
    {
        QTemporaryDir dir;
        const QByteArray name = QFile::encodeName(dir.path()) + "/Spiel\xe4.map";
        const int fd = ::open(name.constData(), O_CREAT | O_WRONLY, 0644);
        QVERIFY(fd >= 0);
        ::close(fd);
        QProcess process;
        process.start("sh", {"-c", "exec \"$0\" export \"$(printf '%s/Spiel\\344.map' \"$1\")\"", VELTRO_CLI, dir.path()});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 2);
        QCOMPARE(process.readAllStandardError(),
                 "argument 2 is not UTF-8 text: \"" + QFile::encodeName(dir.path()) + "/Spiel\\xE4.map\"; file names are read "
                 "as UTF-8, so give the file a UTF-8 name\n");
    }
};

QTEST_GUILESS_MAIN(CommandLineTest)
#include "tst_commandline.moc"
