#include "MainWindow.h"

#include "AboutDialog.h"
#include "AnnotationToolBox.h"
#include "Conversions.h"
#include "DetailPanel.h"
#include "EmpireStatWindow.h"
#include "EstHabOverlay.h"
#include "FindPlanetField.h"
#include "FocusMarkStyle.h"
#include "HistoryWindow.h"
#include "LegendWindow.h"
#include "LoadError.h"
#include "MainWindowLayout.h"
#include "MapExport.h"
#include "MapCanvasWidget.h"
#include "MessageSink.h"
#include "MineralOverlays.h"
#include "OpenFileDialog.h"
#include "OverlayButtonBar.h"
#include "PlanetGridWindow.h"
#include "PlanetNames.h"
#include "QuotedText.h"
#include "RaceColourWindow.h"
#include "RaceLegend.h"
#include "RasterSurface.h"
#include "ScreenFit.h"
#include "StargateOverlay.h"
#include "StarsSettings.h"
#include "TerraformOverlay.h"
#include "ThanksDialog.h"
#include "TurnCarryOver.h"
#include "UniverseGenerator.h"
#include "Version.h"
#include "WebMap.h"
#include "WebMapFolder.h"
#include "WindowMemory.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QStatusBar>
#include <QStyle>
#include <QVBoxLayout>

namespace {

// The title bar the rule's outer height counts, where the window system
// tells none.
constexpr int AssumedTitleBar = 30;
// Where the strip of buttons above the map starts.
constexpr int StripLeft = 4;
// The panel column's width where the window leaves room.
constexpr int PreferredColumnWidth = 320;
// The client area's least height: the legend's sixteen rows beside the map.
constexpr int LeastClientHeight = 37 + RaceLegend::height() + 6;
// The window's size where the screen has room.
constexpr QSize PreferredSize(1280, 860);

QString startCaption()
{
    return QStringLiteral("Veltro Marches for Stars!   Version %1.%2.%3")
        .arg(VELTRO_VERSION_MAJOR).arg(VELTRO_VERSION_MINOR).arg(VELTRO_VERSION_PATCH);
}

} // namespace

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent), m_raster(std::make_shared<RasterSurface>(600))
{
    m_canvas.addSurface(m_raster);
    m_redraw = std::make_unique<MapRedraw>(m_data, m_canvas, m_buttons, m_zoom, static_cast<RedrawHost &>(*this));
    m_data.StartDir = initialStartDir();
    useFocusMarks();

    setWindowTitle(startCaption());
    createMenus();
    createControls();
    m_buttons.onChange = [this](int i) { m_overlayBar->mirror(i); };
    m_buttons.onClick = [this](int) { runRedraw(); };
    setMinimumSize(leastSize());
    resize(openingSize());
    windowMemory::restoreGeometry(*this);
}

MainWindow::~MainWindow() = default;

