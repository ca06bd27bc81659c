// The trace lines, compared as exact text: scripts diff traces of two runs.

#include "TraceRecorder.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {

// Expected lines are written with single quotes for readability.
QByteArray json(const char *singleQuoted)
{
    return QByteArray(singleQuoted).replace('\'', '"');
}

} // namespace

class TraceRecorderTest : public QObject {
    Q_OBJECT
private slots:
    void writesEveryOperationWithTheStateInForce()
    {
        QByteArray trace;
        Canvas canvas;
        canvas.addSurface(std::make_shared<TraceRecorder>(trace));
        DrawingState &s = canvas.state();

        canvas.cls();
        s.DrawMode = 15;
        s.DrawStyle = 5;
        s.FillStyle = 0;
        s.FillColor = 65280;
        canvas.circle(1234.5f, 0.1f, 50.0f);
        canvas.circle(10, 20, 1.0f / 3, 255);
        s.DrawMode = 13;
        s.DrawStyle = 0;
        s.FillStyle = 1;
        canvas.sector(840, 840, 800, 0, 0.017453292f, 1.8849556f);
        s.DrawWidth = 2;
        canvas.line(0, 0, 10000, 10000, 16777215);
        canvas.pset(-5.5f, 1e-7f, 4);
        canvas.psets({{1, 2, 3}, {4, 5, 6}});
        s.CurrentX = 100;
        s.CurrentY = 200.25f;
        s.FontSize = 8.25;
        canvas.print(QStringLiteral("Fort \"Nine\"\t\\ \u00e9"));

        const QList<QByteArray> lines = trace.split('\n');
        QCOMPARE(lines.size(), 10);
        QCOMPARE(lines[0], json("{'op':'Cls'}"));
        QCOMPARE(lines[1], json("{'op':'Circle','x':1234.5,'y':0.1,'r':50,'color':null,'DrawMode':15,"
                                "'DrawStyle':5,'DrawWidth':1,'FillStyle':0,'FillColor':65280}"));
        QCOMPARE(lines[2], json("{'op':'Circle','x':10,'y':20,'r':0.33333334,'color':255,'DrawMode':15,"
                                "'DrawStyle':5,'DrawWidth':1,'FillStyle':0,'FillColor':65280}"));
        QCOMPARE(lines[3], json("{'op':'Circle','x':840,'y':840,'r':800,'color':0,'DrawMode':13,'DrawStyle':0,"
                                "'DrawWidth':1,'FillStyle':1,'FillColor':65280,'start':0.017453292,'end':1.8849556}"));
        QCOMPARE(lines[4], json("{'op':'Line','x1':0,'y1':0,'x2':10000,'y2':10000,'color':16777215,'DrawMode':13,"
                                "'DrawStyle':0,'DrawWidth':2}"));
        QCOMPARE(lines[5], json("{'op':'PSet','x':-5.5,'y':1e-07,'color':4,'DrawMode':13,'DrawWidth':2}"));
        QCOMPARE(lines[6], json("{'op':'PSet','x':1,'y':2,'color':3,'DrawMode':13,'DrawWidth':2}"));
        QCOMPARE(lines[7], json("{'op':'PSet','x':4,'y':5,'color':6,'DrawMode':13,'DrawWidth':2}"));
        QCOMPARE(lines[8], json("{'op':'Print','x':100,'y':200.25,'text':'Fort \\'Nine\\'\\t\\\\ \xc3\xa9',"
                                "'color':16777215,'FontSize':8.25}"));
        QCOMPARE(lines[9], QByteArray());
    }

    void textSurvivesAsJson()
    {
        QByteArray trace;
        TraceRecorder recorder(trace);
        const QString text = QStringLiteral("a\"b\\c\nd\x01\u00e9\u4e2d");
        recorder.print(DrawingState{}, text);
        QJsonParseError error;
        const QJsonDocument doc = QJsonDocument::fromJson(trace, &error);
        QCOMPARE(error.error, QJsonParseError::NoError);
        QCOMPARE(doc.object().value(QLatin1String("text")).toString(), text);
    }
};

QTEST_GUILESS_MAIN(TraceRecorderTest)
#include "TraceRecorderTest.moc"
