#pragma once
// The annotation file beside a game's map: one record a line, fields
// separated by commas. "L,x1,y1,x2,y2,colour" a line, "C,x,y,radius,colour"
// a circle, "T,x,y,text,size" a text, in universe light years.

#include "TextReader.h"

#include <QString>
#include <cstdint>
#include <optional>

struct AnnotationRecord {
    enum class Kind { Line, Circle, Text };
    Kind kind = Kind::Line;
    int32_t x1 = 0, y1 = 0, x2 = 0, y2 = 0; // a circle keeps its radius in x2
    int16_t colour = 0;                     // lines and circles
    QString text;                           // texts
    int16_t size = 0;                       // texts

    int32_t radius() const { return x2; }
    // The record as the loader writes it back, CR LF included.
    QString canonical() const;
};

// Reads records one at a time; fields of unknown kinds are skipped one by one.
class AnnotationReader {
public:
    explicit AnnotationReader(const QString &path) : m_reader(path) {}
    // The next record, or nothing at the end of the file. LoadError for a
    // record cut short by the end of the file or a number out of range.
    std::optional<AnnotationRecord> next();

private:
    int32_t readInt32();
    int16_t readInt16();
    TextReader m_reader;
};

struct LoadedAnnotations {
    QString text;
    std::optional<int16_t> lastColour; // colour of the last line or circle, if any
};

// The annotation text rebuilt from the file at `path` (found without regard
// to case); empty text when there is no such file.
LoadedAnnotations loadAnnotations(const QString &path);

// The seven annotation colours, index 1..7: white, red, green, blue,
// yellow, cyan, magenta. An index outside 1..7 is an error.
int32_t drawColour(int index);
