#include "OutputTarget.h"

#include "CliOptions.h"
#include "FileSelection.h"
#include "GameFolder.h"
#include "PngWriter.h"
#include "QuotedText.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QImageWriter>
#include <QSaveFile>
#include <cerrno>
#include <optional>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// A file as the system knows it, whatever the path that leads there.
struct FileId {
    dev_t device = 0;
    ino_t inode = 0;
    bool operator==(const FileId &) const = default;
};

std::optional<FileId> fileId(const QString &path)
{
    struct stat st {};
    if (::stat(QFile::encodeName(path).constData(), &st) != 0)
        return std::nullopt;
    return FileId{st.st_dev, st.st_ino};
}

// A name in a folder, matched as the game's lookup matches it.
struct FolderName {
    FileId folder;
    QString name;
    bool operator==(const FolderName &) const = default;
};

std::optional<FolderName> folderName(const QString &path)
{
    const QFileInfo info(path);
    const auto folder = fileId(info.path());
    if (!folder)
        return std::nullopt;
    return FolderName{*folder, info.fileName().toCaseFolded()};
}

// Where a write to `path` lands: its symbolic links followed to the end, as
// the replacement follows them.
QString finalPath(const QString &path)
{
    QFileInfo info(path);
    for (int depth = 0; depth < 40 && info.isSymLink(); ++depth)
        info.setFile(info.symLinkTarget());
    return info.filePath();
}

// What a target or an input is, for telling two apart.
struct Identity {
    QString shown;
    std::optional<FileId> file;
    std::optional<FolderName> name;

    bool sameAs(const Identity &other) const
    {
        return (file && file == other.file) || (name && name == other.name);
    }
};

Identity targetIdentity(const OutputTarget &target)
{
    if (target.isStandardOutput()) {
        struct stat st {};
        if (::fstat(STDOUT_FILENO, &st) == 0 && S_ISREG(st.st_mode))
            return {QStringLiteral("standard output"), FileId{st.st_dev, st.st_ino}, std::nullopt};
        // A terminal or a pipe: only another "-" is the same.
        return {QStringLiteral("standard output"), std::nullopt, FolderName{{}, QStringLiteral("-")}};
    }
    const QString path = finalPath(target.path);
    return {target.path, fileId(path), folderName(path)};
}

QList<Identity> inputIdentities(const QStringList &inputs)
{
    QList<Identity> identities;
    QHash<QString, std::shared_ptr<GameFolder>> folders;
    for (const QString &input : inputs) {
        const QFileInfo info(input);
        identities.append({input, fileId(input), folderName(input)});
        std::shared_ptr<GameFolder> &folder = folders[info.path()];
        if (!folder)
            folder = std::make_shared<GameFolder>(info.path());
        for (const QString &match : folder->matches(info.fileName()))
            identities.append({match, fileId(match), std::nullopt});
    }
    return identities;
}

} // namespace

QStringList gameInputs(const QString &mapFile)
{
    const QFileInfo map(mapFile);
    const QDir folder = map.dir();
    // Named as the map is, so that messages read as the command line does.
    const bool bare = mapFile == map.fileName();
    QStringList inputs;
    for (const QString &name : FileSelection::gameFileNames(map.fileName()))
        inputs << (bare ? name : folder.filePath(name));
    return inputs;
}

void refuseClashingTargets(const QList<OutputTarget> &targets, const QStringList &inputs)
{
    const QList<Identity> read = inputIdentities(inputs);
    QList<Identity> written;
    for (const OutputTarget &target : targets) {
        const Identity identity = targetIdentity(target);
        for (const Identity &input : read)
            if (identity.sameAs(input))
                throw CliFailure(2, QStringLiteral("%1 %2: this command reads %3, so it cannot write there")
                                        .arg(target.option, escapeControls(identity.shown), escapeControls(input.shown)));
        for (qsizetype i = 0; i < written.size(); ++i)
            if (identity.sameAs(written[i]))
                throw CliFailure(2, QStringLiteral("%1 and %2 name the same file, %3")
                                        .arg(targets[i].option, target.option, escapeControls(identity.shown)));
        written << identity;
    }
}

// Writes straight into a file descriptor: every write goes out whole, a
// short write is carried on, and the first failure is kept with its reason.
class OutputFile::Writer : public QIODevice {
public:
    Writer(int fd, bool owned) : m_fd(fd), m_owned(owned) { open(QIODevice::WriteOnly | QIODevice::Unbuffered); }
    ~Writer() override { closeDescriptor(); }

