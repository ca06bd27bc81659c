#include "QuotedText.h"

#include <cstring>
#include <locale.h>

namespace {

bool needsEscape(QChar c)
{
    switch (c.category()) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

void appendEscape(QString &out, char16_t c)
{
    switch (c) {
    case u'\a': out += QLatin1String("\\a"); return;
    case u'\b': out += QLatin1String("\\b"); return;
    case u'\t': out += QLatin1String("\\t"); return;
    case u'\n': out += QLatin1String("\\n"); return;
    case u'\v': out += QLatin1String("\\v"); return;
    case u'\f': out += QLatin1String("\\f"); return;
    case u'\r': out += QLatin1String("\\r"); return;
    case 0x1B: out += QLatin1String("\\e"); return;
    }
    const QString hex = QString::number(uint(c), 16).toUpper();
    if (c < 0x80)
        out += QLatin1String("\\x") + hex.rightJustified(2, u'0');
    else
        out += QLatin1String("\\u") + hex.rightJustified(4, u'0');
}

} // namespace

QString escapeControls(QStringView text)
{
    QString out;
    out.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            out += c;
            out += text[++i];
        } else if (c.isSurrogate() || needsEscape(c)) {
            appendEscape(out, c.unicode());
        } else {
            out += c;
        }
    }
    return out;
}

QString quoted(QStringView text)
{
    if (text.size() <= QuotedLength)
        return u'"' + escapeControls(text) + u'"';
    QStringView head = text.first(QuotedLength);
    if (head.back().isHighSurrogate())
        head.chop(1);
    return u'"' + escapeControls(head) + QStringLiteral("…\"");
}

QString systemErrorText(int errorNumber)
{
    static const locale_t plain = newlocale(LC_ALL_MASK, "C", locale_t(nullptr));
    return QString::fromLocal8Bit(plain ? strerror_l(errorNumber, plain) : std::strerror(errorNumber));
}
