#pragma once
// A message seam for window tests: records every message box and question
// instead of showing it, answers questions with `answer` and input boxes
// with the next of `inputs` ("" when none is left, as a cancelled box).
// It stands in for the message boxes for as long as it lives.

#include "MessageSink.h"

#include <QStringList>

class RecordingSink : public MessageSink {
public:
    RecordingSink() : m_previous(setMessageSink(this)) {}
    ~RecordingSink() override { setMessageSink(m_previous); }
    RecordingSink(const RecordingSink &) = delete;
    RecordingSink &operator=(const RecordingSink &) = delete;

    void information(QWidget *, const QString &text) override { messages << text; }
    bool question(QWidget *, const QString &, const QString &text) override
    {
        messages << text;
        return answer;
    }
    QString input(QWidget *, const QString &title, const QString &prompt, const QString &defaultAnswer) override
    {
        messages << title + u'|' + prompt + u'|' + defaultAnswer;
        return inputs.isEmpty() ? QString() : inputs.takeFirst();
    }
    QStringList messages;
    bool answer = true;
    QStringList inputs;

private:
    MessageSink *m_previous;
};
