// The file selection window over a real folder: which rows it shows, the
// messages it gives, the state it keeps between showings, the map that loads
// after moving between folders, and the folder list under the pointer.

#include "OpenFileDialog.h"
#include "RecordingSink.h"
#include "TestGame.h"

#include <QCheckBox>
#include <QDir>
#include <QFileSystemModel>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>
#include <QTreeView>
#include <algorithm>

namespace {

// The selection window over a game folder of its own.
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
    QString folder(const QString &name) const { return QDir(game.path(name)).absolutePath(); }
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

    // The folder tree opens down to the game's folder, which is in sight.
    void opensOnTheGamesFolder()
    {
        Window w;
        QVERIFY(QDir(w.game.dir()).mkpath("deep/er/still"));
        w.game.write("deep/er/still/game.map", "");
        auto *tree = w.dialog.findChild<QTreeView *>("Dir1");
        auto *model = static_cast<QFileSystemModel *>(tree->model());
        QSignalSpy read(model, &QFileSystemModel::directoryLoaded);
        QVERIFY(w.dialog.openOn(w.game.path("deep/er/still/game.map")));
        w.dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w.dialog));
        const QModelIndex folder = model->index(w.game.path("deep/er/still"));
        // Once the model has read the folders above it in the background.
        QStringList above;
        for (QModelIndex i = folder.parent(); i.isValid(); i = i.parent())
            above << model->filePath(i);
        const auto allRead = [&] {
            QStringList done;
            for (const QList<QVariant> &signal : read)
                done << signal[0].toString();
            return std::all_of(above.begin(), above.end(), [&](const QString &path) { return done.contains(path); });
        };
        QTRY_VERIFY(allRead());
        QTRY_VERIFY(tree->viewport()->rect().contains(tree->visualRect(folder).center()));
        for (QModelIndex above = folder.parent(); above.isValid(); above = above.parent())
            QVERIFY(tree->isExpanded(above));
        QCOMPARE(tree->currentIndex(), folder);
    }

    void perPlayerGameShowsItsReports()
    {
        Window w;
        QVERIFY(w.openOn({"game.map", "game.P1", "game.P3", "OTHER.MAP", "notes.txt"}));
        const OpenFileDialog &dialog = w.dialog;
        QCOMPARE(w.shownRows(), (QList<int>{1, 3}));
        QVERIFY(dialog.check(1)->isChecked());
        QVERIFY(dialog.check(3)->isChecked());
        QCOMPARE(dialog.check(3)->text(), QStringLiteral("game.P3"));
        QVERIFY(dialog.player(1)->isChecked());
        QVERIFY(!dialog.player(3)->isChecked());
        QVERIFY(dialog.yearBox(3)->isVisibleTo(&dialog));
        QVERIFY(dialog.raceHint()->isVisibleTo(&dialog));
        QVERIFY(dialog.loadButton()->isEnabled());
        QCOMPARE(w.data.OwnRace, int16_t(1));
        QCOMPARE(w.data.GameDir, dialog.folder());
        QVERIFY(m_sink.messages.isEmpty());

        // The file list shows map files whatever their case, and nothing else.
        QFileSystemModel *files = qobject_cast<QFileSystemModel *>(dialog.fileList()->model());
        QVERIFY(files);
        QTRY_COMPARE(files->rowCount(dialog.fileList()->rootIndex()), 2);

        // Choosing another race moves the option.
        dialog.player(3)->click();
        QCOMPARE(w.data.OwnRace, int16_t(3));
        QVERIFY(!dialog.player(1)->isChecked());
    }

    void oldStyleGameShowsOneRow()
    {
        Window w;
        QVERIFY(w.openOn({"game.map", "game.PLA", "game.P1"}));
        QCOMPARE(w.shownRows(), QList<int>{0});
        QCOMPARE(w.dialog.check(0)->text(), QStringLiteral("Old Report game using game.PLA"));
        QVERIFY(!w.dialog.player(0)->isVisibleTo(&w.dialog));
        QVERIFY(!w.dialog.yearBox(0)->isVisibleTo(&w.dialog));
        QVERIFY(!w.dialog.raceHint()->isVisibleTo(&w.dialog));
    }

    void mapWithoutReportsLeavesTheRows()
    {
        Window w;
        QVERIFY(w.openOn({"game.map", "game.P2", "lonely.map"}));
        w.dialog.clickMapFile(QStringLiteral("lonely.map"));
        QCOMPARE(m_sink.messages, QStringList{QStringLiteral("No Player files found for this map")});
        QCOMPARE(w.shownRows(), QList<int>{2});
        QVERIFY(!w.dialog.openOn(w.game.path("missing.map")));
    }

    // The checks' messages in their order, and what each leaves of the rows.
    void confirmReportsTheFirstFailingCheck()
    {
        Window w;
        QVERIFY(w.openOn({"game.map", "game.P1", "game.P3"}));
        OpenFileDialog &dialog = w.dialog;
        dialog.show();

        // Report years without a game year.
        QTest::keyClicks(dialog.yearBox(3), QStringLiteral("2401"));
        dialog.loadButton()->click();
        // A report newer than the game.
        QTest::keyClicks(dialog.gameYearBox(), QStringLiteral("2400"));
        dialog.loadButton()->click();
        QCOMPARE(m_sink.messages,
                 (QStringList{QStringLiteral("You have entered Years for player files but not for the Game"),
                              QStringLiteral("One or more game files has a Year higher then the Game Year")}));
        QVERIFY(dialog.isVisible());
        QCOMPARE(dialog.yearBox(3)->text(), QStringLiteral("2401"));

        // Leaving out the own race rebuilds the rows from the folder.
        m_sink.messages.clear();
        dialog.check(1)->click();
        QCOMPARE(w.data.GameFiles[1].included, QStringLiteral("0"));
        dialog.loadButton()->click();
        QCOMPARE(m_sink.messages,
                 QStringList{QStringLiteral("You have not included the datafile you have selected as your race")});
        QVERIFY(dialog.check(1)->isChecked());
        QVERIFY(dialog.yearBox(3)->text().isEmpty());
        QVERIFY(dialog.isVisible());

        // A report year equal to the game year passes; empty years take it.
        m_sink.messages.clear();
        dialog.yearBox(3)->setText(QStringLiteral("2400"));
        dialog.loadButton()->click();
        QVERIFY(m_sink.messages.isEmpty());
        QVERIFY(!dialog.isVisible());
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(w.data.OpenFileCancelled, int16_t(0));
        QCOMPARE(w.data.GameYear, int16_t(2400));
        QCOMPARE(w.data.GameFiles[1].year, QStringLiteral("2400"));
    }

    void rowsStayBetweenShowings()
    {
        Window w;
        QVERIFY(w.openOn({"game.map", "game.P1", "game.P3"}));
        OpenFileDialog &dialog = w.dialog;
        dialog.show();
        dialog.check(3)->click();
        dialog.yearBox(1)->setText(QStringLiteral("2405"));
        dialog.cancelButton()->click();
        QVERIFY(!dialog.isVisible());
        QCOMPARE(w.data.OpenFileCancelled, int16_t(1));

        dialog.show();
        QCOMPARE(dialog.folder(), QDir(w.game.dir()).absolutePath());
        QCOMPARE(w.shownRows(), (QList<int>{1, 3}));
        QVERIFY(!dialog.check(3)->isChecked());
        QCOMPARE(dialog.yearBox(1)->text(), QStringLiteral("2405"));

        // Another folder keeps the rows but no longer names the game's.
        QTemporaryDir elsewhere;
        dialog.goToFolder(elsewhere.path());
        QCOMPARE(w.data.GameDir, QStringLiteral(" "));
        QCOMPARE(w.shownRows(), (QList<int>{1, 3}));
        QCOMPARE(w.data.GameFiles[3].included, QStringLiteral("0"));
    }

    // A click on a folder picks that folder: the list does not move under
    // the pointer, so a pointer that stirs while pressed stays on it. (Tests
    // beside this one add folders to the temporary folder above, which may
    // move the list afterwards, as any change of the folders does.)
    void aClickPicksTheFolderUnderThePointer()
    {
        Window w;
        QStringList folders;
        for (int i = 0; i < 30; ++i) {
            folders << QStringLiteral("f%1").arg(i, 2, 10, QLatin1Char('0'));
            QVERIFY(QDir(w.game.dir()).mkdir(folders.last()));
        }
        w.game.write("f05/game.map", "");
        QTreeView *tree = w.dialog.folderList();
        auto *model = static_cast<QFileSystemModel *>(tree->model());
        QVERIFY(w.dialog.openOn(w.game.path("f05/game.map")));
        w.dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w.dialog));
        // The game's folder read and sorted, its folder in sight.
        const QModelIndex parent = model->index(w.game.dir());
        const auto listed = [&] {
            QStringList names;
            for (int r = 0; r < model->rowCount(parent); ++r)
                names << model->fileName(model->index(r, 0, parent));
            return names;
        };
        QTRY_COMPARE(listed(), folders);
        const QModelIndex f05 = model->index(w.game.path("f05"));
        QTRY_VERIFY(tree->viewport()->rect().contains(tree->visualRect(f05).center()));

        const QModelIndex target = model->index(w.game.path("f08"));
        const QRect before = tree->visualRect(target);
        QVERIFY(tree->viewport()->rect().contains(before));
        QTest::mousePress(tree->viewport(), Qt::LeftButton, {}, before.center());
        QTest::mouseMove(tree->viewport(), before.center());
        QTest::mouseRelease(tree->viewport(), Qt::LeftButton, {}, before.center());
        QCOMPARE(w.dialog.folder(), w.folder("f08"));
        QCOMPARE(tree->currentIndex(), target);
        QCOMPARE(tree->visualRect(target), before);
    }

    // Three games in three folders: the map shown above the rows is the map
    // that loads, whether the folder changed since or not.
    void theShownMapIsTheOneThatLoads()
    {
        Window w;
        const TestGame &g = w.game;
        for (const char *folder : {"reports", "bare", "old"})
            QVERIFY(QDir(g.dir()).mkdir(QLatin1String(folder)));
        g.writeMap({{"Home", 1100, 1100}, {"Reports", 1200, 1200}}, "reports/game.map");
        g.writeReport("reports/game.P1", {homeLine()});
        g.writeMap({{"Home", 1100, 1100}, {"Bare", 1200, 1200}}, "bare/lone.map");
        g.writeMap({{"Home", 1100, 1100}, {"Old", 1200, 1200}}, "old/old.map");
        g.writeReport("old/old.PLA", {homeLine()});

        struct Step {
            const char *folder;   // moved to
            const char *click;    // the map file clicked there, if any
            const char *shown;    // the map above the rows
            const char *marked;   // the file that looks chosen in the file list
            QList<int> rows;
            const char *loaded;   // the second planet of what loads
        };
        const Step steps[] = {
            {"reports", "game.map", "reports/game.map", "game.map", {1}, "Reports"},
            {"bare", nullptr, "reports/game.map", "", {1}, "Reports"},
            // No reports: the message, and the rows stay those of the game before.
            {"bare", "lone.map", "bare/lone.map", "lone.map", {1}, "Bare"},
            {"old", "old.map", "old/old.map", "old.map", {0}, "Old"},
        };
        for (const Step &step : steps) {
            w.dialog.goToFolder(g.path(QLatin1String(step.folder)));
            if (step.click)
                w.dialog.clickMapFile(QLatin1String(step.click));
            const QFileInfo shown(g.path(QLatin1String(step.shown)));
            QCOMPARE(w.dialog.chosenMap()->accessibleName(), QStringLiteral("Map file: %1\nFolder: %2")
                                                       .arg(shown.fileName(), QDir::toNativeSeparators(shown.absolutePath())));
            QCOMPARE(w.shownRows(), step.rows);
            const QModelIndex current = w.dialog.fileList()->currentIndex();
            QCOMPARE(current.isValid() ? current.data().toString() : QString(), QLatin1String(step.marked));

            w.dialog.confirm();
            QCOMPARE(w.dialog.result(), int(QDialog::Accepted));
            QCOMPARE(QFileInfo(w.data.MapFilePath), shown);
            GenerationObserver silent;
            generateUniverse(w.data, silent);
            QCOMPARE(w.data.planet(2)[Name].text(), QLatin1String(step.loaded));
        }
        QCOMPARE(m_sink.messages, QStringList{QStringLiteral("No Player files found for this map")});
    }

    // The game's install folder, or the home folder when it is not there.
    void opensOnTheInstallFolder()
    {
        Window w, fallback;
        w.data.StartDir = w.game.dir();
        w.dialog.show();
        QCOMPARE(w.dialog.folder(), QDir(w.game.dir()).absolutePath());
        QVERIFY(!w.dialog.loadButton()->isEnabled());
        fallback.data.StartDir = QStringLiteral("Q:\\Stars");
        fallback.dialog.show();
        QCOMPARE(fallback.dialog.folder(), QDir::homePath());
    }

private:
    RecordingSink m_sink;
};

QTEST_MAIN(OpenFileDialogTest)
#include "tst_openfiledialog.moc"
