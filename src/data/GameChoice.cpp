#include "GameChoice.h"

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
