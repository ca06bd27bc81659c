#pragma once
// Text from outside (a field of a game file, a file name) inside a message.
// A damaged file can hold NUL, form feed, escape or C1 control bytes; shown
// raw they break the one-line message in two or send escape sequences to a
// terminal, so every such character is written as an escape instead.

#include <QString>
#include <QStringView>

// Control characters, line and paragraph separators and invisible format
// characters (bidirectional marks, soft hyphen) as escapes: \t \n \r \f \v
// \b \a and \e by name, other C0 controls and DEL as \xHH, the rest as
// \uHHHH. A backslash stays as it is, so Windows paths read as they are.
QString escapeControls(QStringView text);

constexpr qsizetype QuotedLength = 40;

// A value read from a file, for a message: in double quotes, escaped, and
// cut after QuotedLength characters with "…".
QString quoted(QStringView text);

// The system's reason for a failure (errno), in English as every message of
// the program is, whatever the user's language: "No space left on device".
QString systemErrorText(int errorNumber);
