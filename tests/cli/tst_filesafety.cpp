// What veltro-cli does to the files around it: where it writes, what it
// will not write over or read, what a failed write leaves behind, and that
// no locale changes a byte of what it writes.

#include "CliRun.h"
#include "TestGame.h"

#include <QDir>
#include <QTest>
#include <clocale>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QStringList SampleSuffixes{".map", ".P1", ".P2", ".P3", ".P4", ".P5", ".VMK"};

// The sample game in a scratch folder, its files named from `base`, the
// reports' and annotation file's suffixes in lower case if asked.
void copySample(const TestGame &game, const QString &base = "MARCHES", bool lowerSuffixes = false)
{
    for (const QString &suffix : SampleSuffixes) {
        QFile sample(QString(VELTRO_SAMPLES) + "/MARCHES" + suffix);
        QVERIFY(sample.open(QIODevice::ReadOnly));
        game.write(base + (lowerSuffixes && suffix != ".map" ? suffix.toLower() : suffix), sample.readAll());
    }
}

mode_t modeOf(const QString &path, bool follow = true)
{
    struct stat st {};
    const QByteArray name = QFile::encodeName(path);
    if ((follow ? ::stat(name, &st) : ::lstat(name, &st)) != 0)
        return 0;
    return st.st_mode;
}

// Every entry of the folder with its kind, permission bits and bytes: what a
// refused or failed run must leave as it found it. FIFOs and devices are
// not read.
QStringList folderState(const QString &dir)
{
    QStringList state;
    const QDir folder(dir);
    for (const QString &name : folder.entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                                                QDir::Name)) {
        const QString path = folder.filePath(name);
        const mode_t mode = modeOf(path, false);
        QString entry = QString("%1 %2").arg(name).arg(mode, 0, 8);
        if (S_ISDIR(mode))
            entry += " [" + folderState(path).join(", ") + "]";
        if (S_ISREG(mode)) {
            QFile file(path);
            entry += file.open(QIODevice::ReadOnly) ? " " + file.readAll().toHex() : " unreadable";
        }
        state << entry;
    }
    return state;
}

QStringList inFolder(const TestGame &game, const QStringList &arguments)
{
    QStringList out;
    for (const QString &a : arguments)
        out << QString(a).replace("%1", game.dir());
    return out;
}

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
}

// Reads a FIFO while the program writes into it, without waiting for ever
// on a program that never opens it.
QByteArray readFifo(const QString &path, QProcess &process)
{
    const int fd = ::open(QFile::encodeName(path), O_RDONLY | O_NONBLOCK);
    QByteArray bytes;
    char buffer[4096];
    // What is read after the program has ended is the rest of what it wrote.
    for (int waits = 0, ended = false; fd >= 0 && waits < 6000; ++waits) {
        const ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n > 0)
            bytes.append(buffer, n);
        else if (ended)
            break;
        else
            ended = process.state() == QProcess::NotRunning || process.waitForFinished(10);
    }
    if (fd >= 0)
        ::close(fd);
    return bytes;
}

bool oneLine(const CliRun &run) { return run.err.count(u'\n') == 1 && run.err.endsWith(u'\n'); }

} // namespace

