// The secondary windows driven offscreen; the history window on four
// generated turns.

#include "AccessibleText.h"
#include "EmpireStatWindow.h"
#include "GameGenerator.h"
#include "HistoryWindow.h"
#include "PlanetGridWindow.h"
#include "RaceColourWindow.h"
#include "RecordingSink.h"

#include <QSignalSpy>
#include <QTest>
#include <QtWidgets>

namespace {

constexpr int LastYear = 2412;

// Vorn, race 2 and the own race, owns planets 2 and 3; the Humans own none.
GameData twoRaces()
{
    GameData d;
    d.PlayerCount = 2;
    d.OwnRaceName = QStringLiteral("Vorn");
    const std::pair<const char *, int> planets[] = {{"beta", 1200}, {"Alpha", 95}, {"gamma", 300}};
    for (const auto &[name, population] : planets) {
        PlanetInfo p;
        p[Number] = Value(int(d.Planets.size()) + 1);
        p[Name] = Value(QString::fromLatin1(name));
        p[Population] = Value(population);
        d.Planets.push_back(p);
    }
    for (int i : {2, 3})
        d.planet(i)[Owner] = Value(u"Vorn");
    d.player(1)[RaceName] = Value(u"Humans");
    PlayerInfo &vorn = d.player(2);
    vorn[RaceName] = Value(u"Vorn");
    vorn[MinGrav] = Value(0.5);
    vorn[MaxGrav] = Value(2);
    return d;
}

// Clicks a column's heading; the planets' numbers in the order shown then.
QList<int> clickHeading(PlanetGridWindow &w, int column, Qt::MouseButton button)
{
    QHeaderView *heading = w.table()->horizontalHeader();
    const QPoint at(heading->sectionViewportPosition(column) + heading->sectionSize(column) / 2, heading->height() / 2);
    QTest::mouseClick(heading->viewport(), button, {}, at);
    QList<int> numbers;
    for (int r = 0; r < w.model().rowCount(); ++r)
        numbers << w.model().text(r, 0).toInt();
    return numbers;
}

QImage shownYear(const HistoryWindow &w) { return w.mapLabel()->pixmap().toImage(); }

QList<bool> pressedLayers(const HistoryWindow &w)
{
    QList<bool> pressed;
    for (OverlayButton b : {BordersButton, UniverseButton, OwnedButton, TerritoryButton})
        pressed << w.layerButton(b)->isChecked();
    return pressed;
}

} // namespace

class DataWindowsTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        gamegen::generateHistory({.mapPath = VELTRO_TEST_MAPS "/tiny-packed-00001.map", .outDir = m_turns.path(),
                                  .players = 3, .gameYear = LastYear}, 4);
        // One history window for the cases on these turns: it reads them once.
        m_history = std::make_unique<HistoryWindow>(m_turns.path(), OverlayButtons{});
        QSignalSpy loaded(m_history.get(), &HistoryWindow::loadingFinished);
        m_history->show();
        QVERIFY(!m_history->saveAnimationAction()->isEnabled());
        QTRY_COMPARE_WITH_TIMEOUT(loaded.size(), 1, 20000);
        QVERIFY(m_history->saveAnimationAction()->isEnabled());
        QVERIFY(m_sink.messages.isEmpty());
    }
    void init() { m_sink.messages.clear(); }

    void gridHeadingClicksSortAndCellsCopy()
    {
        PlanetGridWindow w;
        w.fill(twoRaces());
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QHeaderView *heading = w.table()->horizontalHeader();
        QCOMPARE(heading->sectionSize(3), 83); // 1250 twips
        QCOMPARE(unnamedControls(&w).join(' '), QString());

        // Any button but the left sorts descending.
        QCOMPARE(clickHeading(w, 3, Qt::RightButton), (QList<int>{3, 1, 2}));
        QCOMPARE(clickHeading(w, 7, Qt::LeftButton), (QList<int>{2, 3, 1}));
        QCOMPARE(clickHeading(w, 7, Qt::MiddleButton), (QList<int>{1, 3, 2}));

        // Copied as a block, unselected cells inside it empty; the selection
        // follows its rows through a sort.
        QItemSelectionModel *selection = w.table()->selectionModel();
        selection->clear();
        selection->select(QItemSelection(w.model().index(0, 3), w.model().index(1, 4)), QItemSelectionModel::Select);
        selection->select(w.model().index(2, 3), QItemSelectionModel::Select);
        QTest::keyClick(w.table(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("beta\t\ngamma\tVorn\nAlpha\t\n"));
        clickHeading(w, 3, Qt::LeftButton);
        QCOMPARE(w.selectedText(), QStringLiteral("Alpha\t\nbeta\t\ngamma\tVorn\n"));
        w.fill(twoRaces()); // a fresh snapshot, in table order again
        QCOMPARE(heading->sortIndicatorSection(), -1);
    }

    void statisticsOpenOnTheOwnRaceAndEditItsRanges()
    {
        GameData d = twoRaces();
        EmpireStatWindow w(d);
        QCOMPARE(unnamedControls(&w).join(' '), QString());
        QCOMPARE(w.raceList()->currentText(), QStringLiteral("Vorn"));

        m_sink.inputs = QStringList{"0.125", "8.01"};
        w.rangeValue(MinGrav)->click();
        QCOMPARE(readOut(w.rangeValue(MinGrav)), QStringLiteral("Gravity Low: 0.12"));
        w.rangeValue(MaxGrav)->click();
        QCOMPARE(m_sink.messages, (QStringList{"Enter New Value|Enter New Minimum Gravity Value for Vorn|0.5",
                                               "Enter New Value|Enter New Maximum Gravity Value for Vorn|2",
                                               "New Value either exceeds minimum or maximum allowed"}));

        // Without the own race shown, a range asks nothing.
        d.OwnRaceName = QStringLiteral("Nobody");
        m_sink.messages.clear();
        EmpireStatWindow nobody(d);
        QCOMPARE(nobody.raceList()->currentIndex(), -1);
        nobody.rangeValue(MinGrav)->click();
        QVERIFY(m_sink.messages.isEmpty());
    }

    void colourEditorOkNeedsABrightColour()
    {
        GameData d = twoRaces();
        d.player(3)[RaceName] = Value(u"Sirians");
        RaceColourWindow w(d);
        QCOMPARE(unnamedControls(&w).join(' '), QString());
        w.openFor(2); // blue
        for (int i = 0; i < 3; ++i)
            w.slider(i)->setValue(i ? 64 : 63);
        QVERIFY(!w.okButton()->isEnabled()); // 191
        QVERIFY(w.tooDarkNote()->isVisibleTo(&w));
        w.slider(0)->setValue(64);
        QVERIFY(w.okButton()->isEnabled()); // 192
    }

    void historyStepsThroughTheYears()
    {
        HistoryWindow &w = *m_history;
        // The arrows are the window's shortcuts: they act only in the active window.
        w.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&w));
        QCOMPARE(unnamedControls(&w).join(' '), QString());
        // No button pressed in the main window: the usual three layers.
        QCOMPARE(pressedLayers(w), (QList<bool>{true, true, true, false}));

        QCOMPARE(w.year(), LastYear - 3);
        const QImage first = shownYear(w);
        QTest::keyClick(&w, Qt::Key_Right);
        QCOMPARE(w.year(), LastYear - 2);
        QVERIFY(shownYear(w) != first);
        w.yearSlider()->setFocus();
        QTest::keyClick(w.yearSlider(), Qt::Key_Left);
        QCOMPARE(shownYear(w), first);
        QTest::keyClick(&w, Qt::Key_Left); // wraps round
        QCOMPARE(w.year(), LastYear);

        QTest::mouseClick(w.playButton(), Qt::LeftButton);
        QTRY_COMPARE_WITH_TIMEOUT(w.year(), LastYear - 3, 10000); // one step of 700 ms, on a busy machine
        QTest::mouseClick(w.playButton(), Qt::LeftButton);

        // The main window's pressed layers are the history's first ones.
        OverlayButtons pressed;
        pressed.setPressedQuietly(TerritoryButton, true);
        QCOMPARE(pressedLayers(HistoryWindow(m_turns.path(), pressed)), (QList<bool>{false, false, false, true}));
    }

    void historySavesTheAnimation_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("message");
        QTest::newRow("GIF") << "%1/years.gif" << QString();
        QTest::newRow("WebP, by the name's ending") << "%1/years.WEBP" << QString();
        QTest::newRow("no folder there") << "%1/missing/years.gif" << "cannot save the animation";
        QTest::newRow("another ending") << "%1/years.png" << "an animation is saved as GIF (.gif) or WebP (.webp)";
    }
    void historySavesTheAnimation()
    {
        QFETCH(QString, name);
        QFETCH(QString, message);
        QTemporaryDir out;
        name = name.arg(out.path());
        // File > Save Animation, the name typed into the file dialog.
        QTimer::singleShot(0, [name] {
            QTRY_VERIFY(qobject_cast<QFileDialog *>(QApplication::activeModalWidget()));
            auto *edit = QApplication::activeModalWidget()->findChild<QLineEdit *>();
            edit->setText(name);
            QTest::keyClick(edit, Qt::Key_Return);
        });
        m_history->saveAnimationAction()->trigger();
        QCOMPARE(m_sink.messages.size(), int(!message.isEmpty()));
        if (!message.isEmpty()) {
            QVERIFY2(m_sink.messages.first().contains(message), qPrintable(m_sink.messages.first()));
            QCOMPARE(QDir(out.path()).entryList(QDir::Files), QStringList());
        } else if (QImageReader reader(name); name.endsWith(".gif")) {
            QCOMPARE(reader.imageCount(), 4); // every year, at the saved size
            QCOMPARE(reader.size().height(), 800);
        } else {
            QCOMPARE(QMimeDatabase().mimeTypeForFile(name, QMimeDatabase::MatchContent).name(), "image/webp");
        }
    }

    void historyOfAFolderWithoutTurns()
    {
        QTemporaryDir empty;
        HistoryWindow w(empty.path(), OverlayButtons{});
        QSignalSpy loaded(&w, &HistoryWindow::loadingFinished);
        w.show();
        QVERIFY(QTest::qWaitForWindowActive(&w));
        QTRY_COMPARE_WITH_TIMEOUT(loaded.size(), 1, 20000);
        QCOMPARE(m_sink.messages.size(), 1);
        QCOMPARE(readOut(w.mapLabel()), "Map: " + w.mapLabel()->text());
        QTest::keyClick(&w, Qt::Key_Right);
        QCOMPARE(w.year(), 0);
    }

private:
    QTemporaryDir m_turns;
    RecordingSink m_sink;
    std::unique_ptr<HistoryWindow> m_history;
};

QTEST_MAIN(DataWindowsTest)
#include "tst_datawindows.moc"
