#include "StarsSettings.h"

#include "SettingsFile.h"

#include <QDir>
#include <QFileInfo>

namespace {

QString winePrefix()
{
    const QString prefix = qEnvironmentVariable("WINEPREFIX");
    return prefix.isEmpty() ? QDir::home().filePath(QStringLiteral(".wine")) : prefix;
}

// Follows a relative path component by component, each matched without
// regard to case, as Windows would.
QString findPathNoCase(const QString &root, const QStringList &components)
{
    QString path = root;
    for (const QString &component : components) {
        if (component.isEmpty())
            continue;
        const QDir dir(path);
        if (QFileInfo(dir.filePath(component)).exists()) {
            path = dir.filePath(component);
            continue;
        }
        const QStringList entries = dir.entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name);
        QString match;
        for (const QString &entry : entries)
            if (entry.compare(component, Qt::CaseInsensitive) == 0) {
                match = entry;
                break;
            }
        if (match.isEmpty())
            return QString();
        path = dir.filePath(match);
    }
    return path;
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
