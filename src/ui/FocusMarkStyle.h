#pragma once
// The desktop's own style with the keyboard's focus marked on every control
// that takes it. The usual styles leave the mark out where it matters here:
// a default button already looks focused, a flat button (a range value of
// the statistics) and a text view draw none.

#include <QProxyStyle>

class FocusMarkStyle : public QProxyStyle {
public:
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
};

// Gives the application the marks, once, over whatever style it has.
void useFocusMarks();
