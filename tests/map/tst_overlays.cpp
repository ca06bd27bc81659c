// The menu overlays through the trace of a recording canvas.

#include "EstHabOverlay.h"
#include "MineralOverlays.h"
#include "StargateOverlay.h"
#include "TerraformOverlay.h"
#include "TraceRecorder.h"
#include "TraceScene.h"

#include <QTest>
#include <functional>

namespace {

struct Traced {
    QByteArray trace;
    Canvas canvas{15000};
    Traced() { canvas.addSurface(std::make_shared<TraceRecorder>(trace)); }
    QList<QJsonObject> ops(const char *op) const { return traceOps(trace, op); }
};

} // namespace

struct EstimateRow { QList<double> bounds, planet, carryIn; int hab, countOut; };
Q_DECLARE_METATYPE(EstimateRow)

using Overlay = std::function<void(const GameData &, Canvas &)>;
struct DiscRow { Overlay draw; int first; QStringList values; QString age; int radius, colour; };
Q_DECLARE_METATYPE(DiscRow)

struct GateRow { bool safeOnly; int range1, range2, distance; QString lines; };
Q_DECLARE_METATYPE(GateRow)

class OverlaysTest : public QObject {
    Q_OBJECT
private slots:
    void gravityScale_data()
    {
        QTest::addColumn<double>("g");
        QTest::addColumn<int>("scale");
        // The four pieces at their ends, and inside each one a point that a
        // floor would take one lower: 16.67, 43.75, 50.75, 75.83.
        for (auto [g, s] : {std::pair{0.12, -1}, {0.5, 25}, {1.0, 50}, {2.0, 75}, {8.0, 100},
                            {0.25, 17}, {0.8, 44}, {1.03, 51}, {2.2, 76}})
            QTest::newRow(qPrintable(QString::number(g))) << g << s;
    }
    void gravityScale()
    {
        QFETCH(double, g);
        QTEST(int(gravityToScale(g)), "scale");
    }

    // Bounds and planet as g, t, r; the carry as the three ratios and the count.
    void estimate_data()
    {
        QTest::addColumn<EstimateRow>("row");
        const QList<double> wide{0.12, 8, -200, 200, 0, 100}, none{0, 0, 0, 0};
        QTest::newRow("centre of the widest race") << EstimateRow{wide, QList<double>{0.96, 0, 50}, none, 100, 0};
        QTest::newRow("on every bound") << EstimateRow{wide, QList<double>{0.12, -200, 0}, none, 0, 0};
        // (0.15 - 0.12) / (0.17 - 0.12) is 0.5999999999999998 until cleaned to 15 digits.
        QTest::newRow("ratio cleaned before the floor")
            << EstimateRow{{0.12, 0.29, -100, 100, 0, 100}, {0.15, 50, 50}, none, 70, 0};
        QTest::newRow("two axes out") << EstimateRow{{1, 2, -100, 100, 0, 100}, {2.26, 150, 25}, none, -25, 2};
        QTest::newRow("no gravity scores the carry") << EstimateRow{wide, {0, 0, 50}, {-0.5, -0.5, 0.5, 2}, -14, 1};
    }
    void estimate()
    {
        QFETCH(EstimateRow, row);
        const auto &[bounds, planet, carryIn, hab, countOut] = row;
        const HabBounds race{bounds[0], bounds[1], bounds[2], bounds[3], bounds[4], bounds[5]};
        HabCarry carry{carryIn[0], carryIn[1], carryIn[2], int32_t(carryIn[3])};
        QCOMPARE(estimateHab(race, planet[0], planet[1], planet[2], carry), hab);
        QCOMPARE(carry.outOfRange, countOut);
    }

    // 1 to 1.01 g centres on 1 g, its lower bound: at 1 g the gravity ratio
    // divides by zero, while just above it the upper side scores.
    void centreOnABound()
    {
        const HabBounds race{1, 1.01, -100, 100, 0, 100};
        HabCarry carry;
        QCOMPARE(estimateHab(race, 1.005, 0, 50, carry), 83);
        QVERIFY_THROWS_EXCEPTION(HabAxisError, estimateHab(race, 1.0, 0, 50, carry));
    }

    void estHabCarriesRatiosWithinARun()
    {
        // Gravity 1..2 g (centre 1.48), temperature -100..100, radiation 0..100:
        // 2.26 g, 50 degrees and 25 radiation give ratios -0.5, 0.5, 0.5.
        GameData d = smallGame();
        d.player(1)[RaceName] = Value(u"Us");
        for (int f = MinGrav; f <= MaxRad; ++f)
            d.player(1)[f] = Value(QList<double>{1, 2, -100, 100, 0, 100}[f - MinGrav]);
        addPlanet(d, 500, 500, "Current", {{Gravity, u"2.26"}, {Temperature, u"50"}, {Radiation, u"25"}});
        addPlanet(d, 600, 600, "Current"); // no gravity: scored on the carry, 16
        addPlanet(d, 700, 700);            // never reported
        HabCarry carry;
        Traced t;
        drawEstimatedHab(d, t.canvas, QStringLiteral("Us"), carry);
        const QList<QJsonObject> want{{{"FillColor", colour(255, 0, 255)}, {"r", 138}, {"DrawMode", 15}},
                                      {{"FillColor", colour(0, 255, 0)}}, {{"FillColor", colour(80, 60, 60)}, {"r", 30}}};
        QCOMPARE(traceJson(t.ops("Circle"), want), traceJson(want));

        // The next run starts from ratios of 0: the same gravity-less planet scores 0.
        d.Planets.erase(d.Planets.begin());
        Traced again;
        drawEstimatedHab(d, again.canvas, QStringLiteral("Us"), carry);
        QCOMPARE(again.ops("Circle")[0][u"FillColor"].toInt(), colour(255, 255, 0));

    }

