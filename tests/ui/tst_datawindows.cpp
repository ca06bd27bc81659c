// The planet grid, empire statistics and race colour windows driven
// offscreen: heading clicks, copying, the minimum size, the range prompts
// and their refusal, the colour editor's OK rule, and accessible names.

#include "AccessibleText.h"
#include "EmpireStatWindow.h"
#include "PlanetGridWindow.h"
#include "RaceColourWindow.h"
#include "RecordingSink.h"

#include <QAccessible>
#include <QClipboard>
#include <QComboBox>
#include <QApplication>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QHeaderView>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTableView>
#include <QTest>
#include <QToolTip>

namespace {

// Vorn, race 2 and the own race, owns the second and third planets; the
// Humans own none.
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
    for (int i : {2, 3}) {
        d.planet(i)[Owner] = Value(u"Vorn");
        d.planet(i)[OwnerIndex] = Value(2);
    }
    d.player(1)[RaceName] = Value(u"Humans");
    d.player(1)[TotalPlanets] = Value(0);
    PlayerInfo &vorn = d.player(2);
    vorn[RaceName] = Value(u"Vorn");
    vorn[TotalPlanets] = Value(2);
    vorn[TotalPopulation] = Value(395);
    vorn[TotalMines] = Value(7);
    vorn[MinGrav] = Value(0.5);
    vorn[MaxGrav] = Value(2);
    return d;
}

QList<int> shownNumbers(PlanetGridWindow &w)
{
    QList<int> n;
    for (int r = 0; r < w.model().rowCount(); ++r)
        n << w.model().text(r, 0).toInt();
    return n;
}

void clickHeading(PlanetGridWindow &w, int column, Qt::MouseButton button)
{
    QHeaderView *heading = w.table()->horizontalHeader();
    const QPoint at(heading->sectionViewportPosition(column) + heading->sectionSize(column) / 2, heading->height() / 2);
    QTest::mouseClick(heading->viewport(), button, {}, at);
}

// Every button, list, slider and table that `window` shows has a name for
// screen readers.
void verifyAccessibleNames(QWidget &window)
{
    int checked = 0;
    for (QWidget *w : window.findChildren<QWidget *>()) {
        if (!w->isVisibleTo(&window) || !(w->inherits("QAbstractButton") || w->inherits("QComboBox")
                                          || w->inherits("QSlider") || w->inherits("QTableView")))
            continue;
        const QAccessibleInterface *a = QAccessible::queryAccessibleInterface(w);
        QVERIFY2(a && !a->text(QAccessible::Name).isEmpty(), w->metaObject()->className());
        ++checked;
    }
    QVERIFY(checked > 0);
}

} // namespace

class DataWindowsTest : public QObject {
    Q_OBJECT
private slots:
    void init() { m_sink.messages.clear(); }

    void gridHeadingClicksSortAndCellsCopy()
    {
        PlanetGridWindow w;
        w.fill(twoRaces());
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QCOMPARE(w.table()->horizontalHeader()->sectionSize(3), 83); // 1250 twips
        verifyAccessibleNames(w);

        // Not sorted yet: no heading marked. The arrow and the screen
        // reader's description follow the column sorted last.
        QHeaderView *heading = w.table()->horizontalHeader();
        QCOMPARE(heading->sortIndicatorSection(), -1);
        clickHeading(w, 3, Qt::RightButton); // names descending, ignoring case
        QCOMPARE(shownNumbers(w), (QList<int>{3, 1, 2}));
        QCOMPARE(heading->sortIndicatorSection(), 3);
        QCOMPARE(heading->sortIndicatorOrder(), Qt::DescendingOrder);
        QCOMPARE(w.model().headerData(3, Qt::Horizontal, Qt::AccessibleDescriptionRole).toString(), QStringLiteral("Sorted descending"));
        clickHeading(w, 7, Qt::LeftButton); // population ascending, by number
        QCOMPARE(shownNumbers(w), (QList<int>{2, 3, 1}));
        QCOMPARE(heading->sortIndicatorSection(), 7);
        QCOMPARE(heading->sortIndicatorOrder(), Qt::AscendingOrder);
        QCOMPARE(w.model().headerData(7, Qt::Horizontal, Qt::AccessibleDescriptionRole).toString(), QStringLiteral("Sorted ascending"));
        QVERIFY(!w.model().headerData(3, Qt::Horizontal, Qt::AccessibleDescriptionRole).isValid());
        QVERIFY(heading->isSortIndicatorShown());

        // Every heading says which button sorts which way.
        const QPoint on(heading->sectionViewportPosition(5) + 4, heading->height() / 2);
        QHelpEvent help(QEvent::ToolTip, on, heading->viewport()->mapToGlobal(on));
        QApplication::sendEvent(heading->viewport(), &help);
        QCOMPARE(QToolTip::text(), QStringLiteral("Left click sorts ascending, right click descending"));
        clickHeading(w, 7, Qt::MiddleButton);
        QCOMPARE(shownNumbers(w), (QList<int>{1, 3, 2}));
        // A click on the planet rows never sorts.
        QTest::mouseClick(w.table()->viewport(), Qt::LeftButton, {}, w.table()->visualRect(w.model().index(0, 0)).center());
        QCOMPARE(shownNumbers(w), (QList<int>{1, 3, 2}));

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

        // A fresh snapshot is in table order again.
        w.fill(twoRaces());
        QCOMPARE(heading->sortIndicatorSection(), -1);
    }

