#pragma once
// A field of the game tables: empty (never set), text, or a number. Empty
// compares equal to "" and counts as 0 in arithmetic.

#include "Conversions.h"

#include <QString>

class Value {
public:
    enum class Kind { Empty, Text, Number };

    Value() = default;
    Value(const QString &text) : m_kind(Kind::Text), m_text(text) {}
    Value(const char16_t *text) : m_kind(Kind::Text), m_text(QString::fromUtf16(text)) {}
    Value(double number) : m_kind(Kind::Number), m_number(number) {}
    Value(int number) : m_kind(Kind::Number), m_number(number) {}

    Kind kind() const { return m_kind; }
    bool isEmpty() const { return m_kind == Kind::Empty; }
    bool isText() const { return m_kind == Kind::Text; }
    bool isNumber() const { return m_kind == Kind::Number; }

    // The field as text: "" when empty, numbers as the game writes them.
    QString text() const;
    // The field's numeric value through the leading-number parse.
    double val() const;
    // Empty, or text of length 0.
    bool isBlank() const { return m_kind == Kind::Empty || (m_kind == Kind::Text && m_text.isEmpty()); }
    // Comparison with a text, as the game's tables compare a field with a
    // string literal: empty equals "", a number compares by its text.
    bool is(QStringView s) const { return text() == s; }

    const QString &rawText() const { return m_text; }
    double rawNumber() const { return m_number; }

    bool operator==(const Value &o) const
    {
        return m_kind == o.m_kind && m_text == o.m_text && (m_kind != Kind::Number || m_number == o.m_number);
    }

private:
    Kind m_kind = Kind::Empty;
    QString m_text;
    double m_number = 0.0;
};

inline QString Value::text() const
{
    switch (m_kind) {
    case Kind::Empty: return QString();
    case Kind::Text: return m_text;
    case Kind::Number: return conv::numberText(m_number);
    }
    return QString();
}

inline double Value::val() const
{
    switch (m_kind) {
    case Kind::Empty: return 0.0;
    case Kind::Text: return conv::val(m_text);
    case Kind::Number: return m_number;
    }
    return 0.0;
}
