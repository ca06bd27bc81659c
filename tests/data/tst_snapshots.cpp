// Where a snapshot's year comes from, and the turns found in a folder in
// year order.

#include "Snapshot.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

void touch(const QString &path)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write %s", qPrintable(path));
}

QList<int> yearsOf(const QList<Snapshot> &snapshots)
{
    QList<int> years;
    for (const Snapshot &s : snapshots)
        years << s.year;
    return years;
}

} // namespace

class SnapshotTest : public QObject {
    Q_OBJECT
private slots:
    void yearOfAnArgument_data()
    {
        QTest::addColumn<QString>("argument");
        QTest::addColumn<QString>("mapFile");
        QTest::addColumn<int>("year");
        QTest::newRow("folder") << "backups/2431/GAME.map" << "backups/2431/GAME.map" << 2431;
        QTest::newRow("written") << "games/GAME.map@2405" << "games/GAME.map" << 2405;
        QTest::newRow("written wins") << "backups/2431/GAME.map@2440" << "backups/2431/GAME.map" << 2440;
        QTest::newRow("@ in a path") << "me@home/2431/GAME.map" << "me@home/2431/GAME.map" << 2431;
        QTest::newRow("file name") << "games/GAME-2410.map" << "games/GAME-2410.map" << 2410;
        QTest::newRow("largest year") << "g/32767/G.map" << "g/32767/G.map" << 32767;
        QTest::newRow("no year") << "games/GAME.map" << "" << 0;
        QTest::newRow("year 0") << "games/0/GAME.map" << "" << 0;
        QTest::newRow("past 16 bits") << "GAME.map@32768" << "" << 0;
        QTest::newRow("six digits") << "g/002431/G.map" << "" << 0;
        QTest::newRow("folder not wholly digits") << "games/turn7/GAME.map" << "" << 0;
    }
    void yearOfAnArgument()
    {
        QFETCH(QString, argument);
        QFETCH(QString, mapFile);
        QFETCH(int, year);
        try {
            const Snapshot s = snapshotFromArgument(argument);
            QCOMPARE(s.mapFile, mapFile);
            QCOMPARE(s.year, year);
        } catch (const SnapshotError &e) {
            QVERIFY2(year == 0, qPrintable(e.message));
            QVERIFY(e.message.startsWith(argument + ": no year"));
        }
    }

    void turnsOfAFolderInYearOrder()
    {
        QTemporaryDir dir;
        for (const char *turn : {"2410", "2402", "999"})
            touch(dir.filePath(QString("%1/GAME.map").arg(turn)));
        touch(dir.filePath("2409/GAME.P1"));     // a year without its map
        touch(dir.filePath("notes/GAME.map"));   // not a turn
        touch(dir.filePath("GAME-2300.map"));    // the folders come first
        const QList<Snapshot> turns = snapshotsInFolder(dir.path());
        QCOMPARE(yearsOf(turns), (QList<int>{999, 2402, 2410}));
        QCOMPARE(turns[1].mapFile, dir.filePath("2402/GAME.map"));
    }

    void mapFilesNamedByYear()
    {
        QTemporaryDir dir;
        for (const char *name : {"GAME-2403.map", "GAME-2401.map", "GAME.map"})
            touch(dir.filePath(name));
        QCOMPARE(yearsOf(snapshotsInFolder(dir.path())), (QList<int>{2401, 2403}));
    }

    void refusedFolders()
    {
        QTemporaryDir dir;
        QVERIFY_THROWS_EXCEPTION(SnapshotError, snapshotsInFolder(dir.path()));
        touch(dir.filePath("2401/A.map"));
        touch(dir.filePath("2401/B.map"));
        try {
            snapshotsInFolder(dir.path());
            QFAIL("two maps in one turn");
        } catch (const SnapshotError &e) {
            QVERIFY2(e.message.contains("2 map files"), qPrintable(e.message));
        }
    }

    void oneSnapshotPerYear()
    {
        QList<Snapshot> snapshots{{"b/2402/G.map", 2402}, {"a/G.map", 2401}, {"c/G.map", 2402}};
        try {
            sortByYear(snapshots);
            QFAIL("two snapshots of 2402");
        } catch (const SnapshotError &e) {
            QCOMPARE(e.message, QString("two snapshots of the year 2402: b/2402/G.map and c/G.map"));
        }
    }
};

QTEST_GUILESS_MAIN(SnapshotTest)
#include "tst_snapshots.moc"
