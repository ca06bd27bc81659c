#include "PngWriter.h"

#include <QSysInfo>
#include <csetjmp>
#include <png.h>
#include <zlib.h>

namespace {

void writeToDevice(png_structp png, png_bytep data, png_size_t length)
{
    auto *out = static_cast<QIODevice *>(png_get_io_ptr(png));
    if (out->write(reinterpret_cast<const char *>(data), qint64(length)) != qint64(length))
        png_error(png, "write failed");
}

void flushNothing(png_structp) {}

// libpng reports errors by longjmp and warnings to stderr; the caller
// gives the message.
void quietly(png_structp, png_const_charp) {}

} // namespace

bool writePng(const QImage &image, QIODevice &out)
{
    const QImage rgb = image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_ARGB32
                           ? image
                           : image.convertToFormat(QImage::Format_RGB32);
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, quietly);
    if (!png)
        return false;
    png_infop info = png_create_info_struct(png);
    if (!info || setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        return false;
    }
    png_set_write_fn(png, &out, writeToDevice, flushNothing);
    png_set_IHDR(png, info, png_uint_32(rgb.width()), png_uint_32(rgb.height()), 8, PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_UP);
    png_set_compression_level(png, Z_BEST_SPEED);
    png_write_info(png, info);
    // 0xAARRGGBB words are B, G, R, A in memory on little-endian machines,
    // A, R, G, B on big-endian ones.
    if constexpr (QSysInfo::ByteOrder == QSysInfo::LittleEndian) {
        png_set_bgr(png);
        png_set_filler(png, 0, PNG_FILLER_AFTER);
    } else {
        png_set_filler(png, 0, PNG_FILLER_BEFORE);
    }
    for (int y = 0; y < rgb.height(); ++y)
        png_write_row(png, const_cast<png_bytep>(rgb.constScanLine(y)));
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return true;
}
