#pragma once
// The map on screen: shows the core canvas's persistent picture scaled to
// its square, so the picture survives covering, uncovering and resizing.

#include <QWidget>

class RasterSurface;

class MapCanvasWidget : public QWidget {
    Q_OBJECT
public:
    explicit MapCanvasWidget(const RasterSurface &raster, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const RasterSurface &m_raster;
};
