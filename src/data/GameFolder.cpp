#include "GameFolder.h"

#include <QDir>
#include <QFileInfo>

GameFolder::GameFolder(const QString &dir)
    : m_dir(dir),
      m_files(QDir(dir).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name)),
      m_folders(QDir(dir).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name))
{
}

QStringList GameFolder::matches(const QString &name, Kind kind) const
{
    const QStringList &entries = kind == Kind::File ? m_files : m_folders;
    const QDir dir(m_dir);
    QStringList found;
    if (entries.contains(name))
        found << dir.filePath(name);
    for (const QString &entry : entries)
        if (entry != name && entry.compare(name, Qt::CaseInsensitive) == 0)
            found << dir.filePath(entry);
    return found;
}

QString GameFolder::find(const QString &name, Kind kind) const
{
    const QStringList found = matches(name, kind);
    return found.isEmpty() ? QString() : found.first();
}

QStringList GameFolder::startingWith(const QString &prefix) const
{
    QStringList found;
    for (const QString &entry : m_files)
        if (entry.startsWith(prefix, Qt::CaseInsensitive))
            found << entry;
    return found;
}

QString caseTwinsNote(const QStringList &found)
{
    if (found.size() < 2)
        return QString();
    const bool one = found.size() == 2;
    return QStringLiteral("%1 is read; %2 %3 from it only in case and %4 not read")
        .arg(found.first(), found.mid(1).join(QStringLiteral(", ")), one ? QStringLiteral("differs") : QStringLiteral("differ"),
             one ? QStringLiteral("is") : QStringLiteral("are"));
}

QString findFileNoCase(const QString &dir, const QString &name)
{
    if (QFileInfo(QDir(dir).filePath(name)).isFile())
        return QDir(dir).filePath(name);
    return GameFolder(dir).find(name);
}

QString findPathNoCase(const QString &root, const QStringList &components)
{
    QString path = root;
    for (const QString &component : components) {
        if (component.isEmpty())
            continue;
        const GameFolder folder(path);
        QString next = folder.find(component, GameFolder::Kind::Folder);
        if (next.isEmpty())
            next = folder.find(component);
        if (next.isEmpty())
            return QString();
        path = next;
    }
    return path;
}
