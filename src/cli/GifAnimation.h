#pragma once
// An animated GIF written frame by frame with giflib: it loops for ever and
// every frame shows for the same time. Flat colours stay exact: a frame of
// at most 255 colours keeps them all; a busier frame takes a palette of its
// own (FramePalette), without dithering. Each frame after the first holds
// only the rectangle that changed, with the pixels that stayed the same
// transparent, which keeps a history small.

#include "Animation.h"

struct GifFileType;

class GifAnimation : public Animation {
public:
    // Writes the header for frames of `size`, each shown `delay` hundredths
    // of a second. Throws AnimationError when the device refuses.
    GifAnimation(QIODevice &out, QSize size, int delay);
    ~GifAnimation() override;
    GifAnimation(const GifAnimation &) = delete;
    GifAnimation &operator=(const GifAnimation &) = delete;

    void addFrame(const QImage &frame) override;
    void finish() override;

private:
    void check(int status);

    GifFileType *m_gif = nullptr;
    QSize m_size;
    int m_delay;
    // What a viewer shows after the frames so far.
    QImage m_shown;
};
