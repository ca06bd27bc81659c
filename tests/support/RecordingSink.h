#pragma once
// A message seam for window tests: records every message box and question
// instead of showing it, and answers questions with `answer`.

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
    QStringList messages;
    bool answer = true;
};
