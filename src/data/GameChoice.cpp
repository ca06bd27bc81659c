#include "GameChoice.h"

#include "Conversions.h"
#include "FileSelection.h"
#include "UniverseGenerator.h"

#include <QFileInfo>

void loadChosenGame(const QString &mapFile, const GameChoice &choice, GameData &data, GenerationObserver &observer)
{
    const QFileInfo map(mapFile);
    FileSelection selection(data);
    QString message = selection.clickMapFile(map.absolutePath(), map.fileName());
    if (!message.isEmpty())
        throw SelectionRefused(message, selection.concernedFile());

    if (choice.ownRace != 0)
        selection.chooseOwnRace(choice.ownRace);
    selection.gameYearText = choice.gameYearText;
    for (auto it = choice.reportYearTexts.begin(); it != choice.reportYearTexts.end(); ++it) {
        // A year for a report that is not there is a mistake, not a choice.
        if (data.GameFiles[size_t(it.key())].path.isEmpty())
            throw SelectionRefused(QStringLiteral("there is no report of player %1 to take the year %2")
                                       .arg(it.key()).arg(it.value()), data.MapFilePath);
        selection.row(it.key()).yearText = it.value();
    }
    for (int n : choice.skipped)
        selection.setIncluded(n, false);

    message = selection.confirm();
    if (!message.isEmpty())
        throw SelectionRefused(message, selection.concernedFile());
    for (const QString &note : selection.notes())
        observer.warning(note);
    generateUniverse(data, observer);
}

namespace {

// Rows 1..16 whose report is still where it was read.
template <typename Each>
void forEachReport(const GameData &data, Each each)
{
    for (int n = 1; n <= MaxPlayers; ++n) {
        const GameFileRow &row = data.GameFiles[size_t(n)];
        if (!row.path.isEmpty() && QFileInfo::exists(row.path))
            each(n, row);
    }
}

} // namespace

GameChoice choiceOf(const GameData &data)
{
    GameChoice choice;
    choice.ownRace = data.OwnRace;
    if (data.GameYear != 0)
        choice.gameYearText = QString::number(data.GameYear);
    forEachReport(data, [&](int n, const GameFileRow &row) {
        // A report of the game year follows the game year; an empty or
        // zero year box stood for it too.
        if (conv::val(row.year) != 0 && conv::val(row.year) != data.GameYear)
            choice.reportYearTexts[n] = row.year;
        if (row.included != u"1")
            choice.skipped << n;
    });
    return choice;
}

GameChoice nextTurnChoice(const GameData &data, const QString &gameYearText, const QDateTime &loadedAt)
{
    GameChoice choice = choiceOf(data);
    choice.gameYearText = gameYearText;
    forEachReport(data, [&](int n, const GameFileRow &row) {
        if (QFileInfo(row.path).lastModified() > loadedAt)
            choice.reportYearTexts.remove(n);
        else if (conv::val(row.year) != 0)
            choice.reportYearTexts[n] = row.year;
    });
    return choice;
}
