// The map driven with the mouse and the keyboard offscreen: hovering and
// clicking planets, the floating rubber band, zoom square and planet ring,
// the zoom by two clicks, finding a planet by name, measuring a trip, a new
// turn reloaded, the picture after a resize, the keys, and the controls as
// the accessibility interface sees them.

#include "AccessibleText.h"
#include "AnnotationToolBox.h"
#include "CliRun.h"
#include "DetailPanel.h"
#include "FocusMark.h"
#include "IsolatedSettings.h"
#include "LegendWindow.h"
#include "MainWindow.h"
#include "MapCanvasWidget.h"
#include "MapView.h"
#include "ModalWindow.h"
#include "OpenFileDialog.h"
#include "OverlayButtonBar.h"
#include "PictureChecks.h"
#include "RasterSurface.h"
#include "RecordingSink.h"
#include "ReportWatch.h"
#include "FindPlanetField.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QMouseEvent>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSaveFile>
#include <QScreen>
#include <QSignalSpy>
#include <QStatusBar>
#include <QCompleter>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

namespace {

// A pointer motion over the map; QTest's own moves the platform cursor,
// which the offscreen platform does not turn into events.
void hover(QWidget *map, const QPoint &p)
{
    QMouseEvent move(QEvent::MouseMove, QPointF(p), map->mapToGlobal(QPointF(p)), Qt::NoButton, Qt::NoButton, {});
    QApplication::sendEvent(map, &move);
}

const QString Sample = QStringLiteral(VELTRO_SAMPLES "/MARCHES.map");

// The planet ring on `image` around widget pixel `centre`: white 9 pixels to
// its right, give or take the pixel its smoothing spreads over.
bool ringed(const QImage &image, QPoint centre)
{
    for (int dx = 8; dx <= 10; ++dx)
        if (image.pixelColor(centre + QPoint(dx, 0)) == QColor(Qt::white))
            return true;
    return false;
}

// The sample game loaded in a shown window, the borders drawn.
struct SampleWindow {
    mutable MainWindow w;
    explicit SampleWindow(const QString &mapFile = Sample)
    {
        w.resize(1200, 850);
        w.show();
        if (!QTest::qWaitForWindowExposed(&w))
            qFatal("the window never showed");
        OpenFileDialog &dialog = w.openFileDialog();
        dialog.openOn(mapFile);
        QTest::keyClicks(dialog.gameYearBox(), QStringLiteral("2431"));
        dialog.confirm();
        if (!w.generate())
            qFatal("the sample did not load");
        QTest::mouseClick(w.overlayBar()->button(BordersButton), Qt::LeftButton);
    }
    MapCanvasWidget *map() const { return w.mapWidget(); }
    QString label(const char *name) const { return w.findChild<QLabel *>(QLatin1String(name))->text(); }

    // The widget pixel of a universe position.
    QPoint planetPixel(double x, double y) const
    {
        const GameData &d = w.gameData();
        const double k = map()->width() / double(Canvas::ScaleWidth);
        return QPoint(qRound((x - d.OriginX) * d.Scale * k), qRound((y - d.OriginY) * d.Scale * k));
    }
    // The widget pixel just right of and below a universe position, within its planet's pick box.
    QPoint at(double x, double y) const
    {
        const GameData &d = w.gameData();
        const double k = map()->width() / double(Canvas::ScaleWidth);
        return QPoint(int((x - d.OriginX) * d.Scale * k) + 1, int((y - d.OriginY) * d.Scale * k) + 1);
    }
    QPoint planetPixel(const PlanetInfo &p) const { return planetPixel(p[X].val(), p[Y].val()); }
    QPoint at(const PlanetInfo &p) const { return at(p[X].val(), p[Y].val()); }
    const PlanetInfo &named(const QString &name) const
    {
        const GameData &d = w.gameData();
        for (int i = 1; i <= d.PlanetCount; ++i)
            if (d.planet(i)[Name].text() == name)
                return d.planet(i);
        qFatal("no planet %s", qPrintable(name));
    }
    // Zoomed by two clicks: the first at (x, y), the second `side` light
    // years right of and below it; the zoom makes its own square of them.
    void zoomTo(double x, double y, double side) const
    {
        QTest::mouseClick(w.overlayBar()->button(ZoomInButton), Qt::LeftButton);
        QTest::mouseClick(map(), Qt::LeftButton, {}, planetPixel(x, y));
        hover(map(), planetPixel(x + side, y + side));
        QTest::mouseClick(map(), Qt::LeftButton, {}, planetPixel(x + side, y + side));
    }
    QString status() const { return w.statusBar()->currentMessage(); }
    // The first planet with no other within 20 light years, reported or not.
    int lonePlanet(bool reported = true) const
    {
        const GameData &d = w.gameData();
        for (int i = 1; i <= d.PlanetCount; ++i) {
            bool alone = d.planet(i)[AgeText].text().isEmpty() != reported;
            for (int j = 1; j <= d.PlanetCount && alone; ++j)
                alone = i == j || std::hypot(d.planet(i)[X].val() - d.planet(j)[X].val(),
                                             d.planet(i)[Y].val() - d.planet(j)[Y].val()) > 20;
            if (alone)
                return i;
        }
        qFatal("no lone planet");
    }
};

} // namespace