void MainWindow::createMenus()
{
    QMenu *file = menuBar()->addMenu(QStringLiteral("&File"));
    file->setObjectName(QStringLiteral("mnuFile"));
    QAction *load = file->addAction(QStringLiteral("&Load Data"), this, &MainWindow::loadData);
    load->setObjectName(QStringLiteral("mnuMap"));
    load->setShortcut(QKeySequence::Open);
    QAction *save = file->addAction(QStringLiteral("&Save Map"), this, &MainWindow::saveMap);
    save->setObjectName(QStringLiteral("mnuSave"));
    save->setShortcut(QKeySequence::Save);
    m_reloadAction = new QAction(QStringLiteral("&Reload"), this);
    m_reloadAction->setObjectName(QStringLiteral("mnuReload"));
    m_reloadAction->setShortcut(QKeySequence(Qt::Key_F5));
    m_reloadAction->setEnabled(false);
    connect(m_reloadAction, &QAction::triggered, this, &MainWindow::reloadTurn);
    file->insertAction(save, m_reloadAction);
    m_recentMenu = new QMenu(QStringLiteral("Recent &Games"), this);
    m_recentMenu->setObjectName(QStringLiteral("mnuRecent"));
    file->insertMenu(save, m_recentMenu);
    fillRecentMenu();
    file->addAction(QStringLiteral("&History\u2026"), this, &MainWindow::openHistory)
        ->setObjectName(QStringLiteral("mnuHistory"));
    file->addAction(QStringLiteral("&Publish Web Map\u2026"), this, &MainWindow::publishWebMap)
        ->setObjectName(QStringLiteral("mnuPublish"));
    file->addSeparator()->setObjectName(QStringLiteral("mnuSep"));
    QAction *exit = file->addAction(QStringLiteral("E&xit"), qApp, &QApplication::quit);
    exit->setObjectName(QStringLiteral("mnuExit"));

    QMenu *edit = menuBar()->addMenu(QStringLiteral("&Edit"));
    edit->setObjectName(QStringLiteral("mnuEdit"));
    QAction *find = edit->addAction(QStringLiteral("&Find Planet\u2026"), this, &MainWindow::findPlanet);
    find->setObjectName(QStringLiteral("mnuFind"));
    find->setShortcut(QKeySequence::Find);

    m_overlaysMenu = menuBar()->addMenu(QStringLiteral("&Overlays"));
    m_overlaysMenu->setObjectName(QStringLiteral("mnuOver"));
    m_overlaysMenu->setEnabled(false);
    // Menu overlays draw over the picture as it stands; the next redraw removes them.
    addOverlay(QStringLiteral("mnuNames"), QStringLiteral("Show &Names"), [this] { drawPlanetNames(m_data, m_canvas); });
    addOverlay(QStringLiteral("mnuIron"), QStringLiteral("&Ironium Concentration"),
               [this] { drawMineralConcentration(m_data, m_canvas, Mineral::Ironium); });
    addOverlay(QStringLiteral("mnuBora"), QStringLiteral("&Boranium Concentration"),
               [this] { drawMineralConcentration(m_data, m_canvas, Mineral::Boranium); });
    addOverlay(QStringLiteral("mnuGerm"), QStringLiteral("&Germanium Concentration"),
               [this] { drawMineralConcentration(m_data, m_canvas, Mineral::Germanium); });
    addOverlay(QStringLiteral("MnuAvgMC"), QStringLiteral("&Average Mineral MC"),
               [this] { drawAverageMineralConcentration(m_data, m_canvas); });
    addOverlay(QStringLiteral("mnuAge"), QStringLiteral("&Report Age"), [this] { drawReportAge(m_data, m_canvas); });
    m_terraAction = addOverlay(QStringLiteral("mnuTerra"), QStringLiteral("&Value after Terraforming"),
                               [this] { drawTerraformedValues(m_data, m_canvas); });
    m_stargateAction = addOverlay(QStringLiteral("mnuStarGate"), QStringLiteral("&Stargate Network"), [this] {
        const bool safeOnly =
            messageSink().question(this, QStringLiteral("Stargate Network"), QStringLiteral("Show Safe gating distance only?"));
        drawStargateNetwork(m_data, m_canvas, safeOnly);
    });

    QMenu *data = menuBar()->addMenu(QStringLiteral("&Data"));
    data->setObjectName(QStringLiteral("mnuData"));
    data->addAction(QStringLiteral("Planet &Grid"), this, [this] {
            if (!m_grid)
                m_grid = new PlanetGridWindow(this);
            m_grid->fill(m_data);
            m_grid->exec();
        })->setObjectName(QStringLiteral("mnuGrid"));
    data->addAction(QStringLiteral("&Empire Statistics"), this, [this] { EmpireStatWindow(m_data, this).exec(); })
        ->setObjectName(QStringLiteral("mnuGrid2"));

    QMenu *help = menuBar()->addMenu(QStringLiteral("&Help"));
    help->setObjectName(QStringLiteral("mnuHelp"));
    help->addAction(QStringLiteral("&About"), this, [this] { AboutDialog(this).exec(); })
        ->setObjectName(QStringLiteral("mnuAbout"));
    QAction *key = help->addAction(QStringLiteral("&Key"), this, [this] {
        if (!m_key)
            m_key = new LegendWindow(this);
        m_key->exec();
    });
    key->setObjectName(QStringLiteral("mnuKey"));
    key->setShortcut(QKeySequence(Qt::Key_F1));
    help->addAction(QStringLiteral("&Thanks to..."), this, [this] { ThanksDialog(this).exec(); })
        ->setObjectName(QStringLiteral("mnuThanks"));
}

QAction *MainWindow::addOverlay(const QString &name, const QString &caption, std::function<void()> draw)
{
    QAction *action = m_overlaysMenu->addAction(caption);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, [this, draw = std::move(draw)] { runOverlay(draw); });
    return action;
}

void MainWindow::runOverlay(const std::function<void()> &draw)
{
    try {
        draw();
    } catch (const std::exception &e) {
        showError(QStringLiteral("Drawing the overlay failed: %1").arg(QString::fromUtf8(e.what())));
    }
    m_universe->update();
}

