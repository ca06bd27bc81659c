#pragma once
// Stands in for the message boxes while it lives: records each text, answers questions with
// `answer` and input boxes with the next of `inputs` ("" when none is left, as a cancelled box).

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
    QStringList messages, inputs;
    bool answer = true;

private:
    MessageSink *m_previous;
};
