// The planet detail panel filled from hand-made planets: labels, pies, habs.

#include "PlanetDetail.h"
#include "TraceScene.h"

#include <QTest>
#include <clocale>
#include <numbers>

namespace {

void addWideRace(GameData &d, const QString &name)
{
    PlayerInfo &race = d.player(++d.PlayerCount);
    race[RaceName] = Value(name);
    for (int f = MinGrav; f <= MaxRad; ++f)
        race[f] = Value(QList<double>{0.12, 8, -200, 200, 0, 100}[f - MinGrav]);
}

QString label(const PlanetDetail &p, DetailLabel l) { return p.labels[size_t(l)]; }

QStringList labelTexts(const PlanetDetail &p, std::initializer_list<DetailLabel> which)
{
    QStringList out;
    for (DetailLabel l : which)
        out << label(p, l);
    return out;
}

QString fillError(PlanetDetail &panel, const GameData &d, int planet, HabCarry &carry)
{
    try {
        panel.fill(d, planet, carry);
    } catch (const PanelFillError &e) {
        return e.message;
    }
    return {};
}

QList<double> degreesOf(const std::vector<PieSlice> &slices)
{
    QList<double> out;
    for (const PieSlice &s : slices)
        out << qRound(s.start * 180 / std::numbers::pi * 1000) / 1000.0 << qRound(s.end * 180 / std::numbers::pi * 1000) / 1000.0;
    return out;
}

} // namespace

class DetailTest : public QObject {
    Q_OBJECT
private slots:
    // Numbers read the same under a decimal comma: "2.5" is two and a half.
    void initTestCase() { QVERIFY2(std::setlocale(LC_ALL, "de_DE.UTF-8"), "de_DE.UTF-8: run scripts/install-deps.sh"); }

    // A fully reported planet, then one never reported without an owner.
    void labels()
    {
        GameData d = smallGame();
        addPlanet(d, 1, 1, "  3 years old ",
                  {{Name, u"Alpha"}, {Owner, u"Humans"}, {Starbase, u"Space Dock"}, {Population, 12300.0},
                   {Hab, 0.1 + 0.2}, {SOI, 37.0}, {IronMR, u"Remote"}, {BoraMR, 12.0}, {IronMC, 30.0},
                   {StoredGerm, u"Unknown"}, {AttackScore, 17}, {Defenses, u"45%"}});
        addPlanet(d, 2, 2, {}, {{Name, u"Beta"}, {Hab, 80.0}});
        PlanetDetail panel;
        HabCarry carry;
        panel.fill(d, 1, carry);
        // Numbers as the exports write them: the shortest text that reads back.
        const auto shown = {ReportAgeLabel, HabValueLabel, OwnerLabel, SoiLabel, IronMrLabel};
        QCOMPARE(labelTexts(panel, shown), QStringList({"3 years old", "0.30000000000000004%", "Humans", "37 l.y.", "Remote "}));
        QCOMPARE(labelTexts(panel, {StarsScoreLabel, IronMctLabel, BoraMctLabel, BoraMrLabel, GermMrLabel, GermSLabel}),
                 QStringList({"17", "30 ", " ", "Remote ", "Remote ", "Unknown "}));
        panel.fill(d, 2, carry);
        QCOMPARE(labelTexts(panel, shown), QStringList({"Unexplored", "?%", "None", "0 l.y.", " "}));
    }

    // The ore pie's slices; where the amounts make no pie (a total rounding
    // to 0) the fill stops naming planet and field.
    void pies_data()
    {
        QTest::addColumn<QStringList>("amounts");
        QTest::addColumn<QList<double>>("degrees");
        QTest::addColumn<QString>("failure");
        QTest::newRow("30 30 40") << QStringList{"30", "30", "40"} << QList<double>{1, 108, 108, 216, 216, 360} << "";
        QTest::newRow("no ironium: the long way round")
            << QStringList{"0", "50", "50"} << QList<double>{1, 0, 0, 180, 180, 360} << "";
        QTest::newRow("all 0") << QStringList{"0", "0", "0"} << QList<double>{} << "";
        QTest::newRow("halves to even") << QStringList{"2.5", "1.5", "0"} << QList<double>{1, 180, 180, 360, 360, 360} << "";
        QTest::newRow("rounds to 0") << QStringList{"0.4", "0.2", "0.5"} << QList<double>{}
                                     << "planet 1 \"Rock\": IronMC: Division by zero";
    }
    void pies()
    {
        QFETCH(QStringList, amounts);
        QFETCH(QString, failure);
        GameData d = smallGame();
        addPlanet(d, 1, 1, "Current", {{Name, u"Rock"}, {IronMC, amounts[0]}, {BoraMC, amounts[1]},
                                       {GermMC, amounts[2]}, {StoredIron, 1.0}});
        PlanetDetail panel;
        HabCarry carry;
        QCOMPARE(fillError(panel, d, 1, carry), failure);
        if (!failure.isEmpty()) {
            QCOMPARE(labelTexts(panel, {PlanetNameLabel, Grav1Label}), QStringList({"Rock", ""}));
            return;
        }
        QTEST(degreesOf(panel.Pie1.slices()), "degrees");
    }

    // Every race scored on the "Current" environment; a planet without a
    // gravity reading scores what the click carried.
    void habPerRace()
    {
        GameData d = smallGame();
        addWideRace(d, "Wide");
        addWideRace(d, "Narrow");
        d.player(2)[MaxTemp] = Value(0.0); // centre -100: a planet at 0 degrees lies on the bound
        addPlanet(d, 1, 1, "Current", {{Gravity, u"0.96"}, {Temperature, u"0"}, {Radiation, u"50mR"},
                                       {Gravity2, u"1.2"}});
        addPlanet(d, 2, 2, "Current", {{Gravity, u"Unknown"}});
        PlanetDetail panel;
        panel.nameRaces(d);
        QCOMPARE(QStringList({panel.RName[1], panel.RName[2]}), QStringList({"Narrow", ""}));
        HabCarry fresh;
        panel.fill(d, 2, fresh);
        QCOMPARE(panel.RHab[0], "0%");
        HabCarry carry;
        panel.fill(d, 1, carry);
        QCOMPARE(label(panel, Grav2Label), "1.2");
        QCOMPARE(QList<QString>({panel.RHab[0], panel.RHab[1], panel.RHab[2]}), QList<QString>({"100%", "66%", ""}));
        panel.fill(d, 2, carry); // carries the last race's ratios (1, 0, 1)
        QCOMPARE(panel.RHab[0], "66%");
    }
};

QTEST_GUILESS_MAIN(DetailTest)
#include "tst_detail.moc"
