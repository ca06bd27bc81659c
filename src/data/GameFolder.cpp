#include "GameFolder.h"

#include <QDir>
#include <QFileInfo>

GameFolder::GameFolder(const QString &dir)
    : m_dir(dir), m_entries(QDir(dir).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name))
{
}

QString GameFolder::find(const QString &name) const
{
    if (m_entries.contains(name))
        return QDir(m_dir).filePath(name);
    for (const QString &entry : m_entries)
        if (entry.compare(name, Qt::CaseInsensitive) == 0)
            return QDir(m_dir).filePath(entry);
    return QString();
}

QStringList GameFolder::startingWith(const QString &prefix) const
{
    QStringList found;
    for (const QString &entry : m_entries)
        if (entry.startsWith(prefix, Qt::CaseInsensitive))
            found << entry;
    return found;
}

QString findFileNoCase(const QString &dir, const QString &name)
{
    if (QFileInfo(QDir(dir).filePath(name)).isFile())
        return QDir(dir).filePath(name);
    return GameFolder(dir).find(name);
}
