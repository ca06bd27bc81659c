// veltro-cli history on a generated sixteen-race game on the huge map: the
// animations against the PNG frames, memory, a picture too large refused.

#include "CliRun.h"
#include "GameGenerator.h"
#include "PictureChecks.h"

#include <QDir>
#include <QImageReader>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <webp/demux.h>

namespace {

constexpr int Turns = 20;
constexpr int LastYear = 2440;

struct Decoded {
    QList<QImage> frames; // as a viewer shows them
    QList<int> delays;    // milliseconds
    bool loopsForEver = false;
};

Decoded decodeGif(const QString &path)
{
    QImageReader reader(path);
    Decoded d;
    d.loopsForEver = reader.loopCount() == -1;
    for (QImage frame; reader.read(&frame);) {
        d.frames << frame.convertToFormat(QImage::Format_RGB32);
        d.delays << reader.nextImageDelay();
    }
    return d;
}

// libwebp's animation decoder: whole frames, with their end times.
Decoded decodeWebp(const QString &path)
{
    const QByteArray bytes = fileBytes(path);
    const WebPData data{reinterpret_cast<const uint8_t *>(bytes.constData()), size_t(bytes.size())};
    WebPAnimDecoderOptions options;
    WebPAnimDecoderOptionsInit(&options);
    options.color_mode = MODE_BGRA;
    WebPAnimDecoder *decoder = WebPAnimDecoderNew(&data, &options);
    WebPAnimInfo info;
    if (!decoder || !WebPAnimDecoderGetInfo(decoder, &info))
        return {};
    Decoded d;
    d.loopsForEver = info.loop_count == 0;
    int shownUntil = 0;
    while (WebPAnimDecoderHasMoreFrames(decoder)) {
        uint8_t *pixels = nullptr;
        int end = 0;
        WebPAnimDecoderGetNext(decoder, &pixels, &end);
        const QImage frame(pixels, int(info.canvas_width), int(info.canvas_height), int(info.canvas_width) * 4,
                           QImage::Format_ARGB32);
        d.frames << frame.convertToFormat(QImage::Format_RGB32);
        d.delays << end - shownUntil;
        shownUntil = end;
    }
    WebPAnimDecoderDelete(decoder);
    return d;
}

CliRun runVia(const QString &prefix, const QStringList &arguments, const QByteArray &asanOptions = {})
{
    CliStart start;
    start.shellPrefix = prefix;
    start.asanOptions = asanOptions;
    start.timeoutMs = -1;
    return runCli(arguments, start);
}

} // namespace

class HistoryFramesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        gamegen::GameOptions options;
        options.mapPath = VELTRO_TEST_MAPS "/huge-packed-00001.map";
        options.outDir = m_dir.path();
        options.players = 16;
        options.gameYear = LastYear;
        for (const gamegen::GeneratedGame &turn : gamegen::generateHistory(options, Turns))
            m_turns << turn.mapFile;
    }

    // The territory grid shades each race's colour by strength: some 1600
    // colours a frame, which a GIF must reduce to 255.
    void animationsHoldThePngFrames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("tolerance");
        QTest::newRow("GIF") << "history.gif" << 12;
        QTest::newRow("WebP") << "history.webp" << 0;
    }
    void animationsHoldThePngFrames()
    {
        QFETCH(QString, name);
        QFETCH(int, tolerance);
        const QString out = m_dir.filePath(name), frames = m_dir.filePath("frames-" + name);
        const CliRun run = runCli(QStringList{"history"} + m_turns.mid(0, 3)
                                  + QStringList{"--layers", "territory,universe,owned", "--size", "360", "--delay",
                                                "300", "--frames", frames, "-o", out});
        QCOMPARE(run.status, 0);
        const Decoded decoded = name.endsWith(".gif") ? decodeGif(out) : decodeWebp(out);
        QVERIFY(decoded.loopsForEver);
        QCOMPARE(decoded.delays, QList<int>({300, 300, 300}));
        for (int i = 0; i < 3; ++i) {
            const QImage png = QImage(QDir(frames).filePath(QString("%1.png").arg(LastYear - Turns + 1 + i)))
                                   .convertToFormat(QImage::Format_RGB32);
            QCOMPARE(decoded.frames[i].size(), png.size());
            const int worst = worstChannelError(decoded.frames[i], png);
            QVERIFY2(worst <= tolerance, qPrintable(QString("frame %1: %2 levels off").arg(i).arg(worst)));
            // The common colours, black and the race colours, come back exactly.
            qsizetype exact = 0;
            for (int y = 0; y < png.height(); ++y)
                for (int x = 0; x < png.width(); ++x)
                    exact += decoded.frames[i].pixel(x, y) == png.pixel(x, y);
            QVERIFY2(exact * 4 > qsizetype(png.width()) * png.height() * 3, qPrintable(QString("%1 exact").arg(exact)));
        }
    }

    // Frames are drawn a few ahead, each turn loaded again to be drawn; held
    // turns or frames would take some 3 MB each, compressed WebP frames 300 KB.
    void memoryDoesNotGrowWithTheTurns()
    {
        auto peakKb = [&](int turns) {
            // GNU time's %M: peak resident KB. The sanitizer's quarantine would hold freed frames.
            const CliRun run = runVia("exec /usr/bin/time -f %M", QStringList{"history"} + m_turns.mid(0, turns)
                                                                      + QStringList{"-o", m_dir.filePath("peak.webp")},
                                      "quarantine_size_mb=0");
            const QStringList lines = run.err.trimmed().split('\n');
            return run.status == 0 ? lines.last().toLongLong() : -1;
        };
        const qint64 few = peakKb(4), many = peakKb(Turns);
        QVERIFY(few > 0);
        QVERIFY2(many - few < 16 * 1024, qPrintable(QString("%1 KB for 4 turns, %2 KB for %3").arg(few).arg(many).arg(Turns)));
    }

    // Under a limit of 1 GB, a 20000-pixel square (1.6 GB) cannot be had.
    void pictureTooLargeForTheMemory_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("history") << QStringList{"history", "%1", "--size", "20000", "-o", "%2/big.gif"};
        QTest::newRow("render") << QStringList{"render", "%1", "--year", "2421", "--size", "20000", "-o", "%2/big.png"};
    }
    void pictureTooLargeForTheMemory()
    {
        QFETCH(QStringList, arguments);
        arguments.replaceInStrings("%1", m_turns.first()).replaceInStrings("%2", m_dir.path());
#if defined(__SANITIZE_ADDRESS__)
        // The sanitizer reserves terabytes of address space: its own limit stands in for ulimit.
        CliRun run = runVia("exec", arguments, "allocator_may_return_null=1:max_allocation_size_mb=1000");
        // Its own warning about the refused allocation comes first.
        run.err.remove(QRegularExpression("^==\\d+==WARNING: AddressSanitizer failed to allocate[^\n]*\n"));
#else
        const CliRun run = runVia("ulimit -v 1000000; exec", arguments);
#endif
        QCOMPARE(run.err, QString("not enough memory for a 20000 x 20000 picture\n"));
        QCOMPARE(run.status, 1);
    }

private:
    QTemporaryDir m_dir;
    QStringList m_turns;
};

QTEST_GUILESS_MAIN(HistoryFramesTest)
#include "tst_historyframes.moc"
