// veltro-cli history: frames in year order keep every race's first colour
// and show what render draws with them; a bad snapshot stops the command.

#include "CliRun.h"
#include "HistoryFrame.h"
#include "TestGame.h"

#include <QDir>
#include <QImageReader>
#include <QRegularExpression>
#include <QTest>

namespace {

using Lines = QList<QByteArray>;

const QList<MapPlanet> map{{"Frontier", 1300, 1300}, {"Home", 1100, 1100}, {"Vornhold", 1500, 1200},
                           {"Krellspire", 1250, 1500}};
constexpr int Pixels = 160;

// Three turns in folders named by the year. The race columns follow the
// planet table: the Vorn, then the Krell, take the first planet and come first.
struct HistoryGame : TestGame {
    HistoryGame()
    {
        writeTurn(2401, {homeLine(), planetLine("Vornhold", "Vorn", "None", "0", "5000")});
        writeTurn(2402, {homeLine(), planetLine("Vornhold", "Vorn", "None", "0", "6000"),
                         planetLine("Frontier", "Vorn", "None", "0", "900")});
        writeTurn(2403, {homeLine(), planetLine("Vornhold", "Vorn", "None", "0", "7000"),
                         planetLine("Frontier", "Krell", "None", "0", "4000")});
    }
    void writeTurn(int year, const Lines &report) const
    {
        QDir(dir()).mkpath(QString::number(year));
        writeMap(map, QString("%1/game.map").arg(year));
        writeReport(QString("%1/game.P1").arg(year), report);
    }
    QString mapOf(int year) const { return path(QString("%1/game.map").arg(year)); }
};

QList<QImage> gifFrames(const QString &path)
{
    QImageReader reader(path);
    QList<QImage> frames;
    for (QImage frame; reader.read(&frame);)
        frames << frame.convertToFormat(QImage::Format_RGB32);
    return frames;
}

QImage rendered(const QString &mapFile, int year, const QStringList &colours = {})
{
    QStringList arguments{"render", mapFile, "--year", QString::number(year), "--layers", "borders,owned",
                          "--size", QString::number(Pixels), "-o", "-"};
    for (const QString &c : colours)
        arguments << "--race-colour" << c;
    const CliRun run = runCli(arguments);
    if (run.status != 0)
        qWarning() << run.err;
    return QImage::fromData(run.out).convertToFormat(QImage::Format_RGB32);
}

// Standard error without the progress counts a run longer than a second prints.
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
    // Given out of order, the frames still go by year. The Krell's red,
    // reserved from the start, pushes the Humans to green and the Vorn to
    // blue, which they keep when the Vorn come first.
    void framesKeepEveryRacesColour()
    {
        HistoryGame game;
        const QString gif = game.path("history.gif");
        const CliRun run = runCli({"history", game.mapOf(2403), game.mapOf(2401), game.mapOf(2402), "--layers",
                                   "borders,owned", "--size", QString::number(Pixels), "--delay", "250", "--frames",
                                   game.path("frames"), "--race-colour", "Krell=#FF0000", "-o", gif});
        QCOMPARE(withoutProgress(run.err), QString());
        QCOMPARE(run.status, 0);

        QImageReader reader(gif);
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

        const QStringList stable{"Humans=#00FF00", "Vorn=#0000FF", "Krell=#FF0000"};
        for (int i = 0; i < 3; ++i) {
            const int year = 2401 + i;
            // The GIF keeps every colour of the frame.
            const QImage png = QImage(game.path(QString("frames/%1.png").arg(year))).convertToFormat(QImage::Format_RGB32);
            QCOMPARE(frames[i], png);
            // The map square is render's picture in the stable colours.
            QCOMPARE(png.copy(0, 0, Pixels, Pixels), rendered(game.mapOf(year), year, stable.mid(0, i == 2 ? 3 : 2)));
        }
        // Without the reserved red the Humans would be red in 2401.
        QVERIFY(frames[0].copy(0, 0, Pixels, Pixels) != rendered(game.mapOf(2401), 2401));
    }

    void badSnapshotStopsTheCommand()
    {
        HistoryGame game;
        // A report age that is no number fails that turn's load.
        game.writeTurn(2402, {homeLine(), planetLine("Vornhold", "Vorn", "None", "Unknown", "6000")});
        const QString gif = game.path("history.gif");
        const CliRun run = runCli({"history", game.mapOf(2401), game.mapOf(2402), game.mapOf(2403), "-o", gif});
        QCOMPARE(run.status, 1);
        QVERIFY2(run.err.startsWith(game.path("2402/game.P1") + ", line 3: Type mismatch") && run.err.count(u'\n') == 1,
                 qPrintable(run.err));
        QCOMPARE(QDir(game.path(".")).entryList({"*.gif*"}, QDir::Files), QStringList());
    }

    void usageErrors_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("message");
        QTest::newRow("no year") << QStringList{"%1/game.map"} << "game.map: no year for this snapshot";
        QTest::newRow("same year twice") << QStringList{"%1/2401/game.map", "%1/2402/game.map@2401"}
                                         << "two snapshots of the year 2401";
        QTest::newRow("not a GIF") << QStringList{"%1/2401/game.map", "-o", "x.png"} << "-o takes an animation file ending in .gif";
        QTest::newRow("unknown race")
            << QStringList{"%1/2401/game.map", "%1/2402/game.map", "%1/2403/game.map", "--race-colour", "Zorg=#FF0000"}
            << "--race-colour: no race named \"Zorg\" in any snapshot; the races are: Humans, Vorn, Krell";
    }
    void usageErrors()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        HistoryGame game;
        arguments.replaceInStrings("%1", game.dir());
        if (!arguments.contains("-o"))
            arguments << "-o" << game.path("h.gif");
        const CliRun run = runCli(QStringList{"history"} + arguments);
        QCOMPARE(run.status, 2);
        QVERIFY2(run.err.contains(message), qPrintable(run.err));
    }
};

QTEST_MAIN(HistoryCommandTest)
#include "tst_history.moc"
