#include "PlanetDetail.h"

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

} // namespace

const char *detailLabelName(int label)
{
    return labelNames[label];
}

PanelFillError::PanelFillError(int row, const QString &planetName, const char *field, const QString &fault)
    : std::runtime_error(fault.toStdString()),
      message(QStringLiteral("planet %1 \"%2\": %3: %4").arg(row).arg(planetName, QLatin1String(field), fault))
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
    l[PlanetNameLabel] = p[Name].text();
    l[StarsScoreLabel] = p[AttackScore].text();
    l[OwnerLabel] = p[Owner].text().isEmpty() ? QStringLiteral("None") : p[Owner].text();
    l[StarbaseLabel] = p[Starbase].text();
    l[ReportAgeLabel] = trimBlanks(p[AgeText].text());
    l[PopulationLabel] = p[Population].text();
    l[HabValueLabel] = p[Hab].text() + u'%';
    // Never reported: what the own report's value says means nothing yet.
    if (p[AgeText].text().isEmpty()) {
        l[ReportAgeLabel] = QStringLiteral("Unexplored");
        l[HabValueLabel] = QStringLiteral("?%");
    }
    l[MinesLabel] = p[Mines].text();
    l[FactoriesLabel] = p[Factories].text();
    l[ResourcesLabel] = p[Resources].text();
    l[DefenceLabel] = p[Defenses].text();
    l[SoiLabel] = conv::numberText(std::floor(p[SOI].val())) + QStringLiteral(" l.y.");
    l[IronMctLabel] = p[IronMC].text() + u' ';
    l[BoraMctLabel] = p[BoraMC].text() + u' ';
    l[GermMctLabel] = p[GermMC].text() + u' ';
    // Remote mining shows on all three, whatever the other two hold.
    if (p[IronMR].is(u"Remote")) {
        l[IronMrLabel] = l[BoraMrLabel] = l[GermMrLabel] = QStringLiteral("Remote ");
    } else {
        l[IronMrLabel] = p[IronMR].text() + u' ';
        l[BoraMrLabel] = p[BoraMR].text() + u' ';
        l[GermMrLabel] = p[GermMR].text() + u' ';
    }
    l[IronSLabel] = p[StoredIron].text() + u' ';
    l[BoraSLabel] = p[StoredBora].text() + u' ';
    l[GermSLabel] = p[StoredGerm].text() + u' ';

    Pie1.canvas().cls();
    Pie2.canvas().cls();
    const PlanetField pieFields[2][3] = {{IronMC, BoraMC, GermMC}, {StoredIron, StoredBora, StoredGerm}};
    PieBox *pies[2] = {&Pie1, &Pie2};
    for (int pie = 0; pie < 2; ++pie) {
        const QString amounts[3] = {p[pieFields[pie][0]].text(), p[pieFields[pie][1]].text(),
                                    p[pieFields[pie][2]].text()};
        int failed = 0;
        try {
            pies[pie]->draw(amounts, failed);
        } catch (const std::exception &e) {
            throw PanelFillError(row, p[Name].text(), planetFieldName(pieFields[pie][failed]), QString::fromUtf8(e.what()));
        }
    }

    // Old-style reports carry no environment.
    if (d.ReportFormat != 30) {
        for (int label : {Grav1Label, Temp1Label, Rad1Label, Grav2Label, Temp2Label, Rad2Label})
            l[size_t(label)] = QStringLiteral("Unavailable");
        return;
    }
    l[Grav1Label] = p[Gravity].text();
    l[Temp1Label] = p[Temperature].text();
    l[Rad1Label] = p[Radiation].text();
    l[Grav2Label] = p[Gravity2].text();
    l[Temp2Label] = p[Temperature2].text();
    l[Rad2Label] = p[Radiation2].text();
    try {
        fillHabPerRace(d, carry);
    } catch (const HabAxisError &e) {
        throw PanelFillError(row, p[Name].text(), planetFieldName(e.axis), QString::fromUtf8(e.what()));
    } catch (const std::exception &e) {
        throw PanelFillError(row, p[Name].text(), planetFieldName(Gravity), QString::fromUtf8(e.what()));
    }
}

void PlanetDetail::fillHabPerRace(const GameData &d, HabCarry &carry)
{
    // The estimate reads the environment as the "Current" column shows it.
    const double g = conv::val(labels[Grav1Label]);
    const double t = conv::val(labels[Temp1Label]);
    const double r = conv::val(labels[Rad1Label]);
    for (int j = 1; j <= d.PlayerCount; ++j)
        RHab[size_t(j - 1)] = conv::numberText(estimateHab(habBounds(d.player(j)), g, t, r, carry)) + u'%';
}
