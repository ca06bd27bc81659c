#include "Conversions.h"

#include <QByteArrayView>
#include <QLocale>
#include <QVarLengthArray>
#include <algorithm>
#include <charconv>
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

// Roughly the power of ten of a decimal number (sign, digits, point,
// exponent) that is not 0: enough to tell a number beyond the double's
// range from one below it.
long long orderOfMagnitude(QByteArrayView number)
{
    qsizetype i = number.startsWith('-') ? 1 : 0;
    long long wholeDigits = 0;   // before the point, from the first that is not 0
    long long leadingZeros = 0;  // after the point, before the first that is not 0
    bool significant = false;
    bool fraction = false;
    for (; i < number.size() && number[i] != 'e'; ++i) {
        const char c = number[i];
        if (c == '.') {
            fraction = true;
        } else if (!fraction) {
            significant = significant || c != '0';
            wholeDigits += significant;
        } else if (!significant) {
            significant = c != '0';
            leadingZeros += !significant;
        }
    }
    const bool negative = i + 1 < number.size() && number[i + 1] == '-';
    long long exponent = 0;
    for (++i; i < number.size(); ++i)
        if (number[i] >= '0' && number[i] <= '9')
            exponent = std::min(exponent * 10 + (number[i] - '0'), 1'000'000'000'000LL);
    return (wholeDigits > 0 ? wholeDigits : -leadingZeros) + (negative ? -exponent : exponent);
}

// The files' numbers always use "." whatever the user's locale, so they are
// read by std::from_chars, which no locale touches.
double parsePrefix(QStringView s, qsizetype len)
{
    // The prefix is ASCII by construction. Copied on the stack: a load
    // converts some ten thousand numbers, each a heap allocation otherwise.
    QVarLengthArray<char, 64> bytes;
    bytes.reserve(len);
    for (qsizetype i = 0; i < len; ++i) {
        const char c = char(s[i].unicode());
        if (i == 0 && c == '+')
            continue; // from_chars takes no plus sign
        bytes.append((c == 'd' || c == 'D') ? 'e' : c);
    }
    const qsizetype n = bytes.size();
    double value = 0;
    if (std::from_chars(bytes.constData(), bytes.constData() + n, value).ec == std::errc::result_out_of_range) {
        // Beyond the double's range from_chars leaves the value alone: it is
        // an infinity above the range and a zero below it.
        const double magnitude = orderOfMagnitude(QByteArrayView(bytes.constData(), n)) > 0
                                     ? std::numeric_limits<double>::infinity() : 0.0;
        return s[0] == u'-' ? -magnitude : magnitude;
    }
    return value;
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

double shortestDecimal(float x)
{
    char text[32];
    const auto written = std::to_chars(text, text + sizeof text, x);
    double value = 0;
    std::from_chars(text, written.ptr, value);
    return value;
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
