// What the data windows work out without a display: grid cells, tints and sorts, averages, bounds.

#include "EmpireStatistics.h"
#include "PlanetGridModel.h"

#include <QTest>

namespace {

// Planets named and peopled as given; owners by race column, 0 for none.
GameData gridGame(const QList<std::tuple<QString, Value, int>> &planets)
{
    GameData d;
    for (const auto &[name, population, owner] : planets) {
        PlanetInfo row;
        row[Number] = Value(int(d.Planets.size()) + 1);
        row[Name] = Value(name);
        row[Population] = population;
        if (owner > 0)
            row[OwnerIndex] = Value(owner);
        d.Planets.push_back(row);
    }
    return d;
}

PlayerInfo race(double planets, double population, double iron)
{
    PlayerInfo r;
    r[TotalPlanets] = Value(planets);
    r[TotalPopulation] = Value(population);
    r[TotalIron] = Value(iron);
    r[MinGrav] = Value(0.5);
    r[MaxGrav] = Value(2.0);
    return r;
}

} // namespace

struct RangeRow { int field; QString answer; int result; double stored; };
Q_DECLARE_METATYPE(RangeRow)

class DataTablesTest : public QObject {
    Q_OBJECT
private slots:
    void gridCellsAndTints()
    {
        GameData d = gridGame({{"Home", Value(u"Unknown"), 1}, {"Rock", Value(u"Uninhabited"), 0}});
        d.RaceRGB[0] = {255, 128, 0};
        d.planet(1)[Starbase] = Value(u"None");
        d.planet(2)[OwnerIndex] = Value(u""); // a report without an owner
        PlanetGridModel m;
        m.fill(d);
        const auto colour = [&m](int row, int column, int role) { return m.data(m.index(row, column), role).value<QColor>(); };
        // Exactly "Unknown" shows 0, other texts as they are.
        QCOMPARE(QStringList({m.text(0, 7), m.text(1, 7), m.text(0, 5)}), QStringList({"0", "Uninhabited", "None"}));
        QCOMPARE(QList<QColor>({colour(0, 22, Qt::BackgroundRole), colour(1, 3, Qt::BackgroundRole), colour(1, 3, Qt::ForegroundRole)}),
                 QList<QColor>({QColor(85, 43, 0), Qt::black, Qt::white}));
        // The sixteenth race is tinted like the first, with its own colour.
        d.planet(2)[OwnerIndex] = Value(16);
        m.fill(d);
        QCOMPARE(colour(1, 3, Qt::BackgroundRole), QColor(21, 0, 85));
    }

    void gridSorts_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<int>("order");
        QTest::addColumn<QList<int>>("expected");
        // Texts without a number and "Unknown" count as 0; equal keys keep their order either way.
        QTest::newRow("population ascending") << 7 << int(Qt::AscendingOrder) << QList<int>{2, 3, 5, 4, 1};
        // Case ignored: a case-sensitive sort would put "Delta" before "beta".
        QTest::newRow("name ascending") << 3 << int(Qt::AscendingOrder) << QList<int>{2, 1, 4, 5, 3};
    }

    void gridSorts()
    {
        QFETCH(int, column);
        QFETCH(int, order);
        QFETCH(QList<int>, expected);
        PlanetGridModel m;
        m.fill(gridGame({{"beta", Value(u"1200"), 1}, {"Alpha", Value(u"Uninhabited"), 0},
                         {"gamma", Value(u"Unknown"), 2}, {"Delta", Value(95), 2}, {"epsilon", Value(u"30"), 1}}));
        m.sort(column, Qt::SortOrder(order));
        QList<int> numbers;
        for (int r = 0; r < m.rowCount(); ++r)
            numbers << m.text(r, 0).toInt();
        QCOMPARE(numbers, expected);
        // Rows move whole, with their tint.
        QCOMPARE(m.data(m.index(int(numbers.indexOf(4)), 0), Qt::BackgroundRole).value<QColor>(), QColor(0, 85, 0));
    }

    void empireAveragesFloorAndRound()
    {
        auto averages = empireAverages(race(3, 2000, 20));
        QCOMPARE(averages[0] + ' ' + averages[4], QStringLiteral("666 6.667")); // floored; to 3 decimals
        averages = empireAverages(race(0, 0, 0)); // zeros rather than a division by zero
        QCOMPARE(QStringList(averages.begin(), averages.end()), QStringList(7, QStringLiteral("0")));
    }

    void rangeAnswers_data()
    {
        QTest::addColumn<RangeRow>("row");
        const int stored = int(RangeAnswer::Stored), refused = int(RangeAnswer::Refused);
        QTest::newRow("below the lowest gravity") << RangeRow{int(MinGrav), "0.11", refused, 0.5};
        QTest::newRow("minimum above the maximum") << RangeRow{int(MinGrav), "2.01", refused, 0.5};
        // Fixed ends of the other axes; this race's own temperature and radiation bounds are 0.
        QTest::newRow("lowest temperature") << RangeRow{int(MinTemp), "-200", stored, -200.0};
        QTest::newRow("beyond the highest radiation") << RangeRow{int(MaxRad), "100.01", refused, 0.0};
        QTest::newRow("empty answer") << RangeRow{int(MaxGrav), "", int(RangeAnswer::Unchanged), 2.0};
    }

    void rangeAnswers()
    {
        QFETCH(RangeRow, row);
        const auto &[field, answer, result, stored] = row;
        PlayerInfo r = race(1, 1, 1);
        QCOMPARE(int(applyRangeAnswer(r, field, answer)), result);
        QCOMPARE(r[field].val(), stored);
    }
};

QTEST_GUILESS_MAIN(DataTablesTest)
#include "tst_datatables.moc"
