#include "PlanetNames.h"

#include "Colour.h"
#include "MapView.h"

void drawPlanetNames(const GameData &d, Canvas &canvas)
{
    DrawingState &s = canvas.state();
    s.FontSize = 6;
    s.ForeColor = rgb(255, 255, 255);
    for (const PlanetInfo &p : d.Planets) {
        if (!inView(d, p))
            continue;
        const QString name = p[Name].text();
        const double width = canvas.textWidth(name);
        // Worked out in doubles as a whole, then stored at the canvas's precision.
        s.CurrentX = conv::toSingle((p[X].val() - d.OriginX) * d.Scale - width / 2);
        s.CurrentY = conv::toSingle((p[Y].val() - d.OriginY) * d.Scale + 50);
        canvas.print(name);
    }
}
