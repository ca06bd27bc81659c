// veltro-cli planet as scripts see it: the readout and the panel of one
// spot, trips, and a panel that fails. (Option errors: tst_commandline.)

#include "CliRun.h"
#include "TestGame.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {

const QString Sample = QStringLiteral(VELTRO_SAMPLES "/MARCHES.map");

CliRun planet(const QStringList &options)
{
    return runCli(QStringList{"planet", Sample, "--year", "2431"} + options);
}

QJsonObject json(const CliRun &run)
{
    return QJsonDocument::fromJson(run.out).object();
}

} // namespace

class PlanetCommandTest : public QObject {
    Q_OBJECT
private slots:
    // The pointer at a planet of the sample, in the full view and zoomed,
    // and the same planet by its row: one panel.
    void atAPlanet()
    {
        const CliRun at = planet({"--at", "102,194"});
        QCOMPARE(at.status, 0);
        const QJsonObject o = json(at);
        QCOMPARE(QStringList({o[u"XYCoord"].toString(), o[u"theplanet"].toString(), o[u"ToolTip"].toString(),
                              o[u"Detail"][u"PlanetName"].toString(), o[u"Detail"][u"SOI"].toString(),
                              o[u"RName"][0].toString(), o[u"RHab"][5].toString()}),
                 QStringList({" X:102 Y:194", " All Work", "Click for more information on All Work", "All Work",
                              "100 l.y.", "Tessellates", ""}));
        QCOMPARE(o[u"Picked"].toArray(), QJsonArray({19}));
        QCOMPARE(o[u"RName"].toArray().size(), 16);
        QCOMPARE(o[u"Pie1"].toArray().size(), 3);
        QCOMPARE(o[u"Pie1"][0][u"FillColor"].toInt(), 0xFF0000);
        // Angles as the trace writes single-precision numbers.
        QVERIFY(at.out.contains("\"start\": 0.017453292\n"));

        const QJsonObject zoomed = json(planet({"--at", "102,194", "--zoom", "50,150,200"}));
        QCOMPARE(zoomed[u"XYCoord"].toString(), " X:102 Y:194");
        QCOMPARE(zoomed[u"Detail"], o[u"Detail"]);

        const QJsonObject byNumber = json(planet({"--number", "19"}));
        QVERIFY(byNumber[u"XYCoord"].isNull() && byNumber[u"ToolTip"].isNull());
        QCOMPARE(byNumber[u"Picked"].toArray(), QJsonArray({19}));
        QCOMPARE(byNumber[u"Detail"], o[u"Detail"]);
        QCOMPARE(byNumber[u"RHab"], o[u"RHab"]);
    }

    // As the Measure tool: warp² light years a year, a part costing the whole
    // year; an end near a planet snaps to it, one in deep space is the readout's.
    void tripFrom_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QJsonValue>("fromPlanet");
        QTest::addColumn<double>("distance");
        QTest::addColumn<QList<int>>("years"); // warp 5 .. 10
        QTest::newRow("snapped from beside a planet") << QStringList{"--at", "60.5,520.5", "--from", "1,601"}
                                                      << QJsonValue(1) << 100.0 << QList<int>{4, 3, 3, 2, 2, 1};
        // The readout's whole light years, (100, 600), as the pointer there reads.
        QTest::newRow("from deep space") << QStringList{"--at", "60,520", "--from", "100.5,600.5"}
                                         << QJsonValue() << 89.4 << QList<int>{4, 3, 2, 2, 2, 1};
    }
    void tripFrom()
    {
        QFETCH(QStringList, options);
        QFETCH(QList<int>, years);
        // Stored at (0, 600) and (60, 520): 100 light years apart.
        TestGame game;
        game.writeMap({{"Home", 1000, 1000}, {"Zeta Tau", 1060, 1080}, {"Rim", 1500, 1500}});
        game.writeReport("game.P1", {homeLine()});
        const CliRun run = runCli(QStringList{"planet", game.path("game.map")} + options);
        QCOMPARE(run.status, 0);
        const QJsonObject trip = json(run)[u"Trip"].toObject();
        QTEST(trip[u"From"][u"Planet"], "fromPlanet");
        QCOMPARE(trip[u"To"][u"Name"].toString(), "Zeta Tau");
        QCOMPARE(trip[u"To"][u"X"].toDouble(), 60.0); // as stored: from the map's west edge
        QTEST(trip[u"Distance"].toDouble(), "distance");
        QList<int> got;
        for (const QJsonValue &w : trip[u"Years"].toArray())
            got << w[u"Years"].toInt();
        QCOMPARE(got, years);
        QCOMPARE(trip[u"Years"][3][u"Warp"].toInt(), 8);
    }

    void deepSpace()
    {
        const QJsonObject o = json(planet({"--at", "0.5,0.5"}));
        QCOMPARE(QStringList({o[u"theplanet"].toString(), o[u"ToolTip"].toString()}), QStringList({" Deep Space", ""}));
        QVERIFY(o[u"Detail"].isNull());
    }

    // A concentration that is a word: nothing on standard output, one line naming the planet and the field.
    void aPanelThatCannotBeFilled()
    {
        TestGame game;
        game.writeMap({{"Rock", 1100, 1100}});
        game.writeReport("game.P1", {planetLine("Rock", "Humans", "None", "0", "1000",
                                                {{17, "30"}, {18, "lots"}, {19, "5"}, {20, "10"}})});
        const CliRun run = runCli({"planet", game.path("game.map"), "--number", "1"});
        QCOMPARE(run.status, 1);
        QVERIFY(run.out.isEmpty());
        QCOMPARE(run.err, "planet 1 \"Rock\": BoraMC: Type mismatch\n");
    }
};

QTEST_GUILESS_MAIN(PlanetCommandTest)
#include "tst_planet.moc"
