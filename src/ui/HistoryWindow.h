#pragma once
// The turns of a game in one window: the map of a year with the year
// slider, a play button that steps through the years, and the map layers as
// toggles. The turns load in the background from a folder whose subfolders
// are named by the year (or whose map files are); each race keeps one
// colour throughout. Left and right step a year. File > Save Animation
// writes every year as a GIF or a lossless WebP, by the name's ending.

#include "History.h"

#include <QFutureWatcher>
#include <QTimer>
#include <QWidget>
#include <atomic>
#include <memory>
#include <vector>

class QAction;
class QLabel;
class QProgressBar;
class QPushButton;
class QSlider;
class QToolButton;

class HistoryWindow : public QWidget {
    Q_OBJECT
public:
    // Opens the turns of `folder` drawn with the layers pressed in `buttons`,
    // or borders, universe and owned planets when none is.
    HistoryWindow(const QString &folder, const OverlayButtons &buttons, QWidget *parent = nullptr);
    ~HistoryWindow() override;

    bool isLoaded() const { return m_history != nullptr; }
    // The year shown, 0 before the turns are loaded.
    int year() const;
    // Moves `by` years along, wrapping round at either end.
    void stepYear(int by);

    QSlider *yearSlider() const { return m_slider; }
    QPushButton *playButton() const { return m_play; }
    QToolButton *layerButton(OverlayButton button) const;
    QLabel *mapLabel() const { return m_map; }
    QAction *saveAnimationAction() const { return m_saveAnimation; }

signals:
    // The turns are loaded (or failed to, after the message).
    void loadingFinished();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Loaded {
        std::vector<HistoryTurn> turns;
        QString failure;
    };

    void startLoading(const QString &folder);
    void loadingDone();
    void showTurn();
    void showMapText(const QString &text);
    void redrawAll();
    void togglePlay();
    OverlayButtons pressedLayers() const;
    // Asks for a file name, then writes the animation there; a failure is
    // one message.
    void saveAnimation();
    void writeAnimation(const QString &path);

    QLabel *m_map;
    QSlider *m_slider;
    QLabel *m_yearLabel;
    QPushButton *m_play;
    QProgressBar *m_progress;
    QAction *m_saveAnimation;
    std::vector<std::pair<OverlayButton, QToolButton *>> m_layers;
    QTimer m_player;
    QTimer m_resized;

    std::atomic_bool m_cancel = false;
    QFutureWatcher<Loaded> m_loading;
    std::unique_ptr<History> m_history;
    // Frames drawn so far at the map's present size and layers.
    std::vector<QImage> m_frames;
};
