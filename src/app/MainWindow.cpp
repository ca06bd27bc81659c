#include "MainWindow.h"

#include "AboutDialog.h"
#include "AnnotationToolBox.h"
#include "Conversions.h"
#include "DetailPanel.h"
#include "EmpireStatWindow.h"
#include "EstHabOverlay.h"
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
#include "StargateOverlay.h"
#include "StarsSettings.h"
#include "TerraformOverlay.h"
#include "ThanksDialog.h"
#include "UniverseGenerator.h"
#include "Version.h"
#include "WebMap.h"
#include "WebMapFolder.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>

namespace {

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

    setWindowTitle(startCaption());
    createMenus();
    createControls();
    m_buttons.onChange = [this](int i) { m_overlayBar->mirror(i); };
    m_buttons.onClick = [this](int) { runRedraw(); };
    resize(1280, 860);
}

MainWindow::~MainWindow() = default;

void MainWindow::createMenus()
{
    QMenu *file = menuBar()->addMenu(QStringLiteral("&File"));
    file->setObjectName(QStringLiteral("mnuFile"));
    QAction *load = file->addAction(QStringLiteral("Load Data"), this, &MainWindow::loadData);
    load->setObjectName(QStringLiteral("mnuMap"));
    QAction *save = file->addAction(QStringLiteral("Save Map"), this, &MainWindow::saveMap);
    save->setObjectName(QStringLiteral("mnuSave"));
    file->addAction(QStringLiteral("History\u2026"), this, &MainWindow::openHistory)
        ->setObjectName(QStringLiteral("mnuHistory"));
    file->addAction(QStringLiteral("Publish Web Map\u2026"), this, &MainWindow::publishWebMap)
        ->setObjectName(QStringLiteral("mnuPublish"));
    file->addSeparator()->setObjectName(QStringLiteral("mnuSep"));
    QAction *exit = file->addAction(QStringLiteral("E&xit"), qApp, &QApplication::quit);
    exit->setObjectName(QStringLiteral("mnuExit"));

    m_overlaysMenu = menuBar()->addMenu(QStringLiteral("&Overlays"));
    m_overlaysMenu->setObjectName(QStringLiteral("mnuOver"));
    m_overlaysMenu->setEnabled(false);
    // Menu overlays draw over the picture as it stands; the next redraw removes them.
    addOverlay(QStringLiteral("mnuNames"), QStringLiteral("Show Names"), [this] { drawPlanetNames(m_data, m_canvas); });
    addOverlay(QStringLiteral("mnuIron"), QStringLiteral("Ironium Concentration"),
               [this] { drawMineralConcentration(m_data, m_canvas, Mineral::Ironium); });
    addOverlay(QStringLiteral("mnuBora"), QStringLiteral("Boranium Concentration"),
               [this] { drawMineralConcentration(m_data, m_canvas, Mineral::Boranium); });
    addOverlay(QStringLiteral("mnuGerm"), QStringLiteral("Germanium Concentration"),
               [this] { drawMineralConcentration(m_data, m_canvas, Mineral::Germanium); });
    addOverlay(QStringLiteral("MnuAvgMC"), QStringLiteral("Average Mineral MC"),
               [this] { drawAverageMineralConcentration(m_data, m_canvas); });
    addOverlay(QStringLiteral("mnuAge"), QStringLiteral("Report Age"), [this] { drawReportAge(m_data, m_canvas); });
    m_terraAction = addOverlay(QStringLiteral("mnuTerra"), QStringLiteral("Value after Terraforming"),
                               [this] { drawTerraformedValues(m_data, m_canvas); });
    m_stargateAction = addOverlay(QStringLiteral("mnuStarGate"), QStringLiteral("Stargate Network"), [this] {
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
    help->addAction(QStringLiteral("&Key"), this, [this] {
            if (!m_key)
                m_key = new LegendWindow(this);
            m_key->exec();
        })->setObjectName(QStringLiteral("mnuKey"));
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
    m_client = new QWidget(this);
    setCentralWidget(m_client);

    m_universe = new MapCanvasWidget(*m_raster, m_annotations.rubberLine(), m_zoomTool.box(), m_client);
    m_universe->setObjectName(QStringLiteral("Universe"));
    connect(m_universe, &MapCanvasWidget::pointerMoved, this, &MainWindow::pointerMoved);
    connect(m_universe, &MapCanvasWidget::pressed, this, &MainWindow::mapPressed);

    m_overlayBar = new OverlayButtonBar(m_buttons, m_client);
    m_overlayBar->move(4, 2);
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

    m_detail = new DetailPanel(m_planetDetail, m_client);
    m_tools = new AnnotationToolBox(m_client);
    connect(m_tools, &AnnotationToolBox::toolChosen, this, [this](DrawTool tool) { m_pointer.tool = tool; });
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

    m_legend = std::make_unique<RaceLegend>(m_client);
    for (int i = 0; i < 16; ++i)
        connect(m_legend->swatch(i), &QAbstractButton::clicked, this, [this, i] { editRaceColour(i); });
}

void MainWindow::editRaceColour(int index)
{
    if (!m_raceColour) {
        m_raceColour = new RaceColourWindow(m_data, this);
        connect(m_raceColour, &RaceColourWindow::colourStored, this,
                [this](int i, const QColor &colour) { m_legend->swatch(i)->setColour(colour); });
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

void MainWindow::applyLayout()
{
    // The rules take the window's outer size; the title bar is not ours to
    // measure before the window is shown, so a usual one is assumed.
    const int decoration = frameGeometry().height() > height() ? frameGeometry().height() - height() : 30;
    const auto geometry = layoutMainWindow((height() + decoration) * TwipsPerPixel, width() * TwipsPerPixel);
    if (!geometry)
        return;
    const int menu = menuBar()->height();
    auto place = [menu](QWidget *w, const QRect &twips) {
        const QRect r = twipsToPixels(twips);
        w->setGeometry(r.x(), r.y() - menu, r.width(), r.height());
    };
    place(m_universe, geometry->universe);
    place(m_xyCoord, geometry->xyCoord);
    place(m_thePlanet, geometry->thePlanet);
    place(m_progress, geometry->progress);
    const int detailLeft = geometry->detailLeft / TwipsPerPixel;
    const int buttonsRight = m_overlayBar->x() + m_overlayBar->sizeHint().width() + 12;
    m_genUniv->setGeometry(buttonsRight, 4, 120, 28);
    m_combo->move(buttonsRight + 128, 4);
    m_estHab->setGeometry(buttonsRight + 128 + m_combo->width() + 8, 4, 110, 28);
    // The panel and the annotation tools share the column right of the map.
    const int panelTop = qMax(m_universe->y(), m_estHab->geometry().bottom() + 4);
    const int panelHeight = qMin(420, qMax(200, m_universe->height() / 2));
    m_detail->setGeometry(detailLeft, panelTop, 300, panelHeight);
    m_tools->setGeometry(detailLeft, panelTop + panelHeight + 8, 300,
                         qMax(160, m_universe->y() + m_universe->height() - panelTop - panelHeight - 8));
    m_legend->place(geometry->raceLabelLeft / TwipsPerPixel, geometry->raceSwatchLeft / TwipsPerPixel,
                    m_universe->y());
    fitCanvasToWidget();
}

void MainWindow::fitCanvasToWidget()
{
    const int side = m_universe->width();
    if (side <= 0)
        return;
    m_canvas.setWidthTwips(side * TwipsPerPixel);
    const double dpr = m_universe->devicePixelRatioF();
    if (side != m_raster->pixels() || dpr != m_raster->devicePixelRatio())
        m_raster->resize(side, dpr);
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
        generateUniverse(m_data, static_cast<GenerationObserver &>(*this));
        m_tools->showText(m_data.AnnotationText);
        m_universe->update();
        return true;
    } catch (const std::exception &e) {
        const auto *load = dynamic_cast<const LoadError *>(&e);
        showError(load ? load->message() : QString::fromUtf8(e.what()));
        m_universe->update();
        return false;
    }
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
    // only once the new picture is complete.
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
    m_pointer.tool = DrawTool::StopDrawing;
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
    m_universe->shapesMoved();
    m_universe->update();
}
