#pragma once
// `open` shows a modal window with exec(); `inside` gets it while it runs,
// then it is closed. True when it was a T; nothing fires later if none opens.

#include <QApplication>
#include <QTimer>
#include <QWidget>

template <typename T, typename Open, typename Inside>
bool whileModal(Open open, Inside inside)
{
    bool ran = false;
    QTimer check;
    check.setSingleShot(true);
    QObject::connect(&check, &QTimer::timeout, [&] {
        QWidget *modal = QApplication::activeModalWidget();
        if (auto *window = dynamic_cast<T *>(modal)) {
            inside(*window);
            ran = true;
        }
        if (modal)
            modal->close();
    });
    check.start(0);
    open();
    check.stop();
    return ran;
}