class MapInteractionTest : public QObject {
    Q_OBJECT
private slots:
    void init() { m_sink.messages.clear(); }

    void hoverAndClickAPlanet()
    {
        SampleWindow s;
        const int lone = s.lonePlanet();
        const PlanetInfo &p = s.w.gameData().planet(lone);
        const QString name = p[Name].text();
        hover(s.map(), s.at(p[X].val(), p[Y].val()));
        QCOMPARE(s.label("theplanet"), " " + name);
        QCOMPARE(s.map()->toolTip(), "Click for more information on " + name);
        QVERIFY(QRegularExpression(QStringLiteral("^ X:\\d+ Y:\\d+$")).match(s.label("XYCoord")).hasMatch());
        const QImage before = s.w.raster().image();
        const QString annotations = s.w.gameData().AnnotationText;
        QTest::mouseClick(s.map(), Qt::LeftButton, {}, s.at(p[X].val(), p[Y].val()));
        QCOMPARE(s.label("PlanetName"), name);
        QVERIFY(s.label("RHab0").endsWith('%'));
        // Screen readers read each value with its caption, or its row's and column's.
        auto panel = [&s](const char *name) { return readOut(s.w.findChild<QLabel *>(QLatin1String(name))); };
        QCOMPARE(panel("PlanetName"), "Planet: " + name);
        QVERIFY(!s.label("Grav2").isEmpty() && !s.label("IronMCT").isEmpty());
        QCOMPARE(panel("Grav2"), "Gravity Original: " + s.label("Grav2"));
        QCOMPARE(panel("IronMCT"), "Ironium Conc.: " + s.label("IronMCT"));
        QCOMPARE(panel("RHab0"), s.label("RName0") + ' ' + s.label("RHab0"));
        QVERIFY(m_sink.messages.isEmpty());
        // A ring marks the planet on the screen only: 9 pixels round its point.
        QVERIFY(ringed(s.map()->grab().toImage(), s.planetPixel(p)));
        QCOMPARE(s.w.raster().image(), before);
        QCOMPARE(s.w.gameData().AnnotationText, annotations);
        QTest::mouseClick(s.w.overlayBar()->button(UniverseButton), Qt::LeftButton);
        QVERIFY(ringed(s.map()->grab().toImage(), s.planetPixel(p)));
        QVERIFY(!ringed(s.w.raster().image(), s.planetPixel(p)));

        // A planet never reported has no gravity: each click scores it
        // afresh, nothing carried over from the click before.
        const PlanetInfo &unknown = s.w.gameData().planet(s.lonePlanet(false));
        QTest::mouseClick(s.map(), Qt::LeftButton, {}, s.at(unknown[X].val(), unknown[Y].val()));
        QCOMPARE(s.label("ReportAge"), "Unexplored");
        for (int i = 0; i < s.w.gameData().PlayerCount; ++i)
            QCOMPARE(s.w.detailPanel()->raceHab(i)->text(), "0%");

        // Deep space names nothing and leaves the panel as it was.
        hover(s.map(), QPoint(2, s.map()->height() - 2));
        QTest::mouseClick(s.map(), Qt::LeftButton, {}, QPoint(2, s.map()->height() - 2));
        QCOMPARE(s.label("theplanet"), " Deep Space");
        QCOMPARE(s.label("PlanetName"), unknown[Name].text());
    }

