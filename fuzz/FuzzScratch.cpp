#include "FuzzScratch.h"

#include <QDir>
#include <QFileInfo>
#include <cstdlib>
#include <unistd.h>

namespace {

QString makeScratchDir()
{
    const QString base = QFileInfo(QStringLiteral("/dev/shm")).isDir() ? QStringLiteral("/dev/shm") : QDir::tempPath();
    return QStringLiteral("%1/veltro-fuzz-%2").arg(base).arg(getpid());
}

} // namespace

const QString &fuzzScratchDir()
{
    static const QString dir = [] {
        const QString d = makeScratchDir();
        std::atexit([] { QDir(fuzzScratchDir()).removeRecursively(); });
        return d;
    }();
    return dir;
}
