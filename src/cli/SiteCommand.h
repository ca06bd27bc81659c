#pragma once
// `veltro-cli site`: loads a game's turns as `history` does, one snapshot a
// year, and writes them as a web map: a folder with index.html that any
// browser opens from disk or from a plain static web server.

#include <QStringList>

int runSite(const QStringList &arguments);
