#include "ReportFile.h"

#include "GameData.h"

ReportFields splitReportLine(const QString &rawLine)
{
    QString line = rawLine;
    if (line.endsWith(u'%'))
        line += QStringLiteral("\t0\t0\t0\t0\t0\t0\t0\t0\t0");

    // The sentinels are literals: a report has thousands of empty fields,
    // and a literal's QString needs no allocation of its own.
    ReportFields fields;
    int n = 1;
    qsizetype start = 0;
    const qsizetype size = line.size();
    for (qsizetype i = 0; i < size; ++i) {
        if (line[i] != u'\t')
            continue;
        if (n > ReportFieldCount)
            throw TooManyFieldsError();
        if (i == start) {
            if (n == 2)
                fields[n] = Value(QString());
            else if (n == 3)
                fields[n] = Value(QStringLiteral("None"));
            else if (n == 5)
                fields[n] = Value(QStringLiteral("Uninhabited"));
            else if (n > 30)
                fields[n] = Value(0);
            else
                fields[n] = Value(QStringLiteral("Unknown"));
        } else {
            fields[n] = Value(line.mid(start, i - start));
        }
        start = i + 1;
        ++n;
    }
    return fields;
}

int countReportLines(const QString &path)
{
    TextReader reader(path);
    reader.readTextItem();
    int count = 0;
    while (!reader.atEnd()) {
        if (count == MaxPlanets)
            reader.fail(QStringLiteral("the report lists more than %1 planets, more than any universe of the game")
                            .arg(MaxPlanets), reader.line());
        reader.skipLine();
        ++count;
    }
    return count;
}

ReportReader::ReportReader(const QString &path, bool ownReport)
    : m_reader(path), m_ownReport(ownReport)
{
    if (m_ownReport)
        m_reader.readTextItem();
    else
        m_reader.readLine();
}

QString ReportReader::next()
{
    m_lastLine = m_reader.line();
    return m_ownReport ? m_reader.readLine() : m_reader.readTextItem();
}
