#include "GameExport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>

namespace {

QJsonValue toJson(const Value &v)
{
    switch (v.kind()) {
    case Value::Kind::Empty: return QJsonValue(QJsonValue::Null);
    case Value::Kind::Text: return QJsonValue(v.rawText());
    case Value::Kind::Number: return QJsonValue(v.rawNumber());
    }
    return QJsonValue();
}

// Whole numbers without a decimal point, others as the shortest text that
// reads back as the same double.
QByteArray numberText(double x)
{
    if (std::isfinite(x) && x == std::floor(x) && std::fabs(x) <= 9007199254740992.0)
        return QByteArray::number(static_cast<qint64>(x));
    return QByteArray::number(x, 'g', QLocale::FloatingPointShortest);
}

QByteArray csvCell(const Value &v)
{
    if (v.isNumber())
        return numberText(v.rawNumber());
    QByteArray text = v.text().toUtf8();
    if (text.contains(',') || text.contains('"') || text.contains('\n') || text.contains('\r'))
        text = '"' + text.replace("\"", "\"\"") + '"';
    return text;
}

// The grid as JSON text, one column per line: written directly, because
// a QJsonArray of 400,000 values costs tens of megabytes.
void appendGrid(QByteArray &out, const char *key, const TerritoryGrid &grid, bool owners)
{
    out += ",\n\"";
    out += key;
    out += "\": [";
    for (int gx = 0; gx <= grid.gridSize(); ++gx) {
        out += gx == 0 ? "\n[" : ",\n[";
        for (int gy = 0; gy <= grid.gridSize(); ++gy) {
            if (gy > 0)
                out += ',';
            out += QByteArray::number(owners ? grid.owner(gx, gy) : grid.strength(gx, gy));
        }
        out += ']';
    }
    out += "\n]";
}

} // namespace

QByteArray exportJson(const GameData &d, bool withGrid)
{
    QJsonObject o;
    o.insert(u"MapFilePath", d.MapFilePath);
    o.insert(u"GameDir", d.GameDir);
    o.insert(u"AnnotationFilePath", d.AnnotationFilePath);
    o.insert(u"OwnRaceName", d.OwnRaceName);
    o.insert(u"AnnotationText", d.AnnotationText);
    o.insert(u"ReportFormat", d.ReportFormat);
    o.insert(u"OwnRace", d.OwnRace);
    o.insert(u"GameYear", d.GameYear);
    o.insert(u"PlanetCount", d.PlanetCount);
    o.insert(u"UniverseExtent", d.UniverseExtent);
    o.insert(u"PlayerCount", d.PlayerCount);
    o.insert(u"GridSize", d.GridSize);
    o.insert(u"OriginX", d.OriginX);
    o.insert(u"OriginY", d.OriginY);
    o.insert(u"FarX", d.FarX);
    o.insert(u"FarY", d.FarY);
    o.insert(u"GridStep", d.GridStep);
    o.insert(u"Scale", d.Scale);

    QJsonArray planets;
    for (const PlanetInfo &p : d.Planets) {
        QJsonObject planet;
        for (int f = 1; f <= PlanetFieldCount; ++f)
            planet.insert(QLatin1String(planetFieldName(f)), toJson(p[f]));
        planets.append(planet);
    }
    o.insert(u"Planets", planets);

    QJsonArray players;
    for (int k = 1; k <= d.PlayerCount; ++k) {
        QJsonObject player;
        for (int f = 1; f <= PlayerFieldCount; ++f)
            player.insert(QLatin1String(playerFieldName(f)), toJson(d.player(k)[f]));
        players.append(player);
    }
    o.insert(u"Players", players);

    QByteArray out = QJsonDocument(o).toJson(QJsonDocument::Indented);
    if (withGrid) {
        out.chop(2); // "}\n"
        appendGrid(out, "GridOwner", d.Grid, true);
        appendGrid(out, "GridStrength", d.Grid, false);
        out += "\n}\n";
    }
    return out;
}

QByteArray exportCsv(const GameData &d)
{
    QByteArray out;
    for (int f = 1; f <= PlanetFieldCount; ++f) {
        if (f > 1)
            out += ',';
        out += planetFieldName(f);
    }
    out += "\r\n";
    for (const PlanetInfo &p : d.Planets) {
        for (int f = 1; f <= PlanetFieldCount; ++f) {
            if (f > 1)
                out += ',';
            out += csvCell(p[f]);
        }
        out += "\r\n";
    }
    return out;
}
