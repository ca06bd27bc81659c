// veltro-cli export as scripts see it: exit statuses, messages, JSON and CSV.

#include "TestGame.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

namespace {

struct Run {
    int status = -1;
    QByteArray out;
    QString err;
};

Run exportGame(const TestGame &game, const QStringList &options = {})
{
    QProcess process;
    process.start(VELTRO_CLI, QStringList{"export", game.path("game.map")} + options);
    process.waitForFinished(-1);
    Run run;
    if (process.exitStatus() == QProcess::NormalExit)
        run.status = process.exitCode();
    run.out = process.readAllStandardOutput();
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

void writeSmallGame(const TestGame &game)
{
    game.writeMap({{"Home", 1100, 1100}, {"Target", 1200, 1200}});
    game.writeReport("game.P1", {homeLine()});
}

} // namespace

class ExportTest : public QObject {
    Q_OBJECT

private slots:
    // The selection checks, in their order; "*" accepts any usage message.
    void selectionMessages_data()
    {
        QTest::addColumn<QStringList>("reports");
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("message");
        const QString notIncluded = "You have not included the datafile you have selected as your race";
        const QString yearAbove = "One or more game files has a Year higher then the Game Year";
        const QString noGameYear = "You have entered Years for player files but not for the Game";
        QTest::newRow("no reports") << QStringList{} << QStringList{} << "No Player files found for this map";
        QTest::newRow("own race skipped") << QStringList{"game.P1", "game.P2"} << QStringList{"--skip", "1"} << notIncluded;
        QTest::newRow("own race without a file") << QStringList{"game.P1"} << QStringList{"--own", "2"} << notIncluded;
        QTest::newRow("old-style report skipped") << QStringList{"game.PLA"} << QStringList{"--skip", "1"} << notIncluded;
        QTest::newRow("inclusion before years")
            << QStringList{"game.P1"} << QStringList{"--skip", "1", "--year", "2400", "--report-year", "1=2401"}
            << notIncluded;
        QTest::newRow("no player number") << QStringList{"game.Px"} << QStringList{} << "No planet files selected";
        QTest::newRow("no game year") << QStringList{"game.P1"} << QStringList{"--report-year", "1=2400"} << noGameYear;
        QTest::newRow("game year before year above") << QStringList{"game.P1"} << QStringList{"--report-year", "2=5"}
                                                     << noGameYear;
        QTest::newRow("year above") << QStringList{"game.P1", "game.P2"}
                                    << QStringList{"--year", "2400", "--report-year", "2=2401"} << yearAbove;
        QTest::newRow("year of a row without a file")
            << QStringList{"game.P1"} << QStringList{"--year", "2400", "--report-year", "5=2401"} << yearAbove;
        QTest::newRow("own 0") << QStringList{"game.P1"} << QStringList{"--own", "0"} << "*";
        QTest::newRow("own 17") << QStringList{"game.P1"} << QStringList{"--own", "17"} << "*";
        QTest::newRow("game year beyond 16 bits") << QStringList{"game.P1"} << QStringList{"--year", "70000"} << "*";
        QTest::newRow("unknown format") << QStringList{"game.P1"} << QStringList{"--format", "xml"} << "*";
    }
    void selectionMessages()
    {
        QFETCH(QStringList, reports);
        QFETCH(QStringList, options);
        QFETCH(QString, message);
        TestGame game;
        game.writeMap({{"Home", 1100, 1100}});
        for (const QString &name : reports)
            game.writeReport(name, {homeLine()});
        const Run run = exportGame(game, options);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.out, QByteArray());
        QCOMPARE(run.err.count(u'\n'), 1);
        if (message != "*")
            QCOMPARE(run.err.trimmed(), message);
    }

