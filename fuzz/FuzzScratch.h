#pragma once
// The folder a harness writes its game files into: one per process, on
// tmpfs where there is one, removed when the harness exits normally.

#include <QString>

const QString &fuzzScratchDir();
