// veltro-cli's command line as QCommandLineParser programs behave: --help
// and --version on stdout with status 0, every usage error one line on
// stderr with status 2.

#include "CliRun.h"

#include <QRegularExpression>
#include <QTest>

namespace {

// Standard output as text: help and version are text.
struct Run {
    int status;
    QString out;
    QString err;
};

Run cli(const QStringList &arguments)
{
    const CliRun run = runCli(arguments);
    return {run.status, QString::fromUtf8(run.out), run.err};
}

} // namespace

class CommandLineTest : public QObject {
    Q_OBJECT

private slots:
    void version()
    {
        const Run run = cli({"--version"});
        QCOMPARE(run.status, 0);
        QVERIFY2(QRegularExpression(R"(^veltro-cli \d+\.\d+\.\d+\n$)").match(run.out).hasMatch(), qPrintable(run.out));
    }

    // Each level's help lists its own options and no other's.
    void help_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QStringList>("listed");
        QTest::addColumn<QString>("notListed");
        QTest::newRow("top level") << QStringList{"--help"} << QStringList{"export", "render", "--version"} << "--own";
        QTest::newRow("export") << QStringList{"export", "--help"}
                                << QStringList{"[options] export MAPFILE", "--own", "--report-year", "--format", "--grid"}
                                << "--layers";
        QTest::newRow("render, after other options") << QStringList{"render", "x.map", "--size", "9", "-h"}
                                                     << QStringList{"[options] render MAPFILE", "--skip", "--layers", "--overlay"}
                                                     << "--format";
    }
    void help()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QStringList, listed);
        QFETCH(QString, notListed);
        const Run run = cli(arguments);
        QCOMPARE(run.status, 0);
        QVERIFY(run.out.startsWith("Usage: "));
        for (const QString &text : listed)
            QVERIFY2(run.out.contains(text), qPrintable(text));
        QVERIFY(!run.out.contains(notListed));
    }

    void usageErrors_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("nothing") << QStringList{};
        QTest::newRow("unknown command") << QStringList{"draw", "x.map"};
        QTest::newRow("option before the command") << QStringList{"--year", "2400", "export", "x.map"};
        QTest::newRow("unknown option") << QStringList{"export", "x.map", "--colour"};
        QTest::newRow("no map file") << QStringList{"render", "-o", "x.png"};
        QTest::newRow("option without its value") << QStringList{"export", "x.map", "--format"};
    }
    void usageErrors()
    {
        QFETCH(QStringList, arguments);
        const Run run = cli(arguments);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.out, QString());
        QCOMPARE(run.err.count(u'\n'), 1);
    }
};

QTEST_GUILESS_MAIN(CommandLineTest)
#include "tst_commandline.moc"
