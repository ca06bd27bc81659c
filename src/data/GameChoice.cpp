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
        throw SelectionRefused(message);

    if (choice.ownRace != 0)
        selection.chooseOwnRace(choice.ownRace);
    selection.gameYearText = choice.gameYearText;
    for (auto it = choice.reportYearTexts.begin(); it != choice.reportYearTexts.end(); ++it)
        selection.row(it.key()).yearText = it.value();
    for (int n : choice.skipped)
        selection.setIncluded(n, false);

    message = selection.confirm();
    if (!message.isEmpty())
        throw SelectionRefused(message);
    generateUniverse(data, observer);
}
