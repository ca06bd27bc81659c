// The territory grid: cells worked out by hand, and the fast builder
// against the plain every-cell-every-source loop on the real maps.

#include "MapFile.h"
#include "ReferenceTerritoryGrid.h"
#include "TestGame.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTest>

namespace {

using Sources = std::vector<InfluenceSource>;

using Won = std::array<int32_t, MaxPlayers>;

// Every cell, and when given every race's count of cells won, must match the plain loop.
void compareWithReference(const TerritoryGrid &grid, const Won *won, const Sources &sources, int size, double step)
{
    TerritoryGrid expected;
    Won expectedWon{};
    referenceTerritoryGrid(sources, size, step, MaxPlayers, expected, expectedWon);
    for (int gx = 0; gx <= size; ++gx)
        for (int gy = 0; gy <= size; ++gy)
            if (grid.owner(gx, gy) != expected.owner(gx, gy) || grid.strength(gx, gy) != expected.strength(gx, gy))
                QFAIL(qPrintable(QString("cell (%1, %2): %3/%4, expected %5/%6").arg(gx).arg(gy).arg(grid.owner(gx, gy))
                                     .arg(grid.strength(gx, gy)).arg(expected.owner(gx, gy)).arg(expected.strength(gx, gy))));
    QVERIFY(!won || *won == expectedWon);
}

} // namespace

class TerritoryTest : public QObject {
    Q_OBJECT

private slots:
    // A grid with a step of one light year: cell (gx, gy) lies at (gx, gy).
    void cells_data()
    {
        QTest::addColumn<QList<QList<int>>>("sources"); // x, y, soi, owner
        QTest::addColumn<QList<QList<int>>>("cells");   // gx, gy, owner, strength
        QTest::newRow("reach of 150") << QList<QList<int>>{{200, 200, 100, 1}}
                                      << QList<QList<int>>{{200, 200, 1, 100}, {350, 200, 1, 9}, {351, 200, 0, 0},
                                                           {200, 50, 1, 9}, {306, 306, 1, 9}, {307, 307, 0, 0},
                                                           {320, 200, 1, 24}};
        QTest::newRow("tie to the lower column") << QList<QList<int>>{{100, 100, 50, 2}, {300, 100, 50, 1}}
                                                 << QList<QList<int>>{{200, 100, 1, 50}, {199, 100, 2, 50}};
        QTest::newRow("no total above 0") << QList<QList<int>>{{100, 100, 50, 0}, {300, 300, 10, 1}}
                                          << QList<QList<int>>{{100, 100, 0, 0}, {450, 300, 0, 0}, {300, 440, 1, 1}};
    }
    void cells()
    {
        QFETCH(QList<QList<int>>, sources);
        QFETCH(QList<QList<int>>, cells);
        Sources list;
        for (const QList<int> &s : sources)
            list.push_back({int16_t(s[0]), int16_t(s[1]), int16_t(s[2]), int16_t(s[3])});
        TerritoryGrid grid;
        Won won{};
        buildTerritoryGrid(list, 500, 1.0, MaxPlayers, grid, won);
        for (const QList<int> &c : cells)
            QCOMPARE(QList<int>({c[0], c[1], grid.owner(c[0], c[1]), grid.strength(c[0], c[1])}), c);
        compareWithReference(grid, &won, list, 500, 1.0);
    }

    void realMaps_data()
    {
        QTest::addColumn<QString>("map");
        for (const char *map : {"huge-packed-00001.map", "small-normal-00001.map", "tiny-packed-00001.map",
                                "tiny-sparse-00001.map"})
            QTest::newRow(map) << QString::fromLatin1(map);
    }
    // A game on the real map with every planet owned by one of 16 races;
    // then many random sources, some stacked, some without an owner.
    void realMaps()
    {
        QFETCH(QString, map);
        TestGame game;
        const QString source = QDir(VELTRO_TEST_MAPS).filePath(map);
        QVERIFY2(QFile::copy(source, game.path("game.map")), qPrintable(source + ": missing test map"));
        QRandomGenerator random(uint(qHash(map)));
        const char *starbases[] = {"None", "None", "Space Dock", "Death Star"};
        QList<QByteArray> lines;
        for (const MapRecord &r : readMapRecords(game.path("game.map"), countMapRecords(game.path("game.map")).records))
            lines << planetLine(r.name, QString("Race %1").arg(lines.size() % 16 + 1), starbases[random.bounded(4)], "0",
                                QString::number(random.bounded(3000000)), {{10, QString("%1%").arg(random.bounded(100))}});
        game.writeReport("game.P1", lines);
        GameData d;
        QCOMPARE(game.load(d), QString());
        QCOMPARE(d.PlayerCount, 16);
        Sources sources, random16;
        for (const PlanetInfo &p : d.Planets) {
            if (p[SOI].val() > 0)
                sources.push_back({int16_t(p[X].val()), int16_t(p[Y].val()), int16_t(p[SOI].val()),
                                   int16_t(p[OwnerIndex].val())});
            for (int copies = random.bounded(1, 4); copies > 0; --copies)
                random16.push_back({int16_t(p[X].val()), int16_t(p[Y].val()), int16_t(random.bounded(1, 101)),
                                    int16_t(random.bounded(17))});
        }
        compareWithReference(d.Grid, nullptr, sources, d.GridSize, d.GridStep);
        TerritoryGrid grid;
        Won won{};
        buildTerritoryGrid(random16, d.GridSize, d.GridStep, MaxPlayers, grid, won);
        compareWithReference(grid, &won, random16, d.GridSize, d.GridStep);
    }

    // A last planet left of the origin gives a negative step: cells run backwards.
    void negativeStep()
    {
        QRandomGenerator random(7);
        Sources sources;
        for (int i = 0; i < 60; ++i)
            sources.push_back({int16_t(-random.bounded(401)), int16_t(-random.bounded(401)),
                               int16_t(random.bounded(1, 101)), int16_t(random.bounded(1, 5))});
        TerritoryGrid grid;
        Won won{};
        buildTerritoryGrid(sources, 650, -400 / 650.0, MaxPlayers, grid, won);
        compareWithReference(grid, &won, sources, 650, -400 / 650.0);
    }
};

QTEST_GUILESS_MAIN(TerritoryTest)
#include "tst_territory.moc"
