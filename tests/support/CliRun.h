#pragma once
// Runs veltro-cli as a script would and keeps what it said.

#include <QFile>
#include <QProcess>
#include <QStringList>
#include <locale>
#include <stdexcept>

struct CliRun {
    int status = -1; // -1: the program crashed or was stopped
    QByteArray out;
    QString err;
};

// How the program is started, besides its arguments.
struct CliStart {
    // German by default, so that a decimal comma would show.
    QByteArray locale = "de_DE.UTF-8";
    // Shell words before the program, as "ulimit -f 8; exec"; none if empty.
    QString shellPrefix;
    // Added to the sanitizer's options, if it runs under one.
    QByteArray asanOptions;
    // Standard output into this file instead of kept, appended to it if asked.
    QString outputFile;
    bool appendOutput = false;
    QString workingDirectory;
    // Stopped after this long, as a hang.
    int timeoutMs = 60000;
};

inline CliRun runCli(const QStringList &arguments, const CliStart &start = {})
{
    // Without the locale no decimal comma could show: fail rather than pass unchecked.
    try {
        std::locale(start.locale.constData());
    } catch (const std::runtime_error &) {
        qFatal("the %s locale is not installed (scripts/install-deps.sh makes it)", start.locale.constData());
    }
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL", start.locale);
    if (!start.asanOptions.isEmpty())
        environment.insert("ASAN_OPTIONS", environment.value("ASAN_OPTIONS") + ':' + start.asanOptions);
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(start.workingDirectory);
    if (!start.outputFile.isEmpty())
        process.setStandardOutputFile(start.outputFile, start.appendOutput ? QIODevice::Append : QIODevice::Truncate);
    if (!start.shellPrefix.isEmpty())
        process.start("sh", QStringList{"-c", start.shellPrefix + " \"$0\" \"$@\"", VELTRO_CLI} + arguments);
    else
        process.start(VELTRO_CLI, arguments);
    const bool finished = process.state() == QProcess::NotRunning || process.waitForFinished(start.timeoutMs);
    if (!finished) {
        process.kill();
        process.waitForFinished();
    }
    CliRun run{-1, process.readAllStandardOutput(), QString::fromUtf8(process.readAllStandardError())};
    if (finished && process.exitStatus() == QProcess::NormalExit)
        run.status = process.exitCode();
    return run;
}

inline QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
}
