#pragma once
// What the generation tells the main window as it goes: the reset of the
// controls, the caption, the race list and legend, progress and the enabling
// of the overlays. The command line shows only the warnings.

#include <QString>

struct GameData;

class GenerationObserver {
public:
    virtual ~GenerationObserver() = default;
    virtual void resetWindow() {}
    virtual void setCaption(const QString &) {}
    // Terraforming and stargate menus, available with per-player reports.
    virtual void enableFormatMenus() {}
    virtual void addRace(const QString &) {}
    virtual void progressStart(int /*maximum*/) {}
    virtual void progressValue(int) {}
    virtual void showLegend(const GameData &) {}
    virtual void enableControls(const GameData &) {}
    // Something the load chose or passed over quietly that the user should
    // know of: which of two names that differ only in case was read, a
    // report of which no line names a planet of the map.
    virtual void warning(const QString &) {}
    // True stops the generation once the races are known (their names and
    // number), for a caller that needs nothing else: a history sizing its
    // frames before it draws them.
    virtual bool racesOnly() const { return false; }
};
