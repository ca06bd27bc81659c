#pragma once
// A history's animation file, written frame by frame as the frames come:
// a GIF (every browser and chat shows it; a busy frame's colours reduced to
// 255) or a lossless WebP (every frame exact), chosen by the file's name.
// Both loop for ever and show every frame for the same time.

#include <QImage>
#include <QIODevice>
#include <memory>
#include <optional>
#include <stdexcept>

struct AnimationError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

enum class AnimationFormat { Gif, WebP };

class Animation {
public:
    virtual ~Animation() = default;
    // A frame of the animation's size, in any 32-bit RGB format.
    virtual void addFrame(const QImage &frame) = 0;
    // Writes what is left; the device then holds the whole animation.
    virtual void finish() = 0;
};

// By the name's ending, .gif or .webp in any case; nothing for another.
std::optional<AnimationFormat> animationFormat(const QString &fileName);

// Starts an animation of frames of `size` on `out`, each shown `delay`
// hundredths of a second (as GIF counts its time). Throws AnimationError
// when the device refuses.
std::unique_ptr<Animation> startAnimation(AnimationFormat format, QIODevice &out, QSize size, int delay);
