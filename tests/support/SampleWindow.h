#pragma once
// The main window shown with a game loaded through the file selection, and
// the map driven as a user drives it: pixels of universe positions, hovers,
// clicks and the zoom by two clicks.

#include "MainWindow.h"
#include "MapCanvasWidget.h"
#include "OpenFileDialog.h"
#include "OverlayButtonBar.h"
#include "RasterSurface.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QStatusBar>
#include <QTest>
#include <QToolButton>

// A pointer motion over the map; QTest's own moves the platform cursor,
// which the offscreen platform does not turn into events.
inline void hover(QWidget *map, const QPoint &p)
{
    QMouseEvent move(QEvent::MouseMove, QPointF(p), map->mapToGlobal(QPointF(p)), Qt::NoButton, Qt::NoButton, {});
    QApplication::sendEvent(map, &move);
}

// Picks the map file and the game year in the selection window and generates.
inline bool load(MainWindow &w, const QString &map, const QString &year = {})
{
    OpenFileDialog &dialog = w.openFileDialog();
    if (!dialog.openOn(map))
        return false;
    QTest::keyClicks(dialog.gameYearBox(), year);
    dialog.confirm();
    return w.generate();
}

// The planet ring on `image` around widget pixel `centre`: white 9 pixels to
// its right, give or take the pixel its smoothing spreads over.
inline bool ringed(const QImage &image, QPoint centre)
{
    for (int dx = 8; dx <= 10; ++dx)
        if (image.pixelColor(centre + QPoint(dx, 0)) == QColor(Qt::white))
            return true;
    return false;
}

struct SampleWindow {
    mutable MainWindow w;
    explicit SampleWindow(const QString &mapFile, QSize size = {})
    {
        if (size.isValid())
            w.resize(size);
        w.show();
        if (!QTest::qWaitForWindowExposed(&w) || !load(w, mapFile, QStringLiteral("2431")))
            qFatal("the sample did not load in a shown window");
    }
    // Keys reach the window only while it is active; the offscreen
    // platform leaves a window closed since then active.
    void activate() const
    {
        w.activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), &w);
    }
    MapCanvasWidget *map() const { return w.mapWidget(); }
    QToolButton *button(int b) const { return w.overlayBar()->button(b); }
    void press(int b) const { QTest::mouseClick(button(b), Qt::LeftButton); }
    QAction *action(const char *name) const { return w.findChild<QAction *>(QLatin1String(name)); }
    QString label(const char *name) const { return w.findChild<QLabel *>(QLatin1String(name))->text(); }
    QString status() const { return w.statusBar()->currentMessage(); }
    QImage picture() const { return w.raster().image(); }
    QImage screen() const { return map()->grab().toImage(); }
    QList<double> view() const { return {w.gameData().Scale, double(w.gameData().OriginX), double(w.gameData().OriginY)}; }

    // The widget pixel of a universe position, rounded, and the one just
    // right of and below a planet, within its pick box.
    QPointF pixelOf(double x, double y) const
    {
        const GameData &d = w.gameData();
        const double k = map()->width() / double(Canvas::ScaleWidth);
        return QPointF((x - d.OriginX) * d.Scale * k, (y - d.OriginY) * d.Scale * k);
    }
    QPoint planetPixel(double x, double y) const { return pixelOf(x, y).toPoint(); }
    QPoint planetPixel(const PlanetInfo &p) const { return planetPixel(p[X].val(), p[Y].val()); }
    QPoint at(const PlanetInfo &p) const
    {
        const QPointF f = pixelOf(p[X].val(), p[Y].val());
        return QPoint(int(f.x()) + 1, int(f.y()) + 1);
    }
    void click(QPoint p) const { QTest::mouseClick(map(), Qt::LeftButton, {}, p); }
    const PlanetInfo &named(const QString &name) const
    {
        for (const PlanetInfo &p : w.gameData().Planets)
            if (p[Name].text() == name)
                return p;
        qFatal("no planet %s", qPrintable(name));
    }
    // Zoomed by two clicks: the first at (x, y), the second `side` light
    // years right of and below it; the zoom makes its own square of them.
    void zoomTo(double x, double y, double side) const
    {
        press(ZoomInButton);
        click(planetPixel(x, y));
        hover(map(), planetPixel(x + side, y + side));
        click(planetPixel(x + side, y + side));
    }
    // A zoomed view keeps "Zoom In" pressed; releasing it shows the whole universe.
    void fullView() const
    {
        if (button(ZoomInButton)->isChecked())
            press(ZoomInButton);
    }
};
