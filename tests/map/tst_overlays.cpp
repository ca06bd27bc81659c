// The menu overlays checked through the trace of a recording canvas: the
// hab estimate and its carried count, the value, mineral and age discs, the
// stargate lines' order, the names' placement, and veltro-cli --overlay.

#include "EstHabOverlay.h"
#include "MineralOverlays.h"
#include "PlanetNames.h"
#include "StargateOverlay.h"
#include "TerraformOverlay.h"
#include "TraceRecorder.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

// A universe 1000 light years wide in the full view (Scale 10).
GameData smallGame()
{
    GameData d;
    d.UniverseExtent = 2000;
    d.setFullView();
    return d;
}

PlanetInfo &addPlanet(GameData &d, int x, int y, const QString &age = QStringLiteral("Current"))
{
    d.Planets.emplace_back();
    d.PlanetCount = int32_t(d.Planets.size());
    PlanetInfo &p = d.Planets.back();
    p[X] = Value(x);
    p[Y] = Value(y);
    if (!age.isEmpty())
        p[AgeText] = Value(age);
    return p;
}

// A trace whose texts measure 40 canvas units a character, as a raster's would.
class MeasuredTrace : public TraceRecorder {
public:
    using TraceRecorder::TraceRecorder;
    std::optional<double> textWidth(const DrawingState &, const QString &text) const override { return 40.0 * text.size(); }
};

struct Traced {
    QByteArray trace;
    Canvas canvas{15000};
    Traced() { canvas.addSurface(std::make_shared<MeasuredTrace>(trace)); }
    QList<QJsonObject> ops(const char *op) const
    {
        QList<QJsonObject> out;
        for (const QByteArray &line : trace.split('\n')) {
            const QJsonObject o = QJsonDocument::fromJson(line).object();
            if (o[u"op"].toString() == QLatin1String(op))
                out << o;
        }
        return out;
    }
};

int colour(int r, int g, int b) { return r + 256 * g + 65536 * b; }

} // namespace

class OverlaysTest : public QObject {
    Q_OBJECT
private slots:
    void gravityScale_data()
    {
        QTest::addColumn<double>("g");
        QTest::addColumn<int>("scale");
        for (auto [g, s] : {std::pair{0.12, -1}, {0.5, 25}, {1.0, 50}, {2.0, 75}, {8.0, 100}})
            QTest::newRow(qPrintable(QString::number(g))) << g << s;
    }
    void gravityScale()
    {
        QFETCH(double, g);
        QFETCH(int, scale);
        QCOMPARE(int(gravityToScale(g)), scale);
    }

    // Bounds and planet as g, t, r; the carry as the three ratios and the count.
    void estimate_data()
    {
        QTest::addColumn<QList<double>>("bounds");
        QTest::addColumn<QList<double>>("planet");
        QTest::addColumn<QList<double>>("carryIn");
        QTest::addColumn<int>("hab");
        QTest::addColumn<int>("countOut");
        const QList<double> wide{0.12, 8, -200, 200, 0, 100}, none{0, 0, 0, 0};
        const QList<double> oneOut{1, 2, -100, 100, 0, 100};
        QTest::newRow("centre of the widest race") << wide << QList<double>{0.96, 0, 50} << none << 100 << 0;
        QTest::newRow("on every bound") << wide << QList<double>{0.12, -200, 0} << none << 0 << 0;
        QTest::newRow("one axis out") << oneOut << QList<double>{2.26, 50, 25} << none << -9 << 1;
        // (0.15 - 0.12) / (0.17 - 0.12) is 0.5999999999999998 until cleaned to 15 digits.
        QTest::newRow("ratio cleaned before the floor")
            << QList<double>{0.12, 0.29, -100, 100, 0, 100} << QList<double>{0.15, 50, 50} << none << 70 << 0;
        QTest::newRow("two axes out") << oneOut << QList<double>{2.26, 150, 25} << none << -25 << 2;
        QTest::newRow("no gravity scores the carry")
            << wide << QList<double>{0, 0, 50} << QList<double>{-0.5, -0.5, 0.5, 2} << -14 << 1;
        QTest::newRow("no gravity, nothing carried") << wide << QList<double>{0, 0, 50} << none << 0 << 0;
    }
    void estimate()
    {
        QFETCH(QList<double>, bounds);
        QFETCH(QList<double>, planet);
        QFETCH(QList<double>, carryIn);
        QFETCH(int, hab);
        QFETCH(int, countOut);
        const HabBounds race{bounds[0], bounds[1], bounds[2], bounds[3], bounds[4], bounds[5]};
        HabCarry carry{carryIn[0], carryIn[1], carryIn[2], int32_t(carryIn[3])};
        QCOMPARE(estimateHab(race, planet[0], planet[1], planet[2], carry), hab);
        QCOMPARE(carry.outOfRange, countOut);
    }

