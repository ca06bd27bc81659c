#include "MapExport.h"

#include <QDir>

QString mapBitmapPath(const GameData &data)
{
    const QString name = data.GameYear < 1 ? QStringLiteral("Universe Map.bmp")
                                           : QStringLiteral("Universe Map%1.bmp").arg(data.GameYear);
    return QDir(data.GameDir).filePath(name);
}
