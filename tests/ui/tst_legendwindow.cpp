// The legend's picture, sampled where its shapes and lines must be, and its
// lifetime: "OK" hides the one window, which shows again unchanged.

#include "LegendWindow.h"

#include <QImage>
#include <QPushButton>
#include <QTest>

namespace {

// A point of the design, in twips, on the drawn picture.
QRgb at(const QImage &image, double xTwips, double yTwips)
{
    const double scale = image.devicePixelRatio() / LegendWindow::TwipsPerPixel;
    return image.pixel(int(xTwips * scale), int(yTwips * scale)) & 0xFFFFFF;
}

int countColour(const QImage &image, const QRect &area, QRgb colour)
{
    int n = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            n += (image.pixel(x, y) & 0xFFFFFF) == colour;
    return n;
}

} // namespace

class LegendWindowTest : public QObject {
    Q_OBJECT

private slots:
    void picture()
    {
        LegendWindow legend;
        QCOMPARE(legend.windowTitle(), QStringLiteral("Key"));
        QCOMPARE(legend.size(), QSize(425, 298));
        const QImage image = legend.grab().toImage();

        QCOMPARE(at(image, 30, 30), 0x000000u);          // background
        QCOMPARE(at(image, 1470, 600), 0xC0C0C0u);       // frame line
        QCOMPARE(at(image, 1950, 1050), 0xFF0000u);      // "-45%"
        QCOMPARE(at(image, 3840, 1050), 0xFF00FFu);      // "-10% to -1%"
        QCOMPARE(at(image, 5730, 1050), 0x00FF00u);      // "45%"
        QCOMPARE(at(image, 1950, 2322), 0x0000FFu);      // "High Death"
        QCOMPARE(at(image, 4785, 2322), 0xFF8000u);      // "Average Growth"
        QCOMPARE(at(image, 727, 3427), 0x00C0C0u);       // planet
        QCOMPARE(at(image, 727, 3165), 0xFFFF00u);       // starbase ring

        // The territory disc is hatched: teal lines with black between them,
        // and nothing outside its circle.
        const QRect inside(240, 220, 20, 20);
        QVERIFY(countColour(image, inside, 0x00C0C0) > 20);
        QVERIFY(countColour(image, inside, 0x000000) > 200);
        QCOMPARE(at(image, 3120, 2805), 0x000000u);

        // Screen readers get the painted picture in words.
        for (const char *text : {"Hab Ranges: large red disc -45%", "small yellow disc 0% to 10%", "Growth: blue High Death",
                                 "orange Average Growth", "Planet with a Starbase or Orbital Fort", "Boundary for a Race"})
            QVERIFY2(legend.accessibleDescription().contains(QLatin1String(text)), text);

        // The texts are drawn in white.
        QVERIFY(countColour(image, QRect(12, 33, 78, 41), 0xFFFFFF) > 20); // "Hab Ranges"
        QVERIFY(countColour(image, QRect(315, 192, 82, 28), 0xFFFFFF) > 20); // "Boundary for a Race"
    }

    void okHidesTheWindowForTheNextShowing()
    {
        LegendWindow legend;
        QCOMPARE(legend.okButton()->text(), QStringLiteral("OK"));
        legend.show();
        QVERIFY(QTest::qWaitForWindowExposed(&legend));
        legend.okButton()->click();
        QVERIFY(!legend.isVisible());
        QCOMPARE(legend.result(), int(QDialog::Accepted));
        legend.show();
        QVERIFY(legend.isVisible());
    }
};

QTEST_MAIN(LegendWindowTest)
#include "tst_legendwindow.moc"
