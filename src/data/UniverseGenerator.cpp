#include "UniverseGenerator.h"

#include "AnnotationFile.h"
#include "GameFolder.h"
#include "Influence.h"
#include "LoadError.h"
#include "MapFile.h"
#include "QuotedText.h"
#include "ReportFile.h"
#include "TerritoryGridBuilder.h"
#include "Tolerances.h"
#include "Version.h"

#include <QFileInfo>
#include <QHash>
#include <cmath>

namespace {

// Where a planet's owner was last read from, for messages about it.
struct Origin {
    QString file;
    int line = 0;
};

QString trimBlanks(const QString &s)
{
    qsizetype from = 0, to = s.size();
    while (from < to && s[from] == u' ')
        ++from;
    while (to > from && s[to - 1] == u' ')
        --to;
    return s.mid(from, to - from);
}

// The report's age field plus the years since the report was exported.
Value addAge(const Value &age, double shift)
{
    if (age.isNumber())
        return Value(age.rawNumber() + shift);
    if (age.isEmpty())
        return Value(shift);
    const auto years = conv::wholeNumber(age.rawText());
    if (!years)
        throw std::runtime_error(QStringLiteral("Type mismatch: the report age %1 is not a number")
                                     .arg(quoted(age.rawText())).toStdString());
    return Value(*years + shift);
}

Value ageText(const Value &age)
{
    return age.val() == 0 ? Value(QStringLiteral("Current")) : Value(age.text() + QStringLiteral(" years old"));
}

// A report's mining rate of -1 means remote mining.
Value miningRate(const Value &rate)
{
    return rate.val() == -1 ? Value(QStringLiteral("Remote")) : rate;
}

// A gate range of -1 has no limit.
Value gateRange(const Value &range)
{
    const double r = range.val();
    return Value(r == -1 ? 10000.0 : r);
}

// Installations, defences, minerals and resources of a report line.
void takeDetails(PlanetInfo &p, ReportFields &f)
{
    p[Mines] = f[8];
    p[Factories] = f[9];
    p[Resources] = f[20];
    p[Defenses] = f[10];
    p[StoredIron] = f[11];
    p[StoredBora] = f[12];
    p[StoredGerm] = f[13];
    for (int k = 14; k <= 16; ++k)
        f[k] = miningRate(f[k]);
    p[IronMR] = f[14];
    p[BoraMR] = f[15];
    p[GermMR] = f[16];
    p[IronMC] = f[17];
    p[BoraMC] = f[18];
    p[GermMC] = f[19];
}

// The environment (now and originally) and the stargate, per-player reports only.
void takeEnvironment(PlanetInfo &p, const ReportFields &f)
{
    for (int k = 0; k < 6; ++k)
        p[Gravity + k] = f[21 + k];
    p[GateRange] = gateRange(f[34]);
}

class Generation {
public:
    Generation(GameData &data, GenerationObserver &observer) : d(data), obs(observer) {}
    void run();

private:
    void readMap();
    void mergeOwnReport();
    void mergeOtherReport(int player);
    // Merges the lines that name a planet of the map; a report none of
    // whose lines does is read all the same, with a warning.
    template <typename MergeLine>
    void forEachReportLine(const QString &path, bool ownReport, MergeLine merge);
    void warnOfCaseTwins(const QString &path);
    void collectRaces();
    void raceStatistics();
    void territoryGrid();
    void attackScores();
    [[noreturn]] void failAtPlanet(int row, const QString &fault) const;

