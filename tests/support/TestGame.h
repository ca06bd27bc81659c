#pragma once
// A small game written into a temporary folder (a universe map, report
// files, anything else a test needs) and loaded the way the selection
// window and the generation load it.

#include "FileSelection.h"
#include "LoadError.h"
#include "UniverseGenerator.h"

#include <QFile>
#include <QMap>
#include <QTemporaryDir>
#include <algorithm>

struct MapPlanet {
    QString name;
    int x;
    int y;
};

// A report line from fields 1..n, with a tab after the last so it is read too.
inline QByteArray reportLine(const QStringList &fields)
{
    return fields.join(u'\t').toLatin1() + '\t';
}

// A report line with fields 1..5 and any further fields by number; fields
// in between are left empty.
inline QByteArray planetLine(const QString &name, const QString &owner, const QString &starbase,
                             const QString &age, const QString &population, const QMap<int, QString> &more = {})
{
    QStringList f{name, owner, starbase, age, population};
    while (!more.isEmpty() && f.size() < more.lastKey())
        f << QString();
    for (auto it = more.begin(); it != more.end(); ++it)
        f[it.key() - 1] = it.value();
    return reportLine(f);
}

// The own race's home: its resources make "Humans" the own race's name.
inline QByteArray homeLine(const QString &name = QStringLiteral("Home"))
{
    return planetLine(name, QStringLiteral("Humans"), QStringLiteral("None"), QStringLiteral("0"),
                      QStringLiteral("100000"), {{20, QStringLiteral("50")}});
}

// What the user picks in the selection window besides the map file.
struct GameChoice {
    GameChoice(const QString &year = {}, const QMap<int, QString> &reportYears = {})
        : year(year), reportYears(reportYears) {}
    QString year;
    QMap<int, QString> reportYears;
};

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
        int number = 0;
        for (const MapPlanet &p : planets)
            bytes += QByteArray::number(++number) + '\t' + QByteArray::number(p.x) + '\t'
                + QByteArray::number(p.y) + '\t' + p.name.toLatin1() + "\r\n";
        write(name, bytes);
    }

    void writeReport(const QString &name, const QList<QByteArray> &lines) const
    {
        QByteArray bytes = "Planet Name\tOwner\tStarbase\tReport Age\tPopulation\r\n";
        for (const QByteArray &line : lines)
            bytes += line + "\r\n";
        write(name, bytes);
    }

    // Selects game.map, applies the choice and generates. Empty on success,
    // else the selection's message or the load error.
    QString load(GameData &data, const GameChoice &choice = {}) const
    {
        FileSelection selection(data);
        QString message = selection.clickMapFile(dir(), QStringLiteral("game.map"));
        if (!message.isEmpty())
            return message;
        selection.gameYearText = choice.year;
        for (auto it = choice.reportYears.begin(); it != choice.reportYears.end(); ++it)
            selection.row(it.key()).yearText = it.value();
        message = selection.confirm();
        if (!message.isEmpty())
            return message;
        GenerationObserver silent;
        try {
            generateUniverse(data, silent);
        } catch (const LoadError &e) {
            return e.message();
        }
        return QString();
    }

private:
    QTemporaryDir m_dir;
};

// Index of the planet row of that name (1-based), 0 when there is none.
inline int rowOf(const GameData &data, const QString &name)
{
    for (int i = 1; i <= data.PlanetCount; ++i)
        if (data.planet(i)[Name].text() == name)
            return i;
    return 0;
}
