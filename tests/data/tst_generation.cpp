// Formulas worked out by hand, loads of small games, and the territory grid against the plain loop.

#include "Influence.h"
#include "ReferenceTerritoryGrid.h"
#include "TestGame.h"
#include "TextReader.h"

#include <QRandomGenerator>
#include <QTest>
#include <cmath>

namespace {

using Lines = QList<QByteArray>;
using Sources = std::vector<InfluenceSource>;
using Won = std::array<int32_t, MaxPlayers>;

// Builds the grid; every cell and every race's count of cells won must match the plain loop.
void buildAndCompare(const Sources &sources, int size, double step, TerritoryGrid &grid)
{
    Won won{}, expectedWon{};
    buildTerritoryGrid(sources, size, step, MaxPlayers, grid, won);
    TerritoryGrid expected;
    referenceTerritoryGrid(sources, size, step, MaxPlayers, expected, expectedWon);
    QVERIFY(grid == expected);
    QVERIFY(won == expectedWon);
}

} // namespace

struct MergeRow { QString ownAge, age2, owner2, year2, age3, owner, reportAge; };
Q_DECLARE_METATYPE(MergeRow)

struct InfluenceRow { QString owner, starbase, population, defence, populationAfter; bool own; int soi; };
Q_DECLARE_METATYPE(InfluenceRow)

struct LimitRow { int planets, ofOneName, reportLines, races; qint64 reportSize; QString message; };
Q_DECLARE_METATYPE(LimitRow)

struct FormulaRow { char formula; QString population, starbase, third; int expected; };
Q_DECLARE_METATYPE(FormulaRow)

class GenerationTest : public QObject {
    Q_OBJECT

private slots:
    // Strength of influence ('s', third value the defence D): s = floor(P / 10000), at least 10;
    // m = 1.0 (0.7 without a starbase) - (97.92 - D) / 489.6; SOI = floor(m * s), at most 100.
    // Attack score ('a', third value the resources R), halves to even: round(P / 100000), at most 6;
    // 3 with a starbase; round(R / 30), or of P / 500 when R is not above 0.
    void formulas_data()
    {
        QTest::addColumn<FormulaRow>("row");
        // s = 12 (12.7 floored), m = 0.8, 9.6 floored: a rounding anywhere gives 10.
        QTest::newRow("s: 127000, both floors") << FormulaRow{'s', "127000", "Space Dock", "Unknown", 9};
        // m = 0.7 - 47.92 / 489.6 = 0.602124; 30 * m = 18.06.
        QTest::newRow("s: 300000, no starbase") << FormulaRow{'s', "300000", "None", "50%", 18};
        // m = 1 + 2.08 / 489.6 = 1.00425.
        QTest::newRow("s: 101 * 1.00425 capped") << FormulaRow{'s', "1010000", "Space Dock", "100%", 100};
        QTest::newRow("a: 2.7 gives 3; 540 / 30") << FormulaRow{'a', "270000", "None", "0", 3 + 0 + 18};
        QTest::newRow("a: 2.5 gives 2; 16.7 gives 17") << FormulaRow{'a', "250000", "Space Dock", "500", 2 + 3 + 17};
        QTest::newRow("a: R / 30 = 2.5 gives 2") << FormulaRow{'a', "0", "None", "75", 0 + 0 + 2};
        QTest::newRow("a: 30 / 30 from the population") << FormulaRow{'a', "15000", "None", "0", 0 + 0 + 1};
    }
    void formulas()
    {
        QFETCH(FormulaRow, row);
        const Value population(row.population), starbase(row.starbase), third(row.third);
        QCOMPARE(row.formula == 's' ? strengthOfInfluence(population, starbase, third) : attackScore(population, starbase, third),
                 row.expected);
    }

