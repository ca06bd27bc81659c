#pragma once
// Watches the loaded game's files for the game writing its next turn: the
// map file and every report the load read. The game writes its files one
// after another (up to sixteen reports), so the offer waits until they have
// been quiet for a moment and is made once per loaded turn.

#include "GameData.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

class ReportWatch : public QObject {
    Q_OBJECT
public:
    explicit ReportWatch(QObject *parent = nullptr);

    // Watches the files `data` was loaded from, as of now.
    void watch(const GameData &data);
    void stop();

    // How long the files must stay untouched before the offer.
    static constexpr int QuietMs = 600;

signals:
    // A file of the turn on screen changed on disk.
    void newReports();

private:
    QFileSystemWatcher m_watcher;
    QTimer m_quiet;
    bool m_offered = false;
};
