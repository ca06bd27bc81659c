#pragma once
// The universe map file: a header line, then one record per planet of
// number, X, Y and name, read as free-format items.

#include <QString>
#include <cstdint>
#include <vector>

struct MapRecord {
    int16_t number = 0;
    int32_t x = 0;
    int32_t y = 0;
    QString name;
    int line = 0; // where the record starts in the file
};

struct MapCount {
    int32_t records = 0;
    int32_t lastX = 0;
    int lastLine = 0; // with no records, the line after the header
};

// First pass: the number of records and the X of the last one; LoadError
// at a record beyond MaxPlanets.
MapCount countMapRecords(const QString &path);
// Second pass: exactly `count` records.
std::vector<MapRecord> readMapRecords(const QString &path, int32_t count);
