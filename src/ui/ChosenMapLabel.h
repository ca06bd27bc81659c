#pragma once
// The map the report rows belong to, above them: its file name and its
// folder. A long folder is shortened in the middle to the label's width,
// keeping the drive or root and the game's own folder in sight, rather than
// widening the window or being cut at its edge; the tooltip and the name
// screen readers read have the whole path.

#include <QLabel>

class ChosenMapLabel : public QLabel {
public:
    explicit ChosenMapLabel(QWidget *parent = nullptr);

    // The chosen map file's path, empty for none.
    void setMapFile(const QString &path);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void showFitted();

    QString m_name;
    QString m_folder;
};
