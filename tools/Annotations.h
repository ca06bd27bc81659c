#pragma once
// A few annotations such as a player draws on the map: a circle round the
// own homeworld's scanner reach, lines to the nearest rival homeworlds and
// the rivals' names, in the annotation file's CR LF records.

#include "GameModel.h"

#include <QByteArray>

namespace gamegen {

QByteArray annotationFile(const GameModel &game);

} // namespace gamegen