class FileSafetyTest : public QObject {
    Q_OBJECT

private slots:
    // A target that is a file of the game, by any path or case, or another
    // target of the same run: refused before anything is read or written.
    void refusedTargets_data()
    {
        QTest::addColumn<QStringList>("arguments");
        // "NAME>TARGET" a symbolic link, "NAME=TARGET" a hard one, ">>NAME"
        // standard output appended to NAME
        QTest::addColumn<QString>("link");
        QTest::newRow("the map") << QStringList{"export", "%1/MARCHES.map", "-o", "%1/MARCHES.map"} << "";
        QTest::newRow("a report, in another case") << QStringList{"export", "%1/MARCHES.map", "-o", "%1/marches.p2"} << "";
        QTest::newRow("a report's name, not yet there")
            << QStringList{"planet", "%1/MARCHES.map", "--number", "1", "-o", "%1/MARCHES.P9"} << "";
        QTest::newRow("the annotation file as the trace")
            << QStringList{"render", "%1/MARCHES.map", "-o", "%1/x.png", "--trace", "%1/MARCHES.VMK"} << "";
        QTest::newRow("through a symbolic link") << QStringList{"export", "%1/MARCHES.map", "-o", "%1/out.json"}
                                                 << "out.json>MARCHES.P3";
        QTest::newRow("a hard link") << QStringList{"export", "%1/MARCHES.map", "-o", "%1/out.json"}
                                     << "out.json=MARCHES.P4";
        QTest::newRow("a turn's file") << QStringList{"history", "%1/MARCHES.map@2400", "-o", "%1/turns.gif"}
                                       << "turns.gif>MARCHES.P1";
        QTest::newRow("picture and trace") << QStringList{"render", "%1/MARCHES.map", "-o", "%1/x.png", "--trace", "%1/X.PNG"}
                                           << "";
        QTest::newRow("both on standard output")
            << QStringList{"render", "%1/MARCHES.map", "-o", "-", "--trace", "-"} << "";
        QTest::newRow("standard output appended to a report") << QStringList{"export", "%1/MARCHES.map"} << ">>MARCHES.P5";
    }
    void refusedTargets()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, link);
        TestGame game;
        copySample(game);
        const qsizetype symbolic = link.indexOf('>'), hard = link.indexOf('=');
        if (symbolic > 0)
            QVERIFY(QFile::link(link.mid(symbolic + 1), game.path(link.left(symbolic))));
        if (hard > 0)
            QVERIFY(::link(QFile::encodeName(game.path(link.mid(hard + 1))), QFile::encodeName(game.path(link.left(hard)))) == 0);
        CliStart start;
        if (link.startsWith(">>")) {
            start.outputFile = game.path(link.mid(2));
            start.appendOutput = true;
        }
        const QStringList before = folderState(game.dir());
        const CliRun run = runCli(inFolder(game, arguments), start);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.out, QByteArray());
        QVERIFY2(oneLine(run) && (run.err.contains("cannot write there") || run.err.contains("the same file")),
                 qPrintable(run.err));
        QCOMPARE(folderState(game.dir()), before);
    }

    // "-" is standard output; a device or a FIFO is written into and stays
    // what it is.
    void specialTargets_data()
    {
        QTest::addColumn<QString>("target");
        QTest::newRow("standard output") << "-";
        QTest::newRow("device") << "null";
        QTest::newRow("FIFO") << "fifo";
    }
    void specialTargets()
    {
        QFETCH(QString, target);
        TestGame game;
        copySample(game);
        const QStringList arguments{"export", game.path("MARCHES.map"), "--format", "csv", "-o"};
        const QByteArray expected = runCli(arguments.mid(0, 4)).out;
        QVERIFY(expected.size() > 10000);
        const QString path = game.path(target);
        struct stat null {};
        // A device of our own like /dev/null, never the machine's: a fault
        // here would replace it by a file.
        if (target == "null" && (::stat("/dev/null", &null) != 0
                                 || ::mknod(QFile::encodeName(path), S_IFCHR | 0666, null.st_rdev) != 0))
            target = "fifo"; // a user who may not make devices tries the FIFO again
        if (target == "fifo")
            QVERIFY(::mkfifo(QFile::encodeName(path), 0644) == 0);
        const mode_t kind = modeOf(path) & S_IFMT;
        const QStringList before = folderState(game.dir());

        QByteArray fromFifo;
        CliStart start;
        start.workingDirectory = game.dir();
        if (target == "fifo")
            start.whileRunning = [&](QProcess &process) { fromFifo = readFifo(path, process); };
        const CliRun run = runCli(arguments + QStringList{target == "-" ? "-" : path}, start);
        QCOMPARE(run.status, 0);
        QCOMPARE(run.err, QString());
        QCOMPARE(target == "-" ? run.out : target == "fifo" ? fromFifo : expected, expected);
        QCOMPARE(folderState(game.dir()), before);
        QCOMPARE(modeOf(path) & S_IFMT, kind);
    }

    // A file replaced keeps its permission bits; a symbolic link keeps
    // leading to it.
    void replacedFiles_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("throughLink");
        QTest::newRow("read-only") << 0444 << false;
        QTest::newRow("group only") << 0640 << false;
        QTest::newRow("through a symbolic link") << 0604 << true;
    }
    void replacedFiles()
    {
        QFETCH(int, mode);
        QFETCH(bool, throughLink);
        TestGame game;
        copySample(game);
        game.write("out.csv", "old");
        QVERIFY(::chmod(QFile::encodeName(game.path("out.csv")), mode_t(mode)) == 0);
        if (throughLink)
            QVERIFY(QFile::link("out.csv", game.path("link.csv")));
        const QString target = game.path(throughLink ? "link.csv" : "out.csv");
        const CliRun run = runCli({"export", game.path("MARCHES.map"), "--format", "csv", "-o", target});
        QCOMPARE(run.status, 0);
        QCOMPARE(fileBytes(game.path("out.csv")), runCli({"export", game.path("MARCHES.map"), "--format", "csv"}).out);
        QCOMPARE(int(modeOf(game.path("out.csv")) & 07777), mode);
        if (throughLink)
            QVERIFY(S_ISLNK(modeOf(target, false)));
    }

    // A write that fails (a file size limit, a full device) is exit 1 with
    // the reason; the old file stays, and no part of the new one is left.
    void writeFailures_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("limit");   // kilobytes, 0: standard output goes to /dev/full
        QTest::addColumn<QString>("reason");
        const QString tooLarge = "File too large";
        QTest::newRow("CSV") << QStringList{"export", "%1/MARCHES.map", "--format", "csv", "-o", "%1/old.out"} << 8 << tooLarge;
        QTest::newRow("JSON") << QStringList{"export", "%1/MARCHES.map", "-o", "%1/old.out"} << 8 << tooLarge;
        QTest::newRow("PNG") << QStringList{"render", "%1/MARCHES.map", "--layers", "universe,borders,owned", "-o", "%1/old.png"}
                             << 8 << tooLarge;
        QTest::newRow("trace") << QStringList{"render", "%1/MARCHES.map", "--size", "8", "--layers", "universe,borders",
                                              "-o", "%1/x.png", "--trace", "%1/old.out"} << 8 << tooLarge;
        QTest::newRow("GIF") << QStringList{"history", "%1/MARCHES.map@2400", "-o", "%1/old.gif"} << 8 << tooLarge;
        QTest::newRow("frames") << QStringList{"history", "%1/MARCHES.map@2400", "-o", "-", "--frames", "%1/old"}
                                << 8 << tooLarge;
        QTest::newRow("full device") << QStringList{"planet", "%1/MARCHES.map", "--number", "2"} << 0
                                     << "No space left on device";
    }
    void writeFailures()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, limit);
        TestGame game;
        copySample(game);
        for (const char *name : {"old.out", "old.png", "old.gif", "old/2400.png"}) {
            QVERIFY(QDir().mkpath(game.path("old")));
            game.write(name, "old");
        }
        const QStringList before = folderState(game.dir());
        CliStart start;
        start.fileSizeLimit = limit;
        if (limit == 0)
            start.outputFile = "/dev/full";
        const CliRun run = runCli(inFolder(game, arguments), start);
        QFETCH(QString, reason);
        QCOMPARE(run.status, 1);
        QVERIFY2(oneLine(run) && run.err.contains("(" + reason + ")"), qPrintable(run.err));
        QCOMPARE(folderState(game.dir()), before);
    }

    // A FIFO named as a game file is refused by name, not waited on.
    void nonRegularInputs_data()
    {
        QTest::addColumn<QString>("fifo");
        QTest::addColumn<int>("status");
        QTest::newRow("report") << "MARCHES.P2" << 1;
        QTest::newRow("own report") << "MARCHES.P1" << 1;
        QTest::newRow("annotation file") << "MARCHES.VMK" << 1;
        QTest::newRow("map") << "MARCHES.map" << 2;
    }
    void nonRegularInputs()
    {
        QFETCH(QString, fifo);
        TestGame game;
        copySample(game);
        QVERIFY(QFile::remove(game.path(fifo)) && ::mkfifo(QFile::encodeName(game.path(fifo)), 0644) == 0);
        CliStart start;
        start.timeoutMs = 20000;
        const CliRun run = runCli({"export", game.path("MARCHES.map")}, start);
        QTEST(run.status, "status");
        QVERIFY2(oneLine(run) && run.err.startsWith(game.path(fifo) + ": "), qPrintable(run.err));
    }

    // Every output byte for byte the same under German and Turkish as in the
    // C locale; the files' names end in lower case, which a Turkish dotless
    // i would not match if names were folded by the locale.
    void locales_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("JSON") << QStringList{"export", "%1/INDIGO.map", "--grid"};
        QTest::newRow("CSV") << QStringList{"export", "%1/INDIGO.map", "--format", "csv"};
        QTest::newRow("planet, pies") << QStringList{"planet", "%1/INDIGO.map", "--number", "2"};
        QTest::newRow("planet, pointer") << QStringList{"planet", "%1/INDIGO.map", "--at", "22.25,729.5", "--zoom", "0,700,100"};
        QTest::newRow("PNG") << QStringList{"render", "%1/INDIGO.map", "--layers", "universe,borders,owned,vmk", "--overlay",
                                            "names", "--overlay", "esthab=Vorn", "-o", "-"};
        QTest::newRow("trace") << QStringList{"render", "%1/INDIGO.map", "--layers", "universe,hab,growth,vmk", "--overlay",
                                              "avgmc", "--overlay", "terra", "-o", "%1/x.png", "--trace", "-"};
        QTest::newRow("GIF") << QStringList{"history", "%1/INDIGO.map@2400", "--size", "200", "-o", "-"};
    }
    void locales()
    {
        QFETCH(QStringList, arguments);
        TestGame game;
        copySample(game, "INDIGO", true);
        const CliRun plain = runCli(inFolder(game, arguments), "C");
        QCOMPARE(plain.status, 0);
        QVERIFY(!plain.out.isEmpty());
        for (const char *locale : {"de_DE.UTF-8", "tr_TR.UTF-8"}) {
            // The run is worth nothing in a locale the system lacks.
            QVERIFY2(std::setlocale(LC_ALL, locale), qPrintable(QString("%1 is not installed: run scripts/install-deps.sh").arg(locale)));
            std::setlocale(LC_ALL, "C");
            const CliRun run = runCli(inFolder(game, arguments), locale);
            QCOMPARE(run.status, 0);
            QCOMPARE(run.err, plain.err);
            QVERIFY2(run.out == plain.out, locale);
        }
    }
};

QTEST_GUILESS_MAIN(FileSafetyTest)
#include "tst_filesafety.moc"