    // The band follows the pointer over the picture without entering it;
    // a saved map holds the picture alone. The second click draws the line.
    void theRubberBandFloatsOverThePicture()
    {
        SampleWindow s;
        s.w.annotationTools()->toolButton(DrawTool::Line)->click();
        QTest::mouseClick(s.map(), Qt::LeftButton, {}, QPoint(100, 100));
        const QImage before = s.w.raster().image();
        hover(s.map(), QPoint(300, 250));
        QCOMPARE(s.w.raster().image(), before);
        // Yellow, the colour of the file's last line, halfway along on screen only.
        const QImage shown = s.map()->grab().toImage();
        QCOMPARE(shown.pixelColor(200, 175), QColor(255, 255, 0));
        QVERIFY(before.pixelColor(200, 175) != QColor(255, 255, 0));
        QTest::mouseClick(s.map(), Qt::LeftButton, {}, QPoint(300, 250));
        QVERIFY(s.w.raster().image() != before);
        QVERIFY(s.w.gameData().AnnotationText.endsWith(QStringLiteral(",5\r\n"))); // the file's last line colour
        QVERIFY(s.w.gameData().AnnotationText.contains(QStringLiteral("\r\nL,")));
    }

    // Corners by mouse: the picture becomes the square; a square too small
    // gives one message and the full view with every button back.
    void zoomWithTwoClicks()
    {
        SampleWindow s;
        QTest::mouseClick(s.w.overlayBar()->button(TerritoryButton), Qt::LeftButton);
        const double fullScale = s.w.gameData().Scale;
        QTest::mouseClick(s.w.overlayBar()->button(ZoomInButton), Qt::LeftButton);
        QTest::mouseClick(s.map(), Qt::LeftButton, {}, QPoint(100, 100));
        QVERIFY(!s.w.overlayBar()->button(BordersButton)->isEnabled());
        hover(s.map(), QPoint(300, 120));
        QTest::mouseClick(s.map(), Qt::LeftButton, {}, QPoint(5, 5));
        QVERIFY(s.w.gameData().Scale > 3 * fullScale);
        QVERIFY(!s.w.overlayBar()->button(TerritoryButton)->isEnabled());
        QVERIFY(!s.w.overlayBar()->button(TerritoryButton)->isChecked());
        QVERIFY(s.w.overlayBar()->button(BordersButton)->isEnabled());
        QVERIFY(m_sink.messages.isEmpty());

        QTest::mouseClick(s.w.overlayBar()->button(ZoomInButton), Qt::LeftButton); // back to the full view
        QTest::mouseClick(s.w.overlayBar()->button(ZoomInButton), Qt::LeftButton);
        QTest::mouseClick(s.map(), Qt::LeftButton, {}, QPoint(100, 100));
        QTest::mouseClick(s.map(), Qt::LeftButton, {}, QPoint(100, 100));
        QCOMPARE(m_sink.messages.size(), 1);
        QVERIFY(m_sink.messages[0].contains(QStringLiteral("too small")));
        QCOMPARE(s.w.gameData().Scale, fullScale);
        for (int i = 0; i < OverlayButtonCount; ++i)
            QVERIFY(s.w.overlayBar()->button(i)->isEnabled());
        QVERIFY(!s.w.overlayBar()->button(ZoomInButton)->isChecked());
    }

