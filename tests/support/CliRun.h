#pragma once
// Runs veltro-cli as a script would and keeps what it said.

#include <QProcess>
#include <QStringList>
#include <locale>
#include <stdexcept>

struct CliRun {
    int status = -1; // -1: the program crashed
    QByteArray out;
    QString err;
};

// Under a German locale, so that a decimal comma would show. Without the
// locale the program would run in C's and no comma could show: that fails
// here rather than passing unchecked.
inline CliRun runCli(const QStringList &arguments)
{
    static const bool german = [] {
        try {
            std::locale("de_DE.UTF-8");
            return true;
        } catch (const std::runtime_error &) {
            return false;
        }
    }();
    if (!german)
        qFatal("the de_DE.UTF-8 locale is not installed (scripts/install-deps.sh makes it)");
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