    // The value overlays on one planet, beside one on the window's edge that
    // is never drawn. Values fill the fields from `first` on: ironium,
    // boranium, germanium for the minerals ("-": empty).
    void valueDiscs_data()
    {
        QTest::addColumn<DiscRow>("row");
        const int grey = colour(80, 60, 60), red = colour(255, 0, 0), green = colour(0, 255, 0);
        const Overlay terra = drawTerraformedValues, age = drawReportAge, avgmc = drawAverageMineralConcentration;
        const Overlay iron = [](const GameData &d, Canvas &c) { drawMineralConcentration(d, c, Mineral::Ironium); };
        const Overlay germ = [](const GameData &d, Canvas &c) { drawMineralConcentration(d, c, Mineral::Germanium); };
        QTest::newRow("terraformed -45") << DiscRow{terra, TerraformedHab, {"-45"}, "Current", 150, red};
        QTest::newRow("terraformed 0.3 shows nothing") << DiscRow{terra, TerraformedHab, {"0.3"}, "Current", 0, green};
        QTest::newRow("terraformed 0") << DiscRow{terra, TerraformedHab, {"0"}, "Current", 30, grey};
        QTest::newRow("iron never reported") << DiscRow{iron, IronMC, {"-", "-", "-"}, "", 30, grey};
        QTest::newRow("iron 75") << DiscRow{iron, IronMC, {"75", "1", "1"}, "5", 75, colour(0, 0, 255)};
        QTest::newRow("iron unknown") << DiscRow{iron, IronMC, {"Unknown", "1", "1"}, "5", 0, colour(0, 0, 255)};
        QTest::newRow("germ 74.5 to even") << DiscRow{germ, IronMC, {"1", "1", "74.5"}, "5", 74, colour(255, 255, 0)};
        QTest::newRow("average 20 40 60") << DiscRow{avgmc, IronMC, {"20", "40", "60"}, "5", 40, colour(153, 102, 51)};
        QTest::newRow("average 100s") << DiscRow{avgmc, IronMC, {"100", "100", "100"}, "5", 100, colour(255, 255, 255)};
        QTest::newRow("average without boranium") << DiscRow{avgmc, IronMC, {"50", "Unknown", "50"}, "5", 30, grey};
        QTest::newRow("age: current") << DiscRow{age, ReportAge, {"0"}, "Current", 60, green};
        QTest::newRow("age: 3 years") << DiscRow{age, ReportAge, {"3"}, "3 years old", 60, colour(30, 225, 0)};
        QTest::newRow("age: 30 years") << DiscRow{age, ReportAge, {"30"}, "30 years old", 60, red};
        QTest::newRow("age: never reported") << DiscRow{age, ReportAge, {"0"}, "", 0, -1};
    }
    void valueDiscs()
    {
        QFETCH(DiscRow, row);
        GameData d = smallGame();
        PlanetInfo &p = addPlanet(d, 500, 500, row.age);
        for (int i = 0; i < row.values.size(); ++i)
            if (row.values[i] != u"-")
                p[row.first + i] = row.first == IronMC ? Value(row.values[i]) : Value(row.values[i].toDouble());
        addPlanet(d, 0, 500);
        Traced t;
        row.draw(d, t.canvas);
        QList<QJsonObject> want;
        if (row.colour >= 0)
            want << QJsonObject{{"r", row.radius}, {"FillColor", row.colour}, {"color", row.colour}};
        QCOMPARE(traceJson(t.ops("Circle"), want), traceJson(want));
    }

    // Two gates; the first sits on the window's edge, so its owner mark is left out.
    void stargateLines_data()
    {
        QTest::addColumn<GateRow>("row");
        QTest::newRow("all: the later gate decides") << GateRow{false, 100, 50, 80, "RGR"};
        QTest::newRow("safe only") << GateRow{true, 100, 50, 80, "G"};
        QTest::newRow("exactly the range is safe") << GateRow{true, 80, 80, 80, "GG"};
        QTest::newRow("five ranges exactly") << GateRow{false, 10, 10, 50, "RR"};
        QTest::newRow("beyond five ranges") << GateRow{false, 10, 10, 51, ""};
        QTest::newRow("no gate of its own: no lines from it") << GateRow{false, 0, 50, 0, ""};
    }
    void stargateLines()
    {
        QFETCH(GateRow, row);
        const auto &[safeOnly, range1, range2, distance, lines] = row;
        GameData d = smallGame();
        addPlanet(d, 0, 500, {}, {{GateRange, range1}, {OwnerIndex, 1}});
        addPlanet(d, distance, 500, {}, {{GateRange, range2}});
        Traced t;
        drawStargateNetwork(d, t.canvas, safeOnly);
        QString seen;
        for (const QJsonObject &l : t.ops("Line"))
            seen += l[u"color"].toInt() == colour(255, 0, 0) ? u'R' : u'G';
        QCOMPARE(seen, lines);
        QVERIFY(t.ops("Circle").isEmpty());
    }
};

QTEST_GUILESS_MAIN(OverlaysTest)
#include "tst_overlays.moc"
