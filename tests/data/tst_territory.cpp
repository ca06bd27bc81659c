// The territory grid: single cells worked out by hand, and the fast
// builder against the plain every-cell-every-source loop on the real maps.

#include "MapFile.h"
#include "ReferenceTerritoryGrid.h"
#include "TestGame.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTest>

namespace {

struct Grid {
    TerritoryGrid cells;
    std::array<int32_t, MaxPlayers> won{};
};

Grid fastGrid(const std::vector<InfluenceSource> &sources, int size, double step, int players)
{
    Grid g;
    buildTerritoryGrid(sources, size, step, players, g.cells, g.won);
    return g;
}

// Every cell and every race's count of cells must match the plain loop.
void compareWithReference(const Grid &fast, const std::vector<InfluenceSource> &sources, int size, double step,
                          int players)
{
    Grid slow;
    referenceTerritoryGrid(sources, size, step, players, slow.cells, slow.won);
    for (int gx = 0; gx <= size; ++gx)
        for (int gy = 0; gy <= size; ++gy)
            if (fast.cells.owner(gx, gy) != slow.cells.owner(gx, gy)
                || fast.cells.strength(gx, gy) != slow.cells.strength(gx, gy))
                QFAIL(qPrintable(QString("cell (%1, %2): %3/%4, expected %5/%6").arg(gx).arg(gy)
                                     .arg(fast.cells.owner(gx, gy)).arg(fast.cells.strength(gx, gy))
                                     .arg(slow.cells.owner(gx, gy)).arg(slow.cells.strength(gx, gy))));
    for (int k = 0; k < MaxPlayers; ++k)
        QCOMPARE(fast.won[size_t(k)], slow.won[size_t(k)]);
}

std::vector<InfluenceSource> sourcesOf(const GameData &d)
{
    std::vector<InfluenceSource> sources;
    for (const PlanetInfo &p : d.Planets)
        if (p[SOI].val() > 0)
            sources.push_back({int16_t(p[X].val()), int16_t(p[Y].val()), int16_t(p[SOI].val()),
                               int16_t(p[OwnerIndex].val())});
    return sources;
}

} // namespace

class TerritoryTest : public QObject {
    Q_OBJECT

private slots:
    // A grid with a step of one light year, so cell (gx, gy) lies at (gx, gy).
    void singleCells_data()
    {
        QTest::addColumn<QList<QList<int>>>("sources"); // x, y, soi, owner
        QTest::addColumn<QList<QList<int>>>("cells");   // gx, gy, owner, strength
        QTest::newRow("reach of 150")
            << QList<QList<int>>{{200, 200, 100, 1}}
            << QList<QList<int>>{{200, 200, 1, 100}, {350, 200, 1, 9}, {351, 200, 0, 0}, {200, 50, 1, 9},
                                 {306, 306, 1, 9}, {307, 307, 0, 0}, {290, 200, 1, 100}, {300, 200, 1, 100},
                                 {320, 200, 1, 24}};
        QTest::newRow("tie goes to the lower column")
            << QList<QList<int>>{{100, 100, 50, 2}, {300, 100, 50, 1}}
            << QList<QList<int>>{{200, 100, 1, 50}, {199, 100, 2, 50}};
        QTest::newRow("no total above 0")
            << QList<QList<int>>{{100, 100, 50, 0}, {300, 300, 10, 1}}
            << QList<QList<int>>{{100, 100, 0, 0}, {300, 300, 1, 100}, {450, 300, 0, 0}, {300, 440, 1, 1}};
    }
    void singleCells()
    {
        QFETCH(QList<QList<int>>, sources);
        QFETCH(QList<QList<int>>, cells);
        std::vector<InfluenceSource> list;
        for (const QList<int> &s : sources)
            list.push_back({int16_t(s[0]), int16_t(s[1]), int16_t(s[2]), int16_t(s[3])});
        const Grid g = fastGrid(list, 500, 1.0, 2);
        for (const QList<int> &c : cells) {
            QCOMPARE(g.cells.owner(c[0], c[1]), c[2]);
            QCOMPARE(g.cells.strength(c[0], c[1]), c[3]);
        }
        compareWithReference(g, list, 500, 1.0, 2);
    }

    void realMaps_data()
    {
        QTest::addColumn<QString>("map");
        const QStringList maps = QDir(VELTRO_SHARED_MAPS).entryList({"*.map"}, QDir::Files, QDir::Name);
        QVERIFY(!maps.isEmpty());
        for (const QString &map : maps)
            QTest::newRow(qPrintable(map)) << map;
    }
    // A game on the real map where 16 races own the planets, and then many
    // random sources (some without an owner, some stacked) on its planets.
    void realMaps()
    {
        QFETCH(QString, map);
        TestGame game;
        QVERIFY(QFile::copy(QDir(VELTRO_SHARED_MAPS).filePath(map), game.path("game.map")));
        QRandomGenerator random(uint(qHash(map)));
        const int32_t records = countMapRecords(game.path("game.map")).records;
        QList<QByteArray> lines;
        const char *starbases[] = {"None", "None", "Space Dock", "Orbital Fort", "Death Star"};
        int row = 0;
        for (const MapRecord &r : readMapRecords(game.path("game.map"), records))
            lines << planetLine(r.name, QString("Race %1").arg(row++ % 16 + 1), starbases[random.bounded(5)],
                                "0", QString::number(random.bounded(3000000)), {{10, QString("%1%").arg(random.bounded(100))}});
        game.writeReport("game.P1", lines);
        GameData d;
        QCOMPARE(game.load(d), QString());
        QCOMPARE(d.PlayerCount, 16);
        Grid generated{d.Grid, {}};
        for (int gx = 0; gx <= d.GridSize; ++gx)
            for (int gy = 0; gy <= d.GridSize; ++gy)
                if (const int owner = d.Grid.owner(gx, gy))
                    ++generated.won[size_t(owner - 1)];
        compareWithReference(generated, sourcesOf(d), d.GridSize, d.GridStep, d.PlayerCount);
        if (QTest::currentTestFailed())
            return;

        std::vector<InfluenceSource> sources;
        for (const PlanetInfo &p : d.Planets)
            for (int copies = random.bounded(1, 4); copies > 0; --copies)
                sources.push_back({int16_t(p[X].val()), int16_t(p[Y].val()), int16_t(random.bounded(1, 101)),
                                   int16_t(random.bounded(17))});
        compareWithReference(fastGrid(sources, d.GridSize, d.GridStep, 16), sources, d.GridSize, d.GridStep, 16);
    }

    // A universe whose last planet lies left of the origin has a negative
    // step; the cells then run backwards.
    void negativeStep()
    {
        QRandomGenerator random(7);
        std::vector<InfluenceSource> sources;
        for (int i = 0; i < 60; ++i)
            sources.push_back({int16_t(-random.bounded(401)), int16_t(-random.bounded(401)),
                               int16_t(random.bounded(1, 101)), int16_t(random.bounded(4))});
        const double step = -400 / 650.0;
        compareWithReference(fastGrid(sources, 650, step, 3), sources, 650, step, 3);
    }
};

QTEST_GUILESS_MAIN(TerritoryTest)
#include "tst_territory.moc"
