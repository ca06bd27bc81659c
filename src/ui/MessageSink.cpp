#include "MessageSink.h"

#include <QInputDialog>
#include <QMessageBox>

namespace {

class MessageBoxSink : public MessageSink {
public:
    void information(QWidget *parent, const QString &text) override
    {
        QMessageBox box(QMessageBox::NoIcon, applicationTitle(), text, QMessageBox::Ok, parent);
        box.exec();
    }
    bool question(QWidget *parent, const QString &title, const QString &text) override
    {
        return QMessageBox::question(parent, title, text, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
    }
    QString input(QWidget *parent, const QString &title, const QString &prompt, const QString &defaultAnswer) override
    {
        bool ok = false;
        const QString text = QInputDialog::getText(parent, title, prompt, QLineEdit::Normal, defaultAnswer, &ok);
        return ok ? text : QString();
    }
};

MessageBoxSink g_boxes;
MessageSink *g_installed = nullptr;

} // namespace

QString applicationTitle()
{
    return QStringLiteral("Veltro Marches");
}

MessageSink &messageSink()
{
    return g_installed ? *g_installed : g_boxes;
}

MessageSink *setMessageSink(MessageSink *sink)
{
    MessageSink *previous = g_installed;
    g_installed = sink;
    return previous;
}
