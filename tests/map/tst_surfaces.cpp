// The canvas's surfaces: the picture on its pixels (on 1002 pixels one pixel is
// ten canvas units), and the trace as exact text, since scripts diff traces.

#include "Colour.h"
#include "PictureChecks.h"
#include "RasterSurface.h"
#include "TraceRecorder.h"

#include <QTest>
#include <numbers>

namespace {

constexpr int32_t Red = rgb(255, 0, 0), Green = rgb(0, 255, 0);
constexpr QRgb RedPixel = 0xFFFF0000, GreenPixel = 0xFF00FF00, YellowPixel = 0xFFFFFF00, BlackPixel = 0xFF000000;

// A disc without rim.
void disc(RasterSurface &surface, float x, float y, float r, int fillStyle, int32_t fill, int drawMode = 13)
{
    const DrawingState s{.DrawMode = drawMode, .DrawStyle = 5, .FillStyle = fillStyle, .FillColor = fill};
    surface.circle(s, x, y, r, std::nullopt, std::nullopt);
}

QByteArray json(const char *singleQuoted) { return QByteArray(singleQuoted).replace('\'', '"'); }

} // namespace

class SurfacesTest : public QObject {
    Q_OBJECT
private slots:
    void mergePenRimsAndCls()
    {
        RasterSurface surface(1002);
        disc(surface, 500, 500, 300, 0, Red);
        disc(surface, 500, 500, 200, 0, Green, 15);
        QCOMPARE(surface.image().pixel(50, 50), YellowPixel);
        QCOMPARE(surface.image().pixel(75, 50), RedPixel);

        // A rim in ForeColor and no fill.
        DrawingState s{.DrawMode = 15, .DrawWidth = 4, .ForeColor = Green};
        surface.cls();
        disc(surface, 500, 500, 300, 0, Red);
        surface.circle(s, 500, 500, 200, std::nullopt, std::nullopt);
        QCOMPARE(surface.image().pixel(70, 50), YellowPixel);
        QCOMPARE(surface.image().pixel(50, 30), YellowPixel);
        QCOMPARE(surface.image().pixel(50, 50), RedPixel);

        // An invisible rim leaves even a wide rim's outer pixels alone.
        s.DrawStyle = 5;
        s.FillStyle = 0;
        s.FillColor = Green;
        surface.cls();
        surface.circle(s, 500, 500, 200, Red, std::nullopt);
        const QRect fill = paintedArea(surface.image()).first;
        QVERIFY(QRect(29, 29, 42, 42).contains(fill) && fill.contains(QRect(31, 31, 38, 38)));
    }

    // Two discs hatched one after the other look like one hatched area.
    void hatchKeepsGapsAndRunsOnAcrossDiscs()
    {
        RasterSurface twoDiscs(1002), oneDisc(1002), mask(1002);
        for (RasterSurface *surface : {&twoDiscs, &oneDisc})
            disc(*surface, 5000, 5000, 10000, 0, Red);
        for (float x : {400, 600}) {
            disc(twoDiscs, x, 500, 150, 7, 0);
            disc(mask, x, 500, 150, 0, Green);
        }
        disc(oneDisc, 500, 500, 400, 7, 0);
        int hatched = 0, gaps = 0;
        for (int y = 0; y < 100; ++y)
            for (int x = 0; x < 100; ++x) {
                const QRgb pixel = twoDiscs.image().pixel(x, y);
                const bool inside = mask.image().pixel(x, y) == GreenPixel;
                QCOMPARE(pixel, inside ? oneDisc.image().pixel(x, y) : RedPixel);
                hatched += inside && pixel == BlackPixel;
                gaps += inside && pixel == RedPixel;
            }
        QVERIFY(hatched > 50 && gaps > hatched);
    }

    // Dots around the pixel corner 50,50, or over the left or right edge;
    // widths above 4 take the general loop.
    void dotIsDrawWidthSquareAroundThePoint_data()
    {
        QTest::addColumn<float>("x");
        QTest::addColumn<int>("width");
        QTest::addColumn<QRect>("expected");
        QTest::newRow("1") << 500.0f << 1 << QRect(50, 50, 1, 1);
        QTest::newRow("2") << 500.0f << 2 << QRect(49, 49, 2, 2);
        QTest::newRow("4") << 500.0f << 4 << QRect(48, 48, 4, 4);
        QTest::newRow("5") << 500.0f << 5 << QRect(48, 48, 5, 5);
        QTest::newRow("1 outside") << -3.0f << 1 << QRect();
        QTest::newRow("2 half outside") << -3.0f << 2 << QRect(0, 49, 1, 2);
        QTest::newRow("2 half outside on the right") << 10015.0f << 2 << QRect(1001, 49, 1, 2);
    }

    void dotIsDrawWidthSquareAroundThePoint()
    {
        QFETCH(float, x);
        QFETCH(int, width);
        QFETCH(QRect, expected);
        RasterSurface surface(1002);
        DrawingState s;
        s.DrawWidth = width;
        surface.pset(s, x, 500, Red);
        s.DrawMode = 15;
        surface.pset(s, x, 500, Green);
        QCOMPARE(paintedArea(surface.image()), std::make_pair(expected, expected.width() * expected.height()));
        if (!expected.isEmpty())
            QCOMPARE(surface.image().pixel(expected.topLeft()), YellowPixel);
    }

