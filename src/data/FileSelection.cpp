#include "FileSelection.h"

#include "Conversions.h"
#include "GameFolder.h"
#include "QuotedText.h"

#include <QDir>
#include <QFileInfo>
#include <cmath>

QString FileSelection::clickMapFile(const QString &dir, const QString &fileName)
{
    m_dir = dir;
    m_fileName = fileName;
    m_loadEnabled = true;
    m_data.GameDir = dir;
    m_data.StartDir = dir;
    const QString base = baseName(fileName);
    m_data.MapFilePath = QDir(dir).filePath(fileName);
    m_data.AnnotationFilePath = QDir(dir).filePath(base + QStringLiteral(".VMK"));
    m_concerned = m_data.MapFilePath;
    m_notes.clear();

    const GameFolder folder(dir);
    if (folder.startingWith(base + QStringLiteral(".P")).isEmpty())
        return QStringLiteral("No Player files found for this map");

    for (int i = 0; i <= MaxPlayers; ++i) {
        m_data.GameFiles[size_t(i)] = GameFileRow{QString(), QStringLiteral("0"), QString()};
        m_rows[size_t(i)] = Row{};
    }
    m_hintShown = false;
    m_data.OwnRace = 0;

    const QString oldStyle = findReport(folder, base + QStringLiteral(".PLA"));
    if (oldStyle.isEmpty()) {
        m_hintShown = true;
        m_data.ReportFormat = 30;
        for (int n = 1; n <= MaxPlayers; ++n) {
            const QString name = base + QStringLiteral(".P") + QString::number(n);
            const QString path = findReport(folder, name);
            if (path.isEmpty())
                continue;
            m_data.GameFiles[size_t(n)].path = path;
            m_data.GameFiles[size_t(n)].included = QStringLiteral("1");
            m_rows[size_t(n)] = Row{true, true, name, true, QString()};
            if (m_data.OwnRace == 0)
                m_data.OwnRace = int16_t(n);
        }
    } else {
        m_data.ReportFormat = 20;
        m_data.GameFiles[1] = GameFileRow{oldStyle, QStringLiteral("1"), gameYearText};
        m_rows[0] = Row{true, true, QStringLiteral("Old Report game using ") + base + QStringLiteral(".PLA"), false, QString()};
        m_data.OwnRace = 1;
    }
    return QString();
}

QString FileSelection::findReport(const GameFolder &folder, const QString &name)
{
    const QStringList found = folder.matches(name);
    const QString note = caseTwinsNote(found);
    if (!note.isEmpty())
        m_notes << note;
    const QString folderOfName = folder.find(name, GameFolder::Kind::Folder);
    if (!folderOfName.isEmpty())
        m_notes << QStringLiteral("%1 is a folder, not a report: it is not read").arg(folderOfName);
    return found.isEmpty() ? QString() : found.first();
}

QStringList FileSelection::gameFileNames(const QString &mapFileName)
{
    const QString base = baseName(mapFileName);
    QStringList names{mapFileName};
    for (int n = 1; n <= MaxPlayers; ++n)
        names << base + QStringLiteral(".P") + QString::number(n);
    names << base + QStringLiteral(".PLA") << base + QStringLiteral(".VMK");
    return names;
}

QString FileSelection::fileOfRow(int i) const
{
    const QString &path = m_data.GameFiles[size_t(i)].path;
    return path.isEmpty() ? m_data.MapFilePath : path;
}

void FileSelection::toggleRow(int i)
{
    // The old-style box is row 0 while its file is row 1: unticking it
    // changes row 0 only, so the old report is always read.
    QString &included = m_data.GameFiles[size_t(i)].included;
    included = QString::number(std::fabs(conv::val(included) - 1));
    m_rows[size_t(i)].checked = !m_rows[size_t(i)].checked;
}

void FileSelection::setIncluded(int i, bool included)
{
    m_data.GameFiles[size_t(i)].included = included ? QStringLiteral("1") : QStringLiteral("0");
    m_rows[size_t(i)].checked = included;
}

void FileSelection::chooseOwnRace(int i)
{
    m_data.OwnRace = int16_t(i);
}

void FileSelection::repeatClick()
{
    m_followUp = clickMapFile(m_dir, m_fileName);
}

QString FileSelection::confirm()
{
    m_concerned = m_data.MapFilePath;
    for (int i = 1; i <= MaxPlayers; ++i) {
        const QString &path = m_data.GameFiles[size_t(i)].path;
        if (!path.isEmpty() && !QFileInfo::exists(path)) {
            const QString gone = path;
            repeatClick();
            m_concerned = gone;
            return QStringLiteral("Some files have been deleted/renamed. Try again");
        }
    }
    for (int i = 1; i <= MaxPlayers; ++i) {
        if (conv::val(m_data.GameFiles[size_t(i)].included) == 0 && i == m_data.OwnRace) {
            const QString own = fileOfRow(i);
            repeatClick();
            m_concerned = own;
            return QStringLiteral("You have not included the datafile you have selected as your race");
        }
    }
    double included = 0;
    for (int i = 1; i <= MaxPlayers; ++i)
        included += conv::val(m_data.GameFiles[size_t(i)].included);
    if (included == 0)
        return QStringLiteral("No planet files selected");

    double yearSum = 0;
    for (int i = 1; i <= MaxPlayers; ++i)
        yearSum += conv::val(m_rows[size_t(i)].yearText);
    const double gameYear = conv::val(gameYearText);
    if (gameYear == 0 && yearSum > 0)
        return QStringLiteral("You have entered Years for player files but not for the Game");
    for (int i = 1; i <= MaxPlayers; ++i)
        if (conv::val(m_rows[size_t(i)].yearText) > gameYear) {
            m_concerned = fileOfRow(i);
            return QStringLiteral("One or more game files has a Year higher then the Game Year");
        }

    int16_t year = 0;
    try {
        year = conv::toInt16(gameYear);
    } catch (const conv::OverflowError &) {
        return QStringLiteral("Overflow: the game year %1 is out of range").arg(quoted(gameYearText));
    }
    for (int i = 1; i <= MaxPlayers; ++i) {
        const QString &text = m_rows[size_t(i)].yearText;
        m_data.GameFiles[size_t(i)].year = conv::val(text) == 0 ? gameYearText : text;
    }
    m_data.GameYear = year;
    m_data.OpenFileCancelled = 0;
    return QString();
}
