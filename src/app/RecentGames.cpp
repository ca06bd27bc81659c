#include "RecentGames.h"

#include "DesktopSettings.h"
#include "QuotedText.h"

#include <QFileInfo>

namespace {

const QString Group = QStringLiteral("RecentGames");

// "3=2429" for each report year, as the command line writes them.
QStringList yearPairs(const QMap<int, QString> &years)
{
    QStringList pairs;
    for (auto it = years.begin(); it != years.end(); ++it)
        pairs << QStringLiteral("%1=%2").arg(it.key()).arg(it.value());
    return pairs;
}

// A hand-edited file may hold anything: what is not a player number is dropped.
QMap<int, QString> yearsOf(const QStringList &pairs)
{
    QMap<int, QString> years;
    for (const QString &pair : pairs) {
        bool ok = false;
        const int n = pair.section(u'=', 0, 0).toInt(&ok);
        if (ok && n >= 1 && n <= MaxPlayers)
            years[n] = pair.section(u'=', 1, -1);
    }
    return years;
}

} // namespace

QString RecentGame::caption() const
{
    QString text = QFileInfo(mapFile).fileName();
    if (!ownRaceName.isEmpty())
        text += QStringLiteral(", ") + ownRaceName;
    if (!choice.gameYearText.isEmpty())
        text += QStringLiteral(", year ") + choice.gameYearText;
    // Menus take '&' for a mnemonic.
    return escapeControls(text).replace(u'&', QStringLiteral("&&"));
}

QList<RecentGame> RecentGames::games() const
{
    DesktopSettings settings;
    QList<RecentGame> games;
    const int count = settings.beginReadArray(Group);
    for (int i = 0; i < qMin(count, Kept); ++i) {
        settings.setArrayIndex(i);
        RecentGame game;
        game.mapFile = settings.value(QStringLiteral("MapFile")).toString();
        game.ownRaceName = settings.value(QStringLiteral("OwnRaceName")).toString();
        const int own = settings.value(QStringLiteral("OwnRace")).toInt();
        game.choice.ownRace = own >= 1 && own <= MaxPlayers ? own : 0;
        game.choice.gameYearText = settings.value(QStringLiteral("GameYear")).toString();
        game.choice.reportYearTexts = yearsOf(settings.value(QStringLiteral("ReportYears")).toStringList());
        for (const QString &n : settings.value(QStringLiteral("Skipped")).toStringList())
            if (n.toInt() >= 1 && n.toInt() <= MaxPlayers)
                game.choice.skipped << n.toInt();
        if (!game.mapFile.isEmpty())
            games << game;
    }
    settings.endArray();
    return games;
}

void RecentGames::loaded(const GameData &data)
{
    RecentGame game;
    game.mapFile = QFileInfo(data.MapFilePath).absoluteFilePath();
    game.choice = choiceOf(data);
    game.ownRaceName = data.OwnRaceName;
    QList<RecentGame> games = this->games();
    games.removeIf([&](const RecentGame &g) { return g.mapFile == game.mapFile; });
    games.prepend(game);
    store(games.mid(0, Kept));
}

void RecentGames::forget(const QString &mapFile)
{
    QList<RecentGame> games = this->games();
    games.removeIf([&](const RecentGame &g) { return g.mapFile == mapFile; });
    store(games);
}

void RecentGames::store(const QList<RecentGame> &games)
{
    DesktopSettings settings;
    settings.remove(Group);
    settings.beginWriteArray(Group, int(games.size()));
    for (int i = 0; i < games.size(); ++i) {
        const RecentGame &game = games[i];
        settings.setArrayIndex(i);
        settings.setValue(QStringLiteral("MapFile"), game.mapFile);
        settings.setValue(QStringLiteral("OwnRaceName"), game.ownRaceName);
        settings.setValue(QStringLiteral("OwnRace"), game.choice.ownRace);
        settings.setValue(QStringLiteral("GameYear"), game.choice.gameYearText);
        settings.setValue(QStringLiteral("ReportYears"), yearPairs(game.choice.reportYearTexts));
        QStringList skipped;
        for (int n : game.choice.skipped)
            skipped << QString::number(n);
        settings.setValue(QStringLiteral("Skipped"), skipped);
    }
    settings.endArray();
}
