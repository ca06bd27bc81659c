#pragma once
// Pictures as large as the command line allows (20000 pixels a side, 1.6 GB)
// may not fit in memory. QImage then gives a null image, which a later step
// would write through; instead the allocation fails here, as std::bad_alloc
// whose text says what could not be held.

#include <QImage>
#include <new>
#include <string>

class NotEnoughMemory : public std::bad_alloc {
public:
    explicit NotEnoughMemory(QSize size);
    const char *what() const noexcept override { return m_what.c_str(); }

private:
    std::string m_what;
};

// An uninitialised image; throws NotEnoughMemory when it cannot be had.
QImage newImage(QSize size, QImage::Format format);
