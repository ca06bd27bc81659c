#include "HistoryFrame.h"

#include "MapPicture.h"
#include "PictureAllocation.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>
#include <algorithm>

namespace {

// Sizes in pixels, whatever the map's size: the legend stays readable on a
// small map and small on a large one.
constexpr int Margin = 12;
constexpr int YearPixels = 28;
constexpr int NamePixels = 14;
constexpr int RowHeight = 20;
constexpr int Swatch = 12;
constexpr int SwatchGap = 8;
constexpr int MinimumNameWidth = 80;

// No antialiasing, as on the map: every text pixel is exactly its colour,
// so the frame keeps few colours and a GIF keeps them all.
QFont legendFont(int pixels, bool bold)
{
    QFont font(QStringLiteral("Arial"));
    font.setStyleHint(QFont::SansSerif, QFont::NoAntialias);
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

int legendTop()
{
    return Margin + YearPixels + Margin;
}

} // namespace

HistoryFrameLayout::HistoryFrameLayout(int mapPixels, const QStringList &races, int mostRaces)
    : m_mapPixels(mapPixels)
{
    const QFontMetrics names(legendFont(NamePixels, false));
    int nameWidth = MinimumNameWidth;
    for (const QString &race : races)
        nameWidth = std::max(nameWidth, names.horizontalAdvance(race));
    const int panelWidth = Margin + Swatch + SwatchGap + nameWidth + Margin;
    const int panelHeight = legendTop() + mostRaces * RowHeight + Margin;
    m_size = QSize(mapPixels + panelWidth, std::max(mapPixels, panelHeight));
}

QImage drawHistoryFrame(GameData &game, OverlayButtons layers, const HistoryFrameLayout &layout, int year,
                        const HistoryLegend &legend, RedrawHost &host, double devicePixelRatio)
{
    MapPicture map(layout.mapSquare().width(), devicePixelRatio);
    ZoomFlags zoom;
    map.redraw(game, layers, zoom, host);

    // The painter counts in pixels of the layout whatever the ratio.
    QImage frame = newImage(layout.size() * devicePixelRatio, QImage::Format_RGB32);
    frame.setDevicePixelRatio(devicePixelRatio);
    frame.fill(Qt::black);
    QPainter painter(&frame);
    painter.setRenderHint(QPainter::TextAntialiasing, false);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    QImage square = map.raster().image();
    square.setDevicePixelRatio(devicePixelRatio);
    painter.drawImage(layout.mapSquare().topLeft(), square);

    const QRect panel = layout.panel();
    painter.setPen(QColor(96, 96, 96));
    painter.drawLine(panel.topLeft(), panel.bottomLeft());
    painter.setPen(Qt::white);
    painter.setFont(legendFont(YearPixels, true));
    painter.drawText(QRect(panel.left() + Margin, Margin, panel.width() - 2 * Margin, YearPixels),
                     Qt::AlignLeft | Qt::AlignVCenter, QString::number(year));
    painter.setFont(legendFont(NamePixels, false));
    int top = legendTop();
    for (const StableRaceColours::Race &race : legend) {
        const QColor colour(race.colour[0], race.colour[1], race.colour[2]);
        painter.fillRect(panel.left() + Margin, top + (RowHeight - Swatch) / 2, Swatch, Swatch, colour);
        painter.drawText(QRect(panel.left() + Margin + Swatch + SwatchGap, top, panel.width(), RowHeight),
                         Qt::AlignLeft | Qt::AlignVCenter, race.name);
        top += RowHeight;
    }
    return frame;
}
