#include "WebpAnimation.h"

#include <new>
#include <webp/encode.h>
#include <webp/mux.h>

namespace {

// Lossless effort from 0 to 9: the maps' flat colours compress well at the
// low end, and the higher levels cost several times the time for a few
// per cent.
constexpr int Effort = 1;

} // namespace

WebpAnimation::WebpAnimation(QIODevice &out, QSize size, int delay) : m_out(out), m_size(size), m_delayMs(delay * 10)
{
    WebPAnimEncoderOptions options;
    if (!WebPAnimEncoderOptionsInit(&options))
        throw AnimationError("the WebP library does not match its headers");
    options.anim_params.loop_count = 0; // for ever
    options.anim_params.bgcolor = 0xFF000000; // the map's black
    m_encoder = WebPAnimEncoderNew(size.width(), size.height(), &options);
    if (!m_encoder)
        throw std::bad_alloc();
}

WebpAnimation::~WebpAnimation()
{
    WebPAnimEncoderDelete(m_encoder);
}

void WebpAnimation::fail(const char *what) const
{
    throw AnimationError(std::string(what) + ": " + WebPAnimEncoderGetError(m_encoder));
}

void WebpAnimation::addFrame(const QImage &image)
{
    Q_ASSERT(image.size() == m_size);
    const QImage frame = image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_ARGB32
                             ? image
                             : image.convertToFormat(QImage::Format_RGB32);
    WebPConfig config;
    if (!WebPConfigInit(&config) || !WebPConfigLosslessPreset(&config, Effort))
        throw AnimationError("the WebP library does not match its headers");
    WebPPicture picture;
    if (!WebPPictureInit(&picture))
        throw AnimationError("the WebP library does not match its headers");
    picture.use_argb = 1;
    picture.width = m_size.width();
    picture.height = m_size.height();
    // Format_RGB32 holds 0xFFRRGGBB words: B, G, R, A in memory.
    if (!WebPPictureImportBGRA(&picture, frame.constBits(), int(frame.bytesPerLine())))
        throw std::bad_alloc();
    const bool added = WebPAnimEncoderAdd(m_encoder, &picture, m_timestamp, &config);
    const bool outOfMemory = picture.error_code == VP8_ENC_ERROR_OUT_OF_MEMORY;
    WebPPictureFree(&picture);
    if (outOfMemory)
        throw std::bad_alloc();
    if (!added)
        fail("cannot add a frame");
    m_timestamp += m_delayMs;
}

void WebpAnimation::finish()
{
    // The end time gives the last frame its time.
    if (!WebPAnimEncoderAdd(m_encoder, nullptr, m_timestamp, nullptr))
        fail("cannot end the animation");
    WebPData data;
    WebPDataInit(&data);
    if (!WebPAnimEncoderAssemble(m_encoder, &data))
        fail("cannot assemble the animation");
    const qint64 written = m_out.write(reinterpret_cast<const char *>(data.bytes), qint64(data.size));
    const bool whole = written == qint64(data.size);
    WebPDataClear(&data);
    if (!whole)
        throw AnimationError(m_out.errorString().toStdString());
}