    // Upper-case names from Windows, JSON types and the number format.
    void json()
    {
        TestGame game;
        game.writeMap({{"Home", 1100, 1100}, {"Target", 1200, 1200}});
        game.writeReport("GAME.P1", {homeLine(), planetLine("Target", "Robots", "Space Dock", "0", "0",
                                                           {{11, "50"}, {34, "-1"}})});
        game.write("GAME.vmk", "L,1,2,3,4,5\r\n");
        const Run run = exportGame(game, {"--year", "2400"});
        QCOMPARE(run.err, QString());
        QCOMPARE(run.status, 0);
        QJsonParseError error;
        const QJsonObject o = QJsonDocument::fromJson(run.out, &error).object();
        QCOMPARE(error.error, QJsonParseError::NoError);
        QCOMPARE(o["OwnRace"].toInt(), 1);
        QCOMPARE(o["GameYear"].toInt(), 2400);
        QCOMPARE(o["AnnotationText"].toString(), QStringLiteral("L,1,2,3,4,5\r\n"));
        QCOMPARE(o["OwnRaceName"].toString(), QStringLiteral("Humans"));
        const QJsonArray planets = o["Planets"].toArray();
        QCOMPARE(planets.size(), 2);
        const QJsonObject target = planets[1].toObject();
        QCOMPARE(target.size(), 38);
        QVERIFY(target["Owner"].isString());
        QVERIFY(target["Population"].isDouble());
        QCOMPARE(target["Population"].toDouble(), 500000.0);
        QVERIFY(target["Hab"].isDouble());
        QVERIFY(target["Gravity"].isString()); // an empty report field reads "Unknown"
        QVERIFY(target["TerraformedHab"].isDouble());
        QVERIFY(planets[0].toObject()["Temperature2"].isNull()); // after the line's last tab
        QCOMPARE(o["Players"].toArray().size(), 2);
        QCOMPARE(o["Players"].toArray()[1].toObject().size(), 17);
        QCOMPARE(o["Players"].toArray()[1].toObject()["TotalIron"].toDouble(), 0.05);
        QVERIFY(!o.contains("GridOwner"));
        // Whole numbers are written plainly.
        QVERIFY(run.out.contains("\"Population\": 500000,"));
        QVERIFY(run.out.contains("\"GateRange\": 10000,"));
        QVERIFY(!QRegularExpression(R"(:\s*-?\d+(\.0+|[eE][-+]?\d+)\s*[,\n])").match(QString(run.out)).hasMatch());

        TestGame unreported;
        writeSmallGame(unreported);
        const QJsonObject quiet =
            QJsonDocument::fromJson(exportGame(unreported).out).object()["Planets"].toArray()[1].toObject();
        QVERIFY(quiet["Owner"].isNull());
        QVERIFY(quiet["Hab"].isNull());
        QCOMPARE(quiet["AttackScore"].toInt(), 3);
    }

    void grid()
    {
        TestGame game;
        writeSmallGame(game);
        const QJsonObject o = QJsonDocument::fromJson(exportGame(game, {"--grid"}).out).object();
        const QJsonArray owners = o["GridOwner"].toArray();
        QCOMPARE(owners.size(), 651);
        QCOMPARE(owners[0].toArray().size(), 651);
        QCOMPARE(o["GridStrength"].toArray().size(), 651);
        // Home sits at (100, 200) in a 300-wide universe: grid cell (217, 433).
        QCOMPARE(owners[217].toArray()[433].toInt(), 1);
        QCOMPARE(owners[650].toArray()[0].toInt(), 0);
    }

    void csv()
    {
        TestGame game;
        game.write("game.map", "#\r\n1\t1100\t1100\tHome\r\n2 1200 1200 \"Red, Giant\" ignored\r\n");
        game.writeReport("game.P1", {homeLine(), planetLine("Red, Giant", "Bob \"Q\" Race", "None", "0", "1000")});
        const Run run = exportGame(game, {"--format", "csv"});
        QCOMPARE(run.status, 0);
        const QList<QByteArray> rows = run.out.split('\n');
        QCOMPARE(rows.size(), 4);
        QVERIFY(rows[0].startsWith("Number,X,Y,Name,Owner,Starbase,AgeText,Population,SOI,"));
        QVERIFY(rows[0].endsWith("ScannerRange2,AttackScore\r"));
        QVERIFY(rows[2].startsWith("2,200,100,\"Red, Giant\",\"Bob \"\"Q\"\" Race\",None,Current,1000,5,0,,"));
        QVERIFY(rows[2].contains(",,,,")); // empty fields are empty cells
        QCOMPARE(rows[3], QByteArray());

        const Run toFile = exportGame(game, {"--format", "csv", "-o", game.path("planets.csv")});
        QCOMPARE(toFile.status, 0);
        QCOMPARE(toFile.out, QByteArray());
        QFile written(game.path("planets.csv"));
        QVERIFY(written.open(QIODevice::ReadOnly));
        QCOMPARE(written.readAll(), run.out);
    }

