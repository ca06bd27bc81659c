// Race colours kept across a history's turns.

#include "StableRaceColours.h"

#include <QColor>
#include <QTest>

namespace {

// A colour as a row writes it: the number of the start colour it is, or #rrggbb.
QString colourName(const RaceColour &c)
{
    const RaceColours starts = defaultRaceColours();
    const auto found = std::find(starts.begin(), starts.end(), c);
    return found != starts.end() ? QString::number(found - starts.begin()) : QColor(c[0], c[1], c[2]).name();
}

QString racesNamed(int from, int to)
{
    QStringList names;
    for (int i = from; i <= to; ++i)
        names << QString("R%1").arg(i);
    return names.join(u' ');
}

} // namespace

class StableColoursTest : public QObject {
    Q_OBJECT
private slots:
    // Turns of races by column; each turn's first colours (start colours by number: 0 red, 1 green, 2 blue,
    // 3 yellow); every race met, in order.
    void turns_data()
    {
        QTest::addColumn<QStringList>("turns");
        QTest::addColumn<QStringList>("colours");
        QTest::addColumn<QString>("met");
        // Krell's column 0 would be red, which the Humans hold; Ashari's own column colour is free, so it keeps
        // it, as a single load would show it. Columns past the races keep the start colours.
        QTest::newRow("met in the third turn")
            << QStringList{"Humans Vorn", "Vorn Humans", "Krell Humans Vorn", "Vorn Krell", "Vorn Krell Humans Ashari"}
            << QStringList{"0 1", "1 0 2", "2 0 1", "1 2", "1 2 0 3"} << "Humans Vorn Krell Ashari";
        // With all sixteen colours given, a newcomer takes one that no race of its own turn shows: R0 is gone,
        // and its own column's green is R1's.
        QTest::newRow("more races than colours")
            << QStringList{racesNamed(0, 15), "R1 Newcomer " + racesNamed(2, 15)}
            << QStringList{"0 1 2", "1 0 2 3 4 5 6 7 8 9 10 11 12 13 14 15"}
            << racesNamed(0, 15) + " Newcomer";
    }
    void turns()
    {
        QFETCH(QStringList, turns);
        QFETCH(QStringList, colours);
        StableRaceColours stable;
        for (int t = 0; t < turns.size(); ++t) {
            const RaceColours table = stable.nextTurn(turns[t].split(u' '));
            QStringList seen;
            while (seen.size() < colours[t].count(u' ') + 1)
                seen << colourName(table[size_t(seen.size())]);
            QCOMPARE(seen.join(u' '), colours[t]);
        }
        QStringList met;
        for (const StableRaceColours::Race &race : stable.races())
            met << race.name;
        QTEST(met.join(u' '), "met");
    }
};

QTEST_GUILESS_MAIN(StableColoursTest)
#include "tst_stablecolours.moc"
