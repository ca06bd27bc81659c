// The redraw's layers checked through the trace of a recording canvas on
// small hand-made games: radii, colours, order, and the buttons' nesting.

#include "MapPicture.h"
#include "MapRedraw.h"
#include "TraceRecorder.h"
#include "TestGame.h"
#include "TraceScene.h"

#include <QTest>

namespace {

class CollectingHost : public RedrawHost {
public:
    QStringList messages;
    int progressMaximum = 0;
    int progressSteps = 0;
    void showMessage(const QString &text) override { messages << text; }
    void progressStart(int maximum) override { progressMaximum = maximum; }
    void progressStep() override { ++progressSteps; }
};

// Runs one redraw with the given buttons pressed and returns the trace.
struct Redraw {
    GameData &d;
    QByteArray trace;
    Canvas canvas;
    OverlayButtons buttons;
    ZoomFlags zoom;
    CollectingHost host;
    MapRedraw redraw{d, canvas, buttons, zoom, host};

    explicit Redraw(GameData &data, int widthTwips = 15000) : d(data), canvas(widthTwips)
    {
        canvas.addSurface(std::make_shared<TraceRecorder>(trace));
        buttons.onClick = [this](int) { redraw.redrawUniverse(); };
    }
    // The trace's operations, or only those named `op`.
    QList<QJsonObject> run(std::initializer_list<int> pressed, const char *op = nullptr)
    {
        for (int b : pressed)
            buttons.setPressedQuietly(b, true);
        redraw.redrawUniverse();
        return traceOps(trace, op);
    }
};

} // namespace

class LayersTest : public QObject {
    Q_OBJECT
private slots:
    void habRadiiAndColours_data()
    {
        QTest::addColumn<double>("hab");
        QTest::addColumn<bool>("reported");
        QTest::addColumn<int>("radius");
        QTest::addColumn<int>("colour");
        QTest::newRow("hostile -45") << -45.0 << true << 150 << colour(255, 0, 0);
        QTest::newRow("-10 is magenta") << -10.0 << true << 150 << colour(255, 0, 255);
        QTest::newRow("0") << 0.0 << true << 30 << colour(255, 255, 0);
        QTest::newRow("10 is yellow") << 10.0 << true << 150 << colour(255, 255, 0);
        QTest::newRow("10.4 green, radius of 10") << 10.4 << true << 150 << colour(0, 255, 0);
        QTest::newRow("10.4 unreported") << 10.4 << false << 30 << colour(0, 255, 0);
        QTest::newRow("11 rounds 16.5 to 16, raised to 30") << 11.0 << true << 30 << colour(0, 255, 0);
        QTest::newRow("45") << 45.0 << true << 68 << colour(0, 255, 0);
        QTest::newRow("45 unreported") << 45.0 << false << 45 << colour(0, 255, 0);
        QTest::newRow("0 unexplored is grey") << 0.0 << false << 30 << colour(80, 60, 60);
    }
    void habRadiiAndColours()
    {
        QFETCH(double, hab);
        QFETCH(bool, reported);
        QFETCH(int, radius);
        GameData d = smallGame();
        addPlanet(d, 500, 500, reported ? "Current" : "", {{Hab, hab}});
        Redraw r(d);
        const auto circles = r.run({HabButton}, "Circle");
        QCOMPARE(circles.size(), 1);
        QCOMPARE(circles[0][u"r"].toDouble(), double(radius));
        QTEST(circles[0][u"FillColor"].toInt(), "colour");
        QCOMPARE(circles[0][u"DrawMode"].toInt(), 15);
        QCOMPARE(circles[0][u"DrawStyle"].toInt(), 5);
    }

