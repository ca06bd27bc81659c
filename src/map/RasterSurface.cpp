#include "RasterSurface.h"

#include "Colour.h"
#include "PictureAllocation.h"
#include "PngWriter.h"

#include <QFileInfo>
#include <QFont>
#include <QFontMetricsF>
#include <QImageWriter>
#include <QPainter>
#include <QPainterPath>
#include <QSaveFile>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr int MergePen = 15;
constexpr int InvisibleRim = 5;
constexpr int SolidFill = 0;
constexpr int CrossHatchFill = 7;
// Text sizes are points on a 96 dpi screen, whatever the picture's size.
constexpr double TextDpi = 96.0;

QRgb toRgb(int32_t colour)
{
    return qRgb(redOf(colour), greenOf(colour), blueOf(colour));
}

// Aliased, and the merge pen ORs every painted pixel into the picture.
// Copy pen is source-over rather than plain source so that the gaps of a
// hatch pattern, which the painter leaves transparent, keep the old pixels.
void setUp(QPainter &painter, bool merge)
{
    painter.setRenderHints(painter.renderHints(), false);
    painter.setCompositionMode(merge ? QPainter::RasterOp_SourceOrDestination : QPainter::CompositionMode_SourceOver);
}

QPen rimPen(const DrawingState &s, int32_t colour, int width)
{
    if (s.DrawStyle == InvisibleRim)
        return QPen(Qt::NoPen);
    return QPen(QColor(toRgb(colour)), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

// The map uses solid, transparent and cross-hatched fills only.
QBrush fillBrush(const DrawingState &s)
{
    switch (s.FillStyle) {
    case SolidFill: return QBrush(QColor(toRgb(s.FillColor)), Qt::SolidPattern);
    case CrossHatchFill: return QBrush(QColor(toRgb(s.FillColor)), Qt::DiagCrossPattern);
    default: return QBrush(Qt::NoBrush);
    }
}

double degrees(double radians)
{
    return radians * 180.0 / std::numbers::pi;
}

// std::floor for a value known to fit an int; a library call per dot
// would cost more than writing the dot.
int floorToInt(double v)
{
    const int i = int(v);
    return i > v ? i - 1 : i;
}

// Dots go straight into the scanlines: the territory grid sends hundreds of
// thousands in one go, far too many for a painter call each.
class DotWriter {
public:
    DotWriter(QImage &image, double pixelsPerUnit, int width, const DrawingState &s)
        : m_bits(reinterpret_cast<QRgb *>(image.bits())), m_stride(image.bytesPerLine() / int(sizeof(QRgb))),
          m_size(image.width()), m_pixelsPerUnit(pixelsPerUnit), m_width(width),
          m_halfWidth((m_width - 1) / 2.0), m_merge(s.DrawMode == MergePen)
    {
    }

    // The square of m_width pixels whose middle lies nearest to the point;
    // parts outside the picture are clipped.
    void put(float x, float y, int32_t colour)
    {
        const double left = x * m_pixelsPerUnit - m_halfWidth;
        const double top = y * m_pixelsPerUnit - m_halfWidth;
        // Written so that a NaN coordinate fails it too.
        if (!(left > -m_width && left < m_size && top > -m_width && top < m_size))
            return;
        const int col = floorToInt(left), row = floorToInt(top);
        const QRgb rgb = toRgb(colour);
        if (col >= 0 && row >= 0 && col + m_width <= m_size && row + m_width <= m_size) {
            // The usual grid dots, whole inside the picture, with the loops
            // unrolled: a loop of unknown length per dot would double the time.
            QRgb *corner = m_bits + qsizetype(row) * m_stride + col;
            switch (m_width) {
            case 1: return square<1>(corner, rgb);
            case 2: return square<2>(corner, rgb);
            case 3: return square<3>(corner, rgb);
            case 4: return square<4>(corner, rgb);
            }
        }
        const int x0 = std::max(0, col), x1 = std::min(m_size, col + m_width);
        const int y0 = std::max(0, row), y1 = std::min(m_size, row + m_width);
        for (int py = y0; py < y1; ++py)
            paint(m_bits + qsizetype(py) * m_stride + x0, x1 - x0, rgb);
    }

private:
    template <int Width> void square(QRgb *corner, QRgb rgb)
    {
        for (int i = 0; i < Width; ++i)
            paint(corner + i * m_stride, Width, rgb);
    }

    void paint(QRgb *pixels, int count, QRgb rgb)
    {
        for (int i = 0; i < count; ++i)
            pixels[i] = m_merge ? pixels[i] | rgb : rgb;
    }

    QRgb *m_bits;
    qsizetype m_stride;
    int m_size;
    double m_pixelsPerUnit;
    int m_width;
    double m_halfWidth;
    bool m_merge;
};

} // namespace

RasterSurface::RasterSurface(int pixels, double devicePixelRatio, float logicalWidth)
    : m_logicalWidth(logicalWidth)
{
    const int side = qRound(pixels * devicePixelRatio);
    m_image = newImage(QSize(side, side), QImage::Format_RGB32);
    setResolution(devicePixelRatio);
    cls();
}

// The image itself keeps a ratio of 1, so that painters draw on it in
// device pixels; a widget showing it maps it onto its logical square.
void RasterSurface::setResolution(double devicePixelRatio)
{
    m_devicePixelRatio = devicePixelRatio;
    // The painter and the font metrics take point sizes from the image's
    // resolution: 96 dpi on a plain screen, more on a dense one.
    const int dotsPerMetre = qRound(TextDpi * devicePixelRatio / 0.0254);
    m_image.setDotsPerMeterX(dotsPerMetre);
    m_image.setDotsPerMeterY(dotsPerMetre);
    m_pixelsPerUnit = m_image.width() / double(m_logicalWidth);
}

void RasterSurface::resize(int pixels, double devicePixelRatio)
{
    const int side = qRound(pixels * devicePixelRatio);
    m_image = m_image.scaled(side, side, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    setResolution(devicePixelRatio);
}

// Widths are screen pixels; below one pixel the painter's hairline and the
// dots would disagree.
int RasterSurface::pixelWidth(const DrawingState &s) const
{
    return std::max(1, qRound(s.DrawWidth * m_devicePixelRatio));
}

// Arial where it exists, otherwise the closest sans serif; glyphs without
// antialiasing so that text pixels are exactly ForeColor.
QFont RasterSurface::textFont(const DrawingState &s) const
{
    QFont font(QStringLiteral("Arial"));
    font.setStyleHint(QFont::SansSerif, QFont::NoAntialias);
    font.setPointSizeF(s.FontSize);
    return font;
}

bool RasterSurface::save(const QString &path) const
{
    const QByteArray format = QFileInfo(path).suffix().toLower().toLatin1();
    if (format != "png" && format != "bmp")
        return false;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    const bool written = format == "png" ? writePng(m_image, file) : QImageWriter(&file, format).write(m_image);
    return written && file.commit();
}

void RasterSurface::cls()
{
    m_image.fill(m_background);
}

void RasterSurface::circle(const DrawingState &s, float x, float y, float r, std::optional<int32_t> colour,
                           std::optional<std::pair<float, float>> arc)
{
    QPainter painter(&m_image);
    setUp(painter, s.DrawMode == MergePen);
    painter.setPen(rimPen(s, colour.value_or(s.ForeColor), pixelWidth(s)));
    QBrush brush = fillBrush(s);
    // The hatch keeps its spacing in screen pixels on a dense screen too.
    if (m_devicePixelRatio != 1.0)
        brush.setTransform(QTransform::fromScale(m_devicePixelRatio, m_devicePixelRatio));
    painter.setBrush(brush);
    // Hatching anchored to the picture's corner, with see-through gaps, so
    // that the hatch of neighbouring discs runs on as one pattern.
    painter.setBrushOrigin(0, 0);
    painter.setBackgroundMode(Qt::TransparentMode);

    const QPointF centre(toPixels(x), toPixels(y));
    const double radius = toPixels(r);
    const QRectF box(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius);
    if (!arc) {
        painter.drawEllipse(box);
        return;
    }
    // Counter-clockwise from start to end; an end below the start goes the long way round.
    double span = double(arc->second) - double(arc->first);
    if (span < 0)
        span += 2 * std::numbers::pi;
    QPainterPath pie(centre);
    pie.arcTo(box, degrees(arc->first), degrees(span));
    pie.closeSubpath();
    painter.drawPath(pie);
}

void RasterSurface::line(const DrawingState &s, float x1, float y1, float x2, float y2, int32_t colour)
{
    QPainter painter(&m_image);
    setUp(painter, s.DrawMode == MergePen);
    painter.setPen(rimPen(s, colour, pixelWidth(s)));
    painter.drawLine(QPointF(toPixels(x1), toPixels(y1)), QPointF(toPixels(x2), toPixels(y2)));
}

void RasterSurface::pset(const DrawingState &s, float x, float y, int32_t colour)
{
    DotWriter(m_image, m_pixelsPerUnit, pixelWidth(s), s).put(x, y, colour);
}

void RasterSurface::psets(const DrawingState &s, const std::vector<Dot> &dots)
{
    DotWriter writer(m_image, m_pixelsPerUnit, pixelWidth(s), s);
    for (const Dot &d : dots)
        writer.put(d.x, d.y, d.colour);
}

void RasterSurface::print(const DrawingState &s, const QString &text)
{
    // A zero size comes from annotation records whose size did not read as a number.
    if (!(s.FontSize > 0))
        return;
    QPainter painter(&m_image);
    // Text ignores the draw mode: labels must show in ForeColor over any layer.
    setUp(painter, false);
    painter.setFont(textFont(s));
    painter.setPen(QColor(toRgb(s.ForeColor)));
    const double ascent = painter.fontMetrics().ascent();
    painter.drawText(QPointF(toPixels(s.CurrentX), toPixels(s.CurrentY) + ascent), text);
}

std::optional<double> RasterSurface::textWidth(const DrawingState &s, const QString &text) const
{
    if (!(s.FontSize > 0))
        return 0.0;
    return QFontMetricsF(textFont(s), &m_image).horizontalAdvance(text) / m_pixelsPerUnit;
}
