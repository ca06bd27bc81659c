#pragma once
// "Find Planet": a field in the status line that completes planet names as
// they are typed, from anywhere in the name and whatever the case. Enter,
// or a name chosen from the list, asks for that planet; Escape closes it.

#include <QWidget>

class QCompleter;
class QLineEdit;
class QStringListModel;

class FindPlanetField : public QWidget {
    Q_OBJECT
public:
    explicit FindPlanetField(QWidget *parent = nullptr);

    // Shows the field, emptied, with these names to complete, and gives it the focus.
    void open(const QStringList &names);
    QLineEdit *edit() const { return m_edit; }
    QCompleter *completer() const { return m_completer; }

signals:
    void chosen(const QString &text);
    void closed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QLineEdit *m_edit;
    QStringListModel *m_names;
    QCompleter *m_completer;
    bool m_listChose = false;
};
