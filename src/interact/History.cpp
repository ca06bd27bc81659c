#include "History.h"

#include "LoadError.h"
#include "QuotedText.h"

#include <QtConcurrent/QtConcurrentMap>
#include <exception>
#include <numeric>

namespace {

class RacesOnly : public GenerationObserver {
public:
    bool racesOnly() const override { return true; }
};

// A snapshot loaded as a game of its year (only as far as its races, for
// TurnData::Released); a refused selection names the map file.
void loadTurn(const Snapshot &snapshot, const GameChoice &choice, GameData &data, TurnData keep = TurnData::Kept)
{
    GameChoice own = choice;
    own.gameYearText = QString::number(snapshot.year);
    GenerationObserver whole;
    RacesOnly races;
    try {
        loadChosenGame(snapshot.mapFile, own, data, keep == TurnData::Kept ? whole : races);
    } catch (const SelectionRefused &refused) {
        throw SelectionRefused(QStringLiteral("%1: %2").arg(escapeControls(snapshot.mapFile), refused.message));
    }
}

} // namespace

QStringList raceNames(const GameData &data)
{
    QStringList names;
    for (int k = 1; k <= data.PlayerCount; ++k)
        names << data.player(k)[RaceName].text();
    return names;
}

std::vector<HistoryTurn> loadHistory(const QList<Snapshot> &snapshots, const GameChoice &choice,
                                     const std::function<void()> &loaded, const std::atomic_bool *cancel,
                                     TurnData keep)
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
        try {
            loadTurn(turn.snapshot, choice, turn.data, keep);
            turn.races = raceNames(turn.data);
            if (keep == TurnData::Released)
                turn.data = GameData();
        } catch (...) {
            turn.data = GameData();
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
    for (HistoryTurn &turn : m_turns) {
        m_turnColours.push_back(m_colours.nextTurn(turn.races));
        turn.data.RaceRGB = m_turnColours.back();
    }
}

HistoryLegend History::legend(int turn) const
{
    const QStringList &present = m_turns[size_t(turn)].races;
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
    qsizetype most = 0;
    for (const HistoryTurn &turn : m_turns)
        most = std::max(most, turn.races.size());
    return HistoryFrameLayout(mapPixels, races, int(most));
}

QImage History::drawFrame(int turn, const OverlayButtons &layers, const HistoryFrameLayout &layout, RedrawHost &host,
                          double devicePixelRatio)
{
    return drawHistoryFrame(m_turns[size_t(turn)].data, layers, layout, year(turn), legend(turn), host,
                            devicePixelRatio);
}

void History::reload(int turn, const GameChoice &choice)
{
    HistoryTurn &t = m_turns[size_t(turn)];
    GameData data;
    loadTurn(t.snapshot, choice, data);
    if (raceNames(data) != t.races)
        throw LoadError(t.snapshot.mapFile, 0, QStringLiteral("the races of this turn changed while it was drawn"));
    data.RaceRGB = m_turnColours[size_t(turn)];
    t.data = std::move(data);
}
