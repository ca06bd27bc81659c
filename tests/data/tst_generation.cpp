// Generation on small hand-made games: merging the reports, influence,
// races and their statistics, tolerance estimates and attack scores.

#include "TestGame.h"

#include <QTest>
#include <cmath>

class GenerationTest : public QObject {
    Q_OBJECT

private slots:
    // Who owns "Target" after the own report and players 2 and 3 reported
    // on it; an empty age leaves the planet out of that report.
    void mergeByAge_data()
    {
        QTest::addColumn<QString>("ownAge");
        QTest::addColumn<QString>("age2");
        QTest::addColumn<QString>("owner2");
        QTest::addColumn<QString>("year2");
        QTest::addColumn<QString>("age3");
        QTest::addColumn<QString>("owner");
        QTest::addColumn<QString>("reportAge");
        QTest::newRow("newest wins") << "" << "3" << "Two" << "" << "1" << "Three" << "1";
        QTest::newRow("older report read later") << "" << "1" << "Two" << "" << "3" << "Two" << "1";
        QTest::newRow("same age keeps the first") << "" << "2" << "Two" << "" << "2" << "Two" << "2";
        QTest::newRow("age 0 always replaces") << "" << "0" << "Two" << "" << "0" << "Three" << "0";
        QTest::newRow("own report kept at the same age") << "2" << "2" << "Two" << "" << "" << "Own" << "2";
        QTest::newRow("age 0 replaces the own report") << "2" << "0" << "Two" << "" << "" << "Two" << "0";
        QTest::newRow("own race's line ignored") << "" << "0" << "Humans" << "" << "5" << "Three" << "5";
        QTest::newRow("report year shifts the age") << "" << "0" << "Two" << "2398" << "1" << "Three" << "1";
        QTest::newRow("shifted age still newer") << "3" << "0" << "Two" << "2398" << "" << "Two" << "2";
    }
    void mergeByAge()
    {
        QFETCH(QString, ownAge);
        QFETCH(QString, age2);
        QFETCH(QString, owner2);
        QFETCH(QString, year2);
        QFETCH(QString, age3);
        TestGame game;
        game.writeMap({{"Home", 1100, 1100}, {"Target", 1200, 1200}});
        QList<QByteArray> own{homeLine()};
        if (!ownAge.isEmpty())
            own << planetLine("Target", "Own", "None", ownAge, "1000");
        game.writeReport("game.P1", own);
        game.writeReport("game.P2", {age2.isEmpty() ? QByteArray() : planetLine("Target", owner2, "None", age2, "2000")});
        game.writeReport("game.P3", {age3.isEmpty() ? QByteArray() : planetLine("Target", "Three", "None", age3, "3000")});
        GameData d;
        GameChoice choice("2400");
        if (!year2.isEmpty())
            choice.reportYears[2] = year2;
        QCOMPARE(game.load(d, choice), QString());
        const PlanetInfo &target = d.planet(2);
        QTEST(target[Owner].text(), "owner");
        QTEST(target[ReportAge].text(), "reportAge");
        QCOMPARE(target[AgeText].text(), target[ReportAge].val() == 0 ? QStringLiteral("Current")
                                                                       : target[ReportAge].text() + " years old");
    }

    // Real maps repeat names; the age shift is added once per matching row.
    void duplicateNames()
    {
        TestGame game;
        game.writeMap({{"Home", 1100, 1100}, {"Twin", 1200, 1200}, {"  Twin ", 1300, 1300}, {"twin", 1350, 1350}});
        game.writeReport("game.P1", {homeLine(), planetLine(" Twin", "Humans", "None", "0", "1000")});
        GameData d;
        QCOMPARE(game.load(d, {"2400", {{1, "2399"}}}), QString());
        QCOMPARE(d.planet(2)[AgeText].text(), QStringLiteral("1 years old"));
        QCOMPARE(d.planet(3)[AgeText].text(), QStringLiteral("2 years old"));
        QCOMPARE(d.planet(3)[Owner].text(), QStringLiteral("Humans"));
        QVERIFY(d.planet(4)[Owner].isEmpty()); // names match with case
    }

