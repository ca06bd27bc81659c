#include "PlanetReport.h"

#include <QRandomGenerator>
#include <QStringList>
#include <algorithm>
#include <cmath>

namespace gamegen {

namespace {

// Titles without commas: the header is skipped with an item read.
const char *const Titles[] = {
    "Planet Name", "Owner", "Starbase", "Report Age", "Population", "Value", "Details", "Mines",
    "Factories", "Def Coverage", "Surface Ironium", "Surface Boranium", "Surface Germanium",
    "Ironium MR", "Boranium MR", "Germanium MR", "Ironium MC", "Boranium MC", "Germanium MC",
    "Resources", "Gravity", "Temperature", "Radiation", "Orig Gravity", "Orig Temperature",
    "Orig Radiation", "Terra Value", "Capacity", "Scan Range", "Pen Scan Range", "Driver",
    "Driver Warp", "Route", "Gate Range", "Gate Mass", "Damage", "Spare",
};
constexpr int FullFields = 37;
constexpr int OldStyleFields = 20;
// Ships have passed the planets this far beyond the scanners' reach.
constexpr double ExploredMargin = 200;

// 0.12g .. 8.00g on a logarithmic scale, about 1g in the middle.
QString gravityText(int click)
{
    return QString::number(0.12 * std::pow(8.0 / 0.12, click / 100.0), 'f', 2) + u'g';
}

QString temperatureText(int click)
{
    return QString::number(-200 + 4 * click) + QStringLiteral("\u00b0C");
}

QString radiationText(int click)
{
    return QString::number(click) + QStringLiteral("mR");
}

// "38.54%", "100%", "0%".
QString percent(double v)
{
    QString s = QString::number(v, 'f', 2);
    while (s.endsWith(u'0'))
        s.chop(1);
    if (s.endsWith(u'.'))
        s.chop(1);
    return s + u'%';
}

struct Line {
    QString name;
    int planet;
    QString text;
};

class ReportBuilder {
public:
    ReportBuilder(const GameModel &game, int race, int exportYear, ReportLayout layout, quint32 seed)
        : g(game), r(race), race(game.races[size_t(race)]), year(exportYear),
          fieldCount(layout == ReportLayout::PerPlayer ? FullFields : OldStyleFields), rng(seed)
    {
    }
    QByteArray build();

private:
    double nearestScanner(int planet) const;
    QString ownLine(int planet);
    QString sighting(int planet, int age, bool deep);
    void details(int planet, int population);
    void environment(int planet);
    QString joined() const;

