#pragma once
// The planet reports the game exports per player: a header line, then one
// line per planet the player knows, fields separated by single tabs.

#include "TextReader.h"
#include "Value.h"

#include <array>
#include <stdexcept>

constexpr int ReportFieldCount = 37;

// Fields 1..37 of one report line.
class ReportFields {
public:
    Value &operator[](int field) { return m_fields[size_t(field - 1)]; }
    const Value &operator[](int field) const { return m_fields[size_t(field - 1)]; }

private:
    std::array<Value, ReportFieldCount> m_fields;
};

// A report line with more fields than the report layout has.
struct TooManyFieldsError : std::runtime_error {
    TooManyFieldsError() : std::runtime_error("Subscript out of range: the line has more than 37 fields") {}
};

// Splits a report line. A line ending in "%" gains nine "0" fields; the text
// after the last tab is not a field; empty fields become "Unknown", except
// field 2 (""), field 3 ("None"), field 5 ("Uninhabited") and fields above
// 30 (the number 0). Fields after the last tab stay empty.
ReportFields splitReportLine(const QString &line);

// First pass: the number of planet lines (header skipped with an item read).
// A report lists each planet of the universe at most once, so a report of
// more than MaxPlanets lines is refused (LoadError at the first line beyond).
int countReportLines(const QString &path);

// Second pass: the planet lines of one report, the own race's report by
// line reads, every other report by text item reads (so a comma cuts a line
// and the rest is read as the next item).
class ReportReader {
public:
    ReportReader(const QString &path, bool ownReport);
    // The next planet line; the load error "Input past end of file" when
    // the file holds fewer than were counted.
    QString next();
    // The line on which the last planet line started.
    int lastLine() const { return m_lastLine; }
    [[noreturn]] void fail(const QString &fault) const { m_reader.fail(fault, m_lastLine); }

private:
    TextReader m_reader;
    bool m_ownReport;
    int m_lastLine = 0;
};
