#pragma once
// The program's frame: the map with its overlay buttons, the race legend,
// the detail panel, the readouts, the status line and the menus. It runs
// the file selection and the generation, and every overlay click runs the
// map redraw. A game chosen again (a new turn, a recent game) is loaded
// aside and takes the place of the one on screen only once it has loaded.

#include "AnnotationTools.h"
#include "Canvas.h"
#include "FileSelection.h"
#include "GameChoice.h"
#include "GameData.h"
#include "GenerationObserver.h"
#include "HabEstimate.h"
#include "InteractionHost.h"
#include "MainWindowLayout.h"
#include "MapPointer.h"
#include "MapRedraw.h"
#include "OverlayButtons.h"
#include "PlanetDetail.h"
#include "PlanetFinder.h"
#include "RecentGames.h"
#include "RedrawHost.h"
#include "ReportWatch.h"
#include "SavedRaceColours.h"
#include "ZoomTool.h"

#include <QDateTime>
#include <QMainWindow>
#include <QTimer>
#include <functional>
#include <memory>

class AnnotationToolBox;
class DetailPanel;
class FindPlanetField;
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
class QScrollArea;
class RaceColourWindow;
class RaceLegend;
class RasterSurface;
class LegendWindow;

class MainWindow : public QMainWindow, private GenerationObserver, private RedrawHost, private InteractionHost {
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
    MapCanvasWidget *mapWidget() const { return m_universe; }
    DetailPanel *detailPanel() const { return m_detail; }
    AnnotationToolBox *annotationTools() const { return m_tools; }
    FindPlanetField *findField() const { return m_find; }
    ReportWatch &reportWatch() { return m_watch; }
    // The planet ringed on the map, 0 for none.
    int markedPlanet() const { return m_pointer.marker.planet(); }
    const ZoomFlags &zoom() const { return m_zoom; }
    // The file selection window, created on first use.
    OpenFileDialog &openFileDialog();
    // Runs the generation for the current file choice; false when it failed
    // (the message has been shown).
    bool generate();

    // F5: the game on screen again, for its next turn.
    void reloadTurn();

protected:
    void closeEvent(QCloseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void createMenus();
    QAction *addOverlay(const QString &name, const QString &caption, std::function<void()> draw);
    void runOverlay(const std::function<void()> &draw);
    void createControls();
    void applyLayout();
    QSize outerFrame() const;
    ClientMeasures clientMeasures(const QSize &area, const QSize &frame) const;
    ClientMeasures measuresAt(const QSize &size) const;
    QSize leastSize() const;
    QSize openingSize() const;
    void redrawAtNewSize();
    void loadData();
    // Loads `mapFile` with `choice` beside the game on screen and puts it
    // in its place once loaded; false, with one message and the old game
    // still there, when it could not be loaded.
    bool loadAside(const QString &mapFile, const GameChoice &choice);
    // What follows every load that succeeded.
    void gameLoaded();
    void fillRecentMenu();
    void openRecentGame(const RecentGame &game);
    void findPlanet();
    void showFoundPlanet(const QString &text);
    void showTripFigures();
    void saveMap();
    void openHistory();
    void publishWebMap();
    void overlayClicked(int button);
    void runRedraw();
    void pointerMoved(float x, float y);
    void mapPressed(float x, float y);
    void showReadout();
    void showError(const QString &text);
    void giveUpPointerWork();
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
    void selectStopDrawing() override;
    void enableDrawingTools() override;
    void selectFirstDrawColour() override;
    void progressStep() override;
    // RedrawHost and InteractionHost
    void showMessage(const QString &text) override;

    // InteractionHost
    void redraw() override;
    QString askText(const QString &message, const QString &title, const QString &defaultAnswer) override;

    GameData m_data;
    FileSelection m_selection{m_data};
    OverlayButtons m_buttons;
    ZoomFlags m_zoom;
    Canvas m_canvas;
    std::shared_ptr<RasterSurface> m_raster;
    std::unique_ptr<MapRedraw> m_redraw;
    int m_redrawDepth = 0;
    // A game is loaded: there is a picture to redraw after a resize.
    bool m_generated = false;
    QTimer m_resizeSettled;
    ZoomTool m_zoomTool{m_data, m_zoom, m_buttons, m_canvas};
    AnnotationTools m_annotations{m_data, m_canvas};
    PlanetDetail m_planetDetail;
    MapPointer m_pointer{m_data, m_zoom, m_zoomTool, m_annotations, m_planetDetail};
    PlanetFinder m_finder{m_data, m_zoom, m_pointer.marker, m_planetDetail};
    ReportWatch m_watch;
    RecentGames m_recent;
    // When the game on screen began to load: reports written after it
    // belong to the next turn.
    QDateTime m_loadedAt;
    // The status line shows a measured trip.
    bool m_tripShown = false;

    QScrollArea *m_scroll = nullptr;
    QWidget *m_client = nullptr;
    QScrollArea *m_column = nullptr;
    MapCanvasWidget *m_universe = nullptr;
    OverlayButtonBar *m_overlayBar = nullptr;
    QPushButton *m_genUniv = nullptr;
    QPushButton *m_estHab = nullptr;
    QComboBox *m_combo = nullptr;
    QLabel *m_xyCoord = nullptr;
    QLabel *m_thePlanet = nullptr;
    QProgressBar *m_progress = nullptr;
    DetailPanel *m_detail = nullptr;
    AnnotationToolBox *m_tools = nullptr;
    std::unique_ptr<RaceLegend> m_legend;
    QMenu *m_overlaysMenu = nullptr;
    QAction *m_terraAction = nullptr;
    QAction *m_stargateAction = nullptr;
    QAction *m_reloadAction = nullptr;
    QMenu *m_recentMenu = nullptr;
    FindPlanetField *m_find = nullptr;
    QLabel *m_offer = nullptr;
    // The estimate's out-of-range count carries from one estimate to the next.
    HabCarry m_habCarry;
    OpenFileDialog *m_openFile = nullptr;
    LegendWindow *m_key = nullptr;
    PlanetGridWindow *m_grid = nullptr;
    RaceColourWindow *m_raceColour = nullptr;
    SavedRaceColours m_savedColours;
};
