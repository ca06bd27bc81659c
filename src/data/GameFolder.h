#pragma once
// Finding a game's files in its folder. Games copied from Windows keep
// upper-case names (GAME.P1), so names match without regard to case.

#include <QString>
#include <QStringList>

class GameFolder {
public:
    explicit GameFolder(const QString &dir);

    // The path of the file of that name: the exact name first, otherwise
    // the first match in sorted order; empty when there is none.
    QString find(const QString &name) const;
    // Names that start with `prefix`, without regard to case.
    QStringList startingWith(const QString &prefix) const;

private:
    QString m_dir;
    QStringList m_entries;
};

// One-off lookup of a single file.
QString findFileNoCase(const QString &dir, const QString &name);
