// Every window opens on the screen, keeps a minimum size and at any size
// above it shows every control whole with its focus marked; the map shows
// whole at the screen's device pixels. The offscreen platform's screen
// (logical size, device pixel ratio) comes from the test's configuration file.

#include "DetailPanel.h"
#include "EmpireStatWindow.h"
#include "FocusMark.h"
#include "GameGenerator.h"
#include "HistoryWindow.h"
#include "IsolatedSettings.h"
#include "LayoutFaults.h"
#include "LegendWindow.h"
#include "PlanetGridWindow.h"
#include "RaceColourWindow.h"
#include "RecordingSink.h"
#include "SampleWindow.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QScreen>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <functional>
#include <memory>

namespace {

QRect available() { return QGuiApplication::primaryScreen()->availableGeometry(); }

QString faultsOf(const QWidget *w) { return layoutFaults(w).join(QStringLiteral("; ")); }

} // namespace

class WindowFitTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        gamegen::GameOptions options;
        options.mapPath = VELTRO_TEST_MAPS "/tiny-packed-00001.map";
        options.outDir = m_turns.path();
        options.players = 3;
        options.gameYear = 2403;
        gamegen::generateHistory(options, 3);

        m_main = std::make_unique<SampleWindow>(QStringLiteral(VELTRO_SAMPLES "/MARCHES.map"));
        QVERIFY(available().contains(m_main->w.frameGeometry()));
        for (OverlayButton b : {BordersButton, UniverseButton, OwnedButton})
            m_main->press(b);
        // A planet clicked, so that the panel shows its values.
        m_main->click(m_main->at(m_main->named("All Work")));
    }

    void mainWindowShowsAllOfTheMap_data()
    {
        QTest::addColumn<QSize>("size");
        const QSize least = m_main->w.minimumSize();
        QTest::newRow("least") << least;
        QTest::newRow("below the least: held at it") << least - QSize(100, 100);
    }

    void mainWindowShowsAllOfTheMap()
    {
        QFETCH(QSize, size);
        MainWindow &w = m_main->w;
        w.resize(size);
        QTRY_COMPARE(w.size(), size.expandedTo(w.minimumSize()));
        const MapCanvasWidget *map = w.mapWidget();
        QCOMPARE(map->visibleRegion(), QRegion(map->rect()));
        QVERIFY(available().contains(QRect(map->mapToGlobal(QPoint(0, 0)), map->size())));
        // Drawn at the screen's device pixels, not scaled up.
        QCOMPARE(w.raster().pixels(), map->width());
        QCOMPARE(w.raster().image().width(), qRound(map->width() * w.devicePixelRatioF()));
        // Below the menu bar by the rule's 560 twips.
        QCOMPARE(map->mapTo(&w, QPoint(0, 0)).y() - w.centralWidget()->y(), 37);
        for (int tab = 0; tab < w.detailPanel()->count(); ++tab) {
            w.detailPanel()->setCurrentIndex(tab);
            QTRY_VERIFY2(layoutFaults(&w).isEmpty(), qPrintable(w.detailPanel()->tabText(tab) + ": " + faultsOf(&w)));
        }
    }

    void secondaryWindowsFit_data()
    {
        QTest::addColumn<std::function<QWidget *(MainWindow &)>>("open");
        using Open = std::function<QWidget *(MainWindow &)>;
        const QString turns = m_turns.path();
        // A game deep in folders, whose path is wider than the window.
        QTest::newRow("file selection") << Open([turns](MainWindow &w) -> QWidget * {
            const QString deep = turns + QStringLiteral("/Stars games/%1/Marches").arg(QString(120, u'x'));
            if (!QDir().mkpath(deep) || !QFile::copy(QStringLiteral(VELTRO_SAMPLES "/MARCHES.map"), deep + "/MARCHES.map") ||
                !w.openFileDialog().openOn(deep + "/MARCHES.map"))
                qFatal("no game in a deep folder");
            return &w.openFileDialog();
        });
        QTest::newRow("planet grid") << Open([](MainWindow &w) -> QWidget * {
            auto *grid = new PlanetGridWindow(&w);
            grid->fill(w.gameData());
            return grid;
        });
        QTest::newRow("empire statistics")
            << Open([](MainWindow &w) -> QWidget * { return new EmpireStatWindow(w.gameData(), &w); });
        QTest::newRow("colour editor") << Open([](MainWindow &w) -> QWidget * {
            auto *editor = new RaceColourWindow(w.gameData(), &w);
            editor->openFor(0);
            return editor;
        });
        QTest::newRow("key") << Open([](MainWindow &w) -> QWidget * { return new LegendWindow(&w); });
        QTest::newRow("history") << Open([turns](MainWindow &w) -> QWidget * {
            auto *history = new HistoryWindow(turns, w.overlayButtons(), &w);
            QSignalSpy loaded(history, &HistoryWindow::loadingFinished);
            if (!loaded.wait(20000) || !history->isLoaded())
                qFatal("the turns did not load");
            return history;
        });
    }

    void secondaryWindowsFit()
    {
        QFETCH(std::function<QWidget *(MainWindow &)>, open);
        QWidget *window = open(m_main->w);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QVERIFY(available().contains(window->frameGeometry()));
        QVERIFY(!window->minimumSize().isEmpty());
        QTRY_VERIFY2(layoutFaults(window).isEmpty(), qPrintable("opening: " + faultsOf(window)));
        window->resize(window->minimumSize());
        QTRY_COMPARE(window->size(), window->minimumSize());
        QTRY_VERIFY2(layoutFaults(window).isEmpty(), qPrintable("least: " + faultsOf(window)));
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
        for (QWidget *control : window->findChildren<QWidget *>())
            if ((control->focusPolicy() & Qt::TabFocus) && control->isVisible() && control->isEnabled())
                QVERIFY2(marksFocus(control), qPrintable(layoutfaults::nameOf(control) + " shows no focus"));
        if (auto *history = qobject_cast<HistoryWindow *>(window)) {
            // Drawn at the screen's device pixels once the resize settles.
            QTRY_VERIFY(!history->mapLabel()->pixmap().isNull());
            QTRY_COMPARE(history->mapLabel()->pixmap().devicePixelRatio(), window->devicePixelRatioF());
        }
        window->close();
        if (window != &m_main->w.openFileDialog())
            delete window;
    }

private:
    // Window places and recent games neither come from nor go to the user's.
    IsolatedSettings m_settings;
    QTemporaryDir m_turns;
    RecordingSink m_sink;
    std::unique_ptr<SampleWindow> m_main;
};

QTEST_MAIN(WindowFitTest)
#include "tst_windowfit.moc"
