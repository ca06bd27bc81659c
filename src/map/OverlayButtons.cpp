#include "OverlayButtons.h"

void OverlayButtons::setEnabled(int i, bool enabled)
{
    if (m_enabled[size_t(i)] == enabled)
        return;
    m_enabled[size_t(i)] = enabled;
    if (onChange)
        onChange(i);
}

void OverlayButtons::setPressed(int i, bool pressed)
{
    if (m_pressed[size_t(i)] == pressed)
        return;
    m_pressed[size_t(i)] = pressed;
    if (onChange)
        onChange(i);
    if (onClick)
        onClick(i);
}
