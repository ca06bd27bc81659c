#pragma once
// What screen readers can read of a window: every name in its accessible
// tree, and what is read for one widget (the captions that label it, then
// its own name).

#include <QAccessible>
#include <QStringList>
#include <QWidget>

inline void collectAccessibleNames(QAccessibleInterface *node, QStringList &names)
{
    if (!node)
        return;
    names << node->text(QAccessible::Name);
    for (int i = 0; i < node->childCount(); ++i)
        collectAccessibleNames(node->child(i), names);
}

inline QStringList accessibleNames(QWidget *window)
{
    QStringList names;
    collectAccessibleNames(QAccessible::queryAccessibleInterface(window), names);
    return names;
}

inline QString readOut(QWidget *widget)
{
    QAccessibleInterface *a = QAccessible::queryAccessibleInterface(widget);
    QStringList parts;
    for (const auto &[label, relation] : a->relations(QAccessible::Label))
        parts << label->text(QAccessible::Name);
    parts << a->text(QAccessible::Name);
    return parts.join(u' ');
}