    GameData &d;
    GenerationObserver &obs;
    QHash<QString, std::vector<int>> rowsByName;
    std::vector<Origin> origins;
    std::array<int32_t, MaxPlayers> cellsWon{};
};

void Generation::run()
{
    obs.resetWindow();
    d.PlanetCount = 0;
    d.RaceRGB = defaultRaceColours();
    d.OwnRaceName.clear();
    d.PlayerCount = 0;
    obs.setCaption(windowCaption(d));

    readMap();
    mergeOwnReport();
    if (d.ReportFormat == 30)
        obs.enableFormatMenus();
    for (int k = 1; k <= MaxPlayers; ++k)
        if (k != d.OwnRace && d.GameFiles[size_t(k)].included == u"1")
            mergeOtherReport(k);
    collectRaces();
    if (obs.racesOnly())
        return;
    raceStatistics();
    territoryGrid();
    if (d.ReportFormat == 30)
        estimateTolerancesAndTerritory(d, cellsWon);
    obs.showLegend(d);
    attackScores();
    obs.enableControls(d);
    d.AnnotationText.clear();
    warnOfCaseTwins(d.AnnotationFilePath);
    const LoadedAnnotations annotations = loadAnnotations(d.AnnotationFilePath);
    d.AnnotationText = annotations.text;
    if (annotations.lastColour)
        d.DrawColourIndex = *annotations.lastColour;
}

void Generation::readMap()
{
    const MapCount count = countMapRecords(d.MapFilePath);
    if (count.records == 0)
        throw LoadError(d.MapFilePath, count.lastLine, QStringLiteral("the map lists no planets"));
    d.PlanetCount = count.records;
    d.Planets.assign(size_t(count.records), PlanetInfo());
    d.Players = {};
    origins.assign(size_t(count.records), Origin{});

    try {
        d.UniverseExtent = conv::toInt32((std::floor(count.lastX / 100.0) + 1) * 100);
        conv::toInt32(d.UniverseExtent - 1000.0);
    } catch (const conv::OverflowError &) {
        throw LoadError(d.MapFilePath, count.lastLine,
                        QStringLiteral("Overflow: the last planet's X of %1 is out of range").arg(count.lastX));
    }
    if (d.UniverseExtent == 1000)
        throw LoadError(d.MapFilePath, count.lastLine,
                        QStringLiteral("Division by zero: the last planet's X of %1 gives a universe too "
                                       "small for the territory grid").arg(count.lastX));
    d.GridStep = (d.UniverseExtent - 1000) / 650.0;
    d.GridSize = conv::floorInt32((d.UniverseExtent - 1000) / d.GridStep);
    d.setFullView();

    const std::vector<MapRecord> records = readMapRecords(d.MapFilePath, count.records);
    for (int i = 1; i <= count.records; ++i) {
        const MapRecord &r = records[size_t(i - 1)];
        PlanetInfo &p = d.planet(i);
        p[Number] = Value(r.number);
        try {
            p[X] = Value(conv::toInt32(r.x - 1000.0));
            p[Y] = Value(conv::toInt32(double(d.UniverseExtent) - r.y));
        } catch (const conv::OverflowError &) {
            throw LoadError(d.MapFilePath, r.line, QStringLiteral("Overflow: the planet's position is out of range"));
        }
        p[Name] = Value(r.name);
        std::vector<int> &rows = rowsByName[trimBlanks(r.name)];
        if (rows.size() == size_t(MaxPlanetsOfOneName))
            throw LoadError(d.MapFilePath, r.line, QStringLiteral("more than %1 planets are named %2")
                                                       .arg(MaxPlanetsOfOneName).arg(quoted(r.name)));
        rows.push_back(i);
        origins[size_t(i - 1)] = Origin{d.MapFilePath, r.line};
    }
}

template <typename MergeLine>
void Generation::forEachReportLine(const QString &path, bool ownReport, MergeLine merge)
{
    const int lines = countReportLines(path);
    ReportReader reader(path, ownReport);
    bool namesAPlanet = false;
    for (int n = 0; n < lines; ++n) {
        const QString line = reader.next();
        try {
            ReportFields f = splitReportLine(line);
            const auto rows = rowsByName.constFind(trimBlanks(f[1].text()));
            if (rows == rowsByName.constEnd())
                continue;
            namesAPlanet = true;
            for (int row : *rows)
                if (merge(row, f))
                    origins[size_t(row - 1)] = Origin{path, reader.lastLine()};
        } catch (const std::runtime_error &e) {
            reader.fail(QString::fromUtf8(e.what()));
        }
    }
    if (!namesAPlanet)
        obs.warning(QStringLiteral("%1: no line of it names a planet of the map").arg(path));
}

void Generation::warnOfCaseTwins(const QString &path)
{
    const QFileInfo info(path);
    const QString note = caseTwinsNote(GameFolder(info.path()).matches(info.fileName()));
    if (!note.isEmpty())
        obs.warning(note);
}

void Generation::mergeOwnReport()
{
    const GameFileRow &own = d.GameFiles[size_t(d.OwnRace)];
    const double shift = d.GameYear - conv::val(own.year);
    const bool newFormat = d.ReportFormat == 30;
    forEachReportLine(own.path, true, [&](int row, ReportFields &f) {
        PlanetInfo &p = d.planet(row);
        p[InOwnReport] = Value(1);
        p[Owner] = f[2];
        p[Starbase] = f[3];
        f[4] = addAge(f[4], shift);
        p[ReportAge] = f[4];
        p[AgeText] = ageText(f[4]);
        f[5] = starbaseSubstitute(p[Starbase], f[5]);
        p[Population] = f[5];
        int32_t soi = strengthOfInfluence(p[Population], p[Starbase], f[10]);
        if (soi < 5 && !p[Owner].isBlank())
            soi = 5;
        p[SOI] = Value(soi);
        p[Hab] = Value(f[6].val());
        takeDetails(p, f);
        if (p[Resources].val() != 0)
            d.OwnRaceName = p[Owner].text();
        if (newFormat) {
            p[TerraformedHab] = Value(f[27].val());
            p[OwnField28] = Value(f[28].val());
            takeEnvironment(p, f);
            p[ScannerRange] = Value(f[29].val());
            p[ScannerRange2] = Value(f[30].val());
        }
        return true;
    });
}

void Generation::mergeOtherReport(int player)
{
    const GameFileRow &file = d.GameFiles[size_t(player)];
    const double shift = d.GameYear - conv::val(file.year);
    const bool newFormat = d.ReportFormat == 30;
    forEachReportLine(file.path, false, [&](int row, ReportFields &f) {
        if (f[2].text() == d.OwnRaceName)
            return false;
        PlanetInfo &p = d.planet(row);
        f[4] = addAge(f[4], shift);
        if (!(f[4].val() == 0 || p[ReportAge].isEmpty() || p[ReportAge].val() > f[4].val()))
            return false;
        p[Owner] = f[2];
        p[Starbase] = f[3];
        p[ReportAge] = f[4];
        p[AgeText] = ageText(f[4]);
        f[5] = starbaseSubstitute(p[Starbase], f[5]);
        if (p[OwnerIndex].isBlank() || p[OwnerIndex].val() == 0)
            p[Population] = f[5];
        p[SOI] = Value(strengthOfInfluence(p[Population], p[Starbase], f[10]));
        // "Unknown" in field 7: the line gives no planet details.
        if (!f[7].is(u"Unknown"))
            takeDetails(p, f);
        if (newFormat)
            takeEnvironment(p, f);
        return true;
    });
}

void Generation::failAtPlanet(int row, const QString &fault) const
{
    const Origin &o = origins[size_t(row - 1)];
    throw LoadError(o.file, o.line, fault);
}

void Generation::collectRaces()
{
    for (int i = 1; i <= d.PlanetCount; ++i) {
        const Value &owner = d.planet(i)[Owner];
        if (owner.isBlank())
            continue;
        bool known = false;
        for (int k = 1; k <= d.PlayerCount && !known; ++k)
            known = d.player(k)[RaceName].text() == owner.text();
        if (known)
            continue;
        if (d.PlayerCount == MaxPlayers)
            failAtPlanet(i, QStringLiteral("Subscript out of range: %1 would be a 17th race, "
                                           "and a game has at most 16").arg(quoted(owner.text())));
        ++d.PlayerCount;
        d.player(d.PlayerCount)[RaceName] = Value(owner.text());
        obs.addRace(owner.text());
    }
    for (int i = 1; i <= d.PlanetCount; ++i) {
        PlanetInfo &p = d.planet(i);
        if (p[Owner].isBlank())
            continue;
        for (int k = 1; k <= d.PlayerCount; ++k) {
            if (d.player(k)[RaceName].text() == p[Owner].text()) {
                p[OwnerIndex] = Value(k);
                break;
            }
        }
    }
}

void Generation::raceStatistics()
{
    for (int k = 1; k <= d.PlayerCount; ++k) {
        PlayerInfo &race = d.player(k);
        const QString name = race[RaceName].text();
        double major = 0, planets = 0, population = 0, mines = 0, factories = 0, resources = 0;
        double iron = 0, bora = 0, germ = 0;
        for (int i = 1; i <= d.PlanetCount; ++i) {
            const PlanetInfo &p = d.planet(i);
            if (p[Owner].text() != name)
                continue;
            const double pop = p[Population].val();
            if (pop > 245000)
                ++major;
            ++planets;
            population += pop;
            mines += p[Mines].val();
            factories += p[Factories].val();
            resources += p[Resources].val();
            iron += p[StoredIron].val();
            bora += p[StoredBora].val();
            germ += p[StoredGerm].val();
        }
        race[MajorPlanets] = Value(major);
        race[TotalPlanets] = Value(planets);
        race[TotalPopulation] = Value(population);
        race[TotalMines] = Value(mines);
        race[TotalFactories] = Value(factories);
        race[TotalResources] = Value(resources);
        race[TotalIron] = Value(iron / 1000);
        race[TotalBora] = Value(bora / 1000);
        race[TotalGerm] = Value(germ / 1000);
        race[Territory] = Value(0);
        setToleranceStartValues(race);
    }
}

void Generation::territoryGrid()
{
    std::vector<InfluenceSource> sources;
    for (int i = 1; i <= d.PlanetCount; ++i) {
        const PlanetInfo &p = d.planet(i);
        if (!(p[SOI].val() > 0))
            continue;
        try {
            sources.push_back({conv::toInt16(p[X].val()), conv::toInt16(p[Y].val()),
                               conv::toInt16(p[SOI].val()), conv::toInt16(p[OwnerIndex].val())});
        } catch (const conv::OverflowError &) {
            failAtPlanet(i, QStringLiteral("Overflow: the planet's position does not fit the territory grid"));
        }
    }
    obs.progressStart(d.GridSize + 1);
    cellsWon.fill(0);
    buildTerritoryGrid(sources, d.GridSize, d.GridStep, d.PlayerCount, d.Grid, cellsWon,
                       [this](int gx) { obs.progressValue(gx); });
    for (int k = 1; k <= d.PlayerCount; ++k)
        d.player(k)[Territory] = Value(cellsWon[size_t(k - 1)]);
}

void Generation::attackScores()
{
    for (int i = 1; i <= d.PlanetCount; ++i) {
        PlanetInfo &p = d.planet(i);
        try {
            p[AttackScore] = Value(attackScore(p[Population], p[Starbase], p[Resources]));
        } catch (const conv::OverflowError &) {
            failAtPlanet(i, QStringLiteral("Overflow: the planet's attack score is out of range"));
        }
    }
}

} // namespace

QString windowCaption(const GameData &data)
{
    QString caption = QStringLiteral("Veltro Marches for Stars!   Version %1.%2.%3  { ")
                          .arg(VELTRO_VERSION_MAJOR).arg(VELTRO_VERSION_MINOR).arg(VELTRO_VERSION_PATCH);
    caption += escapeControls(QFileInfo(data.MapFilePath).fileName());
    if (data.GameYear >= 1)
        caption += QStringLiteral("  Year:") + QString::number(data.GameYear);
    return caption + QStringLiteral(" }");
}

void generateUniverse(GameData &data, GenerationObserver &observer)
{
    Generation(data, observer).run();
}

void announceGeneration(const GameData &data, GenerationObserver &observer)
{
    observer.resetWindow();
    observer.setCaption(windowCaption(data));
    if (data.ReportFormat == 30)
        observer.enableFormatMenus();
    for (int k = 1; k <= data.PlayerCount; ++k)
        observer.addRace(data.player(k)[RaceName].text());
    observer.showLegend(data);
    observer.enableControls(data);
}
