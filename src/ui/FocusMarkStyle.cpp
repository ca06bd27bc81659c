#include "FocusMarkStyle.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QPainter>
#include <QStyleOption>

namespace {

// Focus moved by the keyboard, as the styles' own marks require.
bool keyboardFocus(const QStyleOption *option)
{
    return (option->state & QStyle::State_HasFocus) && (option->state & QStyle::State_KeyboardFocusChange);
}

void mark(QPainter *painter, const QRect &rect, const QPalette &palette, Qt::PenStyle style)
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setPen(QPen(palette.color(QPalette::Highlight), 1, style));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

} // namespace

void FocusMarkStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                                 const QWidget *widget) const
{
    QProxyStyle::drawControl(element, option, painter, widget);
    if (!keyboardFocus(option))
        return;
    if (element == CE_PushButton)
        mark(painter, option->rect.adjusted(3, 3, -3, -3), option->palette, Qt::DotLine);
    else if (element == CE_ShapedFrame && qobject_cast<const QAbstractScrollArea *>(widget))
        mark(painter, option->rect, option->palette, Qt::SolidLine);
}

void useFocusMarks()
{
    if (!dynamic_cast<FocusMarkStyle *>(QApplication::style()))
        QApplication::setStyle(new FocusMarkStyle);
}