void MainWindow::createControls()
{
    // The client area scrolls when the window is too narrow for the map
    // (sized by the height), the panel and the legend side by side.
    m_scroll = new QScrollArea(this);
    m_scroll->setObjectName(QStringLiteral("ClientArea"));
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    m_scroll->setWidgetResizable(false);
    setCentralWidget(m_scroll);
    m_client = new QWidget;
    m_scroll->setWidget(m_client);

    // Created in the order Tab visits them: the map's controls above it,
    // the legend's colours, the panel, the drawing tools.
    m_universe = new MapCanvasWidget(*m_raster, m_annotations.rubberLine(), m_zoomTool.box(), m_pointer.measure,
                                     m_pointer.marker, m_client);
    m_universe->setObjectName(QStringLiteral("Universe"));
    connect(m_universe, &MapCanvasWidget::pointerMoved, this, &MainWindow::pointerMoved);
    connect(m_universe, &MapCanvasWidget::pressed, this, &MainWindow::mapPressed);
    connect(m_universe, &MapCanvasWidget::cancelled, this, &MainWindow::giveUpPointerWork);

    m_overlayBar = new OverlayButtonBar(m_buttons, m_client);
    connect(m_overlayBar, &OverlayButtonBar::clicked, this, &MainWindow::overlayClicked);

    m_genUniv = new QPushButton(QStringLiteral("Generate Data"), m_client);
    m_genUniv->setObjectName(QStringLiteral("GenUniv"));
    m_genUniv->setToolTip(QStringLiteral("Click to Generate Universe Information"));
    m_genUniv->setStyleSheet(QStringLiteral("background-color: rgb(255, 0, 0);"));
    connect(m_genUniv, &QPushButton::clicked, this, &MainWindow::generate);

    m_combo = new QComboBox(m_client);
    m_combo->setObjectName(QStringLiteral("Combo1"));
    m_combo->setToolTip(QStringLiteral("Select a Race, then click Show Boundary"));
    m_combo->setAccessibleName(QStringLiteral("Race"));
    m_combo->setMinimumWidth(150);
    m_combo->setEnabled(false);
    m_estHab = new QPushButton(QStringLiteral("Show Est Hab"), m_client);
    m_estHab->setObjectName(QStringLiteral("EstHab"));
    m_estHab->setEnabled(false);
    connect(m_estHab, &QPushButton::clicked, this, [this] {
        runOverlay([this] { drawEstimatedHab(m_data, m_canvas, m_combo->currentText(), m_habCarry); });
    });

    m_legend = std::make_unique<RaceLegend>(m_client);
    for (int i = 0; i < 16; ++i)
        connect(m_legend->swatch(i), &QAbstractButton::clicked, this, [this, i] { editRaceColour(i); });

    m_xyCoord = new QLabel(m_client);
    m_xyCoord->setObjectName(QStringLiteral("XYCoord"));
    m_xyCoord->setAccessibleDescription(QStringLiteral("Pointer position"));
    m_thePlanet = new QLabel(m_client);
    m_thePlanet->setObjectName(QStringLiteral("theplanet"));
    m_thePlanet->setAccessibleDescription(QStringLiteral("Planet under the pointer"));
    m_progress = new QProgressBar(m_client);
    m_progress->setObjectName(QStringLiteral("ProgressBar1"));
    m_progress->setAccessibleName(QStringLiteral("Progress"));
    m_progress->setTextVisible(false);
    m_progress->setValue(0);

    // The panel and the drawing tools share a column right of the map,
    // which scrolls when the window is too low for both.
    m_column = new QScrollArea(m_client);
    m_column->setObjectName(QStringLiteral("PanelColumn"));
    m_column->setFrameShape(QFrame::NoFrame);
    m_column->setFocusPolicy(Qt::NoFocus);
    m_column->setWidgetResizable(true);
    m_column->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto *column = new QWidget;
    auto *columnLayout = new QVBoxLayout(column);
    columnLayout->setContentsMargins(0, 0, 0, 0);
    columnLayout->setSpacing(8);
    m_detail = new DetailPanel(m_planetDetail, column);
    m_tools = new AnnotationToolBox(column);
    columnLayout->addWidget(m_detail);
    columnLayout->addWidget(m_tools, 1);
    m_column->setWidget(column);
    // Longer texts in the panel widen the column, and the window makes room.
    column->installEventFilter(this);
    connect(m_tools, &AnnotationToolBox::toolChosen, this, [this](DrawTool tool) {
        m_pointer.chooseTool(tool);
        showTripFigures();
        m_universe->shapesMoved();
    });
    connect(m_tools, &AnnotationToolBox::colourChosen, this, [this](int index) {
        m_annotations.colourClick(index);
        m_universe->update();
    });
    connect(m_tools, &AnnotationToolBox::saveClicked, this, [this] { showMessage(m_annotations.save()); });
    connect(m_tools, &AnnotationToolBox::clearClicked, this, [this] {
        try {
            m_annotations.clear(m_buttons, *this);
        } catch (const std::exception &e) {
            showError(QString::fromUtf8(e.what()));
        }
        m_tools->showText(m_data.AnnotationText);
    });

    // The status line: messages on the left; the search field and the
    // offer of a new turn on the right, where messages leave them be.
    m_find = new FindPlanetField(this);
    connect(m_find, &FindPlanetField::chosen, this, &MainWindow::showFoundPlanet);
    connect(m_find, &FindPlanetField::closed, this, [this] { m_universe->setFocus(); });
    statusBar()->addPermanentWidget(m_find);
    m_offer = new QLabel(QStringLiteral("New reports \u2014 press F5 to reload"), this);
    m_offer->setObjectName(QStringLiteral("NewReports"));
    m_offer->hide();
    statusBar()->addPermanentWidget(m_offer);
    connect(&m_watch, &ReportWatch::newReports, m_offer, &QWidget::show);

    // A resize redraws the map at its new size once the window has settled,
    // not on every step of a drag.
    m_resizeSettled.setSingleShot(true);
    m_resizeSettled.setInterval(150);
    connect(&m_resizeSettled, &QTimer::timeout, this, &MainWindow::redrawAtNewSize);
}

