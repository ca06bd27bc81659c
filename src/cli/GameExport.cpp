#include "GameExport.h"

#include "IndentedJsonWriter.h"

#include <QStringEncoder>
#include <algorithm>
#include <cstring>
#include <numeric>

namespace {

// Hands the text built so far to the device and empties it, keeping its
// buffer for the next chunk.
void writeText(QByteArray &text, QIODevice &out)
{
    out.write(text);
    text.resize(0);
}

// The same once the text has grown to a chunk.
void writeChunk(QByteArray &text, QIODevice &out)
{
    constexpr qsizetype ChunkSize = 64 * 1024;
    if (text.size() >= ChunkSize)
        writeText(text, out);
}

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
void writeGrid(QByteArray &text, QIODevice &out, const char *key, const TerritoryGrid &grid, bool owners)
{
    text += ",\n\"";
    text += key;
    text += "\": [";
    for (int gx = 0; gx <= grid.gridSize(); ++gx) {
        text += gx == 0 ? "\n[" : ",\n[";
        for (int gy = 0; gy <= grid.gridSize(); ++gy) {
            if (gy > 0)
                text += ',';
            appendInteger(text, owners ? grid.owner(gx, gy) : grid.strength(gx, gy));
        }
        text += ']';
        writeChunk(text, out);
    }
    text += "\n]";
}

} // namespace

void exportJson(const GameData &d, bool withGrid, QIODevice &out)
{
    static const auto planetOrder = fieldsByName<PlanetFieldCount>(planetFieldName);
    static const auto playerOrder = fieldsByName<PlayerFieldCount>(playerFieldName);

    QByteArray text;
    IndentedJsonWriter json(text);
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
    for (const PlanetInfo &p : d.Planets) {
        writeRow(json, p, planetOrder, planetFieldName);
        writeChunk(text, out);
    }
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
        // The grids follow the other members, one grid column a line.
        text.chop(2); // "}\n"
        writeGrid(text, out, "GridOwner", d.Grid, true);
        writeGrid(text, out, "GridStrength", d.Grid, false);
        text += "\n}\n";
    }
    writeText(text, out);
}

void exportCsv(const GameData &d, QIODevice &out)
{
    QByteArray text;
    for (int f = 1; f <= PlanetFieldCount; ++f) {
        if (f > 1)
            text += ',';
        text += planetFieldName(f);
    }
    text += "\r\n";
    QStringEncoder utf8(QStringEncoder::Utf8, QStringConverter::Flag::Stateless);
    for (const PlanetInfo &p : d.Planets) {
        for (int f = 1; f <= PlanetFieldCount; ++f) {
            if (f > 1)
                text += ',';
            appendCsvCell(text, p[f], utf8);
        }
        text += "\r\n";
        writeChunk(text, out);
    }
    writeText(text, out);
}
