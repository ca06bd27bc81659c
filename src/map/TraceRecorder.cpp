#include "TraceRecorder.h"

#include <QIODevice>
#include <charconv>
#include <cstdio>

namespace {

// One trace line, built key by key in the order the keys are added.
class JsonLine {
public:
    explicit JsonLine(const char *op)
    {
        m_text.reserve(128);
        m_text += "{\"op\":\"";
        m_text += op;
        m_text += '"';
    }

    // The shortest decimal text that reads back as the same value.
    template <typename Real> JsonLine &number(const char *name, Real value)
    {
        key(name);
        char buffer[32];
        const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
        m_text.append(buffer, result.ptr - buffer);
        return *this;
    }

    JsonLine &integer(const char *name, int64_t value)
    {
        key(name);
        m_text += QByteArray::number(value);
        return *this;
    }

    JsonLine &colour(const char *name, std::optional<int32_t> value)
    {
        if (value)
            return integer(name, *value);
        key(name);
        m_text += "null";
        return *this;
    }

    JsonLine &text(const char *name, const QString &value)
    {
        key(name);
        m_text += '"';
        for (const char c : value.toUtf8()) {
            switch (c) {
            case '"': m_text += "\\\""; break;
            case '\\': m_text += "\\\\"; break;
            case '\n': m_text += "\\n"; break;
            case '\r': m_text += "\\r"; break;
            case '\t': m_text += "\\t"; break;
            default:
                if (static_cast<unsigned char>(c) < 0x20) {
                    char escape[8];
                    std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned char>(c));
                    m_text += escape;
                } else {
                    m_text += c;
                }
            }
        }
        m_text += '"';
        return *this;
    }

    QByteArray finish()
    {
        m_text += "}\n";
        return m_text;
    }

private:
    void key(const char *name)
    {
        m_text += ",\"";
        m_text += name;
        m_text += "\":";
    }

    QByteArray m_text;
};

} // namespace

TraceRecorder::TraceRecorder(QIODevice &out) : m_write([&out](const QByteArray &line) { out.write(line); }) {}

TraceRecorder::TraceRecorder(QByteArray &out) : m_write([&out](const QByteArray &line) { out += line; }) {}

void TraceRecorder::cls()
{
    m_write(JsonLine("Cls").finish());
}

void TraceRecorder::circle(const DrawingState &s, float x, float y, float r, std::optional<int32_t> colour,
                           std::optional<std::pair<float, float>> arc)
{
    JsonLine line("Circle");
    line.number("x", x)
        .number("y", y)
        .number("r", r)
        .colour("color", colour)
        .integer("DrawMode", s.DrawMode)
        .integer("DrawStyle", s.DrawStyle)
        .integer("DrawWidth", s.DrawWidth)
        .integer("FillStyle", s.FillStyle)
        .integer("FillColor", s.FillColor);
    if (arc)
        line.number("start", arc->first).number("end", arc->second);
    m_write(line.finish());
}

void TraceRecorder::line(const DrawingState &s, float x1, float y1, float x2, float y2, int32_t colour)
{
    m_write(JsonLine("Line")
                .number("x1", x1)
                .number("y1", y1)
                .number("x2", x2)
                .number("y2", y2)
                .integer("color", colour)
                .integer("DrawMode", s.DrawMode)
                .integer("DrawStyle", s.DrawStyle)
                .integer("DrawWidth", s.DrawWidth)
                .finish());
}

void TraceRecorder::pset(const DrawingState &s, float x, float y, int32_t colour)
{
    m_write(JsonLine("PSet")
                .number("x", x)
                .number("y", y)
                .integer("color", colour)
                .integer("DrawMode", s.DrawMode)
                .integer("DrawWidth", s.DrawWidth)
                .finish());
}

void TraceRecorder::print(const DrawingState &s, const QString &text)
{
    m_write(JsonLine("Print")
                .number("x", s.CurrentX)
                .number("y", s.CurrentY)
                .text("text", text)
                .integer("color", s.ForeColor)
                .number("FontSize", s.FontSize)
                .finish());
}
