// The GIF encoder read back with Qt's reader: frames of few colours come
// back exactly, also when only part changes or nothing does; a frame of
// a thousand colours keeps its common flat colours exact and every other
// pixel within 12 levels in each channel.

#include "GifAnimation.h"

#include <QBuffer>
#include <QImageReader>
#include <QTest>
#include <algorithm>
#include <cstdlib>

namespace {

QList<QImage> encodeAndRead(const QList<QImage> &frames)
{
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    GifAnimation gif(out, frames.first().size(), 10);
    for (const QImage &frame : frames)
        gif.addFrame(frame);
    gif.finish();
    QBuffer in(&out.buffer());
    QImageReader reader(&in, "gif");
    QList<QImage> read;
    for (QImage frame; reader.read(&frame);)
        read << frame.convertToFormat(QImage::Format_RGB32);
    return read;
}

QImage flat(QRgb colour)
{
    QImage image(64, 48, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

} // namespace

class GifAnimationTest : public QObject {
    Q_OBJECT
private slots:
    void fewColoursComeBackExactly()
    {
        QImage second = flat(qRgb(0, 0, 0));
        second.setPixel(10, 5, qRgb(255, 0, 0));
        QImage third = second;
        third.setPixel(40, 30, qRgb(0, 0, 0)); // unchanged: it was black
        third.setPixel(41, 30, qRgb(1, 2, 3));
        const QList<QImage> frames{flat(qRgb(0, 0, 0)), second, third, third};
        QCOMPARE(encodeAndRead(frames), frames);
    }

    void manyColoursKeepTheCommonOnes()
    {
        // A flat race colour over most of the frame, a gradient of 1024
        // colours in a corner.
        QImage frame = flat(qRgb(0, 255, 128));
        for (int y = 0; y < 32; ++y)
            for (int x = 0; x < 32; ++x)
                frame.setPixel(x, y, qRgb(x * 8, y * 8, (x + y) * 4));
        for (int x = 0; x < 64; ++x)
            frame.setPixel(x, 40, qRgb(255, 255, 0));
        const QImage read = encodeAndRead({flat(qRgb(0, 0, 0)), frame}).last();
        QCOMPARE(read.pixel(50, 10), qRgb(0, 255, 128));
        QCOMPARE(read.pixel(5, 40), qRgb(255, 255, 0));
        for (int y = 0; y < 32; ++y)
            for (int x = 0; x < 32; ++x) {
                const QRgb a = frame.pixel(x, y), b = read.pixel(x, y);
                QVERIFY2(std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                                   std::abs(qBlue(a) - qBlue(b))}) <= 12,
                         qPrintable(QString("%1,%2").arg(x).arg(y)));
            }
    }
};

QTEST_GUILESS_MAIN(GifAnimationTest)
#include "tst_gifanimation.moc"
