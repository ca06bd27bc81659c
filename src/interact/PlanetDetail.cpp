#include "PlanetDetail.h"
#include "QuotedText.h"

#include "Conversions.h"

#include <cmath>

namespace {

const char *const labelNames[DetailLabelCount] = {
    "PlanetName", "StarsScore", "Owner", "Starbase", "ReportAge", "Population", "HabValue", "Mines", "Factories",
    "Resources", "Defence", "SOI", "IronMCT", "BoraMCT", "GermMCT", "IronMR", "BoraMR", "GermMR", "IronS", "BoraS",
    "GermS", "Grav1", "Temp1", "Rad1", "Grav2", "Temp2", "Rad2",
};

// Leading and trailing blanks go; tabs stay.
QString trimBlanks(const QString &s)
{
    qsizetype start = 0, end = s.size();
    while (start < end && s[start] == u' ')
        ++start;
    while (end > start && s[end - 1] == u' ')
        --end;
    return s.mid(start, end - start);
}

// A field as the panel shows it: numbers as the exports write them.
QString shown(const Value &v)
{
    return v.isNumber() ? conv::shortestText(v.rawNumber()) : v.text();
}

} // namespace

const char *detailLabelName(int label)
{
    return labelNames[label];
}

PanelFillError::PanelFillError(int row, const QString &planetName, const char *field, const QString &fault)
    : std::runtime_error(fault.toStdString()),
      message(QStringLiteral("planet %1 %2: %3: %4").arg(row).arg(quoted(planetName), QLatin1String(field), fault))
{
}

void PlanetDetail::nameRaces(const GameData &d)
{
    RName.fill(QString());
    RHab.fill(QString());
    for (int k = 1; k <= MaxPlayers; ++k)
        RName[size_t(k - 1)] = d.player(k)[RaceName].text();
}

void PlanetDetail::fill(const GameData &d, int row, HabCarry &carry)
{
    const PlanetInfo &p = d.planet(row);
    auto &l = labels;
    l[PlanetNameLabel] = shown(p[Name]);
    l[StarsScoreLabel] = shown(p[AttackScore]);
    l[OwnerLabel] = shown(p[Owner]).isEmpty() ? QStringLiteral("None") : shown(p[Owner]);
    l[StarbaseLabel] = shown(p[Starbase]);
    l[ReportAgeLabel] = trimBlanks(shown(p[AgeText]));
    l[PopulationLabel] = shown(p[Population]);
    l[HabValueLabel] = shown(p[Hab]) + u'%';
    // Never reported: what the own report's value says means nothing yet.
    if (shown(p[AgeText]).isEmpty()) {
        l[ReportAgeLabel] = QStringLiteral("Unexplored");
        l[HabValueLabel] = QStringLiteral("?%");
    }
    l[MinesLabel] = shown(p[Mines]);
    l[FactoriesLabel] = shown(p[Factories]);
    l[ResourcesLabel] = shown(p[Resources]);
    l[DefenceLabel] = shown(p[Defenses]);
    l[SoiLabel] = conv::shortestText(std::floor(p[SOI].val())) + QStringLiteral(" l.y.");
    l[IronMctLabel] = shown(p[IronMC]) + u' ';
    l[BoraMctLabel] = shown(p[BoraMC]) + u' ';
    l[GermMctLabel] = shown(p[GermMC]) + u' ';
    // Remote mining shows on all three, whatever the other two hold.
    if (p[IronMR].is(u"Remote")) {
        l[IronMrLabel] = l[BoraMrLabel] = l[GermMrLabel] = QStringLiteral("Remote ");
    } else {
        l[IronMrLabel] = shown(p[IronMR]) + u' ';
        l[BoraMrLabel] = shown(p[BoraMR]) + u' ';
        l[GermMrLabel] = shown(p[GermMR]) + u' ';
    }
    l[IronSLabel] = shown(p[StoredIron]) + u' ';
    l[BoraSLabel] = shown(p[StoredBora]) + u' ';
    l[GermSLabel] = shown(p[StoredGerm]) + u' ';

    Pie1.canvas().cls();
    Pie2.canvas().cls();
    const PlanetField pieFields[2][3] = {{IronMC, BoraMC, GermMC}, {StoredIron, StoredBora, StoredGerm}};
    PieBox *pies[2] = {&Pie1, &Pie2};
    for (int pie = 0; pie < 2; ++pie) {
        const QString amounts[3] = {shown(p[pieFields[pie][0]]), shown(p[pieFields[pie][1]]),
                                    shown(p[pieFields[pie][2]])};
        int failed = 0;
        try {
            pies[pie]->draw(amounts, failed);
        } catch (const std::exception &e) {
            throw PanelFillError(row, shown(p[Name]), planetFieldName(pieFields[pie][failed]), QString::fromUtf8(e.what()));
        }
    }

    // Old-style reports carry no environment.
    if (d.ReportFormat != 30) {
        for (int label : {Grav1Label, Temp1Label, Rad1Label, Grav2Label, Temp2Label, Rad2Label})
            l[size_t(label)] = QStringLiteral("Unavailable");
        return;
    }
    l[Grav1Label] = shown(p[Gravity]);
    l[Temp1Label] = shown(p[Temperature]);
    l[Rad1Label] = shown(p[Radiation]);
    l[Grav2Label] = shown(p[Gravity2]);
    l[Temp2Label] = shown(p[Temperature2]);
    l[Rad2Label] = shown(p[Radiation2]);
    try {
        fillHabPerRace(d, carry);
    } catch (const HabAxisError &e) {
        throw PanelFillError(row, shown(p[Name]), planetFieldName(e.axis), QString::fromUtf8(e.what()));
    } catch (const std::exception &e) {
        throw PanelFillError(row, shown(p[Name]), planetFieldName(Gravity), QString::fromUtf8(e.what()));
    }
}

void PlanetDetail::fillHabPerRace(const GameData &d, HabCarry &carry)
{
    // The estimate reads the environment as the "Current" column shows it.
    const double g = conv::val(labels[Grav1Label]);
    const double t = conv::val(labels[Temp1Label]);
    const double r = conv::val(labels[Rad1Label]);
    for (int j = 1; j <= d.PlayerCount; ++j)
        RHab[size_t(j - 1)] = conv::shortestText(estimateHab(habBounds(d.player(j)), g, t, r, carry)) + u'%';
}
