#pragma once
// Small games written into a temporary folder and loaded as the selection window loads them.

#include "FileSelection.h"
#include "LoadError.h"
#include "UniverseGenerator.h"

#include <QFile>
#include <QMap>
#include <QTemporaryDir>

struct MapPlanet { QString name; int x, y; };

// A report line: fields 1..5, further fields by number, a tab after the last so that it is read too.
inline QByteArray planetLine(const QString &name, const QString &owner, const QString &starbase,
                             const QString &age, const QString &population, const QMap<int, QString> &more = {})
{
    QStringList f{name, owner, starbase, age, population};
    while (!more.isEmpty() && f.size() < more.lastKey())
        f << QString();
    for (auto it = more.begin(); it != more.end(); ++it)
        f[it.key() - 1] = it.value();
    return f.join(u'\t').toLatin1() + '\t';
}

// The own race's home; its resources make "Humans" the own race's name.
inline QByteArray homeLine() { return planetLine("Home", "Humans", "None", "0", "100000", {{20, "50"}}); }

class TestGame {
public:
    QString dir() const { return m_dir.path(); }
    QString path(const QString &name) const { return m_dir.filePath(name); }

    void write(const QString &name, const QByteArray &bytes) const
    {
        QFile f(path(name));
        if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(path(name)));
    }
    void writeMap(const QList<MapPlanet> &planets, const QString &name = QStringLiteral("game.map")) const
    {
        QByteArray bytes = "#\tX\tY\tName\r\n";
        for (int i = 0; i < planets.size(); ++i)
            bytes += QString("%1\t%2\t%3\t%4\r\n").arg(i + 1).arg(planets[i].x).arg(planets[i].y).arg(planets[i].name).toLatin1();
        write(name, bytes);
    }
    void writeReport(const QString &name, const QList<QByteArray> &lines) const
    {
        QByteArray bytes = "Planet Name\tOwner\tStarbase\tReport Age\tPopulation\r\n";
        for (const QByteArray &line : lines)
            bytes += line + "\r\n";
        write(name, bytes);
    }

    // Selects game.map with these years and generates: empty, or the check's message or the load error.
    QString load(GameData &data, const QString &year = {}, const QMap<int, QString> &reportYears = {},
                 GenerationObserver *observer = nullptr) const
    {
        FileSelection selection(data);
        QString message = selection.clickMapFile(dir(), "game.map");
        selection.gameYearText = year;
        for (auto it = reportYears.begin(); it != reportYears.end(); ++it)
            selection.row(it.key()).yearText = it.value();
        if (message.isEmpty())
            message = selection.confirm();
        if (!message.isEmpty())
            return message;
        try {
            GenerationObserver silent;
            generateUniverse(data, observer ? *observer : silent);
        } catch (const LoadError &e) {
            return e.message();
        }
        return QString();
    }

private:
    QTemporaryDir m_dir;
};

// The sample game copied into `game`, named from `base`, with lower-case suffixes if asked.
inline void copySample(const TestGame &game, const QString &base = QStringLiteral("MARCHES"), bool lowerSuffixes = false)
{
    for (const QString suffix : {".map", ".P1", ".P2", ".P3", ".P4", ".P5", ".VMK"}) {
        QFile sample(QStringLiteral(VELTRO_SAMPLES "/MARCHES") + suffix);
        game.write(base + (lowerSuffixes && suffix != ".map" ? suffix.toLower() : suffix),
                   sample.open(QIODevice::ReadOnly) ? sample.readAll() : QByteArray());
    }
}

// Writes a game of these planets and reports (file name -> lines) and loads it.
inline QString loadGame(GameData &data, const QList<MapPlanet> &map, const QMap<QString, QList<QByteArray>> &reports,
                        const QString &year = {}, const QMap<int, QString> &reportYears = {},
                        GenerationObserver *observer = nullptr)
{
    TestGame game;
    game.writeMap(map);
    for (auto it = reports.begin(); it != reports.end(); ++it)
        game.writeReport(it.key(), it.value());
    return game.load(data, year, reportYears, observer);
}
