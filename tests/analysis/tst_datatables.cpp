// What the data windows work out, without a display: the planet grid's
// cells, tints and sort orders, the empire averages and the checks on a new
// habitability bound, and the race colour rule.

#include "EmpireStatistics.h"
#include "PlanetGridModel.h"
#include "RaceColourChoice.h"

#include <QTest>

namespace {

struct GridPlanet {
    int number;
    QString name;
    Value population;
    int owner; // race column, 0 for none
};

// A game of these planets, owned by races 1 and 2.
GameData gridGame(const QList<GridPlanet> &planets)
{
    GameData d;
    d.PlayerCount = 2;
    d.player(1)[RaceName] = Value(u"Humans");
    d.player(2)[RaceName] = Value(u"Vorn");
    for (const GridPlanet &p : planets) {
        PlanetInfo row;
        row[Number] = Value(p.number);
        row[Name] = Value(p.name);
        row[Population] = p.population;
        if (p.owner > 0)
            row[OwnerIndex] = Value(p.owner);
        d.Planets.push_back(row);
    }
    d.PlanetCount = int(planets.size());
    return d;
}

// The planet numbers down the grid.
QList<int> numbers(const PlanetGridModel &m)
{
    QList<int> n;
    for (int r = 0; r < m.rowCount(); ++r)
        n << m.text(r, 0).toInt();
    return n;
}

PlayerInfo race(double planets, double population, double iron)
{
    PlayerInfo r;
    r[RaceName] = Value(u"Vorn");
    r[TotalPlanets] = Value(planets);
    r[TotalPopulation] = Value(population);
    r[TotalIron] = Value(iron);
    r[MinGrav] = Value(0.5);
    r[MaxGrav] = Value(2.0);
    r[MinTemp] = Value(-40);
    r[MaxTemp] = Value(60);
    return r;
}

} // namespace

