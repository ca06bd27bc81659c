#include "History.h"

#include "LoadError.h"
#include "QuotedText.h"

#include <QtConcurrent/QtConcurrentMap>
#include <exception>
#include <numeric>

QStringList raceNames(const GameData &data)
{
    QStringList names;
    for (int k = 1; k <= data.PlayerCount; ++k)
        names << data.player(k)[RaceName].text();
    return names;
}

std::vector<HistoryTurn> loadHistory(const QList<Snapshot> &snapshots, const GameChoice &choice,
                                     const std::function<void()> &loaded, const std::atomic_bool *cancel)
{
    std::vector<HistoryTurn> turns(size_t(snapshots.size()));
    std::vector<std::exception_ptr> failures(turns.size());
    std::vector<int> order(turns.size());
    std::iota(order.begin(), order.end(), 0);
    // A pool of its own: the window runs this from a thread of the global one.
    QThreadPool pool;
    QtConcurrent::blockingMap(&pool, order, [&](int i) {
        if (cancel && *cancel)
            return;
        HistoryTurn &turn = turns[size_t(i)];
        turn.snapshot = snapshots[i];
        GameChoice own = choice;
        own.gameYearText = QString::number(turn.snapshot.year);
        GenerationObserver silent;
        try {
            try {
                loadChosenGame(turn.snapshot.mapFile, own, turn.data, silent);
            } catch (const SelectionRefused &refused) {
                throw SelectionRefused(QStringLiteral("%1: %2").arg(escapeControls(turn.snapshot.mapFile), refused.message));
            }
        } catch (...) {
            failures[size_t(i)] = std::current_exception();
        }
        if (loaded)
            loaded();
    });
    for (const std::exception_ptr &failure : failures)
        if (failure)
            std::rethrow_exception(failure);
    return turns;
}

History::History(std::vector<HistoryTurn> turns, StableRaceColours colours)
    : m_turns(std::move(turns)), m_colours(std::move(colours))
{
    for (HistoryTurn &turn : m_turns)
        turn.data.RaceRGB = m_colours.nextTurn(raceNames(turn.data));
}

HistoryLegend History::legend(int turn) const
{
    const QStringList present = raceNames(m_turns[size_t(turn)].data);
    HistoryLegend legend;
    for (const StableRaceColours::Race &race : m_colours.races())
        if (present.contains(race.name))
            legend.push_back(race);
    return legend;
}

HistoryFrameLayout History::layout(int mapPixels) const
{
    QStringList races;
    for (const StableRaceColours::Race &race : m_colours.races())
        races << race.name;
    int most = 0;
    for (const HistoryTurn &turn : m_turns)
        most = std::max(most, turn.data.PlayerCount);
    return HistoryFrameLayout(mapPixels, races, most);
}

QImage History::drawFrame(int turn, const OverlayButtons &layers, const HistoryFrameLayout &layout, RedrawHost &host,
                          double devicePixelRatio)
{
    return drawHistoryFrame(m_turns[size_t(turn)].data, layers, layout, year(turn), legend(turn), host,
                            devicePixelRatio);
}
