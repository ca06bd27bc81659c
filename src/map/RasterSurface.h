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
    // A square of `pixels` screen pixels showing `logicalWidth` canvas units.
    // On a high-density screen the picture holds pixels x devicePixelRatio
    // device pixels, drawn at that resolution: dot and outline widths and
    // text sizes are scaled along, so it looks as on a plain screen, only sharper.
    explicit RasterSurface(int pixels = 1000, double devicePixelRatio = 1.0,
                           float logicalWidth = Canvas::ScaleWidth);

    // The side in screen pixels, and the picture itself in device pixels.
    int pixels() const { return qRound(m_image.width() / m_devicePixelRatio); }
    double devicePixelRatio() const { return m_devicePixelRatio; }
    const QImage &image() const { return m_image; }

    // Writes the picture as PNG or BMP, chosen by the file's extension,
    // replacing any existing file only once the new one is complete.
    // False for another extension or when the file cannot be written.
    bool save(const QString &path) const;

    // A new pixel size for the same logical square; the picture drawn so
    // far is scaled along, so a resized window keeps showing it.
    void resize(int pixels, double devicePixelRatio);

    // The colour cls fills with: black, as the map's, unless set.
    void setBackground(QRgb colour) { m_background = colour; }

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
    int pixelWidth(const DrawingState &s) const;
    QFont textFont(const DrawingState &s) const;
    void setResolution(double devicePixelRatio);

    float m_logicalWidth;
    double m_devicePixelRatio = 1.0;
    double m_pixelsPerUnit = 1.0;
    QRgb m_background = qRgb(0, 0, 0);
    QImage m_image;
};
