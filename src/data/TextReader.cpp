#include "TextReader.h"

#include "Conversions.h"
#include "LoadError.h"
#include "QuotedText.h"

#include <QFile>
#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const char16_t cp1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

QString kindOfFile(mode_t mode)
{
    if (S_ISFIFO(mode))
        return QStringLiteral("a FIFO");
    if (S_ISDIR(mode))
        return QStringLiteral("a folder");
    if (S_ISCHR(mode) || S_ISBLK(mode))
        return QStringLiteral("a device");
    return QStringLiteral("not a regular file");
}

// Opens without waiting, so that a FIFO named as a game file is refused
// instead of hanging the load until something writes into it; a device or a
// folder is refused likewise, before a byte of it is read.
void openRegularFile(QFile &file, const QString &path)
{
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        throw LoadError(path, 0, QStringLiteral("cannot open the file (%1)").arg(systemErrorText(errno)));
    struct stat st {};
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        ::close(fd);
        throw LoadError(path, 0, QStringLiteral("%1, not a game file").arg(kindOfFile(st.st_mode)));
    }
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    if (!file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        throw LoadError(path, 0, QStringLiteral("cannot open the file (%1)").arg(file.errorString()));
    }
}

} // namespace

QString decodeWindows1252(const char *data, qsizetype size)
{
    QString s(size, Qt::Uninitialized);
    QChar *out = s.data();
    for (qsizetype i = 0; i < size; ++i) {
        const auto b = static_cast<unsigned char>(data[i]);
        out[i] = (b >= 0x80 && b < 0xA0) ? QChar(cp1252High[b - 0x80]) : QChar(b);
    }
    return s;
}

QByteArray encodeWindows1252(const QString &text)
{
    QByteArray bytes(text.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        char b = '?';
        if (c < 0x80 || (c >= 0xA0 && c < 0x100))
            b = char(c);
        else if (const auto *high = std::find(std::begin(cp1252High), std::end(cp1252High), c); high != std::end(cp1252High))
            b = char(0x80 + (high - cp1252High));
        bytes[i] = b;
    }
    return bytes;
}

TextReader::TextReader(const QString &path) : m_name(path)
{
    QFile file;
    openRegularFile(file, path);
    // Read in pieces up to the bound rather than by the size: the file may
    // grow while it is read, and a buffer of the bound's size would cost
    // every read.
    for (;;) {
        const QByteArray piece = file.read(64 * 1024);
        if (piece.isEmpty())
            break;
        m_bytes += piece;
        if (m_bytes.size() > MaxGameFileSize)
            throw LoadError(path, 0, QStringLiteral("the file is too large for a game file (at most %1 bytes)")
                                         .arg(MaxGameFileSize));
    }
}

TextReader::TextReader(QByteArray bytes, QString name) : m_bytes(std::move(bytes)), m_name(std::move(name)) {}

void TextReader::fail(const QString &fault, int line) const
{
    throw LoadError(m_name, line, fault);
}

void TextReader::requireMore() const
{
    if (atEnd())
        fail(QStringLiteral("Input past end of file"), m_line);
}

bool TextReader::atLineEnd() const
{
    return !atEnd() && (m_bytes[m_pos] == '\r' || m_bytes[m_pos] == '\n');
}

void TextReader::skipLineEnd()
{
    if (m_bytes[m_pos] == '\r' && m_pos + 1 < m_bytes.size() && m_bytes[m_pos + 1] == '\n')
        ++m_pos;
    ++m_pos;
    ++m_line;
}

void TextReader::skipBlanks()
{
    while (!atEnd() && (m_bytes[m_pos] == ' ' || m_bytes[m_pos] == '\t'))
        ++m_pos;
}

std::pair<qsizetype, qsizetype> TextReader::passLine()
{
    requireMore();
    const qsizetype start = m_pos;
    while (!atEnd() && !atLineEnd())
        ++m_pos;
    const qsizetype end = m_pos;
    if (atLineEnd())
        skipLineEnd();
    return {start, end};
}

QString TextReader::readLine()
{
    const auto [start, end] = passLine();
    return decodeWindows1252(m_bytes.constData() + start, end - start);
}

void TextReader::skipLine()
{
    passLine();
}

QString TextReader::readQuoted()
{
    ++m_pos; // opening quote
    const qsizetype start = m_pos;
    while (!atEnd() && m_bytes[m_pos] != '"') {
        if (atLineEnd()) {
            skipLineEnd();
            continue;
        }
        ++m_pos;
    }
    QString item = decodeWindows1252(m_bytes.constData() + start, m_pos - start);
    if (!atEnd())
        ++m_pos; // closing quote
    // Whatever stands between the closing quote and the next delimiter is
    // dropped together with the delimiter.
    while (!atEnd() && !atLineEnd() && m_bytes[m_pos] != ',')
        ++m_pos;
    if (atLineEnd())
        skipLineEnd();
    else if (!atEnd())
        ++m_pos;
    return item;
}

QString TextReader::readTextItem()
{
    requireMore();
    skipBlanks();
    if (atEnd())
        return QString();
    if (atLineEnd()) {
        skipLineEnd();
        return QString();
    }
    if (m_bytes[m_pos] == '"')
        return readQuoted();
    const qsizetype start = m_pos;
    while (!atEnd() && !atLineEnd() && m_bytes[m_pos] != ',')
        ++m_pos;
    QString item = decodeWindows1252(m_bytes.constData() + start, m_pos - start);
    if (atLineEnd())
        skipLineEnd();
    else if (!atEnd())
        ++m_pos;
    return item;
}

double TextReader::readNumberItem()
{
    requireMore();
    const int itemLine = m_line;
    skipBlanks();
    QString item;
    if (atEnd()) {
        // blanks up to the end of the file: an empty item
    } else if (atLineEnd()) {
        skipLineEnd();
    } else if (m_bytes[m_pos] == '"') {
        item = readQuoted();
    } else {
        const qsizetype start = m_pos;
        while (!atEnd() && !atLineEnd() && m_bytes[m_pos] != ',' && m_bytes[m_pos] != ' '
               && m_bytes[m_pos] != '\t')
            ++m_pos;
        item = decodeWindows1252(m_bytes.constData() + start, m_pos - start);
        skipBlanks();
        if (atLineEnd())
            skipLineEnd();
        else if (!atEnd() && m_bytes[m_pos] == ',')
            ++m_pos;
    }
    const auto number = conv::wholeNumber(item);
    if (!number)
        fail(QStringLiteral("Type mismatch: %1 is not a number").arg(quoted(item)), itemLine);
    return *number;
}
