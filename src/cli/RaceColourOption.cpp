#include "RaceColourOption.h"
#include "QuotedText.h"

#include "CliOptions.h"
#include "RaceColourChoice.h"

#include <QRegularExpression>

std::vector<RaceColourRequest> parseRaceColours(const QStringList &values)
{
    static const QRegularExpression colour(QStringLiteral("^#([0-9A-Fa-f]{2})([0-9A-Fa-f]{2})([0-9A-Fa-f]{2})$"));
    std::vector<RaceColourRequest> requests;
    for (const QString &value : values) {
        // Race names may hold "=", colours never do.
        const qsizetype eq = value.lastIndexOf(u'=');
        const QRegularExpressionMatch match = colour.match(eq < 0 ? QString() : value.mid(eq + 1));
        if (eq < 1 || !match.hasMatch())
            throw CliFailure(2, QStringLiteral("--race-colour takes NAME=#RRGGBB, not %1").arg(quoted(value)));
        const RaceColourRequest request{value.left(eq), match.captured(1).toInt(nullptr, 16),
                                        match.captured(2).toInt(nullptr, 16), match.captured(3).toInt(nullptr, 16)};
        if (!brightEnough(request.red, request.green, request.blue))
            throw CliFailure(2, QStringLiteral("--race-colour: %1 for %2 is too dark for the map: red + green + "
                                               "blue is %3, at least %4 is needed")
                                    .arg(value.mid(eq + 1), quoted(request.race))
                                    .arg(request.red + request.green + request.blue)
                                    .arg(MinimumColourSum));
        requests.push_back(request);
    }
    return requests;
}

void applyRaceColours(const std::vector<RaceColourRequest> &requests, GameData &data)
{
    for (const RaceColourRequest &request : requests) {
        const int column = raceColumnNamed(data, request.race);
        if (column == 0) {
            QStringList races;
            for (int k = 1; k <= data.PlayerCount; ++k)
                races << escapeControls(data.player(k)[RaceName].text());
            throw CliFailure(2, QStringLiteral("--race-colour: no race named %1 in this game; its races are: %2")
                                    .arg(quoted(request.race), races.join(QStringLiteral(", "))));
        }
        storeRaceColour(data, column, request.red, request.green, request.blue);
    }
}