    void gridSpringsBackToItsMinimum()
    {
        PlanetGridWindow w;
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        w.resize(40, 40);
        QCOMPARE(w.frameGeometry().size(), QSize(133, 133)); // 2000 twips, frame included
        QCOMPARE(w.table()->geometry(), w.rect());
    }

    void statisticsOpenOnTheOwnRaceAndEditItsRanges()
    {
        GameData d = twoRaces();
        EmpireStatWindow w(d);
        verifyAccessibleNames(w);
        QCOMPARE(w.raceList()->currentText(), QStringLiteral("Vorn"));
        QCOMPARE(w.shown(TotalMines), QStringLiteral("7"));
        QCOMPARE(w.average(0), QStringLiteral("197"));
        // Screen readers read every figure with its caption.
        const std::pair<const char *, const char *> spoken[] = {
            {"ShowData3", "Total Planets: 2"}, {"ShowData4", "Population: 395"}, {"ShowData5", "Mines: 7"},
            {"AvgData0", "Average Population: 197"}, {"AvgData1", "Average Mines: 3"},
            {"ShowData8", "Gravity Low: 0.5"}, {"ShowData9", "Gravity High: 2"}};
        for (const auto &[name, text] : spoken)
            QCOMPARE(readOut(w.findChild<QWidget *>(QLatin1String(name))), QString::fromLatin1(text));

        m_sink.inputs = QStringList{"0.125", "8.01"};
        w.rangeValue(MinGrav)->click();
        QCOMPARE(m_sink.messages, QStringList{"Enter New Value|Enter New Minimum Gravity Value for Vorn|0.5"});
        QCOMPARE(d.player(2)[MinGrav].val(), 0.12);
        QCOMPARE(w.shown(MinGrav), QStringLiteral("0.12"));
        QCOMPARE(readOut(w.rangeValue(MinGrav)), QStringLiteral("Gravity Low: 0.12"));
        w.rangeValue(MaxGrav)->click();
        QCOMPARE(m_sink.messages.last(), QStringLiteral("New Value either exceeds minimum or maximum allowed"));
        QCOMPARE(w.shown(MaxGrav), QStringLiteral("2"));

        // A race without planets averages 0.
        w.raceList()->setCurrentIndex(0);
        QCOMPARE(w.average(0), QStringLiteral("0"));
    }

    void statisticsWithoutARaceShownAskNothing()
    {
        GameData d = twoRaces();
        d.OwnRaceName = QStringLiteral("Nobody");
        EmpireStatWindow w(d);
        QCOMPARE(w.raceList()->currentIndex(), -1);
        // The placeholders stay, the mines row's naming the resources included.
        QCOMPARE(w.shown(TotalMines), QStringLiteral("Total Resources"));
        QCOMPARE(w.average(0), QStringLiteral("Average"));
        w.rangeValue(MinGrav)->click();
        QVERIFY(m_sink.messages.isEmpty());
    }

    void colourEditorOkNeedsABrightColour()
    {
        GameData d = twoRaces();
        d.player(3)[RaceName] = Value(u"Sirians");
        RaceColourWindow w(d);
        verifyAccessibleNames(w);
        w.openFor(2); // blue
        QCOMPARE(w.raceShown()->text(), QStringLiteral("Colour of Sirians"));
        QCOMPARE(w.slider(2)->value(), 255);
        QVERIFY(!w.tooDarkNote()->isVisibleTo(&w));
        w.slider(0)->setValue(63);
        w.slider(1)->setValue(64);
        w.slider(2)->setValue(64);
        QVERIFY(!w.okButton()->isEnabled()); // 191
        QVERIFY(w.tooDarkNote()->isVisibleTo(&w));
        QCOMPARE(w.tooDarkNote()->text(), QStringLiteral("Too dark for the black map: red + green + blue must reach 192"));
        w.slider(0)->setValue(64);
        QVERIFY(w.okButton()->isEnabled()); // 192
        QVERIFY(!w.tooDarkNote()->isVisibleTo(&w));

        // The colour through black hatching, inside the circle only.
        const QImage picture = w.preview()->grab().toImage();
        int coloured = 0;
        for (int y = 40; y < 56; ++y)
            for (int x = 40; x < 56; ++x)
                coloured += picture.pixelColor(x, y) == QColor(64, 64, 64);
        QVERIFY(coloured > 64 && coloured < 250);
        QCOMPARE(picture.pixelColor(3, 3), QColor(Qt::black));

        QSignalSpy stored(&w, &RaceColourWindow::colourStored);
        w.show();
        w.okButton()->click();
        QVERIFY(!w.isVisible());
        QCOMPARE(d.raceColour(3), 64 + 256 * 64 + 65536 * 64);
        QCOMPARE(stored.size(), 1);
        QCOMPARE(stored[0][0].toInt(), 2);
    }

private:
    RecordingSink m_sink;
};

QTEST_MAIN(DataWindowsTest)
#include "tst_datawindows.moc"
