#pragma once
// What a screen reader reads for a widget, and the controls it finds nameless.

#include <QAccessible>
#include <QStringList>
#include <QWidget>
#include <algorithm>

// The captions that label the widget, then its own name.
inline QString readOut(QWidget *widget)
{
    QAccessibleInterface *a = QAccessible::queryAccessibleInterface(widget);
    QStringList parts;
    for (const auto &[label, relation] : a->relations(QAccessible::Label))
        parts << label->text(QAccessible::Name);
    return (parts << a->text(QAccessible::Name)).join(u' ');
}

// The controls `root` shows that have no accessible name, each as
// "objectName/class"; the map, the tables and the text areas count as controls.
inline QStringList unnamedControls(const QWidget *root)
{
    static const char *const controls[] = {"QAbstractButton", "QComboBox",   "QLineEdit",    "MapCanvasWidget",
                                           "QSlider",         "QTableView",  "QProgressBar", "QPlainTextEdit"};
    QStringList unnamed;
    for (QWidget *child : root->findChildren<QWidget *>()) {
        const bool control = std::any_of(std::begin(controls), std::end(controls), [child](auto c) { return child->inherits(c); });
        if (control && child->isVisibleTo(root) &&
            QAccessible::queryAccessibleInterface(child)->text(QAccessible::Name).isEmpty())
            unnamed << child->objectName() + "/" + child->metaObject()->className();
    }
    return unnamed;
}
