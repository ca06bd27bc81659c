#include "GameExport.h"

#include "IndentedJsonWriter.h"

#include <QStringEncoder>
#include <algorithm>
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

bool needsQuotes(QStringView text)
{
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return c == u',' || c == u'"' || c == u'\n' || c == u'\r'; });
}

// UTF-8 straight into the table, without a byte array per cell.
void appendUtf8(QByteArray &out, QStringView text, QStringEncoder &utf8)
{
    const qsizetype at = out.size();
    out.resize(at + utf8.requiredSpace(text.size()));
    const char *end = utf8.appendToBuffer(out.data() + at, text);
    out.resize(end - out.constData());
}

// RFC 4180: a cell with a comma, a quote or a line end is quoted, its
// quotes doubled.
void appendCsvCell(QByteArray &out, const Value &v, QStringEncoder &utf8)
{
    if (v.isNumber())
        return appendShortestNumber(out, v.rawNumber());
    if (!v.isText())
        return;
    const QString &text = v.rawText();
    if (!needsQuotes(text))
        return appendUtf8(out, text, utf8);
    out += '"';
    appendUtf8(out, QString(text).replace(u'"', QStringLiteral("\"\"")), utf8);
    out += '"';
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
    QStringEncoder utf8(QStringEncoder::Utf8, QStringConverter::Flag::Stateless);
    for (const PlanetInfo &p : d.Planets) {
        for (int f = 1; f <= PlanetFieldCount; ++f) {
            if (f > 1)
                out += ',';
            appendCsvCell(out, p[f], utf8);
        }
        out += "\r\n";
    }
    return out;
}
