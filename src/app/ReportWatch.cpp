#include "ReportWatch.h"

#include <QFileInfo>

ReportWatch::ReportWatch(QObject *parent) : QObject(parent)
{
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(QuietMs);
    // Each write starts the wait afresh: sixteen reports in a row, one offer.
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, &m_quiet, qOverload<>(&QTimer::start));
    connect(&m_quiet, &QTimer::timeout, this, [this] {
        if (!m_offered) {
            m_offered = true;
            emit newReports();
        }
    });
}

void ReportWatch::stop()
{
    if (!m_watcher.files().isEmpty())
        m_watcher.removePaths(m_watcher.files());
    m_quiet.stop();
    m_offered = false;
}

void ReportWatch::watch(const GameData &data)
{
    stop();
    QStringList files{QFileInfo(data.MapFilePath).absoluteFilePath()};
    for (int n = 1; n <= MaxPlayers; ++n) {
        const GameFileRow &row = data.GameFiles[size_t(n)];
        if (!row.path.isEmpty() && row.included == u"1")
            files << QFileInfo(row.path).absoluteFilePath();
    }
    // A file rewritten, or written aside and renamed over the old one (its
    // watch then ends), is told; once told, the turn on screen is old and
    // its files need no watch until the next load.
    m_watcher.addPaths(files);
}
