#pragma once
// What a user sees wrong in a layout: a control over another, cut off by
// what holds it, or smaller than its text or picture needs.

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAbstractSlider>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QScrollArea>
#include <QScrollBar>
#include <QStringList>
#include <QTabBar>

namespace layoutfaults {

inline QString nameOf(const QWidget *w)
{
    return w->objectName().isEmpty() ? QString::fromLatin1(w->metaObject()->className()) : w->objectName();
}

// Controls are judged whole; the widgets holding them by what they hold.
// A scroll area's content may be larger than its view.
inline bool isControl(const QWidget *w)
{
    return qobject_cast<const QAbstractButton *>(w) || qobject_cast<const QLabel *>(w) ||
           qobject_cast<const QComboBox *>(w) || qobject_cast<const QLineEdit *>(w) ||
           qobject_cast<const QAbstractSlider *>(w) || qobject_cast<const QProgressBar *>(w) ||
           qobject_cast<const QTabBar *>(w) ||
           (qobject_cast<const QAbstractScrollArea *>(w) && !qobject_cast<const QScrollArea *>(w));
}

// The size a control needs to show all its text or picture. A push or tool
// button needs its text and icon inside a frame of two pixels; the style's
// wish for wider buttons does not count.
inline QSize needs(const QWidget *w)
{
    if (const auto *button = qobject_cast<const QAbstractButton *>(w);
        button && (button->inherits("QPushButton") || button->inherits("QToolButton"))) {
        const QSize text = button->text().isEmpty() ? QSize()
                                                    : button->fontMetrics().size(Qt::TextShowMnemonic, button->text());
        const QSize icon = button->icon().isNull() ? QSize() : button->iconSize();
        return QSize(text.width() + icon.width(), qMax(text.height(), icon.height())) + QSize(4, 4);
    }
    if (const auto *label = qobject_cast<const QLabel *>(w)) {
        if (!label->pixmap().isNull())
            return label->pixmap().deviceIndependentSize().toSize();
        if (label->wordWrap())
            return QSize(0, label->heightForWidth(label->width()));
        return label->sizeHint();
    }
    const QSize least = w->minimumSizeHint();
    return least.isValid() ? least : w->sizeHint();
}

} // namespace layoutfaults

// Every fault of the layout of `holder` as it is shown now, empty when none.
inline QStringList layoutFaults(const QWidget *holder)
{
    using namespace layoutfaults;
    QStringList faults;
    QList<const QWidget *> shown;
    for (const QObject *child : holder->children())
        if (const auto *w = qobject_cast<const QWidget *>(child); w && !w->isWindow() && w->isVisible())
            shown << w;
    // A group box's title is painted above what it holds.
    const QRect room = qobject_cast<const QGroupBox *>(holder) ? holder->contentsRect() : holder->rect();
    const bool scrolled = holder->objectName() == QLatin1String("qt_scrollarea_viewport");
    for (qsizetype i = 0; i < shown.size(); ++i) {
        const QWidget *w = shown[i];
        if (!scrolled && !room.contains(w->geometry()))
            faults << nameOf(w) + " cut off by " + nameOf(holder);
        for (qsizetype j = i + 1; j < shown.size(); ++j)
            if (w->geometry().intersects(shown[j]->geometry()))
                faults << nameOf(w) + " over " + nameOf(shown[j]);
        if (const auto *area = qobject_cast<const QScrollArea *>(w); area && area->widget()) {
            const QSize content = area->widget()->size(), view = area->viewport()->size();
            if ((content.width() > view.width() && !area->horizontalScrollBar()->isVisible()) ||
                (content.height() > view.height() && !area->verticalScrollBar()->isVisible()))
                faults << QStringLiteral("%1 hides part of what it holds (%2x%3 in %4x%5)")
                              .arg(nameOf(w)).arg(content.width()).arg(content.height()).arg(view.width()).arg(view.height());
        }
        if (!isControl(w)) {
            faults << layoutFaults(w);
            continue;
        }
        const QSize need = needs(w);
        if (need.width() > w->width() || need.height() > w->height())
            faults << QStringLiteral("%1 is %2x%3 and needs %4x%5")
                          .arg(nameOf(w)).arg(w->width()).arg(w->height()).arg(need.width()).arg(need.height());
    }
    return faults;
}
