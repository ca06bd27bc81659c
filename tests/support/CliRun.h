#pragma once
// Runs veltro-cli as a script would and keeps what it said.

#include <QProcess>
#include <QStringList>

struct CliRun {
    int status = -1; // -1: the program crashed
    QByteArray out;
    QString err;
};

// With a German locale where installed, so that a decimal comma would show.
inline CliRun runCli(const QStringList &arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL", "de_DE.UTF-8");
    process.setProcessEnvironment(environment);
    process.start(VELTRO_CLI, arguments);
    process.waitForFinished(-1);
    CliRun run{-1, process.readAllStandardOutput(), QString::fromUtf8(process.readAllStandardError())};
    if (process.exitStatus() == QProcess::NormalExit)
        run.status = process.exitCode();
    return run;
}
