// veltro-cli history on a three-turn game in folders named by the year:
// the races come in another order each turn and the Krell are first seen in
// the third. Frames come in year order, keep every race's first colour, and
// their map squares are what render draws with those colours; a snapshot
// that cannot be loaded stops the command and leaves no animation.

#include "CliRun.h"
#include "HistoryFrame.h"
#include "TestGame.h"

#include <QDir>
#include <QImageReader>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace {

using Lines = QList<QByteArray>;

const QList<MapPlanet> map{{"Frontier", 1300, 1300}, {"Home", 1100, 1100}, {"Vornhold", 1500, 1200},
                           {"Krellspire", 1250, 1500}};
constexpr int Pixels = 160;

class HistoryGame {
public:
    // Writes one turn: its map and report 1 in the folder named by the year.
    void writeTurn(int year, const Lines &report) const
    {
        const QDir turn(m_dir.filePath(QString::number(year)));
        QDir().mkpath(turn.path());
        QByteArray mapBytes = "#\tX\tY\tName\r\n";
        for (int i = 0; i < map.size(); ++i)
            mapBytes += QString("%1\t%2\t%3\t%4\r\n").arg(i + 1).arg(map[i].x).arg(map[i].y).arg(map[i].name).toLatin1();
        write(turn.filePath("game.map"), mapBytes);
        QByteArray reportBytes = "Planet Name\tOwner\tStarbase\tReport Age\tPopulation\r\n";
        for (const QByteArray &line : report)
            reportBytes += line + "\r\n";
        write(turn.filePath("game.P1"), reportBytes);
    }
    QString mapOf(int year) const { return m_dir.filePath(QString("%1/game.map").arg(year)); }
    QString path(const QString &name) const { return m_dir.filePath(name); }

    // The race columns follow the planet table: when the Vorn take the
    // Frontier, the first planet, they come before the Humans; when the
    // Krell take it from them, the Krell come first.
    void writeThreeTurns() const
    {
        writeTurn(2401, {homeLine(), planetLine("Vornhold", "Vorn", "None", "0", "5000")});
        writeTurn(2402, {homeLine(), planetLine("Vornhold", "Vorn", "None", "0", "6000"),
                         planetLine("Frontier", "Vorn", "None", "0", "900")});
        writeTurn(2403, {homeLine(), planetLine("Vornhold", "Vorn", "None", "0", "7000"),
                         planetLine("Frontier", "Krell", "None", "0", "4000")});
    }

private:
    static void write(const QString &path, const QByteArray &bytes)
    {
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(path));
    }
    QTemporaryDir m_dir;
};

QList<QImage> gifFrames(const QString &path)
{
    QImageReader reader(path);
    QList<QImage> frames;
    for (QImage frame; reader.read(&frame);)
        frames << frame.convertToFormat(QImage::Format_RGB32);
    return frames;
}

QImage rendered(const QString &mapFile, int year, const QStringList &colours, const QString &out)
{
    QStringList arguments{"render", mapFile, "--year", QString::number(year), "--layers", "borders,owned",
                          "--size", QString::number(Pixels), "-o", out};
    for (const QString &c : colours)
        arguments << "--race-colour" << c;
    const CliRun run = runCli(arguments);
    if (run.status != 0)
        qWarning() << run.err;
    return QImage(out).convertToFormat(QImage::Format_RGB32);
}

// Standard error without the progress counts, which a run longer than a
// second prints however it goes: a slow machine must not change the verdict.
QString withoutProgress(const QString &err)
{
    static const QRegularExpression count(QStringLiteral("^history: [a-z ]+ \\d+ of \\d+\n"),
                                          QRegularExpression::MultilineOption);
    return QString(err).remove(count);
}

} // namespace

