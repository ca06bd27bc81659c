#include "Conversions.h"

#include <QLocale>

#include <QVarLengthArray>
#include <clocale>
#include <cstdlib>
#include <locale.h>
#include <cmath>
#include <limits>

namespace conv {

namespace {

bool isDigit(QChar c) { return c >= u'0' && c <= u'9'; }

// Length of the decimal number at the start of `s` (sign, digits, point,
// E or D exponent), or 0 when no digit is found.
qsizetype numberPrefix(QStringView s)
{
    qsizetype i = 0;
    const qsizetype n = s.size();
    if (i < n && (s[i] == u'+' || s[i] == u'-'))
        ++i;
    qsizetype digits = 0;
    while (i < n && isDigit(s[i])) { ++i; ++digits; }
    if (i < n && s[i] == u'.') {
        ++i;
        while (i < n && isDigit(s[i])) { ++i; ++digits; }
    }
    if (digits == 0)
        return 0;
    if (i < n && (s[i] == u'e' || s[i] == u'E' || s[i] == u'd' || s[i] == u'D')) {
        qsizetype j = i + 1;
        if (j < n && (s[j] == u'+' || s[j] == u'-'))
            ++j;
        qsizetype expDigits = 0;
        while (j < n && isDigit(s[j])) { ++j; ++expDigits; }
        if (expDigits > 0)
            i = j;
    }
    return i;
}

// The files' numbers always use "." whatever the user's locale (which Qt
// hands to the C library), so they are read in the C locale.
double parsePrefix(QStringView s, qsizetype len)
{
    static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", locale_t(nullptr));
    // The prefix is ASCII by construction. Copied on the stack: a load
    // converts some ten thousand numbers, each a heap allocation otherwise.
    QVarLengthArray<char, 64> bytes(len + 1);
    for (qsizetype i = 0; i < len; ++i) {
        const char c = char(s[i].unicode());
        bytes[i] = (c == 'd' || c == 'D') ? 'e' : c;
    }
    bytes[len] = '\0';
    return strtod_l(bytes.constData(), nullptr, cLocale);
}

qsizetype skipBlanks(QStringView s, qsizetype i)
{
    while (i < s.size() && (s[i] == u' ' || s[i] == u'\t'))
        ++i;
    return i;
}

} // namespace

double val(QStringView text)
{
    const qsizetype start = skipBlanks(text, 0);
    const QStringView rest = text.mid(start);
    const qsizetype len = numberPrefix(rest);
    return len == 0 ? 0.0 : parsePrefix(rest, len);
}

std::optional<double> wholeNumber(QStringView text)
{
    const qsizetype start = skipBlanks(text, 0);
    if (start == text.size())
        return 0.0;
    const QStringView rest = text.mid(start);
    const qsizetype len = numberPrefix(rest);
    if (len == 0 || skipBlanks(rest, len) != rest.size())
        return std::nullopt;
    return parsePrefix(rest, len);
}

double roundHalfEven(double x)
{
    return std::nearbyint(x); // the default rounding mode is to nearest, ties to even
}

int16_t toInt16(double x)
{
    const double r = roundHalfEven(x);
    if (!(r >= -32768.0 && r <= 32767.0))
        throw OverflowError();
    return static_cast<int16_t>(r);
}

int32_t toInt32(double x)
{
    const double r = roundHalfEven(x);
    if (!(r >= -2147483648.0 && r <= 2147483647.0))
        throw OverflowError();
    return static_cast<int32_t>(r);
}

int32_t floorInt32(double x)
{
    const double r = std::floor(x);
    if (!(r >= -2147483648.0 && r <= 2147483647.0))
        throw OverflowError();
    return static_cast<int32_t>(r);
}

int32_t intDiv(int32_t a, int32_t b)
{
    if (b == 0)
        throw DivisionByZeroError();
    if (a == std::numeric_limits<int32_t>::min() && b == -1)
        throw OverflowError();
    return a / b;
}

double divide(double a, double b)
{
    if (b == 0.0)
        throw DivisionByZeroError();
    return a / b;
}

float toSingle(double x)
{
    const float f = static_cast<float>(x);
    if (std::isinf(f))
        throw OverflowError();
    return f;
}

double round2(double x)
{
    return roundHalfEven(x * 100.0) / 100.0;
}

double round3(double x)
{
    return roundHalfEven(x * 1000.0) / 1000.0;
}

namespace {

// A whole number with all its digits, however large: "1000000000000000",
// never "1E+15".
QString wholeText(double x)
{
    if (std::fabs(x) < 9e18)
        return QString::number(static_cast<qint64>(x));
    return QString::number(x, 'f', 0);
}

} // namespace

bool isWhole(double x)
{
    return std::isfinite(x) && x == std::trunc(x);
}

QString numberText(double x)
{
    if (isWhole(x))
        return wholeText(x);
    QString s = QString::number(x, 'g', 15);
    s.replace(u'e', u'E');
    return s;
}

QString shortestText(double x)
{
    if (isWhole(x))
        return wholeText(x);
    return QString::number(x, 'g', QLocale::FloatingPointShortest);
}

} // namespace conv
