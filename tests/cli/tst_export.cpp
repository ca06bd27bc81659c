// Choosing a game's files, and veltro-cli export as scripts see it; its JSON
// writer must write byte for byte what QJsonDocument writes.

#include "CliRun.h"
#include "IndentedJsonWriter.h"
#include "TestGame.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

namespace {

CliRun exportGame(const TestGame &game, const QStringList &options = {})
{
    return runCli(QStringList{"export", game.path("game.map")} + options);
}

QByteArray randomBytes(quint32 seed)
{
    QByteArray bytes(4096, '\0');
    QRandomGenerator random(seed);
    for (char &c : bytes)
        c = char(random.bounded(256));
    return bytes;
}

} // namespace

class ExportTest : public QObject {
    Q_OBJECT

private slots:
    // The selection's checks: exit 2, each message after the file it concerns ("" for none).
    void selectionMessages_data()
    {
        QTest::addColumn<QStringList>("reports");
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("message");
        const QString notIncluded = "You have not included the datafile you have selected as your race";
        QTest::newRow("no reports") << QStringList{} << QStringList{} << "game.map" << "No Player files found for this map";
        QTest::newRow("own race without a file, before the years")
            << QStringList{"game.P1"} << QStringList{"--own", "2", "--year", "2400", "--report-year", "1=2401"}
            << "game.map" << notIncluded;
        QTest::newRow("no player number") << QStringList{"game.Px"} << QStringList{} << "game.map" << "No planet files selected";
        QTest::newRow("year above the game's") << QStringList{"game.P1", "game.P2"}
                                               << QStringList{"--year", "2400", "--report-year", "2=2401"} << "game.P2"
                                               << "One or more game files has a Year higher then the Game Year";
        QTest::newRow("year of a player without a report")
            << QStringList{"game.P1"} << QStringList{"--year", "2400", "--report-year", "5=2400"} << "game.map"
            << "there is no report of player 5 to take the year 2400";
        QTest::newRow("own 17") << QStringList{"game.P1"} << QStringList{"--own", "17"} << ""
                                << "--own takes a player number from 1 to 16, not \"17\"";
    }
    void selectionMessages()
    {
        QFETCH(QStringList, reports);
        QFETCH(QStringList, options);
        QFETCH(QString, file);
        QFETCH(QString, message);
        TestGame game;
        game.writeMap({{"Home", 1100, 1100}});
        for (const QString &name : reports)
            game.writeReport(name, {homeLine()});
        const CliRun run = exportGame(game, options);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.out, QByteArray());
        QCOMPARE(run.err, (file.isEmpty() ? QString() : game.path(file) + ": ") + message + "\n");
    }

    // A report passed over or chosen by its exact name: a warning each, the export unchanged.
    void warnings_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("warning");
        QTest::newRow("random bytes") << "game.P2" << randomBytes(7)
                                      << "%1/game.P2: no line of it names a planet of the map";
        QTest::newRow("names that differ in case")
            << "GAME.P1" << QByteArray("Planet Name\r\n" + planetLine("Home", "Impostors", "None", "0", "9") + "\r\n")
            << "%1/game.P1 is read; %1/GAME.P1 differs from it only in case and is not read";
    }
    void warnings()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, warning);
        TestGame game;
        game.writeMap({{"Home", 1100, 1100}, {"Target", 1200, 1200}});
        game.writeReport("game.P1", {homeLine()});
        const QByteArray expected = exportGame(game).out;
        game.write(name, bytes);
        const CliRun run = exportGame(game);
        QCOMPARE(run.status, 0);
        QCOMPARE(run.err, "warning: " + warning.arg(game.dir()) + "\n");
        QCOMPARE(run.out, expected);
    }

    // Reports found without regard to case; a file gone before the check
    // rebuilds the rows.
    void perPlayerRows()
    {
        TestGame game;
        game.writeMap({{"Home", 1100, 1100}});
        for (const char *name : {"game.P1", "GAME.P1", "game.P2", "Game.P3", "GAME.p3", "game.P16"})
            game.writeReport(name, {});
        GameData d;
        FileSelection s(d);
        QCOMPARE(s.clickMapFile(game.dir(), "game.map"), QString());
        for (int i = 0; i <= 16; ++i)
            QCOMPARE(s.row(i).shown && s.row(i).checked, (i >= 1 && i <= 3) || i == 16);
        QCOMPARE(s.row(3).caption, QString("game.P3"));
        QCOMPARE(d.GameFiles[1].path, game.path("game.P1")); // the exact name first,
        QCOMPARE(d.GameFiles[3].path, game.path("GAME.p3")); // else the first in sorted order
        QVERIFY(QFile::remove(game.path("game.P1")) && QFile::remove(game.path("GAME.P1")));
        QCOMPARE(s.confirm(), QString("Some files have been deleted/renamed. Try again"));
        QVERIFY(!s.row(1).shown);
        QCOMPARE(d.OwnRace, 2);
        QCOMPARE(s.confirm(), QString());
    }

    // Row 16 alone is a selection; a click on another game's map forgets it.
    void sixteenthRow()
    {
        TestGame game;
        game.writeMap({{"Home", 1100, 1100}});
        game.write("other.map", "#\r\n1\t1100\t1100\tHome\r\n");
        for (const char *name : {"game.P1", "game.P16", "other.P1"})
            game.writeReport(name, {homeLine()});
        GameData d;
        FileSelection s(d);
        QCOMPARE(s.clickMapFile(game.dir(), "game.map"), QString());
        s.chooseOwnRace(16);
        s.setIncluded(1, false);
        QCOMPARE(s.confirm(), QString());
        QCOMPARE(s.clickMapFile(game.dir(), "other.map"), QString());
        QVERIFY(!s.row(16).shown);
        QCOMPARE(d.GameFiles[16].path, QString());
    }

    // Upper-case names from Windows; null, strings and plain whole numbers;
    // a race name with quotes, a control character and Windows-1252 letters.
    void json()
    {
        TestGame game;
        game.writeMap({{"Home", 1100, 1100}, {"Target", 1200, 1200}, {"Quiet", 1300, 1300}});
        const QString robots = QString::fromLatin1("Ro\"b\\ots\x01\x80\xe9");
        game.writeReport("GAME.P1", {homeLine(), planetLine("Target", robots, "Space Dock", "0", "0", {{11, "50"}, {34, "-1"}})});
        game.write("GAME.vmk", "L,1,2,3,4,5\r\n");
        const CliRun run = exportGame(game, {"--year", "2400", "--report-year", "1=2400"});
        QCOMPARE(run.status, 0);
        const QJsonDocument document = QJsonDocument::fromJson(run.out);
        QCOMPARE(document.toJson(QJsonDocument::Indented), run.out); // keys in QJsonObject's order, its layout
        const QJsonObject o = document.object();
        QCOMPARE(o["AnnotationText"].toString(), QString("L,1,2,3,4,5\r\n"));
        QCOMPARE(o["Scale"].toDouble(), 10000 / 400.0);
        const QJsonArray planets = o["Planets"].toArray();
        QCOMPARE(planets[1].toObject().size(), 38);
        // An empty report field reads "Unknown"; after the line's last tab, and unreported, it is empty.
        QCOMPARE(QList<QJsonValue::Type>({planets[1][u"Gravity"].type(), planets[0][u"Gravity"].type(), planets[2][u"Owner"].type()}),
                 QList<QJsonValue::Type>({QJsonValue::String, QJsonValue::Null, QJsonValue::Null}));
        QCOMPARE(o[u"Players"][1][u"TotalIron"].toDouble(), 0.05);
        QCOMPARE(o[u"Players"][1][u"RaceName"].toString(), QString(robots).replace(u'\x80', u'\u20ac'));
        QVERIFY(run.out.contains("\"Population\": 500000,"));
        QVERIFY(!QRegularExpression(R"(:\s*-?\d+(\.0+|[eE][-+]?\d+)\s*[,\n])").match(QString(run.out)).hasMatch());
    }

    void csv()
    {
        TestGame game;
        game.write("game.map", "#\r\n1\t1100\t1100\tHome\r\n2 1199.5 1200.5 \"Red, Giant\" ignored\r\n");
        game.writeReport("game.P1", {homeLine(), planetLine("Red, Giant", "Bob \"Q\" Race", "None", "0", "1000")});
        const CliRun run = exportGame(game, {"--format", "csv"});
        QCOMPARE(run.status, 0);
        const QList<QByteArray> rows = run.out.split('\n');
        QCOMPARE(rows.size(), 4);
        QVERIFY(rows[0].startsWith("Number,X,Y,Name,Owner,Starbase,AgeText,Population,SOI,"));
        QVERIFY(rows[0].endsWith(",ScannerRange2,AttackScore\r"));
        QVERIFY(rows[2].startsWith("2,200,100,\"Red, Giant\",\"Bob \"\"Q\"\" Race\",None,Current,1000,5,0,,,"));

    }

    // One old report for the whole game: fields from 21 on are not read,
    // the ranges keep their start values, territory stays a count of cells.
    void oldStyleGame()
    {
        TestGame game;
        game.writeMap({{"Home", 1100, 1100}, {"Target", 1200, 1200}});
        game.writeReport("game.PLA", {homeLine(), planetLine("Target", "Robots", "None", "0", "500000", {{21, "1.5g"}})});
        game.writeReport("game.P2", {planetLine("Target", "Ghosts", "None", "0", "1")});
        const QJsonObject o = QJsonDocument::fromJson(exportGame(game, {"--grid"}).out).object();
        QCOMPARE(o["ReportFormat"].toInt(), 20);
        QCOMPARE(o["PlayerCount"].toInt(), 2);
        QVERIFY(o[u"Planets"][1][u"Gravity"].isNull());
        const QJsonObject robots = o[u"Players"][1].toObject();
        QCOMPARE(robots["MinGrav"].toDouble(), 8.0);
        const QJsonArray owners = o["GridOwner"].toArray();
        QCOMPARE(owners.size(), 651);
        int cells = 0;
        for (const QJsonValue &column : owners)
            for (const QJsonValue &cell : column.toArray())
                cells += cell.toInt() == 2;
        QVERIFY(cells > 0);
        QCOMPARE(robots["Territory"].toInt(), cells);
    }

    // A fault in a file: exit 1, one line naming the file and line (-1: none).
    void badInput_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("line");
        QTest::addColumn<QString>("fault");
        const QByteArray map = "#\tX\tY\tName\r\n";
        QTest::newRow("empty map") << "game.map" << QByteArray() << 1 << "Input past end of file";
        QTest::newRow("coordinate not a number") << "game.map" << map + "1\t11OO\t1100\tHome\r\n" << 2 << "Type mismatch";
        QTest::newRow("universe too small") << "game.map" << map + "1\t1100\t1100\tA\r\n2\t950\t1100\tB\r\n" << 3
                                            << "Division by zero";
        QTest::newRow("extent beyond 32 bits") << "game.map" << map + "1\t2147483647\t1100\tHome\r\n" << 2 << "Overflow";
        QTest::newRow("binary garbage") << "game.map" << randomBytes(42) << -1 << "";
        const QByteArray report = "Planet Name\tOwner\r\n" + homeLine() + "\r\n";
        QTest::newRow("38 tabs") << "game.P1" << report + "Target" + QByteArray(38, '\t') << 3 << "Subscript out of range";
        QTest::newRow("annotation cut short") << "game.VMK" << QByteArray("L,1,2,3,4,5\r\nC,1,\r\n") << 3 << "Input past end";
    }
    void badInput()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, bytes);
        QFETCH(int, line);
        QFETCH(QString, fault);
        TestGame game;
        game.writeMap({{"Home", 1100, 1100}, {"Target", 1200, 1200}});
        game.writeReport("game.P1", {homeLine()});
        game.write(file, bytes);
        const CliRun run = exportGame(game);
        QCOMPARE(run.status, 1);
        QCOMPARE(run.out, QByteArray());
        QCOMPARE(run.err.count(u'\n'), 1);
        const QString where = game.path(file) + (line > 0 ? QString(", line %1: ").arg(line) : "");
        QVERIFY2(run.err.startsWith(where) && run.err.contains(fault), qPrintable(run.err));
    }

    // Whole numbers are written without a point or an exponent, however large.
    void bigWholeNumbersWithAllTheirDigits()
    {
        const std::pair<double, const char *> cases[] = {
            {9007199254740994.0, "9007199254740994"}, {1.5e16, "15000000000000000"},
            {-1e18, "-1000000000000000000"}, {1e21, "1000000000000000000000"}, {-0.0, "0"},
        };
        for (const auto &[x, text] : cases) {
            QByteArray written;
            IndentedJsonWriter(written).number(x);
            QCOMPARE(written, QByteArray(text));
        }
    }
};

QTEST_GUILESS_MAIN(ExportTest)
#include "tst_export.moc"
