#pragma once
// Whether a control shows that it has the keyboard's focus: it looks
// different with the focus, given by Tab, from without.

#include <QImage>
#include <QWidget>

inline bool marksFocus(QWidget *control)
{
    // Styles mark the focus once the keyboard has moved it, as Tab does.
    control->window()->setAttribute(Qt::WA_KeyboardFocusChange);
    control->clearFocus();
    const QImage without = control->grab().toImage();
    control->setFocus(Qt::TabFocusReason);
    return control->hasFocus() && control->grab().toImage() != without;
}
