#pragma once
// The map on screen: the core canvas's persistent picture, with the rubber
// band, the zoom square, the trip being measured and the ring around the
// planet last clicked floating over it. The floating shapes are drawn on the widget only, never into the
// picture, so a redraw, Save Map and the saved bitmap never contain them.
// Pointer events leave in canvas units.

#include <QRect>
#include <QWidget>

class MeasureTool;
class PlanetMarker;
class RasterSurface;
struct RubberLine;
struct ZoomBox;

class MapCanvasWidget : public QWidget {
    Q_OBJECT
public:
    MapCanvasWidget(const RasterSurface &raster, const RubberLine &line, const ZoomBox &box,
                    const MeasureTool &measure, const PlanetMarker &marker, QWidget *parent = nullptr);

    // Canvas units of a point of the widget.
    QPointF toCanvas(const QPointF &widgetPoint) const;
    // Repaints what the floating shapes covered and now cover, nothing more.
    void shapesMoved();

signals:
    void pointerMoved(float x, float y);
    void pressed(float x, float y);
    // Escape: the user gives up what the pointer was in the middle of.
    void cancelled();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    double pixelsPerUnit() const;
    // The widget area the floating shapes cover now.
    QRect shapesArea() const;

    const RasterSurface &m_raster;
    const RubberLine &m_line;
    const ZoomBox &m_box;
    const MeasureTool &m_measure;
    const PlanetMarker &m_marker;
    QRect m_shapesShown;
};