    // Escape gives up a half-made zoom: the picture, the view and the
    // square on screen are as before, and every button is back.
    void escapeGivesUpTheZoom()
    {
        SampleWindow s;
        const QImage before = s.w.raster().image();
        const double scale = s.w.gameData().Scale;
        QTest::mouseClick(s.w.overlayBar()->button(ZoomInButton), Qt::LeftButton);
        QTest::mouseClick(s.map(), Qt::LeftButton, {}, QPoint(100, 100));
        hover(s.map(), QPoint(300, 120));
        QVERIFY(!s.w.overlayBar()->button(BordersButton)->isEnabled());
        // Across the square's top edge, as the screen shows it and as the picture has it.
        const auto column = [](const QImage &image, QPoint at) {
            QList<QColor> colours;
            for (int dy = -2; dy <= 2; ++dy)
                colours << image.pixelColor(at + QPoint(0, dy));
            return colours;
        };
        const auto onScreen = [&] {
            return column(s.w.screen()->grabWindow(s.w.winId()).toImage(), s.map()->mapTo(&s.w, QPoint(200, 100)));
        };
        const QList<QColor> picture = column(before, QPoint(200, 100));
        QTRY_VERIFY(onScreen() != picture);
        QTest::keyClick(s.map(), Qt::Key_Escape);
        QCOMPARE(s.w.raster().image(), before);
        QCOMPARE(s.w.gameData().Scale, scale);
        QCOMPARE(QList<int>({s.w.gameData().OriginX, s.w.gameData().OriginY}), QList<int>({0, 0}));
        for (int i = 0; i < OverlayButtonCount; ++i)
            QVERIFY(s.w.overlayBar()->button(i)->isEnabled());
        QVERIFY(!s.w.overlayBar()->button(ZoomInButton)->isChecked());
        QTRY_COMPARE(onScreen(), picture);
        QVERIFY(m_sink.messages.isEmpty());
    }

