#pragma once
// An animated GIF written frame by frame with giflib: it loops for ever and
// every frame shows for the same time. Flat colours stay exact: a frame of
// at most 255 colours keeps them all; in a busier frame the 128 most common
// colours (the race colours and the black) stay exact and only the rare
// rest is reduced, by giflib's median cut, without dithering. Each frame
// after the first holds only the rectangle that changed, with the pixels
// that stayed the same transparent, which keeps a history small.

#include <QImage>
#include <QIODevice>
#include <stdexcept>

struct GifFileType;

struct GifError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class GifAnimation {
public:
    // Writes the header for frames of `size`, each shown `delay` hundredths
    // of a second. Throws GifError when the device refuses.
    GifAnimation(QIODevice &out, QSize size, int delay);
    ~GifAnimation();
    GifAnimation(const GifAnimation &) = delete;
    GifAnimation &operator=(const GifAnimation &) = delete;

    // A frame of the animation's size, in any 32-bit RGB format.
    void addFrame(const QImage &frame);
    // Writes the trailer; the device then holds the whole animation.
    void finish();

private:
    void check(int status);

    GifFileType *m_gif = nullptr;
    QSize m_size;
    int m_delay;
    // What a viewer shows after the frames so far.
    QImage m_shown;
};
