#pragma once
// A load that cannot go on: names the file, the line (0 when none applies)
// and the fault, for one message to the user.

#include "QuotedText.h"

#include <QString>
#include <stdexcept>

class LoadError : public std::runtime_error {
public:
    LoadError(QString file, int line, QString fault)
        : std::runtime_error(format(file, line, fault).toStdString()),
          m_file(std::move(file)), m_line(line), m_fault(std::move(fault)) {}

    const QString &file() const { return m_file; }
    int line() const { return m_line; }
    const QString &fault() const { return m_fault; }
    QString message() const { return format(m_file, m_line, m_fault); }

    static QString format(const QString &file, int line, const QString &fault)
    {
        // One line, whatever the file's name or a quoted item of the file holds.
        const QString name = escapeControls(file);
        const QString what = escapeControls(fault);
        return line > 0 ? QStringLiteral("%1, line %2: %3").arg(name).arg(line).arg(what)
                        : QStringLiteral("%1: %2").arg(name, what);
    }

private:
    QString m_file;
    int m_line;
    QString m_fault;
};
