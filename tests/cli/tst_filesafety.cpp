// What veltro-cli will not write over or read, what a failed write leaves
// behind, and that no locale changes a byte of what it writes.

#include "CliRun.h"
#include "TestGame.h"

#include <QDir>
#include <QTest>
#include <sys/stat.h>

namespace {

mode_t modeOf(const QString &path, bool follow = true)
{
    struct stat st {};
    const QByteArray name = QFile::encodeName(path);
    return (follow ? ::stat(name, &st) : ::lstat(name, &st)) == 0 ? st.st_mode : 0;
}

// Every entry of the folder with its kind, permission bits and bytes (not
// read from FIFOs and devices): what a refused or failed run must leave.
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
        if (S_ISREG(mode))
            entry += " " + fileBytes(path).toHex();
        state << entry;
    }
    return state;
}

} // namespace

class FileSafetyTest : public QObject {
    Q_OBJECT

private slots:
    // Refused before anything is read or written (2): a target that is a
    // file of the game by any path or case, or another target of the run; a
    // FIFO as a game file is not waited on. A failed write (file size limit,
    // full device) is 1 with the reason. The folder stays as it was.
    void refusals_data()
    {
        QTest::addColumn<QStringList>("arguments");
        // "NAME>TARGET" a symbolic link, ">>NAME" standard output appended,
        // "fifo NAME" a FIFO instead, "limit" ulimit -f 8, "full" standard output to /dev/full
        QTest::addColumn<QString>("setup");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("message");
        // Words of the command line, the game's map put after the first.
        const auto row = [](const char *tag, const QString &words, const QString &setup, int status, const QString &message) {
            QStringList arguments = words.split(' ');
            arguments.insert(1, arguments[0] == "history" ? "%1/MARCHES.map@2400" : "%1/MARCHES.map");
            QTest::newRow(tag) << arguments << setup << status << message;
        };
        const auto reads = [](const QString &option, const QString &file) {
            return option + ": this command reads %1/" + file + ", so it cannot write there";
        };
        const QString tooLarge = ": cannot write the file (File too large)";
        row("a report, in another case", "export -o %1/marches.p2", "", 2, reads("-o %1/marches.p2", "MARCHES.P2"));
        row("a report's name, not yet there", "planet --number 1 -o %1/MARCHES.P9", "", 2,
            reads("-o %1/MARCHES.P9", "MARCHES.P9"));
        row("the annotation file as the trace", "render -o %1/x.png --trace %1/MARCHES.VMK", "", 2,
            reads("--trace %1/MARCHES.VMK", "MARCHES.VMK"));
        row("through a symbolic link", "export -o %1/out.json", "out.json>MARCHES.P3", 2, reads("-o %1/out.json", "MARCHES.P3"));
        row("a turn's file", "history -o %1/turns.gif", "turns.gif>MARCHES.P1", 2, reads("-o %1/turns.gif", "MARCHES.P1"));
        row("picture and trace", "render -o %1/x.png --trace %1/X.PNG", "", 2, "-o and --trace name the same file, %1/X.PNG");
        row("both on standard output", "render -o - --trace -", "", 2, "-o and --trace name the same file, standard output");
        row("standard output appended to a report", "export", ">>MARCHES.P5", 2, reads("-o standard output", "MARCHES.P5"));
        row("FIFO as a report", "export", "fifo MARCHES.P2", 1, "%1/MARCHES.P2: a FIFO, not a game file");
        row("FIFO as the map", "export", "fifo MARCHES.map", 2, "%1/MARCHES.map: not a regular file, so not a map file");
        row("JSON too large", "export -o %1/old.out", "limit", 1, "%1/old.out" + tooLarge);
        row("PNG too large", "render --layers universe,borders,owned -o %1/old.png", "limit", 1, "%1/old.png" + tooLarge);
        row("GIF too large", "history -o %1/old.gif", "limit", 1, "%1/old.gif" + tooLarge);
        // The animation on standard output has begun when a frame's file fails.
        row("frames too large", "history -o - --frames %1/old", "limit", 1, "%1/old/2400.png" + tooLarge);
        row("full device", "planet --number 2", "full", 1, "cannot write to standard output (No space left on device)");
    }
    void refusals()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, setup);
        QFETCH(QString, message);
        TestGame game;
        copySample(game);
        QVERIFY(QDir().mkpath(game.path("old")));
        for (const char *name : {"old.out", "old.png", "old.gif", "old/2400.png"})
            game.write(name, "old");
        CliStart start;
        const qsizetype symbolic = setup.indexOf('>');
        if (symbolic > 0)
            QVERIFY(QFile::link(setup.mid(symbolic + 1), game.path(setup.left(symbolic))));
        if (setup.startsWith(">>")) {
            start.outputFile = game.path(setup.mid(2));
            start.appendOutput = true;
        }
        if (setup.startsWith("fifo ")) {
            const QString fifo = game.path(setup.mid(5));
            QVERIFY(QFile::remove(fifo) && ::mkfifo(QFile::encodeName(fifo), 0644) == 0);
            start.timeoutMs = 20000;
        }
        if (setup == "limit")
            start.shellPrefix = "ulimit -f 8 && exec";
        if (setup == "full")
            start.outputFile = "/dev/full";
        const QStringList before = folderState(game.dir());
        const CliRun run = runCli(arguments.replaceInStrings("%1", game.dir()), start);
        QTEST(run.status, "status");
        if (!arguments.contains("--frames"))
            QCOMPARE(run.out, QByteArray());
        QCOMPARE(run.err, QString(message).replace("%1", game.dir()) + "\n");
        QCOMPARE(folderState(game.dir()), before);
    }

    // A FIFO (as a device) stays what it is, a replaced file keeps its
    // permission bits, a symbolic link keeps leading to it.
    void writtenTargets_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<int>("mode"); // of out.csv before, 0: a special target
        QTest::newRow("standard output") << "-" << 0;
        QTest::newRow("FIFO") << "fifo" << 0;
        QTest::newRow("read-only") << "out.csv" << 0444;
        QTest::newRow("through a symbolic link") << "link.csv" << 0604;
    }
    void writtenTargets()
    {
        QFETCH(QString, target);
        QFETCH(int, mode);
        TestGame game;
        copySample(game);
        const QStringList arguments{"export", game.path("MARCHES.map"), "--format", "csv", "-o"};
        const QByteArray expected = runCli(arguments.mid(0, 4)).out;
        QVERIFY(expected.size() > 10000);
        const QString path = game.path(target);
        if (target == "fifo")
            QVERIFY(::mkfifo(QFile::encodeName(path), 0644) == 0);
        if (mode) {
            game.write("out.csv", "old");
            QVERIFY(::chmod(QFile::encodeName(game.path("out.csv")), mode_t(mode)) == 0);
            if (target == "link.csv")
                QVERIFY(QFile::link("out.csv", path));
        }
        const mode_t kind = modeOf(path, false) & S_IFMT;
        const QStringList before = folderState(game.dir());

        QProcess reader; // of the FIFO, started before the program opens it
        if (target == "fifo")
            reader.start("cat", {path});
        CliStart start;
        start.workingDirectory = game.dir();
        const CliRun run = runCli(arguments + QStringList{target == "-" ? "-" : path}, start);
        reader.waitForFinished(10000);
        QCOMPARE(run.status, 0);
        QCOMPARE(run.err, QString());
        QCOMPARE(modeOf(path, false) & S_IFMT, kind);
        if (mode) {
            QCOMPARE(fileBytes(game.path("out.csv")), expected);
            QCOMPARE(int(modeOf(game.path("out.csv")) & 07777), mode);
        } else {
            QCOMPARE(target == "-" ? run.out : reader.readAllStandardOutput(), expected);
            QCOMPARE(folderState(game.dir()), before);
        }
    }

    // Every output the same under German and Turkish as in C; the lower-case
    // suffixes would not match a Turkish dotless i if names were folded by the locale.
    void locales_data()
    {
        QTest::addColumn<QStringList>("arguments");
        for (const char *words : {"export %1/INDIGO.map --grid", "export %1/INDIGO.map --format csv",
                                  "planet %1/INDIGO.map --at 22.25,729.5 --zoom 0,700,100",
                                  "render %1/INDIGO.map --layers universe,borders,owned,vmk --overlay names --overlay esthab=Vorn -o -",
                                  "render %1/INDIGO.map --layers universe,hab,growth,vmk --overlay avgmc --overlay terra -o %1/x.png --trace -",
                                  "history %1/INDIGO.map@2400 --size 200 -o -"})
            QTest::newRow(words) << QString(words).split(' ');
    }
    void locales()
    {
        QFETCH(QStringList, arguments);
        TestGame game;
        copySample(game, "INDIGO", true);
        arguments.replaceInStrings("%1", game.dir());
        CliStart start;
        start.locale = "C";
        const CliRun plain = runCli(arguments, start);
        QCOMPARE(plain.status, 0);
        QVERIFY(!plain.out.isEmpty());
        for (const char *locale : {"de_DE.UTF-8", "tr_TR.UTF-8"}) {
            start.locale = locale;
            const CliRun run = runCli(arguments, start);
            QCOMPARE(run.status, 0);
            QCOMPARE(run.err, plain.err);
            QVERIFY2(run.out == plain.out, locale);
        }
    }
};

QTEST_GUILESS_MAIN(FileSafetyTest)
#include "tst_filesafety.moc"