    const GameModel &g;
    const int r;
    const Race &race;
    const int year;
    const int fieldCount;
    QRandomGenerator rng;
    std::vector<int> scanners;
    std::vector<QString> f; // fields 1..37, index 0 unused
};

QByteArray ReportBuilder::build()
{
    for (size_t i = 0; i < g.planets.size(); ++i)
        if (g.ownerIn(int(i), year) == r && g.planets[i].scanner)
            scanners.push_back(int(i));

    std::vector<Line> lines;
    for (int p = 0; p < int(g.planets.size()); ++p) {
        const double reach = nearestScanner(p);
        QString text;
        if (g.ownerIn(p, year) == r)
            text = ownLine(p);
        else if (reach <= race.scanRange || g.planets[size_t(p)].remoteMinedBy == r)
            text = sighting(p, 0, reach <= race.penRange || g.planets[size_t(p)].remoteMinedBy == r);
        else if (reach <= race.scanRange + ExploredMargin && year > FirstYear && rng.generateDouble() < 0.7)
            text = sighting(p, 1 + int(rng.bounded(quint32(std::min(14, year - FirstYear)))), false);
        if (!text.isEmpty())
            lines.push_back({g.map[size_t(p)].name, p, text});
    }
    // The game lists planets by name.
    std::sort(lines.begin(), lines.end(), [](const Line &a, const Line &b) {
        const int c = a.name.compare(b.name, Qt::CaseInsensitive);
        return c != 0 ? c < 0 : a.planet < b.planet;
    });

    QStringList titles;
    for (int i = 0; i < fieldCount; ++i)
        titles << QString::fromLatin1(Titles[i]);
    QString out = titles.join(u'\t') + QStringLiteral("\r\n");
    for (const Line &line : lines)
        out += line.text + QStringLiteral("\r\n");
    // Windows-1252 and Latin-1 agree on every character written here (° is 0xB0).
    return out.toLatin1();
}

double ReportBuilder::nearestScanner(int planet) const
{
    double best = 1e300;
    for (int s : scanners)
        best = std::min(best, distance(g.map[size_t(s)], g.map[size_t(planet)]));
    return best;
}

QString ReportBuilder::ownLine(int planet)
{
    const PlanetState &s = g.planets[size_t(planet)];
    const int population = g.populationIn(planet, year);
    const QString starbase = g.starbaseIn(planet, year);
    const int value = habValue(race, s.current);
    f.assign(FullFields + 1, QString());
    f[1] = g.map[size_t(planet)].name;
    f[2] = race.name;
    f[3] = starbase;
    f[4] = QStringLiteral("0");
    f[5] = QString::number(population);
    f[6] = QString::number(value) + u'%';
    f[7] = QStringLiteral("Full");
    details(planet, population);
    // A planet's resources: one per thousand colonists plus its factories.
    f[20] = QString::number(population / 1000 + f[9].toInt());
    environment(planet);
    f[28] = QString::number(population / (std::max(5, value) * 100)); // percent of capacity
    f[29] = QString::number(s.scanner ? race.scanRange : 0);
    f[30] = QString::number(s.scanner ? race.penRange : 0);
    for (int k : {31, 32, 33, 34, 35, 36, 37})
        f[size_t(k)] = QStringLiteral("0");
    if (!starbase.isEmpty())
        f[34] = QString::number(s.gateRange);
    return joined();
}

// A planet seen by another race's scanners or passing ships, `age` years
// before the report was exported.
QString ReportBuilder::sighting(int planet, int age, bool deep)
{
    const PlanetState &s = g.planets[size_t(planet)];
    const int then = year - age;
    const int owner = g.ownerIn(planet, then);
    const QString value = QString::number(habValue(race, s.current)) + u'%';
    const QString name = g.map[size_t(planet)].name;
    // Of some empty worlds passed long ago only their value is remembered.
    if (owner < 0 && age > 0 && rng.generateDouble() < 0.5)
        return name + QStringLiteral("\t\t\t") + QString::number(age) + QStringLiteral("\t\t") + value;

    f.assign(FullFields + 1, QString());
    const QString starbase = g.starbaseIn(planet, then);
    f[1] = name;
    f[3] = starbase;
    f[4] = QString::number(age);
    f[6] = value;
    if (owner >= 0) {
        f[2] = g.races[size_t(owner)].name;
        // Scanners often see a starbase but not the colonists below it.
        const double roll = rng.generateDouble();
        f[5] = starbase.isEmpty() || roll >= 0.5 ? QString::number(g.populationIn(planet, then))
               : roll < 0.4                      ? QStringLiteral("0")
                                                 : QString();
    }
    if (deep) {
        f[7] = QStringLiteral("Scanned");
        details(planet, g.populationIn(planet, then));
    }
    environment(planet);
    if (!starbase.isEmpty() && s.gateRange != 0)
        f[34] = QString::number(s.gateRange);
    return joined();
}

// Installations, minerals and mining, scaled to the population of the day.
void ReportBuilder::details(int planet, int population)
{
    const PlanetState &s = g.planets[size_t(planet)];
    const double share = s.population > 0 ? double(population) / s.population : 0.0;
    const int mines = int(s.mines * share);
    f[8] = QString::number(mines);
    f[9] = QString::number(int(s.factories * share));
    f[10] = percent(100 * (1 - std::pow(0.98, population > 0 ? s.defences : 0)));
    for (int k = 0; k < 3; ++k) {
        f[size_t(11 + k)] = QString::number(s.surface[size_t(k)]);
        f[size_t(14 + k)] = s.remoteMinedBy == r ? QStringLiteral("-1")
                                                 : QString::number(mines * s.concentration[size_t(k)] / 100);
        f[size_t(17 + k)] = QString::number(s.concentration[size_t(k)]);
    }
}

void ReportBuilder::environment(int planet)
{
    const PlanetState &s = g.planets[size_t(planet)];
    f[21] = gravityText(s.current[0]);
    f[22] = temperatureText(s.current[1]);
    f[23] = radiationText(s.current[2]);
    f[24] = gravityText(s.original[0]);
    f[25] = temperatureText(s.original[1]);
    f[26] = radiationText(s.original[2]);
    f[27] = QString::number(habValue(race, terraformed(race, s.current)));
}

// Every field followed by a tab, so the last one is read too.
QString ReportBuilder::joined() const
{
    QString line;
    for (int i = 1; i <= fieldCount; ++i)
        line += f[size_t(i)] + u'\t';
    return line;
}

} // namespace

QByteArray planetReport(const GameModel &game, int race, int exportYear, ReportLayout layout, quint32 seed)
{
    return ReportBuilder(game, race, exportYear, layout, seed).build();
}

} // namespace gamegen
