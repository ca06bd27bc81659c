#include "FuzzEntries.h"

#include "AnnotationFile.h"
#include "Canvas.h"
#include "FileSelection.h"
#include "LoadError.h"
#include "layers/MapLayers.h"
#include "RasterSurface.h"
#include "StarsSettings.h"
#include "SettingsFile.h"
#include "UniverseGenerator.h"

#include <QDir>
#include <QFile>
#include <stdexcept>

namespace fuzzentry {

namespace {

// An own report that names planets of each of the real maps, owned and
// with starbases, so that a fuzzed map still feeds the influence sources
// and the territory grid.
constexpr char OwnReport[] =
    "Planet Name\tOwner\tStarbase\tReport Age\tPopulation\tValue\tDetails\tMines\tFactories\tDef Coverage\r\n"
    "All Work\tHalcyons\tSpace Station\t0\t1237700\t100%\tFull\t390\t556\t86.74%\t3348\t676\t3546\t81\t7\t70"
    "\t21\t2\t18\t1793\t1.49g\t132\xB0" "C\t75mR\t1.49g\t132\xB0" "C\t75mR\t100\t123\t200\t85\t0\t0\t0\t250\t0\t0\t0\t\r\n"
    "Dill Weed\tVorn\tOrbital Fort\t12\t132000\t-45%\r\n"
    "LGM 4\tVorn\t\t0\t0\t-45%\t\t\t\t\t\t\t\t-1\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t-1\t\r\n"
    "Hell\tHalcyons\tDeath Star\t0\t0\t5%\tFull\t1\t2\t50%\t1\t2\t3\t-1\t-1\t-1\t4\t5\t6\t7\t\r\n"
    "Garp\tAshari\tNone\t3\t2000000\t12%\r\n"
    "Mandelbrot\tMorrow Kin\tSpace Dock\t1\t500000\t-3%\tFull\t\t\t\t\t\t\t\t\t\t\t\t\t\t\r\n"
    "Red Giant\tTessellates\tUltra Station\t0\t1000000\t50%\tFull\t1\t1\t1\t1\t1\t1\t1\t1\t1\t1\t1\t1\t99\t\r\n"
    "Canterbury\tTessellates\tBulwark\t7\t65000\t26%\r\n";

// An empty folder at `dir` for this run's files.
void clear(const QString &dir)
{
    QDir(dir).removeRecursively();
    QDir().mkpath(dir);
}

void write(const QString &path, QByteArrayView bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes.data(), bytes.size()) != bytes.size())
        throw std::runtime_error("the fuzz folder cannot be written: " + path.toStdString());
}

// Confirms the selection and generates, as the window's "Load && Generate Data" does.
Outcome generate(FileSelection &selection, GameData &data)
{
    const QString message = selection.confirm();
    if (!message.isEmpty())
        return {false, message};
    try {
        GenerationObserver silent;
        generateUniverse(data, silent);
    } catch (const LoadError &e) {
        return {false, e.message()};
    }
    return {true, QString()};
}

QList<QByteArrayView> split(QByteArrayView bytes, QByteArrayView separator)
{
    QList<QByteArrayView> parts;
    for (;;) {
        const qsizetype at = bytes.indexOf(separator);
        if (at < 0)
            break;
        parts << bytes.first(at);
        bytes = bytes.sliced(at + separator.size());
    }
    parts << bytes;
    return parts;
}

// The choices a user makes in the selection window, from the input's first
// line: "old" (old-style report), "upper" (upper-case report names),
// "ownN", "yearY", "rN=Y" (report N's year), "skipN".
struct Choices {
    bool oldStyle = false;
    bool upperCase = false;
    QList<QByteArrayView> tokens;
};

Choices parseChoices(QByteArrayView line)
{
    Choices c;
    for (QByteArrayView token : split(line, " ")) {
        if (token == "old")
            c.oldStyle = true;
        else if (token == "upper")
            c.upperCase = true;
        else if (!token.isEmpty())
            c.tokens << token;
    }
    return c;
}

int playerNumber(QByteArrayView text, int lowest)
{
    bool ok = false;
    const int n = text.toInt(&ok);
    return ok && n >= lowest && n <= MaxPlayers ? n : -1;
}

