#pragma once
// "Thanks to...": the people without whom there would be nothing to map.

#include <QDialog>

class ThanksDialog : public QDialog {
public:
    explicit ThanksDialog(QWidget *parent = nullptr);
};
