#pragma once
// An animated WebP written with libwebp's animation encoder: lossless, so
// that every frame reads back exactly as drawn, whatever its colours. The
// encoder keeps each frame compressed (only what changed since the frame
// before) and writes the file once the last frame is in.

#include "Animation.h"

struct WebPAnimEncoder;

class WebpAnimation : public Animation {
public:
    // Throws AnimationError when the encoder cannot start.
    WebpAnimation(QIODevice &out, QSize size, int delay);
    ~WebpAnimation() override;
    WebpAnimation(const WebpAnimation &) = delete;
    WebpAnimation &operator=(const WebpAnimation &) = delete;

    void addFrame(const QImage &frame) override;
    void finish() override;

private:
    [[noreturn]] void fail(const char *what) const;

    QIODevice &m_out;
    QSize m_size;
    int m_delayMs;
    int m_timestamp = 0;
    WebPAnimEncoder *m_encoder = nullptr;
};
