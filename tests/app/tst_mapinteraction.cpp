// The map driven with the mouse and the keyboard offscreen: hovering and
// clicking planets, the floating rubber band, zoom square and planet ring,
// the zoom by two clicks, the picture after a resize, the keys, and the
// controls as the accessibility interface sees them.

#include "AccessibleText.h"
#include "AnnotationToolBox.h"
#include "CliRun.h"
#include "DetailPanel.h"
#include "FocusMark.h"
#include "IsolatedSettings.h"
#include "LegendWindow.h"
#include "MainWindow.h"
#include "MapCanvasWidget.h"
#include "ModalWindow.h"
#include "OpenFileDialog.h"
#include "OverlayButtonBar.h"
#include "PictureChecks.h"
#include "RasterSurface.h"
#include "RecordingSink.h"

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
#include <QScreen>
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

// The sample game loaded in a shown window, the borders drawn.
struct SampleWindow {
    mutable MainWindow w;
    SampleWindow()
    {
        w.resize(1200, 850);
        w.show();
        if (!QTest::qWaitForWindowExposed(&w))
            qFatal("the window never showed");
        OpenFileDialog &dialog = w.openFileDialog();
        dialog.openOn(QStringLiteral(VELTRO_SAMPLES "/MARCHES.map"));
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
        const QPoint ring = s.planetPixel(p[X].val(), p[Y].val()) + QPoint(9, 0);
        QCOMPARE(s.map()->grab().toImage().pixelColor(ring), QColor(Qt::white));
        QCOMPARE(s.w.raster().image(), before);
        QCOMPARE(s.w.gameData().AnnotationText, annotations);
        QTest::mouseClick(s.w.overlayBar()->button(UniverseButton), Qt::LeftButton);
        QCOMPARE(s.map()->grab().toImage().pixelColor(ring), QColor(Qt::white));
        QVERIFY(s.w.raster().image().pixelColor(ring) != QColor(Qt::white));

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
