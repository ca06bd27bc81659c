#include "FindPlanetField.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QStringListModel>
#include <QTimer>

FindPlanetField::FindPlanetField(QWidget *parent) : QWidget(parent)
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *caption = new QLabel(QStringLiteral("Find &Planet:"), this);
    m_edit = new QLineEdit(this);
    m_edit->setObjectName(QStringLiteral("FindPlanet"));
    m_edit->setAccessibleName(QStringLiteral("Find Planet"));
    m_edit->setMinimumWidth(180);
    m_edit->setClearButtonEnabled(true);
    caption->setBuddy(m_edit);
    layout->addWidget(caption);
    layout->addWidget(m_edit);

    m_names = new QStringListModel(this);
    m_completer = new QCompleter(m_names, this);
    m_completer->setCaseSensitivity(Qt::CaseInsensitive);
    m_completer->setFilterMode(Qt::MatchContains);
    m_completer->setMaxVisibleItems(12);
    m_edit->setCompleter(m_completer);
    connect(m_completer, qOverload<const QString &>(&QCompleter::activated), this, [this](const QString &name) {
        // Enter on a name picked in the list reaches the field too, once
        // the list has chosen: one choice, not two.
        m_listChose = true;
        QTimer::singleShot(0, this, [this] { m_listChose = false; });
        emit chosen(name);
    });
    connect(m_edit, &QLineEdit::returnPressed, this, [this] {
        if (!m_listChose)
            emit chosen(m_edit->text());
    });
    m_edit->installEventFilter(this);
    hide();
}

void FindPlanetField::open(const QStringList &names)
{
    m_names->setStringList(names);
    m_edit->clear();
    show();
    m_edit->setFocus(Qt::ShortcutFocusReason);
}

bool FindPlanetField::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_edit && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape && !m_completer->popup()->isVisible()) {
        hide();
        emit closed();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}
