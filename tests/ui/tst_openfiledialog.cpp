// The file selection window over a real folder: which rows it shows, the
// messages it gives and the state it keeps between showings.

#include "RecordingSink.h"
#include "OpenFileDialog.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFileSystemModel>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

void touch(const QString &dir, const QStringList &names)
{
    for (const QString &name : names) {
        QFile file(QDir(dir).filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
}

QList<int> shownRows(const OpenFileDialog &dialog)
{
    QList<int> rows;
    for (int i = 0; i <= MaxPlayers; ++i)
        if (dialog.check(i)->isVisibleTo(&dialog))
            rows << i;
    return rows;
}

} // namespace

class OpenFileDialogTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_sink.messages.clear();
        setMessageSink(&m_sink);
        m_game = std::make_unique<QTemporaryDir>();
        QVERIFY(m_game->isValid());
    }
    void cleanup() { setMessageSink(nullptr); }

    void perPlayerGameShowsItsReports()
    {
        touch(m_game->path(), {"game.map", "game.P1", "game.P3", "OTHER.MAP", "notes.txt"});
        GameData data;
        FileSelection selection(data);
        OpenFileDialog dialog(selection, data);
        QVERIFY(dialog.openOn(m_game->filePath("game.map")));

        QCOMPARE(shownRows(dialog), (QList<int>{1, 3}));
        QVERIFY(dialog.check(1)->isChecked());
        QVERIFY(dialog.check(3)->isChecked());
        QCOMPARE(dialog.check(3)->text(), QStringLiteral("game.P3"));
        QVERIFY(dialog.player(1)->isChecked());
        QVERIFY(!dialog.player(3)->isChecked());
        QVERIFY(dialog.yearBox(3)->isVisibleTo(&dialog));
        QVERIFY(dialog.raceHint()->isVisibleTo(&dialog));
        QVERIFY(dialog.loadButton()->isEnabled());
        QCOMPARE(data.OwnRace, int16_t(1));
        QCOMPARE(data.GameDir, dialog.folder());
        QVERIFY(m_sink.messages.isEmpty());

        // The file list shows map files whatever their case, and nothing else.
        QFileSystemModel *files = qobject_cast<QFileSystemModel *>(dialog.fileList()->model());
        QVERIFY(files);
        QTRY_COMPARE(files->rowCount(dialog.fileList()->rootIndex()), 2);

        // Choosing another race moves the option.
        dialog.player(3)->click();
        QCOMPARE(data.OwnRace, int16_t(3));
        QVERIFY(!dialog.player(1)->isChecked());
    }

    void oldStyleGameShowsOneRow()
    {
        touch(m_game->path(), {"game.map", "game.PLA", "game.P1"});
        GameData data;
        FileSelection selection(data);
        OpenFileDialog dialog(selection, data);
        QVERIFY(dialog.openOn(m_game->filePath("game.map")));

        QCOMPARE(shownRows(dialog), QList<int>{0});
        QCOMPARE(dialog.check(0)->text(), QStringLiteral("Old Report game using game.PLA"));
        QVERIFY(!dialog.player(0)->isVisibleTo(&dialog));
        QVERIFY(!dialog.yearBox(0)->isVisibleTo(&dialog));
        QVERIFY(!dialog.raceHint()->isVisibleTo(&dialog));
    }

    void mapWithoutReportsLeavesTheRows()
    {
        touch(m_game->path(), {"game.map", "game.P2", "lonely.map"});
        GameData data;
        FileSelection selection(data);
        OpenFileDialog dialog(selection, data);
        QVERIFY(dialog.openOn(m_game->filePath("game.map")));
        dialog.clickMapFile(QStringLiteral("lonely.map"));

        QCOMPARE(m_sink.messages, QStringList{QStringLiteral("No Player files found for this map")});
        QCOMPARE(shownRows(dialog), QList<int>{2});
        QVERIFY(!dialog.openOn(m_game->filePath("missing.map")));
    }

    void confirmReportsTheFirstFailingCheck()
    {
        touch(m_game->path(), {"game.map", "game.P1", "game.P3"});
        GameData data;
        FileSelection selection(data);
        OpenFileDialog dialog(selection, data);
        QVERIFY(dialog.openOn(m_game->filePath("game.map")));
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
        QCOMPARE(data.GameFiles[1].included, QStringLiteral("0"));
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
        QCOMPARE(data.OpenFileCancelled, int16_t(0));
        QCOMPARE(data.GameYear, int16_t(2400));
        QCOMPARE(data.GameFiles[1].year, QStringLiteral("2400"));
    }

    void rowsStayBetweenShowings()
    {
        touch(m_game->path(), {"game.map", "game.P1", "game.P3"});
        QTemporaryDir elsewhere;
        GameData data;
        FileSelection selection(data);
        OpenFileDialog dialog(selection, data);
        QVERIFY(dialog.openOn(m_game->filePath("game.map")));
        dialog.show();
        dialog.check(3)->click();
        dialog.yearBox(1)->setText(QStringLiteral("2405"));
        dialog.cancelButton()->click();
        QVERIFY(!dialog.isVisible());
        QCOMPARE(data.OpenFileCancelled, int16_t(1));

        dialog.show();
        QCOMPARE(dialog.folder(), QDir(m_game->path()).absolutePath());
        QCOMPARE(shownRows(dialog), (QList<int>{1, 3}));
        QVERIFY(!dialog.check(3)->isChecked());
        QCOMPARE(dialog.yearBox(1)->text(), QStringLiteral("2405"));

        // Another folder keeps the rows but no longer names the game's.
        dialog.goToFolder(elsewhere.path());
        QCOMPARE(data.GameDir, QStringLiteral(" "));
        QCOMPARE(shownRows(dialog), (QList<int>{1, 3}));
        QCOMPARE(data.GameFiles[3].included, QStringLiteral("0"));
    }

    void opensOnTheInstallFolder()
    {
        GameData data;
        FileSelection selection(data);
        data.StartDir = m_game->path();
        OpenFileDialog dialog(selection, data);
        dialog.show();
        QCOMPARE(dialog.folder(), QDir(m_game->path()).absolutePath());
        QCOMPARE(data.GameDir, QStringLiteral(" "));
        QVERIFY(!dialog.loadButton()->isEnabled());

        GameData elsewhere;
        FileSelection otherSelection(elsewhere);
        elsewhere.StartDir = QStringLiteral("Q:\\Stars");
        OpenFileDialog fallback(otherSelection, elsewhere);
        fallback.show();
        QCOMPARE(fallback.folder(), QDir::homePath());
    }

private:
    RecordingSink m_sink;
    std::unique_ptr<QTemporaryDir> m_game; // a fresh game folder for each case
};

QTEST_MAIN(OpenFileDialogTest)
#include "tst_openfiledialog.moc"