    // "Target" as the own report and players 2 and 3 saw it (no age: not listed); the game year is 2400.
    void mergeByAge_data()
    {
        QTest::addColumn<MergeRow>("row");
        QTest::newRow("newest wins") << MergeRow{"", "3", "Two", "", "1", "Three", "1"};
        QTest::newRow("same age keeps the first") << MergeRow{"", "2", "Two", "", "2", "Two", "2"};
        QTest::newRow("age 0 always replaces") << MergeRow{"", "0", "Two", "", "0", "Three", "0"};
        QTest::newRow("own report kept at the same age") << MergeRow{"2", "2", "Two", "", "", "Own", "2"};
        QTest::newRow("report year adds to the age") << MergeRow{"", "0", "Two", "2398", "1", "Three", "1"};
    }
    void mergeByAge()
    {
        QFETCH(MergeRow, row);
        const auto &[ownAge, age2, owner2, year2, age3, owner, reportAge] = row;
        const auto target = [](const QString &age, const QString &owner, const QString &population) {
            return age.isEmpty() ? Lines() : Lines{planetLine("Target", owner, "None", age, population)};
        };
        GameData d;
        QCOMPARE(loadGame(d, {{"Home", 1100, 1100}, {"Target", 1200, 1200}},
                          {{"game.P1", Lines{homeLine()} + target(ownAge, "Own", "1000")},
                           {"game.P2", target(age2, owner2, "2000")}, {"game.P3", target(age3, "Three", "3000")}},
                          "2400", {{2, year2}}),
                 QString());
        const PlanetInfo &p = d.planet(2);
        QCOMPARE(QStringList({p[Owner].text(), p[ReportAge].text(), p[AgeText].text()}),
                 QStringList({owner, reportAge, reportAge == "0" ? "Current" : reportAge + " years old"}));
    }

    // The formulas above as a load applies them, from the own report and another; a
    // planet of no population but a starbase counts as a colony of the base's size.
    void starbaseAndInfluence_data()
    {
        QTest::addColumn<InfluenceRow>("row");
        QTest::newRow("own design stands for 1350000") << InfluenceRow{"R", "Bastion", "0.0", "", "1350000", false, 100};
        QTest::newRow("space dock stands for 500000") << InfluenceRow{"R", "Space Dock", "0", "", "500000", false, 40};
        QTest::newRow("own report: owned, at least 5") << InfluenceRow{"R", "None", "0", "0%", "0", true, 5};
        QTest::newRow("own report: unowned, no minimum") << InfluenceRow{"", "None", "0", "0%", "0", true, 0};
    }
    void starbaseAndInfluence()
    {
        QFETCH(InfluenceRow, row);
        const auto &[owner, starbase, population, defence, populationAfter, own, soi] = row;
        const QByteArray line = planetLine("Target", owner, starbase, "0", population, {{10, defence}});
        GameData d;
        QCOMPARE(loadGame(d, {{"Home", 1100, 1100}, {"Target", 1200, 1200}},
                          {{"game.P1", own ? Lines{homeLine(), line} : Lines{homeLine()}},
                           {"game.P2", own ? Lines{} : Lines{line}}}),
                 QString());
        QCOMPARE(d.planet(2)[Population].text(), populationAfter);
        QCOMPARE(int(d.planet(2)[SOI].val()), soi);
    }

    // Every field of an own report line lands in its own planet field. A newer line of another report
    // without details ("Unknown" in field 7) brings only owner, population and environment, never the
    // own race's values. A load starts every race in its start colour, whatever the last game left.
    void reportFields()
    {
        QMap<int, QString> fields;
        for (int k = 6; k <= 34; ++k)
            fields[k] = QString::number(k);
        fields[10] = "10%";
        fields[14] = "-1";
        fields[21] = "2.1g";
        const QByteArray mine = planetLine("Mine", "Humans", "None", "1", "5000",
                                           {{6, "87%"}, {8, "10"}, {14, "-1"}, {15, "-1x"}, {16, "4"},
                                            {21, "1.5g"}, {27, "95"}, {29, "150"}, {34, "-1"}});
        const QByteArray seen = planetLine("Mine", "Robots", "None", "0", "6000", {{6, "40%"}, {8, "99"}, {21, "2g"}});
        GameData d;
        d.RaceRGB[7] = {1, 2, 3};
        QCOMPARE(loadGame(d, {{"Home", 1100, 1100}, {"Mine", 1200, 1200}},
                          {{"game.P1", {planetLine("Home", "Humans", "Space Dock", "0", "5", fields), mine}}, {"game.P2", {seen}}}),
                 QString());
        QStringList got;
        for (PlanetField f : {Owner, Starbase, AgeText, Population, Hab, Mines, Factories, Defenses, StoredIron, StoredBora,
                              StoredGerm, IronMR, BoraMR, GermMR, IronMC, BoraMC, GermMC, Resources, Gravity, Temperature,
                              Radiation, Gravity2, Temperature2, Radiation2, TerraformedHab, OwnField28, ScannerRange,
                              ScannerRange2, GateRange})
            got << d.planet(1)[f].text();
        QCOMPARE(got.join(u'|'), QString("Humans|Space Dock|Current|5|6|8|9|10%|11|12|13|Remote|15|16|17|18|19|20|2.1g|"
                                         "22|23|24|25|26|27|28|29|30|34"));
        got.clear(); // the gate range from the newer line, where it is empty
        for (PlanetField f : {Owner, IronMR, BoraMR, GermMR, GateRange, Mines, Population, Gravity, Hab, TerraformedHab, ScannerRange})
            got << d.planet(2)[f].text();
        QCOMPARE(got.join(u' '), QString("Robots Remote Remote 4 0 10 6000 2g 87 95 150"));
        const RaceColours starts{{{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 0}, {255, 0, 255}, {0, 255, 255},
                                  {200, 200, 255}, {255, 128, 0}, {255, 0, 128}, {0, 255, 128}, {128, 255, 0},
                                  {0, 128, 255}, {128, 0, 255}, {255, 64, 0}, {0, 255, 64}, {64, 0, 255}}};
        QCOMPARE(d.RaceRGB, starts);
    }