class DataTablesTest : public QObject {
    Q_OBJECT
private slots:
    void gridCellsAndTints()
    {
        GameData d = gridGame({{1, "Home", Value(u"Unknown"), 1}, {2, "Rock", Value(u"Uninhabited"), 0}});
        d.RaceRGB[0] = {255, 128, 0};
        d.planet(1)[Starbase] = Value(u"None");
        d.planet(1)[Hab] = Value(42.5);
        d.planet(2)[OwnerIndex] = Value(u""); // a report without an owner
        PlanetGridModel m;
        m.fill(d);

        QCOMPARE(m.rowCount(), 2);
        QCOMPARE(m.columnCount(), 23);
        QCOMPARE(m.headerData(8, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("SOI "));
        QCOMPARE(m.headerData(22, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Germ MC"));
        QCOMPARE(planetGridColumn(5).widthTwips, 1500);

        QCOMPARE(m.text(0, 7), QStringLiteral("0"));            // exactly "Unknown"
        QCOMPARE(m.text(1, 7), QStringLiteral("Uninhabited")); // other texts as they are
        QCOMPARE(m.text(0, 5), QStringLiteral("None"));
        QCOMPARE(m.text(0, 9), QStringLiteral("42.5"));
        QCOMPARE(m.text(1, 9), QString());

        const QModelIndex owned = m.index(0, 22), unowned = m.index(1, 3);
        QCOMPARE(m.data(owned, Qt::BackgroundRole).value<QColor>(), QColor(85, 43, 0));
        QCOMPARE(m.data(unowned, Qt::BackgroundRole).value<QColor>(), QColor(Qt::black));
        QCOMPARE(m.data(unowned, Qt::ForegroundRole).value<QColor>(), QColor(Qt::white));

        // The snapshot does not follow later changes to the game data.
        d.RaceRGB[0] = {0, 0, 255};
        QCOMPARE(m.data(owned, Qt::BackgroundRole).value<QColor>(), QColor(85, 43, 0));
    }

    void gridSorts_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<int>("order");
        QTest::addColumn<QList<int>>("expected");
        // Population: texts without a number and "Unknown" count as 0; equal
        // keys keep their order whichever the direction.
        QTest::newRow("population ascending") << 7 << int(Qt::AscendingOrder) << QList<int>{2, 3, 5, 4, 1};
        QTest::newRow("population descending") << 7 << int(Qt::DescendingOrder) << QList<int>{1, 4, 5, 2, 3};
        // Names ignore case: a case-sensitive sort would put "Delta" before "beta".
        QTest::newRow("name ascending") << 3 << int(Qt::AscendingOrder) << QList<int>{2, 1, 4, 5, 3};
        QTest::newRow("name descending") << 3 << int(Qt::DescendingOrder) << QList<int>{3, 5, 4, 1, 2};
        // "#" is a number column: 10 after 9.
        QTest::newRow("number descending") << 0 << int(Qt::DescendingOrder) << QList<int>{5, 4, 3, 2, 1};
    }

    void gridSorts()
    {
        QFETCH(int, column);
        QFETCH(int, order);
        QFETCH(QList<int>, expected);
        GameData d = gridGame({{1, "beta", Value(u"1200"), 1},
                               {2, "Alpha", Value(u"Uninhabited"), 0},
                               {3, "gamma", Value(u"Unknown"), 2},
                               {4, "Delta", Value(95), 2},
                               {5, "epsilon", Value(u"30"), 1}});
        if (column == 0)
            d.planet(5)[Number] = Value(10);
        PlanetGridModel m;
        m.fill(d);
        m.sort(column, Qt::SortOrder(order));
        QList<int> got = numbers(m);
        if (column == 0)
            std::replace(got.begin(), got.end(), 10, 5);
        QCOMPARE(got, expected);
        // Rows move whole, with their tint.
        const int row = int(got.indexOf(4));
        QCOMPARE(m.data(m.index(row, 0), Qt::BackgroundRole).value<QColor>(), QColor(0, 85, 0));
    }

    void sortKindsByColumn()
    {
        QList<int> textColumns;
        for (int c = 0; c < PlanetGridColumns; ++c)
            if (!sortsAsNumber(c))
                textColumns << c;
        QCOMPARE(textColumns, (QList<int>{3, 4, 5, 6}));
    }

    void empireAveragesFloorAndRound()
    {
        auto averages = empireAverages(race(3, 2000, 20));
        QCOMPARE(averages[0], QStringLiteral("666"));   // 666.67 floored
        QCOMPARE(averages[4], QStringLiteral("6.667")); // 6.66667 to 3 decimals
        // No planets: zeros rather than a division by zero.
        averages = empireAverages(race(0, 0, 0));
        for (const QString &a : averages)
            QCOMPARE(a, QStringLiteral("0"));
    }

    void rangeAnswers_data()
    {
        QTest::addColumn<int>("field");
        QTest::addColumn<QString>("answer");
        QTest::addColumn<int>("result");
        QTest::addColumn<double>("stored");
        const int stored = int(RangeAnswer::Stored), refused = int(RangeAnswer::Refused);
        QTest::newRow("0.125 rounds to the lowest gravity") << int(MinGrav) << "0.125" << stored << 0.12;
        QTest::newRow("below the lowest gravity") << int(MinGrav) << "0.11" << refused << 0.5;
        QTest::newRow("minimum up to the maximum") << int(MinGrav) << "2" << stored << 2.0;
        QTest::newRow("minimum above the maximum") << int(MinGrav) << "2.01" << refused << 0.5;
        QTest::newRow("highest gravity") << int(MaxGrav) << "8" << stored << 8.0;
        QTest::newRow("beyond the highest gravity") << int(MaxGrav) << "8.01" << refused << 2.0;
        QTest::newRow("maximum below the minimum") << int(MaxGrav) << "0.4" << refused << 2.0;
        QTest::newRow("leading number") << int(MaxTemp) << "75 degrees" << stored << 75.0;
        QTest::newRow("lowest temperature") << int(MinTemp) << "-200" << stored << -200.0;
        QTest::newRow("below the lowest temperature") << int(MinTemp) << "-200.01" << refused << -40.0;
        QTest::newRow("no number is 0") << int(MinRad) << "none" << stored << 0.0;
        QTest::newRow("empty answer") << int(MaxRad) << "" << int(RangeAnswer::Unchanged) << 0.0;
    }

    void rangeAnswers()
    {
        QFETCH(int, field);
        QFETCH(QString, answer);
        QFETCH(int, result);
        QFETCH(double, stored);
        PlayerInfo r = race(1, 1, 1);
        QCOMPARE(int(applyRangeAnswer(r, field, answer)), result);
        QCOMPARE(r[field].val(), stored);
    }

    void raceColourRule()
    {
        QVERIFY(!brightEnough(63, 64, 64));
        QVERIFY(brightEnough(64, 64, 64));
        GameData d = gridGame({});
        QCOMPARE(raceColumnNamed(d, "Vorn"), 2);
        QCOMPARE(raceColumnNamed(d, "vorn"), 0);
        storeRaceColour(d, 2, 64, 64, 64);
        QCOMPARE(d.raceColour(2), 64 + 256 * 64 + 65536 * 64);
    }
};

QTEST_GUILESS_MAIN(DataTablesTest)
#include "tst_datatables.moc"
