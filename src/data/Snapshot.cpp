#include "Snapshot.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>
#include <optional>

namespace {

// Game years are 16-bit; a year of 0 is no year at all.
std::optional<int> yearFromDigits(QStringView digits)
{
    if (digits.isEmpty() || digits.size() > 5)
        return std::nullopt;
    for (QChar c : digits)
        if (!c.isDigit() || c.unicode() > 127)
            return std::nullopt;
    const int year = digits.toInt();
    if (year < 1 || year > 32767)
        return std::nullopt;
    return year;
}

// The number a map file's base name ends in: "GAME-2431.map" gives 2431.
std::optional<int> yearOfFileName(const QFileInfo &file)
{
    static const QRegularExpression trailingDigits(QStringLiteral("(\\d+)$"));
    const QRegularExpressionMatch match = trailingDigits.match(file.completeBaseName());
    return match.hasMatch() ? yearFromDigits(match.capturedView(1)) : std::nullopt;
}

std::optional<int> yearOfFolder(const QFileInfo &file)
{
    return yearFromDigits(file.absoluteDir().dirName());
}

QStringList mapFiles(const QDir &dir)
{
    return dir.entryList({QStringLiteral("*.map")}, QDir::Files, QDir::Name);
}

} // namespace

Snapshot snapshotFromArgument(const QString &argument)
{
    // A path may hold "@" too: only digits after the last one make a year.
    const qsizetype at = argument.lastIndexOf(u'@');
    if (at > 0) {
        if (const auto year = yearFromDigits(QStringView(argument).mid(at + 1)))
            return {argument.left(at), *year};
    }
    const QFileInfo file(argument);
    if (const auto year = yearOfFolder(file))
        return {argument, *year};
    if (const auto year = yearOfFileName(file))
        return {argument, *year};
    throw SnapshotError(QStringLiteral("%1: no year for this snapshot: write MAPFILE@YEAR or keep the map in a "
                                       "folder named by the year")
                            .arg(argument));
}

QList<Snapshot> snapshotsInFolder(const QString &folder)
{
    const QDir dir(folder);
    if (!dir.exists())
        throw SnapshotError(QStringLiteral("%1: no such folder").arg(folder));
    QList<Snapshot> snapshots;
    for (const QString &name : dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        const auto year = yearFromDigits(name);
        if (!year)
            continue;
        const QDir turn(dir.filePath(name));
        const QStringList maps = mapFiles(turn);
        if (maps.size() > 1)
            throw SnapshotError(QStringLiteral("%1: %2 map files in one turn's folder")
                                    .arg(turn.path()).arg(maps.size()));
        if (maps.size() == 1)
            snapshots.push_back({turn.filePath(maps.first()), *year});
    }
    if (snapshots.isEmpty()) {
        for (const QString &name : mapFiles(dir))
            if (const auto year = yearOfFileName(QFileInfo(dir.filePath(name))))
                snapshots.push_back({dir.filePath(name), *year});
    }
    if (snapshots.isEmpty())
        throw SnapshotError(QStringLiteral("%1: no turns here: neither folders named by a year holding a map file, "
                                           "nor map files named with their year")
                                .arg(folder));
    sortByYear(snapshots);
    return snapshots;
}

void sortByYear(QList<Snapshot> &snapshots)
{
    std::stable_sort(snapshots.begin(), snapshots.end(),
                     [](const Snapshot &a, const Snapshot &b) { return a.year < b.year; });
    for (qsizetype i = 1; i < snapshots.size(); ++i)
        if (snapshots[i].year == snapshots[i - 1].year)
            throw SnapshotError(QStringLiteral("two snapshots of the year %1: %2 and %3")
                                    .arg(snapshots[i].year)
                                    .arg(snapshots[i - 1].mapFile, snapshots[i].mapFile));
}
