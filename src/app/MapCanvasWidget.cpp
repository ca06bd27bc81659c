#include "MapCanvasWidget.h"

#include "AnnotationTools.h"
#include "Canvas.h"
#include "Colour.h"
#include "MeasureTool.h"
#include "PlanetMarker.h"
#include "RasterSurface.h"
#include "ZoomTool.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace {

QColor toColor(int32_t c)
{
    return QColor(redOf(c), greenOf(c), blueOf(c));
}

// The ring keeps its size on the screen whatever the zoom, as the planet
// markers do, and shows on any colour: white edged with black.
constexpr double RingRadius = 9;

} // namespace

MapCanvasWidget::MapCanvasWidget(const RasterSurface &raster, const RubberLine &line, const ZoomBox &box,
                                 const MeasureTool &measure, const PlanetMarker &marker, QWidget *parent)
    : QWidget(parent), m_raster(raster), m_line(line), m_box(box), m_measure(measure), m_marker(marker)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::ClickFocus);
    setMouseTracking(true);
    setAccessibleName(QStringLiteral("Map"));
}

double MapCanvasWidget::pixelsPerUnit() const
{
    return width() / double(Canvas::ScaleWidth);
}

QPointF MapCanvasWidget::toCanvas(const QPointF &p) const
{
    return p / pixelsPerUnit();
}

QRect MapCanvasWidget::shapesArea() const
{
    const auto trip = m_measure.canvasLine();
    if (!m_line.visible && !m_box.visible && !trip)
        return QRect();
    const double k = pixelsPerUnit();
    QRectF area;
    if (trip)
        area |= QRectF(trip->p1() * k, trip->p2() * k).normalized();
    if (m_line.visible)
        area |= QRectF(QPointF(m_line.x1 * k, m_line.y1 * k), QPointF(m_line.x2 * k, m_line.y2 * k)).normalized();
    if (m_box.visible)
        area |= QRectF(m_box.left * k, m_box.top * k, m_box.width * k, m_box.height * k);
    // The pens reach two pixels beyond the shapes' outline.
    return area.toAlignedRect().adjusted(-3, -3, 3, 3);
}

void MapCanvasWidget::shapesMoved()
{
    const QRect now = shapesArea();
    const QRect dirty = now | m_shapesShown;
    m_shapesShown = now;
    if (!dirty.isEmpty())
        update(dirty);
}

void MapCanvasWidget::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    // Only the exposed part of the picture, one device pixel per pixel.
    const QRect target = event->rect() & rect();
    const double scale = m_raster.image().width() / double(qMax(1, width()));
    const QRectF source(target.x() * scale, target.y() * scale, target.width() * scale, target.height() * scale);
    painter.drawImage(QRectF(target), m_raster.image(), source);

    const double k = pixelsPerUnit();
    if (m_line.visible) {
        painter.setPen(QPen(toColor(m_line.colour), 1));
        painter.drawLine(QPointF(m_line.x1 * k, m_line.y1 * k), QPointF(m_line.x2 * k, m_line.y2 * k));
    }
    if (m_box.visible) {
        painter.setPen(QPen(toColor(m_box.colour), 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(QRectF(m_box.left * k, m_box.top * k, m_box.width * k, m_box.height * k));
    }
    if (const auto trip = m_measure.canvasLine()) {
        // Dashed white over black, to show on any colour of the map.
        const QLineF onScreen(trip->p1() * k, trip->p2() * k);
        painter.setPen(QPen(Qt::black, 3));
        painter.drawLine(onScreen);
        painter.setPen(QPen(Qt::white, 1, Qt::DashLine));
        painter.drawLine(onScreen);
    }
    if (const auto centre = m_marker.centre()) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(Qt::NoBrush);
        for (const auto &[colour, width] : {std::pair{Qt::black, 4}, std::pair{Qt::white, 2}}) {
            painter.setPen(QPen(colour, width));
            painter.drawEllipse(*centre * k, RingRadius, RingRadius);
        }
        painter.setRenderHint(QPainter::Antialiasing, false);
    }
    if (hasFocus()) {
        // The keyboard's mark: a dotted frame along the edge, over the picture.
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
    m_shapesShown = shapesArea();
}

void MapCanvasWidget::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF c = toCanvas(event->position());
    emit pointerMoved(float(c.x()), float(c.y()));
}

void MapCanvasWidget::mousePressEvent(QMouseEvent *event)
{
    const QPointF c = toCanvas(event->position());
    emit pressed(float(c.x()), float(c.y()));
}

void MapCanvasWidget::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
        emit cancelled();
        return;
    }
    QWidget::keyPressEvent(event);
}
