#pragma once
// Sequential reading of the game's single-byte text files, the two ways the
// game's exports are read: item reads (free-format items separated by
// commas and line ends) and line reads (a whole line, untouched). CR LF,
// lone CR and lone LF all end a line. Bytes are Windows-1252.

#include <QByteArray>
#include <QString>
#include <utility>

// The game's files are small: a report of the largest universe is a few
// hundred kilobytes. A larger file is refused before it is read, so that a
// wrong or damaged file cannot take the memory of the machine.
constexpr qint64 MaxGameFileSize = 32 * 1024 * 1024;

class TextReader {
public:
    // Reads the whole file; LoadError when it cannot be opened or is
    // larger than MaxGameFileSize.
    explicit TextReader(const QString &path);
    // For tests and in-memory data.
    TextReader(QByteArray bytes, QString name);

    bool atEnd() const { return m_pos >= m_bytes.size(); }
    // The 1-based line the next read starts on.
    int line() const { return m_line; }
    const QString &name() const { return m_name; }

    // The rest of the current line, without its line end.
    QString readLine();
    // The same read when only the count of lines matters: nothing decoded.
    void skipLine();
    // One text item: runs to a comma or a line end; a quoted item runs to
    // the next double quote.
    QString readTextItem();
    // One numeric item: runs to a blank, tab, comma or line end and must be
    // a decimal number as a whole (empty is 0).
    double readNumberItem();

    // Raises the load error for this file at the given line.
    [[noreturn]] void fail(const QString &fault, int line) const;

private:
    bool atLineEnd() const;
    // Moves past the current line and its line end; gives where its text
    // starts and ends.
    std::pair<qsizetype, qsizetype> passLine();
    void skipLineEnd();
    void skipBlanks();
    QString readQuoted();
    void requireMore() const;

    QByteArray m_bytes;
    QString m_name;
    qsizetype m_pos = 0;
    int m_line = 1;
};

// Windows-1252 text; its five undefined bytes read as Latin-1.
QString decodeWindows1252(const char *data, qsizetype size);
// The other way; characters Windows-1252 lacks become "?".
QByteArray encodeWindows1252(const QString &text);
