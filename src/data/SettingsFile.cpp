#include "SettingsFile.h"

#include "LoadError.h"
#include "TextReader.h"

#include <QFileInfo>

QString readStarsInstallDir(const QString &path)
{
    if (!QFileInfo(path).isFile())
        return QString();
    QString dir;
    try {
        TextReader reader(path);
        while (!reader.atEnd()) {
            const QString item = reader.readTextItem();
            if (item.startsWith(QLatin1String("StarsInstallDir")))
                dir = item.mid(16);
        }
    } catch (const LoadError &) {
        // An unreadable settings file is no error: the caller falls back.
    }
    return dir;
}