void MainWindow::editRaceColour(int index)
{
    if (!m_raceColour) {
        m_raceColour = new RaceColourWindow(m_data, this);
        connect(m_raceColour, &RaceColourWindow::colourStored, this,
                [this](int i, const QColor &colour) {
                    m_legend->swatch(i)->setColour(colour);
                    m_savedColours.remember(m_data.player(i + 1)[RaceName].text(), colour);
                });
    }
    m_raceColour->openFor(index);
    m_raceColour->exec();
    // Borders and planets take the new colour now, however the editor closed.
    runRedraw();
}

void MainWindow::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    applyLayout();
}

// The rule counts the window's outer size, frame and title bar included.
// The window system tells the frame only once the window is shown; a usual
// title bar is assumed until then, and where there is none.
QSize MainWindow::outerFrame() const
{
    const QSize frame = frameGeometry().size() - size();
    return frame.height() > 0 ? frame : QSize(0, AssumedTitleBar);
}

ClientMeasures MainWindow::clientMeasures(const QSize &area, const QSize &frame) const
{
    ClientMeasures m{};
    m.area = area;
    m.frame = frame;
    m.readoutHeight = qMax(m_xyCoord->sizeHint().height(), m_progress->minimumSizeHint().height());
    m.stripWidth = StripLeft + m_overlayBar->sizeHint().width() + 12 + m_genUniv->sizeHint().width() + 8 +
                   qMax(m_combo->minimumWidth(), m_combo->sizeHint().width()) + 8 + m_estHab->sizeHint().width() +
                   StripLeft;
    m.columnMinimumWidth =
        m_column->widget()->minimumSizeHint().width() + style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    m.legendHeight = RaceLegend::height();
    m.scrollBarExtent = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    return m;
}

// The client area and the rest of the window (menu bar, frame) of a window
// of `size`, before it is shown.
ClientMeasures MainWindow::measuresAt(const QSize &size) const
{
    const QSize frame = QSize(0, menuBar()->sizeHint().height() + statusBar()->sizeHint().height()) + outerFrame();
    return clientMeasures(size + outerFrame() - frame, frame);
}

QSize MainWindow::leastSize() const
{
    const QSize wide(100000, LeastClientHeight + menuBar()->sizeHint().height() + statusBar()->sizeHint().height());
    const auto fitted = fitClientArea(measuresAt(wide));
    return QSize(fitted ? fitted->needed.width() : 800, wide.height());
}

// The preferred size within the screen; lower where the screen is too
// narrow for the map of its height beside the panel and the legend.
QSize MainWindow::openingSize() const
{
    QSize size = sizeWithinScreen(this, PreferredSize).expandedTo(minimumSize());
    for (;;) {
        const auto fitted = fitClientArea(measuresAt(size));
        if (!fitted || fitted->needed.width() <= size.width() || size.height() <= minimumHeight())
            return size;
        size.setHeight(qMax(minimumHeight(), size.height() - 8));
    }
}

