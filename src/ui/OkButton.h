#pragma once
// The small windows close with one "OK" button, named cmdOK, that accepts.

#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>

inline QDialogButtonBox *okButtonBox(QDialog *dialog)
{
    auto *buttons = new QDialogButtonBox;
    QPushButton *ok = buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    QObject::connect(ok, &QPushButton::clicked, dialog, &QDialog::accept);
    return buttons;
}
