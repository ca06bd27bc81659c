#include "WindowMemory.h"

#include "DesktopSettings.h"

#include <QWidget>

namespace windowMemory {

void rememberGeometry(const QWidget &window)
{
    DesktopSettings().setValue(QStringLiteral("Window/Geometry"), window.saveGeometry());
}

bool restoreGeometry(QWidget &window)
{
    const QByteArray geometry = DesktopSettings().value(QStringLiteral("Window/Geometry")).toByteArray();
    return !geometry.isEmpty() && window.restoreGeometry(geometry);
}

QList<int> pressedLayers(const OverlayButtons &buttons)
{
    QList<int> pressed;
    for (int i = UniverseButton; i < OverlayButtonCount; ++i)
        if (buttons.pressed(i))
            pressed << i;
    return pressed;
}

void rememberOverlays(const OverlayButtons &buttons)
{
    QStringList pressed;
    for (int i : pressedLayers(buttons))
        pressed << QString::number(i);
    DesktopSettings().setValue(QStringLiteral("Window/Overlays"), pressed);
}

QList<int> rememberedOverlays()
{
    QList<int> pressed;
    for (const QString &text : DesktopSettings().value(QStringLiteral("Window/Overlays")).toStringList())
        if (const int i = text.toInt(); i >= UniverseButton && i < OverlayButtonCount)
            pressed << i;
    return pressed;
}

} // namespace windowMemory
