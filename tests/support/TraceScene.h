#pragma once
// Small hand-made games for drawing on a recording canvas, and its trace.

#include "GameData.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

// A universe 1000 light years wide in the full view (Scale 10), its grid of 4 by 4 cells empty.
inline GameData smallGame()
{
    GameData d;
    d.UniverseExtent = 2000;
    d.ReportFormat = 30;
    d.GridSize = 4;
    d.GridStep = 250;
    d.Grid.resize(4);
    d.setFullView();
    return d;
}

// Zooms to the window from (250, 250) to (750, 750), Scale 20.
inline void zoomToCentre(GameData &d)
{
    d.OriginX = d.OriginY = 250;
    d.FarX = d.FarY = 750;
    d.Scale = 20;
}

// A planet at (x, y) with these fields; without an age text no report ever listed it.
inline PlanetInfo &addPlanet(GameData &d, int x, int y, const QString &age = {},
                             std::initializer_list<std::pair<int, Value>> fields = {})
{
    d.Planets.emplace_back();
    d.PlanetCount = int32_t(d.Planets.size());
    PlanetInfo &p = d.Planets.back();
    p[X] = Value(x);
    p[Y] = Value(y);
    if (!age.isEmpty())
        p[AgeText] = Value(age);
    for (const auto &[field, value] : fields)
        p[field] = value;
    return p;
}

// The 0x00BBGGRR colour numbers the trace writes.
inline int colour(int r, int g, int b) { return r + 256 * g + 65536 * b; }

inline QList<QJsonObject> traceOps(const QByteArray &trace, const char *op = nullptr)
{
    QList<QJsonObject> out;
    for (const QByteArray &line : trace.split('\n')) {
        const QJsonObject o = QJsonDocument::fromJson(line).object();
        if (!o.isEmpty() && (!op || o[u"op"].toString() == QLatin1String(op)))
            out << o;
    }
    return out;
}

// QCOMPARE(traceJson(ops, want), traceJson(want)) checks the count, the order
// and the fields `want` names, and shows both sides.
inline QByteArray traceJson(const QList<QJsonObject> &ops, const QList<QJsonObject> &only = {})
{
    QJsonArray out;
    for (qsizetype i = 0; i < ops.size(); ++i) {
        QJsonObject picked = ops[i];
        if (!only.isEmpty()) {
            picked = {};
            for (const QString &key : i < only.size() ? only[i].keys() : QStringList())
                picked[key] = ops[i][key];
        }
        out << picked;
    }
    return QJsonDocument(out).toJson(QJsonDocument::Compact);
}
