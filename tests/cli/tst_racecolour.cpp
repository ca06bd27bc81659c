// veltro-cli render --race-colour: the colour reaches the drawing, and bad
// values are usage errors with a message that says what is wrong.

#include "CliRun.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

struct Run {
    int status = -1;
    QString err;
    QByteArray trace;
};

Run render(const QStringList &colours)
{
    QTemporaryDir dir;
    QStringList arguments{"render", VELTRO_SAMPLES "/MARCHES.map", "--year", "2431", "--layers", "owned",
                          "-o", dir.filePath("map.png"), "--trace", dir.filePath("trace")};
    for (const QString &c : colours)
        arguments << "--race-colour" << c;
    const CliRun cli = runCli(arguments);
    Run run{cli.status, cli.err, {}};
    QFile trace(dir.filePath("trace"));
    if (trace.open(QIODevice::ReadOnly))
        run.trace = trace.readAll();
    return run;
}

QByteArray fill(int r, int g, int b)
{
    return "\"FillColor\":" + QByteArray::number(r + 256 * g + 65536 * b) + "}";
}

} // namespace

class RaceColourTest : public QObject {
    Q_OBJECT
private slots:
    void coloursTheNamedRaces()
    {
        // The last word on a race wins; 64 + 64 + 64 is just bright enough.
        const Run run = render({"Vorn=#A0B0C0", "Vorn=#40C848", "Morrow Kin=#404040"});
        QCOMPARE(run.err, QString());
        QCOMPARE(run.status, 0);
        QVERIFY(run.trace.contains(fill(64, 200, 72)));
        QVERIFY(run.trace.contains(fill(64, 64, 64)));
        QVERIFY(!run.trace.contains(fill(160, 176, 192)));
    }

    void refusesBadValues_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("message");
        QTest::newRow("names match with case") << "vorn=#FFFFFF" << "--race-colour: no race named \"vorn\" in this game;";
        QTest::newRow("too dark") << "Vorn=#3F4040" << "red + green + blue is 191, at least 192 is needed";
        QTest::newRow("colour name") << "Vorn=red" << "--race-colour takes NAME=#RRGGBB, not \"Vorn=red\"";
        QTest::newRow("short colour") << "Vorn=#FFF" << "takes NAME=#RRGGBB";
        QTest::newRow("no name") << "=#FFFFFF" << "takes NAME=#RRGGBB";
    }

    void refusesBadValues()
    {
        QFETCH(QString, value);
        QFETCH(QString, message);
        const Run run = render({value});
        QCOMPARE(run.status, 2);
        QVERIFY2(run.err.contains(message), qPrintable(run.err));
        QCOMPARE(run.err.count(u'\n'), 1);
        QVERIFY(run.trace.isEmpty());
    }
};

QTEST_GUILESS_MAIN(RaceColourTest)
#include "tst_racecolour.moc"