    void growthColours_data()
    {
        QTest::addColumn<double>("population");
        QTest::addColumn<double>("hab");
        QTest::addColumn<int>("colour");
        QTest::addColumn<int>("mines"); // with ironium to mine and a starbase
        QTest::newRow("half full") << 250000.0 << 50.0 << colour(128, 127, 0) << -1;
        QTest::newRow("3% counts as 5%") << 40000.0 << 3.0 << colour(204, 51, 0) << -1;
        // 99.5 % full: the floor keeps it off red.
        QTest::newRow("almost full") << 497500.0 << 50.0 << colour(252, 3, 0) << -1;
        QTest::newRow("almost full at 5%") << 49750.0 << 3.0 << colour(252, 3, 0) << -1;
        QTest::newRow("dying") << 100000.0 << -20.0 << colour(142, 0, 255) << -1;
        // Under ten mines a starbase world counts three million: 10 % full, 25.5 to 26.
        QTest::newRow("starbase, nine mines") << 300000.0 << 50.0 << colour(26, 229, 0) << 9;
        QTest::newRow("starbase, ten mines") << 300000.0 << 50.0 << colour(153, 102, 0) << 10;
        QTest::newRow("starbase, nine mines, no ironium") << 300000.0 << 50.0 << colour(153, 102, 0) << 0;
    }
    void growthColours()
    {
        QFETCH(double, population);
        QFETCH(double, hab);
        QFETCH(int, mines);
        GameData d = smallGame();
        d.OwnRaceName = QStringLiteral("Us");
        for (const char16_t *owner : {u"Us", u"Them"})
            addPlanet(d, 500, 500, {},
                      {{Owner, owner}, {Population, population}, {Resources, u"10"}, {Hab, hab}, {Starbase, u"None"}});
        if (mines >= 0) {
            PlanetInfo &p = d.planet(1);
            p[Starbase] = Value(u"Space Dock");
            p[Mines] = Value(mines == 0 ? 9 : mines);
            p[IronMR] = Value(mines == 0 ? 0 : 30);
        }
        // Neither layer draws an own world without colonists.
        addPlanet(d, 600, 600, {}, {{Owner, u"Us"}, {Population, 0}, {Resources, u"10"}, {Hab, 50}, {Starbase, u"Space Dock"}});
        Redraw r(d);
        const auto circles = r.run({GrowthButton}, "Circle");
        QCOMPARE(circles.size(), 1); // the other race's colony is not drawn
        QTEST(circles[0][u"color"].toInt(), "colour");
        QCOMPARE(circles[0][u"r"].toDouble(), 50.0);
        QCOMPARE(circles[0][u"DrawMode"].toInt(), 13);
    }

    void attackAndOwnedMarkStarbases()
    {
        GameData d = smallGame();
        addPlanet(d, 100, 100, {}, {{Population, 1000000}, {Starbase, u"None"}, {OwnerIndex, 1}});
        addPlanet(d, 200, 200, {}, {{Population, 2000000}, {Starbase, u"Space Dock"}, {OwnerIndex, 2}});
        addPlanet(d, 300, 300, {}, {{Population, 0}, {Starbase, u"Space Dock"}}); // no colonists: not drawn
        Redraw r(d);
        const auto circles = r.run({OwnedButton, AttackButton}, "Circle");
        // Owned: two black surrounds first, then marker, marker, ring; then attack.
        QCOMPARE(circles.size(), 7);
        QCOMPARE(circles[0][u"r"].toDouble(), 90.0);
        QCOMPARE(circles[1][u"r"].toDouble(), 90.0);
        QCOMPARE(circles[2][u"FillColor"].toInt(), colour(255, 0, 0));
        QCOMPARE(circles[3][u"FillColor"].toInt(), colour(0, 255, 0));
        QCOMPARE(circles[4][u"r"].toDouble(), 70.0);
        QCOMPARE(circles[4][u"FillStyle"].toInt(), 1);
        QCOMPARE(circles[5][u"color"].toInt(), colour(205, 50, 0)); // a million colonists give 205
        QCOMPARE(circles[6][u"color"].toInt(), colour(255, 0, 0));  // 410 + 50, capped
        // 32738 + 50 no longer fits the red's 16 bits: the drawing stops.
        d.planet(2)[Population] = Value(159700000);
        Redraw overflowing(d);
        QVERIFY_THROWS_EXCEPTION(conv::OverflowError, overflowing.run({AttackButton}));
    }

