#pragma once
// A game's files chosen without the selection window: what a script or a
// history of turns gives instead of the window's clicks, and the load that
// follows it through the window's own checks and messages.

#include "GameData.h"
#include "GenerationObserver.h"

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

// A check of the selection refused the choice; the message is the window's.
struct SelectionRefused : std::runtime_error {
    explicit SelectionRefused(const QString &message) : std::runtime_error(message.toStdString()), message(message) {}
    QString message;
};

// Clicks `mapFile` as the selection window would, applies the choice, runs
// the checks of "Load && Generate Data" and then the generation. Throws
// SelectionRefused when a check fails and LoadError for a fault in a file.
void loadChosenGame(const QString &mapFile, const GameChoice &choice, GameData &data, GenerationObserver &observer);
