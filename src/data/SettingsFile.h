#pragma once
// The game's settings file STARS.INI: only "StarsInstallDir" matters.

#include <QString>

// The value of the last "StarsInstallDir" line (from its 17th character on),
// or empty text when the file is missing or has no such line.
QString readStarsInstallDir(const QString &path);
