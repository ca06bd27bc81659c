#pragma once
// The desktop program's settings, in the platform's usual place
// (~/.config/Veltro Marches/Veltro Marches.conf on Linux).

#include <QSettings>

class DesktopSettings : public QSettings {
public:
    DesktopSettings() : QSettings(QStringLiteral("Veltro Marches"), QStringLiteral("Veltro Marches")) {}
};
