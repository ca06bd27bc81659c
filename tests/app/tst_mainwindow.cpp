// The main window driven offscreen: its start-up state, loading the sample
// game through the file selection, overlay presses and the resize rule.

#include "MainWindow.h"
#include "RecordingSink.h"
#include "OpenFileDialog.h"
#include "OverlayButtonBar.h"
#include "RasterSurface.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

namespace {

bool pictureIsBlack(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if ((image.pixel(x, y) & 0xFFFFFF) != 0)
                return false;
    return true;
}

QAction *action(const MainWindow &w, const char *name)
{
    return w.findChild<QAction *>(QLatin1String(name));
}

} // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        m_sink.messages.clear();
        setMessageSink(&m_sink);
    }
    void cleanup() { setMessageSink(nullptr); }

    void startsWithNothingLoaded()
    {
        MainWindow w;
        QCOMPARE(w.windowTitle(), QStringLiteral("Veltro Marches for Stars!   Version 0.1.0"));
        for (int i = 0; i < OverlayButtonCount; ++i)
            QVERIFY(!w.overlayBar()->button(i)->isEnabled());
        QVERIFY(!w.findChild<QMenu *>(QStringLiteral("mnuOver"))->isEnabled());
        QVERIFY(action(w, "mnuMap")->isEnabled());
        QVERIFY(!action(w, "mnuGrid")->isEnabled()); // arrives with the planet grid
        QVERIFY(pictureIsBlack(w.raster().image()));
    }

    void findsTheGameFolderInTheWinePrefix()
    {
        QTemporaryDir prefix;
        QVERIFY(QDir(prefix.path()).mkpath(QStringLiteral("drive_c/WINDOWS")));
        QVERIFY(QDir(prefix.path()).mkpath(QStringLiteral("drive_c/Games/STARS")));
        QFile ini(prefix.filePath(QStringLiteral("drive_c/WINDOWS/stars.ini")));
        QVERIFY(ini.open(QIODevice::WriteOnly));
        ini.write("[Misc]\r\nStarsInstallDir=C:\\games\\Stars\r\n");
        ini.close();
        qputenv("WINEPREFIX", prefix.path().toLocal8Bit());
        QCOMPARE(MainWindow().gameData().StartDir, prefix.filePath(QStringLiteral("drive_c/Games/STARS")));

        // Without a settings file the selection opens in the home folder.
        QVERIFY(ini.remove());
        QCOMPARE(MainWindow().gameData().StartDir, QDir::homePath());
        qunsetenv("WINEPREFIX");
    }

    void loadsTheSampleAndDrawsOverlays()
    {
        MainWindow w;
        w.resize(1200, 800);
        OpenFileDialog &dialog = w.openFileDialog();
        QVERIFY(dialog.openOn(QStringLiteral(VELTRO_SAMPLES "/MARCHES.map")));

        QTest::keyClicks(dialog.gameYearBox(), QStringLiteral("2431"));
        QTest::keyClicks(dialog.yearBox(2), QStringLiteral("2428"));
        dialog.confirm();
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(w.gameData().OpenFileCancelled, int16_t(0));

        QVERIFY(w.generate());
        QVERIFY(w.windowTitle().endsWith(QStringLiteral("{ MARCHES.map  Year:2431 }")));
        QCOMPARE(w.findChild<QComboBox *>(QStringLiteral("Combo1"))->count(), w.gameData().PlayerCount);
        for (int i = 0; i < OverlayButtonCount; ++i)
            QVERIFY(w.overlayBar()->button(i)->isEnabled());
        QVERIFY(w.findChild<QMenu *>(QStringLiteral("mnuOver"))->isEnabled());
        QVERIFY(pictureIsBlack(w.raster().image()));

        QTest::mouseClick(w.overlayBar()->button(UniverseButton), Qt::LeftButton);
        QTest::mouseClick(w.overlayBar()->button(BordersButton), Qt::LeftButton);
        QVERIFY(w.overlayButtons().pressed(UniverseButton));
        QVERIFY(!pictureIsBlack(w.raster().image()));

        QTest::mouseClick(w.overlayBar()->button(ClearMapButton), Qt::LeftButton);
        for (int i = 0; i < OverlayButtonCount; ++i) {
            QVERIFY(!w.overlayButtons().pressed(i));
            QVERIFY(!w.overlayBar()->button(i)->isChecked());
        }
        QVERIFY(pictureIsBlack(w.raster().image()));
        QVERIFY(m_sink.messages.isEmpty());

        // Menu overlays draw over the picture as it stands.
        QVERIFY(w.findChild<QPushButton *>(QStringLiteral("EstHab"))->isEnabled());
        action(w, "mnuStarGate")->trigger();
        QCOMPARE(m_sink.messages.last(), QStringLiteral("Show Safe gating distance only?"));
        QVERIFY(!pictureIsBlack(w.raster().image()));
    }

    void savesTheMapBesideTheGame()
    {
        QTemporaryDir dir;
        for (const QString &name : QDir(QStringLiteral(VELTRO_SAMPLES)).entryList({QStringLiteral("MARCHES.*")}))
            QVERIFY(QFile::copy(QStringLiteral(VELTRO_SAMPLES "/") + name, dir.filePath(name)));
        MainWindow w;
        QVERIFY(w.openFileDialog().openOn(dir.filePath(QStringLiteral("MARCHES.map"))));
        w.openFileDialog().confirm();
        QVERIFY(w.generate());
        QTest::mouseClick(w.overlayBar()->button(UniverseButton), Qt::LeftButton);
        action(w, "mnuSave")->trigger();
        const QString path = dir.filePath(QStringLiteral("Universe Map.bmp")); // no year given
        QCOMPARE(m_sink.messages, QStringList{QStringLiteral("Map saved to ") + QDir::toNativeSeparators(path)});
        QImage saved(path, "BMP");
        QCOMPARE(saved.size(), w.raster().image().size());
        QCOMPARE(saved.convertToFormat(QImage::Format_RGB32), w.raster().image());
    }

    void aFailedLoadShowsOneMessageAndKeepsTheWindowUsable()
    {
        QTemporaryDir dir;
        for (const char *name : {"bad.map", "bad.P1"}) {
            QFile f(dir.filePath(QLatin1String(name)));
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write("#\tX\tY\tName\r\n1\t1010\tnowhere\tA\r\n");
        }
        MainWindow w;
        QVERIFY(w.openFileDialog().openOn(dir.filePath(QStringLiteral("bad.map"))));
        w.openFileDialog().confirm();
        QVERIFY(!w.generate());
        QCOMPARE(m_sink.messages.size(), 1);
        QVERIFY(m_sink.messages[0].contains(QStringLiteral("bad.map, line 2")));
        QVERIFY(action(w, "mnuMap")->isEnabled());
        QVERIFY(!w.overlayBar()->button(UniverseButton)->isEnabled());
    }

    void tooSmallAWindowMovesNothing()
    {
        MainWindow w;
        w.resize(1000, 700);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QWidget *universe = w.findChild<QWidget *>(QStringLiteral("Universe"));
        const QRect before = universe->geometry();
        QVERIFY(before.width() > 100);
        w.resize(1000, 2000 / 15 - 30); // below 2001 twips outside
        QCOMPARE(universe->geometry(), before);
        w.resize(1000, 900);
        QVERIFY(universe->width() > before.width());
        QCOMPARE(universe->width(), universe->height());
    }

private:
    RecordingSink m_sink;
};

QTEST_MAIN(MainWindowTest)
#include "tst_mainwindow.moc"
