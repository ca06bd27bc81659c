#include "MapLayers.h"

#include "AnnotationFile.h"
#include "Colour.h"
#include "GameFolder.h"
#include "MapView.h"

#include <QFileInfo>

void replayAnnotations(GameData &d, Canvas &canvas, RedrawHost &host)
{
    const QFileInfo info(d.AnnotationFilePath);
    const QString path = findFileNoCase(info.path(), info.fileName());
    if (path.isEmpty()) {
        host.showFileMessage(d.AnnotationFilePath, QStringLiteral("No file found for this map"));
    } else {
        AnnotationReader reader(path);
        d.AnnotationText.clear();
        DrawingState &s = canvas.state();
        s.DrawMode = 13;
        s.DrawWidth = 2;
        s.DrawStyle = 0;
        while (const auto r = reader.next()) {
            const CanvasPoint a = mapToCanvas(d, r->x1, r->y1);
            switch (r->kind) {
            case AnnotationRecord::Kind::Line: {
                d.DrawColourIndex = r->colour;
                const CanvasPoint b = mapToCanvas(d, r->x2, r->y2);
                canvas.line(a.x, a.y, b.x, b.y, drawColour(r->colour));
                break;
            }
            case AnnotationRecord::Kind::Circle:
                d.DrawColourIndex = r->colour;
                s.FillStyle = 1;
                canvas.circle(a.x, a.y, lengthToCanvas(d, r->radius()), drawColour(r->colour));
                break;
            case AnnotationRecord::Kind::Text:
                // Texts keep their point size whatever the zoom.
                s.CurrentX = a.x;
                s.CurrentY = a.y;
                s.ForeColor = rgb(255, 255, 255);
                s.FontSize = r->size;
                canvas.print(r->text);
                break;
            }
            d.AnnotationText += r->canonical();
        }
    }
    host.selectFirstDrawColour();
    d.DrawColourIndex = 1;
}
