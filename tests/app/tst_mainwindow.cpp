// The main window driven offscreen with the mouse and the keys: loading,
// Recent Games, remembered colours and the resize rule, then one sample game
// loaded once for the map's wiring, in the order the cases leave it.

#include "AccessibleText.h"
#include "AnnotationToolBox.h"
#include "CliRun.h"
#include "DetailPanel.h"
#include "EmpireStatWindow.h"
#include "FindPlanetField.h"
#include "FocusMark.h"
#include "IsolatedSettings.h"
#include "LegendWindow.h"
#include "MainWindowLayout.h"
#include "MapView.h"
#include "ModalWindow.h"
#include "PictureChecks.h"
#include "PlanetGridWindow.h"
#include "RaceColourWindow.h"
#include "RaceLegend.h"
#include "RecentGames.h"
#include "RecordingSink.h"
#include "ReportWatch.h"
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
#include <QTemporaryDir>

namespace {

const QString Sample = QStringLiteral(VELTRO_SAMPLES "/MARCHES.map");

// The sample game's files copied into `dir`.
bool copySample(const QTemporaryDir &dir)
{
    for (const QString &name : QDir(QStringLiteral(VELTRO_SAMPLES)).entryList({QStringLiteral("MARCHES.*")}))
        if (!QFile::copy(QStringLiteral(VELTRO_SAMPLES "/") + name, dir.filePath(name)))
            return false;
    return true;
}

} // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY(copySample(m_folder));
        m_s = std::make_unique<SampleWindow>(m_folder.filePath("MARCHES.map"), QSize(1200, 850));
    }
    void init()
    {
        m_sink.messages.clear();
        m_s->fullView();
        m_s->activate();
    }

    void findsTheGameFolderInTheWinePrefix()
    {
        TestGame prefix;
        QVERIFY(QDir(prefix.dir()).mkpath(QStringLiteral("drive_c/WINDOWS")));
        QVERIFY(QDir(prefix.dir()).mkpath(QStringLiteral("drive_c/Games/STARS")));
        prefix.write("drive_c/WINDOWS/stars.ini", "[Misc]\r\nStarsInstallDir=C:\\games\\Stars\r\n");
        qputenv("WINEPREFIX", prefix.dir().toLocal8Bit());
        QCOMPARE(MainWindow().gameData().StartDir, prefix.path(QStringLiteral("drive_c/Games/STARS")));
        // Without a settings file the selection opens in the home folder.
        QVERIFY(QFile::remove(prefix.path("drive_c/WINDOWS/stars.ini")));
        QCOMPARE(MainWindow().gameData().StartDir, QDir::homePath());
        qunsetenv("WINEPREFIX");
    }

    // A failed load says so once, naming the file and the line, and leaves
    // the window as it starts: nothing to draw, only the File and Data menus.
    void aFailedLoadLeavesTheWindowAsItStarts()
    {
        TestGame game;
        for (const char *name : {"bad.map", "bad.P1"})
            game.write(name, "#\tX\tY\tName\r\n1\t1010\tnowhere\tA\r\n");
        MainWindow w;
        QCOMPARE(w.windowTitle(), QStringLiteral("Veltro Marches for Stars!   Version 0.1.0"));
        QVERIFY(!load(w, game.path("bad.map")));
        QCOMPARE(m_sink.messages.size(), 1);
        QVERIFY(m_sink.messages[0].contains(QStringLiteral("bad.map, line 2")));
        for (int i = 0; i < OverlayButtonCount; ++i)
            QVERIFY(!w.overlayBar()->button(i)->isEnabled());
        QVERIFY(!w.findChild<QMenu *>(QStringLiteral("mnuOver"))->isEnabled());
        for (const char *name : {"mnuMap", "mnuGrid", "mnuGrid2"})
            QVERIFY(w.findChild<QAction *>(name)->isEnabled());
        QVERIFY(pictureIsBlack(w.raster().image()));
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
        std::vector<std::unique_ptr<TestGame>> games;
        RecentGames recent;
        for (int i = 0; i < 10; ++i) {
            games.push_back(std::make_unique<TestGame>());
            games[i]->writeMap({{"Home", 1100, 1100}, {"Far", 1500, 1500}});
            games[i]->writeReport("game.P1", {homeLine()});
            GameData d;
            QCOMPARE(games[i]->load(d, QString::number(2400 + i)), QString());
            recent.loaded(d);
            if (i == 3) // loaded again: first once more, not twice
                recent.loaded(d);
        }
        GameData again;
        QCOMPARE(games[6]->load(again, "2406"), QString());
        recent.loaded(again);
        QStringList order;
        for (const RecentGame &g : recent.games())
            order << g.choice.gameYearText;
        QCOMPARE(order, QStringList({"2406", "2409", "2408", "2407", "2405", "2404", "2403", "2402"}));

        {
            MainWindow w;
            w.resize(1100, 800);
            QVERIFY(load(w, games[0]->path("game.map"), "2400"));
            QTest::mouseClick(w.overlayBar()->button(BordersButton), Qt::LeftButton);
            w.close();
        }
        MainWindow w;
        QCOMPARE(w.size(), QSize(1100, 800));
        auto *menu = w.findChild<QMenu *>(QStringLiteral("mnuRecent"));
        QCOMPARE(menu->actions().size(), RecentGames::Kept);
        QCOMPARE(menu->actions()[0]->text(), "&1 game.map, Humans, year 2400");
        QVERIFY(QDir(games[6]->dir()).removeRecursively());
        menu->actions()[1]->trigger();
        QCOMPARE(m_sink.messages.size(), 1);
        QVERIFY(m_sink.messages[0].contains("no longer there"));
        QCOMPARE(menu->actions().size(), RecentGames::Kept - 1);
        QCOMPARE(w.gameData().PlanetCount, 0);
        menu->actions()[1]->trigger(); // 2409
        QCOMPARE(w.gameData().GameYear, 2409);
        QCOMPARE(w.gameData().MapFilePath, QFileInfo(games[9]->path("game.map")).absoluteFilePath());
        QVERIFY(w.overlayBar()->button(BordersButton)->isChecked());
        QCOMPARE(menu->actions()[0]->text(), "&1 game.map, Humans, year 2409");
        QCOMPARE(m_sink.messages.size(), 1);
    }

    // A race's chosen colour comes back with its game, whatever column the
    // race takes then; another game keeps the start colours.
    void chosenColoursComeBackWithTheirGame()
    {
        TestGame game, other;
        for (const TestGame *g : {&game, &other}) {
            g->writeMap({{"Home", 1100, 1100}, {"Near", 1300, 1300}, {"Far", 1500, 1500}});
            g->writeReport("game.P1", {homeLine(), planetLine("Far", "Robots", "None", "0", "5000")});
        }
        {
            MainWindow w;
            w.show();
            QVERIFY(load(w, game.path("game.map")));
            QCOMPARE(w.gameData().player(2)[RaceName].text(), QStringLiteral("Robots"));
            auto *robots = w.findChild<RaceSwatch *>(QStringLiteral("RaceC1"));
            QVERIFY(whileModal<RaceColourWindow>([&] { robots->click(); }, [](RaceColourWindow &editor) {
                QCOMPARE(editor.raceShown()->text(), QStringLiteral("Colour of Robots"));
                for (int i = 0; i < 3; ++i)
                    editor.slider(i)->setValue(QList<int>{64, 200, 72}[i]);
                editor.okButton()->click();
            }));
            QCOMPARE(robots->accessibleDescription(), QStringLiteral("Robots in red 64, green 200, blue 72"));
        }
        // Another race met first moves the Robots to column 3.
        game.writeReport("game.P1", {homeLine(), planetLine("Near", "Aliens", "None", "0", "5000"),
                                     planetLine("Far", "Robots", "None", "0", "5000")});
        MainWindow restarted;
        restarted.show();
        QVERIFY(load(restarted, game.path("game.map")));
        QCOMPARE(restarted.gameData().player(3)[RaceName].text(), QStringLiteral("Robots"));
        QCOMPARE(restarted.gameData().raceColour(3), 64 + 256 * 200 + 65536 * 72);
        QCOMPARE(restarted.gameData().raceColour(2), GameData().raceColour(2));
        QVERIFY(countColour(restarted.findChild<RaceSwatch *>(QStringLiteral("RaceC2"))->grab().toImage(),
                            QColor(64, 200, 72)) > 0);
        QVERIFY(load(restarted, other.path("game.map")));
        QCOMPARE(restarted.gameData().raceColour(2), GameData().raceColour(2));
    }

    // Saved beside the game, no year in the name when none was given. A bad
    // annotation colour ends the redraw with one message; the rest stays.
    void savesTheMapBesideTheGame()
    {
        QTemporaryDir dir;
        QVERIFY(copySample(dir));
        MainWindow w;
        QVERIFY(load(w, dir.filePath(QStringLiteral("MARCHES.map"))));
        QTest::mouseClick(w.overlayBar()->button(UniverseButton), Qt::LeftButton);
        w.findChild<QAction *>("mnuSave")->trigger();
        const QString path = dir.filePath(QStringLiteral("Universe Map.bmp"));
        QCOMPARE(m_sink.messages, QStringList{QStringLiteral("Map saved to ") + QDir::toNativeSeparators(path)});
        QCOMPARE(QImage(path, "BMP").convertToFormat(QImage::Format_RGB32), w.raster().image());

        QFile annotations(dir.filePath(QStringLiteral("MARCHES.VMK")));
        QVERIFY(annotations.open(QIODevice::WriteOnly));
        annotations.write("L,1,1,500,500,9\r\n");
        annotations.close();
        m_sink.messages.clear();
        QTest::mouseClick(w.overlayBar()->button(VmkButton), Qt::LeftButton);
        QCOMPARE(m_sink.messages.size(), 1);
        QVERIFY(m_sink.messages[0].startsWith(QStringLiteral("Drawing the map failed")));
        QVERIFY(!pictureIsBlack(w.raster().image()));
        QVERIFY(w.overlayBar()->button(UniverseButton)->isEnabled());
    }

    // The shared sample window from here on. Clear Map releases every overlay;
    // a menu overlay draws over the picture; every control has a name, and a
    // button's accessible toggle redraws as a click does.
    void overlaysAndControls()
    {
        const SampleWindow &s = *m_s;
        QVERIFY(s.w.windowTitle().endsWith(QStringLiteral("{ MARCHES.map  Year:2431 }")));
        QCOMPARE(s.w.findChild<QComboBox *>(QStringLiteral("Combo1"))->count(), s.w.gameData().PlayerCount);
        for (int i = 0; i < OverlayButtonCount; ++i)
            QVERIFY(s.button(i)->isEnabled());
        QVERIFY(s.w.findChild<QMenu *>(QStringLiteral("mnuOver"))->isEnabled());
        QVERIFY(pictureIsBlack(s.picture()));
        s.press(UniverseButton);
        s.press(BordersButton);
        QVERIFY(s.w.overlayButtons().pressed(UniverseButton));
        QVERIFY(!pictureIsBlack(s.picture()));
        s.press(ClearMapButton);
        for (int i = 0; i < OverlayButtonCount; ++i)
            QVERIFY(!s.button(i)->isChecked());
        QVERIFY(pictureIsBlack(s.picture()));
        QVERIFY(m_sink.messages.isEmpty());
        QVERIFY(s.w.findChild<QPushButton *>(QStringLiteral("EstHab"))->isEnabled());
        s.action("mnuStarGate")->trigger();
        QCOMPARE(m_sink.messages.last(), QStringLiteral("Show Safe gating distance only?"));
        QVERIFY(!pictureIsBlack(s.picture()));

        QCOMPARE(unnamedControls(&s.w).join(' '), QString());
        QCOMPARE(QAccessible::queryAccessibleInterface(s.map())->text(QAccessible::Name), "Map");
        QCOMPARE(QAccessible::queryAccessibleInterface(s.button(UniverseButton))->text(QAccessible::Name), "Show Universe");
        s.press(ClearMapButton);
        QAccessible::queryAccessibleInterface(s.button(BordersButton))->actionInterface()->doAction(
            QAccessibleActionInterface::toggleAction());
        QVERIFY(s.w.overlayButtons().pressed(BordersButton));
        QVERIFY(!pictureIsBlack(s.picture()));
    }

    // The panel and the ring for a planet clicked, each value read with its
    // caption; an unreported planet scores 0; deep space leaves the panel.
    void hoverAndClickAPlanet()
    {
        const SampleWindow &s = *m_s;
        const GameData &d = s.w.gameData();
        const PlanetInfo &p = s.named("LGM 4"); // reported, no other planet within 20 light years
        const QString name = p[Name].text();
        hover(s.map(), s.at(p));
        QCOMPARE(s.label("theplanet"), " " + name);
        QCOMPARE(s.map()->toolTip(), "Click for more information on " + name);
        QVERIFY(QRegularExpression(QStringLiteral("^ X:\\d+ Y:\\d+$")).match(s.label("XYCoord")).hasMatch());
        const QImage before = s.picture();
        const QString annotations = d.AnnotationText;
        s.click(s.at(p));
        QCOMPARE(s.label("PlanetName"), name);
        QVERIFY(s.label("RHab0").endsWith('%'));
        const auto panel = [&s](const char *name) { return readOut(s.w.findChild<QLabel *>(QLatin1String(name))); };
        QCOMPARE(panel("PlanetName"), "Planet: " + name);
        QVERIFY(!s.label("Grav2").isEmpty() && !s.label("IronMCT").isEmpty());
        QCOMPARE(panel("Grav2"), "Gravity Original: " + s.label("Grav2"));
        QCOMPARE(panel("IronMCT"), "Ironium Conc.: " + s.label("IronMCT"));
        QCOMPARE(panel("RHab0"), s.label("RName0") + ' ' + s.label("RHab0"));
        QVERIFY(m_sink.messages.isEmpty());
        // The ring is on the screen only, and survives a redraw.
        QVERIFY(ringed(s.screen(), s.planetPixel(p)));
        QCOMPARE(s.picture(), before);
        QCOMPARE(d.AnnotationText, annotations);
        s.press(UniverseButton);
        QVERIFY(ringed(s.screen(), s.planetPixel(p)));
        QVERIFY(!ringed(s.picture(), s.planetPixel(p)));

        const PlanetInfo &unknown = s.named("Match"); // never reported, alone as well
        s.click(s.at(unknown));
        QCOMPARE(s.label("ReportAge"), "Unexplored");
        for (int i = 0; i < d.PlayerCount; ++i)
            QCOMPARE(s.w.detailPanel()->raceHab(i)->text(), "0%");
        const QPoint deepSpace(2, s.map()->height() - 2);
        hover(s.map(), deepSpace);
        s.click(deepSpace);
        QCOMPARE(s.label("theplanet"), " Deep Space");
        QCOMPARE(s.label("PlanetName"), unknown[Name].text());
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
        QVERIFY(s.w.gameData().AnnotationText.endsWith(QStringLiteral(",5\r\n")));
        QVERIFY(s.w.gameData().AnnotationText.contains(QStringLiteral("\r\nL,")));
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
            for (int i = 0; i < OverlayButtonCount; ++i)
                QVERIFY(s.button(i)->isEnabled());
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

        if (found.isEmpty()) {
            QCOMPARE(s.status(), "No planet is named \"" + typed + '"');
            QCOMPARE(s.label("PlanetName"), shown);
            QCOMPARE(s.w.markedPlanet(), marked);
            QCOMPARE(s.view(), view);
            QCOMPARE(s.picture(), before);
            return;
        }
        QCOMPARE(s.label("PlanetName"), found);
        const PlanetInfo &p = s.named(found);
        QCOMPARE(&d.planet(s.w.markedPlanet()), &p);
        QVERIFY(ringed(s.screen(), s.planetPixel(p)));
        QCOMPARE(d.Scale, view[0]);
        const bool moved = view != s.view();
        QCOMPARE(moved, found == "Glenn");
        if (moved) {
            QVERIFY(qAbs((d.OriginX + d.FarX) / 2.0 - p[X].val()) <= 1);
            QVERIFY(qAbs((d.OriginY + d.FarY) / 2.0 - p[Y].val()) <= 1);
            QVERIFY(s.picture() != before);
        } else {
            QCOMPARE(s.picture(), before);
        }
        QVERIFY(!ringed(s.picture(), s.planetPixel(p)));
    }

    // Measure from beside one planet to another: both ends snap, the line
    // floats, a second click keeps the figures until the next move.
    void measure_data()
    {
        QTest::addColumn<bool>("zoomed");
        QTest::newRow("full view") << false;
        QTest::newRow("zoomed") << true;
    }
    void measure()
    {
        QFETCH(bool, zoomed);
        const SampleWindow &s = *m_s;
        if (zoomed)
            s.zoomTo(40, 150, 250);
        const PlanetInfo &from = s.named("All Work"), &to = s.named("H2O");
        QVERIFY(inView(s.w.gameData(), from) && inView(s.w.gameData(), to));
        QCOMPARE(s.w.gameData().Scale > 12.5, zoomed);
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
        int rows = -1;
        QVERIFY(whileModal<PlanetGridWindow>([&] { s.action("mnuGrid")->trigger(); },
                                             [&](PlanetGridWindow &grid) { rows = grid.model().rowCount(); }));
        QCOMPARE(rows, s.w.gameData().PlanetCount);
        QTest::mouseClick(s.w.findChild<QPushButton *>(QStringLiteral("EstHab")), Qt::LeftButton);
        const QImage estimated = s.picture();
        m_sink.inputs = QStringList{"0.2"};
        QString shown;
        QVERIFY(whileModal<EmpireStatWindow>([&] { s.action("mnuGrid2")->trigger(); }, [&](EmpireStatWindow &stats) {
            shown = stats.raceList()->currentText();
            stats.rangeValue(MinGrav)->click();
        }));
        QCOMPARE(shown, s.w.gameData().OwnRaceName);
        QCOMPARE(habBoundsOf(s.w.gameData(), shown).minGrav, 0.2);
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
        m_sink.messages.clear();
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

    // After a resize the picture, and Save Map at once, are what the
    // command line draws at the new size.
    void aResizedMapIsDrawnAtItsNewSize()
    {
        const SampleWindow &s = *m_s;
        s.press(ClearMapButton);
        s.press(BordersButton);
        QTemporaryDir dir;
        const auto rendered = [&dir](int side) {
            const QString png = dir.filePath(QStringLiteral("%1.png").arg(side));
            const CliRun run = runCli({"render", VELTRO_SAMPLES "/MARCHES.map", "--year", "2431", "--layers", "borders",
                                       "--size", QString::number(side), "-o", png});
            return run.status == 0 ? QImage(png).convertToFormat(QImage::Format_RGB32) : QImage();
        };
        const QSize size = s.w.size();
        s.w.resize(size + QSize(90, 90));
        QTRY_COMPARE(s.w.raster().pixels(), s.map()->width());
        const QImage bigger = rendered(s.map()->width());
        QVERIFY(!bigger.isNull());
        QTRY_COMPARE(s.picture(), bigger);

        const QString gameDir = s.w.gameData().GameDir;
        s.w.gameData().GameDir = dir.path();
        s.w.resize(size - QSize(60, 60));
        QTRY_COMPARE(s.w.raster().pixels(), s.map()->width());
        s.action("mnuSave")->trigger();
        QCOMPARE(QImage(dir.filePath(QStringLiteral("Universe Map2431.bmp"))).convertToFormat(QImage::Format_RGB32),
                 rendered(s.map()->width()));
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
        s.w.annotationTools()->toolButton(DrawTool::Line)->click();
        s.click(QPoint(50, 50));
        s.click(QPoint(90, 70));
        s.w.annotationTools()->toolButton(DrawTool::StopDrawing)->click();
        GameData &d = s.w.gameData();
        const QString annotations = d.AnnotationText;
        const QList<double> view = s.view();
        const auto pressed = [&s] {
            QList<bool> p;
            for (int i = 0; i < OverlayButtonCount; ++i)
                p << s.button(i)->isChecked();
            return p;
        };
        const QList<bool> overlays = pressed();
        QVERIFY(overlays[ZoomInButton]);

        QSignalSpy offers(&s.w.reportWatch(), &ReportWatch::newReports);
        for (const char *name : {"MARCHES.P1", "MARCHES.P2", "MARCHES.P3", "MARCHES.P4", "MARCHES.P5"}) {
            QFile f(m_folder.filePath(QLatin1String(name)));
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
        QCOMPARE(s.view(), view);
        QCOMPARE(pressed(), overlays);
        QCOMPARE(s.label("PlanetName"), "All Work");
        QVERIFY(ringed(s.screen(), s.planetPixel(s.named("All Work"))));
        QCOMPARE(d.AnnotationText, annotations);
        QVERIFY(!s.w.findChild<QLabel *>("NewReports")->isVisible());
        const QImage reloaded = s.picture();

        // Renamed over the old one, with a line of too many fields.
        QSaveFile report(m_folder.filePath("MARCHES.P2"));
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
        QCOMPARE(pressed(), overlays);
    }

    // A new race colour shows in the legend at once, on the map once the
    // editor closes; closed without OK, nothing is kept but the map redraws.
    void recolouredRaceShowsInTheLegendAndOnTheMap()
    {
        const SampleWindow &s = *m_s;
        s.press(ClearMapButton);
        s.press(BordersButton);
        const QColor chosen(64, 200, 72);
        QCOMPARE(countColour(s.picture(), chosen), 0);
        RaceSwatch *swatch = s.w.findChild<RaceSwatch *>(QStringLiteral("RaceC0"));
        QVERIFY(whileModal<RaceColourWindow>([&] { swatch->click(); }, [&](RaceColourWindow &editor) {
            QCOMPARE(editor.slider(0)->value(), 255); // the race's colour so far
            for (int i = 0; i < 3; ++i)
                editor.slider(i)->setValue(QList<int>{64, 200, 72}[i]);
            editor.okButton()->click();
            QVERIFY(countColour(swatch->grab().toImage(), chosen) > 0);
            QCOMPARE(countColour(s.picture(), chosen), 0);
        }));
        QVERIFY(countColour(s.picture(), chosen) > 0);
        QCOMPARE(s.w.gameData().raceColour(1), 64 + 256 * 200 + 65536 * 72);

        s.press(ClearMapButton);
        s.action("mnuNames")->trigger();
        QVERIFY(!pictureIsBlack(s.picture()));
        QVERIFY(whileModal<RaceColourWindow>([&] { swatch->click(); }, [](RaceColourWindow &editor) {
            editor.slider(0)->setValue(10);
        }));
        QCOMPARE(s.w.gameData().raceColour(1), 64 + 256 * 200 + 65536 * 72);
        QVERIFY(pictureIsBlack(s.picture()));
    }

private:
    IsolatedSettings m_settings;
    RecordingSink m_sink;
    QTemporaryDir m_folder;
    std::unique_ptr<SampleWindow> m_s;
};

QTEST_MAIN(MainWindowTest)
#include "tst_mainwindow.moc"
