#pragma once
// The choice of a game's files: which reports exist beside a map file, which
// to read, which is the user's own race and the year of each. Holds the
// state of the selection window's rows so that the window and the command
// line share one set of rules and messages.

#include "GameData.h"

#include <QStringList>
#include <array>
#include <utility>

class FileSelection {
public:
    struct Row {
        bool shown = false;       // the row's check box is visible
        bool checked = false;
        QString caption;
        bool optionShown = false; // own-race option and year box visible
        QString yearText;
    };

    explicit FileSelection(GameData &data) : m_data(data) {}

    // A click on a map file in `dir`. Returns the message to show, or empty.
    QString clickMapFile(const QString &dir, const QString &fileName);
    // The check box of row i (0..16) was clicked.
    void toggleRow(int i);
    // Sets row i's box to included or not, as a click would when needed.
    void setIncluded(int i, bool included);
    // The own-race option of row i was chosen.
    void chooseOwnRace(int i);
    // "Load && Generate Data": runs the checks in order and returns the
    // first failing message, or empty on success (GameData then holds the
    // choice and the caller starts the generation).
    QString confirm();
    void cancel() { m_data.OpenFileCancelled = 1; }
    // The message of the map file click that a failed check repeated, once.
    QString takeFollowUpMessage() { return std::exchange(m_followUp, QString()); }
    // The file the last message concerns: the report it is about, else the
    // map file, for a message that must say which file it means.
    const QString &concernedFile() const { return m_concerned; }
    // What the last map file click chose quietly: a report picked among
    // names that differ only in case, a folder named as a report.
    const QStringList &notes() const { return m_notes; }

    Row &row(int i) { return m_rows[size_t(i)]; }
    const Row &row(int i) const { return m_rows[size_t(i)]; }
    QString gameYearText;
    bool ownRaceHintShown() const { return m_hintShown; }
    bool loadEnabled() const { return m_loadEnabled; }

    static QString baseName(const QString &mapFileName) { return mapFileName.chopped(qMin(4, mapFileName.size())); }
    // Every name of the game's files the program reads: the map, the
    // reports base.P1..P16 and base.PLA and the annotation file base.VMK.
    static QStringList gameFileNames(const QString &mapFileName);

private:
    // Checks that find the folder changed rebuild the rows from it.
    void repeatClick();
    // The file of row i, or the map file when the row has none.
    QString fileOfRow(int i) const;
    // The path of `name` in the folder, noting a choice among names that
    // differ only in case and a folder of that name.
    QString findReport(const class GameFolder &folder, const QString &name);

    GameData &m_data;
    std::array<Row, MaxPlayers + 1> m_rows;
    bool m_hintShown = false;
    bool m_loadEnabled = false;
    QString m_dir;
    QString m_fileName;
    QString m_followUp;
    QString m_concerned;
    QStringList m_notes;
};