    // Filled quadrants, in the order upper right, upper left, lower left, lower right.
    void sectorRunsCounterClockwise_data()
    {
        const float pi = std::numbers::pi_v<float>;
        QTest::addColumn<float>("start");
        QTest::addColumn<float>("end");
        QTest::addColumn<QString>("filled");
        QTest::newRow("quarter turn up") << 0.0f << 0.5f * pi << "X---";
        QTest::newRow("right half, through 0") << 1.5f * pi << 0.5f * pi << "X--X";
        QTest::newRow("end below start") << 0.5f * pi << 0.0f << "-XXX";
        QTest::newRow("end equal to start: nothing") << 0.25f * pi << 0.25f * pi << "----";
    }

    void sectorRunsCounterClockwise()
    {
        QFETCH(float, start);
        QFETCH(float, end);
        RasterSurface surface(1002);
        const DrawingState s{.DrawStyle = 5, .FillStyle = 0, .FillColor = Green};
        surface.circle(s, 500, 500, 300, std::nullopt, std::make_pair(start, end));
        QString found;
        for (const QPoint p : {QPoint(60, 40), QPoint(40, 40), QPoint(40, 60), QPoint(60, 60)})
            found += surface.image().pixel(p) == GreenPixel ? u'X' : u'-';
        QTEST(found, "filled");
    }

    // Text is exactly ForeColor, starts at the current position, is as wide
    // as measured, and keeps its pixel size on a larger picture.
    void printsAtCurrentPosition()
    {
        const DrawingState s{.ForeColor = Green, .CurrentX = 300, .CurrentY = 400, .FontSize = 12};
        QSize sizes[2];
        for (int scale : {1, 2}) {
            RasterSurface surface(1002 * scale);
            surface.print(s, QStringLiteral("Hello"));
            const auto [box, count] = paintedArea(surface.image());
            QCOMPARE(countColour(surface.image(), GreenPixel), count);
            QVERIFY(box.left() - 30 * scale <= 3 && box.left() >= 30 * scale);
            QVERIFY(box.top() - 40 * scale <= 8 && box.top() >= 40 * scale);
            const double width = *surface.textWidth(s, QStringLiteral("Hello")) * scale / 10;
            QVERIFY(qAbs(width - box.width()) <= 3);
            sizes[scale - 1] = box.size();
        }
        QCOMPARE(sizes[0], sizes[1]);
        // Text of no size takes no room.
        QCOMPARE(*RasterSurface(1002).textWidth(DrawingState{.FontSize = 0}, QStringLiteral("Hello")), 0.0);
    }

    void writesEveryOperationWithTheStateInForce()
    {
        QByteArray trace;
        Canvas canvas;
        canvas.addSurface(std::make_shared<TraceRecorder>(trace));
        DrawingState &s = canvas.state();

        canvas.cls();
        s.DrawMode = 15;
        s.DrawStyle = 5;
        s.FillStyle = 0;
        s.FillColor = 65280;
        canvas.circle(1234.5f, 0.1f, 50.0f);
        s.DrawMode = 13;
        s.DrawStyle = 0;
        s.FillStyle = 1;
        canvas.sector(840, 840, 800, 0, 0.017453292f, 1.8849556f);
        s.DrawWidth = 2;
        canvas.line(0, 0, 10000, 10000, 16777215);
        canvas.pset(-5.5f, 1e-7f, 4);
        s.CurrentX = 100;
        s.CurrentY = 200.25f;
        s.FontSize = 8.25;
        const QString text = QStringLiteral("Fort \"Nine\"\t\\ \u00e9\n\x01\u4e2d");
        canvas.print(text);

        QCOMPARE(trace, json("{'op':'Cls'}\n"
                             "{'op':'Circle','x':1234.5,'y':0.1,'r':50,'color':null,'DrawMode':15,"
                             "'DrawStyle':5,'DrawWidth':1,'FillStyle':0,'FillColor':65280}\n"
                             "{'op':'Circle','x':840,'y':840,'r':800,'color':0,'DrawMode':13,'DrawStyle':0,"
                             "'DrawWidth':1,'FillStyle':1,'FillColor':65280,'start':0.017453292,'end':1.8849556}\n"
                             "{'op':'Line','x1':0,'y1':0,'x2':10000,'y2':10000,'color':16777215,'DrawMode':13,"
                             "'DrawStyle':0,'DrawWidth':2}\n"
                             "{'op':'PSet','x':-5.5,'y':1e-07,'color':4,'DrawMode':13,'DrawWidth':2}\n"
                             "{'op':'Print','x':100,'y':200.25,'text':'Fort \\'Nine\\'\\t\\\\ \xc3\xa9\\n\\u0001\xe4\xb8\xad',"
                             "'color':16777215,'FontSize':8.25}\n"));
    }
};

QTEST_MAIN(SurfacesTest)
#include "tst_surfaces.moc"
