#pragma once
// Every number rule of the game's files in one place: the leading-number
// parse, the "wholly a number" test, half-to-even rounding into the 16- and
// 32-bit integers of the game data, floor and truncating division. Pixel
// radii, colours and merged values depend on these exact rules, so nothing
// else in the program converts numbers on its own.

#include <QString>
#include <QStringView>
#include <cstdint>
#include <optional>
#include <stdexcept>

namespace conv {

// Raised when a value does not fit the integer it is stored in.
struct OverflowError : std::runtime_error {
    OverflowError() : std::runtime_error("Overflow") {}
};

// Raised when a text that must be a number is not one.
struct TypeMismatchError : std::runtime_error {
    TypeMismatchError() : std::runtime_error("Type mismatch") {}
};

struct DivisionByZeroError : std::runtime_error {
    DivisionByZeroError() : std::runtime_error("Division by zero") {}
};

// Leading-number parse: blanks and tabs are skipped, then an optional sign,
// digits with an optional decimal point and an optional E or D exponent are
// taken; whatever follows is ignored. "12%" gives 12, "-1x" gives -1,
// "Unknown" and "" give 0.
double val(QStringView text);

// The number a text stands for when it is a decimal number as a whole
// (surrounding blanks allowed), otherwise nothing. An empty text is 0.
std::optional<double> wholeNumber(QStringView text);

// Round half to even.
double roundHalfEven(double x);

// Half-to-even rounding into a 16- or 32-bit integer; OverflowError when
// the result does not fit.
int16_t toInt16(double x);
int32_t toInt32(double x);

// Floor into a 32-bit integer (OverflowError when it does not fit).
int32_t floorInt32(double x);

// Integer division truncating towards zero; DivisionByZeroError for b = 0.
int32_t intDiv(int32_t a, int32_t b);

// a / b for doubles; DivisionByZeroError for b = 0, as the game's own
// arithmetic stops there instead of going on with an infinity.
double divide(double a, double b);

// A double handed on in single precision, as the canvas takes its
// positions, radii and angles; OverflowError beyond the float's range.
float toSingle(double x);

// The double that a float's shortest decimal text stands for: how the
// trace writes a single-precision value, for writers that take doubles.
double shortestDecimal(float x);

// Round(x, 2): half to even of x * 100, divided by 100.
double round2(double x);
// Round(x, 3) likewise, with 1000.
double round3(double x);

// A number as the game's text conversion writes it: whole numbers plainly,
// others with up to 15 significant digits.
QString numberText(double x);

// A number as the exports (and the detail panel's labels) write it: whole
// numbers plainly, others as the shortest text that reads back as the same
// double.
QString shortestText(double x);
// A finite number without a fractional part: both rules write it plainly.
bool isWhole(double x);

} // namespace conv
