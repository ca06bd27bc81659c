// The pointer over the map: readout, pick box, ring, zoom and annotations.

#include "InteractionHost.h"
#include "MapPointer.h"
#include "TraceRecorder.h"
#include "TraceScene.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

// The map with its pointer, as the window wires them: button clicks redraw,
// prompts answer from a queue.
struct Scene : InteractionHost, RedrawHost {
    GameData d;
    QByteArray trace;
    Canvas canvas{15000};
    OverlayButtons buttons;
    ZoomFlags zoom;
    MapRedraw mapRedraw{d, canvas, buttons, zoom, *this};
    ZoomTool zoomTool{d, zoom, buttons, canvas};
    AnnotationTools annotations{d, canvas};
    PlanetDetail detail;
    MapPointer pointer{d, zoom, zoomTool, annotations, detail};
    QStringList answers;
    int redraws = 0;

    explicit Scene(GameData game) : d(std::move(game))
    {
        canvas.addSurface(std::make_shared<TraceRecorder>(trace));
        buttons.onClick = [this](int) { redraw(); };
        zoomTool.random = [] { return 0.99; }; // steps of +10
    }
    void redraw() override { ++redraws; mapRedraw.redrawUniverse(); }
    QString askText(const QString &, const QString &, const QString &) override
    {
        return answers.isEmpty() ? QString() : answers.takeFirst();
    }
    void showMessage(const QString &) override {}
    QList<int> click(float x, float y) { return pointer.mouseDown(x, y, *this); }
};

// Planets "A" at (100, 100) and "B" at (103, 102): canvas (1000, 1000) and (1030, 1020) at Scale 10.
GameData twoPlanets()
{
    GameData d = smallGame();
    addPlanet(d, 100, 100, "Current", {{Name, u"A"}});
    addPlanet(d, 103, 102, "Current", {{Name, u"B"}});
    return d;
}

} // namespace

struct PickRow { float x, y; bool zoomed; int bX; QString planet; };
Q_DECLARE_METATYPE(PickRow)

class PointerTest : public QObject {
    Q_OBJECT
private slots:
    // The pick box reaches 60 right of and below a planet, 20 left of and
    // above it; the later of two in reach wins. Zoomed to six light years
    // (Scale 1666.67) planet A sits at (1667, 1667), rounded, not floored.
    // Planet B at X 500 is out of reach.
    void pickBox_data()
    {
        QTest::addColumn<PickRow>("row");
        QTest::newRow("60 right and below") << PickRow{1060, 1060, false, 500, " A"};
        QTest::newRow("61 right") << PickRow{1061, 1000, false, 500, " Deep Space"};
        QTest::newRow("61 below") << PickRow{1000, 1061, false, 500, " Deep Space"};
        QTest::newRow("20 left and above") << PickRow{980, 980, false, 500, " A"};
        QTest::newRow("21 left") << PickRow{979, 1000, false, 500, " Deep Space"};
        QTest::newRow("21 above") << PickRow{1000, 979, false, 500, " Deep Space"};
        QTest::newRow("both in reach: the later") << PickRow{1040, 1040, false, 103, " B"};
        QTest::newRow("zoomed: 60 right and below") << PickRow{1727, 1727, true, 103, " A"};
    }
    void pickBox()
    {
        QFETCH(PickRow, row);
        GameData d = twoPlanets();
        d.planet(2)[X] = Value(row.bX);
        Scene s(std::move(d));
        if (row.zoomed) {
            s.d.OriginX = s.d.OriginY = 99;
            s.d.FarX = s.d.FarY = 105;
            s.d.Scale = 10000.0 / 6;
        }
        s.pointer.mouseMove(row.x, row.y);
        QCOMPARE(s.pointer.readout().thePlanet, row.planet);
    }

