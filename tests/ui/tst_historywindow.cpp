// The history window on four generated turns: the layers it starts with,
// the slider and the arrows stepping a year (wrapping round), play, a layer
// toggle redrawing the map, names for every control, and the message for a
// folder without turns.

#include "AccessibleText.h"
#include "GameGenerator.h"
#include "HistoryWindow.h"
#include "RecordingSink.h"

#include <QAbstractButton>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <algorithm>

namespace {

constexpr int LastYear = 2412;

QImage shown(const HistoryWindow &w)
{
    return w.mapLabel()->pixmap().toImage();
}

} // namespace

class HistoryWindowTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        gamegen::GameOptions options;
        options.mapPath = VELTRO_TEST_MAPS "/tiny-packed-00001.map";
        options.outDir = m_dir.path();
        options.players = 3;
        options.gameYear = LastYear;
        gamegen::generateHistory(options, 4);
    }

    void stepsThroughTheYears()
    {
        HistoryWindow w(m_dir.path(), OverlayButtons{});
        QSignalSpy loaded(&w, &HistoryWindow::loadingFinished);
        w.show();
        // The arrows are the window's shortcuts: they act only in the active window.
        QVERIFY(QTest::qWaitForWindowActive(&w));
        QTRY_COMPARE_WITH_TIMEOUT(loaded.size(), 1, 20000); // may have come while waiting above
        QVERIFY(w.isLoaded());
        QVERIFY(m_sink.messages.isEmpty());
        // No button pressed in the main window: the usual three layers.
        for (OverlayButton b : {BordersButton, UniverseButton, OwnedButton})
            QVERIFY(w.layerButton(b)->isChecked());
        QVERIFY(!w.layerButton(TerritoryButton)->isChecked());

        QCOMPARE(w.yearSlider()->maximum(), 3);
        QCOMPARE(w.year(), LastYear - 3);
        const QList<QLabel *> labels = w.findChildren<QLabel *>();
        const auto year = std::find_if(labels.begin(), labels.end(),
                                       [](QLabel *l) { return l->text() == QString::number(LastYear - 3); });
        QVERIFY(year != labels.end());
        QCOMPARE(readOut(*year), QStringLiteral("Year shown: %1").arg(LastYear - 3));
        const QImage first = shown(w);
        QTest::keyClick(&w, Qt::Key_Right);
        QCOMPARE(w.year(), LastYear - 2);
        QVERIFY(shown(w) != first);
        w.yearSlider()->setFocus();
        QTest::keyClick(w.yearSlider(), Qt::Key_Left);
        QCOMPARE(w.year(), LastYear - 3);
        QCOMPARE(shown(w), first);
        QTest::keyClick(&w, Qt::Key_Left);
        QCOMPARE(w.year(), LastYear);

        QTest::mouseClick(w.layerButton(BordersButton), Qt::LeftButton);
        const QImage noBorders = shown(w);
        QVERIFY(!noBorders.isNull());
        QVERIFY(noBorders != first);

        QTest::mouseClick(w.playButton(), Qt::LeftButton);
        QCOMPARE(w.playButton()->text(), QString("Pause"));
        QTRY_COMPARE_WITH_TIMEOUT(w.year(), LastYear - 3, 10000); // one step of 700 ms, on a busy machine
        QTest::mouseClick(w.playButton(), Qt::LeftButton);
        QCOMPARE(w.playButton()->text(), QString("Play"));
    }

    void startsWithTheMainWindowsLayers()
    {
        OverlayButtons pressed;
        pressed.setPressedQuietly(TerritoryButton, true);
        HistoryWindow w(m_dir.path(), pressed);
        QVERIFY(w.layerButton(TerritoryButton)->isChecked());
        QVERIFY(!w.layerButton(BordersButton)->isChecked());
        for (QWidget *control : w.findChildren<QWidget *>()) {
            if (qobject_cast<QAbstractButton *>(control) || qobject_cast<QSlider *>(control)
                || qobject_cast<QLabel *>(control) || qobject_cast<QProgressBar *>(control))
                QVERIFY2(!control->accessibleName().isEmpty(), control->metaObject()->className());
        }
    }

    void folderWithoutTurns()
    {
        QTemporaryDir empty;
        m_sink.messages.clear();
        HistoryWindow w(empty.path(), OverlayButtons{});
        QSignalSpy loaded(&w, &HistoryWindow::loadingFinished);
        w.show();
        QVERIFY(QTest::qWaitForWindowActive(&w));
        QTRY_COMPARE_WITH_TIMEOUT(loaded.size(), 1, 20000);
        QVERIFY(!w.isLoaded());
        QCOMPARE(m_sink.messages.size(), 1);
        QVERIFY2(m_sink.messages.first().contains("no turns here"), qPrintable(m_sink.messages.first()));
        QCOMPARE(readOut(w.mapLabel()), "Map: " + w.mapLabel()->text());
        QTest::keyClick(&w, Qt::Key_Right);
        QCOMPARE(w.year(), 0);
    }

private:
    QTemporaryDir m_dir;
    RecordingSink m_sink;
};

QTEST_MAIN(HistoryWindowTest)
#include "tst_historywindow.moc"
