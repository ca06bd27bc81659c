// Choosing a game's files: the rows shown, and the folder changing under
// the user between the choice and the load.

#include "TestGame.h"

#include <QTest>

class FileSelectionTest : public QObject {
    Q_OBJECT

private slots:
    // Rows 1..3 found without regard to case; the first two checks rebuild
    // them from the folder.
    void perPlayerRows()
    {
        TestGame game;
        for (const char *name : {"game.map", "game.P1", "GAME.P1", "game.P2", "Game.P3", "GAME.p3"})
            game.write(name, "");
        GameData d;
        FileSelection s(d);
        QCOMPARE(s.clickMapFile(game.dir(), "game.map"), QString());
        for (int i = 0; i <= 16; ++i)
            QCOMPARE(s.row(i).shown && s.row(i).checked, i >= 1 && i <= 3);
        QCOMPARE(s.row(3).caption, QString("game.P3"));
        QCOMPARE(d.GameFiles[1].path, game.path("game.P1")); // the exact name first,
        QCOMPARE(d.GameFiles[3].path, game.path("GAME.p3")); // else the first in sorted order
        s.chooseOwnRace(2);
        s.toggleRow(2);
        QCOMPARE(s.confirm(), QString("You have not included the datafile you have selected as your race"));
        QVERIFY(s.row(2).checked);
        QCOMPARE(d.OwnRace, 1);
        s.row(3).yearText = "7";
        QVERIFY(QFile::remove(game.path("game.P1")) && QFile::remove(game.path("GAME.P1")));
        QCOMPARE(s.confirm(), QString("Some files have been deleted/renamed. Try again"));
        QVERIFY(!s.row(1).shown);
        QCOMPARE(d.OwnRace, 2);
        QCOMPARE(s.row(3).yearText, QString());
        QCOMPARE(s.confirm(), QString());
    }

    // A report that disappears after the choice ends the load naming it.
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
        QString failedFile;
        try {
            GenerationObserver silent;
            generateUniverse(d, silent);
        } catch (const LoadError &e) {
            failedFile = e.file();
        }
        QCOMPARE(failedFile, game.path("game.P2"));
    }
};

QTEST_GUILESS_MAIN(FileSelectionTest)
#include "tst_fileselection.moc"
