#include "OverlayIcons.h"

#include "OverlayButtons.h"

#include <QPainter>
#include <QPixmap>

namespace {

constexpr int Size = 24;

void disc(QPainter &p, QPointF c, double r, QColor fill, QColor rim = Qt::transparent)
{
    p.setPen(rim == Qt::transparent ? QPen(Qt::NoPen) : QPen(rim, 1.5));
    p.setBrush(fill);
    p.drawEllipse(c, r, r);
}

// Paints the icon in a 24-unit square, whatever the pixels behind it.
void paintIcon(QPainter &p, int button)
{
    p.fillRect(QRectF(0, 0, Size, Size), Qt::black);
    p.setRenderHint(QPainter::Antialiasing);
    const QPointF centre(Size / 2.0, Size / 2.0);
    switch (button) {
    case ClearMapButton:
        p.setPen(QPen(QColor(220, 60, 60), 2.5));
        p.drawLine(QPointF(6, 6), QPointF(18, 18));
        p.drawLine(QPointF(18, 6), QPointF(6, 18));
        break;
    case ZoomInButton:
        p.setPen(QPen(Qt::white, 2));
        p.setBrush(Qt::NoBrush);
        p.drawEllipse(QPointF(10, 10), 6, 6);
        p.drawLine(QPointF(14.5, 14.5), QPointF(21, 21));
        p.drawLine(QPointF(7, 10), QPointF(13, 10));
        p.drawLine(QPointF(10, 7), QPointF(10, 13));
        break;
    case UniverseButton:
        for (QPointF star : {QPointF(5, 6), QPointF(15, 4), QPointF(19, 13), QPointF(9, 15), QPointF(14, 20), QPointF(4, 19)})
            disc(p, star, 1.4, Qt::white);
        break;
    case BordersButton:
        disc(p, QPointF(9, 12), 7, QColor(255, 0, 0));
        disc(p, QPointF(15, 12), 7, QColor(0, 255, 0));
        p.setCompositionMode(QPainter::CompositionMode_Plus);
        disc(p, QPointF(9, 12), 7, QColor(255, 0, 0));
        p.setCompositionMode(QPainter::CompositionMode_SourceOver);
        p.setBrush(QBrush(Qt::black, Qt::DiagCrossPattern));
        p.setPen(Qt::NoPen);
        p.drawRect(0, 0, Size, Size);
        break;
    case TerritoryButton:
        for (int x = 2; x < Size; x += 4)
            for (int y = 2; y < Size; y += 4)
                disc(p, QPointF(x, y), 1.2, x + y < Size ? QColor(200, 0, 0) : QColor(0, 0, 200));
        break;
    case HabButton:
        disc(p, QPointF(8, 8), 5, QColor(0, 255, 0));
        disc(p, QPointF(16, 10), 3, QColor(255, 255, 0));
        disc(p, QPointF(11, 17), 4, QColor(255, 0, 0));
        break;
    case OwnedButton:
        disc(p, centre, 4, QColor(0, 192, 192));
        p.setBrush(Qt::NoBrush);
        p.setPen(QPen(QColor(255, 255, 0), 1.5));
        p.drawEllipse(centre, 8, 8);
        break;
    case ScannedButton:
        disc(p, centre, 10, QColor(64, 0, 0), QColor(120, 0, 0));
        disc(p, centre, 2, QColor(255, 255, 0));
        break;
    case AttackButton:
        disc(p, QPointF(8, 12), 5, QColor(0, 255, 0));
        disc(p, QPointF(17, 12), 5, QColor(255, 40, 0));
        break;
    case GrowthButton:
        disc(p, QPointF(7, 16), 3, QColor(0, 255, 0));
        disc(p, QPointF(12, 12), 4, QColor(255, 128, 0));
        disc(p, QPointF(17, 8), 5, QColor(255, 0, 0));
        break;
    default:
        break;
    }
}

} // namespace

QIcon overlayIcon(int button)
{
    // Drawn afresh for plain and dense screens: sharp at every ratio, never a scaled-up picture.
    QIcon icon;
    for (const double ratio : {1.0, 1.5, 2.0, 3.0}) {
        QPixmap pixmap(qRound(Size * ratio), qRound(Size * ratio));
        pixmap.setDevicePixelRatio(ratio);
        QPainter p(&pixmap);
        paintIcon(p, button);
        p.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}
