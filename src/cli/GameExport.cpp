#include "GameExport.h"

#include "IndentedJsonWriter.h"

#include <QLocale>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <numeric>

namespace {

void writeValue(IndentedJsonWriter &json, const Value &v)
{
    switch (v.kind()) {
    case Value::Kind::Empty: return json.null();
    case Value::Kind::Text: return json.string(v.rawText());
    case Value::Kind::Number: return json.number(v.rawNumber());
    }
}

// Field numbers in the order of their names, the order of a JSON object's keys.
template <size_t Count>
std::array<int, Count> fieldsByName(const char *(*name)(int))
{
    std::array<int, Count> order;
    std::iota(order.begin(), order.end(), 1);
    std::sort(order.begin(), order.end(), [name](int a, int b) { return std::strcmp(name(a), name(b)) < 0; });
    return order;
}

// One planet row or race column as an object keyed by field name.
template <typename Row, size_t Count>
void writeRow(IndentedJsonWriter &json, const Row &row, const std::array<int, Count> &order,
              const char *(*name)(int))
{
    json.beginObject();
    for (int f : order) {
        json.key(QLatin1StringView(name(f)));
        writeValue(json, row[f]);
    }
    json.endObject();
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

// The grid as JSON text, one column per line.
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
            appendInteger(out, owners ? grid.owner(gx, gy) : grid.strength(gx, gy));
        }
        out += ']';
    }
    out += "\n]";
}

} // namespace

QByteArray exportJson(const GameData &d, bool withGrid)
{
    static const auto planetOrder = fieldsByName<PlanetFieldCount>(planetFieldName);
    static const auto playerOrder = fieldsByName<PlayerFieldCount>(playerFieldName);

    QByteArray out;
    IndentedJsonWriter json(out);
    json.beginObject();
    json.key(QLatin1StringView("AnnotationFilePath"));
    json.string(d.AnnotationFilePath);
    json.key(QLatin1StringView("AnnotationText"));
    json.string(d.AnnotationText);
    json.key(QLatin1StringView("FarX"));
    json.integer(d.FarX);
    json.key(QLatin1StringView("FarY"));
    json.integer(d.FarY);
    json.key(QLatin1StringView("GameDir"));
    json.string(d.GameDir);
    json.key(QLatin1StringView("GameYear"));
    json.integer(d.GameYear);
    json.key(QLatin1StringView("GridSize"));
    json.integer(d.GridSize);
    json.key(QLatin1StringView("GridStep"));
    json.number(d.GridStep);
    json.key(QLatin1StringView("MapFilePath"));
    json.string(d.MapFilePath);
    json.key(QLatin1StringView("OriginX"));
    json.integer(d.OriginX);
    json.key(QLatin1StringView("OriginY"));
    json.integer(d.OriginY);
    json.key(QLatin1StringView("OwnRace"));
    json.integer(d.OwnRace);
    json.key(QLatin1StringView("OwnRaceName"));
    json.string(d.OwnRaceName);
    json.key(QLatin1StringView("PlanetCount"));
    json.integer(d.PlanetCount);
    json.key(QLatin1StringView("Planets"));
    json.beginArray();
    for (const PlanetInfo &p : d.Planets)
        writeRow(json, p, planetOrder, planetFieldName);
    json.endArray();
    json.key(QLatin1StringView("PlayerCount"));
    json.integer(d.PlayerCount);
    json.key(QLatin1StringView("Players"));
    json.beginArray();
    for (int k = 1; k <= d.PlayerCount; ++k)
        writeRow(json, d.player(k), playerOrder, playerFieldName);
    json.endArray();
    json.key(QLatin1StringView("ReportFormat"));
    json.integer(d.ReportFormat);
    json.key(QLatin1StringView("Scale"));
    json.number(d.Scale);
    json.key(QLatin1StringView("UniverseExtent"));
    json.integer(d.UniverseExtent);
    json.endObject();

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
