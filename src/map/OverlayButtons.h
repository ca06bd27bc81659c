#pragma once
// The row of eleven overlay buttons as plain state: pressed or not, enabled
// or not. Changing a button's value from code raises its click exactly as the
// user's click does, so the redraw listening to it runs again (nested).

#include <array>
#include <functional>

enum OverlayButton : int {
    ClearMapButton = 0, ZoomInButton, UniverseButton, BordersButton, TerritoryButton, HabButton,
    OwnedButton, ScannedButton, AttackButton, GrowthButton, VmkButton
};
constexpr int OverlayButtonCount = 11;

class OverlayButtons {
public:
    bool pressed(int i) const { return m_pressed[size_t(i)]; }
    bool enabled(int i) const { return m_enabled[size_t(i)]; }
    void setEnabled(int i, bool enabled);

    // Sets the value; when it changes, the button's click runs.
    void setPressed(int i, bool pressed);
    // Sets the value without a click, as a window does when it mirrors the
    // user's own press before running the click itself.
    void setPressedQuietly(int i, bool pressed) { m_pressed[size_t(i)] = pressed; }

    // Runs on every click with the button's index.
    std::function<void(int)> onClick;
    // Runs when a value or enabled state changes, for a window to mirror it.
    std::function<void(int)> onChange;

private:
    std::array<bool, OverlayButtonCount> m_pressed{};
    std::array<bool, OverlayButtonCount> m_enabled{};
};