    void bordersScaleWithTheZoomMarkersDoNot()
    {
        GameData d = smallGame();
        addPlanet(d, 500, 500, {}, {{OwnerIndex, 1}, {SOI, 50}});
        Redraw full(d);
        auto circles = full.run({BordersButton, UniverseButton}, "Circle");
        QCOMPARE(circles.size(), 3);
        QCOMPARE(circles[0][u"r"].toDouble(), 500.0);
        QCOMPARE(circles[0][u"DrawMode"].toInt(), 15);
        QCOMPARE(circles[1][u"FillStyle"].toInt(), 7);
        QCOMPARE(circles[1][u"DrawMode"].toInt(), 13);
        QCOMPARE(circles[2][u"r"].toDouble(), 30.0);

        // A window half as wide doubles the border and keeps the marker.
        Redraw zoomed(d);
        zoomed.buttons.setPressedQuietly(ZoomInButton, true);
        zoomed.zoom.ZoomArmed = 1;
        zoomToCentre(d);
        circles = zoomed.run({BordersButton, UniverseButton}, "Circle");
        QCOMPARE(circles[0][u"r"].toDouble(), 1000.0);
        QCOMPARE(circles[0][u"x"].toDouble(), 5000.0);
        QCOMPARE(circles[2][u"r"].toDouble(), 30.0);
    }

    void planetsOnTheViewEdgeAreLeftOut()
    {
        GameData d = smallGame();
        addPlanet(d, 0, 500);
        addPlanet(d, 500, 0);
        addPlanet(d, 2000, 500);
        addPlanet(d, 500, 2000);
        addPlanet(d, 1000, 1000);
        Redraw r(d);
        const auto dots = r.run({UniverseButton}, "PSet");
        QCOMPARE(dots.size(), 1);
        QCOMPARE(dots[0][u"x"].toDouble(), 10000.0);
    }

    void territoryDotsAreDimmedByStrength()
    {
        GameData d = smallGame();
        d.RaceRGB[0] = {255, 3, 255};
        d.Grid.set(1, 2, 1, 50);
        d.Grid.set(4, 4, 1, 100); // the last column and row
        Redraw r(d);
        const auto dots = r.run({TerritoryButton}, "PSet");
        QCOMPARE(dots.size(), 2);
        QCOMPARE(dots[0][u"color"].toInt(), colour(128, 2, 128)); // 127.5 and 1.5 to even
        QCOMPARE(dots[0][u"x"].toDouble(), 2500.0);
        QCOMPARE(dots[0][u"y"].toDouble(), 5000.0);
        QCOMPARE(dots[1][u"color"].toInt(), colour(255, 3, 255));
        QCOMPARE(dots[1][u"x"].toDouble(), 10000.0);
        QCOMPARE(dots[0][u"DrawWidth"].toInt(), 2); // 15000 twips over 10020 units
        QCOMPARE(dots[0][u"DrawMode"].toInt(), 13);
        QCOMPARE(r.host.progressMaximum, 5);
        QCOMPARE(r.host.progressSteps, 5);

        Redraw wider(d, 26000); // 2.59 floored
        QCOMPARE(wider.run({TerritoryButton}, "PSet")[0][u"DrawWidth"].toInt(), 3);

        // A picture's canvas is 15 twips a pixel: at 667 pixels, 10005 twips,
        // the dots are one pixel wide, at 668 two.
        for (auto [pixels, width] : {std::pair{667, 1}, std::pair{668, 2}}) {
            MapPicture picture(pixels);
            QByteArray trace;
            picture.canvas().addSurface(std::make_shared<TraceRecorder>(trace));
            OverlayButtons buttons;
            buttons.setPressedQuietly(TerritoryButton, true);
            ZoomFlags zoom;
            picture.redraw(d, buttons, zoom, r.host);
            QCOMPARE(traceOps(trace, "PSet")[0][u"DrawWidth"].toInt(), width);
        }
    }