void applyChoices(const Choices &c, FileSelection &selection)
{
    for (QByteArrayView t : c.tokens) {
        if (t.startsWith("own")) {
            if (const int n = playerNumber(t.sliced(3), 1); n > 0)
                selection.chooseOwnRace(n);
        } else if (t.startsWith("year")) {
            selection.gameYearText = QString::fromLatin1(t.sliced(4));
        } else if (t.startsWith("skip")) {
            if (const int n = playerNumber(t.sliced(4), 0); n >= 0)
                selection.setIncluded(n, false);
        } else if (t.startsWith("r") && t.contains('=')) {
            const qsizetype eq = t.indexOf('=');
            if (const int n = playerNumber(t.sliced(1, eq - 1), 1); n > 0)
                selection.row(n).yearText = QString::fromLatin1(t.sliced(eq + 1));
        }
    }
}

} // namespace

Outcome loadMapFile(const QString &dir, QByteArrayView input)
{
    clear(dir);
    write(dir + QStringLiteral("/game.map"), input);
    write(dir + QStringLiteral("/game.P1"), OwnReport);
    GameData data;
    FileSelection selection(data);
    const QString message = selection.clickMapFile(dir, QStringLiteral("game.map"));
    if (!message.isEmpty())
        return {false, message};
    return generate(selection, data);
}

// Layout: the choices line; then the map; then, for per-player games, the
// reports game.P1, game.P2, ... in order, and for "old" games game.PLA and
// optionally a game.P1 beside it. A part that is just "-" writes no file.
Outcome loadReportFiles(const QString &dir, QByteArrayView input)
{
    clear(dir);
    const qsizetype lineEnd = input.indexOf('\n');
    const Choices choices = parseChoices(lineEnd < 0 ? input : input.first(lineEnd));
    const QList<QByteArrayView> parts = split(lineEnd < 0 ? QByteArrayView() : input.sliced(lineEnd + 1),
                                              ReportSeparator);
    write(dir + QStringLiteral("/game.map"), parts[0]);
    for (qsizetype i = 1; i < parts.size() && i <= MaxPlayers; ++i) {
        if (parts[i] == "-")
            continue;
        QString name = choices.oldStyle && i == 1 ? QStringLiteral("game.PLA")
                                                  : QStringLiteral("game.P%1").arg(choices.oldStyle ? i - 1 : i);
        if (choices.upperCase)
            name = name.toUpper();
        write(dir + u'/' + name, parts[i]);
    }
    GameData data;
    FileSelection selection(data);
    const QString message = selection.clickMapFile(dir, QStringLiteral("game.map"));
    if (!message.isEmpty())
        return {false, message};
    applyChoices(choices, selection);
    return generate(selection, data);
}

Outcome loadAnnotationFile(const QString &dir, QByteArrayView input)
{
    clear(dir);
    GameData data;
    data.AnnotationFilePath = dir + QStringLiteral("/game.VMK");
    write(data.AnnotationFilePath, input);
    data.UniverseExtent = 3000;
    data.setFullView();
    try {
        data.AnnotationText = loadAnnotations(data.AnnotationFilePath).text;
    } catch (const LoadError &e) {
        return {false, e.message()};
    }
    // The redraw ends at the first record it cannot draw and reports it.
    Canvas canvas;
    canvas.addSurface(std::make_shared<RasterSurface>(64));
    RedrawHost host;
    try {
        replayAnnotations(data, canvas, host);
    } catch (const LoadError &e) {
        return {false, e.message()};
    } catch (const std::out_of_range &e) {
        return {false, QString::fromUtf8(e.what())};
    }
    return {true, QString()};
}

Outcome loadSettingsFile(const QString &dir, QByteArrayView input)
{
    clear(dir);
    const QString prefix = dir + QStringLiteral("/wine");
    QDir().mkpath(prefix + QStringLiteral("/drive_c/windows"));
    QDir().mkpath(prefix + QStringLiteral("/drive_c/Games/Stars"));
    write(prefix + QStringLiteral("/drive_c/windows/STARS.INI"), input);
    const QString ini = findStarsIni(prefix);
    windowsPathInPrefix(prefix, readStarsInstallDir(ini));
    return {true, QString()};
}

} // namespace fuzzentry
