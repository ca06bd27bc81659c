#pragma once
// A message seam for window tests: records every message box and question
// instead of showing it, answers questions with `answer` and prompts from `answers`.

#include "MessageSink.h"

#include <QStringList>

class RecordingSink : public MessageSink {
public:
    void information(QWidget *, const QString &text) override { messages << text; }
    bool question(QWidget *, const QString &, const QString &text) override
    {
        messages << text;
        return answer;
    }
    // Prompts take the next of `answers` ("" when none is left), as if typed.
    QString askText(QWidget *, const QString &, const QString &text, const QString &) override
    {
        messages << text;
        return answers.isEmpty() ? QString() : answers.takeFirst();
    }
    QStringList messages;
    bool answer = true;
    QStringList answers;
};
