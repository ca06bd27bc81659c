// veltro-cli's command line: --help on stdout with status 0, every usage
// error one line on stderr with status 2.

#include "CliRun.h"

#include <QTemporaryDir>
#include <QTest>

class CommandLineTest : public QObject {
    Q_OBJECT

private slots:
    // A command's help, asked for after other options, lists its own options and no other command's.
    void help()
    {
        const CliRun run = runCli({"render", "x.map", "--size", "9", "-h"});
        QCOMPARE(run.status, 0);
        QVERIFY(run.out.startsWith("Usage: "));
        for (const char *text : {"[options] render MAPFILE", "--skip", "--layers", "--overlay"})
            QVERIFY2(run.out.contains(text), text);
        QVERIFY(!run.out.contains("--format"));
    }

    void usageErrors_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("message");
        const QString commands = ": export, render, planet, history, site (see veltro-cli --help)";
        QTest::newRow("nothing") << QStringList{} << "missing command" + commands;
        QTest::newRow("unknown command") << QStringList{"draw", "x.map"} << "unknown command \"draw\"" + commands;
        QTest::newRow("unknown option") << QStringList{"export", "x.map", "--colour"} << "Unknown option 'colour'.";
        QTest::newRow("no map file") << QStringList{"render", "-o", "x.png"} << "render takes one MAPFILE";
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
        // Words of the command line, the sample's map put after the first.
        const auto row = [](const QString &words, int status, const QString &message) {
            QStringList arguments = words.split(' ');
            arguments.insert(1, VELTRO_SAMPLES "/MARCHES.map");
            QTest::newRow(qPrintable(words)) << arguments << status << message;
        };
        for (const char *text : {"abc", "", "2,431", "2431abc", "1e3", " 2431", "32768"})
            QTest::addRow("--year \"%s\"", text) << QStringList{"export", VELTRO_SAMPLES "/MARCHES.map", "--year", text} << 2
                                                << "--year takes a whole year";
        for (const char *text : {"1=abc", "1=", "1=2431=5"})
            row("export --year 2431 --report-year " + QString(text), 2, "--report-year 1=Y takes a whole year");
        row("render --overlay esthab=Nobody -o -", 2, "no race of that name");
        row("render --zoom 0,0,0 -o -", 1, "Division by zero");
        row("render --zoom 100,100,-200 -o -", 2, "must not be negative");
        row("planet --at 1,1 --zoom 2147483647,0,1", 2, "must stay below 2147483648");
        row("planet --at 1,-inf", 2, "two finite numbers");
        QTest::newRow("output without a name") << QStringList{"planet", VELTRO_SAMPLES "/MARCHES.map", "--number", "1", "-o", ""}
                                               << 2 << "-o takes a file name";
        row("export --\x1b[2J\a\nx", 2, "'\\e[2J\\a\\nx'");
        const QString colour = "render --year 2431 --layers owned -o - --race-colour ";
        row(colour + "vorn=#FFFFFF", 2, "--race-colour: no race named \"vorn\" in this game;");
        row(colour + "Vorn=#3F4040", 2, "red + green + blue is 191, at least 192 is needed");
        row(colour + "Vorn=red", 2, "--race-colour takes NAME=#RRGGBB, not \"Vorn=red\"");
        row(colour + "=#FFFFFF", 2, "--race-colour takes NAME=#RRGGBB, not \"=#FFFFFF\"");
        const QString planet = "planet --year 2431";
        row(planet, 2, "planet takes one of --at X,Y and --number N");
        for (const char *number : {"0", "129"})
            row(planet + " --number " + number, 2, QString("--number takes a planet row from 1 to 128, not \"%1\"").arg(number));
        row(planet + " --at 12", 2, "--at takes X,Y as two finite numbers of light years, not \"12\"");
    }
    void meaninglessValues()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
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
        QCOMPARE(run.status, 0);
        const auto fill = [](int r, int g, int b) { return "\"FillColor\":" + QByteArray::number(r + 256 * g + 65536 * b) + "}"; };
        QVERIFY(run.out.contains(fill(64, 200, 72)));
        QVERIFY(run.out.contains(fill(64, 64, 64)));
        QVERIFY(!run.out.contains(fill(160, 176, 192)));
    }
};

QTEST_GUILESS_MAIN(CommandLineTest)
#include "tst_commandline.moc"
