#include "WebMapFolder.h"

#include "QuotedText.h"

#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>

namespace {

QString shown(const QString &path)
{
    return escapeControls(QDir::toNativeSeparators(path));
}

// A name beside `target`, hidden from listings, that nothing has yet.
QString besideName(const QString &target, const char *what)
{
    const QFileInfo info(target);
    for (;;) {
        const QString name = QStringLiteral("%1/.%2.%3-%4")
                                 .arg(info.absolutePath(), info.fileName(), QLatin1String(what))
                                 .arg(QRandomGenerator::global()->generate(), 8, 16, QLatin1Char('0'));
        if (!QFileInfo::exists(name))
            return name;
    }
}

} // namespace

void WebMapFolder::checkTarget(const QString &target)
{
    const QFileInfo info(QFileInfo(target).absoluteFilePath());
    if (info.exists() && !info.isDir())
        throw WebMapError(QStringLiteral("%1: is a file, not a folder").arg(shown(target)));
    // Only a web map written before is replaced: anything else a user keeps there stays.
    const QDir dir(info.absoluteFilePath());
    const bool holdsWebMap = dir.exists(QStringLiteral("index.html")) && dir.exists(QStringLiteral("data/site.js"));
    if (info.isDir() && !dir.isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot)
        && !holdsWebMap)
        throw WebMapError(
            QStringLiteral("%1: the folder holds other files; give a new folder or one with a web map in it")
                .arg(shown(target)));
    if (!QDir(info.absolutePath()).exists())
        throw WebMapError(QStringLiteral("%1: no such folder").arg(shown(info.absolutePath())));
}

WebMapFolder::WebMapFolder(const QString &target) : m_target(QFileInfo(target).absoluteFilePath())
{
    checkTarget(target);
    // A link to the folder stays a link: the map is replaced where it points.
    if (QFileInfo(m_target).isSymLink()) {
        m_target = QFileInfo(m_target).canonicalFilePath();
        if (m_target.isEmpty())
            throw WebMapError(QStringLiteral("%1: the link leads nowhere").arg(shown(target)));
    }
    const QFileInfo info(m_target);
    m_staging = besideName(m_target, "writing");
    if (!QDir().mkdir(m_staging))
        throw WebMapError(QStringLiteral("%1: cannot write a folder there").arg(shown(info.absolutePath())));
}

WebMapFolder::~WebMapFolder()
{
    if (!m_committed)
        QDir(m_staging).removeRecursively();
}

void WebMapFolder::commit()
{
    const QByteArray staging = QFile::encodeName(m_staging);
    const QByteArray target = QFile::encodeName(m_target);
    // An earlier map and the new one change places in one step, where the
    // file system can; elsewhere the old one moves aside first.
    if (QFileInfo(m_target).isDir()) {
        if (renameat2(AT_FDCWD, staging.constData(), AT_FDCWD, target.constData(), RENAME_EXCHANGE) != 0) {
            const QString aside = besideName(m_target, "old");
            if (!QDir().rename(m_target, aside))
                throw WebMapError(QStringLiteral("%1: cannot replace the folder").arg(shown(m_target)));
            if (!QDir().rename(m_staging, m_target)) {
                QDir().rename(aside, m_target);
                throw WebMapError(QStringLiteral("%1: cannot replace the folder").arg(shown(m_target)));
            }
            m_staging = aside;
        }
        // What is left at the staging name now is the earlier map.
        QDir(m_staging).removeRecursively();
        m_committed = true;
        return;
    }
    if (std::rename(staging.constData(), target.constData()) != 0)
        throw WebMapError(
            QStringLiteral("%1: cannot put the folder in place (%2)").arg(shown(m_target), QString::fromLocal8Bit(std::strerror(errno))));
    m_committed = true;
}
