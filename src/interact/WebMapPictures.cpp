#include "WebMapPictures.h"

#include "MapPicture.h"
#include "PlanetNames.h"

#include <QBuffer>
#include <QHash>
#include <QImageWriter>

namespace {

// Qt's PNG quality 80 is zlib's compression level 1.
constexpr int FastestPng = 80;

// A palette image of the same pixels, or a null image beyond 256 colours.
QImage paletted(const QImage &image)
{
    const QImage source = image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    QImage indexed(source.size(), QImage::Format_Indexed8);
    QList<QRgb> palette;
    QHash<QRgb, uchar> index;
    QRgb last = 0;
    uchar lastIndex = 0;
    for (int y = 0, h = source.height(); y < h; ++y) {
        const auto *in = reinterpret_cast<const QRgb *>(source.constScanLine(y));
        uchar *out = indexed.scanLine(y);
        for (int x = 0, w = source.width(); x < w; ++x) {
            const QRgb c = in[x];
            // Runs of one colour are the rule on the map.
            if (c != last || palette.isEmpty()) {
                const auto found = index.constFind(c);
                if (found != index.constEnd()) {
                    lastIndex = *found;
                } else {
                    if (palette.size() == 256)
                        return QImage();
                    lastIndex = uchar(palette.size());
                    index.insert(c, lastIndex);
                    palette << c;
                }
                last = c;
            }
            out[x] = lastIndex;
        }
    }
    indexed.setColorTable(palette);
    return indexed;
}

} // namespace

QByteArray exactPng(const QImage &image)
{
    const QImage small = image.format() == QImage::Format_Mono ? image : paletted(image);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "png");
    // The fastest compression: a year has a dozen pictures to write, and the
    // map's long runs of one colour compress well even so.
    writer.setQuality(FastestPng);
    if (!writer.write(small.isNull() ? image : small))
        throw std::runtime_error("the picture could not be encoded: " + writer.errorString().toStdString());
    return bytes;
}

QByteArray viewPicturePng(const GameData &game, const std::vector<OverlayButton> &layers, int pixels)
{
    GameData drawn = game;
    OverlayButtons buttons;
    for (OverlayButton b : layers)
        buttons.setPressedQuietly(b, true);
    ZoomFlags zoom;
    RedrawHost host;
    MapPicture picture(pixels);
    picture.redraw(drawn, buttons, zoom, host);
    return exactPng(picture.raster().image());
}

QByteArray namesPicturePng(const GameData &game, int pixels)
{
    MapPicture picture(pixels);
    picture.canvas().cls();
    drawPlanetNames(game, picture.canvas());
    // Names are white and drawn without smoothing: every white pixel is a
    // name's and stays; everything else lets the view show through. One bit
    // a pixel, most of them clear, makes a small file quickly.
    const QImage &drawn = picture.raster().image();
    QImage names(drawn.size(), QImage::Format_Mono);
    names.setColorTable({qRgba(0, 0, 0, 0), qRgba(255, 255, 255, 255)});
    names.fill(0);
    for (int y = 0, h = drawn.height(); y < h; ++y) {
        const auto *in = reinterpret_cast<const QRgb *>(drawn.constScanLine(y));
        uchar *out = names.scanLine(y);
        for (int x = 0, w = drawn.width(); x < w; ++x)
            if ((in[x] & 0xFFFFFF) == 0xFFFFFF)
                out[x >> 3] |= uchar(0x80 >> (x & 7));
    }
    return exactPng(names);
}
