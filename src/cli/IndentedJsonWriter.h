#pragma once
// Writes JSON text straight into a byte array, byte for byte as
// QJsonDocument::toJson(QJsonDocument::Indented) writes the same document.
// A game export holds some 35,000 values; building them as a QJsonObject
// tree first costs an allocation per value and a second pass to write it,
// which a one-shot command line pays for on every run.
//
// Objects must be given their keys in ascending order, the order in which
// QJsonObject keeps (and so writes) them.

#include <QByteArray>
#include <QLatin1StringView>
#include <QStringView>
#include <vector>

class IndentedJsonWriter {
public:
    explicit IndentedJsonWriter(QByteArray &out) : m_out(out) {}

    void beginObject();
    void endObject();
    void beginArray();
    void endArray();
    // The next member's key; its value follows.
    void key(QLatin1StringView name);

    void string(QStringView text);
    // Whole numbers with all their digits and no decimal point, others as
    // the shortest text that reads back as the same double, infinities and
    // NaN as null. Up to 2^53 this is what QJsonDocument writes; beyond it
    // Qt writes an exponent, which the export's format does not allow.
    void number(double x);
    void integer(qint64 n);
    void null();

private:
    struct Level {
        bool object;
        int items = 0;
    };
    void beginValue();
    // Writes the separator and indentation of the level's next item, with
    // room for `extra` bytes after them; returns where those go.
    char *startItem(Level &level, qsizetype extra);
    void beginContainer(bool object, char open);
    void endContainer(char close);
    void indent(qsizetype depth);

    QByteArray &m_out;
    std::vector<Level> m_levels;
    bool m_afterKey = false;
};

// Appends `text` as a JSON string literal with QJsonDocument's escapes.
void appendJsonString(QByteArray &out, QStringView text);
// Appends the decimal digits of `n`, without a temporary byte array.
void appendInteger(QByteArray &out, qint64 n);
// Appends a double as QJsonDocument writes a finite one: whole numbers up to
// 2^53 without a decimal point, others as the shortest text that reads back
// as the same double ("inf" and "nan" for the others).
void appendShortestNumber(QByteArray &out, double x);
