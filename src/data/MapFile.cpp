#include "MapFile.h"

#include "Conversions.h"
#include "GameData.h"
#include "TextReader.h"

namespace {

MapRecord readRecord(TextReader &reader)
{
    MapRecord r;
    r.line = reader.line();
    try {
        r.number = conv::toInt16(reader.readNumberItem());
        r.x = conv::toInt32(reader.readNumberItem());
        r.y = conv::toInt32(reader.readNumberItem());
    } catch (const conv::OverflowError &) {
        reader.fail(QStringLiteral("Overflow: a planet number or coordinate is too large"), r.line);
    }
    r.name = reader.readTextItem();
    return r;
}

} // namespace

MapCount countMapRecords(const QString &path)
{
    TextReader reader(path);
    reader.readTextItem();
    MapCount count;
    count.lastLine = reader.line();
    while (!reader.atEnd()) {
        if (count.records == MaxPlanets)
            reader.fail(QStringLiteral("the map lists more than %1 planets, more than any universe of the game")
                            .arg(MaxPlanets), reader.line());
        const MapRecord r = readRecord(reader);
        ++count.records;
        count.lastX = r.x;
        count.lastLine = r.line;
    }
    return count;
}

std::vector<MapRecord> readMapRecords(const QString &path, int32_t count)
{
    TextReader reader(path);
    reader.readTextItem();
    std::vector<MapRecord> records;
    records.reserve(size_t(count));
    for (int32_t i = 0; i < count; ++i)
        records.push_back(readRecord(reader));
    return records;
}
