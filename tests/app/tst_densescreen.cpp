// The main window on a screen of device pixel ratio 2: the map picture is
// drawn at device pixels, twice the widget's size, not scaled up.

#include "MainWindow.h"
#include "MapCanvasWidget.h"
#include "RasterSurface.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class DenseScreenTest : public QObject {
    Q_OBJECT
private slots:
    void mapPictureHasDevicePixels()
    {
        MainWindow w;
        w.resize(1000, 700);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QCOMPARE(w.devicePixelRatioF(), 2.0);
        const int side = w.mapWidget()->width();
        QVERIFY(side > 100);
        QCOMPARE(w.raster().image().width(), 2 * side);
        QCOMPARE(w.raster().image().height(), 2 * side);
        QCOMPARE(w.raster().pixels(), side);
    }
};

int main(int argc, char *argv[])
{
    // The offscreen platform reads its screens from a file.
    QTemporaryDir dir;
    const QString config = dir.filePath(QStringLiteral("screens.json"));
    QFile file(config);
    if (!file.open(QIODevice::WriteOnly))
        return 1;
    file.write(R"({"screens": [{"name": "dense", "x": 0, "y": 0, "width": 1600, "height": 1000,
                  "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 2}]})");
    file.close();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + config.toLocal8Bit());
    QApplication app(argc, argv);
    DenseScreenTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_densescreen.moc"
