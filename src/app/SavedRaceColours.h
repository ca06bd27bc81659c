#pragma once
// The colours the user gave races in the colour editor, kept between runs
// of the desktop program in the user's settings: per game (its map file)
// and per race name, since a race's column changes from load to load while
// its name does not. Each load starts from the start colours; the saved
// ones are laid over them afterwards.

#include "GameData.h"

#include <QColor>
#include <QString>

class SavedRaceColours {
public:
    // A game has been loaded: gives every race the colour remembered for
    // its name in this game, if any.
    void gameLoaded(GameData &data);
    // Remembers `colour` for the race named `race` in the game loaded last.
    void remember(const QString &race, const QColor &colour);

private:
    // The map file of the game loaded last. Not GameData's: the file
    // selection changes that on a click, before anything is loaded.
    QString m_mapFile;
};
