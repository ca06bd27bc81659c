// Numbers, texts, reads and report lines, and the turns a history reads.

#include "LoadError.h"
#include "QuotedText.h"
#include "ReportFile.h"
#include "Snapshot.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <clocale>
#include <limits>

class ReadersTest : public QObject {
    Q_OBJECT

private slots:
    // Numbers read the same under a locale with a decimal comma.
    void initTestCase() { QVERIFY2(std::setlocale(LC_ALL, "de_DE.UTF-8"), "de_DE.UTF-8: run scripts/install-deps.sh"); }

    // The leading number of a text, and the number it is as a whole ("-": none).
    void numbers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("leading");
        QTest::addColumn<QString>("whole");
        QTest::newRow("word") << "Unknown" << 0.0 << "-";
        QTest::newRow("empty") << "" << 0.0 << "0";
        QTest::newRow("blanks around") << " 3 " << 3.0 << "3";
        QTest::newRow("E exponent") << "1.5e2" << 150.0 << "150";
        QTest::newRow("bare exponent") << "1e" << 1.0 << "-";
        QTest::newRow("point first") << "-.5%" << -0.5 << "-";
        QTest::newRow("beyond the double") << "1e309" << qInf() << "inf";
        QTest::newRow("beyond the double, no exponent") << QString(400, u'9') << qInf() << "inf";
        QTest::newRow("below the double") << "-12e-330" << -0.0 << "0";
    }
    void numbers()
    {
        QFETCH(QString, text);
        QTEST(conv::val(text), "leading");
        const auto whole = conv::wholeNumber(text);
        QTEST(whole ? QString::number(*whole) : QString("-"), "whole");
    }

    // Half to even into 16 and 32 bits, floor, truncation, single precision; beyond its range a value stops the drawing.
    void integers()
    {
        QCOMPARE(QList<int>({conv::toInt16(2.5), conv::toInt16(-2.5), conv::toInt16(32766.5), conv::toInt32(32767.5),
                             conv::floorInt32(-0.5), conv::intDiv(-7, 2)}),
                 QList<int>({2, -2, 32766, 32768, -1, -3}));
        QCOMPARE(conv::toInt32(-2147483648.5), std::numeric_limits<int32_t>::min());
        QCOMPARE(conv::floorInt32(2147483647.5), std::numeric_limits<int32_t>::max());
        QVERIFY_THROWS_EXCEPTION(conv::OverflowError, conv::toInt16(32767.5));
        QVERIFY_THROWS_EXCEPTION(conv::OverflowError, conv::toInt32(2147483647.5));
        QVERIFY_THROWS_EXCEPTION(conv::OverflowError, conv::floorInt32(2147483648.0));
        QVERIFY_THROWS_EXCEPTION(conv::OverflowError, conv::floorInt32(-2147483648.5));
        QVERIFY_THROWS_EXCEPTION(conv::DivisionByZeroError, conv::intDiv(1, 0));
        QCOMPARE(QList<float>({conv::toSingle(0.1), conv::toSingle(-3.4e38)}), QList<float>({0.1f, -3.4e38f}));
        QVERIFY_THROWS_EXCEPTION(conv::OverflowError, conv::toSingle(3.5e38));
    }

    // The game's text of a number and the exports': whole numbers with all their digits.
    void numberTexts_data()
    {
        QTest::addColumn<double>("x");
        QTest::addColumn<QString>("game");
        QTest::addColumn<QString>("shortest");
        QTest::newRow("whole, beyond 2^53") << 123456789012345678.0 << "123456789012345680" << "123456789012345680";
        QTest::newRow("small") << 2.5e-5 << "2.5E-05" << "2.5e-05";
        QTest::newRow("15 digits") << 0.1 + 0.2 << "0.3" << "0.30000000000000004";
    }
    void numberTexts()
    {
        QFETCH(double, x);
        QTEST(conv::numberText(x), "game");
        QTEST(conv::shortestText(x), "shortest");
    }

    // Fields as "E" (empty), "T:text" or "N:number"; "!" when the line has too many.
    void splitLine_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QStringList>("fields");
        QTest::newRow("percent gains nine zeros, the last not taken")
            << "Mars\tHumans\t50%" << QStringList{"T:Mars", "T:Humans", "T:50%"} + QStringList(8, "T:0") + QStringList{"E"};
        const QStringList empty{"T:Unknown", "T:", "T:None", "T:Unknown", "T:Uninhabited"};
        QTest::newRow("empty fields") << "\t\t\t\t\t\t" << empty + QStringList{"T:Unknown", "E"};
        QTest::newRow("37 tabs, above 30 the number 0")
            << QString(37, u'\t') << empty + QStringList(25, "T:Unknown") + QStringList(7, "N:0");
        QTest::newRow("38 tabs") << QString(38, u'\t') << QStringList{"!"};
    }
    void splitLine()
    {
        QFETCH(QString, line);
        QFETCH(QStringList, fields);
        QStringList got;
        try {
            const ReportFields f = splitReportLine(line);
            for (int n = 1; n <= fields.size(); ++n)
                got << (f[n].isEmpty() ? "E" : (f[n].isText() ? "T:" : "N:") + f[n].text());
        } catch (const TooManyFieldsError &) {
            got << "!";
        }
        QCOMPARE(got, fields);
    }

    // Item ('t'), line ('l') or number ('n') reads to the end; "!" stands for a load error.
    void reads_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<char>("how");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("quoted across lines") << QByteArray("\"x,\r\ny\" junk, next\n\"open") << 't'
                                             << QStringList{"x,\r\ny", "next", "open"};
        QTest::newRow("line ends, lines") << QByteArray("a,\tb\rc\n\r\nd\r") << 'l' << QStringList{"a,\tb", "c", "", "d"};
        QTest::newRow("numbers") << QByteArray("1 2,,3\t-4.5\r\n1d2") << 'n' << QStringList{"1", "2", "0", "3", "-4.5", "100"};
        QTest::newRow("not a number") << QByteArray("12%") << 'n' << QStringList{"!"};
        QTest::newRow("Windows-1252") << QByteArray("\x80\xB0\x81\x9F\xE9") << 'l' << QStringList{"€°\u0081Ÿé"};
    }
    void reads()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(char, how);
        TextReader reader(bytes, "test");
        QStringList got;
        try {
            while (!reader.atEnd())
                got << (how == 't' ? reader.readTextItem()
                        : how == 'l' ? reader.readLine() : QString::number(reader.readNumberItem()));
        } catch (const LoadError &) {
            got << "!";
        }
        QTEST(got, "expected");
        QVERIFY_THROWS_EXCEPTION(LoadError, reader.readLine());
    }

    void writesWindows1252()
    {
        QCOMPARE(encodeWindows1252(QString::fromUtf16(u"a\u20AC\u0178\u00A0\u00FF\u0100\u009F")), QByteArray("a\x80\x9F\xA0\xFF??"));
    }

    // Values from a file inside a message: escaped, cut, quoted.
    void quoting_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("C0 controls") << QString::fromUtf16(u"a\0b\f\x1b[2J\x7f\x01", 10)
                                     << "\"a\\x00b\\f\\e[2J\\x7F\\x01\"";
        QTest::newRow("C1, separators, bidi") << QString::fromUtf16(u"\u0085x\u2028\u202e\u00ad")
                                              << "\"\\u0085x\\u2028\\u202E\\u00AD\"";
        QTest::newRow("40 characters stay whole") << QString(40, u'x') << '"' + QString(40, u'x') + '"';
        QTest::newRow("41 are cut") << QString(41, u'x') << '"' + QString(40, u'x') + QString::fromUtf16(u"\u2026\"");
        QTest::newRow("cut never splits a pair") << QString(39, u'x') + QString::fromUtf16(u"\U0001F600")
                                                 << '"' + QString(39, u'x') + QString::fromUtf16(u"\u2026\"");
    }
    void quoting()
    {
        QFETCH(QString, text);
        QTEST(quoted(text), "expected");
    }

    // "year map file", or "!" for the message that the argument has no year.
    void yearOfAnArgument_data()
    {
        QTest::addColumn<QString>("argument");
        QTest::addColumn<QString>("expected");
        QTest::newRow("folder") << "backups/2431/GAME.map" << "2431 backups/2431/GAME.map";
        QTest::newRow("written wins") << "backups/2431/GAME.map@2440" << "2440 backups/2431/GAME.map";
        QTest::newRow("file name") << "games/GAME-2410.map" << "2410 games/GAME-2410.map";
        QTest::newRow("largest year") << "g/32767/G.map" << "32767 g/32767/G.map";
        QTest::newRow("past 16 bits") << "GAME.map@32768" << "!";
    }
    void yearOfAnArgument()
    {
        QFETCH(QString, argument);
        QString got;
        try {
            const Snapshot s = snapshotFromArgument(argument);
            got = QString::number(s.year) + ' ' + s.mapFile;
        } catch (const SnapshotError &e) {
            got = e.message.startsWith(argument + ": no year") ? "!" : e.message;
        }
        QTEST(got, "expected");
    }

    // A folder's turns as "year path"; "!" and part of the message when it is refused.
    void turnsOfAFolder_data()
    {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QString>("expected");
        // A year without its map and a folder not named by a year are no turns; with turn folders,
        // maps named by the year are not read.
        QTest::newRow("turn folders in year order")
            << QStringList{"2410/GAME.map", "2402/GAME.map", "999/GAME.map", "2409/GAME.P1", "notes/GAME.map", "GAME-2300.map"}
            << "999 999/GAME.map, 2402 2402/GAME.map, 2410 2410/GAME.map";
        QTest::newRow("two maps in one turn") << QStringList{"2401/A.map", "2401/B.map"} << "!2 map files";
    }
    void turnsOfAFolder()
    {
        QFETCH(QStringList, files);
        QFETCH(QString, expected);
        QTemporaryDir dir;
        for (const QString &file : files) {
            QFile f(dir.filePath(file));
            QVERIFY(QDir(dir.path()).mkpath(QFileInfo(file).path()) && f.open(QIODevice::WriteOnly));
        }
        QStringList got;
        try {
            for (const Snapshot &s : snapshotsInFolder(dir.path()))
                got << QString::number(s.year) + ' ' + QDir(dir.path()).relativeFilePath(s.mapFile);
        } catch (const SnapshotError &e) {
            got << '!' + e.message;
        }
        QVERIFY2(expected.startsWith('!') ? got.join("").startsWith('!') && got.join("").contains(expected.mid(1))
                                          : got.join(", ") == expected, qPrintable(got.join(", ")));
    }

    void oneSnapshotPerYear()
    {
        QList<Snapshot> snapshots{{"b/2402/G.map", 2402}, {"a/G.map", 2401}, {"c/G.map", 2402}};
        try {
            sortByYear(snapshots);
            QFAIL("two snapshots of 2402");
        } catch (const SnapshotError &e) {
            QCOMPARE(e.message, QString("two snapshots of the year 2402: b/2402/G.map and c/G.map"));
        }
    }
};

QTEST_GUILESS_MAIN(ReadersTest)
#include "tst_readers.moc"
