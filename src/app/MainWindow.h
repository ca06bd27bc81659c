#pragma once
// The program's frame: the map with its overlay buttons, the race legend,
// the detail panel, the readouts and the menus. It runs the file selection
// and the generation, and every overlay click runs the map redraw.

#include "Canvas.h"
#include "HabEstimate.h"
#include "FileSelection.h"
#include "GameData.h"
#include "GenerationObserver.h"
#include "MapRedraw.h"
#include "OverlayButtons.h"
#include "RedrawHost.h"

#include <QMainWindow>
#include <functional>
#include <memory>

class MapCanvasWidget;
class OpenFileDialog;
class OverlayButtonBar;
class PlanetGridWindow;
class QAction;
class QComboBox;
class QLabel;
class QMenu;
class QProgressBar;
class QPushButton;
class QTabWidget;
class RaceColourWindow;
class RaceLegend;
class RasterSurface;
class LegendWindow;

class MainWindow : public QMainWindow, private GenerationObserver, private RedrawHost {
    Q_OBJECT
public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    // Opens the file selection on a map file, as "Open with" does.
    void openMapFile(const QString &mapFilePath);

    GameData &gameData() { return m_data; }
    OverlayButtons &overlayButtons() { return m_buttons; }
    const RasterSurface &raster() const { return *m_raster; }
    OverlayButtonBar *overlayBar() const { return m_overlayBar; }
    // The file selection window, created on first use.
    OpenFileDialog &openFileDialog();
    // Runs the generation for the current file choice; false when it failed
    // (the message has been shown).
    bool generate();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void createMenus();
    QAction *addOverlay(const QString &name, const QString &caption, std::function<void()> draw);
    void runOverlay(const std::function<void()> &draw);
    void createControls();
    void applyLayout();
    void loadData();
    void saveMap();
    void overlayClicked(int button);
    void runRedraw();
    void showError(const QString &text);
    void fitCanvasToWidget();
    void editRaceColour(int index);

    // GenerationObserver
    void resetWindow() override;
    void setCaption(const QString &caption) override;
    void enableFormatMenus() override;
    void addRace(const QString &name) override;
    void progressStart(int maximum) override;
    void progressValue(int value) override;
    void showLegend(const GameData &data) override;
    void enableControls(const GameData &data) override;

    // RedrawHost
    void progressStep() override;
    void showMessage(const QString &text) override;

    GameData m_data;
    FileSelection m_selection{m_data};
    OverlayButtons m_buttons;
    ZoomFlags m_zoom;
    Canvas m_canvas;
    std::shared_ptr<RasterSurface> m_raster;
    std::unique_ptr<MapRedraw> m_redraw;
    int m_redrawDepth = 0;

    QWidget *m_client = nullptr;
    MapCanvasWidget *m_universe = nullptr;
    OverlayButtonBar *m_overlayBar = nullptr;
    QPushButton *m_genUniv = nullptr;
    QPushButton *m_estHab = nullptr;
    QComboBox *m_combo = nullptr;
    QLabel *m_xyCoord = nullptr;
    QLabel *m_thePlanet = nullptr;
    QProgressBar *m_progress = nullptr;
    QTabWidget *m_detail = nullptr;
    std::unique_ptr<RaceLegend> m_legend;
    std::array<QLabel *, 16> m_raceNames{};
    std::array<QLabel *, 16> m_raceHabs{};
    QMenu *m_overlaysMenu = nullptr;
    QAction *m_terraAction = nullptr;
    QAction *m_stargateAction = nullptr;
    // The estimate's out-of-range count carries from one estimate to the next.
    HabCarry m_habCarry;
    OpenFileDialog *m_openFile = nullptr;
    LegendWindow *m_key = nullptr;
    PlanetGridWindow *m_grid = nullptr;
    RaceColourWindow *m_raceColour = nullptr;
};