    // Real maps repeat names; each matching row adds the age shift again. Another player's report is read
    // by items: a comma cuts a line, the rest counts as the next line, and only as many are read as counted.
    void namesAndRows()
    {
        GameData d;
        QCOMPARE(loadGame(d, {{"Home", 1100, 1100}, {"Twin", 1200, 1200}, {"  Twin ", 1300, 1300}, {"twin", 1350, 1350},
                              {"Alpha", 1360, 1200}, {"Beta", 1370, 1300}, {"Gamma", 1400, 1400}},
                          {{"game.P1", {homeLine(), planetLine(" Twin", "Humans", "Space Dock", "0", "750000", {{20, "45"}}),
                                        planetLine("  ", "Humans", "None", "0", "1000")}}, // no planet's name
                           {"game.P2", {planetLine("Alpha", "Two", "None", "0", "1") + ",Beta\tTwo\tNone\t0\t1\t",
                                        planetLine("Gamma", "Two", "None", "0", "1")}}},
                          "2400", {{1, "2399"}}),
                 QString());
        QCOMPARE(d.planet(2)[AgeText].text() + d.planet(3)[AgeText].text(), QString("1 years old2 years old"));
        // An empty starbase is not "None"; 7.5 capped at 6, 45 / 30 = 1.5 gives 2.
        QCOMPARE(QList<double>({d.planet(4)[AttackScore].val(), d.planet(3)[AttackScore].val()}), QList<double>({3, 6 + 3 + 2}));
        QCOMPARE(d.planet(5)[Owner].text() + d.planet(6)[Owner].text() + d.planet(7)[Owner].text(), QString("TwoTwo"));
        QCOMPARE(QList<double>({double(d.UniverseExtent), double(d.GridSize), d.planet(7)[X].val(), d.planet(7)[Y].val()}),
                 QList<double>({1500, 650, 400, 100})); // a full hundred rounds the extent up
    }

    // At an extent of 6700 the grid's quotient falls just below 650 in binary, floored to 649.
    void gridSize()
    {
        GameData d;
        QCOMPARE(loadGame(d, {{"Home", 1100, 1100}, {"Edge", 6650, 1100}}, {{"game.P1", {homeLine()}}}), QString());
        QCOMPARE(QList<int>({d.UniverseExtent, d.GridSize}), QList<int>({6700, 649}));
    }

