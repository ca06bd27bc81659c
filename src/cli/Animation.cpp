#include "Animation.h"

#include "GifAnimation.h"
#include "WebpAnimation.h"

std::optional<AnimationFormat> animationFormat(const QString &fileName)
{
    if (fileName.endsWith(QLatin1String(".gif"), Qt::CaseInsensitive))
        return AnimationFormat::Gif;
    if (fileName.endsWith(QLatin1String(".webp"), Qt::CaseInsensitive))
        return AnimationFormat::WebP;
    return std::nullopt;
}

std::unique_ptr<Animation> startAnimation(AnimationFormat format, QIODevice &out, QSize size, int delay)
{
    if (format == AnimationFormat::WebP)
        return std::make_unique<WebpAnimation>(out, size, delay);
    return std::make_unique<GifAnimation>(out, size, delay);
}
