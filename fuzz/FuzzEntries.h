#pragma once
// The ways a file from outside enters the program, each as one function
// from raw bytes to a finished load: the fuzz harnesses call them with
// generated inputs and the regression test replays saved inputs through
// them. Each writes its files into `dir` (emptied first) and runs the real
// selection, reading and generation code. A clean error (the one-line load
// error or a selection message) is returned; anything else escapes.

#include <QByteArrayView>
#include <QString>

namespace fuzzentry {

struct Outcome {
    bool loaded = false;
    QString message; // the message shown to the user when not loaded
};

// `input` is the universe map; a fixed own report names planets of the real maps.
Outcome loadMapFile(const QString &dir, QByteArrayView input);

// `input` is a whole game: a first line of options, then the map and the
// reports, separated by ReportSeparator lines (see the .cpp for the layout).
Outcome loadReportFiles(const QString &dir, QByteArrayView input);
inline constexpr char ReportSeparator[] = "\n~~~~\n";

// `input` is the annotation file: loaded as the generation loads it, then
// replayed onto a small picture as the redraw replays it.
Outcome loadAnnotationFile(const QString &dir, QByteArrayView input);

// `input` is STARS.INI in a Wine prefix: the install folder it names is
// looked up as at start-up.
Outcome loadSettingsFile(const QString &dir, QByteArrayView input);

} // namespace fuzzentry
