// The formulas every picture depends on, each pinned by a table worked out by
// hand: a floor taken for a rounding, or a bound moved by one, changes a row.

#include "Conversions.h"
#include "Influence.h"

#include <QTest>

class FormulasTest : public QObject {
    Q_OBJECT

private slots:
    // The game's text of a number (ages, annotation records) and the
    // exports' (JSON, panel labels): whole numbers with all their digits.
    void numberTexts_data()
    {
        QTest::addColumn<double>("x");
        QTest::addColumn<QString>("game");
        QTest::addColumn<QString>("shortest");
        QTest::newRow("whole") << -3.0 << "-3" << "-3";
        QTest::newRow("whole, 10^15") << 1e15 << "1000000000000000" << "1000000000000000";
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

    // Canvas positions, radii and angles go on in single precision; a value
    // beyond its range stops the drawing instead of drawing at infinity.
    void singlePrecision()
    {
        QCOMPARE(conv::toSingle(0.1), 0.1f);
        QCOMPARE(conv::toSingle(-3.4e38), -3.4e38f);
        QVERIFY_THROWS_EXCEPTION(conv::OverflowError, conv::toSingle(3.5e38));
        QVERIFY_THROWS_EXCEPTION(conv::OverflowError, conv::toSingle(-1e39));
    }

    // A planet of no population but a starbase counts as a colony of the
    // base's size in the territory.
    void starbaseSubstitute_data()
    {
        QTest::addColumn<Value>("starbase");
        QTest::addColumn<Value>("population");
        QTest::addColumn<Value>("substitute");
        QTest::newRow("no starbase") << Value(u"None") << Value(0) << Value(0);
        QTest::newRow("populated") << Value(u"Death Star") << Value(1200) << Value(1200);
        QTest::newRow("populated, as text") << Value(u"Space Dock") << Value(u"1200") << Value(u"1200");
        QTest::newRow("Orbital Fort") << Value(u"Orbital Fort") << Value(0) << Value(250000);
        QTest::newRow("Starter Colony") << Value(u"Starter Colony") << Value(u" 0") << Value(250000);
        QTest::newRow("Space Dock") << Value(u"Space Dock") << Value() << Value(500000);
        QTest::newRow("Space Station") << Value(u"Space Station") << Value(u"0.0") << Value(1000000);
        QTest::newRow("Ultra Station") << Value(u"Ultra Station") << Value(0) << Value(2000000);
        QTest::newRow("Death Star") << Value(u"Death Star") << Value(0) << Value(3000000);
        QTest::newRow("own design") << Value(u"Bastion") << Value(0) << Value(1350000);
        QTest::newRow("text without a number") << Value(u"Space Dock") << Value(u"Unknown") << Value(u"Unknown");
    }
    void starbaseSubstitute()
    {
        QFETCH(Value, starbase);
        QFETCH(Value, population);
        QTEST(::starbaseSubstitute(starbase, population), "substitute");
    }

    // s = floor(P / 10000), at least 10; m = 1.0 (0.7 without a starbase)
    // less (97.92 - defence) / 489.6; SOI = floor(m * s), at most 100.
    void strengthOfInfluence_data()
    {
        QTest::addColumn<QString>("population");
        QTest::addColumn<QString>("starbase");
        QTest::addColumn<QString>("defence");
        QTest::addColumn<int>("soi");
        // s = 12 (12.7 floored), m = 0.8, 9.6 floored: a rounding anywhere gives 10.
        QTest::newRow("127000: both floors") << "127000" << "Space Dock" << "Unknown" << 9;
        // s = 10 from 0, m = 1 + 2.08 / 489.6 = 1.00425.
        QTest::newRow("5000: s raised to 10") << "5000" << "Orbital Fort" << "100%" << 10;
        // m = 0.7 - 47.92 / 489.6 = 0.602124; 30 * m = 18.06.
        QTest::newRow("300000, no starbase") << "300000" << "None" << "50%" << 18;
        // m = 0.902124; 30 * m = 27.06.
        QTest::newRow("300000, starbase") << "300000" << "Space Dock" << "50%" << 27;
        // 101 * 1.00425 = 101.43.
        QTest::newRow("101 capped") << "1010000" << "Space Dock" << "100%" << 100;
        QTest::newRow("no population") << "0" << "Space Dock" << "100%" << 0;
    }
    void strengthOfInfluence()
    {
        QFETCH(QString, population);
        QFETCH(QString, starbase);
        QFETCH(QString, defence);
        QTEST(::strengthOfInfluence(Value(population), Value(starbase), Value(defence)), "soi");
    }

    // a = round(P / 100000) half to even, at most 6; b = 3 with a starbase;
    // c = round(R / 30) half to even, R = resources, or P / 500 when they
    // are not above 0.
    void attackScore_data()
    {
        QTest::addColumn<QString>("population");
        QTest::addColumn<QString>("starbase");
        QTest::addColumn<QString>("resources");
        QTest::addColumn<int>("score");
        QTest::newRow("a: 2.7 gives 3; c: 540 / 30") << "270000" << "None" << "0" << 3 + 0 + 18;
        QTest::newRow("a: 2.5 gives 2; c: 16.7 gives 17") << "250000" << "Space Dock" << "500" << 2 + 3 + 17;
        QTest::newRow("a: 3.5 gives 4") << "350000" << "None" << "1" << 4 + 0 + 0;
        QTest::newRow("a: 7 capped at 6") << "700000" << "None" << "30" << 6 + 0 + 1;
        QTest::newRow("c: 2.5 gives 2") << "0" << "None" << "75" << 0 + 0 + 2;
        QTest::newRow("c: 45 / 30 = 1.5 gives 2") << "22500" << "None" << "0" << 0 + 0 + 2;
        QTest::newRow("c: 30 / 30 from the population") << "15000" << "None" << "0" << 0 + 0 + 1;
    }
    void attackScore()
    {
        QFETCH(QString, population);
        QFETCH(QString, starbase);
        QFETCH(QString, resources);
        QTEST(::attackScore(Value(population), Value(starbase), Value(resources)), "score");
    }
};

QTEST_GUILESS_MAIN(FormulasTest)
#include "tst_formulas.moc"