    // One old report for the whole game: fields from 21 on are not read,
    // the tolerance ranges keep their start values and territory stays a
    // count of cells.
    void oldStyleGame()
    {
        TestGame game;
        game.writeMap({{"Home", 1100, 1100}, {"Target", 1200, 1200}});
        game.writeReport("game.PLA", {homeLine(), planetLine("Target", "Robots", "None", "0", "500000",
                                                           {{21, "1.5g"}, {27, "80"}})});
        game.writeReport("game.P2", {planetLine("Target", "Ghosts", "None", "0", "1")});
        const QJsonObject o = QJsonDocument::fromJson(exportGame(game, {"--grid"}).out).object();
        QCOMPARE(o["ReportFormat"].toInt(), 20);
        QCOMPARE(o["PlayerCount"].toInt(), 2);
        const QJsonObject target = o["Planets"].toArray()[1].toObject();
        QCOMPARE(target["Owner"].toString(), QStringLiteral("Robots"));
        QVERIFY(target["Gravity"].isNull());
        QVERIFY(target["TerraformedHab"].isNull());
        const QJsonObject robots = o["Players"].toArray()[1].toObject();
        QCOMPARE(robots["MinGrav"].toDouble(), 8.0);
        QCOMPARE(robots["MaxTemp"].toDouble(), -200.0);
        int cells = 0;
        for (const QJsonValue &column : o["GridOwner"].toArray())
            for (const QJsonValue &cell : column.toArray())
                cells += cell.toInt() == 2;
        QVERIFY(cells > 0);
        QCOMPARE(robots["Territory"].toInt(), cells);
    }

    // A fault in a file: status 1 and one line naming the file and the line
    // (0: any line, -1: the file only).
    void badInput_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("line");
        QTest::addColumn<QString>("fault");
        const QByteArray header = "#\tX\tY\tName\r\n";
        QTest::newRow("empty map") << "game.map" << QByteArray() << 1 << "Input past end of file";
        QTest::newRow("header only") << "game.map" << header << 2 << "";
        QTest::newRow("truncated record") << "game.map" << header + "1\t1100\t1100\tHome\r\n2\t1200" << 3
                                          << "Input past end of file";
        QTest::newRow("coordinate not a number") << "game.map" << header + "1\t11OO\t1100\tHome\r\n" << 2
                                                 << "Type mismatch";
        QTest::newRow("universe too small") << "game.map" << header + "1\t1100\t1100\tHome\r\n2\t950\t1100\tX\r\n"
                                            << 3 << "Division by zero";
        QTest::newRow("extent beyond 32 bits") << "game.map" << header + "1\t2147483647\t1100\tHome\r\n" << 2
                                               << "Overflow";
        QTest::newRow("Y beyond 32 bits") << "game.map" << header + "1\t1100\t-2147483648\tHome\r\n" << 2 << "Overflow";
        QTest::newRow("trailing blank line") << "game.map" << header + "1\t1100\t1100\tHome\r\n\r\n" << 0
                                             << "Input past end of file";
        QTest::newRow("megabyte coordinate") << "game.map" << header + "1\t" + QByteArray(1 << 20, '9') + "\t1\tA"
                                             << 2 << "Overflow";
        QByteArray garbage(4096, '\0');
        QRandomGenerator random(42);
        for (char &c : garbage)
            c = char(random.bounded(256));
        QTest::newRow("binary garbage") << "game.map" << garbage << -1 << "";
        const QByteArray reportHeader = "Planet Name\tOwner\r\n" + homeLine() + "\r\n";
        QTest::newRow("38 tabs") << "game.P1" << reportHeader + "Target" + QByteArray(38, '\t') << 3
                                 << "Subscript out of range";
        QTest::newRow("age not a number") << "game.P1" << reportHeader + planetLine("Target", "R", "None", "soon", "1")
                                          << 3 << "Type mismatch";
        QTest::newRow("empty report") << "game.P1" << QByteArray() << 1 << "Input past end of file";
        QTest::newRow("annotation cut short") << "game.VMK" << QByteArray("L,1,2,3,4,5\r\nC,1,\r\n") << 3
                                              << "Input past end of file";
    }
    void badInput()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, bytes);
        QFETCH(int, line);
        QFETCH(QString, fault);
        TestGame game;
        writeSmallGame(game);
        game.write(file, bytes);
        const Run run = exportGame(game);
        QCOMPARE(run.status, 1);
        QCOMPARE(run.out, QByteArray());
        QCOMPARE(run.err.count(u'\n'), 1);
        const QString where = line > 0 ? QString("%1, line %2: ").arg(game.path(file)).arg(line)
                              : line == 0 ? game.path(file) + ", line " : game.path(file);
        QVERIFY2(run.err.startsWith(where), qPrintable(run.err));
        QVERIFY2(run.err.contains(fault), qPrintable(run.err));
    }
};

QTEST_GUILESS_MAIN(ExportTest)
#include "tst_export.moc"
