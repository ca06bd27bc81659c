// Number rules, item and line reads, report line splitting and the
// annotation file loader.

#include "AnnotationFile.h"
#include "Conversions.h"
#include "LoadError.h"
#include "ReportFile.h"
#include "TextReader.h"

#include <QTemporaryDir>
#include <QTest>
#include <cmath>
#include <limits>

class ReadersTest : public QObject {
    Q_OBJECT

private slots:
    void leadingNumber_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("expected");
        QTest::newRow("percent") << "12%" << 12.0;
        QTest::newRow("negative with suffix") << "-1x" << -1.0;
        QTest::newRow("word") << "Unknown" << 0.0;
        QTest::newRow("empty") << "" << 0.0;
        QTest::newRow("leading blank") << " 3" << 3.0;
        QTest::newRow("leading tab") << "\t3" << 3.0;
        QTest::newRow("E exponent") << "1.5e2" << 150.0;
        QTest::newRow("D exponent") << "1d2" << 100.0;
        QTest::newRow("exponent without digits") << "1e" << 1.0;
        QTest::newRow("point first") << "-.5%" << -0.5;
        QTest::newRow("second point") << "1.2.3" << 1.2;
        QTest::newRow("gravity") << "1.00g" << 1.0;
    }
    void leadingNumber()
    {
        QFETCH(QString, text);
        QFETCH(double, expected);
        QCOMPARE(conv::val(text), expected);
    }

    void wholeNumber_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("isNumber");
        QTest::addColumn<double>("expected");
        QTest::newRow("blank then zero") << " 0" << true << 0.0;
        QTest::newRow("decimal zero") << "0.0" << true << 0.0;
        QTest::newRow("surrounding blanks") << " 42 " << true << 42.0;
        QTest::newRow("D exponent") << "1D3" << true << 1000.0;
        QTest::newRow("empty") << "" << true << 0.0;
        QTest::newRow("percent") << "12%" << false << 0.0;
        QTest::newRow("word") << "Uninhabited" << false << 0.0;
        QTest::newRow("dangling exponent") << "1e" << false << 0.0;
    }
    void wholeNumber()
    {
        QFETCH(QString, text);
        QFETCH(bool, isNumber);
        QFETCH(double, expected);
        const auto n = conv::wholeNumber(text);
        QCOMPARE(n.has_value(), isNumber);
        if (n)
            QCOMPARE(*n, expected);
    }

    // Half to even into the 16- and 32-bit integers; "-" marks an overflow.
    void rounding_data()
    {
        QTest::addColumn<double>("x");
        QTest::addColumn<QString>("int16");
        QTest::addColumn<QString>("int32");
        QTest::newRow("0.5") << 0.5 << "0" << "0";
        QTest::newRow("1.5") << 1.5 << "2" << "2";
        QTest::newRow("2.5") << 2.5 << "2" << "2";
        QTest::newRow("-2.5") << -2.5 << "-2" << "-2";
        QTest::newRow("16-bit top") << 32766.5 << "32766" << "32766";
        QTest::newRow("16-bit over") << 32767.5 << "-" << "32768";
        QTest::newRow("16-bit bottom") << -32768.5 << "-32768" << "-32768";
        QTest::newRow("16-bit under") << -32769.0 << "-" << "-32769";
        QTest::newRow("32-bit top") << 2147483646.5 << "-" << "2147483646";
        QTest::newRow("32-bit over") << 2147483647.5 << "-" << "-";
        QTest::newRow("32-bit bottom") << -2147483648.5 << "-" << "-2147483648";
        QTest::newRow("not a number") << std::nan("") << "-" << "-";
    }
    void rounding()
    {
        QFETCH(double, x);
        QFETCH(QString, int16);
        QFETCH(QString, int32);
        auto attempt = [](auto convert) {
            try {
                return QString::number(convert());
            } catch (const conv::OverflowError &) {
                return QStringLiteral("-");
            }
        };
        QCOMPARE(attempt([x] { return conv::toInt16(x); }), int16);
        QCOMPARE(attempt([x] { return conv::toInt32(x); }), int32);
    }

    void floorAndDivision()
    {
        QCOMPARE(conv::floorInt32(-0.5), -1);
        QCOMPARE(conv::floorInt32(2.999), 2);
        QVERIFY_THROWS_EXCEPTION(conv::OverflowError, conv::floorInt32(2147483648.0));
        QCOMPARE(conv::intDiv(-7, 2), -3);
        QCOMPARE(conv::intDiv(7, -2), -3);
        QVERIFY_THROWS_EXCEPTION(conv::DivisionByZeroError, conv::intDiv(1, 0));
        QVERIFY_THROWS_EXCEPTION(conv::OverflowError, conv::intDiv(std::numeric_limits<int32_t>::min(), -1));
        QCOMPARE(conv::numberText(3), QStringLiteral("3"));
        QCOMPARE(conv::numberText(2.5), QStringLiteral("2.5"));
        QCOMPARE(conv::numberText(1e15), QStringLiteral("1E+15"));
    }

    // Expected fields as "E" (empty), "T:text" or "N:number".
    void splitLine_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QStringList>("fields");
        QTest::newRow("percent gains zeros, the last not taken")
            << "Mars\tHumans\t50%" << QStringList{"T:Mars", "T:Humans", "T:50%", "T:0", "T:0", "T:0", "T:0",
                                                  "T:0", "T:0", "T:0", "T:0", "E"};
        QTest::newRow("empty fields") << "\t\t\t\t\t\t" << QStringList{"T:Unknown", "T:", "T:None", "T:Unknown",
                                                                     "T:Uninhabited", "T:Unknown", "E"};
        QTest::newRow("text after the last tab") << " Mars \tHumans" << QStringList{"T: Mars ", "E"};
        const QStringList blank{"T:Unknown", "T:", "T:None", "T:Unknown", "T:Uninhabited"};
        QTest::newRow("37 tabs, above 30 the number 0")
            << QString(37, u'\t') << blank + QStringList(25, "T:Unknown") + QStringList(7, "N:0");
    }
    void splitLine()
    {
        QFETCH(QString, line);
        QFETCH(QStringList, fields);
        const ReportFields f = splitReportLine(line);
        auto show = [](const Value &v) {
            return v.isEmpty() ? QStringLiteral("E")
                               : (v.isText() ? QStringLiteral("T:") : QStringLiteral("N:")) + v.text();
        };
        for (int n = 1; n <= fields.size(); ++n)
            QCOMPARE(show(f[n]), fields[n - 1]);
    }

    void tooManyTabs()
    {
        QVERIFY_THROWS_EXCEPTION(TooManyFieldsError, splitReportLine(QString(38, u'\t')));
        QVERIFY_THROWS_EXCEPTION(TooManyFieldsError, splitReportLine(QString(29, u'\t') + "5%"));
    }

    // Successive reads to the end; "!" stands for a load error.
    void reads_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<char>("how");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("blanks and tabs before items") << QByteArray(" \t abc, \tdef\r\n") << 't'
                                                      << QStringList{"abc", "def"};
        QTest::newRow("tabs inside an item") << QByteArray("a\tb c  ,d") << 't' << QStringList{"a\tb c  ", "d"};
        QTest::newRow("empty line is one item") << QByteArray("a\r\n\r\nb") << 't' << QStringList{"a", "", "b"};
        QTest::newRow("quoted across lines") << QByteArray("\"x,\r\ny\" junk, next\n") << 't'
                                             << QStringList{"x,\r\ny", "next"};
        QTest::newRow("unclosed quote") << QByteArray("\"abc\r\n") << 't' << QStringList{"abc\r\n"};
        QTest::newRow("three line ends, items") << QByteArray("a\rb\nc\r\nd") << 't' << QStringList{"a", "b", "c", "d"};
        QTest::newRow("three line ends, lines") << QByteArray("a,\tb\rc\n\r\nd") << 'l'
                                                << QStringList{"a,\tb", "c", "", "d"};
        QTest::newRow("numbers") << QByteArray("1 2,3\t-4.5\r\n1d2") << 'n' << QStringList{"1", "2", "3", "-4.5", "100"};
        QTest::newRow("not a number") << QByteArray("12%") << 'n' << QStringList{"!"};
        QTest::newRow("Windows-1252") << QByteArray("\x80\xB0\x81\x9F\xE9") << 'l' << QStringList{"€°\u0081Ÿé"};
    }
    void reads()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(char, how);
        QFETCH(QStringList, expected);
        TextReader reader(bytes, QStringLiteral("test"));
        QStringList got;
        try {
            while (!reader.atEnd())
                got << (how == 't' ? reader.readTextItem()
                        : how == 'l' ? reader.readLine()
                                     : QString::number(reader.readNumberItem()));
        } catch (const LoadError &) {
            got << QStringLiteral("!");
        }
        QCOMPARE(got, expected);
        QVERIFY_THROWS_EXCEPTION(LoadError, reader.readLine());
    }

    void annotations_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("text");
        QTest::newRow("lines and circles") << QByteArray(" L, 1,2,3,4,5\r\nC,10,20,30,3\r\n")
                                           << "L,1,2,3,4,5\r\nC,10,20,30,3\r\n";
        QTest::newRow("comma inside a text") << QByteArray("T,5,6,Hello, world,7\r\n") << "T,5,6,Hello,0\r\n";
        QTest::newRow("quoted text, sizes to even") << QByteArray("T,1,2,\"a,b\",10.5\nT,1,2,c,11.5")
                                                    << "T,1,2,a,b,10\r\nT,1,2,c,12\r\n";
        QTest::newRow("numbers through the leading-number parse") << QByteArray("L,1.5,2.5x,-0.5,1e3,7\r")
                                                                  << "L,2,2,0,1000,7\r\n";
        QTest::newRow("unknown kinds skipped field by field") << QByteArray("X,1,2\r\nl,1,2,3,4,5\r\nC,0,0,9,2")
                                                              << "C,0,0,9,2\r\n";
        QTest::newRow("empty file") << QByteArray() << "";
        QTest::newRow("ends inside a record") << QByteArray("L,1,2,3,4,5\r\nC,1,2") << "!";
        QTest::newRow("colour overflows") << QByteArray("C,1,2,3,40000") << "!";
    }
    void annotations()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, text);
        QTemporaryDir dir;
        QFile f(dir.filePath("GAME.vmk"));
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(file);
        f.close();
        QString got;
        try {
            got = loadAnnotations(dir.filePath("game.VMK")).text; // found without regard to case
        } catch (const LoadError &e) {
            QVERIFY(e.message().contains("GAME.vmk"));
            got = QStringLiteral("!");
        }
        QCOMPARE(got, text);
        QCOMPARE(loadAnnotations(dir.filePath("other.VMK")).text, QString());
    }
};

QTEST_GUILESS_MAIN(ReadersTest)
#include "tst_readers.moc"
