// The redraw's layers checked through the trace of a recording canvas on
// small hand-made games: radii, colours, order and rounding.

#include "MapRedraw.h"
#include "TraceRecorder.h"
#include "TestGame.h"
#include "TraceScene.h"

#include <QTest>
#include <functional>

namespace {

struct Redraw {
    GameData &d;
    QByteArray trace;
    Canvas canvas;
    OverlayButtons buttons;
    ZoomFlags zoom;
    RedrawHost host;
    MapRedraw redraw{d, canvas, buttons, zoom, host};

    explicit Redraw(GameData &data, int widthTwips = 15000) : d(data), canvas(widthTwips)
    {
        canvas.addSurface(std::make_shared<TraceRecorder>(trace));
    }
    QList<QJsonObject> run(const QList<int> &pressed, const char *op = nullptr)
    {
        for (int b : pressed)
            buttons.setPressedQuietly(b, true);
        redraw.redrawUniverse();
        return traceOps(trace, op);
    }
};

using Ops = QList<QJsonObject>;
using Scene = std::function<void(GameData &)>;

} // namespace

struct HabRow { double hab; bool reported; int radius, colour; };
Q_DECLARE_METATYPE(HabRow)

struct GrowthRow { double population, hab; int colour, mines; };
Q_DECLARE_METATYPE(GrowthRow)

struct LayerRow { Scene scene; QList<int> buttons; QString op; Ops want; };
Q_DECLARE_METATYPE(LayerRow)

class LayersTest : public QObject {
    Q_OBJECT
private slots:
    void habRadiiAndColours_data()
    {
        QTest::addColumn<HabRow>("row");
        QTest::newRow("hostile -45") << HabRow{-45.0, true, 150, colour(255, 0, 0)};
        QTest::newRow("-10 is magenta") << HabRow{-10.0, true, 150, colour(255, 0, 255)};
        QTest::newRow("10 is yellow") << HabRow{10.0, true, 150, colour(255, 255, 0)};
        QTest::newRow("10.4 green, radius of 10") << HabRow{10.4, true, 150, colour(0, 255, 0)};
        QTest::newRow("11 rounds 16.5 to 16, raised to 30") << HabRow{11.0, true, 30, colour(0, 255, 0)};
        QTest::newRow("45") << HabRow{45.0, true, 68, colour(0, 255, 0)};
        QTest::newRow("45 unreported") << HabRow{45.0, false, 45, colour(0, 255, 0)};
        QTest::newRow("0 unexplored is grey") << HabRow{0.0, false, 30, colour(80, 60, 60)};
    }
    void habRadiiAndColours()
    {
        QFETCH(HabRow, row);
        const auto &[hab, reported, radius, colour] = row;
        GameData d = smallGame();
        addPlanet(d, 500, 500, reported ? "Current" : "", {{Hab, hab}});
        const Ops want{{{"r", radius}, {"FillColor", colour}, {"DrawMode", 15}, {"DrawStyle", 5}}};
        QCOMPARE(traceJson(Redraw(d).run({HabButton}, "Circle"), want), traceJson(want));
    }

    void growthColours_data()
    {
        QTest::addColumn<GrowthRow>("row");
        QTest::newRow("half full") << GrowthRow{250000.0, 50.0, colour(128, 127, 0), -1};
        QTest::newRow("3% counts as 5%") << GrowthRow{40000.0, 3.0, colour(204, 51, 0), -1};
        // 99.5 % full: the floor keeps it off red.
        QTest::newRow("almost full") << GrowthRow{497500.0, 50.0, colour(252, 3, 0), -1};
        QTest::newRow("dying") << GrowthRow{100000.0, -20.0, colour(142, 0, 255), -1};
        // Under ten mines a starbase world counts three million: 10 % full, 25.5 to 26.
        QTest::newRow("starbase, nine mines") << GrowthRow{300000.0, 50.0, colour(26, 229, 0), 9};
        QTest::newRow("starbase, ten mines") << GrowthRow{300000.0, 50.0, colour(153, 102, 0), 10};
        QTest::newRow("starbase, nine mines, no ironium") << GrowthRow{300000.0, 50.0, colour(153, 102, 0), 0};
    }
    void growthColours()
    {
        QFETCH(GrowthRow, row);
        const auto &[population, hab, colour, mines] = row;
        GameData d = smallGame();
        d.OwnRaceName = QStringLiteral("Us");
        for (const char16_t *owner : {u"Us", u"Them"}) // the other race's colony is not drawn
            addPlanet(d, 500, 500, {},
                      {{Owner, owner}, {Population, population}, {Resources, u"10"}, {Hab, hab}, {Starbase, u"None"}});
        if (mines >= 0) {
            PlanetInfo &p = d.planet(1);
            p[Starbase] = Value(u"Space Dock");
            p[Mines] = Value(mines == 0 ? 9 : mines);
            p[IronMR] = Value(mines == 0 ? 0 : 30);
        }
        // Neither layer draws an own world without colonists.
        addPlanet(d, 600, 600, {},
                  {{Owner, u"Us"}, {Population, 0}, {Resources, u"10"}, {Hab, 50}, {Starbase, u"Space Dock"}});
        const Ops want{{{"color", colour}, {"r", 50}, {"DrawMode", 13}}};
        QCOMPARE(traceJson(Redraw(d).run({GrowthButton}, "Circle"), want), traceJson(want));
    }