    void estHabCarriesRatiosWithinARun()
    {
        // Gravity 1..2 g (centre 1.48), temperature -100..100, radiation 0..100:
        // 2.26 g, 50 degrees and 25 radiation give ratios -0.5, 0.5, 0.5.
        GameData d = smallGame();
        d.player(1)[RaceName] = Value(u"Us");
        for (int f = MinGrav; f <= MaxRad; ++f)
            d.player(1)[f] = Value(QList<double>{1, 2, -100, 100, 0, 100}[f - MinGrav]);
        PlanetInfo &scored = addPlanet(d, 500, 500);
        scored[Gravity] = Value(u"2.26");
        scored[Temperature] = Value(u"50");
        scored[Radiation] = Value(u"25");
        addPlanet(d, 600, 600);            // no gravity: scored on the carry, 16
        addPlanet(d, 700, 700, QString()); // never reported
        HabCarry carry;
        Traced t;
        drawEstimatedHab(d, t.canvas, QStringLiteral("Us"), carry);
        auto circles = t.ops("Circle");
        QCOMPARE(circles.size(), 3);
        QCOMPARE(circles[0][u"FillColor"].toInt(), colour(255, 0, 255));
        QCOMPARE(circles[0][u"r"].toDouble(), 138.0);
        QCOMPARE(circles[0][u"DrawMode"].toInt(), 15);
        QCOMPARE(circles[1][u"FillColor"].toInt(), colour(0, 255, 0));
        QCOMPARE(circles[2][u"FillColor"].toInt(), colour(80, 60, 60));
        QCOMPARE(circles[2][u"r"].toDouble(), 30.0);

        // The next run starts from ratios of 0: the same gravity-less planet scores 0.
        d.Planets.erase(d.Planets.begin());
        Traced again;
        drawEstimatedHab(d, again.canvas, QStringLiteral("Us"), carry);
        QCOMPARE(again.ops("Circle")[0][u"FillColor"].toInt(), colour(255, 255, 0));

        // An unknown race has bounds 0 and stops at the first planet with gravity.
        std::swap(d.Planets[0], d.Planets[1]);
        d.Planets[1][Gravity] = Value(1.0);
        Traced unknown;
        QVERIFY_THROWS_EXCEPTION(conv::DivisionByZeroError,
                                 drawEstimatedHab(d, unknown.canvas, QStringLiteral("Nobody"), carry));
        QCOMPARE(unknown.ops("Circle").size(), 1);
    }

