// Race colours across the turns of a history: a race keeps its first
// colour when the reports list the races in another order, a race met late
// takes a free colour, and colours the user chose are kept and reserved.

#include "StableRaceColours.h"

#include <QTest>

namespace {

const RaceColours starts = defaultRaceColours();
// The first four start colours, as a user would give them.
const RaceColour red{255, 0, 0}, green{0, 255, 0}, blue{0, 0, 255}, yellow{255, 255, 0};

QStringList racesNamed(int count, const QString &prefix)
{
    QStringList names;
    for (int i = 0; i < count; ++i)
        names << prefix + QString::number(i);
    return names;
}

} // namespace

class StableColoursTest : public QObject {
    Q_OBJECT
private slots:
    void raceKeepsItsColourWhenTheOrderChanges()
    {
        StableRaceColours colours;
        const RaceColours first = colours.nextTurn({"Humans", "Vorn"});
        QCOMPARE(first[0], red);
        QCOMPARE(first[1], green);
        const RaceColours second = colours.nextTurn({"Vorn", "Humans"});
        QCOMPARE(second[0], green);
        QCOMPARE(second[1], red);
        // Columns past the races keep the start colours.
        QCOMPARE(second[2], blue);
    }

    void raceMetInTheThirdTurnTakesAFreeColour()
    {
        StableRaceColours colours;
        colours.nextTurn({"Humans", "Vorn"});
        colours.nextTurn({"Vorn", "Humans"});
        // Krell's column 1 would be red, which the Humans hold.
        const RaceColours third = colours.nextTurn({"Krell", "Humans", "Vorn"});
        QCOMPARE(third[0], blue);
        QCOMPARE(third[1], red);
        QCOMPARE(third[2], green);
        const RaceColours fourth = colours.nextTurn({"Vorn", "Krell"});
        QCOMPARE(fourth[1], blue);
        QCOMPARE(colours.races().size(), size_t(3));
        QCOMPARE(colours.races()[2].name, QString("Krell"));
        // A race met late whose own column colour is free keeps it, as a
        // single load would show it.
        const RaceColours fifth = colours.nextTurn({"Vorn", "Krell", "Humans", "Ashari"});
        QCOMPARE(fifth[3], yellow);
    }

    void goneRacesKeepTheirColours()
    {
        // The Humans are gone in the second turn; their red stays theirs.
        StableRaceColours colours;
        colours.nextTurn({"Humans", "Vorn"});
        const RaceColours second = colours.nextTurn({"Krell", "Vorn"});
        QCOMPARE(second[0], blue);
        QCOMPARE(colours.nextTurn({"Humans"})[0], red);
    }

    void chosenColoursAreKeptAndReserved()
    {
        StableRaceColours colours;
        colours.choose("Vorn", red);
        const RaceColours first = colours.nextTurn({"Humans", "Vorn"});
        // Red is reserved for the Vorn, so the Humans take the first free one;
        // green is free again, since the Vorn do not use it.
        QCOMPARE(first[1], red);
        QCOMPARE(first[0], green);
        colours.choose("Krell", RaceColour{200, 100, 50});
        QCOMPARE(colours.nextTurn({"Krell"})[0], (RaceColour{200, 100, 50}));
    }

    void moreRacesThanColours()
    {
        // With all sixteen colours given, a newcomer takes one that no race
        // of its own turn shows.
        StableRaceColours colours;
        colours.nextTurn(racesNamed(16, "R"));
        // R0 is gone; the newcomer's own column colour, green, is R1's.
        QStringList second = racesNamed(16, "R");
        second.removeFirst();
        second.insert(1, "Newcomer");
        const RaceColours table = colours.nextTurn(second);
        QCOMPARE(table[0], green);
        QCOMPARE(table[1], red);
        for (int k = 2; k < 16; ++k)
            QCOMPARE(table[size_t(k)], starts[size_t(k)]);
    }
};

QTEST_GUILESS_MAIN(StableColoursTest)
#include "tst_stablecolours.moc"