bool MainWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_column->widget() && event->type() == QEvent::LayoutRequest)
        applyLayout();
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::applyLayout()
{
    const ClientMeasures measures = clientMeasures(m_scroll->size(), size() + outerFrame() - m_scroll->size());
    const auto fitted = fitClientArea(measures);
    if (!fitted)
        return;
    m_client->resize(fitted->content);
    const MainWindowGeometry &rule = fitted->rule;
    m_universe->setGeometry(twipsToPixels(rule.universe));
    const int readoutHeight = measures.readoutHeight;
    for (const auto &[widget, twips] : {std::pair<QWidget *, QRect>{m_xyCoord, rule.xyCoord},
                                        {m_thePlanet, rule.thePlanet}, {m_progress, rule.progress}}) {
        const QRect r = twipsToPixels(twips);
        widget->setGeometry(r.x(), r.y(), r.width(), readoutHeight);
    }

    // The strip above the map: the overlay buttons, then the generation and
    // the estimate, each at its natural size within the strip's height.
    const int stripHeight = m_universe->y();
    int x = StripLeft;
    auto place = [&](QWidget *w, int width, int gapAfter) {
        const int height = qMin(w->sizeHint().height(), stripHeight - 2);
        w->setGeometry(x, (stripHeight - height) / 2, width, height);
        x += width + gapAfter;
    };
    place(m_overlayBar, m_overlayBar->sizeHint().width(), 12);
    place(m_genUniv, m_genUniv->sizeHint().width(), 8);
    place(m_combo, qMax(m_combo->minimumWidth(), m_combo->sizeHint().width()), 8);
    place(m_estHab, m_estHab->sizeHint().width(), 0);

    // The column runs from the map's top to the bottom of the client area,
    // between the map and the legend; the readouts under the map end before it.
    const int detailLeft = rule.detailLeft / TwipsPerPixel;
    const int legendLeft = rule.raceLabelLeft / TwipsPerPixel;
    const int columnWidth =
        qMax(measures.columnMinimumWidth, qMin(PreferredColumnWidth, legendLeft - 8 - detailLeft));
    m_column->setGeometry(detailLeft, m_universe->y(), columnWidth, fitted->content.height() - m_universe->y() - 2);
    m_legend->place(legendLeft, rule.raceSwatchLeft / TwipsPerPixel, m_universe->y());
    fitCanvasToWidget();
}

void MainWindow::fitCanvasToWidget()
{
    const int side = m_universe->width();
    if (side <= 0)
        return;
    m_canvas.setWidthTwips(side * TwipsPerPixel);
    const double dpr = m_universe->devicePixelRatioF();
    if (side != m_raster->pixels() || dpr != m_raster->devicePixelRatio()) {
        // Scaled for now; redrawn at the new size once the resizing stops.
        m_raster->resize(side, dpr);
        m_resizeSettled.start();
    }
    m_universe->update();
}

void MainWindow::redrawAtNewSize()
{
    m_resizeSettled.stop();
    // Nothing drawn before a game is loaded; a zoom square being dragged
    // has moved the view's corner already, and its second click redraws.
    if (!m_generated || m_zoom.ZoomState == 2)
        return;
    try {
        m_redraw->repaintLayers();
    } catch (const std::exception &e) {
        showError(QStringLiteral("Drawing the map failed: %1").arg(QString::fromUtf8(e.what())));
    }
    m_universe->update();
}

OpenFileDialog &MainWindow::openFileDialog()
{
    if (!m_openFile)
        m_openFile = new OpenFileDialog(m_selection, m_data, this);
    return *m_openFile;
}

void MainWindow::openMapFile(const QString &mapFilePath)
{
    openFileDialog().openOn(mapFilePath);
    loadData();
}

void MainWindow::loadData()
{
    openFileDialog().exec();
    if (m_data.OpenFileCancelled == 1)
        return;
    m_overlaysMenu->setEnabled(false);
    generate();
}

bool MainWindow::generate()
{
    if (m_data.MapFilePath.isEmpty()) {
        showError(QStringLiteral("No game chosen yet: choose File > Load Data first."));
        return false;
    }
    try {
        m_loadedAt = QDateTime::currentDateTime();
        generateUniverse(m_data, static_cast<GenerationObserver &>(*this));
        gameLoaded();
        return true;
    } catch (const std::exception &e) {
        const auto *load = dynamic_cast<const LoadError *>(&e);
        showError(load ? load->message() : QString::fromUtf8(e.what()));
        m_universe->update();
        return false;
    }
}

