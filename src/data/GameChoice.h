#pragma once
// A game's files chosen without the selection window: what a script or a
// history of turns gives instead of the window's clicks, and the load that
// follows it through the window's own checks and messages.

#include "GameData.h"
#include "GenerationObserver.h"

#include <QDateTime>
#include <QList>
#include <QMap>
#include <QString>
#include <stdexcept>

struct GameChoice {
    int ownRace = 0;                     // player number; 0 keeps the lowest report's
    QString gameYearText;                // the "Current Game Year" box
    QMap<int, QString> reportYearTexts;  // player number -> that report's year box
    QList<int> skipped;                  // rows unticked (0..16)
};

// A check of the selection refused the choice; the message is the window's,
// `file` the one it concerns (empty when none is known).
struct SelectionRefused : std::runtime_error {
    explicit SelectionRefused(const QString &message, const QString &file = {})
        : std::runtime_error(message.toStdString()), message(message), file(file) {}
    QString message;
    QString file;
};

// Clicks `mapFile` as the selection window would, applies the choice, runs
// the checks of "Load && Generate Data" and then the generation. Throws
// SelectionRefused when a check fails, also for a year given to a player
// without a report, and LoadError for a fault in a file. What the
// selection chose quietly goes to the observer's warnings.
void loadChosenGame(const QString &mapFile, const GameChoice &choice, GameData &data, GenerationObserver &observer);

// The choice `data` was loaded with: its own race, game year and left-out
// reports, and the year of each report exported before the game year.
// Reports no longer in their folder are left out of it.
GameChoice choiceOf(const GameData &data);

// The same choice for the next turn, in the year of `gameYearText`: a
// report the game wrote after `loadedAt` is of that year, any other keeps
// the year it had, so that it ages by the turns that passed.
GameChoice nextTurnChoice(const GameData &data, const QString &gameYearText, const QDateTime &loadedAt);
