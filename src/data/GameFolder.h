#pragma once
// Finding a game's files in its folder. Games copied from Windows keep
// upper-case names (GAME.P1), so names match without regard to case.

#include <QString>
#include <QStringList>

class GameFolder {
public:
    // What a name stands for: a file (a device or a FIFO included, so that
    // the reader can refuse it by name) or a sub-folder.
    enum class Kind { File, Folder };

    explicit GameFolder(const QString &dir);

    // The paths of the entries of that kind whose names match without
    // regard to case: the exact name first, then the others in sorted
    // order. More than one means names that differ only in case.
    QStringList matches(const QString &name, Kind kind = Kind::File) const;
    // The first of the matches; empty when there is none.
    QString find(const QString &name, Kind kind = Kind::File) const;
    // File names that start with `prefix`, without regard to case.
    QStringList startingWith(const QString &prefix) const;

private:
    QString m_dir;
    QStringList m_files;
    QStringList m_folders;
};

// For the matches of one name: which is read and which are passed over;
// empty when there is only one.
QString caseTwinsNote(const QStringList &matches);

// One-off lookup of a single file.
QString findFileNoCase(const QString &dir, const QString &name);

// Follows a relative path component by component, each a file or a folder
// matched without regard to case, as Windows would; empty when a component
// is missing.
QString findPathNoCase(const QString &root, const QStringList &components);