bool MainWindow::loadAside(const QString &mapFile, const GameChoice &choice)
{
    // What a load into the game on screen would leave as it was: where the
    // game is installed, and the draw colour unless the annotations set one.
    GameData loaded;
    loaded.StartDir = m_data.StartDir;
    loaded.DrawColourIndex = m_data.DrawColourIndex;
    const QDateTime started = QDateTime::currentDateTime();
    try {
        GenerationObserver aside;
        loadChosenGame(mapFile, choice, loaded, aside);
    } catch (const SelectionRefused &e) {
        showError(e.file.isEmpty() ? e.message
                                   : QStringLiteral("%1: %2").arg(escapeControls(QDir::toNativeSeparators(e.file)), e.message));
        return false;
    } catch (const LoadError &e) {
        showError(e.message());
        return false;
    } catch (const std::exception &e) {
        showError(QString::fromUtf8(e.what()));
        return false;
    }
    m_data = std::move(loaded);
    m_loadedAt = started;
    announceGeneration(m_data, static_cast<GenerationObserver &>(*this));
    gameLoaded();
    return true;
}

void MainWindow::gameLoaded()
{
    // The load starts every race in its start colour; the user's own
    // choices for this game come back on top.
    m_savedColours.gameLoaded(m_data);
    m_legend->show(m_data);
    m_tools->showText(m_data.AnnotationText);
    m_recent.loaded(m_data);
    fillRecentMenu();
    m_watch.watch(m_data);
    m_universe->update();
}

void MainWindow::reloadTurn()
{
    if (!m_generated)
        return;
    // A game without years has no next year to ask for.
    QString year;
    if (m_data.GameYear != 0) {
        year = messageSink().input(this, QStringLiteral("Reload"), QStringLiteral("Game year of the new turn:"),
                                   QString::number(m_data.GameYear + 1));
        if (year.isEmpty())
            return;
    }
    // A zoom square half dragged has moved the view's corner already.
    if (m_zoom.ZoomState == 2)
        giveUpPointerWork();
    const TurnCarryOver kept(m_data, m_buttons, m_zoom, m_pointer.marker);
    if (!loadAside(m_data.MapFilePath, nextTurnChoice(m_data, year, m_loadedAt)))
        return;
    const int planet = kept.restore(m_data, m_buttons, m_zoom, m_pointer.marker);
    for (int i = 0; i < OverlayButtonCount; ++i)
        m_overlayBar->mirror(i);
    m_tools->showText(m_data.AnnotationText);
    if (planet) {
        HabCarry carry;
        try {
            m_planetDetail.fill(m_data, planet, carry);
        } catch (const PanelFillError &e) {
            showError(e.message);
        }
        m_detail->refresh();
    }
    runRedraw();
}

void MainWindow::fillRecentMenu()
{
    m_recentMenu->clear();
    const QList<RecentGame> games = m_recent.games();
    for (qsizetype i = 0; i < games.size(); ++i) {
        QAction *entry = m_recentMenu->addAction(QStringLiteral("&%1 %2").arg(i + 1).arg(games[i].caption()));
        // The whole path in the status line while the entry is highlighted.
        entry->setStatusTip(escapeControls(QDir::toNativeSeparators(games[i].mapFile)));
        connect(entry, &QAction::triggered, this, [this, game = games[i]] { openRecentGame(game); });
    }
    if (games.isEmpty())
        m_recentMenu->addAction(QStringLiteral("No games yet"))->setEnabled(false);
}

// The game as it was loaded last, with the overlays pressed now, or those
// of the last run when this one has shown no game yet.
void MainWindow::openRecentGame(const RecentGame &game)
{
    if (!QFileInfo(game.mapFile).isFile()) {
        m_recent.forget(game.mapFile);
        fillRecentMenu();
        showError(QStringLiteral("%1 is no longer there; it leaves Recent Games.")
                      .arg(escapeControls(QDir::toNativeSeparators(game.mapFile))));
        return;
    }
    const QList<int> layers = m_generated ? windowMemory::pressedLayers(m_buttons) : windowMemory::rememberedOverlays();
    if (!loadAside(game.mapFile, game.choice))
        return;
    for (int i : layers) {
        m_buttons.setPressedQuietly(i, true);
        m_overlayBar->mirror(i);
    }
    if (!layers.isEmpty())
        runRedraw();
}

