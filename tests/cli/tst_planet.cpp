// veltro-cli planet as scripts see it: the readout and the panel of one
// spot of the sample game, the options' errors, and a panel that fails.

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
        QCOMPARE(o[u"XYCoord"].toString(), " X:102 Y:194");
        QCOMPARE(o[u"theplanet"].toString(), " All Work");
        QCOMPARE(o[u"ToolTip"].toString(), "Click for more information on All Work");
        QCOMPARE(o[u"Picked"].toArray(), QJsonArray({19}));
        QCOMPARE(o[u"Detail"][u"PlanetName"].toString(), "All Work");
        QCOMPARE(o[u"Detail"][u"SOI"].toString(), "100 l.y.");
        QCOMPARE(o[u"RName"].toArray().size(), 16);
        QCOMPARE(o[u"RName"][0].toString(), "Tessellates");
        QCOMPARE(o[u"RHab"][5].toString(), QString());
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

    void deepSpace()
    {
        const QJsonObject o = json(planet({"--at", "0.5,0.5"}));
        QCOMPARE(o[u"theplanet"].toString(), " Deep Space");
        QCOMPARE(o[u"ToolTip"].toString(), QString());
        QVERIFY(o[u"Detail"].isNull());
        QCOMPARE(o[u"Picked"].toArray(), QJsonArray());
        QCOMPARE(o[u"Pie1"].toArray(), QJsonArray());
    }

    void optionErrors_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<int>("status");
        QTest::newRow("neither") << QStringList{} << 2;
        QTest::newRow("both") << QStringList{"--at", "1,1", "--number", "1"} << 2;
        QTest::newRow("row 0") << QStringList{"--number", "0"} << 2;
        QTest::newRow("row beyond the table") << QStringList{"--number", "129"} << 2;
        QTest::newRow("not a position") << QStringList{"--at", "12"} << 2;
        QTest::newRow("zoom of width 0") << QStringList{"--at", "1,1", "--zoom", "0,0,0"} << 1;
    }
    void optionErrors()
    {
        QFETCH(QStringList, options);
        const CliRun run = planet(options);
        QTEST(run.status, "status");
        QVERIFY(run.out.isEmpty());
        QCOMPARE(run.err.count(u'\n'), 1);
    }

    // A concentration that is a word while the others add up: nothing on
    // standard output, one line naming the planet and the field.
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
