// The main window driven offscreen with the mouse and the keys: loading,
// Recent Games, remembered colours and the resize rule, then one sample game
// loaded once for the map's wiring, in the order the cases leave it.

#include "AccessibleText.h"
#include "AnnotationToolBox.h"
#include "CliRun.h"
#include "EmpireStatWindow.h"
#include "FindPlanetField.h"
#include "FocusMark.h"
#include "IsolatedSettings.h"
#include "LegendWindow.h"
#include "ModalWindow.h"
#include "PictureChecks.h"
#include "PlanetGridWindow.h"
#include "RaceColourWindow.h"
#include "RaceLegend.h"
#include "RecordingSink.h"
#include "SampleWindow.h"
#include "TestGame.h"

#include <QComboBox>
#include <QCompleter>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSaveFile>
#include <QScreen>
#include <QSignalSpy>
#include <QSlider>

namespace {

bool copySample(const TestGame &dir)
{
    for (const QString &name : QDir(QStringLiteral(VELTRO_SAMPLES)).entryList({QStringLiteral("MARCHES.*")}))
        if (!QFile::copy(QStringLiteral(VELTRO_SAMPLES "/") + name, dir.path(name)))
            return false;
    return true;
}

// Every overlay button's `state` (isEnabled, isChecked) in button order.
QList<bool> overlayStates(MainWindow &w, bool (QToolButton::*state)() const)
{
    QList<bool> states;
    for (int i = 0; i < OverlayButtonCount; ++i)
        states << (w.overlayBar()->button(i)->*state)();
    return states;
}

const QList<bool> AllOn(OverlayButtonCount, true), AllOff(OverlayButtonCount, false);

} // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY(copySample(m_folder));
        m_s = std::make_unique<SampleWindow>(m_folder.path("MARCHES.map"), QSize(1200, 850));
    }
    void init()
    {
        m_sink.messages.clear();
        m_s->fullView();
        m_s->activate();
    }

    // Without the game's settings file the selection opens in the home folder.
    void findsTheGameFolderInTheWinePrefix()
    {
        TestGame prefix;
        QVERIFY(QDir(prefix.dir()).mkpath(QStringLiteral("drive_c/WINDOWS")));
        QVERIFY(QDir(prefix.dir()).mkpath(QStringLiteral("drive_c/Games/STARS")));
        prefix.write("drive_c/WINDOWS/stars.ini", "[Misc]\r\nStarsInstallDir=C:\\games\\Stars\r\n");
        qputenv("WINEPREFIX", prefix.dir().toLocal8Bit());
        QCOMPARE(MainWindow().gameData().StartDir, prefix.path(QStringLiteral("drive_c/Games/STARS")));
        QVERIFY(QFile::remove(prefix.path("drive_c/WINDOWS/stars.ini")));
        QCOMPARE(MainWindow().gameData().StartDir, QDir::homePath());
        qunsetenv("WINEPREFIX");
    }

    // A failed load says so once, naming the file and the line, and leaves
    // the window as it starts: nothing to draw, only the File and Data menus.
    // A game then loaded without a year is saved beside it, no year in the
    // name; a bad annotation colour ends the redraw with one message.
    void aFailedLoadThenSaveMapAndABadAnnotation()
    {
        TestGame game;
        for (const char *name : {"bad.map", "bad.P1"})
            game.write(name, "#\tX\tY\tName\r\n1\t1010\tnowhere\tA\r\n");
        MainWindow w;
        QCOMPARE(w.windowTitle(), QStringLiteral("Veltro Marches for Stars!   Version 0.1.0"));
        QVERIFY(!load(w, game.path("bad.map")));
        QCOMPARE(m_sink.messages.size(), 1);
        QVERIFY(m_sink.messages[0].contains(QStringLiteral("bad.map, line 2")));
        QCOMPARE(overlayStates(w, &QToolButton::isEnabled), AllOff);
        QVERIFY(!w.findChild<QMenu *>(QStringLiteral("mnuOver"))->isEnabled());
        for (const char *name : {"mnuMap", "mnuGrid", "mnuGrid2"})
            QVERIFY(w.findChild<QAction *>(name)->isEnabled());
        QVERIFY(pictureIsBlack(w.raster().image()));

        QVERIFY(copySample(game));
        QVERIFY(load(w, game.path(QStringLiteral("MARCHES.map"))));
        QTest::mouseClick(w.overlayBar()->button(UniverseButton), Qt::LeftButton);
        m_sink.messages.clear();
        w.findChild<QAction *>("mnuSave")->trigger();
        const QString path = game.path(QStringLiteral("Universe Map.bmp"));
        QCOMPARE(m_sink.messages, QStringList{QStringLiteral("Map saved to ") + QDir::toNativeSeparators(path)});
        QCOMPARE(QImage(path, "BMP").convertToFormat(QImage::Format_RGB32), w.raster().image());

        game.write(QStringLiteral("MARCHES.VMK"), "L,1,1,500,500,9\r\n");
        m_sink.messages.clear();
        QTest::mouseClick(w.overlayBar()->button(VmkButton), Qt::LeftButton);
        QCOMPARE(m_sink.messages.size(), 1);
        QVERIFY(m_sink.messages[0].startsWith(QStringLiteral("Drawing the map failed")));
        QVERIFY(!pictureIsBlack(w.raster().image()));
        QVERIFY(w.overlayBar()->button(UniverseButton)->isEnabled());
    }

    // The resize rule at its edges; the readouts keep their row under a tall
    // title bar, and a window too narrow for map, panel and legend scrolls.
    void resizeRule_data()
    {
        QTest::addColumn<QSize>("area");
        QTest::addColumn<int>("frameHeight");
        QTest::addColumn<int>("side"); // twips, 0 for nothing moved
        QTest::newRow("2000 twips high") << QSize(900, 2000 / 15 - 46) << 46 << 0;
        QTest::newRow("6000 twips high") << QSize(900, 6000 / 15 - 46) << 46 << 4415;
        QTest::newRow("tall title bar") << QSize(900, 350) << 120 << (350 - 19 - 2) * 15 + 1020 - 1585;
        QTest::newRow("narrow: scrolls across") << QSize(500, 400) << 46 << (400 - 15 - 19 - 2) * 15 + 1020 - 1585;
    }
    void resizeRule()
    {
        QFETCH(QSize, area);
        QFETCH(int, frameHeight);
        const int readoutHeight = 19, column = 300, scrollBar = 15;
        const auto fitted = fitClientArea({area, QSize(0, frameHeight), readoutHeight, 400, column, 300, scrollBar});
        QTEST(fitted ? fitted->rule.universe.width() : 0, "side");
        if (!fitted)
            return;
        const bool across = fitted->content.width() > area.width();
        QVERIFY((fitted->rule.xyCoord.y()) / 15 + readoutHeight <= area.height() - (across ? scrollBar : 0));
        QVERIFY(fitted->rule.raceLabelLeft / 15 >= fitted->rule.detailLeft / 15 + column + 8);
    }

    // File > Recent Games: the last eight, newest first, each loaded with its
    // race, year and the overlays left pressed; a map gone says so and leaves.
    void recentGames()
    {
        TestGame games;
        const auto map = [&games](int i) { return games.path(QStringLiteral("g%1.map").arg(i)); };
        for (int i : {0, 9}) {
            games.writeMap({{"Home", 1100, 1100}}, QStringLiteral("g%1.map").arg(i));
            games.writeReport(QStringLiteral("g%1.P1").arg(i), {homeLine()});
        }
        RecentGames recent;
        for (int i : {0, 1, 2, 3, 3, 4, 5, 6, 7, 8, 9, 6}) { // 3 twice: first once more, not twice
            GameData d;
            d.MapFilePath = map(i);
            d.GameYear = 2400 + i;
            d.OwnRace = 1;
            recent.loaded(d);
        }
        QStringList order;
        for (const RecentGame &g : recent.games())
            order << g.choice.gameYearText;
        QCOMPARE(order, QStringList({"2406", "2409", "2408", "2407", "2405", "2404", "2403", "2402"}));

        {
            MainWindow w;
            w.resize(1100, 800);
            QVERIFY(load(w, map(0), "2400"));
            QTest::mouseClick(w.overlayBar()->button(BordersButton), Qt::LeftButton);
            w.close();
        }
        MainWindow w;
        QCOMPARE(w.size(), QSize(1100, 800));
        auto *menu = w.findChild<QMenu *>(QStringLiteral("mnuRecent"));
        QCOMPARE(menu->actions().size(), RecentGames::Kept);
        QCOMPARE(menu->actions()[0]->text(), "&1 g0.map, Humans, year 2400");
        menu->actions()[1]->trigger(); // 2406, never written
        QCOMPARE(menu->actions().size(), RecentGames::Kept - 1);
        QCOMPARE(w.gameData().PlanetCount, 0);
        menu->actions()[1]->trigger(); // 2409
        QCOMPARE(w.gameData().GameYear, 2409);
        QCOMPARE(w.gameData().MapFilePath, QFileInfo(map(9)).absoluteFilePath());
        QVERIFY(w.overlayBar()->button(BordersButton)->isChecked());
        QCOMPARE(menu->actions()[0]->text(), "&1 g9.map, Humans, year 2409");
        QCOMPARE(m_sink.messages.size(), 1);
        QVERIFY(m_sink.messages[0].contains("no longer there"));
    }

    // A new race colour shows in the legend at once, on the map once the
    // editor closes; closed without OK, nothing is kept but the map redraws.
    // The colour comes back with its game, whatever column the race takes
    // then; another game keeps the start colours.
    void chosenRaceColours()
    {
        TestGame game, other;
        for (const TestGame *g : {&game, &other}) {
            g->writeMap({{"Home", 1100, 1100}, {"Near", 1300, 1300}, {"Far", 1500, 1500}});
            g->writeReport("game.P1", {homeLine(), planetLine("Far", "Robots", "None", "0", "5000")});
        }
        const QColor chosen(64, 200, 72);
        const int stored = 64 + 256 * 200 + 65536 * 72;
        {
            MainWindow w;
            QVERIFY(load(w, game.path("game.map")));
            QTest::mouseClick(w.overlayBar()->button(BordersButton), Qt::LeftButton);
            auto *robots = w.findChild<RaceSwatch *>(QStringLiteral("RaceC1"));
            QVERIFY(whileModal<RaceColourWindow>([&] { robots->click(); }, [&](RaceColourWindow &editor) {
                for (int i = 0; i < 3; ++i)
                    editor.slider(i)->setValue(QList<int>{64, 200, 72}[i]);
                editor.okButton()->click();
                QVERIFY(countColour(robots->grab().toImage(), chosen) > 0);
                QCOMPARE(countColour(w.raster().image(), chosen), 0);
            }));
            QVERIFY(countColour(w.raster().image(), chosen) > 0);
            QCOMPARE(robots->accessibleDescription(), QStringLiteral("Robots in red 64, green 200, blue 72"));

            QTest::mouseClick(w.overlayBar()->button(ClearMapButton), Qt::LeftButton);
            w.findChild<QAction *>("mnuNames")->trigger();
            QVERIFY(!pictureIsBlack(w.raster().image()));
            QVERIFY(whileModal<RaceColourWindow>([&] { robots->click(); },
                                                 [](RaceColourWindow &editor) { editor.slider(0)->setValue(10); }));
            QCOMPARE(w.gameData().raceColour(2), stored);
            QVERIFY(pictureIsBlack(w.raster().image()));
        }
        // Another race met first moves the Robots to column 3.
        game.writeReport("game.P1", {homeLine(), planetLine("Near", "Aliens", "None", "0", "5000"),
                                     planetLine("Far", "Robots", "None", "0", "5000")});
        MainWindow restarted;
        QVERIFY(load(restarted, game.path("game.map")));
        QCOMPARE(restarted.gameData().raceColour(3), stored);
        QCOMPARE(restarted.gameData().raceColour(2), GameData().raceColour(2));
        QVERIFY(countColour(restarted.findChild<RaceSwatch *>(QStringLiteral("RaceC2"))->grab().toImage(), chosen) > 0);
        QVERIFY(load(restarted, other.path("game.map")));
        QCOMPARE(restarted.gameData().raceColour(2), GameData().raceColour(2));
    }

    // The shared sample window from here on. Clear Map releases every overlay;
    // a menu overlay draws over the picture; every control has a name.
    void overlaysAndControls()
    {
        const SampleWindow &s = *m_s;
        QVERIFY(s.w.windowTitle().endsWith(QStringLiteral("{ MARCHES.map  Year:2431 }")));
        QCOMPARE(s.w.findChild<QComboBox *>(QStringLiteral("Combo1"))->count(), s.w.gameData().PlayerCount);
        QCOMPARE(overlayStates(s.w, &QToolButton::isEnabled), AllOn);
        QVERIFY(s.w.findChild<QMenu *>(QStringLiteral("mnuOver"))->isEnabled());
        QVERIFY(s.w.findChild<QPushButton *>(QStringLiteral("EstHab"))->isEnabled());
        QVERIFY(pictureIsBlack(s.picture()));
        s.press(UniverseButton);
        s.press(BordersButton);
        QVERIFY(!pictureIsBlack(s.picture()));
        s.press(ClearMapButton);
        QCOMPARE(overlayStates(s.w, &QToolButton::isChecked), AllOff);
        QVERIFY(pictureIsBlack(s.picture()));
        s.action("mnuStarGate")->trigger();
        QCOMPARE(m_sink.messages, QStringList{QStringLiteral("Show Safe gating distance only?")});
        QVERIFY(!pictureIsBlack(s.picture()));

        QCOMPARE(unnamedControls(&s.w).join(' '), QString());
        s.press(ClearMapButton);
        s.press(BordersButton);
    }

    // The panel and the ring for a planet clicked, each value read with its
    // caption; deep space leaves the panel.
    void hoverAndClickAPlanet()
    {
        const SampleWindow &s = *m_s;
        const PlanetInfo &p = s.named("LGM 4"); // reported, no other planet within 20 light years
        const QString name = p[Name].text();
        hover(s.map(), s.at(p));
        QCOMPARE(s.label("theplanet"), " " + name);
        QCOMPARE(s.map()->toolTip(), "Click for more information on " + name);
        const QImage before = s.picture();
        s.click(s.at(p));
        const auto panel = [&s](const char *name) { return readOut(s.w.findChild<QLabel *>(QLatin1String(name))); };
        QCOMPARE(panel("PlanetName"), "Planet: " + name);
        QCOMPARE(panel("Grav2"), "Gravity Original: " + s.label("Grav2"));
        QCOMPARE(panel("IronMCT"), "Ironium Conc.: " + s.label("IronMCT"));
        QCOMPARE(panel("RHab0"), s.label("RName0") + ' ' + s.label("RHab0"));
        // The ring is on the screen only, and survives a redraw.
        QVERIFY(ringed(s.screen(), s.planetPixel(p)));
        QCOMPARE(s.picture(), before);
        s.press(UniverseButton);
        QVERIFY(ringed(s.screen(), s.planetPixel(p)));
        QVERIFY(!ringed(s.picture(), s.planetPixel(p)));
        const QPoint deepSpace(2, s.map()->height() - 2);
        hover(s.map(), deepSpace);
        s.click(deepSpace);
        QCOMPARE(s.label("theplanet"), " Deep Space");
        QCOMPARE(s.label("PlanetName"), name);
    }

    // The band, yellow as the file's last line, floats over the picture;
    // the second click draws it.
    void theRubberBandFloatsOverThePicture()
    {
        const SampleWindow &s = *m_s;
        s.w.annotationTools()->toolButton(DrawTool::Line)->click();
        s.click(QPoint(100, 100));
        const QImage before = s.picture();
        hover(s.map(), QPoint(300, 250));
        QCOMPARE(s.picture(), before);
        QCOMPARE(s.screen().pixelColor(200, 175), QColor(255, 255, 0));
        QVERIFY(before.pixelColor(200, 175) != QColor(255, 255, 0));
        s.click(QPoint(300, 250));
        QVERIFY(s.picture() != before);
        QVERIFY(QRegularExpression(QStringLiteral("\r\nL,[^\r]*,5\r\n$")).match(s.w.gameData().AnnotationText).hasMatch());
        s.w.annotationTools()->toolButton(DrawTool::StopDrawing)->click();
    }

    // A square too small gives one message; Escape gives up a half-made zoom:
    // the view, the picture and the screen as before, every button back.
    void zoomTooSmallOrEscaped()
    {
        const SampleWindow &s = *m_s;
        const QList<double> view = s.view();
        const auto allBack = [&] {
            QCOMPARE(s.view(), view);
            QCOMPARE(overlayStates(s.w, &QToolButton::isEnabled), AllOn);
            QVERIFY(!s.button(ZoomInButton)->isChecked());
        };
        s.press(ZoomInButton);
        s.click(QPoint(100, 100));
        s.click(QPoint(100, 100));
        QCOMPARE(m_sink.messages.size(), 1);
        QVERIFY(m_sink.messages[0].contains(QStringLiteral("too small")));
        allBack();

        m_sink.messages.clear();
        const QImage before = s.picture();
        s.press(ZoomInButton);
        s.click(QPoint(100, 100));
        hover(s.map(), QPoint(300, 120));
        QVERIFY(!s.button(BordersButton)->isEnabled());
        // Across the square's top edge, as the screen shows it and as the picture has it.
        const QRect edge(200, 98, 1, 5);
        const auto onScreen = [&] {
            const QImage window = s.w.screen()->grabWindow(s.w.winId()).toImage();
            return window.convertToFormat(QImage::Format_RGB32).copy(edge.translated(s.map()->mapTo(&s.w, QPoint())));
        };
        const QImage picture = before.copy(edge);
        QTRY_VERIFY(onScreen() != picture);
        QTest::keyClick(s.map(), Qt::Key_Escape);
        QCOMPARE(s.picture(), before);
        allBack();
        QTRY_COMPARE(onScreen(), picture);
        QVERIFY(m_sink.messages.isEmpty());
    }

    // Ctrl+F and a name, completed as typed: the panel and the ring as a
    // click gives them, a zoomed view moved to centre a planet it leaves out.
    void findPlanet_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("found");
        QTest::addColumn<bool>("zoomed");
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
        QFETCH(bool, zoomed);
        const SampleWindow &s = *m_s;
        if (zoomed)
            s.zoomTo(60, 150, 200);
        const GameData &d = s.w.gameData();
        const QList<double> view = s.view();
        const QImage before = s.picture();
        const QString shown = s.label("PlanetName");
        const int marked = s.w.markedPlanet();
        QTest::keyClick(&s.w, Qt::Key_F, Qt::ControlModifier);
        QLineEdit *field = s.w.findField()->edit();
        QTRY_VERIFY(field->hasFocus());
        field->clear();
        QTest::keyClicks(field, typed);
        QCompleter *completer = s.w.findField()->completer();
        QStringList offered;
        for (int i = 0; completer->setCurrentRow(i); ++i)
            offered << completer->currentCompletion();
        QCOMPARE(offered.contains(found), !found.isEmpty());
        QTest::keyClick(field, Qt::Key_Return);

        // Only a planet outside the view moves it, at the same scale, and redraws.
        const bool moves = found == "Glenn";
        QCOMPARE(s.view() != view, moves);
        QCOMPARE(s.picture() != before, moves);
        QCOMPARE(d.Scale, view[0]);
        if (found.isEmpty()) {
            QCOMPARE(s.status(), "No planet is named \"" + typed + '"');
            QCOMPARE(s.label("PlanetName"), shown);
            QCOMPARE(s.w.markedPlanet(), marked);
            return;
        }
        QCOMPARE(s.label("PlanetName"), found);
        const PlanetInfo &p = s.named(found);
        QCOMPARE(&d.planet(s.w.markedPlanet()), &p);
        QVERIFY(ringed(s.screen(), s.planetPixel(p)));
        if (moves) {
            QVERIFY(qAbs((d.OriginX + d.FarX) / 2.0 - p[X].val()) <= 1);
            QVERIFY(qAbs((d.OriginY + d.FarY) / 2.0 - p[Y].val()) <= 1);
        }
    }

    // Measure from beside one planet to another: both ends snap, the line
    // floats, a second click keeps the figures until the next move.
    void measure()
    {
        const SampleWindow &s = *m_s;
        const PlanetInfo &from = s.named("All Work"), &to = s.named("H2O");
        const QImage before = s.picture();
        const QString shown = s.label("PlanetName");
        s.w.annotationTools()->toolButton(DrawTool::Measure)->click();
        s.click(s.at(from) + QPoint(2, 2)); // two pixels off the planet, within its pick box
        hover(s.map(), s.at(to));
        const QString figures = "All Work to H2O: 107.5 l.y.; years at warp 5: 5, 6: 3, 7: 3, 8: 2, 9: 2, 10: 2";
        QCOMPARE(s.status(), figures);
        const QPoint middle = (s.planetPixel(from) + s.planetPixel(to)) / 2;
        QVERIFY(s.screen().pixelColor(middle) != before.pixelColor(middle));
        s.click(s.at(to));
        QCOMPARE(s.status(), figures);
        QCOMPARE(s.picture(), before);
        QCOMPARE(s.label("PlanetName"), shown);
        hover(s.map(), s.at(to) + QPoint(30, 30));
        QCOMPARE(s.status(), QString());
        QTRY_COMPARE(s.screen().pixelColor(middle), before.pixelColor(middle));
        s.w.annotationTools()->toolButton(DrawTool::StopDrawing)->click();
    }

    // Data > the grid and the statistics; a new bound waits for the next estimate.
    void dataMenuOpensTheGridAndTheStatistics()
    {
        const SampleWindow &s = *m_s;
        QVERIFY(opensModal<PlanetGridWindow>([&] { s.action("mnuGrid")->trigger(); }));
        QTest::mouseClick(s.w.findChild<QPushButton *>(QStringLiteral("EstHab")), Qt::LeftButton);
        const QImage estimated = s.picture();
        m_sink.inputs = QStringList{"0.2"};
        QVERIFY(whileModal<EmpireStatWindow>([&] { s.action("mnuGrid2")->trigger(); },
                                             [&](EmpireStatWindow &stats) { stats.rangeValue(MinGrav)->click(); }));
        QCOMPARE(habBoundsOf(s.w.gameData(), s.w.gameData().OwnRaceName).minGrav, 0.2);
        QCOMPARE(m_sink.messages.size(), 1); // the prompt, no refusal
        QCOMPARE(s.picture(), estimated);
    }

    // Mnemonics, Ctrl+O, Ctrl+S, F1, and Tab from the map's buttons through
    // the legend and the panel to the drawing tools, the focus marked.
    void keyboard()
    {
        const SampleWindow &s = *m_s;
        for (QAction *menu : s.w.menuBar()->actions())
            for (QAction *entry : menu->menu()->actions())
                QVERIFY2(entry->isSeparator() || entry->text().contains(QRegularExpression("&[^&]")),
                         qPrintable(entry->text()));
        QVERIFY(opensModal<LegendWindow>([&] { QTest::keyClick(&s.w, Qt::Key_F1); }));
        s.activate();
        QVERIFY(opensModal<OpenFileDialog>([&] { QTest::keyClick(&s.w, Qt::Key_O, Qt::ControlModifier); }));
        s.activate();
        QTest::keyClick(&s.w, Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(m_sink.messages.value(0).left(13), QStringLiteral("Map saved to "));

        s.button(ClearMapButton)->setFocus(Qt::TabFocusReason);
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

    // Save Map at once after a resize, before the redraw the resize waits
    // for, saves and shows what the command line draws at the new size.
    void aResizedMapIsDrawnAtItsNewSize()
    {
        const SampleWindow &s = *m_s;
        s.press(ClearMapButton);
        s.press(BordersButton);
        TestGame dir;
        const QString gameDir = s.w.gameData().GameDir;
        s.w.gameData().GameDir = dir.dir();
        const QSize size = s.w.size();
        s.w.resize(size - QSize(60, 60));
        QTRY_COMPARE(s.w.raster().pixels(), s.map()->width());
        s.action("mnuSave")->trigger();
        const QString png = dir.path(QStringLiteral("cli.png"));
        QCOMPARE(runCli({"render", VELTRO_SAMPLES "/MARCHES.map", "--year", "2431", "--layers", "borders", "--size",
                         QString::number(s.map()->width()), "-o", png}).status, 0);
        const QImage rendered = QImage(png).convertToFormat(QImage::Format_RGB32);
        QCOMPARE(QImage(dir.path(QStringLiteral("Universe Map2431.bmp"))).convertToFormat(QImage::Format_RGB32), rendered);
        QCOMPARE(s.picture(), rendered);
        s.w.gameData().GameDir = gameDir;
        s.w.resize(size);
        QTRY_COMPARE(s.w.raster().pixels(), s.map()->width());
    }

    // The next turn written under the window: one offer; F5 loads it keeping
    // overlays, zoom, panel and annotations; a broken file keeps the game.
    void reloadTheNewTurn()
    {
        const SampleWindow &s = *m_s;
        s.zoomTo(60, 150, 200);
        s.click(s.at(s.named("All Work")));
        GameData &d = s.w.gameData();
        const QString annotations = d.AnnotationText; // the sample's and the band drawn above
        QVERIFY(!annotations.isEmpty());
        const QList<double> view = s.view();
        const QList<bool> overlays = overlayStates(s.w, &QToolButton::isChecked);

        QSignalSpy offers(&s.w.reportWatch(), &ReportWatch::newReports);
        for (const char *name : {"MARCHES.P1", "MARCHES.P2", "MARCHES.P3", "MARCHES.P4", "MARCHES.P5"}) {
            QFile f(m_folder.path(QLatin1String(name)));
            QVERIFY(f.open(QIODevice::ReadOnly));
            m_folder.write(QLatin1String(name), f.readAll());
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
        QCOMPARE(s.view(), view);
        QCOMPARE(overlayStates(s.w, &QToolButton::isChecked), overlays);
        QCOMPARE(s.label("PlanetName"), "All Work");
        QVERIFY(ringed(s.screen(), s.planetPixel(s.named("All Work"))));
        QCOMPARE(d.AnnotationText, annotations);
        QVERIFY(!s.w.findChild<QLabel *>("NewReports")->isVisible());
        const QImage reloaded = s.picture();

        // Renamed over the old one, with a line of too many fields.
        QSaveFile report(m_folder.path("MARCHES.P2"));
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
        QCOMPARE(s.picture(), reloaded);
        QCOMPARE(s.label("PlanetName"), "All Work");
    }

private:
    IsolatedSettings m_settings;
    RecordingSink m_sink;
    TestGame m_folder;
    std::unique_ptr<SampleWindow> m_s;
};

QTEST_MAIN(MainWindowTest)
#include "tst_mainwindow.moc"
