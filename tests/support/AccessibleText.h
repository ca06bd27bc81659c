#pragma once
// What a screen reader reads for a widget: the captions that label it,
// then its own name.

#include <QAccessible>
#include <QStringList>
#include <QWidget>

inline QString readOut(QWidget *widget)
{
    QAccessibleInterface *a = QAccessible::queryAccessibleInterface(widget);
    QStringList parts;
    for (const auto &[label, relation] : a->relations(QAccessible::Label))
        parts << label->text(QAccessible::Name);
    parts << a->text(QAccessible::Name);
    return parts.join(u' ');
}
