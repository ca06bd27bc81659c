// Timings of the desktop program with the huge sixteen-race game: from
// "Load && Generate Data" to the enabled overlay buttons, from nothing to a
// main window on screen, the pointer over the map, a planet found by name,
// and a new turn reloaded (offscreen platform).

#include "AnnotationToolBox.h"
#include "BenchMain.h"
#include "DetailPanel.h"
#include "FindPlanetField.h"
#include "IsolatedSettings.h"
#include "MainWindow.h"
#include "MapCanvasWidget.h"
#include "MessageSink.h"
#include "OverlayButtonBar.h"

#include <QApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QRadioButton>
#include <QStatusBar>
#include <QTest>
#include <QToolButton>
#include <benchmark/benchmark.h>

namespace {

// The user at the message boxes: takes the year proposed, and any other
// message is a failure of the run.
class AcceptingSink : public MessageSink {
public:
    AcceptingSink() : m_previous(setMessageSink(this)) {}
    ~AcceptingSink() override { setMessageSink(m_previous); }
    void information(QWidget *, const QString &text) override { failure = text; }
    bool question(QWidget *, const QString &, const QString &) override { return true; }
    QString input(QWidget *, const QString &, const QString &, const QString &proposed) override { return proposed; }
    QString failure;

private:
    MessageSink *m_previous;
};

// The huge game loaded in a shown window whose map is 1000 pixels square,
// with borders, planets and owners drawn.
class LoadedWindow {
public:
    LoadedWindow()
    {
        // The map's side follows the window's height.
        m_window.resize(1500, 1102);
        m_window.show();
        if (!QTest::qWaitForWindowExposed(&m_window))
            throw std::runtime_error("the window was not shown");
        m_window.gameData() = hugeGame()->selected();
        if (!m_window.generate())
            throw std::runtime_error("the generation failed");
        for (int b : {BordersButton, UniverseButton, OwnedButton})
            QTest::mouseClick(m_window.overlayBar()->button(b), Qt::LeftButton);
        QApplication::processEvents();
    }
    MainWindow &window() { return m_window; }
    MapCanvasWidget *map() { return m_window.mapWidget(); }

    // One motion of the pointer, and the repaint it asked for.
    void move(const QPoint &p)
    {
        QMouseEvent event(QEvent::MouseMove, QPointF(p), map()->mapToGlobal(QPointF(p)), Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(map(), &event);
        QApplication::processEvents();
    }
    void click(const QPoint &p)
    {
        QTest::mouseClick(map(), Qt::LeftButton, {}, p);
        QApplication::processEvents();
    }

private:
    MainWindow m_window;
};

// A motion while a line's rubber band follows the pointer: the readout,
// the pick scan over every planet, and the repaint of what the band covered.
void BM_PointerMotionWithBand(benchmark::State &state)
{
    LoadedWindow w;
    w.window().annotationTools()->toolButton(DrawTool::Line)->click();
    w.click(QPoint(200, 200));
    int step = 0;
    for (auto _ : state) {
        step ^= 1;
        w.move(QPoint(600 + step * 20, 500 + step * 10));
    }
    state.counters["map_pixels"] = w.map()->width();
}

// A click on a planet that fills the detail panel, the hab of all sixteen
// races and both pies included, and shows it.
void BM_ClickFillsPanel(benchmark::State &state)
{
    LoadedWindow w;
    const GameData &d = w.window().gameData();
    int row = 1;
    while (row < d.PlanetCount && d.planet(row)[Owner].text().isEmpty())
        ++row;
    const double k = w.map()->width() / double(Canvas::ScaleWidth);
    const QPoint at(int(d.planet(row)[X].val() * d.Scale * k) + 1, int(d.planet(row)[Y].val() * d.Scale * k) + 1);
    for (auto _ : state)
        w.click(at);
    if (w.window().detailPanel()->valueLabel(PlanetNameLabel)->text().isEmpty())
        state.SkipWithError("no planet was picked");
    state.counters["races"] = d.PlayerCount;
}

// A motion while a trip is measured: the readout, the pick scans of the
// readout and of the snapped end, the figures in the status line, and the
// repaint of what the line covered.
void BM_PointerMotionMeasuring(benchmark::State &state)
{
    LoadedWindow w;
    w.window().annotationTools()->toolButton(DrawTool::Measure)->click();
    w.click(QPoint(200, 200));
    int step = 0;
    for (auto _ : state) {
        step ^= 1;
        w.move(QPoint(600 + step * 20, 500 + step * 10));
    }
    if (w.window().statusBar()->currentMessage().isEmpty())
        state.SkipWithError("no trip was measured");
}

// A name chosen in Find Planet: the name matched, the panel filled with
// the hab of all sixteen races and both pies, the planet ringed and shown.
void BM_FoundPlanetShown(benchmark::State &state)
{
    LoadedWindow w;
    const GameData &d = w.window().gameData();
    const QStringList names{d.planet(d.PlanetCount / 3)[Name].text(), d.planet(2 * d.PlanetCount / 3)[Name].text()};
    int step = 0;
    for (auto _ : state) {
        step ^= 1;
        emit w.window().findField()->chosen(names[step]);
        QApplication::processEvents();
    }
    if (w.window().detailPanel()->valueLabel(PlanetNameLabel)->text() != names[step])
        state.SkipWithError("the planet was not shown");
    state.counters["planets"] = d.PlanetCount;
}

// F5 with the year proposed taken: the game loaded again aside, the
// overlays, view and planet carried over, and the map redrawn and shown.
void BM_ReloadTurn(benchmark::State &state)
{
    LoadedWindow w;
    AcceptingSink sink;
    emit w.window().findField()->chosen(w.window().gameData().planet(1)[Name].text());
    for (auto _ : state) {
        QTest::keyClick(&w.window(), Qt::Key_F5);
        QApplication::processEvents();
    }
    if (!sink.failure.isEmpty())
        state.SkipWithError(qPrintable(sink.failure));
    state.counters["planets"] = w.window().gameData().PlanetCount;
}

void BM_LoadAndGenerateInWindow(benchmark::State &state)
{
    MainWindow window;
    window.show();
    for (auto _ : state) {
        window.gameData() = hugeGame()->selected();
        if (!window.generate())
            state.SkipWithError("the generation failed");
    }
}

void BM_MainWindowVisible(benchmark::State &state)
{
    for (auto _ : state) {
        MainWindow window;
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            state.SkipWithError("the window was not shown");
    }
}

BENCHMARK(BM_LoadAndGenerateInWindow)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MainWindowVisible)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PointerMotionWithBand)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ClickFillsPanel)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PointerMotionMeasuring)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_FoundPlanetShown)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ReloadTurn)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    // Recent Games and the window's place go to a folder of the run's own,
    // not into the user's settings.
    IsolatedSettings settings;
    return runBenchmarks(argc, argv, "veltro-desktop-bench");
}
