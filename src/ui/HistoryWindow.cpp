#include "HistoryWindow.h"

#include "Animation.h"
#include "FigureName.h"
#include "LayerNames.h"
#include "LoadError.h"
#include "MessageSink.h"
#include "PictureAllocation.h"
#include "ScreenFit.h"

#include <QApplication>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QSaveFile>
#include <QShortcut>
#include <QSlider>
#include <QToolButton>
#include <QVBoxLayout>
#include <QtConcurrent/QtConcurrentRun>

namespace {

constexpr int PlayInterval = 700; // milliseconds a year shows while playing
constexpr int SmallestMap = 120;
// The saved animation's map square, whatever the window's size: the
// command line's usual size.
constexpr int SavedMapPixels = 800;

} // namespace

HistoryWindow::HistoryWindow(const QString &folder, const OverlayButtons &buttons, QWidget *parent)
    : QWidget(parent, Qt::Window), m_map(new QLabel(this)), m_slider(new QSlider(Qt::Horizontal, this)),
      m_yearLabel(new QLabel(this)), m_play(new QPushButton(QStringLiteral("Play"), this)),
      m_progress(new QProgressBar(this)), m_saveAnimation(new QAction(QStringLiteral("&Save Animation..."), this))
{
    setWindowTitle(QStringLiteral("History - %1").arg(folder));
    setAttribute(Qt::WA_DeleteOnClose);
    m_map->setAccessibleName(QStringLiteral("Map"));
    m_map->setAlignment(Qt::AlignCenter);
    m_map->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    m_map->setMinimumSize(SmallestMap * 2, SmallestMap);
    m_slider->setAccessibleName(QStringLiteral("Year"));
    m_slider->setEnabled(false);
    m_slider->setPageStep(5);
    m_yearLabel->setAccessibleName(QStringLiteral("Year shown"));
    m_yearLabel->setMinimumWidth(48);
    m_play->setAccessibleName(m_play->text());
    m_play->setEnabled(false);
    m_progress->setAccessibleName(QStringLiteral("Loading"));

    auto *layers = new QHBoxLayout;
    layers->setSpacing(2);
    bool anyPressed = false;
    for (const LayerName &layer : layerNames())
        anyPressed = anyPressed || buttons.pressed(layer.button);
    for (const LayerName &layer : layerNames()) {
        auto *b = new QToolButton(this);
        b->setText(QString::fromLatin1(layer.caption));
        b->setAccessibleName(b->text());
        b->setCheckable(true);
        const bool usual = layer.button == BordersButton || layer.button == UniverseButton || layer.button == OwnedButton;
        b->setChecked(anyPressed ? buttons.pressed(layer.button) : usual);
        connect(b, &QToolButton::toggled, this, &HistoryWindow::redrawAll);
        layers->addWidget(b);
        m_layers.push_back({layer.button, b});
    }
    layers->addStretch();

    auto *controls = new QHBoxLayout;
    controls->addWidget(m_play);
    controls->addWidget(m_slider, 1);
    controls->addWidget(m_yearLabel);
    controls->addWidget(m_progress);

    auto *menus = new QMenuBar(this);
    QMenu *file = menus->addMenu(QStringLiteral("&File"));
    m_saveAnimation->setEnabled(false);
    file->addAction(m_saveAnimation);
    connect(m_saveAnimation, &QAction::triggered, this, &HistoryWindow::saveAnimation);
    file->addAction(QStringLiteral("&Close"), this, &QWidget::close);
    // The bar's own button for menus that do not fit.
    for (QToolButton *more : menus->findChildren<QToolButton *>())
        more->setAccessibleName(QStringLiteral("More Menus"));

    auto *column = new QVBoxLayout(this);
    column->setMenuBar(menus);
    column->addLayout(layers);
    column->addWidget(m_map, 1);
    column->addLayout(controls);

    connect(m_slider, &QSlider::valueChanged, this, &HistoryWindow::showTurn);
    connect(m_play, &QPushButton::clicked, this, &HistoryWindow::togglePlay);
    m_player.setInterval(PlayInterval);
    connect(&m_player, &QTimer::timeout, this, [this] { stepYear(1); });
    // A resize redraws the frames once it has settled.
    m_resized.setSingleShot(true);
    m_resized.setInterval(100);
    connect(&m_resized, &QTimer::timeout, this, &HistoryWindow::redrawAll);
    // The arrows step a year wherever the focus is, the slider's included.
    for (const auto &[key, by] : {std::pair{Qt::Key_Left, -1}, std::pair{Qt::Key_Right, 1}})
        connect(new QShortcut(key, this), &QShortcut::activated, this, [this, by = by] { stepYear(by); });

    resize(sizeWithinScreen(this, QSize(1000, 820)));
    startLoading(folder);
}

HistoryWindow::~HistoryWindow()
{
    m_cancel = true;
    m_loading.waitForFinished();
}

int HistoryWindow::year() const
{
    return m_history ? m_history->year(m_slider->value()) : 0;
}

QToolButton *HistoryWindow::layerButton(OverlayButton button) const
{
    for (const auto &[b, widget] : m_layers)
        if (b == button)
            return widget;
    return nullptr;
}

void HistoryWindow::stepYear(int by)
{
    if (!m_history)
        return;
    const int n = m_history->size();
    m_slider->setValue(((m_slider->value() + by) % n + n) % n);
}

