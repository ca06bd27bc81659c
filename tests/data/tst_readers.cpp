// Number rules, item and line reads, report line splitting.

#include "LoadError.h"
#include "ReportFile.h"

#include <QTest>
#include <clocale>
#include <limits>

class ReadersTest : public QObject {
    Q_OBJECT

private slots:
    // The game's files are the same whatever the user's language: numbers
    // must read the same under a locale with a decimal comma.
    void initTestCase() { std::setlocale(LC_ALL, "de_DE.UTF-8"); }

    // The leading number of a text, and the number it is as a whole ("-": none).
    void numbers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("leading");
        QTest::addColumn<QString>("whole");
        QTest::newRow("percent") << "12%" << 12.0 << "-";
        QTest::newRow("word") << "Unknown" << 0.0 << "-";
        QTest::newRow("empty") << "" << 0.0 << "0";
        QTest::newRow("blanks around") << " 3 " << 3.0 << "3";
        QTest::newRow("E exponent") << "1.5e2" << 150.0 << "150";
        QTest::newRow("D exponent") << "1d2" << 100.0 << "100";
        QTest::newRow("bare exponent") << "1e" << 1.0 << "-";
        QTest::newRow("point first") << "-.5%" << -0.5 << "-";
    }
    void numbers()
    {
        QFETCH(QString, text);
        QTEST(conv::val(text), "leading");
        const auto whole = conv::wholeNumber(text);
        QTEST(whole ? QString::number(*whole) : QString("-"), "whole");
    }

    // Half to even into 16 and 32 bits, overflow, floor, truncation.
    void integers()
    {
        QCOMPARE(conv::toInt16(2.5), 2);
        QCOMPARE(conv::toInt16(-2.5), -2);
        QCOMPARE(conv::toInt16(32766.5), 32766);
        QVERIFY_THROWS_EXCEPTION(conv::OverflowError, conv::toInt16(32767.5));
        QCOMPARE(conv::toInt32(32767.5), 32768);
        QCOMPARE(conv::toInt32(-2147483648.5), std::numeric_limits<int32_t>::min());
        QVERIFY_THROWS_EXCEPTION(conv::OverflowError, conv::toInt32(2147483647.5));
        QCOMPARE(conv::floorInt32(-0.5), -1);
        QCOMPARE(conv::intDiv(-7, 2), -3);
        QVERIFY_THROWS_EXCEPTION(conv::DivisionByZeroError, conv::intDiv(1, 0));
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
        QTest::newRow("38 tabs after the zeros") << QString(29, u'\t') + "5%" << QStringList{"!"};
    }
    void splitLine()
    {
        QFETCH(QString, line);
        QFETCH(QStringList, fields);
        try {
            const ReportFields f = splitReportLine(line);
            for (int n = 1; n <= fields.size(); ++n) {
                const Value &v = f[n];
                QCOMPARE(v.isEmpty() ? "E" : (v.isText() ? "T:" : "N:") + v.text(), fields[n - 1]);
            }
        } catch (const TooManyFieldsError &) {
            QCOMPARE(fields, QStringList{"!"});
        }
    }

    // Successive item ('t'), line ('l') or number ('n') reads to the end of
    // the file; "!" stands for a load error.
    void reads_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<char>("how");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("blanks and tabs before items") << QByteArray(" \t a\tb  , \t c\r\n") << 't'
                                                      << QStringList{"a\tb  ", "c"};
        QTest::newRow("empty line is one item") << QByteArray("a\r\n\r\nb") << 't' << QStringList{"a", "", "b"};
        QTest::newRow("quoted across lines") << QByteArray("\"x,\r\ny\" junk, next\n\"open") << 't'
                                             << QStringList{"x,\r\ny", "next", "open"};
        QTest::newRow("line ends, items") << QByteArray("a\rb\nc\r\nd") << 't' << QStringList{"a", "b", "c", "d"};
        QTest::newRow("line ends, lines") << QByteArray("a,\tb\rc\n\r\nd") << 'l' << QStringList{"a,\tb", "c", "", "d"};
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

};

QTEST_GUILESS_MAIN(ReadersTest)
#include "tst_readers.moc"
