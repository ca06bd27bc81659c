#include "GifAnimation.h"

#include "FramePalette.h"
#include "PictureAllocation.h"

#include <QHash>
#include <algorithm>
#include <bit>
#include <gif_lib.h>
#include <vector>

namespace {

constexpr int MostExactColours = 255;  // one index stays free for the transparent one
// Stands for "as shown" while indexing; the frame's transparent index is
// then the one after its palette.
constexpr GifByteType Unchanged = 255;

int writeToDevice(GifFileType *gif, const GifByteType *data, int length)
{
    return int(static_cast<QIODevice *>(gif->UserData)->write(reinterpret_cast<const char *>(data), length));
}

QRgb opaque(QRgb c)
{
    return c | 0xFF000000u;
}

// The smallest rectangle holding every pixel that differs from what is shown.
QRect changedRect(const QImage &shown, const QImage &frame)
{
    if (shown.isNull())
        return frame.rect();
    const int w = frame.width();
    int top = -1, bottom = -1, left = w, right = -1;
    for (int y = 0; y < frame.height(); ++y) {
        const auto *a = reinterpret_cast<const QRgb *>(shown.constScanLine(y));
        const auto *b = reinterpret_cast<const QRgb *>(frame.constScanLine(y));
        if (std::equal(a, a + w, b))
            continue;
        if (top < 0)
            top = y;
        bottom = y;
        int x = 0;
        while (a[x] == b[x])
            ++x;
        left = std::min(left, x);
        x = w - 1;
        while (a[x] == b[x])
            --x;
        right = std::max(right, x);
    }
    if (top < 0)
        return {};
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

// A frame's rectangle as palette indices.
struct IndexedRect {
    std::vector<GifByteType> pixels;
    std::vector<QRgb> palette;
    bool transparent = false;
};

// Exact colours, or nothing when the rectangle has too many.
bool indexExactly(const QImage &shown, const QImage &frame, const QRect &r, IndexedRect &out)
{
    QHash<QRgb, int> index;
    QRgb last = 0;
    int lastIndex = -1;
    GifByteType *p = out.pixels.data();
    for (int y = r.top(); y <= r.bottom(); ++y) {
        const auto *now = reinterpret_cast<const QRgb *>(frame.constScanLine(y));
        const auto *before = shown.isNull() ? nullptr : reinterpret_cast<const QRgb *>(shown.constScanLine(y));
        for (int x = r.left(); x <= r.right(); ++x) {
            const QRgb c = opaque(now[x]);
            if (before && opaque(before[x]) == c) {
                *p++ = Unchanged;
                out.transparent = true;
                continue;
            }
            if (lastIndex < 0 || c != last) {
                auto found = index.constFind(c);
                if (found == index.constEnd()) {
                    if (index.size() == MostExactColours)
                        return false;
                    found = index.insert(c, int(out.palette.size()));
                    out.palette.push_back(c);
                }
                last = c;
                lastIndex = *found;
            }
            *p++ = GifByteType(lastIndex);
        }
    }
    return true;
}

// A palette of the changed pixels' colours (FramePalette), and every
// changed pixel as its index. Pixels that stayed the same are left
// transparent as in the exact case.
void indexReduced(const QImage &shown, const QImage &frame, const QRect &r, IndexedRect &out)
{
    auto changed = [&](int x, int y, QRgb c) {
        return shown.isNull() || opaque(reinterpret_cast<const QRgb *>(shown.constScanLine(y))[x]) != c;
    };
    QHash<QRgb, qint64> counts;
    for (int y = r.top(); y <= r.bottom(); ++y) {
        const auto *now = reinterpret_cast<const QRgb *>(frame.constScanLine(y));
        for (int x = r.left(); x <= r.right(); ++x)
            if (const QRgb c = opaque(now[x]); changed(x, y, c))
                ++counts[c];
    }
    const FramePalette palette(counts, MostExactColours);
    out.palette = palette.colours();

    GifByteType *p = out.pixels.data();
    for (int y = r.top(); y <= r.bottom(); ++y) {
        const auto *now = reinterpret_cast<const QRgb *>(frame.constScanLine(y));
        for (int x = r.left(); x <= r.right(); ++x) {
            const QRgb c = opaque(now[x]);
            if (!changed(x, y, c)) {
                *p++ = Unchanged;
                out.transparent = true;
            } else {
                *p++ = GifByteType(palette.indexOf(c));
            }
        }
    }
}

} // namespace

GifAnimation::GifAnimation(QIODevice &out, QSize size, int delay) : m_size(size), m_delay(delay)
{
    int error = 0;
    m_gif = EGifOpen(&out, writeToDevice, &error);
    if (!m_gif)
        throw AnimationError(GifErrorString(error));
    EGifSetGifVersion(m_gif, true);
    // No global colour table: every frame brings its own.
    check(EGifPutScreenDesc(m_gif, size.width(), size.height(), 8, 0, nullptr));
    // The browsers' loop extension, looping for ever.
    static const GifByteType netscape[] = "NETSCAPE2.0";
    static const GifByteType loopForEver[] = {1, 0, 0};
    check(EGifPutExtensionLeader(m_gif, APPLICATION_EXT_FUNC_CODE));
    check(EGifPutExtensionBlock(m_gif, 11, netscape));
    check(EGifPutExtensionBlock(m_gif, 3, loopForEver));
    check(EGifPutExtensionTrailer(m_gif));
}

GifAnimation::~GifAnimation()
{
    if (m_gif)
        EGifCloseFile(m_gif, nullptr);
}

void GifAnimation::check(int status)
{
    if (status == GIF_ERROR)
        throw AnimationError(GifErrorString(m_gif->Error));
}

void GifAnimation::addFrame(const QImage &image)
{
    Q_ASSERT(image.size() == m_size);
    const QImage frame = image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_ARGB32
                             ? image
                             : image.convertToFormat(QImage::Format_RGB32);
    QRect r = changedRect(m_shown, frame);
    // A frame like the one before still takes its time on screen.
    if (r.isEmpty())
        r = QRect(0, 0, 1, 1);

    IndexedRect indexed;
    indexed.pixels.resize(size_t(r.width()) * size_t(r.height()));
    if (!indexExactly(m_shown, frame, r, indexed)) {
        indexed = IndexedRect{};
        indexed.pixels.resize(size_t(r.width()) * size_t(r.height()));
        indexReduced(m_shown, frame, r, indexed);
    }

    const int transparent = int(indexed.palette.size());
    if (indexed.transparent && transparent != Unchanged)
        std::replace(indexed.pixels.begin(), indexed.pixels.end(), Unchanged, GifByteType(transparent));
    // Colour tables come in powers of two: fewer colours, shorter codes.
    const int used = transparent + (indexed.transparent ? 1 : 0);
    const int entries = std::max(2, int(std::bit_ceil(unsigned(used))));
    std::vector<GifColorType> colours(size_t(entries), GifColorType{0, 0, 0});
    for (size_t i = 0; i < indexed.palette.size(); ++i)
        colours[i] = {GifByteType(qRed(indexed.palette[i])), GifByteType(qGreen(indexed.palette[i])),
                      GifByteType(qBlue(indexed.palette[i]))};
    ColorMapObject *map = GifMakeMapObject(entries, colours.data());
    if (!map)
        throw std::bad_alloc();

    GraphicsControlBlock control{DISPOSE_DO_NOT, false, m_delay,
                                 indexed.transparent ? transparent : NO_TRANSPARENT_COLOR};
    GifByteType extension[4];
    const size_t extensionLength = EGifGCBToExtension(&control, extension);
    int status = EGifPutExtension(m_gif, GRAPHICS_EXT_FUNC_CODE, int(extensionLength), extension);
    if (status != GIF_ERROR)
        status = EGifPutImageDesc(m_gif, r.left(), r.top(), r.width(), r.height(), false, map);
    GifFreeMapObject(map);
    check(status);
    for (int row = 0; row < r.height(); ++row)
        check(EGifPutLine(m_gif, indexed.pixels.data() + size_t(row) * size_t(r.width()), r.width()));

    if (m_shown.isNull())
        m_shown = newImage(m_size, QImage::Format_RGB32);
    const GifByteType *p = indexed.pixels.data();
    for (int y = r.top(); y <= r.bottom(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(m_shown.scanLine(y));
        for (int x = r.left(); x <= r.right(); ++x, ++p)
            if (!(indexed.transparent && *p == transparent))
                line[x] = indexed.palette[*p];
    }
}

void GifAnimation::finish()
{
    int error = 0;
    const int status = EGifCloseFile(m_gif, &error);
    m_gif = nullptr;
    if (status == GIF_ERROR)
        throw AnimationError(GifErrorString(error));
}