    // The readout floors, adds the view minimum, and keeps the planet label
    // while a zoom is armed; a first motion before any game sets Scale to 1.
    void readout()
    {
        Scene blank{GameData()};
        blank.pointer.mouseMove(123.7f, 45.0f);
        QCOMPARE(blank.d.Scale, 1.0);
        QCOMPARE(blank.pointer.readout().XYCoord, " X:123 Y:45");

        Scene s(twoPlanets());
        zoomToCentre(s.d);
        s.pointer.mouseMove(39.9f, 20.0f);
        QCOMPARE(s.pointer.readout().XYCoord, " X:251 Y:251");
        s.d.setFullView();
        s.pointer.mouseMove(1000, 1000);
        s.zoom.ZoomState = 1;
        s.pointer.mouseMove(5000, 5000);
        QCOMPARE(s.pointer.readout().thePlanet, " A");
        QCOMPARE(s.pointer.readout().XYCoord, " X:500 Y:500");
    }

    // The ring marks the panel's planet; it follows the planet into a zoom and hides while the view leaves it out.
    void planetRing()
    {
        Scene s(twoPlanets());
        s.click(1040, 1040);
        QCOMPARE(s.pointer.marker.centre(), QPointF(1030, 1020));
        QCOMPARE(s.pointer.marker.planet(), 2);
        s.d.OriginX = s.d.OriginY = 99;
        s.d.FarX = s.d.FarY = 105;
        s.d.Scale = 10000.0 / 6;
        QCOMPARE(s.pointer.marker.centre(), QPointF(float(4 * 10000.0 / 6), float(3 * 10000.0 / 6)));
        zoomToCentre(s.d);
        QCOMPARE(s.pointer.marker.centre(), std::nullopt);
    }

    // Scale 4, corners from (1002, 1006) with a square 400 wide: the view
    // (250, 252)-(350, 352) at Scale 100, the grid released and disabled.
    void zoomWorkedExample()
    {
        GameData d = twoPlanets();
        d.UniverseExtent = 3500;
        d.setFullView();
        Scene s(std::move(d));
        for (int i = 0; i < OverlayButtonCount; ++i)
            s.buttons.setEnabled(i, true);
        s.buttons.setPressedQuietly(TerritoryButton, true);
        s.buttons.setPressed(ZoomInButton, true);
        QCOMPARE(s.zoom.ZoomState, int16_t(1));
        QCOMPARE(s.click(1002, 1006), QList<int>());
        QCOMPARE(QList<int>({s.d.OriginX, s.d.OriginY}), QList<int>({250, 252}));
        s.pointer.mouseMove(602, 3000); // left of the corner: the square still grows right
        const ZoomBox box = s.zoomTool.box();
        QCOMPARE(QList<float>({box.width, box.height, float(box.colour)}), QList<float>({400, 400, float(colour(255, 255, 255))}));
        s.click(0, 0);
        QCOMPARE(QList<double>({double(s.d.FarX), double(s.d.FarY), s.d.Scale}), QList<double>({350, 352, 100}));
        QVERIFY(!s.buttons.pressed(TerritoryButton) && !s.buttons.enabled(TerritoryButton));
        QVERIFY(!s.zoomTool.box().visible && s.buttons.enabled(ZoomInButton) && s.buttons.enabled(ClearMapButton));
    }

    // Each motion moves the square's grey by round(20 r - 10), held to 150..255;
    // a square too small divides by zero.
    void zoomShimmerAndTooSmall()
    {
        Scene s(twoPlanets());
        s.buttons.setPressed(ZoomInButton, true);
        s.click(1000, 1000);
        // +1 over white is held there, -1 shows it was; eleven steps of -10 reach the floor.
        for (const auto &[r, moves, expected] : {std::tuple{0.55, 1, 255}, {0.45, 1, 254}, {0.0, 11, 150}, {0.75, 1, 155}}) {
            s.zoomTool.random = [r] { return r; };
            for (int i = 0; i < moves; ++i)
                s.pointer.mouseMove(1004, 0);
            QCOMPARE(s.zoomTool.box().colour, colour(expected, expected, expected));
        }
        QVERIFY_THROWS_EXCEPTION(conv::DivisionByZeroError, s.click(0, 0));
    }

