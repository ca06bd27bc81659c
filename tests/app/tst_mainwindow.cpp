// The main window driven offscreen: its start-up state, loading the sample
// game through the file selection, overlay presses, Recent Games and the
// window as the last run left it, and the resize rule.

#include "EmpireStatWindow.h"
#include "IsolatedSettings.h"
#include "MainWindow.h"
#include "MainWindowLayout.h"
#include "ModalWindow.h"
#include "RecordingSink.h"
#include "OpenFileDialog.h"
#include "OverlayButtonBar.h"
#include "PictureChecks.h"
#include "PlanetGridWindow.h"
#include "RaceColourWindow.h"
#include "RaceLegend.h"
#include "RasterSurface.h"
#include "RecentGames.h"
#include "TestGame.h"

#include <QComboBox>
#include <QLabel>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

namespace {

int countColour(const QImage &image, const QColor &colour)
{
    int n = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            n += image.pixelColor(x, y) == colour;
    return n;
}

QAction *action(const MainWindow &w, const char *name)
{
    return w.findChild<QAction *>(QLatin1String(name));
}

// Picks the map file and the game year in the selection window and generates.
bool load(MainWindow &w, const QString &map, const QString &year = {})
{
    OpenFileDialog &dialog = w.openFileDialog();
    if (!dialog.openOn(map))
        return false;
    QTest::keyClicks(dialog.gameYearBox(), year);
    dialog.confirm();
    return w.generate();
}

} // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
private slots:
    void init() { m_sink.messages.clear(); }

    void startsWithNothingLoaded()
    {
        MainWindow w;
        QCOMPARE(w.windowTitle(), QStringLiteral("Veltro Marches for Stars!   Version 0.1.0"));
        for (int i = 0; i < OverlayButtonCount; ++i)
            QVERIFY(!w.overlayBar()->button(i)->isEnabled());
        QVERIFY(!w.findChild<QMenu *>(QStringLiteral("mnuOver"))->isEnabled());
        QVERIFY(action(w, "mnuMap")->isEnabled());
        QVERIFY(action(w, "mnuGrid")->isEnabled());
        QVERIFY(action(w, "mnuGrid2")->isEnabled());
        QVERIFY(pictureIsBlack(w.raster().image()));
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

    void loadsTheSampleAndDrawsOverlays()
    {
        MainWindow w;
        w.resize(1200, 800);
        QVERIFY(load(w, QStringLiteral(VELTRO_SAMPLES "/MARCHES.map"), QStringLiteral("2431")));
        QVERIFY(w.windowTitle().endsWith(QStringLiteral("{ MARCHES.map  Year:2431 }")));
        QCOMPARE(w.findChild<QComboBox *>(QStringLiteral("Combo1"))->count(), w.gameData().PlayerCount);
        for (int i = 0; i < OverlayButtonCount; ++i)
            QVERIFY(w.overlayBar()->button(i)->isEnabled());
        QVERIFY(w.findChild<QMenu *>(QStringLiteral("mnuOver"))->isEnabled());
        QVERIFY(pictureIsBlack(w.raster().image()));

        QTest::mouseClick(w.overlayBar()->button(UniverseButton), Qt::LeftButton);
        QTest::mouseClick(w.overlayBar()->button(BordersButton), Qt::LeftButton);
        QVERIFY(w.overlayButtons().pressed(UniverseButton));
        QVERIFY(!pictureIsBlack(w.raster().image()));

        QTest::mouseClick(w.overlayBar()->button(ClearMapButton), Qt::LeftButton);
        for (int i = 0; i < OverlayButtonCount; ++i)
            QVERIFY(!w.overlayBar()->button(i)->isChecked());
        QVERIFY(pictureIsBlack(w.raster().image()));
        QVERIFY(m_sink.messages.isEmpty());

        // Menu overlays draw over the picture as it stands.
        QVERIFY(w.findChild<QPushButton *>(QStringLiteral("EstHab"))->isEnabled());
        action(w, "mnuStarGate")->trigger();
        QCOMPARE(m_sink.messages.last(), QStringLiteral("Show Safe gating distance only?"));
        QVERIFY(!pictureIsBlack(w.raster().image()));
    }

    void savesTheMapBesideTheGame()
    {
        QTemporaryDir dir;
        for (const QString &name : QDir(QStringLiteral(VELTRO_SAMPLES)).entryList({QStringLiteral("MARCHES.*")}))
            QVERIFY(QFile::copy(QStringLiteral(VELTRO_SAMPLES "/") + name, dir.filePath(name)));
        MainWindow w;
        QVERIFY(load(w, dir.filePath(QStringLiteral("MARCHES.map"))));
        QTest::mouseClick(w.overlayBar()->button(UniverseButton), Qt::LeftButton);
        action(w, "mnuSave")->trigger();
        const QString path = dir.filePath(QStringLiteral("Universe Map.bmp")); // no year given
        QCOMPARE(m_sink.messages, QStringList{QStringLiteral("Map saved to ") + QDir::toNativeSeparators(path)});
        QImage saved(path, "BMP");
        QCOMPARE(saved.convertToFormat(QImage::Format_RGB32), w.raster().image());

        // A drawing fault (an annotation colour outside 1..7) ends the redraw
        // with one message; the layers drawn so far stay and the window works on.
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

    void recolouredRaceShowsAtOnceInTheLegendAndOnTheMapAfterClosing()
    {
        MainWindow w;
        w.resize(1200, 800);
        w.show();
        QVERIFY(load(w, QStringLiteral(VELTRO_SAMPLES "/MARCHES.map"), QStringLiteral("2431")));
        QTest::mouseClick(w.overlayBar()->button(BordersButton), Qt::LeftButton);
        const QColor chosen(64, 200, 72);
        QCOMPARE(countColour(w.raster().image(), chosen), 0);
        RaceSwatch *swatch = w.findChild<RaceSwatch *>(QStringLiteral("RaceC0"));
        QVERIFY(whileModal<RaceColourWindow>([&] { swatch->click(); }, [&](RaceColourWindow &editor) {
            QCOMPARE(editor.slider(0)->value(), 255); // the race's colour so far
            editor.slider(0)->setValue(chosen.red());
            editor.slider(1)->setValue(chosen.green());
            editor.slider(2)->setValue(chosen.blue());
            editor.okButton()->click();
            QVERIFY(countColour(swatch->grab().toImage(), chosen) > 0);
            QCOMPARE(countColour(w.raster().image(), chosen), 0);
        }));
        QVERIFY(countColour(w.raster().image(), chosen) > 0);
        QCOMPARE(w.gameData().raceColour(1), 64 + 256 * 200 + 65536 * 72);

        // Closed without OK: nothing stored, and the map is drawn again all
        // the same, which takes the names drawn over it away.
        QTest::mouseClick(w.overlayBar()->button(ClearMapButton), Qt::LeftButton);
        action(w, "mnuNames")->trigger();
        QVERIFY(!pictureIsBlack(w.raster().image()));
        QVERIFY(whileModal<RaceColourWindow>([&] { swatch->click(); }, [](RaceColourWindow &editor) {
            editor.slider(0)->setValue(10);
        }));
        QCOMPARE(w.gameData().raceColour(1), 64 + 256 * 200 + 65536 * 72);
        QVERIFY(pictureIsBlack(w.raster().image()));
    }

    // A colour chosen for a race comes back with its name whenever its game
    // loads again, in a new window as after a restart and whatever column
    // the race takes then; another game keeps the start colours.
    void chosenColoursComeBackWithTheirGame()
    {
        TestGame game, other;
        for (const TestGame *g : {&game, &other}) {
            g->writeMap({{"Home", 1100, 1100}, {"Near", 1300, 1300}, {"Far", 1500, 1500}});
            g->writeReport("game.P1", {homeLine(), planetLine("Far", "Robots", "None", "0", "5000")});
        }
        const int32_t chosen = 64 + 256 * 200 + 65536 * 72;
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
        QCOMPARE(restarted.gameData().raceColour(3), chosen);
        QCOMPARE(restarted.gameData().raceColour(2), GameData().raceColour(2));
        QVERIFY(countColour(restarted.findChild<RaceSwatch *>(QStringLiteral("RaceC2"))->grab().toImage(),
                            QColor(64, 200, 72)) > 0);
        QVERIFY(load(restarted, other.path("game.map")));
        QCOMPARE(restarted.gameData().raceColour(2), GameData().raceColour(2));
    }

    void dataMenuOpensTheGridAndTheStatistics()
    {
        MainWindow w;
        QVERIFY(load(w, QStringLiteral(VELTRO_SAMPLES "/MARCHES.map"), QStringLiteral("2431")));
        int rows = -1;
        QVERIFY(whileModal<PlanetGridWindow>([&] { action(w, "mnuGrid")->trigger(); },
                                             [&](PlanetGridWindow &grid) { rows = grid.model().rowCount(); }));
        QCOMPARE(rows, w.gameData().PlanetCount);

        // A new bound is stored at once; the picture waits for the next estimate.
        QTest::mouseClick(w.findChild<QPushButton *>(QStringLiteral("EstHab")), Qt::LeftButton);
        const QImage estimated = w.raster().image();
        m_sink.inputs = QStringList{"0.2"};
        QString shown;
        QVERIFY(whileModal<EmpireStatWindow>([&] { action(w, "mnuGrid2")->trigger(); }, [&](EmpireStatWindow &stats) {
            shown = stats.raceList()->currentText();
            stats.rangeValue(MinGrav)->click();
        }));
        QCOMPARE(shown, w.gameData().OwnRaceName);
        QCOMPARE(habBoundsOf(w.gameData(), shown).minGrav, 0.2);
        QCOMPARE(m_sink.messages.size(), 1); // the prompt, no refusal
        QCOMPARE(w.raster().image(), estimated);
    }

    // File > Recent Games: the last eight games, newest first, each loaded
    // again with its own race and year and the overlays the last run left
    // pressed; one whose map has gone says so and leaves the list.
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
            // The fourth game loaded again: first once more, not twice.
            recent.loaded(d);
            if (i == 3)
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

    void aFailedLoadShowsOneMessageAndKeepsTheWindowUsable()
    {
        TestGame game;
        for (const char *name : {"bad.map", "bad.P1"})
            game.write(name, "#\tX\tY\tName\r\n1\t1010\tnowhere\tA\r\n");
        MainWindow w;
        QVERIFY(!load(w, game.path("bad.map")));
        QCOMPARE(m_sink.messages.size(), 1);
        QVERIFY(m_sink.messages[0].contains(QStringLiteral("bad.map, line 2")));
        QVERIFY(action(w, "mnuMap")->isEnabled());
        QVERIFY(!w.overlayBar()->button(UniverseButton)->isEnabled());
    }

    // The resize rule at its edges, and fitted to a client area: the
    // readouts keep their row above the bottom under a tall title bar, and a
    // window too narrow for the map beside the panel and the legend is laid
    // out wider, to scroll.
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
        QFETCH(int, side);
        const int readoutHeight = 19, column = 300, scrollBar = 15;
        const auto fitted = fitClientArea({area, QSize(0, frameHeight), readoutHeight, 400, column, 300, scrollBar});
        QCOMPARE(fitted ? fitted->rule.universe.width() : 0, side);
        if (!fitted)
            return;
        const bool across = fitted->content.width() > area.width();
        QVERIFY((fitted->rule.xyCoord.y()) / 15 + readoutHeight <= area.height() - (across ? scrollBar : 0));
        QVERIFY(fitted->rule.raceLabelLeft / 15 >= fitted->rule.detailLeft / 15 + column + 8);
    }
private:
    IsolatedSettings m_settings;
    RecordingSink m_sink;
};

QTEST_MAIN(MainWindowTest)
#include "tst_mainwindow.moc"
