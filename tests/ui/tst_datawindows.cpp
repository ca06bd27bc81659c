// The planet grid, empire statistics and race colour windows driven
// offscreen: heading clicks, copying, the minimum size, the range prompts
// and their refusal, the colour editor's OK rule, and accessible names.

#include "EmpireStatWindow.h"
#include "PlanetGridWindow.h"
#include "RaceColourWindow.h"
#include "RecordingSink.h"

#include <QAccessible>
#include <QAbstractButton>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTableView>
#include <QTest>

namespace {

// Two races; Vorn (column 2) is the own race and owns planets 2 and 3.
GameData twoRaces()
{
    GameData d;
    d.PlayerCount = 2;
    d.OwnRaceName = QStringLiteral("Vorn");
    const char *names[] = {"beta", "Alpha", "gamma"};
    const int populations[] = {1200, 95, 300};
    for (int i = 0; i < 3; ++i) {
        PlanetInfo p;
        p[Number] = Value(i + 1);
        p[Name] = Value(QString::fromLatin1(names[i]));
        p[Population] = Value(populations[i]);
        if (i > 0) {
            p[Owner] = Value(u"Vorn");
            p[OwnerIndex] = Value(2);
        }
        d.Planets.push_back(p);
    }
    d.PlanetCount = 3;
    PlayerInfo &humans = d.player(1);
    humans[RaceName] = Value(u"Humans");
    humans[TotalPlanets] = Value(0);
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
    const QList<QWidget *> controls = window.findChildren<QWidget *>();
    int checked = 0;
    for (QWidget *w : controls) {
        if (!w->isVisibleTo(&window))
            continue;
        if (!qobject_cast<QAbstractButton *>(w) && !qobject_cast<QComboBox *>(w) && !qobject_cast<QSlider *>(w)
            && !qobject_cast<QTableView *>(w))
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
    void init()
    {
        m_sink.messages.clear();
        m_sink.inputs.clear();
        setMessageSink(&m_sink);
    }
    void cleanup() { setMessageSink(nullptr); }

    void gridHeadingClicksSort()
    {
        const GameData d = twoRaces();
        PlanetGridWindow w;
        w.fill(d);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QCOMPARE(w.table()->horizontalHeader()->sectionSize(3), 83); // 1250 twips
        QCOMPARE(w.table()->horizontalHeader()->sectionSize(0), 33); // 500 twips

        clickHeading(w, 3, Qt::RightButton); // names descending, ignoring case
        QCOMPARE(shownNumbers(w), (QList<int>{3, 1, 2}));
        clickHeading(w, 7, Qt::LeftButton); // population ascending, by number
        QCOMPARE(shownNumbers(w), (QList<int>{2, 3, 1}));
        clickHeading(w, 7, Qt::MiddleButton);
        QCOMPARE(shownNumbers(w), (QList<int>{1, 3, 2}));

        // A click on the planet rows never sorts.
        QTest::mouseClick(w.table()->viewport(), Qt::LeftButton, {}, w.table()->visualRect(w.model().index(0, 0)).center());
        QCOMPARE(shownNumbers(w), (QList<int>{1, 3, 2}));

        // A second fill starts again from the table's order.
        w.fill(d);
        QCOMPARE(shownNumbers(w), (QList<int>{1, 2, 3}));
        verifyAccessibleNames(w);
    }

    void gridCopiesSelectedCells()
    {
        PlanetGridWindow w;
        w.fill(twoRaces());
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QItemSelectionModel *selection = w.table()->selectionModel();
        selection->select(QItemSelection(w.model().index(0, 3), w.model().index(1, 4)), QItemSelectionModel::Select);
        selection->select(w.model().index(2, 3), QItemSelectionModel::Select);
        QTest::keyClick(w.table(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("beta\t\nAlpha\tVorn\ngamma\t\n"));

        // The selection follows its rows through a sort.
        clickHeading(w, 3, Qt::LeftButton);
        QCOMPARE(w.selectedText(), QStringLiteral("Alpha\tVorn\nbeta\t\ngamma\t\n"));
    }

    void gridSpringsBackToItsMinimum()
    {
        PlanetGridWindow w;
        w.fill(twoRaces());
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        w.resize(40, 40);
        QCOMPARE(w.frameGeometry().size(), QSize(133, 133)); // 2000 twips, frame included
        QCOMPARE(w.table()->geometry(), w.rect());
    }

    void empireStatisticsShowTheOwnRace()
    {
        GameData d = twoRaces();
        EmpireStatWindow w(d);
        QCOMPARE(w.raceList()->count(), 2);
        QCOMPARE(w.raceList()->currentText(), QStringLiteral("Vorn"));
        QCOMPARE(w.shown(TotalPlanets), QStringLiteral("2"));
        QCOMPARE(w.shown(TotalMines), QStringLiteral("7"));
        QCOMPARE(w.shown(MinGrav), QStringLiteral("0.5"));
        QCOMPARE(w.average(0), QStringLiteral("197"));

        // A race without planets averages 0.
        w.raceList()->setCurrentIndex(0);
        QCOMPARE(w.shownRace(), 1);
        QCOMPARE(w.average(0), QStringLiteral("0"));
        verifyAccessibleNames(w);
    }

    void rangeClicksAskAndStore()
    {
        GameData d = twoRaces();
        EmpireStatWindow w(d);
        m_sink.inputs = QStringList{"0.125", "8.01", ""};
        w.rangeValue(MinGrav)->click();
        QCOMPARE(m_sink.messages,
                 QStringList{"Enter New Value|Enter New Minimum Gravity Value for Vorn|0.5"});
        QCOMPARE(d.player(2)[MinGrav].val(), 0.12);
        QCOMPARE(w.shown(MinGrav), QStringLiteral("0.12"));

        w.rangeValue(MaxGrav)->click();
        QCOMPARE(m_sink.messages.last(), QStringLiteral("New Value either exceeds minimum or maximum allowed"));
        QCOMPARE(d.player(2)[MaxGrav].val(), 2.0);
        QCOMPARE(w.shown(MaxGrav), QStringLiteral("2"));

        w.rangeValue(MaxGrav)->click(); // cancelled
        QCOMPARE(m_sink.messages.size(), 4);
        QCOMPARE(d.player(2)[MaxGrav].val(), 2.0);
    }

    void nothingShownWithoutAMatchingRace()
    {
        GameData d = twoRaces();
        d.OwnRaceName = QStringLiteral("Nobody");
        EmpireStatWindow w(d);
        QCOMPARE(w.raceList()->currentIndex(), -1);
        QCOMPARE(w.shownRace(), 0);
        // The placeholders, the mines row's naming the resources included.
        QCOMPARE(w.shown(TotalMines), QStringLiteral("Total Resources"));
        QCOMPARE(w.shown(MinGrav), QStringLiteral("Min Grav"));
        QCOMPARE(w.average(0), QStringLiteral("Average"));
        w.rangeValue(MinGrav)->click();
        QVERIFY(m_sink.messages.isEmpty());
    }

    void colourEditorOkNeedsABrightColour()
    {
        GameData d;
        RaceColourWindow w(d);
        w.openFor(2); // blue
        QCOMPARE(w.slider(2)->value(), 255);
        QVERIFY(w.okButton()->isEnabled());
        w.slider(0)->setValue(63);
        w.slider(1)->setValue(64);
        w.slider(2)->setValue(64);
        QVERIFY(!w.okButton()->isEnabled()); // 191
        w.slider(0)->setValue(64);
        QVERIFY(w.okButton()->isEnabled()); // 192
        QCOMPARE(w.preview()->colour(), QColor(64, 64, 64));
        verifyAccessibleNames(w);

        // The preview: the colour through black hatching, inside the circle only.
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

        // The close box stores nothing.
        w.openFor(0);
        w.slider(1)->setValue(200);
        w.show();
        w.reject();
        QCOMPARE(d.raceColour(1), 255);
    }

private:
    RecordingSink m_sink;
};

QTEST_MAIN(DataWindowsTest)
#include "tst_datawindows.moc"