    // Ctrl+F and a name, whole or in part, in any case, completed as it is
    // typed: the panel and the ring as a click gives them, and a zoomed view
    // that leaves the planet out moved to centre it at the same scale. An
    // unknown name is said so, and nothing else changes.
    void findPlanet_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("found");
        QTest::addColumn<bool>("zoomed");
        QTest::newRow("start of a name") << "Zarq" << "Zarquon" << false;
        QTest::newRow("middle of a name") << "farqua" << "McFarquardt" << false;
        QTest::newRow("any case") << "gRIM reaPER" << "Grim Reaper" << false;
        QTest::newRow("outside the zoomed view") << "Glenn" << "Glenn" << true;
        QTest::newRow("inside the zoomed view") << "all work" << "All Work" << true;
        QTest::newRow("unknown") << "Vogsphere" << QString() << true;
    }
    void findPlanet()
    {
        QFETCH(QString, typed);
        QFETCH(QString, found);
        SampleWindow s;
        QFETCH(bool, zoomed);
        if (zoomed)
            s.zoomTo(60, 150, 200);
        const GameData &d = s.w.gameData();
        const QList<double> view{d.Scale, double(d.OriginX), double(d.OriginY)};
        const QImage before = s.w.raster().image();
        QTest::keyClick(&s.w, Qt::Key_F, Qt::ControlModifier);
        QLineEdit *field = s.w.findField()->edit();
        QTRY_VERIFY(field->hasFocus());
        QTest::keyClicks(field, typed);
        QCompleter *completer = s.w.findField()->completer();
        QStringList offered;
        for (int i = 0; completer->setCurrentRow(i); ++i)
            offered << completer->currentCompletion();
        QCOMPARE(offered.contains(found), !found.isEmpty());
        QTest::keyClick(field, Qt::Key_Return);

        if (found.isEmpty()) {
            QCOMPARE(s.status(), "No planet is named \"" + typed + '"');
            QCOMPARE(s.label("PlanetName"), QString());
            QCOMPARE(s.w.markedPlanet(), 0);
            QCOMPARE(QList<double>({d.Scale, double(d.OriginX), double(d.OriginY)}), view);
            QCOMPARE(s.w.raster().image(), before);
            return;
        }
        QCOMPARE(s.label("PlanetName"), found);
        const PlanetInfo &p = s.named(found);
        QCOMPARE(&d.planet(s.w.markedPlanet()), &p);
        QVERIFY(ringed(s.map()->grab().toImage(), s.planetPixel(p)));
        QCOMPARE(d.Scale, view[0]);
        const bool moved = view != QList<double>({d.Scale, double(d.OriginX), double(d.OriginY)});
        QCOMPARE(moved, found == "Glenn");
        if (moved) {
            QVERIFY(qAbs((d.OriginX + d.FarX) / 2.0 - p[X].val()) <= 1);
            QVERIFY(qAbs((d.OriginY + d.FarY) / 2.0 - p[Y].val()) <= 1);
            QVERIFY(s.w.raster().image() != before);
        } else {
            QCOMPARE(s.w.raster().image(), before);
        }
        QVERIFY(!ringed(s.w.raster().image(), s.planetPixel(p)));
    }

    // The Measure tool from beside one planet to another, in the full view
    // and zoomed: both ends snap to the planets, the status line tells the
    // distance and the years at warp 5 to 10, the line floats over the
    // picture, and a second click keeps the figures until the next move.
    void measure_data()
    {
        QTest::addColumn<bool>("zoomed");
        QTest::newRow("full view") << false;
        QTest::newRow("zoomed") << true;
    }
    void measure()
    {
        SampleWindow s;
        QFETCH(bool, zoomed);
        if (zoomed)
            s.zoomTo(40, 150, 250);
        const PlanetInfo &from = s.named("All Work"), &to = s.named("H2O");
        QVERIFY(inView(s.w.gameData(), from) && inView(s.w.gameData(), to));
        QCOMPARE(s.w.gameData().Scale > 12.5, zoomed);
        const QImage before = s.w.raster().image();
        s.w.annotationTools()->toolButton(DrawTool::Measure)->click();
        // Two pixels off the planet, still within its pick box.
        QTest::mouseClick(s.map(), Qt::LeftButton, {}, s.at(from) + QPoint(2, 2));
        hover(s.map(), s.at(to));
        const QString figures = "All Work to H2O: 107.5 l.y.; years at warp 5: 5, 6: 3, 7: 3, 8: 2, 9: 2, 10: 2";
        QCOMPARE(s.status(), figures);
        // Halfway along, on screen only.
        const QPoint middle = (s.planetPixel(from) + s.planetPixel(to)) / 2;
        QVERIFY(s.map()->grab().toImage().pixelColor(middle) != before.pixelColor(middle));
        QTest::mouseClick(s.map(), Qt::LeftButton, {}, s.at(to));
        QCOMPARE(s.status(), figures);
        QCOMPARE(s.w.raster().image(), before);
        QCOMPARE(s.label("PlanetName"), QString());
        hover(s.map(), s.at(to) + QPoint(30, 30));
        QCOMPARE(s.status(), QString());
        QTRY_COMPARE(s.map()->grab().toImage().pixelColor(middle), before.pixelColor(middle));
    }

    // The game writes its next turn under the running window: one offer
    // for all its files; F5 proposes the next year and loads the same
    // selection again, keeping the overlays, the zoom, the planet on the
    // panel and the annotations; a broken file keeps the game on screen.
    void reloadTheNewTurn()
    {
        QTemporaryDir folder;
        for (const QString &name : QDir(VELTRO_SAMPLES).entryList({"MARCHES.*"}))
            QVERIFY(QFile::copy(QStringLiteral(VELTRO_SAMPLES "/") + name, folder.filePath(name)));
        SampleWindow s(folder.filePath("MARCHES.map"));
        s.zoomTo(60, 150, 200);
        QTest::mouseClick(s.map(), Qt::LeftButton, {}, s.at(s.named("All Work")));
        s.w.annotationTools()->toolButton(DrawTool::Line)->click();
        QTest::mouseClick(s.map(), Qt::LeftButton, {}, QPoint(50, 50));
        QTest::mouseClick(s.map(), Qt::LeftButton, {}, QPoint(90, 70));
        GameData &d = s.w.gameData();
        const QString annotations = d.AnnotationText;
        const QList<double> view{d.Scale, double(d.OriginX), double(d.OriginY)};
        const auto pressed = [&s] {
            QList<bool> p;
            for (int i = 0; i < OverlayButtonCount; ++i)
                p << s.w.overlayBar()->button(i)->isChecked();
            return p;
        };
        const QList<bool> overlays = pressed();
        QCOMPARE(overlays[ZoomInButton], true);

        QSignalSpy offers(&s.w.reportWatch(), &ReportWatch::newReports);
        for (const char *name : {"MARCHES.P1", "MARCHES.P2", "MARCHES.P3", "MARCHES.P4", "MARCHES.P5"}) {
            QFile f(folder.filePath(QLatin1String(name)));
            QVERIFY(f.open(QIODevice::ReadWrite));
            const QByteArray bytes = f.readAll();
            f.resize(0);
            f.write(bytes);
        }
        QTRY_COMPARE(offers.count(), 1);
        QTest::qWait(2 * ReportWatch::QuietMs);
        QCOMPARE(offers.count(), 1);
        QVERIFY(s.w.findChild<QLabel *>("NewReports")->isVisible());

        m_sink.inputs << "2432";
        QTest::keyClick(&s.w, Qt::Key_F5);
        QCOMPARE(m_sink.messages, QStringList{"Reload|Game year of the new turn:|2432"});
        QCOMPARE(d.GameYear, 2432);
        QVERIFY(s.w.windowTitle().endsWith("Year:2432 }"));
        QCOMPARE(QList<double>({d.Scale, double(d.OriginX), double(d.OriginY)}), view);
        QCOMPARE(pressed(), overlays);
        QCOMPARE(s.label("PlanetName"), "All Work");
        QVERIFY(ringed(s.map()->grab().toImage(), s.planetPixel(s.named("All Work"))));
        QCOMPARE(d.AnnotationText, annotations);
        QVERIFY(!s.w.findChild<QLabel *>("NewReports")->isVisible());
        const QImage reloaded = s.w.raster().image();

        // The next turn's report written aside and renamed over the old one,
        // with a line of too many fields: offered again, then one message
        // naming the file and the line, and the game on screen stays.
        QSaveFile report(folder.filePath("MARCHES.P2"));
        QVERIFY(report.open(QIODevice::WriteOnly));
        report.write("Planet Name\tOwner\r\nAll Work" + QByteArray("\tx").repeated(60) + "\r\n");
        QVERIFY(report.commit());
        QTRY_COMPARE(offers.count(), 2);
        m_sink.messages.clear();
        m_sink.inputs << "2433";
        QTest::keyClick(&s.w, Qt::Key_F5);
        QCOMPARE(m_sink.messages.size(), 2);
        QVERIFY2(m_sink.messages[1].contains("MARCHES.P2, line 2"), qPrintable(m_sink.messages[1]));
        QCOMPARE(d.GameYear, 2432);
        QCOMPARE(s.w.raster().image(), reloaded);
        QCOMPARE(s.label("PlanetName"), "All Work");
        QCOMPARE(pressed(), overlays);
    }

    // Once a resize has settled the map is drawn afresh at its new size:
    // the picture, and what Save Map writes at once after a resize, are what
    // the command line draws at that size.
    void aResizedMapIsDrawnAtItsNewSize()
    {
        SampleWindow s;
        QTemporaryDir dir;
        const auto rendered = [&dir](int side) {
            const QString png = dir.filePath(QStringLiteral("%1.png").arg(side));
            const CliRun run = runCli({"render", VELTRO_SAMPLES "/MARCHES.map", "--year", "2431", "--layers", "borders",
                                       "--size", QString::number(side), "-o", png});
            return run.status == 0 ? QImage(png).convertToFormat(QImage::Format_RGB32) : QImage();
        };
        s.w.resize(s.w.size() + QSize(90, 90));
        QTRY_COMPARE(s.w.raster().pixels(), s.map()->width());
        const QImage bigger = rendered(s.map()->width());
        QVERIFY(!bigger.isNull());
        QTRY_COMPARE(s.w.raster().image(), bigger);

        s.w.gameData().GameDir = dir.path();
        s.w.resize(s.w.size() - QSize(150, 150));
        QTRY_COMPARE(s.w.raster().pixels(), s.map()->width());
        s.w.findChild<QAction *>(QStringLiteral("mnuSave"))->trigger();
        QCOMPARE(QImage(dir.filePath(QStringLiteral("Universe Map2431.bmp"))).convertToFormat(QImage::Format_RGB32),
                 rendered(s.map()->width()));
    }

    // The keys: a mnemonic on every menu entry, Ctrl+O, Ctrl+S and F1, Tab
    // from the map's buttons through the legend and the panel to the drawing
    // tools, and a mark on whatever has the focus.
    void keyboard()
    {
        SampleWindow s;
        for (QAction *menu : s.w.menuBar()->actions())
            for (QAction *entry : menu->menu()->actions())
                QVERIFY2(entry->isSeparator() || entry->text().contains(QRegularExpression("&[^&]")),
                         qPrintable(entry->text()));

        // The offscreen platform leaves a closed window active: the main
        // window is activated again before each key.
        const auto activate = [&s] {
            s.w.activateWindow();
            QTRY_COMPARE(QApplication::activeWindow(), &s.w);
        };
        activate();
        QVERIFY(opensModal<LegendWindow>([&] { QTest::keyClick(&s.w, Qt::Key_F1); }));
        activate();
        QVERIFY(opensModal<OpenFileDialog>([&] { QTest::keyClick(&s.w, Qt::Key_O, Qt::ControlModifier); }));
        activate();
        m_sink.messages.clear();
        QTemporaryDir saved;
        s.w.gameData().GameDir = saved.path();
        QTest::keyClick(&s.w, Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(m_sink.messages.value(0).left(13), QStringLiteral("Map saved to "));

        s.w.overlayBar()->button(ClearMapButton)->setFocus(Qt::TabFocusReason);
        QStringList order;
        while (order.size() < 60 && !order.contains(QStringLiteral("PlotBox"))) {
            QWidget *focused = QApplication::focusWidget();
            order << focused->objectName();
            QVERIFY2(marksFocus(focused), qPrintable(order.last() + " shows no focus"));
            QTest::keyClick(focused, Qt::Key_Tab);
        }
        qsizetype last = -1;
        for (const char *name : {"OvButt0", "OvButt10", "GenUniv", "Combo1", "EstHab", "RaceC0",
                                 "qt_tabwidget_tabbar", "Draw0", "DColour0", "SaveVMK", "PlotBox"}) {
            const qsizetype at = order.indexOf(QLatin1String(name));
            QVERIFY2(at > last, qPrintable(QString::fromLatin1(name) + " out of order: " + order.join(' ')));
            last = at;
        }
        QVERIFY(marksFocus(s.map()));
    }

    // Every control is named for screen readers, and an overlay button's
    // toggle action redraws as a click does.
    void accessibleControls()
    {
        SampleWindow s;
        QStringList unnamed;
        for (QWidget *child : s.w.findChildren<QWidget *>()) {
            const bool control = qobject_cast<QAbstractButton *>(child) || qobject_cast<QComboBox *>(child) ||
                                 qobject_cast<QLineEdit *>(child) || child == s.map() ||
                                 child->inherits("QProgressBar") || child->inherits("QPlainTextEdit");
            if (!control || !child->isVisible())
                continue;
            QAccessibleInterface *a = QAccessible::queryAccessibleInterface(child);
            if (a->text(QAccessible::Name).isEmpty())
                unnamed << child->objectName() + "/" + child->metaObject()->className();
        }
        QCOMPARE(unnamed.join(' '), QString());
        QCOMPARE(QAccessible::queryAccessibleInterface(s.map())->text(QAccessible::Name), "Map");
        QCOMPARE(QAccessible::queryAccessibleInterface(s.w.overlayBar()->button(UniverseButton))->text(QAccessible::Name),
                 "Show Universe");

        QTest::mouseClick(s.w.overlayBar()->button(ClearMapButton), Qt::LeftButton);
        QVERIFY(pictureIsBlack(s.w.raster().image()));
        QAccessibleInterface *borders = QAccessible::queryAccessibleInterface(s.w.overlayBar()->button(BordersButton));
        borders->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        QVERIFY(s.w.overlayButtons().pressed(BordersButton));
        QVERIFY(!pictureIsBlack(s.w.raster().image()));
    }

private:
    IsolatedSettings m_settings;
    RecordingSink m_sink;
};

QTEST_MAIN(MapInteractionTest)
#include "tst_mapinteraction.moc"