    // Races are numbered by the first planet row they own, not by report order.
    void races()
    {
        GameData d;
        QCOMPARE(loadGame(d, {{"Home", 1100, 1100}, {"A", 1150, 1150}, {"B", 1200, 1200}, {"C", 1250, 1250}, {"D", 1300, 1300}},
                          {{"game.P1", {homeLine(),
                                        planetLine("D", "Birds", "None", "0", "245001",
                                                   {{11, "1500"}, {20, "5"}, {21, "2.0"}, {22, "-50"}, {23, "10"}}),
                                        planetLine("B", "Birds", "None", "0", "245000",
                                                   {{11, "500"}, {21, "2.4"}, {22, "50"}, {23, "90"}}),
                                        planetLine("A", "Ants", "None", "0", "1000", {{21, "1.00g"}, {22, "20C"}, {23, "40mR"}}),
                                        planetLine("C", "Cats", "None", "0", "1000", {{21, "6.0g"}, {22, "150"}, {23, "81"}})}}}),
                 QString());
        // Birds: the last own-report line with resources; one major planet, more than 245000 strictly.
        const PlayerInfo &birds = d.player(3);
        QCOMPARE(QStringList({d.OwnRaceName, QString::number(d.PlayerCount), d.player(2)[RaceName].text(),
                              birds[RaceName].text(), d.planet(5)[OwnerIndex].text(), birds[MajorPlanets].text(),
                              birds[TotalPopulation].text(), birds[TotalIron].text()}),
                 QStringList({"Birds", "4", "Ants", "Birds", "3", "1", "490001", "2"}));
        // Gravity, temperature and radiation ranges; the home planet's are empty.
        const QList<QList<double>> ranges{
            {0.12, 0.21, 0, 80, 0, 20}, {1, 1.75, 20, 100, 40, 60}, {2, 2.9, -50, 50, 10, 90}, {6, 8, 150, 200, 81, 100}};
        for (int k = 1; k <= 4; ++k)
            for (int f = 0; f < 6; ++f)
                QCOMPARE(d.player(k)[MinGrav + f].val(), ranges[k - 1][f]);
        int cells = 0;
        for (int gx = 0; gx <= d.GridSize; ++gx)
            for (int gy = 0; gy <= d.GridSize; ++gy)
                cells += d.Grid.owner(gx, gy) == 3;
        const double g = d.GridSize, extent = d.UniverseExtent;
        QCOMPARE(birds[Territory].val(), std::floor(cells / (g * g) * (extent * extent)));
    }

    // The game's limits: at the limit the game loads; one beyond, the load stops at that
    // line. The report lines after the home name the races, on the planets after the twins.
    void limits_data()
    {
        QTest::addColumn<LimitRow>("row");
        QTest::newRow("at every limit") << LimitRow{MaxPlanets, MaxPlanetsOfOneName, MaxPlanets, MaxPlayers, 0, ""};
        QTest::newRow("one planet too many") << LimitRow{MaxPlanets + 1, 1, 1, 0, 0,
                          "game.map, line 2002: the map lists more than 2000 planets"};
        QTest::newRow("one more of that name") << LimitRow{20, MaxPlanetsOfOneName + 1, 1, 0, 0,
                          "game.map, line 19: more than 16 planets are named \"Twin\""};
        QTest::newRow("one report line too many") << LimitRow{20, 1, MaxPlanets + 1, 0, 0,
                          "game.P1, line 2002: the report lists more than 2000 planets"};
        QTest::newRow("a seventeenth race, on the last planet")
            << LimitRow{MaxPlayers + 1, 1, MaxPlayers + 1, MaxPlayers + 1, 0, "/game.P1, line 18: "};
        QTest::newRow("file too large") << LimitRow{20, 1, 1, 0, MaxGameFileSize + 1,
                          "game.P1: the file is too large for a game file"};
        QTest::newRow("a device without end") << LimitRow{20, 1, 1, 0, -1, "game.P1: a device, not a game file"};
    }
    void limits()
    {
        QFETCH(LimitRow, row);
        const auto &[planets, ofOneName, reportLines, races, reportSize, message] = row;
        QList<MapPlanet> map{{"Home", 1100, 1100}};
        for (int i = 1; i < planets; ++i)
            map << MapPlanet{i <= ofOneName ? QString("Twin") : QString("P%1").arg(i), 1100 + i % 300, 1100 + i / 300};
        TestGame game;
        game.writeMap(map);
        Lines report(reportLines, homeLine());
        for (int i = 1; i < races; ++i)
            report[i] = planetLine(map[i + ofOneName - 1].name, QString("Race %1").arg(i), "None", "0", "1000");
        game.writeReport("game.P1", report);
        if (reportSize > 0) {
            QFile big(game.path("game.P1"));
            QVERIFY(big.open(QIODevice::ReadWrite) && big.resize(reportSize));
        } else if (reportSize < 0) {
            QVERIFY(QFile::remove(game.path("game.P1")) && QFile::link("/dev/zero", game.path("game.P1")));
        }
        GameData d;
        const QString got = game.load(d);
        QVERIFY2(got.isEmpty() ? message.isEmpty() : !message.isEmpty() && got.contains(message), qPrintable(got));
    }

