// Choosing a game's files: which report rows appear, and what the checks
// do when the folder changed under the user.

#include "TestGame.h"

#include <QTest>

class FileSelectionTest : public QObject {
    Q_OBJECT

private slots:
    void perPlayerRows()
    {
        TestGame game;
        game.write("game.map", "");
        game.write("game.P1", "");
        game.write("GAME.P1", "");
        game.write("Game.P3", "");
        game.write("GAME.p3", "");
        GameData d;
        FileSelection s(d);
        QCOMPARE(s.clickMapFile(game.dir(), "game.map"), QString());
        QCOMPARE(d.ReportFormat, 30);
        QCOMPARE(d.OwnRace, 1);
        QVERIFY(s.ownRaceHintShown());
        for (int i = 0; i <= 16; ++i)
            QCOMPARE(s.row(i).shown && s.row(i).checked, i == 1 || i == 3);
        QCOMPARE(s.row(3).caption, QStringLiteral("game.P3"));
        QCOMPARE(d.GameFiles[1].path, game.path("game.P1")); // the exact name first
        QCOMPARE(d.GameFiles[3].path, game.path("GAME.p3")); // else the first in sorted order
        QCOMPARE(d.AnnotationFilePath, game.path("game.VMK"));
    }

    // An old-style report wins over per-player ones; unticking its box
    // changes row 0 only, so the report is still read.
    void oldStyleGame()
    {
        TestGame game;
        game.write("game.map", "");
        game.write("game.P1", "");
        game.write("game.pla", "");
        GameData d;
        FileSelection s(d);
        s.gameYearText = "2401";
        QCOMPARE(s.clickMapFile(game.dir(), "game.map"), QString());
        QCOMPARE(d.ReportFormat, 20);
        QCOMPARE(d.OwnRace, 1);
        QVERIFY(!s.ownRaceHintShown());
        QCOMPARE(s.row(0).caption, QStringLiteral("Old Report game using game.PLA"));
        QVERIFY(!s.row(1).shown);
        QCOMPARE(d.GameFiles[1].path, game.path("game.pla"));
        QCOMPARE(d.GameFiles[1].year, QStringLiteral("2401"));
        s.toggleRow(0);
        QVERIFY(!s.row(0).checked);
        QCOMPARE(d.GameFiles[1].included, QStringLiteral("1"));
        QCOMPARE(s.confirm(), QString());
    }

    void deletedReport()
    {
        TestGame game;
        game.write("game.map", "");
        game.write("game.P1", "");
        game.write("game.P3", "");
        GameData d;
        FileSelection s(d);
        QCOMPARE(s.clickMapFile(game.dir(), "game.map"), QString());
        s.row(3).yearText = "7";
        QVERIFY(QFile::remove(game.path("game.P1")));
        QCOMPARE(s.confirm(), QStringLiteral("Some files have been deleted/renamed. Try again"));
        QVERIFY(!s.row(1).shown);
        QCOMPARE(d.OwnRace, 3);
        QCOMPARE(s.row(3).yearText, QString());
        QCOMPARE(s.confirm(), QString());
    }

    void ownRaceNotIncluded()
    {
        TestGame game;
        game.write("game.map", "");
        game.write("game.P1", "");
        game.write("game.P2", "");
        GameData d;
        FileSelection s(d);
        QCOMPARE(s.clickMapFile(game.dir(), "game.map"), QString());
        s.chooseOwnRace(2);
        s.toggleRow(2);
        QCOMPARE(d.GameFiles[2].included, QStringLiteral("0"));
        QCOMPARE(s.confirm(), QStringLiteral("You have not included the datafile you have selected as your race"));
        QVERIFY(s.row(2).checked);
        QCOMPARE(d.GameFiles[2].included, QStringLiteral("1"));
        QCOMPARE(d.OwnRace, 1);
    }

    // Years left empty take the game year; the game year is rounded half
    // to even and must fit 16 bits.
    void years_data()
    {
        QTest::addColumn<QString>("gameYear");
        QTest::addColumn<QString>("year1");
        QTest::addColumn<QString>("message");
        QTest::addColumn<int>("stored");
        QTest::addColumn<QString>("file1");
        QTest::addColumn<QString>("file2");
        QTest::newRow("none") << "" << "" << "" << 0 << "" << "";
        QTest::newRow("equal to the game year") << "2400" << "2400" << "" << 2400 << "2400" << "2400";
        QTest::newRow("half to even") << "2400.5" << "2399" << "" << 2400 << "2399" << "2400.5";
        QTest::newRow("above") << "2400" << "2401" << "One or more game files has a Year higher then the Game Year"
                               << 0 << "" << "";
        QTest::newRow("no game year") << "" << "2400" << "You have entered Years for player files but not for the Game"
                                      << 0 << "" << "";
        QTest::newRow("too large") << "40000" << "" << "Overflow: the game year 40000 is out of range" << 0 << "" << "";
    }
    void years()
    {
        QFETCH(QString, gameYear);
        QFETCH(QString, year1);
        TestGame game;
        game.write("game.map", "");
        game.write("game.P1", "");
        game.write("game.P2", "");
        GameData d;
        FileSelection s(d);
        QCOMPARE(s.clickMapFile(game.dir(), "game.map"), QString());
        s.gameYearText = gameYear;
        s.row(1).yearText = year1;
        QTEST(s.confirm(), "message");
        QTEST(int(d.GameYear), "stored");
        QTEST(d.GameFiles[1].year, "file1");
        QTEST(d.GameFiles[2].year, "file2");
    }

    // A report that disappears between the choice and the reading ends
    // the load with a message naming the file.
    void reportGoneBeforeLoading()
    {
        TestGame game;
        game.writeMap({{"Home", 1100, 1100}});
        game.writeReport("game.P1", {homeLine()});
        game.writeReport("game.P2", {});
        GameData d;
        FileSelection s(d);
        QCOMPARE(s.clickMapFile(game.dir(), "game.map"), QString());
        QCOMPARE(s.confirm(), QString());
        QVERIFY(QFile::remove(game.path("game.P2")));
        GenerationObserver silent;
        try {
            generateUniverse(d, silent);
            QFAIL("the load went on without game.P2");
        } catch (const LoadError &e) {
            QCOMPARE(e.file(), game.path("game.P2"));
        }
    }
};

QTEST_GUILESS_MAIN(FileSelectionTest)
#include "tst_fileselection.moc"
