#pragma once
// A game's turns side by side: every snapshot loaded as a single game is
// loaded, in year order, with race colours that hold from turn to turn, and
// any turn drawn as a frame. Loading and drawing run on every core; each
// turn's data is touched by one thread at a time. A history of many turns
// need not hold them all: a turn keeps its races when its data is released,
// which is all the colours, the legend and the frames' size depend on, and
// is loaded again to be drawn.

#include "GameChoice.h"
#include "HistoryFrame.h"
#include "Snapshot.h"
#include "StableRaceColours.h"

#include <QThreadPool>
#include <atomic>
#include <functional>
#include <vector>

struct HistoryTurn {
    Snapshot snapshot;
    GameData data;     // empty while released
    QStringList races; // by column, kept when the data is released
};

// The race names of a loaded game, by column.
QStringList raceNames(const GameData &data);

// Whether loaded turns keep their data, or are loaded only as far as their
// races and keep those.
enum class TurnData { Kept, Released };

// Loads the snapshots in parallel, each with `choice` and its own year as
// the game year; `loaded` is called (from any thread) as each one is done.
// When some fail, the failure of the earliest in year order is thrown:
// SelectionRefused with the map file named, or the LoadError naming the
// file and line. A set `cancel` stops the remaining loads (the result is
// then incomplete and to be discarded).
std::vector<HistoryTurn> loadHistory(const QList<Snapshot> &snapshots, const GameChoice &choice,
                                     const std::function<void()> &loaded = {},
                                     const std::atomic_bool *cancel = nullptr, TurnData keep = TurnData::Kept);

class History {
public:
    // Gives every turn its colours, in year order.
    History(std::vector<HistoryTurn> turns, StableRaceColours colours);

    int size() const { return int(m_turns.size()); }
    int year(int turn) const { return m_turns[size_t(turn)].snapshot.year; }
    const HistoryTurn &turn(int turn) const { return m_turns[size_t(turn)]; }
    // The races present in a turn, in order of first appearance.
    HistoryLegend legend(int turn) const;
    // Frames of this map size fit every year and every legend.
    HistoryFrameLayout layout(int mapPixels) const;

    // Draws one turn, whose data must be loaded; turns drawn at the same
    // time must differ.
    QImage drawFrame(int turn, const OverlayButtons &layers, const HistoryFrameLayout &layout, RedrawHost &host,
                     double devicePixelRatio = 1.0);
    // The turn's data is no longer needed once its frames are drawn.
    void release(int turn) { m_turns[size_t(turn)].data = GameData(); }
    // Loads a released turn again, as loadHistory did, in its colours.
    // Throws as loadHistory does, and LoadError when its races are no
    // longer those of the first load (a report changed meanwhile).
    void reload(int turn, const GameChoice &choice);

private:
    std::vector<HistoryTurn> m_turns;
    std::vector<RaceColours> m_turnColours;
    StableRaceColours m_colours;
};