    // The annotation text rebuilt from the file ("!": the load fails), and
    // the colour of the next drawing, set by the last line or circle.
    void annotations_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("colour");
        QTest::newRow("blanks dropped") << QByteArray(" L, 1,2,3,4,5\r\nC,10,20,30,3\r\nT,1,2,x,9")
                                        << "L,1,2,3,4,5\r\nC,10,20,30,3\r\nT,1,2,x,9\r\n" << 3;
        QTest::newRow("comma inside a text") << QByteArray("T,5,6,Hello, world,7\r\n") << "T,5,6,Hello,0\r\n" << 4;
        QTest::newRow("quoted text, sizes half to even") << QByteArray("T,1,2,\"a,b\",10.5\nT,1,2,c,11.5")
                                                         << "T,1,2,a,b,10\r\nT,1,2,c,12\r\n" << 4;
        QTest::newRow("leading numbers, colour 0") << QByteArray("L,1.5,2.5x,-0.5,1e3,0\r") << "L,2,2,0,1000,0\r\n" << 0;
        QTest::newRow("unknown kinds skipped") << QByteArray("X,1,2\r\nl,1,2,3,4,5\r\nC,0,0,9,2") << "C,0,0,9,2\r\n" << 2;
        QTest::newRow("colour overflows") << QByteArray("C,1,2,3,40000") << "!" << 4;
    }
    void annotations()
    {
        QFETCH(QByteArray, file);
        TestGame game;
        game.writeMap({{"Home", 1100, 1100}});
        game.writeReport("game.P1", {homeLine()});
        game.write("game.VMK", file);
        GameData d;
        d.DrawColourIndex = 4;
        const QString message = game.load(d);
        QTEST(message.isEmpty() ? d.AnnotationText : "!", "text");
        QTEST(int(d.DrawColourIndex), "colour");
    }

    // A grid with a step of one light year: cell (gx, gy) lies at (gx, gy).
    void cells_data()
    {
        QTest::addColumn<QList<QList<int>>>("sources"); // x, y, soi, owner
        QTest::addColumn<QList<QList<int>>>("cells");   // gx, gy, owner, strength
        QTest::newRow("reach of 150") << QList<QList<int>>{{200, 200, 100, 1}}
                                      << QList<QList<int>>{{200, 200, 1, 100}, {350, 200, 1, 9}, {351, 200, 0, 0},
                                                           {200, 50, 1, 9}, {306, 306, 1, 9}, {307, 307, 0, 0},
                                                           {320, 200, 1, 24}};
        QTest::newRow("tie to the lower column") << QList<QList<int>>{{100, 100, 50, 2}, {300, 100, 50, 1}}
                                                 << QList<QList<int>>{{200, 100, 1, 50}, {199, 100, 2, 50}};
        QTest::newRow("no total above 0") << QList<QList<int>>{{100, 100, 50, 0}, {300, 300, 10, 1}}
                                          << QList<QList<int>>{{100, 100, 0, 0}, {450, 300, 0, 0}, {300, 440, 1, 1}};
    }
    void cells()
    {
        QFETCH(QList<QList<int>>, sources);
        QFETCH(QList<QList<int>>, cells);
        Sources list;
        for (const QList<int> &s : sources)
            list.push_back({int16_t(s[0]), int16_t(s[1]), int16_t(s[2]), int16_t(s[3])});
        TerritoryGrid grid;
        buildAndCompare(list, 500, 1.0, grid);
        for (const QList<int> &c : cells)
            QCOMPARE(QList<int>({c[0], c[1], grid.owner(c[0], c[1]), grid.strength(c[0], c[1])}), c);
    }

    // Random sources, some stacked, some without an owner; a last planet left
    // of the origin gives a negative step, and the cells run backwards.
    void randomSources_data()
    {
        QTest::addColumn<double>("step");
        QTest::newRow("forwards") << 2000 / 650.0;
        QTest::newRow("backwards") << -400 / 650.0;
    }
    void randomSources()
    {
        QFETCH(double, step);
        QRandomGenerator random(7);
        Sources sources;
        for (int i = 0; i < 200; ++i) {
            const auto x = int16_t(step * random.bounded(651)), y = int16_t(step * random.bounded(651));
            for (int copies = random.bounded(1, 3); copies > 0; --copies)
                sources.push_back({x, y, int16_t(random.bounded(1, 101)), int16_t(random.bounded(17))});
        }
        TerritoryGrid grid;
        buildAndCompare(sources, 650, step, grid);
    }
};

QTEST_GUILESS_MAIN(GenerationTest)
#include "tst_generation.moc"