void MainWindow::findPlanet()
{
    if (m_data.PlanetCount == 0) {
        statusBar()->showMessage(QStringLiteral("No game loaded yet: choose File > Load Data first."));
        return;
    }
    m_find->open(m_finder.names());
}

void MainWindow::showFoundPlanet(const QString &text)
{
    const int row = m_finder.match(text);
    if (row == 0) {
        statusBar()->showMessage(QStringLiteral("No planet is named %1").arg(quoted(text.trimmed())));
        return;
    }
    statusBar()->clearMessage();
    const int32_t originX = m_data.OriginX, originY = m_data.OriginY;
    try {
        m_finder.show(row);
    } catch (const PanelFillError &e) {
        showError(e.message);
    }
    m_detail->refresh();
    if (m_data.OriginX != originX || m_data.OriginY != originY)
        runRedraw();
    m_find->hide();
    m_universe->setFocus();
    m_universe->update();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    windowMemory::rememberGeometry(*this);
    // Without a game this run pressed nothing: the last run's layers stay.
    if (m_generated)
        windowMemory::rememberOverlays(m_buttons);
    QMainWindow::closeEvent(event);
}

// The turns of a game side by side, in a window of their own that the
// main window's game and map leave alone.
void MainWindow::openHistory()
{
    const QString folder = QFileDialog::getExistingDirectory(
        this, QStringLiteral("History: the folder of a game's turns"), m_data.GameDir);
    if (!folder.isEmpty())
        (new HistoryWindow(folder, m_buttons, this))->show();
}

// The loaded game as a web map, the same folder `veltro-cli site` writes.
void MainWindow::publishWebMap()
{
    if (m_data.PlanetCount == 0) {
        showError(QStringLiteral("No game loaded yet: choose File > Load Data first."));
        return;
    }
    const QString folder = QFileDialog::getExistingDirectory(
        this, QStringLiteral("Publish Web Map: a new or empty folder, or one with a web map to replace"), m_data.GameDir);
    if (folder.isEmpty())
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    try {
        writeWebMapOfGame(m_data, folder);
        QApplication::restoreOverrideCursor();
        showMessage(QStringLiteral("Web map written: open %1 in a browser")
                        .arg(escapeControls(QDir::toNativeSeparators(folder + QStringLiteral("/index.html")))));
    } catch (const std::exception &e) {
        QApplication::restoreOverrideCursor();
        const auto *failure = dynamic_cast<const WebMapError *>(&e);
        showError(failure ? failure->message : QStringLiteral("Drawing the map failed: %1").arg(QString::fromUtf8(e.what())));
    }
}

void MainWindow::saveMap()
{
    // The message comes first, whatever happens next; the file is replaced
    // only once the new picture is complete. A picture still scaled from a
    // resize is drawn at its size first.
    if (m_resizeSettled.isActive())
        redrawAtNewSize();
    const QString path = mapBitmapPath(m_data);
    showMessage(QStringLiteral("Map saved to ") + escapeControls(QDir::toNativeSeparators(path)));
    if (m_data.GameDir.trimmed().isEmpty() || !m_raster->save(path))
        showError(QStringLiteral("%1: the map could not be written").arg(escapeControls(QDir::toNativeSeparators(path))));
}

void MainWindow::overlayClicked(int)
{
    m_universe->setFocus();
    runRedraw();
}

void MainWindow::runRedraw()
{
    // Clicks raised from code run nested redraws; only the outermost one
    // reports a failure, which ends them all.
    ++m_redrawDepth;
    try {
        m_redraw->redrawUniverse();
    } catch (const std::exception &e) {
        if (m_redrawDepth > 1) {
            --m_redrawDepth;
            throw;
        }
        showError(QStringLiteral("Drawing the map failed: %1").arg(QString::fromUtf8(e.what())));
    }
    --m_redrawDepth;
    m_universe->update();
}

void MainWindow::showError(const QString &text)
{
    messageSink().information(this, text);
}

void MainWindow::resetWindow()
{
    m_generated = false;
    m_reloadAction->setEnabled(false);
    m_watch.stop();
    m_offer->hide();
    m_pointer.marker.clear();
    m_pointer.measure.cancel();
    showTripFigures();
    for (int i = 0; i < OverlayButtonCount; ++i) {
        m_buttons.setEnabled(i, false);
        m_buttons.setPressedQuietly(i, false);
        m_overlayBar->mirror(i);
    }
    m_combo->clear();
    m_combo->setEnabled(false);
    m_estHab->setEnabled(false);
    m_terraAction->setEnabled(false);
    m_stargateAction->setEnabled(false);
    m_canvas.cls();
    m_universe->update();
    m_legend->clear();
    m_planetDetail.RName.fill(QString());
    m_planetDetail.RHab.fill(QString());
    m_detail->refresh();
}

