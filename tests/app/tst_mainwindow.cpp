// The main window driven offscreen with the mouse and the keys: loading,
// Recent Games, remembered colours and the resize rule, then one sample game
// loaded once for the map's wiring, in the order the cases leave it.

#include "AccessibleText.h"
#include "AnnotationToolBox.h"
#include "CliRun.h"
#include "FindPlanetField.h"
#include "IsolatedSettings.h"
#include "ModalWindow.h"
#include "PictureChecks.h"
#include "RaceColourWindow.h"
#include "RaceLegend.h"
#include "RecordingSink.h"
#include "SampleWindow.h"
#include "TestGame.h"

#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSaveFile>
#include <QSignalSpy>
#include <QSlider>

namespace {

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
        copySample(m_folder);
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
    // the window as it starts: nothing to draw. A game then loaded without a
    // year is saved beside it, no year in the name.
    void aFailedLoadThenSaveMap()
    {
        TestGame game;
        for (const char *name : {"bad.map", "bad.P1"})
            game.write(name, "#\tX\tY\tName\r\n1\t1010\tnowhere\tA\r\n");
        MainWindow w;
        QVERIFY(!load(w, game.path("bad.map")));
        QCOMPARE(m_sink.messages.size(), 1);
        QVERIFY(m_sink.messages[0].contains(QStringLiteral("bad.map, line 2")));
        QCOMPARE(overlayStates(w, &QToolButton::isEnabled), AllOff);
        QVERIFY(pictureIsBlack(w.raster().image()));

        copySample(game);
        QVERIFY(load(w, game.path(QStringLiteral("MARCHES.map"))));
        QTest::mouseClick(w.overlayBar()->button(UniverseButton), Qt::LeftButton);
        m_sink.messages.clear();
        w.findChild<QAction *>("mnuSave")->trigger();
        const QString path = game.path(QStringLiteral("Universe Map.bmp"));
        QCOMPARE(m_sink.messages, QStringList{QStringLiteral("Map saved to ") + QDir::toNativeSeparators(path)});
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
    // year; a map gone says so and leaves.
    void recentGames()
    {
        TestGame games;
        const auto map = [&games](int i) { return games.path(QStringLiteral("g%1.map").arg(i)); };
        games.writeMap({{"Home", 1100, 1100}}, QStringLiteral("g9.map"));
        games.writeReport(QStringLiteral("g9.P1"), {homeLine()});
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

        MainWindow w;
        auto *menu = w.findChild<QMenu *>(QStringLiteral("mnuRecent"));
        QCOMPARE(menu->actions().size(), RecentGames::Kept);
        menu->actions()[0]->trigger(); // 2406, never written
        QCOMPARE(menu->actions().size(), RecentGames::Kept - 1);
        QCOMPARE(w.gameData().PlanetCount, 0);
        menu->actions()[0]->trigger(); // 2409
        QCOMPARE(w.gameData().GameYear, 2409);
        QCOMPARE(w.gameData().MapFilePath, QFileInfo(map(9)).absoluteFilePath());
        QCOMPARE(menu->actions()[0]->text(), "&1 g9.map, Humans, year 2409");
        QCOMPARE(m_sink.messages.size(), 1);
        QVERIFY(m_sink.messages[0].contains("no longer there"));
    }

    // A new race colour shows on the map once the editor closes. It comes
    // back with its game, whatever column the race takes then; another game
    // keeps the start colours.
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
            }));
            QVERIFY(countColour(w.raster().image(), chosen) > 0);
            QCOMPARE(w.gameData().raceColour(2), stored);
        }
        // Another race met first moves the Robots to column 3.
        game.writeReport("game.P1", {homeLine(), planetLine("Near", "Aliens", "None", "0", "5000"),
                                     planetLine("Far", "Robots", "None", "0", "5000")});
        MainWindow restarted;
        QVERIFY(load(restarted, game.path("game.map")));
        QCOMPARE(restarted.gameData().raceColour(3), stored);
        QCOMPARE(restarted.gameData().raceColour(2), GameData().raceColour(2));
        QVERIFY(load(restarted, other.path("game.map")));
        QCOMPARE(restarted.gameData().raceColour(2), GameData().raceColour(2));
    }

    // The shared sample window from here on: every control has a name; the
    // panel and the ring for a planet clicked, each value read with its caption.
    void hoverAndClickAPlanet()
    {
        const SampleWindow &s = *m_s;
        QVERIFY(s.w.windowTitle().endsWith(QStringLiteral("{ MARCHES.map  Year:2431 }")));
        QCOMPARE(unnamedControls(&s.w).join(' '), QString());
        s.press(BordersButton);
        const PlanetInfo &p = s.named("LGM 4"); // reported, no other planet within 20 light years
        const QString name = p[Name].text();
        hover(s.map(), s.at(p));
        QCOMPARE(s.label("theplanet"), " " + name);
        const QImage before = s.picture();
        s.click(s.at(p));
        const auto panel = [&s](const char *name) { return readOut(s.w.findChild<QLabel *>(QLatin1String(name))); };
        QCOMPARE(panel("PlanetName"), "Planet: " + name);
        QCOMPARE(panel("RHab0"), s.label("RName0") + ' ' + s.label("RHab0"));
        // The ring is on the screen only, and survives a redraw.
        QVERIFY(ringed(s.screen(), s.planetPixel(p)));
        QCOMPARE(s.picture(), before);
        s.press(UniverseButton);
        QVERIFY(ringed(s.screen(), s.planetPixel(p)));
        QVERIFY(!ringed(s.picture(), s.planetPixel(p)));
    }

    // A square too small gives one message and leaves the view as it was.
    void zoomTooSmall()
    {
        const SampleWindow &s = *m_s;
        const QList<double> view = s.view();
        s.press(ZoomInButton);
        s.click(QPoint(100, 100));
        s.click(QPoint(100, 100));
        QCOMPARE(m_sink.messages.size(), 1);
        QVERIFY(m_sink.messages[0].contains(QStringLiteral("too small")));
        QCOMPARE(s.view(), view);
        QCOMPARE(overlayStates(s.w, &QToolButton::isEnabled), AllOn);
    }

    // Ctrl+F and a name, completed as typed: the panel and the ring as a
    // click gives them, a zoomed view moved to centre a planet it leaves out.
    void findPlanet_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("found");
        QTest::addColumn<bool>("zoomed");
        QTest::newRow("middle of a name, any case") << "fARQUa" << "McFarquardt" << false;
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
        QTest::keyClick(&s.w, Qt::Key_F, Qt::ControlModifier);
        QLineEdit *field = s.w.findField()->edit();
        QTRY_VERIFY(field->hasFocus());
        field->clear();
        QTest::keyClicks(field, typed);
        QTest::keyClick(field, Qt::Key_Return);

        // Only a planet outside the view moves it, at the same scale, and redraws.
        const bool moves = found == "Glenn";
        QCOMPARE(s.view() != view, moves);
        QCOMPARE(s.picture() != before, moves);
        QCOMPARE(d.Scale, view[0]);
        if (found.isEmpty()) {
            QCOMPARE(s.status(), "No planet is named \"" + typed + '"');
            QCOMPARE(s.label("PlanetName"), shown);
            return;
        }
        QCOMPARE(s.label("PlanetName"), found);
        const PlanetInfo &p = s.named(found);
        QVERIFY(ringed(s.screen(), s.planetPixel(p)));
        if (moves) {
            QVERIFY(qAbs((d.OriginX + d.FarX) / 2.0 - p[X].val()) <= 1);
            QVERIFY(qAbs((d.OriginY + d.FarY) / 2.0 - p[Y].val()) <= 1);
        }
    }

    // Measure from beside one planet to another: both ends snap, nothing is
    // drawn, a second click keeps the figures until the next move.
    void measure()
    {
        const SampleWindow &s = *m_s;
        const PlanetInfo &from = s.named("All Work"), &to = s.named("H2O");
        const QImage before = s.picture();
        s.w.annotationTools()->toolButton(DrawTool::Measure)->click();
        s.click(s.at(from) + QPoint(2, 2)); // two pixels off the planet, within its pick box
        hover(s.map(), s.at(to));
        s.click(s.at(to));
        QCOMPARE(s.status(), "All Work to H2O: 107.5 l.y.; years at warp 5: 5, 6: 3, 7: 3, 8: 2, 9: 2, 10: 2");
        QCOMPARE(s.picture(), before);
        hover(s.map(), s.at(to) + QPoint(30, 30));
        QCOMPARE(s.status(), QString());
        s.w.annotationTools()->toolButton(DrawTool::StopDrawing)->click();
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
        const QString annotations = d.AnnotationText; // the sample's own
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

        m_sink.inputs << "2432";
        QTest::keyClick(&s.w, Qt::Key_F5);
        QCOMPARE(m_sink.messages, QStringList{"Reload|Game year of the new turn:|2432"});
        QCOMPARE(d.GameYear, 2432);
        QCOMPARE(s.view(), view);
        QCOMPARE(overlayStates(s.w, &QToolButton::isChecked), overlays);
        QCOMPARE(s.label("PlanetName"), "All Work");
        QCOMPARE(d.AnnotationText, annotations);
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
    }

private:
    IsolatedSettings m_settings;
    RecordingSink m_sink;
    TestGame m_folder;
    std::unique_ptr<SampleWindow> m_s;
};

QTEST_MAIN(MainWindowTest)
#include "tst_mainwindow.moc"