    void starbaseAndInfluence_data()
    {
        QTest::addColumn<bool>("ownReport");
        QTest::addColumn<QString>("owner");
        QTest::addColumn<QString>("starbase");
        QTest::addColumn<QString>("population");
        QTest::addColumn<QString>("defence");
        QTest::addColumn<QString>("populationAfter");
        QTest::addColumn<int>("soi");
        QTest::newRow("space dock stands for 500000") << false << "Robots" << "Space Dock" << "0" << "" << "500000" << 40;
        QTest::newRow("no starbase, capped at 100") << false << "Robots" << "None" << "2000000" << "50%" << "2000000" << 100;
        QTest::newRow("own report, owned, at least 5") << true << "Robots" << "None" << "0" << "0%" << "0" << 5;
        QTest::newRow("other report, owned, no minimum") << false << "Robots" << "None" << "0" << "0%" << "0" << 0;
        QTest::newRow("uninhabited is not zero") << true << "" << "Death Star" << "" << "" << "Uninhabited" << 0;
        QTest::newRow("blank before the zero") << false << "Robots" << "Orbital Fort" << " 0" << "" << "250000" << 20;
        QTest::newRow("decimal zero, defence 40%") << false << "Robots" << "Space Station" << "0.0" << "40%" << "1000000" << 88;
        QTest::newRow("other designs") << false << "Robots" << "Fortress" << "0" << "" << "1350000" << 100;
    }
    void starbaseAndInfluence()
    {
        QFETCH(bool, ownReport);
        QFETCH(QString, owner);
        QFETCH(QString, starbase);
        QFETCH(QString, population);
        QFETCH(QString, defence);
        TestGame game;
        game.writeMap({{"Home", 1100, 1100}, {"Target", 1200, 1200}});
        const QByteArray line = planetLine("Target", owner, starbase, "0", population, {{10, defence}});
        game.writeReport("game.P1", ownReport ? QList<QByteArray>{homeLine(), line} : QList<QByteArray>{homeLine()});
        game.writeReport("game.P2", {ownReport ? QByteArray() : line});
        GameData d;
        QCOMPARE(game.load(d), QString());
        QTEST(d.planet(2)[Population].text(), "populationAfter");
        QTEST(int(d.planet(2)[SOI].val()), "soi");
    }

    // Which report fields land where, and what another player's report may
    // change.
    void reportFields()
    {
        TestGame game;
        game.writeMap({{"Home", 1100, 1100}, {"Mine", 1200, 1200}, {"Seen", 1300, 1300}});
        QStringList own{"Mine", "Humans", "None", "0", "5000", "87%", "Yes", "10", "11", "25%", "100", "200", "300",
                        "-1", "-1x", "4", "50", "60", "70", "120", "1.5g", "20C", "40mR", "1.2g", "10C", "30mR",
                        "95", "7", "150", "60", "", "", "", "-1"};
        QStringList seen{"Seen", "Robots", "None", "0", "5000", "40%", "Unknown", "10", "11", "25%", "100", "200",
                         "300", "1", "2", "3", "4", "5", "6", "99", "2g", "30C", "50mR"};
        game.writeReport("game.P1", {reportLine(own), planetLine("Seen", "Robots", "None", "1", "5000",
                                                                   {{8, "8"}, {34, "250"}})});
        game.writeReport("game.P2", {reportLine(seen)});
        GameData d;
        QCOMPARE(game.load(d), QString());
        QCOMPARE(d.OwnRaceName, QStringLiteral("Humans"));
        const PlanetInfo &mine = d.planet(2);
        QCOMPARE(mine[InOwnReport].val(), 1.0);
        QCOMPARE(mine[Hab].val(), 87.0);
        QCOMPARE(mine[Mines].text(), QStringLiteral("10"));
        QCOMPARE(mine[Defenses].text(), QStringLiteral("25%"));
        QCOMPARE(mine[StoredGerm].text(), QStringLiteral("300"));
        QCOMPARE(mine[IronMR].text(), QStringLiteral("Remote"));
        QCOMPARE(mine[BoraMR].text(), QStringLiteral("Remote"));
        QCOMPARE(mine[GermMC].text(), QStringLiteral("70"));
        QCOMPARE(mine[Resources].text(), QStringLiteral("120"));
        QCOMPARE(mine[Radiation].text(), QStringLiteral("40mR"));
        QCOMPARE(mine[Gravity2].text(), QStringLiteral("1.2g"));
        QCOMPARE(mine[TerraformedHab].val(), 95.0);
        QCOMPARE(mine[OwnField28].val(), 7.0);
        QCOMPARE(mine[ScannerRange].val(), 150.0);
        QCOMPARE(mine[ScannerRange2].val(), 60.0);
        QCOMPARE(mine[GateRange].val(), 10000.0);
        // The newer line without details keeps the own report's mines but
        // brings the environment and the gate.
        const PlanetInfo &seenRow = d.planet(3);
        QCOMPARE(seenRow[Mines].text(), QStringLiteral("8"));
        QCOMPARE(seenRow[Gravity].text(), QStringLiteral("2g"));
        QCOMPARE(seenRow[GateRange].val(), 0.0);
        QCOMPARE(seenRow[Hab].val(), 0.0); // never from another player's report
    }

