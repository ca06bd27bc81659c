#pragma once
// Where the game keeps its settings on this machine. Stars! runs under Wine
// on Linux, so its STARS.INI lies in the Wine prefix's Windows folder, and
// the install folder it names (C:\Stars) is a path inside that prefix.

#include <QString>

// The folder the file selection opens on first: the game's install folder
// from the settings file, else the user's home folder.
QString initialStartDir();

// The STARS.INI of a Wine prefix (any case of its name), or empty.
QString findStarsIni(const QString &winePrefix);

// A Windows path such as C:\Stars translated into the prefix (drive_c/Stars);
// empty when the drive does not exist there.
QString windowsPathInPrefix(const QString &winePrefix, const QString &windowsPath);
