#pragma once
// "About Veltro Marches": the program's version and an OK button.

#include <QDialog>

class QLabel;

class AboutDialog : public QDialog {
public:
    explicit AboutDialog(QWidget *parent = nullptr);

    // "Version " + major.minor.patch of this build.
    static QString versionText();
    QLabel *versionLabel() const { return m_version; }

private:
    QLabel *m_version = nullptr;
};