class HistoryCommandTest : public QObject {
    Q_OBJECT
private slots:
    void framesKeepEveryRacesColour()
    {
        HistoryGame game;
        game.writeThreeTurns();
        const QString gif = game.path("history.gif");
        // Given out of order: the frames still go by year.
        const CliRun run = runCli({"history", game.mapOf(2403), game.mapOf(2401), game.mapOf(2402), "--layers",
                                   "borders,owned", "--size", QString::number(Pixels), "--delay", "250", "--frames",
                                   game.path("frames"), "-o", gif});
        QCOMPARE(withoutProgress(run.err), QString());
        QCOMPARE(run.status, 0);

        QImageReader reader(gif);
        QCOMPARE(reader.imageCount(), 3);
        QCOMPARE(reader.loopCount(), -1);
        QVERIFY(!reader.read().isNull());
        QCOMPARE(reader.nextImageDelay(), 250);
        const QList<QImage> frames = gifFrames(gif);
        QCOMPARE(frames.size(), 3);
        // Short names take the legend's least width: margins, swatch, gap
        // and 80 pixels of name; a grey rule parts it from the map.
        QCOMPARE(frames[0].size(), QSize(Pixels + 12 + 12 + 8 + 80 + 12, Pixels));
        QCOMPARE(frames[0].pixel(Pixels, Pixels / 2), qRgb(96, 96, 96));
        QVERIFY(HistoryFrameLayout(Pixels, {"The Very Long Named Empire"}, 1).size().width() > frames[0].width());
        QVERIFY(HistoryFrameLayout(100, {"Humans"}, 16).size().height() > 100); // room for sixteen names

        const QStringList stable{"Humans=#FF0000", "Vorn=#00FF00", "Krell=#0000FF"};
        for (int i = 0; i < 3; ++i) {
            const int year = 2401 + i;
            // The GIF keeps every colour of the frame.
            const QImage png = QImage(game.path(QString("frames/%1.png").arg(year))).convertToFormat(QImage::Format_RGB32);
            QCOMPARE(frames[i], png);
            QVERIFY(png.width() > Pixels);
            // The map square is render's picture in the stable colours.
            const QImage map = rendered(game.mapOf(year), year, i == 2 ? stable : stable.mid(0, 2),
                                        game.path(QString("render%1.png").arg(year)));
            QCOMPARE(png.copy(0, 0, Pixels, Pixels), map);
        }
        // Without them the Vorn would be red in 2402, the Krell in 2403.
        QVERIFY(frames[1].copy(0, 0, Pixels, Pixels) != rendered(game.mapOf(2402), 2402, {}, game.path("plain2.png")));
        const QImage plain = rendered(game.mapOf(2403), 2403, {}, game.path("plain.png"));
        QVERIFY(frames[2].copy(0, 0, Pixels, Pixels) != plain);
    }

    void chosenColourAndUnknownRace()
    {
        HistoryGame game;
        game.writeThreeTurns();
        const QString gif = game.path("history.gif");
        const QStringList snapshots{game.mapOf(2401), game.mapOf(2402), game.mapOf(2403)};
        CliRun run = runCli(QStringList{"history"} + snapshots
                            + QStringList{"--layers", "borders,owned", "--size", QString::number(Pixels),
                                          "--race-colour", "Krell=#FF0000", "-o", gif});
        QCOMPARE(run.status, 0);
        // The Krell's red, reserved from the start, pushes the Humans to the
        // first free colour, green, and so the Vorn to blue.
        const QImage last = gifFrames(gif).last();
        QCOMPARE(last.copy(0, 0, Pixels, Pixels),
                 rendered(game.mapOf(2403), 2403, {"Humans=#00FF00", "Vorn=#0000FF", "Krell=#FF0000"},
                          game.path("chosen.png")));

        run = runCli(QStringList{"history"} + snapshots + QStringList{"--race-colour", "Zorg=#FF0000", "-o", gif});
        QCOMPARE(run.status, 2);
        QVERIFY2(run.err.startsWith("--race-colour: no race named \"Zorg\" in any snapshot; the races are: Humans, Vorn, Krell"),
                 qPrintable(run.err));
    }

    void badSnapshotStopsTheCommand()
    {
        HistoryGame game;
        game.writeThreeTurns();
        // A report age that is no number fails that turn's load.
        game.writeTurn(2402, {homeLine(), planetLine("Vornhold", "Vorn", "None", "Unknown", "6000")});
        const QString gif = game.path("history.gif");
        const CliRun run = runCli({"history", game.mapOf(2401), game.mapOf(2402), game.mapOf(2403), "-o", gif});
        QCOMPARE(run.status, 1);
        QCOMPARE(run.err.count(u'\n'), 1);
        QVERIFY2(run.err.startsWith(game.path("2402/game.P1") + ", line 3: "), qPrintable(run.err));
        QVERIFY2(run.err.contains("Type mismatch"), qPrintable(run.err));
        QVERIFY(!QFileInfo::exists(gif));
        QCOMPARE(QDir(game.path(".")).entryList({"*.gif*"}, QDir::Files), QStringList());
    }

    void usageErrors_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("message");
        QTest::newRow("no year") << QStringList{"%1/game.map"} << "game.map: no year for this snapshot";
        QTest::newRow("same year twice") << QStringList{"%1/2401/game.map", "%1/2402/game.map@2401"}
                                         << "two snapshots of the year 2401";
        QTest::newRow("--year") << QStringList{"%1/2401/game.map", "--year", "2401"} << "--year and --report-year do not apply";
        QTest::newRow("not a GIF") << QStringList{"%1/2401/game.map", "-o", "x.png"} << "-o takes an animation file ending in .gif";
        QTest::newRow("no snapshot") << QStringList{"-o", "x.gif"} << "history takes one or more SNAPSHOT";
    }
    void usageErrors()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        HistoryGame game;
        game.writeThreeTurns();
        for (QString &a : arguments)
            a.replace("%1", game.path("."));
        if (!arguments.contains("-o"))
            arguments << "-o" << game.path("h.gif");
        const CliRun run = runCli(QStringList{"history"} + arguments);
        QCOMPARE(run.status, 2);
        QVERIFY2(run.err.contains(message), qPrintable(run.err));
    }
};

QTEST_MAIN(HistoryCommandTest)
#include "tst_history.moc"
