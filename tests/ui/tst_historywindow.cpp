// The history window on four generated turns: the layers it starts with,
// the slider and the arrows stepping a year (wrapping round), play, a layer
// toggle redrawing the map, names for every control, saving the animation
// under the name given in the file dialog, and the messages for a folder
// without turns and an animation that cannot be written.

#include "AccessibleText.h"
#include "GameGenerator.h"
#include "HistoryWindow.h"
#include "RecordingSink.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <algorithm>

namespace {

constexpr int LastYear = 2412;

QImage shown(const HistoryWindow &w)
{
    return w.mapLabel()->pixmap().toImage();
}

// Chooses File > Save Animation and types `name` into the dialog, as a user would.
void saveAnimationAs(HistoryWindow &w, const QString &name)
{
    QTimer::singleShot(0, [name] {
        QTRY_VERIFY(qobject_cast<QFileDialog *>(QApplication::activeModalWidget()));
        auto *dialog = static_cast<QFileDialog *>(QApplication::activeModalWidget());
        auto *edit = dialog->findChild<QLineEdit *>();
        edit->setText(name);
        QTest::keyClick(edit, Qt::Key_Return);
    });
    w.saveAnimationAction()->trigger();
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

    void savesTheAnimation_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("message");
        QTest::newRow("GIF") << "%1/years.gif" << QString();
        QTest::newRow("WebP, by the name's ending") << "%1/years.WEBP" << QString();
        QTest::newRow("no folder there") << "%1/missing/years.gif" << "cannot save the animation";
        QTest::newRow("another ending") << "%1/years.png" << "an animation is saved as GIF (.gif) or WebP (.webp)";
    }
    void savesTheAnimation()
    {
        QFETCH(QString, name);
        QFETCH(QString, message);
        QTemporaryDir out;
        name = name.arg(out.path());
        HistoryWindow w(m_dir.path(), OverlayButtons{});
        QSignalSpy loaded(&w, &HistoryWindow::loadingFinished);
        w.show();
        QVERIFY(!w.saveAnimationAction()->isEnabled());
        QVERIFY(loaded.wait(20000));
        QVERIFY(w.saveAnimationAction()->isEnabled());
        m_sink.messages.clear();
        saveAnimationAs(w, name);
        if (!message.isEmpty()) {
            QCOMPARE(m_sink.messages.size(), 1);
            QVERIFY2(m_sink.messages.first().contains(message), qPrintable(m_sink.messages.first()));
            QCOMPARE(QDir(out.path()).entryList(QDir::Files), QStringList());
            return;
        }
        QCOMPARE(m_sink.messages, QStringList());
        QFile file(name);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray head = file.read(12);
        if (name.endsWith(".gif")) {
            QImageReader reader(name);
            QCOMPARE(reader.imageCount(), 4); // every year, at the saved size
            QCOMPARE(reader.size().height(), 800);
        } else {
            QVERIFY(head.startsWith("RIFF") && head.endsWith("WEBP"));
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