void MainWindow::setCaption(const QString &caption)
{
    setWindowTitle(caption);
}

void MainWindow::addRace(const QString &name)
{
    m_combo->addItem(name);
}

void MainWindow::progressStart(int maximum)
{
    m_progress->setRange(0, maximum);
    m_progress->setValue(0);
}

void MainWindow::progressValue(int value)
{
    m_progress->setValue(value);
}

void MainWindow::progressStep()
{
    m_progress->setValue(m_progress->value() + 1);
}

void MainWindow::showLegend(const GameData &data)
{
    m_legend->show(data);
    m_planetDetail.nameRaces(data);
    m_detail->refresh();
}

void MainWindow::enableFormatMenus()
{
    m_terraAction->setEnabled(true);
    m_stargateAction->setEnabled(true);
}

void MainWindow::enableControls(const GameData &data)
{
    m_generated = true;
    m_reloadAction->setEnabled(true);
    m_combo->setCurrentIndex(0);
    m_combo->setEnabled(true);
    for (int i = 0; i < OverlayButtonCount; ++i)
        m_buttons.setEnabled(i, true);
    m_overlaysMenu->setEnabled(true);
    // Old-style reports carry no environment, gates or terraforming values.
    if (data.ReportFormat == 30) {
        enableFormatMenus();
        m_estHab->setEnabled(true);
    }
}

void MainWindow::showMessage(const QString &text)
{
    messageSink().information(this, text);
}

void MainWindow::selectStopDrawing()
{
    m_tools->selectTool(DrawTool::StopDrawing);
    m_pointer.chooseTool(DrawTool::StopDrawing);
    showTripFigures();
}

void MainWindow::enableDrawingTools()
{
    m_tools->setDrawingToolsEnabled(true);
}

void MainWindow::selectFirstDrawColour()
{
    m_tools->selectColour(0);
}

void MainWindow::redraw()
{
    runRedraw();
}

QString MainWindow::askText(const QString &message, const QString &title, const QString &defaultAnswer)
{
    return messageSink().input(this, title, message, defaultAnswer);
}

void MainWindow::showReadout()
{
    const PointerReadout &r = m_pointer.readout();
    m_xyCoord->setText(r.XYCoord);
    m_thePlanet->setText(r.thePlanet);
    m_universe->setToolTip(r.toolTip);
}

void MainWindow::pointerMoved(float x, float y)
{
    try {
        m_pointer.mouseMove(x, y);
    } catch (const std::exception &) {
        // A planet too far out to place on the canvas: the readout of this
        // motion is skipped, the next one tries again.
    }
    showReadout();
    showTripFigures();
    m_universe->shapesMoved();
}

void MainWindow::showTripFigures()
{
    const QString figures = m_pointer.measure.figures();
    if (!figures.isEmpty())
        statusBar()->showMessage(figures);
    else if (m_tripShown)
        statusBar()->clearMessage();
    m_tripShown = !figures.isEmpty();
}

// Escape: a zoom under way or a trip being measured is given up.
void MainWindow::giveUpPointerWork()
{
    if (m_zoomTool.cancel())
        m_overlayBar->mirror(ZoomInButton);
    m_pointer.measure.cancel();
    showTripFigures();
    m_universe->shapesMoved();
}

void MainWindow::mapPressed(float x, float y)
{
    const bool secondCorner = m_zoom.ZoomState == 2 && m_pointer.tool == DrawTool::StopDrawing;
    try {
        m_pointer.mouseDown(x, y, *this);
    } catch (const PanelFillError &e) {
        showError(e.message);
    } catch (const conv::DivisionByZeroError &e) {
        if (secondCorner) {
            showError(QStringLiteral("The zoom square is too small to show: press Zoom In and drag a larger square."));
            m_zoomTool.abandon();
        } else {
            showError(QString::fromUtf8(e.what()));
        }
    } catch (const std::exception &e) {
        showError(QString::fromUtf8(e.what()));
    }
    m_detail->refresh();
    m_tools->showText(m_data.AnnotationText);
    showTripFigures();
    m_universe->shapesMoved();
    m_universe->update();
}
