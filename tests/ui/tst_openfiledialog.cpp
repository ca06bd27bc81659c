// The file selection window over real folders: the checks' messages, the
// state kept between showings and the map that loads.

#include "OpenFileDialog.h"
#include "RecordingSink.h"
#include "TestGame.h"

#include <QTest>
#include <QtWidgets>

namespace {

struct Window {
    TestGame game;
    GameData data;
    FileSelection selection{data};
    OpenFileDialog dialog{selection, data};

    // Writes empty files of these names and opens the window on game.map.
    bool openOn(const QStringList &names)
    {
        for (const QString &name : names)
            game.write(name, "");
        return dialog.openOn(game.path("game.map"));
    }
    QList<int> shownRows() const
    {
        QList<int> rows;
        for (int i = 0; i <= MaxPlayers; ++i)
            if (dialog.check(i)->isVisibleTo(&dialog))
                rows << i;
        return rows;
    }
};

} // namespace

class OpenFileDialogTest : public QObject {
    Q_OBJECT

private slots:
    void init() { m_sink.messages.clear(); }

    // The first failing check's message, in the checks' order.
    void confirmChecks_data()
    {
        QTest::addColumn<QString>("gameYear");
        QTest::addColumn<QString>("reportYear"); // of player 3
        QTest::addColumn<bool>("ownIncluded");
        QTest::addColumn<QString>("message");
        QTest::newRow("report year, no game year") << "" << "2401" << true << "You have entered Years for player files but not for the Game";
        QTest::newRow("report newer than the game") << "2400" << "2401" << true << "One or more game files has a Year higher then the Game Year";
        QTest::newRow("own race left out") << "2400" << "2401" << false << "You have not included the datafile you have selected as your race";
        QTest::newRow("report of the game's year") << "2400" << "2400" << true << "";
    }
    void confirmChecks()
    {
        QFETCH(QString, gameYear);
        QFETCH(QString, reportYear);
        QFETCH(bool, ownIncluded);
        QFETCH(QString, message);
        Window w;
        QVERIFY(w.openOn({"game.map", "game.P1", "game.P3"}));
        OpenFileDialog &dialog = w.dialog;
        dialog.show();
        QTest::keyClicks(dialog.gameYearBox(), gameYear);
        QTest::keyClicks(dialog.yearBox(3), reportYear);
        if (!ownIncluded)
            dialog.check(1)->click();
        dialog.loadButton()->click();
        QCOMPARE(m_sink.messages, message.isEmpty() ? QStringList() : QStringList{message});
        QCOMPARE(dialog.isVisible(), !message.isEmpty());
        if (!message.isEmpty()) {
            // Leaving out the own race rebuilds the rows from the folder; else they stay.
            QVERIFY(dialog.check(1)->isChecked());
            QCOMPARE(dialog.yearBox(3)->text().isEmpty(), !ownIncluded);
            return;
        }
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(w.data.OpenFileCancelled, int16_t(0));
        QCOMPARE(w.data.GameYear, int16_t(2400));
        QCOMPARE(w.data.GameFiles[1].year, QStringLiteral("2400")); // an empty year takes the game's
    }

    void ownRaceAndRowsStayBetweenShowings()
    {
        Window w;
        QVERIFY(w.openOn({"game.map", "game.P1", "game.P3"}));
        OpenFileDialog &dialog = w.dialog;
        dialog.show();
        QCOMPARE(w.data.GameDir, dialog.folder());
        QVERIFY(!dialog.openOn(w.game.path("missing.map")));
        QCOMPARE(w.data.OwnRace, int16_t(1));
        dialog.player(3)->click();
        QCOMPARE(w.data.OwnRace, int16_t(3));

        dialog.check(3)->click();
        dialog.yearBox(1)->setText(QStringLiteral("2405"));
        dialog.cancelButton()->click();
        QCOMPARE(w.data.OpenFileCancelled, int16_t(1));
        dialog.show();
        QCOMPARE(dialog.folder(), QDir(w.game.dir()).absolutePath());
        QVERIFY(!dialog.check(3)->isChecked());
        QCOMPARE(dialog.yearBox(1)->text(), QStringLiteral("2405"));

        // Another folder keeps the rows but no longer names the game's.
        QTemporaryDir elsewhere;
        dialog.goToFolder(elsewhere.path());
        QCOMPARE(w.data.GameDir, QStringLiteral(" "));
        QCOMPARE(w.shownRows(), (QList<int>{1, 3}));
        QCOMPARE(w.data.GameFiles[3].included, QStringLiteral("0"));
    }

    // Three games in three folders: the rows each gives, and the map shown
    // above them is the map that loads, whether the folder changed since or not.
    void theShownMapIsTheOneThatLoads()
    {
        Window w;
        const TestGame &g = w.game;
        for (const char *folder : {"reports", "bare", "old"})
            QVERIFY(QDir(g.dir()).mkdir(QLatin1String(folder)));
        g.writeMap({{"Home", 1100, 1100}, {"Reports", 1200, 1200}}, "reports/game.map");
        g.writeReport("reports/game.P1", {homeLine()});
        g.writeReport("reports/game.P3", {});
        g.write("reports/OTHER.MAP", "");
        g.write("reports/notes.txt", "");
        g.writeMap({{"Home", 1100, 1100}, {"Bare", 1200, 1200}}, "bare/lone.map");
        g.writeMap({{"Home", 1100, 1100}, {"Old", 1200, 1200}}, "old/old.map");
        g.writeReport("old/old.PLA", {homeLine()});
        g.writeReport("old/old.P1", {homeLine()});

        struct Step {
            // Moved to, the map file clicked there (if any) and the map shown above the rows.
            const char *folder, *click, *shown;
            QList<int> rows;
            const char *firstRow; // its caption
            int mapFiles;         // in the file list, whatever their case
        };
        const Step steps[] = {
            {"reports", "game.map", "reports/game.map", {1, 3}, "game.P1", 2},
            {"bare", nullptr, "reports/game.map", {1, 3}, "game.P1", 1},
            // No reports: the message, and the rows stay those of the game before.
            {"bare", "lone.map", "bare/lone.map", {1, 3}, "game.P1", 1},
            // An old style game's one report outweighs the players' reports.
            {"old", "old.map", "old/old.map", {0}, "Old Report game using old.PLA", 1},
        };
        for (const Step &step : steps) {
            w.dialog.goToFolder(g.path(QLatin1String(step.folder)));
            if (step.click)
                w.dialog.clickMapFile(QLatin1String(step.click));
            const QFileInfo shown(g.path(QLatin1String(step.shown)));
            QCOMPARE(w.dialog.chosenMap()->accessibleName(), QStringLiteral("Map file: %1\nFolder: %2")
                                                       .arg(shown.fileName(), QDir::toNativeSeparators(shown.absolutePath())));
            QCOMPARE(w.shownRows(), step.rows);
            QCOMPARE(w.dialog.check(step.rows[0])->text(), QLatin1String(step.firstRow));
            QVERIFY(w.dialog.check(step.rows[0])->isChecked());
            QTRY_COMPARE(w.dialog.fileList()->model()->rowCount(w.dialog.fileList()->rootIndex()), step.mapFiles);

            w.dialog.confirm();
            QCOMPARE(w.dialog.result(), int(QDialog::Accepted));
            QCOMPARE(QFileInfo(w.data.MapFilePath), shown);
        }
        QCOMPARE(m_sink.messages, QStringList{QStringLiteral("No Player files found for this map")});
    }

private:
    RecordingSink m_sink;
};

QTEST_MAIN(OpenFileDialogTest)
#include "tst_openfiledialog.moc"
