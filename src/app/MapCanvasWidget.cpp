#include "MapCanvasWidget.h"

#include "RasterSurface.h"

#include <QPainter>

MapCanvasWidget::MapCanvasWidget(const RasterSurface &raster, QWidget *parent)
    : QWidget(parent), m_raster(raster)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::ClickFocus);
}

void MapCanvasWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter.drawImage(rect(), m_raster.image());
}
