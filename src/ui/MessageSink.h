#pragma once
// Where the windows' message boxes go. The program shows them as modal
// boxes titled with the application's name; tests install a sink that
// records the texts instead, so that no box blocks them.

#include <QString>

class QWidget;

class MessageSink {
public:
    virtual ~MessageSink() = default;
    // An OK-only message.
    virtual void information(QWidget *parent, const QString &text) = 0;
    // A Yes/No question with its own title; true for Yes.
    virtual bool question(QWidget *parent, const QString &title, const QString &text) = 0;
    // An input box with its own title and a default answer; the text typed,
    // or "" when it was cancelled.
    virtual QString input(QWidget *parent, const QString &title, const QString &prompt, const QString &defaultAnswer) = 0;
};

// The application's title, the title of every message box.
QString applicationTitle();

// The sink in use; a modal QMessageBox unless another one is installed.
MessageSink &messageSink();
// Installs `sink` (nullptr restores the message boxes) and returns the one
// it replaces. The caller keeps ownership.
MessageSink *setMessageSink(MessageSink *sink);

// Shorthand for messageSink().information(parent, text).
inline void showMessage(QWidget *parent, const QString &text)
{
    messageSink().information(parent, text);
}