    // Another player's report is read by items: a comma cuts a line, the
    // rest is read as the next line, and only as many items as there are
    // lines are read.
    void commasInOtherReports()
    {
        TestGame game;
        game.writeMap({{"Home", 1100, 1100}, {"Alpha", 1200, 1200}, {"Beta", 1300, 1300}, {"Gamma", 1400, 1400}});
        game.writeReport("game.P1", {homeLine()});
        game.writeReport("game.P2", {planetLine("Alpha", "Two", "None", "0", "1000") + ",Beta\tTwo\tNone\t0\t1000\t",
                                     planetLine("Gamma", "Two", "None", "0", "1000")});
        GameData d;
        QCOMPARE(game.load(d), QString());
        QCOMPARE(d.planet(2)[Owner].text(), QStringLiteral("Two"));
        QCOMPARE(d.planet(3)[Owner].text(), QStringLiteral("Two"));
        QVERIFY(d.planet(4)[Owner].isEmpty());
    }

    void races()
    {
        TestGame game;
        game.writeMap({{"Home", 1100, 1100}, {"A", 1150, 1150}, {"B", 1200, 1200}, {"C", 1250, 1250}, {"D", 1300, 1300}});
        game.writeReport("game.P1", {planetLine("D", "Birds", "None", "0", "245001", {{20, "5"}, {11, "1500"}}),
                                     homeLine(),
                                     planetLine("B", "Birds", "None", "0", "245000", {{11, "500"}}),
                                     planetLine("A", "Ants", "None", "0", "1000")});
        GameData d;
        QCOMPARE(game.load(d), QString());
        QCOMPARE(d.PlayerCount, 3);
        QCOMPARE(d.player(1)[RaceName].text(), QStringLiteral("Humans"));
        QCOMPARE(d.player(2)[RaceName].text(), QStringLiteral("Ants"));
        QCOMPARE(d.player(3)[RaceName].text(), QStringLiteral("Birds"));
        QCOMPARE(d.planet(5)[OwnerIndex].val(), 3.0);
        QVERIFY(d.planet(4)[OwnerIndex].isEmpty());
        const PlayerInfo &birds = d.player(3);
        QCOMPARE(birds[MajorPlanets].val(), 1.0);
        QCOMPARE(birds[TotalPlanets].val(), 2.0);
        QCOMPARE(birds[TotalPopulation].val(), 490001.0);
        QCOMPARE(birds[TotalIron].val(), 2.0);
        // Territory: cells won scaled by the squared extent over the squared grid size.
        int cells = 0;
        for (int gx = 0; gx <= d.GridSize; ++gx)
            for (int gy = 0; gy <= d.GridSize; ++gy)
                cells += d.Grid.owner(gx, gy) == 3;
        QVERIFY(cells > 0);
        const double g = d.GridSize, extent = d.UniverseExtent;
        QCOMPARE(birds[Territory].val(), std::floor(cells / (g * g) * (extent * extent)));
    }

    void sixteenRacesAtMost_data()
    {
        QTest::addColumn<int>("races");
        QTest::newRow("16") << 16;
        QTest::newRow("17") << 17;
    }
    void sixteenRacesAtMost()
    {
        QFETCH(int, races);
        TestGame game;
        QList<MapPlanet> map;
        QList<QByteArray> lines;
        for (int i = 1; i <= races; ++i) {
            map << MapPlanet{QString("P%1").arg(i), 1000 + 20 * i, 1100};
            lines << planetLine(QString("P%1").arg(i), QString("Race %1").arg(i), "None", "0", "1000");
        }
        game.writeMap(map);
        game.writeReport("game.P1", lines);
        GameData d;
        const QString message = game.load(d);
        if (races == 16) {
            QCOMPARE(message, QString());
            QCOMPARE(d.PlayerCount, 16);
        } else {
            QVERIFY2(message.startsWith(game.path("game.P1") + ", line 18: "), qPrintable(message));
        }
    }

