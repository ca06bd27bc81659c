// Every input the fuzzers ever crashed on, replayed: each loads or gives a one-line message.

#include "FuzzEntries.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <functional>

namespace {

using Entry = std::function<fuzzentry::Outcome(const QString &, QByteArrayView)>;

const QMap<QString, Entry> entries{{"map", fuzzentry::loadMapFile}, {"report", fuzzentry::loadReportFiles},
                                   {"annotation", fuzzentry::loadAnnotationFile}, {"settings", fuzzentry::loadSettingsFile}};

} // namespace

class RegressionTest : public QObject {
    Q_OBJECT

private slots:
    void replay_data()
    {
        QTest::addColumn<QString>("reader");
        QTest::addColumn<QString>("path");
        for (const QString &reader : entries.keys()) {
            const QDir dir(QStringLiteral(VELTRO_REGRESSION "/") + reader);
            for (const QString &name : dir.entryList(QDir::Files, QDir::Name))
                QTest::addRow("%s/%s", qPrintable(reader), qPrintable(name)) << reader << dir.filePath(name);
        }
        // The corpus is not empty: a wrong folder would pass silently.
        QVERIFY(!QDir(QStringLiteral(VELTRO_REGRESSION "/report")).isEmpty(QDir::Files));
    }
    void replay()
    {
        QFETCH(QString, reader);
        QFETCH(QString, path);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray input = file.readAll();
        QTemporaryDir dir;
        fuzzentry::Outcome outcome;
        try {
            outcome = entries[reader](dir.path() + QStringLiteral("/game"), input);
        } catch (const std::exception &e) {
            QFAIL(qPrintable(QStringLiteral("escaped: ") + QString::fromUtf8(e.what())));
        }
        const auto isControl = [](QChar c) { return c.category() == QChar::Other_Control; };
        QVERIFY2(outcome.loaded || (!outcome.message.isEmpty()
                                    && std::none_of(outcome.message.begin(), outcome.message.end(), isControl)),
                 qPrintable(outcome.message));
    }
};

QTEST_MAIN(RegressionTest)
#include "tst_regression.moc"