    // One game, the buttons pressed, and the fields of the operations drawn.
    void layers_data()
    {
        QTest::addColumn<LayerRow>("row");
        // Owned: two black surrounds first, then marker, marker, ring; then
        // attack, where a million colonists give 205 and 410 + 50 is capped.
        QTest::newRow("owned marks, attack") << LayerRow{[](GameData &d) {
            addPlanet(d, 100, 100, {}, {{Population, 1000000}, {Starbase, u"None"}, {OwnerIndex, 1}});
            addPlanet(d, 200, 200, {}, {{Population, 2000000}, {Starbase, u"Space Dock"}, {OwnerIndex, 2}});
            addPlanet(d, 300, 300, {}, {{Population, 0}, {Starbase, u"Space Dock"}}); // no colonists: not drawn
        }, {OwnedButton, AttackButton}, "Circle",
            {{{"r", 90}}, {{"r", 90}}, {{"FillColor", colour(255, 0, 0)}}, {{"FillColor", colour(0, 255, 0)}},
             {{"r", 70}, {"FillStyle", 1}}, {{"color", colour(205, 50, 0)}}, {{"color", colour(255, 0, 0)}}}};
        QTest::newRow("border under the marker") << LayerRow{[](GameData &d) {
            addPlanet(d, 500, 500, {}, {{OwnerIndex, 1}, {SOI, 50}});
        }, {BordersButton, UniverseButton}, "Circle",
            {{{"r", 500}, {"DrawMode", 15}}, {{"FillStyle", 7}, {"DrawMode", 13}}, {{"r", 30}}}};
        QTest::newRow("planets on the view's edge left out") << LayerRow{[](GameData &d) {
            for (auto [x, y] : {std::pair{0, 500}, {500, 0}, {2000, 500}, {500, 2000}, {1000, 1000}})
                addPlanet(d, x, y);
        }, {UniverseButton}, "PSet", {{{"x", 10000}}}};
        // 127.5 and 1.5 to even; 15000 twips over 10020 units give width 2.
        QTest::newRow("territory dimmed by strength") << LayerRow{[](GameData &d) {
            d.RaceRGB[0] = {255, 3, 255};
            d.Grid.set(1, 2, 1, 50);
            d.Grid.set(4, 4, 1, 100); // the last column and row
        }, {TerritoryButton}, "PSet",
            {{{"color", colour(128, 2, 128)}, {"x", 2500}, {"y", 5000}, {"DrawWidth", 2}, {"DrawMode", 13}},
             {{"color", colour(255, 3, 255)}, {"x", 10000}}}};
        // Cls; scanner circle and yellow dot; universe disc and dot; hab disc.
        QTest::newRow("layers in their fixed order") << LayerRow{[](GameData &d) {
            addPlanet(d, 500, 500, "Current", {{ScannerRange, 10}, {Hab, 20.0}});
        }, {HabButton, UniverseButton, ScannedButton}, "",
            {{{"op", "Cls"}}, {{"op", "Circle"}, {"r", 100}}, {{"op", "PSet"}, {"color", colour(255, 255, 0)}}, {{"op", "Circle"}, {"r", 30}},
             {{"op", "PSet"}}, {{"op", "Circle"}, {"r", 30}}}};
    }
    void layers()
    {
        QFETCH(LayerRow, row);
        const auto &[scene, buttons, op, want] = row;
        GameData d = smallGame();
        scene(d);
        QCOMPARE(traceJson(Redraw(d).run(buttons, op.isEmpty() ? nullptr : qPrintable(op)), want), traceJson(want));
    }

    // 32738 + 50 no longer fits the attack red's 16 bits: the drawing stops.
    void attackOverflowStopsTheDrawing()
    {
        GameData d = smallGame();
        addPlanet(d, 200, 200, {}, {{Population, 159700000}, {Starbase, u"Space Dock"}, {OwnerIndex, 2}});
        QVERIFY_THROWS_EXCEPTION(conv::OverflowError, Redraw(d).run({AttackButton}));
    }

    // The dots' width from the canvas: 26000 twips over 10020 units, 2.59 floored, plus one.
    void territoryDotWidth()
    {
        GameData d = smallGame();
        d.Grid.set(1, 2, 1, 50);
        QCOMPARE(Redraw(d, 26000).run({TerritoryButton}, "PSet")[0][u"DrawWidth"].toInt(), 3);
    }

    void annotationsReplayAtTheView()
    {
        TestGame dir;
        GameData d = smallGame();
        d.AnnotationFilePath = dir.path("game.VMK");
        dir.write("GAME.vmk", "L,100,100,200,300,3\r\nC,500,500,20,2\r\nT,10,20,Home,10.5\r\nC,1,1,1,9\r\n");
        Redraw replay(d);
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, replay.run({VmkButton}));
        // Cls, line, circle, text; colour 9 stops the replay.
        const Ops want{{{"op", "Cls"}}, {{"color", colour(0, 255, 0)}, {"y2", 3000}}, {{"r", 200}, {"FillStyle", 1}},
                       {{"FontSize", 10}}};
        QCOMPARE(traceJson(traceOps(replay.trace), want), traceJson(want));
        QCOMPARE(d.AnnotationText, QStringLiteral("L,100,100,200,300,3\r\nC,500,500,20,2\r\nT,10,20,Home,10\r\n"));
    }
};

QTEST_GUILESS_MAIN(LayersTest)
#include "tst_layers.moc"