    void tolerances_data()
    {
        QTest::addColumn<QStringList>("gravity");
        QTest::addColumn<QStringList>("temperature");
        QTest::addColumn<QStringList>("radiation");
        QTest::addColumn<QList<double>>("ranges"); // min, max of gravity, temperature, radiation
        QTest::newRow("one planet") << QStringList{"1.00g"} << QStringList{"20C"} << QStringList{"40mR"}
                                    << QList<double>{1, 1.75, 20, 100, 40, 60};
        QTest::newRow("close gravities") << QStringList{"2.0", "2.4"} << QStringList{"-50", "50"}
                                         << QStringList{"10", "90"} << QList<double>{2, 2.9, -50, 50, 10, 90};
        QTest::newRow("caps") << QStringList{"6.0g"} << QStringList{"150"} << QStringList{"95"}
                              << QList<double>{6, 8, 150, 200, 95, 100};
        QTest::newRow("unknown counts 0") << QStringList{"Unknown"} << QStringList{"Unknown"} << QStringList{"x"}
                                          << QList<double>{0.12, 0.21, 0, 80, 0, 20};
    }
    void tolerances()
    {
        QFETCH(QStringList, gravity);
        QFETCH(QStringList, temperature);
        QFETCH(QStringList, radiation);
        QFETCH(QList<double>, ranges);
        TestGame game;
        QList<MapPlanet> map{{"Home", 1100, 1100}};
        QList<QByteArray> lines{homeLine()};
        for (int i = 0; i < gravity.size(); ++i) {
            map << MapPlanet{QString("R%1").arg(i), 1200 + 10 * i, 1200};
            lines << planetLine(QString("R%1").arg(i), "Robots", "None", "0", "1000",
                                {{21, gravity[i]}, {22, temperature[i]}, {23, radiation[i]}});
        }
        game.writeMap(map);
        game.writeReport("game.P1", lines);
        GameData d;
        QCOMPARE(game.load(d), QString());
        const PlayerInfo &robots = d.player(2);
        for (int k = 0; k < 6; ++k)
            QCOMPARE(robots[MinGrav + k].val(), ranges[k]);
    }

    void unreportedPlanetsAndAttackScores()
    {
        TestGame game;
        game.writeMap({{"Home", 1100, 1100}, {"Quiet", 1150, 1150}, {"Colony", 1200, 1200}, {"Fort", 1250, 1250}});
        game.writeReport("game.P1", {homeLine(), planetLine("Colony", "Humans", "None", "0", "250000"),
                                     planetLine("Fort", "Humans", "Space Dock", "0", "750000", {{20, "45"}})});
        GameData d;
        QCOMPARE(game.load(d), QString());
        for (int f = Owner; f < AttackScore; ++f)
            QVERIFY2(d.planet(2)[f].isEmpty(), planetFieldName(f));
        QCOMPARE(d.planet(2)[AttackScore].val(), 3.0);
        QCOMPARE(d.planet(3)[AttackScore].val(), 2.0 + 0 + 17); // halves to even: 2.5 gives 2
        QCOMPARE(d.planet(4)[AttackScore].val(), 6.0 + 3 + 2);  // 7.5 capped at 6, 1.5 gives 2
    }

    void universeExtent_data()
    {
        QTest::addColumn<int>("lastX");
        QTest::addColumn<int>("extent");
        QTest::newRow("a full hundred rounds up") << 1400 << 1500;
        QTest::newRow("just below") << 1399 << 1400;
        QTest::newRow("smallest") << 1000 << 1100;
    }
    void universeExtent()
    {
        QFETCH(int, lastX);
        QFETCH(int, extent);
        TestGame game;
        game.writeMap({{"Home", 1010, 1020}, {"Last", lastX, 1050}});
        game.writeReport("game.P1", {homeLine()});
        GameData d;
        QCOMPARE(game.load(d), QString());
        QCOMPARE(d.UniverseExtent, extent);
        QCOMPARE(d.GridSize, 650);
        QCOMPARE(d.planet(2)[X].val(), lastX - 1000.0);
        QCOMPARE(d.planet(2)[Y].val(), extent - 1050.0);
        QCOMPARE(d.FarX, extent);
    }

    // The annotation file is read at the end; its last line or circle
    // decides the colour of the next drawing.
    void annotationColour_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("colour");
        QTest::newRow("last line's colour") << QByteArray("L,1,2,3,4,5\r\nC,1,2,3,3\r\nT,1,2,x,9\r\n") << 3;
        QTest::newRow("texts only") << QByteArray("T,1,2,x,9\r\n") << 4;
        QTest::newRow("colour 0 is read too") << QByteArray("L,1,2,3,4,0\r\n") << 0;
    }
    void annotationColour()
    {
        QFETCH(QByteArray, file);
        TestGame game;
        game.writeMap({{"Home", 1100, 1100}});
        game.writeReport("game.P1", {homeLine()});
        game.write("game.VMK", file);
        GameData d;
        d.DrawColourIndex = 4;
        QCOMPARE(game.load(d), QString());
        QTEST(int(d.DrawColourIndex), "colour");
        QVERIFY(!d.AnnotationText.isEmpty());
    }
};

QTEST_GUILESS_MAIN(GenerationTest)
#include "tst_generation.moc"