void HistoryWindow::startLoading(const QString &folder)
{
    QList<Snapshot> snapshots;
    try {
        snapshots = snapshotsInFolder(folder);
    } catch (const SnapshotError &e) {
        showMapText(e.message);
        m_progress->hide();
        // Shown once the window is up, so that the message has its parent.
        QTimer::singleShot(0, this, [this, message = e.message] {
            showMessage(this, message);
            emit loadingFinished();
        });
        return;
    }
    showMapText(QStringLiteral("Loading %1 turns...").arg(snapshots.size()));
    m_progress->setRange(0, int(snapshots.size()));
    m_progress->setValue(0);
    connect(&m_loading, &QFutureWatcher<Loaded>::finished, this, &HistoryWindow::loadingDone);
    m_loading.setFuture(QtConcurrent::run([this, snapshots] {
        Loaded loaded;
        try {
            loaded.turns = loadHistory(snapshots, GameChoice{}, [this] {
                QMetaObject::invokeMethod(m_progress, [p = m_progress] { p->setValue(p->value() + 1); },
                                          Qt::QueuedConnection);
            }, &m_cancel);
        } catch (const SelectionRefused &refused) {
            loaded.failure = refused.message;
        } catch (const LoadError &e) {
            loaded.failure = e.message();
        }
        return loaded;
    }));
}

void HistoryWindow::loadingDone()
{
    m_progress->hide();
    Loaded loaded = m_loading.result();
    if (!loaded.failure.isEmpty()) {
        showMapText(loaded.failure);
        showMessage(this, loaded.failure);
        emit loadingFinished();
        return;
    }
    m_history = std::make_unique<History>(std::move(loaded.turns), StableRaceColours{});
    // The smallest frame, legend and all, always fits.
    m_map->setMinimumSize(m_history->layout(SmallestMap).size().expandedTo(m_map->minimumSize()));
    m_slider->setRange(0, m_history->size() - 1);
    m_slider->setEnabled(true);
    m_play->setEnabled(m_history->size() > 1);
    m_saveAnimation->setEnabled(true);
    redrawAll();
    emit loadingFinished();
}

OverlayButtons HistoryWindow::pressedLayers() const
{
    OverlayButtons buttons;
    for (const auto &[b, widget] : m_layers)
        buttons.setPressedQuietly(b, widget->isChecked());
    return buttons;
}

void HistoryWindow::redrawAll()
{
    m_frames.assign(m_history ? size_t(m_history->size()) : 0, QImage());
    showTurn();
}

// Draws the turn at the largest map that fits beside its legend.
void HistoryWindow::showTurn()
{
    if (!m_history)
        return;
    const int turn = m_slider->value();
    m_yearLabel->setText(QString::number(m_history->year(turn)));
    m_yearLabel->setAccessibleName(figureName(QStringLiteral("Year shown"), m_yearLabel->text()));
    QImage &frame = m_frames[size_t(turn)];
    if (frame.isNull()) {
        const int legendWidth = m_history->layout(SmallestMap).panel().width();
        const int side = std::max(SmallestMap, std::min(m_map->height(), m_map->width() - legendWidth));
        RedrawHost quiet;
        frame = m_history->drawFrame(turn, pressedLayers(), m_history->layout(side), quiet, devicePixelRatioF());
    }
    m_map->setPixmap(QPixmap::fromImage(frame));
    m_map->setAccessibleName(QStringLiteral("Map"));
}

// A note in place of the map, which screen readers read with the map's name.
void HistoryWindow::showMapText(const QString &text)
{
    m_map->setText(text);
    m_map->setAccessibleName(figureName(QStringLiteral("Map"), text));
}

void HistoryWindow::togglePlay()
{
    if (m_player.isActive())
        m_player.stop();
    else
        m_player.start();
    m_play->setText(m_player.isActive() ? QStringLiteral("Pause") : QStringLiteral("Play"));
    m_play->setAccessibleName(m_play->text());
}

void HistoryWindow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (m_history)
        m_resized.start();
}

void HistoryWindow::saveAnimation()
{
    QFileDialog dialog(this, QStringLiteral("Save Animation"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters({QStringLiteral("GIF animation (*.gif)"), QStringLiteral("WebP animation, lossless (*.webp)")});
    dialog.setDefaultSuffix(QStringLiteral("gif"));
    connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString &filter) {
        dialog.setDefaultSuffix(filter.contains(QLatin1String("webp")) ? QStringLiteral("webp") : QStringLiteral("gif"));
    });
    if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty())
        writeAnimation(dialog.selectedFiles().first());
}

// Every year at the saved size with the layers pressed now, each shown as
// long as while playing.
void HistoryWindow::writeAnimation(const QString &path)
{
    const std::optional<AnimationFormat> format = animationFormat(path);
    if (!format) {
        showMessage(this, QStringLiteral("%1: an animation is saved as GIF (.gif) or WebP (.webp)").arg(path));
        return;
    }
    QString failure;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    try {
        QSaveFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            throw AnimationError(file.errorString().toStdString());
        const HistoryFrameLayout layout = m_history->layout(SavedMapPixels);
        const std::unique_ptr<Animation> animation = startAnimation(*format, file, layout.size(), PlayInterval / 10);
        const OverlayButtons layers = pressedLayers();
        RedrawHost quiet;
        for (int turn = 0; turn < m_history->size(); ++turn)
            animation->addFrame(m_history->drawFrame(turn, layers, layout, quiet));
        animation->finish();
        if (!file.commit())
            throw AnimationError(file.errorString().toStdString());
    } catch (const std::bad_alloc &e) {
        failure = dynamic_cast<const NotEnoughMemory *>(&e) ? QString::fromUtf8(e.what()) : QStringLiteral("not enough memory");
    } catch (const std::exception &e) {
        failure = QString::fromUtf8(e.what());
    }
    QApplication::restoreOverrideCursor();
    if (!failure.isEmpty())
        showMessage(this, QStringLiteral("%1: cannot save the animation (%2)").arg(path, failure));
}
