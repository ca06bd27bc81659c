#pragma once
// The canvas as a picture: an N x N pixel image of the logical 10020-unit
// square that keeps everything drawn on it until the next cls. Drawing is
// aliased throughout, so every pixel holds exactly one of the colours drawn
// or the result of the merge pen; the borders' colour mixing relies on that.

#include "Canvas.h"

#include <QImage>
#include <QString>

class QPainter;

class RasterSurface : public CanvasSurface {
public:
    explicit RasterSurface(int pixels = 1000);

    int pixels() const { return m_image.width(); }
    const QImage &image() const { return m_image; }

    // Writes the picture as PNG or BMP, chosen by the file's extension,
    // replacing any existing file only once the new one is complete.
    // False for another extension or when the file cannot be written.
    bool save(const QString &path) const;

    // A new pixel size for the same logical square; the picture drawn so
    // far is scaled along, so a resized window keeps showing it.
    void resize(int pixels);

    void cls() override;
    void circle(const DrawingState &s, float x, float y, float r, std::optional<int32_t> colour,
                std::optional<std::pair<float, float>> arc) override;
    void line(const DrawingState &s, float x1, float y1, float x2, float y2, int32_t colour) override;
    void pset(const DrawingState &s, float x, float y, int32_t colour) override;
    void psets(const DrawingState &s, const std::vector<Dot> &dots) override;
    void print(const DrawingState &s, const QString &text) override;
    std::optional<double> textWidth(const DrawingState &s, const QString &text) const override;

private:
    double toPixels(float units) const { return units * m_pixelsPerUnit; }
    void prepare(QPainter &painter, const DrawingState &s) const;

    double m_pixelsPerUnit;
    QImage m_image;
};