    bool isSequential() const override { return true; }
    int failure() const { return m_errno; }

    // Closing can report a write the system had still to finish.
    void closeDescriptor()
    {
        if (m_owned && m_fd >= 0 && ::close(m_fd) != 0 && m_errno == 0)
            m_errno = errno;
        m_fd = -1;
    }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *data, qint64 length) override
    {
        if (m_errno != 0)
            return -1;
        for (qint64 done = 0; done < length;) {
            const ssize_t n = ::write(m_fd, data + done, size_t(length - done));
            if (n < 0 && errno == EINTR)
                continue;
            if (n <= 0) {
                m_errno = n < 0 ? errno : EIO;
                setErrorString(systemErrorText(m_errno));
                return -1;
            }
            done += n;
        }
        return length;
    }

private:
    int m_fd;
    bool m_owned;
    int m_errno = 0;
};

OutputFile::OutputFile(const QString &path) : m_path(path) {}

OutputFile::~OutputFile() = default;

QIODevice &OutputFile::device()
{
    if (m_writer)
        return *m_writer;
    if (m_path == QLatin1String("-")) {
        m_writer = std::make_unique<Writer>(STDOUT_FILENO, false);
        return *m_writer;
    }
    const QByteArray name = QFile::encodeName(m_path);
    struct stat st {};
    const bool exists = ::stat(name.constData(), &st) == 0;
    if (exists && S_ISDIR(st.st_mode))
        fail(QStringLiteral("it is a folder"));
    if (exists && !S_ISREG(st.st_mode)) {
        // A device or a FIFO takes the bytes as they come; a FIFO waits here
        // for its reader, as a shell's redirection would.
        const int fd = ::open(name.constData(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
        if (fd < 0)
            fail(systemErrorText(errno));
        m_writer = std::make_unique<Writer>(fd, true);
        return *m_writer;
    }
    m_replacement = std::make_unique<QSaveFile>(m_path);
    if (!m_replacement->open(QIODevice::WriteOnly))
        fail(m_replacement->errorString());
    const int fd = m_replacement->handle();
    if (exists) {
        // The new file takes the old one's place, so it takes its owner (when
        // this user may give it) and then its permission bits: QSaveFile
        // widens a read-only file's bits for a user who may write anyway.
        if (::fchown(fd, st.st_uid, st.st_gid) != 0 && errno != EPERM)
            fail(systemErrorText(errno));
        if (::fchmod(fd, st.st_mode & 07777) != 0)
            fail(systemErrorText(errno));
    }
    m_writer = std::make_unique<Writer>(fd, false);
    return *m_writer;
}

void OutputFile::commit()
{
    device();
    if (m_writer->failure() != 0)
        fail(QString());
    if (!m_replacement) {
        m_writer->closeDescriptor();
        if (m_writer->failure() != 0)
            fail(QString());
        return;
    }
    if (!m_replacement->commit())
        fail(m_replacement->errorString());
}

void OutputFile::fail(const QString &reason) const
{
    const QString why = m_writer && m_writer->failure() != 0 ? systemErrorText(m_writer->failure()) : reason;
    if (m_path == QLatin1String("-"))
        throw CliFailure(1, QStringLiteral("cannot write to standard output (%1)").arg(why));
    throw CliFailure(1, QStringLiteral("%1: cannot write the file (%2)").arg(escapeControls(m_path), why));
}

QByteArray encodeImage(const QString &path, const QImage &image, const char *format)
{
    QByteArray encoded;
    QBuffer buffer(&encoded);
    buffer.open(QIODevice::WriteOnly);
    if (qstrcmp(format, "png") == 0) {
        if (!writePng(image, buffer))
            OutputFile(path).fail(QStringLiteral("the PNG could not be encoded"));
        return encoded;
    }
    QImageWriter writer(&buffer, format);
    if (!writer.write(image))
        OutputFile(path).fail(writer.errorString());
    return encoded;
}

void writeImage(const QString &path, const QImage &image, const char *format)
{
    const QByteArray encoded = encodeImage(path, image, format);
    writeOutput(path, [&](QIODevice &out) { out.write(encoded); });
}

void writeOutput(const QString &path, const std::function<void(QIODevice &)> &write)
{
    OutputFile out(path);
    write(out.device());
    out.commit();
}