    void terraformed_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<int>("radius");
        QTest::addColumn<int>("colour");
        QTest::newRow("-45") << QVariant(-45.0) << 150 << colour(255, 0, 0);
        QTest::newRow("100") << QVariant(100.0) << 150 << colour(0, 255, 0);
        QTest::newRow("0.3 shows nothing") << QVariant(0.3) << 0 << colour(0, 255, 0);
        QTest::newRow("0") << QVariant(0.0) << 30 << colour(80, 60, 60);
        QTest::newRow("not in the report") << QVariant() << 30 << colour(80, 60, 60);
    }
    void terraformed()
    {
        QFETCH(QVariant, value);
        QFETCH(int, radius);
        QFETCH(int, colour);
        GameData d = smallGame();
        PlanetInfo &p = addPlanet(d, 500, 500);
        if (value.isValid())
            p[TerraformedHab] = Value(value.toDouble());
        addPlanet(d, 0, 500); // on the window's edge
        Traced t;
        drawTerraformedValues(d, t.canvas);
        const auto circles = t.ops("Circle");
        QCOMPARE(circles.size(), 1);
        QCOMPARE(circles[0][u"r"].toDouble(), double(radius));
        QCOMPARE(circles[0][u"FillColor"].toInt(), colour);
    }

    void terraformedPassesPutGoodPlanetsOnTop()
    {
        GameData d = smallGame();
        for (double v : {10.0, -10.0, 0.0})
            addPlanet(d, 500, 500)[TerraformedHab] = Value(v);
        Traced t;
        drawTerraformedValues(d, t.canvas);
        QList<int> order;
        for (const QJsonObject &c : t.ops("Circle"))
            order << c[u"color"].toInt();
        QCOMPARE(order, (QList<int>{colour(80, 60, 60), colour(255, 0, 0), colour(0, 255, 0)}));
    }

    // Concentrations as ironium, boranium, germanium; "-" leaves a field empty.
    void minerals_data()
    {
        QTest::addColumn<QString>("overlay");
        QTest::addColumn<QStringList>("mc");
        QTest::addColumn<QString>("age");
        QTest::addColumn<int>("radius");
        QTest::addColumn<int>("colour");
        const int grey = colour(80, 60, 60);
        QTest::newRow("iron never reported") << "iron" << QStringList{"-", "-", "-"} << "" << 30 << grey;
        QTest::newRow("iron 75") << "iron" << QStringList{"75", "1", "1"} << "5" << 75 << colour(0, 0, 255);
        QTest::newRow("iron unknown") << "iron" << QStringList{"Unknown", "1", "1"} << "5" << 0 << colour(0, 0, 255);
        QTest::newRow("germ 74.5 to even") << "germ" << QStringList{"1", "1", "74.5"} << "5" << 74 << colour(255, 255, 0);
        QTest::newRow("average 20 40 60") << "avgmc" << QStringList{"20", "40", "60"} << "5" << 40 << colour(153, 102, 51);
        QTest::newRow("average 100s") << "avgmc" << QStringList{"100", "100", "100"} << "5" << 100 << colour(255, 255, 255);
        QTest::newRow("average without boranium") << "avgmc" << QStringList{"50", "Unknown", "50"} << "5" << 30 << grey;
    }
    void minerals()
    {
        QFETCH(QString, overlay);
        QFETCH(QStringList, mc);
        QFETCH(QString, age);
        QFETCH(int, radius);
        QFETCH(int, colour);
        GameData d = smallGame();
        PlanetInfo &p = addPlanet(d, 500, 500, age);
        for (int i = 0; i < 3; ++i)
            if (mc[i] != u"-")
                p[IronMC + i] = Value(mc[i]);
        Traced t;
        if (overlay == u"avgmc")
            drawAverageMineralConcentration(d, t.canvas);
        else
            drawMineralConcentration(d, t.canvas, overlay == u"iron" ? Mineral::Ironium : Mineral::Germanium);
        const auto circles = t.ops("Circle");
        QCOMPARE(circles.size(), 1);
        QCOMPARE(circles[0][u"r"].toDouble(), double(radius));
        QCOMPARE(circles[0][u"FillColor"].toInt(), colour);
    }

    void reportAge_data()
    {
        QTest::addColumn<double>("years");
        QTest::addColumn<QString>("ageText");
        QTest::addColumn<int>("colour"); // -1: no disc
        QTest::newRow("current") << 0.0 << "Current" << colour(0, 255, 0);
        QTest::newRow("3 years") << 3.0 << "3 years old" << colour(30, 225, 0);
        QTest::newRow("30 years") << 30.0 << "30 years old" << colour(255, 0, 0);
        QTest::newRow("never reported") << 0.0 << "" << -1;
    }
    void reportAge()
    {
        QFETCH(double, years);
        QFETCH(QString, ageText);
        QFETCH(int, colour);
        GameData d = smallGame();
        addPlanet(d, 500, 500, ageText)[ReportAge] = Value(years);
        Traced t;
        drawReportAge(d, t.canvas);
        const auto circles = t.ops("Circle");
        QCOMPARE(circles.size(), colour < 0 ? 0 : 1);
        if (colour >= 0)
            QCOMPARE(circles[0][u"color"].toInt(), colour);
    }

    // Two gates; the first sits on the window's edge, so its owner mark is left out.
    void stargateLines_data()
    {
        QTest::addColumn<bool>("safeOnly");
        QTest::addColumn<int>("range1");
        QTest::addColumn<int>("range2");
        QTest::addColumn<int>("distance");
        QTest::addColumn<QString>("lines");
        QTest::newRow("all: the later gate decides") << false << 100 << 50 << 80 << "RGR";
        QTest::newRow("safe only") << true << 100 << 50 << 80 << "G";
        QTest::newRow("exactly the range is safe") << true << 80 << 80 << 80 << "GG";
        QTest::newRow("beyond five ranges") << false << 10 << 10 << 51 << "";
        QTest::newRow("unlimited range") << false << 10000 << 1 << 900 << "RG";
    }
    void stargateLines()
    {
        QFETCH(bool, safeOnly);
        QFETCH(int, range1);
        QFETCH(int, range2);
        QFETCH(int, distance);
        QFETCH(QString, lines);
        GameData d = smallGame();
        PlanetInfo &edge = addPlanet(d, 0, 500);
        edge[GateRange] = Value(range1);
        edge[OwnerIndex] = Value(1);
        addPlanet(d, distance, 500)[GateRange] = Value(range2);
        Traced t;
        drawStargateNetwork(d, t.canvas, safeOnly);
        QString seen;
        for (const QJsonObject &l : t.ops("Line"))
            seen += l[u"color"].toInt() == colour(255, 0, 0) ? u'R' : u'G';
        QCOMPARE(seen, lines);
        QVERIFY(t.ops("Circle").isEmpty());
    }

    void namesHangBelowTheirPlanets_data()
    {
        QTest::addColumn<bool>("zoomed");
        QTest::newRow("full view") << false;
        QTest::newRow("zoomed in") << true;
    }
    void namesHangBelowTheirPlanets()
    {
        QFETCH(bool, zoomed);
        GameData d = smallGame();
        if (zoomed) {
            d.OriginX = d.OriginY = 250;
            d.FarX = d.FarY = 750;
            d.Scale = 20;
        }
        const int at = zoomed ? 500 : 250; // canvas 5000 zoomed, 2500 in full
        addPlanet(d, at, at)[Name] = Value(u"Ab");
        addPlanet(d, d.OriginX, 600)[Name] = Value(u"Edge");
        Traced t;
        drawPlanetNames(d, t.canvas);
        const auto texts = t.ops("Print");
        QCOMPARE(texts.size(), 1);
        QCOMPARE(texts[0][u"x"].toDouble(), 2500.0 * (zoomed ? 2 : 1) - 40);
        QCOMPARE(texts[0][u"y"].toDouble(), 2500.0 * (zoomed ? 2 : 1) + 50);
        QCOMPARE(texts[0][u"FontSize"].toDouble(), 6.0);
        QCOMPARE(texts[0][u"color"].toInt(), colour(255, 255, 255));
    }

    void cliDrawsOverlaysAfterTheRedraw()
    {
        QTemporaryDir dir;
        QProcess cli;
        cli.start(VELTRO_CLI, {"render", VELTRO_SAMPLES "/MARCHES.map", "--year", "2431", "--layers", "universe",
                               "--overlay", "iron", "--overlay", "names", "-o", dir.filePath("map.png"),
                               "--trace", dir.filePath("trace")});
        QVERIFY(cli.waitForFinished(-1));
        QCOMPARE(cli.exitCode(), 0);
        QFile file(dir.filePath("trace"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QList<QByteArray> lines = file.readAll().trimmed().split('\n');
        QVERIFY(lines.first().contains("\"Cls\""));
        QVERIFY(lines.last().contains("\"Print\""));
        // The blue ironium discs come before the names, and nothing after them.
        const auto isPrint = [](const QByteArray &l) { return l.contains("\"Print\""); };
        const auto firstPrint = std::find_if(lines.begin(), lines.end(), isPrint);
        QVERIFY(std::any_of(lines.begin(), firstPrint, [](const QByteArray &l) { return l.contains("\"FillColor\":16711680"); }));
        QVERIFY(std::all_of(firstPrint, lines.end(), isPrint));
    }
};

QTEST_GUILESS_MAIN(OverlaysTest)
#include "tst_overlays.moc"
