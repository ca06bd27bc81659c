#include "StarsSettings.h"

#include "GameFolder.h"
#include "SettingsFile.h"

#include <QDir>
#include <QFileInfo>

namespace {

QString winePrefix()
{
    const QString prefix = qEnvironmentVariable("WINEPREFIX");
    return prefix.isEmpty() ? QDir::home().filePath(QStringLiteral(".wine")) : prefix;
}

} // namespace

QString findStarsIni(const QString &prefix)
{
    for (const QString &windows : {QStringLiteral("windows"), QStringLiteral("winnt")}) {
        const QString path = findPathNoCase(prefix, {QStringLiteral("drive_c"), windows, QStringLiteral("STARS.INI")});
        if (!path.isEmpty() && QFileInfo(path).isFile())
            return path;
    }
    return QString();
}

QString windowsPathInPrefix(const QString &prefix, const QString &windowsPath)
{
    QString path = windowsPath.trimmed();
    path.replace(u'\\', u'/');
    if (path.size() < 2 || path[1] != u':')
        return QString();
    const QString drive = QStringLiteral("drive_") + path[0].toLower();
    return findPathNoCase(prefix, QStringList{drive} + path.mid(2).split(u'/'));
}

QString initialStartDir()
{
    const QString prefix = winePrefix();
    const QString ini = findStarsIni(prefix);
    if (!ini.isEmpty()) {
        const QString installDir = readStarsInstallDir(ini);
        const QString folder = windowsPathInPrefix(prefix, installDir);
        if (!folder.isEmpty() && QFileInfo(folder).isDir())
            return folder;
    }
    return QDir::homePath();
}
