#include "IndentedJsonWriter.h"

#include "Conversions.h"

#include <QChar>
#include <QLocale>
#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

char hexDigit(unsigned u)
{
    return char(u < 10 ? '0' + u : 'a' + u - 10);
}

char *escapeUnit(char *cursor, char16_t u)
{
    *cursor++ = '\\';
    *cursor++ = 'u';
    for (int shift = 12; shift >= 0; shift -= 4)
        *cursor++ = hexDigit((u >> shift) & 0xF);
    return cursor;
}

// The two-character escape of an ASCII character, 0 when it has none.
char shortEscape(char16_t u)
{
    switch (u) {
    case u'"': return '"';
    case u'\\': return '\\';
    case u'\b': return 'b';
    case u'\f': return 'f';
    case u'\n': return 'n';
    case u'\r': return 'r';
    case u'\t': return 't';
    default: return 0;
    }
}

} // namespace

void appendJsonString(QByteArray &out, QStringView text)
{
    // Room for the worst case, six bytes (\uXXXX) per UTF-16 unit, then
    // cut back: one resize instead of an append per character.
    const qsizetype start = out.size();
    out.resize(start + 2 + 6 * text.size());
    char *cursor = out.data() + start;
    *cursor++ = '"';
    const char16_t *src = text.utf16();
    const char16_t *const end = src + text.size();
    while (src != end) {
        const char16_t u = *src++;
        if (u < 0x80) {
            if (u >= 0x20 && u != u'"' && u != u'\\') {
                *cursor++ = char(u);
            } else if (const char e = shortEscape(u)) {
                *cursor++ = '\\';
                *cursor++ = e;
            } else {
                cursor = escapeUnit(cursor, u);
            }
        } else if (u < 0x800) {
            *cursor++ = char(0xC0 | (u >> 6));
            *cursor++ = char(0x80 | (u & 0x3F));
        } else if (!QChar::isSurrogate(u)) {
            *cursor++ = char(0xE0 | (u >> 12));
            *cursor++ = char(0x80 | ((u >> 6) & 0x3F));
            *cursor++ = char(0x80 | (u & 0x3F));
        } else if (QChar::isHighSurrogate(u) && src != end && QChar::isLowSurrogate(*src)) {
            const char32_t c = QChar::surrogateToUcs4(u, *src++);
            *cursor++ = char(0xF0 | (c >> 18));
            *cursor++ = char(0x80 | ((c >> 12) & 0x3F));
            *cursor++ = char(0x80 | ((c >> 6) & 0x3F));
            *cursor++ = char(0x80 | (c & 0x3F));
        } else {
            // A lone surrogate is no UTF-8: written as its escape.
            cursor = escapeUnit(cursor, u);
        }
    }
    *cursor++ = '"';
    out.resize(cursor - out.constData());
}

void appendInteger(QByteArray &out, qint64 n)
{
    char digits[24];
    const auto result = std::to_chars(digits, digits + sizeof digits, n);
    out.append(digits, result.ptr - digits);
}

void appendShortestNumber(QByteArray &out, double x)
{
    // Whole numbers, nearly all of an export, without a string between.
    if (conv::isWhole(x) && std::fabs(x) < 9e18)
        return appendInteger(out, qint64(x));
    out += conv::shortestText(x).toLatin1();
}

void IndentedJsonWriter::indent(qsizetype depth)
{
    m_out.append(4 * depth, ' ');
}

char *IndentedJsonWriter::startItem(Level &level, qsizetype extra)
{
    // The separator, the indentation and what follows in one resize: most
    // items are a handful of bytes, and per-append overhead would dominate.
    const bool first = level.items++ == 0;
    const qsizetype width = 4 * qsizetype(m_levels.size());
    const qsizetype at = m_out.size();
    m_out.resize(at + 2 + width + extra);
    char *cursor = m_out.data() + at;
    if (!first) {
        *cursor++ = ',';
        *cursor++ = '\n';
    }
    return std::fill_n(cursor, width, ' ');
}

void IndentedJsonWriter::beginValue()
{
    if (m_afterKey) {
        m_afterKey = false;
        return;
    }
    if (m_levels.empty())
        return;
    Q_ASSERT(!m_levels.back().object);
    m_out.resize(startItem(m_levels.back(), 0) - m_out.constData());
}

void IndentedJsonWriter::key(QLatin1StringView name)
{
    Q_ASSERT(!m_levels.empty() && m_levels.back().object && !m_afterKey);
    char *cursor = startItem(m_levels.back(), name.size() + 4);
    *cursor++ = '"';
    cursor = std::copy(name.begin(), name.end(), cursor); // plain ASCII names: nothing to escape
    *cursor++ = '"';
    *cursor++ = ':';
    *cursor++ = ' ';
    m_out.resize(cursor - m_out.constData());
    m_afterKey = true;
}

void IndentedJsonWriter::beginContainer(bool object, char open)
{
    beginValue();
    m_out += open;
    m_out += '\n';
    m_levels.push_back({object, 0});
}

void IndentedJsonWriter::endContainer(char close)
{
    Q_ASSERT(!m_levels.empty() && !m_afterKey);
    if (m_levels.back().items > 0)
        m_out += '\n';
    m_levels.pop_back();
    indent(qsizetype(m_levels.size()));
    m_out += close;
    if (m_levels.empty())
        m_out += '\n';
}

void IndentedJsonWriter::beginObject() { beginContainer(true, '{'); }
void IndentedJsonWriter::endObject() { endContainer('}'); }
void IndentedJsonWriter::beginArray() { beginContainer(false, '['); }
void IndentedJsonWriter::endArray() { endContainer(']'); }

void IndentedJsonWriter::string(QStringView text)
{
    beginValue();
    appendJsonString(m_out, text);
}

void IndentedJsonWriter::number(double x)
{
    if (!std::isfinite(x))
        return null();
    beginValue();
    appendShortestNumber(m_out, x);
}

void IndentedJsonWriter::integer(qint64 n)
{
    beginValue();
    appendInteger(m_out, n);
}

void IndentedJsonWriter::null()
{
    beginValue();
    m_out += "null";
}
