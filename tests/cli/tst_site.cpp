// veltro-cli site as a host runs it every turn: the folder appears and is
// replaced whole; a failed run leaves what was there. The desktop program
// publishes the same folder. (The page itself is tested in tests/web.)

#include "CliOptions.h"
#include "CliRun.h"
#include "TestGame.h"
#include "WebMap.h"

#include <QDir>
#include <QDirIterator>
#include <QTest>

namespace {

const QString Sample = QStringLiteral(VELTRO_SAMPLES "/MARCHES.map");

// Everything in a folder, hidden names included, as sorted relative paths.
QStringList listing(const QString &folder)
{
    QStringList names;
    for (QDirIterator it(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
         it.hasNext();)
        names << QDir(folder).relativeFilePath(it.next());
    names.sort();
    return names;
}

} // namespace

class SiteCommandTest : public QObject {
    Q_OBJECT
private slots:
    void publishesAndReplaces()
    {
        QTemporaryDir out;
        const QString site = out.filePath("map");
        const auto entries = [&](const QString &folder) {
            return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        };
        CliRun run = runCli({"site", Sample + "@2431", "--size", "100", "-o", site});
        QCOMPARE(run.status, 0);
        // Nothing but progress, on a machine slow enough to need it.
        for (const QString &line : run.err.split(u'\n', Qt::SkipEmptyParts))
            QVERIFY2(line.startsWith("site: loaded ") || line.startsWith("site: pictures written "), qPrintable(line));
        QStringList expected{"data", "data/site.js", "index.html", "map.css", "map.js", "years", "years/2431"};
        for (const char *picture : {"attack", "borders", "growth", "hab", "names", "scanned", "territory"})
            expected << QString("years/2431/%1.png").arg(picture) << QString("years/2431/%1@2x.png").arg(picture);
        expected << "years/2431/panels.js" << "years/2431/planets.js";
        expected.sort();
        QCOMPARE(listing(site), expected);
        QCOMPARE(entries(out.path()), QStringList{"map"});
        QCOMPARE(QImage(site + "/years/2431/borders@2x.png").size(), QSize(200, 200));
        QVERIFY(fileBytes(site + "/data/site.js").startsWith("veltroMap.site({"));

        // The next turn's run replaces the map whole: nothing of the old one stays.
        QVERIFY(QFile(site + "/years/2431/stale.png").open(QIODevice::WriteOnly));
        run = runCli({"site", Sample + "@2432", "--size", "100", "-o", site});
        QCOMPARE(run.status, 0);
        QCOMPARE(entries(site + "/years"), QStringList{"2432"});
        QCOMPARE(entries(out.path()), QStringList{"map"});

        // Through a link, the map is replaced where the link points; the link stays.
        QVERIFY(QFile::link(site, out.filePath("link")));
        QCOMPARE(runCli({"site", Sample + "@2433", "--size", "100", "-o", out.filePath("link")}).status, 0);
        QVERIFY(QFileInfo(out.filePath("link")).isSymLink());
        QCOMPARE(entries(site + "/years"), QStringList{"2433"});
        QCOMPARE(entries(out.path()), QStringList({"link", "map"}));
    }

    void refusals_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("message");
        QTest::newRow("folder of other files") << QStringList{Sample + "@2431", "-o", "%1/kept"} << 2
                                                << "the folder holds other files";
        QTest::newRow("a file") << QStringList{Sample + "@2431", "-o", "%1/kept/notes.txt"} << 2
                                << "is a file, not a folder";
        QTest::newRow("no folder") << QStringList{Sample + "@2431"} << 2 << "site takes -o DIR";
        QTest::newRow("--year") << QStringList{Sample + "@2431", "--year", "2431", "-o", "%1/map"} << 2
                                << "--year and --report-year do not apply";
    }
    void refusals()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        TestGame out;
        QVERIFY(QDir(out.dir()).mkpath("kept"));
        out.write("kept/notes.txt", "mine");
        const QStringList before = listing(out.dir());

        const CliRun run = runCli(QStringList{"site"} + arguments.replaceInStrings("%1", out.dir()));
        QTEST(run.status, "status");
        QCOMPARE(run.err.count(u'\n'), 1);
        QVERIFY2(run.err.contains(message), qPrintable(run.err));
        // Nothing written, nothing half-written beside the folder, the user's file as it was.
        QCOMPARE(listing(out.dir()), before);
        QCOMPARE(fileBytes(out.path("kept/notes.txt")), QByteArray("mine"));
    }

    // File > Publish Web Map writes the game as loaded, in the user's race colours.
    void desktopPublishing()
    {
        GameData data;
        GameChoice choice;
        choice.gameYearText = "2431";
        loadGame(Sample, choice, data);
        data.RaceRGB[1] = {1, 2, 250};
        QTemporaryDir out;
        writeWebMapOfGame(data, out.filePath("map"));
        const QByteArray year = fileBytes(out.filePath("map/years/2431/planets.js"));
        QVERIFY(year.startsWith("veltroMap.year({"));
        QVERIFY(year.contains(QString("{\"colour\":\"#0102fa\",\"name\":\"%1\"}")
                                  .arg(data.player(2)[RaceName].text()).toUtf8()));
    }
};

QTEST_MAIN(SiteCommandTest)
#include "tst_site.moc"
