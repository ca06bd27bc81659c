// The export's JSON writer against QJsonDocument: scripts compare the
// export's bytes, so the writer must write exactly what Qt writes for the
// same document, escapes, number forms and empty containers included.

#include "IndentedJsonWriter.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QTest>
#include <cmath>
#include <limits>
#include <set>

namespace {

// Numbers where the forms change: the 2^53 limit of whole numbers, exponents,
// negative zero, values that are not finite. Qt writes whole numbers beyond
// 2^53 with an exponent, the export with all their digits (see below), so the
// random documents stay within 2^53.
const double edgeNumbers[] = {
    0.0, -0.0, 1.0, -1.0, 0.05, 1.5, 500000.0, 1e6, 1e15, 1e-7, 2.5e-5,
    9007199254740992.0, -9007199254740992.0, 123456789.5,
    std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
    std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::denorm_min(),
};

// Control characters, quotes, backslashes, Latin-1, the Windows-1252
// extras, characters beyond the BMP, and lone surrogates.
const char16_t edgeUnits[] = {
    0x00, 0x01, 0x08, 0x09, 0x0A, 0x0C, 0x0D, 0x1F, 0x20, u'"', u'\\', u'/', 0x7F,
    0x80, 0xA0, 0xE9, 0xFF, 0x20AC, 0x2122, 0xFFFD, 0xFFFF, 0xD83D, 0xDE00, 0xDBFF, 0xDC00,
};

// Builds the same random document twice: as a QJsonValue and through the writer.
class RandomDocument {
public:
    RandomDocument(quint32 seed, QByteArray &out) : m_random(seed), m_json(out) {}

    QJsonObject object(int depth)
    {
        std::set<QString> keys;
        const int size = int(m_random.bounded(depth > 2 ? 4 : 7));
        while (int(keys.size()) < size)
            keys.insert(randomKey());
        QJsonObject o;
        m_json.beginObject();
        for (const QString &key : keys) {
            const QByteArray latin1 = key.toLatin1();
            m_json.key(QLatin1StringView(latin1));
            o.insert(key, value(depth + 1));
        }
        m_json.endObject();
        return o;
    }

private:
    QJsonValue value(int depth)
    {
        switch (m_random.bounded(depth > 3 ? 3 : 5)) {
        case 0: {
            m_json.null();
            return QJsonValue(QJsonValue::Null);
        }
        case 1: {
            const double scaled = (m_random.generateDouble() - 0.5) * std::pow(10.0, m_random.bounded(16));
            const double x = m_random.bounded(2) ? edgeNumbers[m_random.bounded(int(std::size(edgeNumbers)))]
                             : m_random.bounded(2) ? std::round(scaled) : scaled;
            m_json.number(x);
            return QJsonValue(x);
        }
        case 2: {
            QString s;
            for (int n = int(m_random.bounded(12)); n > 0; --n)
                s += m_random.bounded(3) ? QChar(char16_t(0x20 + m_random.bounded(0x5F)))
                                         : QChar(edgeUnits[m_random.bounded(int(std::size(edgeUnits)))]);
            m_json.string(s);
            return QJsonValue(s);
        }
        case 3: {
            QJsonArray a;
            m_json.beginArray();
            for (int n = int(m_random.bounded(5)); n > 0; --n)
                a.append(value(depth + 1));
            m_json.endArray();
            return a;
        }
        default:
            return object(depth);
        }
    }

    QString randomKey()
    {
        static const char letters[] = "ABCXYZabcxyz0129_";
        QString key;
        for (int n = 1 + int(m_random.bounded(6)); n > 0; --n)
            key += QLatin1Char(letters[m_random.bounded(int(sizeof letters) - 1)]);
        return key;
    }

    QRandomGenerator m_random;
    IndentedJsonWriter m_json;
};

} // namespace

class JsonWriterTest : public QObject {
    Q_OBJECT

private slots:
    void sameBytesAsQJsonDocument()
    {
        for (quint32 seed = 1; seed <= 300; ++seed) {
            QByteArray written;
            RandomDocument document(seed, written);
            const QJsonObject o = document.object(0);
            const QByteArray expected = QJsonDocument(o).toJson(QJsonDocument::Indented);
            QVERIFY2(written == expected, qPrintable(QString("seed %1:\n%2\nexpected:\n%3")
                                                         .arg(seed).arg(QString::fromUtf8(written), QString::fromUtf8(expected))));
        }
    }

    // Whole numbers are written without a point or an exponent, however large.
    void bigWholeNumbersWithAllTheirDigits()
    {
        const std::pair<double, const char *> cases[] = {
            {9007199254740994.0, "9007199254740994"}, {1.5e16, "15000000000000000"},
            {-1e18, "-1000000000000000000"}, {1e21, "1000000000000000000000"}, {-0.0, "0"},
        };
        for (const auto &[x, text] : cases) {
            QByteArray written;
            IndentedJsonWriter(written).number(x);
            QCOMPARE(written, QByteArray(text));
        }
    }
};

QTEST_GUILESS_MAIN(JsonWriterTest)
#include "tst_jsonwriter.moc"
