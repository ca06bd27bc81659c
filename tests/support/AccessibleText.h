#pragma once
// What a screen reader reads for a widget, and the controls it finds nameless.

#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QStringList>
#include <QWidget>

// The captions that label the widget, then its own name.
inline QString readOut(QWidget *widget)
{
    QAccessibleInterface *a = QAccessible::queryAccessibleInterface(widget);
    QStringList parts;
    for (const auto &[label, relation] : a->relations(QAccessible::Label))
        parts << label->text(QAccessible::Name);
    parts << a->text(QAccessible::Name);
    return parts.join(u' ');
}

// The controls `root` shows that have no accessible name, each as
// "objectName/class"; the map, the tables and the text areas count as controls.
inline QStringList unnamedControls(const QWidget *root)
{
    QStringList unnamed;
    for (QWidget *child : root->findChildren<QWidget *>()) {
        const bool control = qobject_cast<QAbstractButton *>(child) || qobject_cast<QComboBox *>(child) ||
                             qobject_cast<QLineEdit *>(child) || child->inherits("MapCanvasWidget") ||
                             child->inherits("QSlider") || child->inherits("QTableView") ||
                             child->inherits("QProgressBar") || child->inherits("QPlainTextEdit");
        if (control && child->isVisibleTo(root) &&
            QAccessible::queryAccessibleInterface(child)->text(QAccessible::Name).isEmpty())
            unnamed << child->objectName() + "/" + child->metaObject()->className();
    }
    return unnamed;
}
