#pragma once
// Where the commands write. "-" is standard output. A device or a FIFO that
// exists is written into as it stands: replacing /dev/null by a file would
// take it from everyone. Any other path is a regular file, replaced in one
// step once every byte of the new one is written, keeping the old file's
// permission bits and owner; a failure leaves the old file as it was and no
// part of the new one. A target that is a file the command reads is refused
// before anything is read or written.

#include <QIODevice>
#include <QImage>
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

class QSaveFile;

// A target as the command line names it: the option and the path.
struct OutputTarget {
    QString option; // "-o", "--trace", ...
    QString path;   // "-" for standard output

    bool isStandardOutput() const { return path == QLatin1String("-"); }
};

// The files a game of this map reads: the map, its reports and its
// annotation file, by the names the game looks for.
QStringList gameInputs(const QString &mapFile);

// Usage error (2) when a target is one of the `inputs` (the same file by
// device and inode, through symbolic links; or the same name without regard
// to case in the same folder, which the game's case-blind lookup would read
// next time) or when two targets are the same file.
void refuseClashingTargets(const QList<OutputTarget> &targets, const QStringList &inputs);

// One output written from start to end. Nothing is left behind by one that
// is dropped before `commit`, nor by one whose writes failed.
class OutputFile {
public:
    explicit OutputFile(const QString &path);
    ~OutputFile();
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;

    // Opens the target (CliFailure, status 1, when it cannot be) and gives
    // the device to write to. Every write is whole or fails, and the first
    // failure fails all later ones.
    QIODevice &device();
    // Puts the output in place; CliFailure (1) with the reason of the first
    // failed write, or of the failed replacement.
    void commit();
    // CliFailure (1) naming the target and the reason: the failed write's
    // when there was one (it is what a writer's own error comes from),
    // otherwise `reason`.
    [[noreturn]] void fail(const QString &reason) const;

private:
    class Writer;
    QString m_path;
    std::unique_ptr<QSaveFile> m_replacement;
    std::unique_ptr<Writer> m_writer;
};

// Runs `write` on the target and commits it. Throws CliFailure.
void writeOutput(const QString &path, const std::function<void(QIODevice &)> &write);

// A picture for `path` in `format` ("png", "bmp"), encoded in memory:
// libpng reports a failed write on standard error by itself, so it never
// writes to a target. CliFailure (1) when the picture cannot be encoded.
QByteArray encodeImage(const QString &path, const QImage &image, const char *format);
// The picture encoded, then written.
void writeImage(const QString &path, const QImage &image, const char *format);
