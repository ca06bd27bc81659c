#include "PictureAllocation.h"

NotEnoughMemory::NotEnoughMemory(QSize size)
    : m_what("not enough memory for a " + std::to_string(size.width()) + " x " + std::to_string(size.height())
             + " picture")
{
}

QImage newImage(QSize size, QImage::Format format)
{
    QImage image(size, format);
    if (image.isNull() && !size.isEmpty())
        throw NotEnoughMemory(size);
    return image;
}
