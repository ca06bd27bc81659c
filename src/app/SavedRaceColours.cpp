#include "SavedRaceColours.h"

#include "DesktopSettings.h"
#include "RaceColourChoice.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QUrl>

namespace {

// The settings opened on the colours of the game of `mapFile`.
class Settings : public DesktopSettings {
public:
    explicit Settings(const QString &mapFile)
    {
        // A path holds group separators of its own; its hash names the
        // game, and the path is kept beside the colours for whoever reads
        // the file.
        beginGroup(QStringLiteral("RaceColours/")
                   + QString::fromLatin1(QCryptographicHash::hash(mapFile.toUtf8(), QCryptographicHash::Sha1).toHex()));
    }
};

// Race names are the game's text: '/' and '\' would open groups.
QString raceKey(const QString &race)
{
    return QStringLiteral("Races/") + QString::fromLatin1(QUrl::toPercentEncoding(race));
}

} // namespace

void SavedRaceColours::gameLoaded(GameData &data)
{
    m_mapFile = QFileInfo(data.MapFilePath).absoluteFilePath();
    Settings settings(m_mapFile);
    for (int k = 1; k <= data.PlayerCount; ++k) {
        const QColor colour = QColor::fromString(settings.value(raceKey(data.player(k)[RaceName].text())).toString());
        // A hand-edited file may hold anything: only what the editor accepts counts.
        if (colour.isValid() && brightEnough(colour.red(), colour.green(), colour.blue()))
            storeRaceColour(data, k, colour.red(), colour.green(), colour.blue());
    }
}

void SavedRaceColours::remember(const QString &race, const QColor &colour)
{
    if (m_mapFile.isEmpty())
        return;
    Settings settings(m_mapFile);
    settings.setValue(QStringLiteral("MapFile"), m_mapFile);
    settings.setValue(raceKey(race), colour.name());
}