    // In reports of the new style the second scanner paints over the first.
    void scannerRangesInTheirColours()
    {
        GameData d = smallGame();
        addPlanet(d, 500, 500, "Current", {{ScannerRange, 10}, {ScannerRange2, 5}});
        Redraw r(d);
        const auto circles = r.run({ScannedButton}, "Circle");
        QCOMPARE(circles.size(), 2);
        QCOMPARE(circles[0][u"FillColor"].toInt(), colour(64, 0, 0));
        QCOMPARE(circles[1][u"FillColor"].toInt(), colour(64, 64, 0));
        QCOMPARE(circles[1][u"r"].toDouble(), 50.0);
        QCOMPARE(circles[0][u"DrawWidth"].toInt(), 4);
    }

    void layersComeInTheirFixedOrder()
    {
        GameData d = smallGame();
        addPlanet(d, 500, 500, "Current", {{ScannerRange, 10}, {Hab, 20.0}});
        Redraw r(d);
        const auto ops = r.run({HabButton, UniverseButton, ScannedButton});
        QStringList sequence;
        for (const QJsonObject &o : ops)
            sequence << o[u"op"].toString() + QString::number(o[u"r"].toDouble());
        // Cls; scanner circle and yellow dot; universe disc and dot; hab disc.
        QCOMPARE(sequence, QStringList({"Cls0", "Circle100", "PSet0", "Circle30", "PSet0", "Circle30"}));
    }

    void clearMapReleasesEverythingButTheZoom()
    {
        GameData d = smallGame();
        addPlanet(d, 500, 500);
        Redraw r(d);
        r.buttons.setPressedQuietly(ZoomInButton, true);
        r.zoom.ZoomArmed = 1;
        const auto ops = r.run({ClearMapButton, UniverseButton, OwnedButton});
        for (int b = ClearMapButton; b <= VmkButton; ++b)
            QCOMPARE(r.buttons.pressed(b), b == ZoomInButton);
        QVERIFY(traceOps(r.trace, "PSet").isEmpty());
        QCOMPARE(ops.last()[u"op"].toString(), QStringLiteral("Cls"));
    }

    void zoomIsArmedByTheRedrawAndReleasedToTheFullView()
    {
        GameData d = smallGame();
        Redraw r(d);
        r.buttons.setPressedQuietly(ZoomInButton, true);
        r.redraw.redrawUniverse();
        QCOMPARE(r.zoom.ZoomState, int16_t(1));
        QVERIFY(r.trace.isEmpty()); // arming leaves the picture alone
        d.Scale = 40;
        r.buttons.setPressed(ZoomInButton, false);
        QCOMPARE(d.Scale, 10.0);
        QCOMPARE(r.zoom.ZoomArmed, int16_t(0));
        QVERIFY(r.buttons.enabled(TerritoryButton));
    }

    void annotationsReplayAtTheView()
    {
        TestGame dir;
        GameData d = smallGame();
        d.AnnotationFilePath = dir.path("game.VMK");
        Redraw missing(d);
        missing.run({VmkButton});
        QCOMPARE(missing.host.messages, QStringList{QStringLiteral("No file found for this map")});
        QCOMPARE(d.DrawColourIndex, int16_t(1));

        dir.write("GAME.vmk", "L,100,100,200,300,3\r\nC,500,500,20,2\r\nT,10,20,Home,10.5\r\nC,1,1,1,9\r\n");
        Redraw replay(d);
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, replay.run({VmkButton}));
        const auto ops = traceOps(replay.trace);
        QCOMPARE(ops.size(), 4); // Cls, line, circle, text; colour 9 stops the replay
        QCOMPARE(ops[1][u"color"].toInt(), colour(0, 255, 0));
        QCOMPARE(ops[1][u"y2"].toDouble(), 3000.0);
        QCOMPARE(ops[2][u"r"].toDouble(), 200.0);
        QCOMPARE(ops[2][u"FillStyle"].toInt(), 1);
        QCOMPARE(ops[3][u"FontSize"].toDouble(), 10.0);
        QCOMPARE(d.AnnotationText, QStringLiteral("L,100,100,200,300,3\r\nC,500,500,20,2\r\nT,10,20,Home,10\r\n"));
    }
};

QTEST_GUILESS_MAIN(LayersTest)
#include "tst_layers.moc"