    // Escape on a half made zoom: all as before "Zoom In", with no redraw;
    // before arming there is nothing to cancel.
    void zoomCancelled()
    {
        Scene s(twoPlanets());
        QVERIFY(!s.zoomTool.cancel());
        s.buttons.setPressed(ZoomInButton, true);
        s.pointer.mouseMove(1400, 1200);
        s.click(1000, 1000);
        const QByteArray trace = s.trace;
        const int redraws = s.redraws;
        QVERIFY(s.zoomTool.cancel());
        QCOMPARE(s.redraws, redraws);
        QCOMPARE(s.trace, trace);
        QCOMPARE(QList<double>({s.d.Scale, double(s.d.OriginX), double(s.d.OriginY), double(s.zoom.ZoomState),
                                double(s.zoom.ZoomArmed)}), QList<double>({10, 0, 0, 0, 0}));
        QVERIFY(!s.buttons.pressed(ZoomInButton) && !s.zoomTool.box().visible);
    }

    // Records in light years from a zoomed view; a band is finished by the
    // tool chosen last; drawing never picks planets.
    // Clear then Save leaves an empty file.
    void annotationRecords()
    {
        Scene s(twoPlanets());
        s.d.OriginX = 200;
        s.d.OriginY = 100;
        s.pointer.tool = DrawTool::Line;
        s.click(1005, 2009);
        s.annotations.colourClick(2);
        QCOMPARE(s.click(3000, 4000), QList<int>());
        QCOMPARE(s.d.AnnotationText, "L,300,300,500,500,3\r\n");

        s.pointer.tool = DrawTool::Circle;
        s.click(1000, 1000);
        s.pointer.tool = DrawTool::Line; // the line tool does not finish it as a line...
        s.pointer.tool = DrawTool::Circle; // ...when the circle tool is chosen again
        s.click(1057, 1082); // 99.86 units away: a radius of 100 units, 10 light years
        QVERIFY(s.d.AnnotationText.endsWith("C,300,200,10,3\r\n"));

        QTemporaryDir dir;
        s.d.AnnotationFilePath = dir.filePath("game.VMK");
        QCOMPARE(s.annotations.save(), "Saved to " + s.d.AnnotationFilePath);
        s.buttons.setPressed(VmkButton, true);

        const int redraws = s.redraws;
        s.annotations.clear(s.buttons, s);
        QVERIFY(!s.buttons.pressed(VmkButton));
        QCOMPARE(s.redraws, redraws + 2); // the release's click, then the clear's own
        s.annotations.save();
        QCOMPARE(QFile(s.d.AnnotationFilePath).size(), 0);

        // A folder that cannot be written says why and keeps the text.
        s.d.AnnotationText = "T,1,1,x,8\r\n";
        s.d.AnnotationFilePath = dir.filePath("missing/game.VMK");
        QVERIFY(s.annotations.save().contains("could not be saved"));
        QCOMPARE(s.d.AnnotationText, "T,1,1,x,8\r\n");
    }

    void textSizes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("size");
        QTest::addColumn<QString>("record");
        QTest::newRow("7.9 refused") << "Hi" << "7.9" << "";
        QTest::newRow("8 accepted") << "Hi" << "8" << "T,100,100,Hi,8\r\n";
        QTest::newRow("12 then letters") << "Hi" << "12pt" << "T,100,100,Hi,12\r\n";
        QTest::newRow("fraction kept") << "Hi" << "10.5" << "T,100,100,Hi,10.5\r\n";
        QTest::newRow("cancelled text") << "" << "12" << "";
    }
    void textSizes()
    {
        QFETCH(QString, text);
        QFETCH(QString, size);
        Scene s(twoPlanets());
        s.pointer.tool = DrawTool::Text;
        s.answers = {text, size};
        QCOMPARE(s.click(1000, 1000), QList<int>());
        QTEST(s.d.AnnotationText, "record");
        const auto prints = traceOps(s.trace, "Print");
        QCOMPARE(prints.size(), s.d.AnnotationText.isEmpty() ? 0 : 1);
    }
};

QTEST_GUILESS_MAIN(PointerTest)
#include "tst_pointer.moc"
