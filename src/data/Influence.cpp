#include "Influence.h"

#include <cmath>

namespace {

// Empty, or a text that is wholly a number equal to 0.
bool numericallyZero(const Value &v)
{
    if (v.isEmpty())
        return true;
    if (v.isNumber())
        return v.rawNumber() == 0.0;
    const auto n = conv::wholeNumber(v.rawText());
    return n && !v.rawText().trimmed().isEmpty() && *n == 0.0;
}

} // namespace

Value starbaseSubstitute(const Value &starbase, const Value &population)
{
    if (starbase.is(u"None") || !numericallyZero(population))
        return population;
    const QString design = starbase.text();
    if (design == u"Orbital Fort" || design == u"Starter Colony")
        return Value(250000);
    if (design == u"Space Dock")
        return Value(500000);
    if (design == u"Space Station")
        return Value(1000000);
    if (design == u"Ultra Station")
        return Value(2000000);
    if (design == u"Death Star")
        return Value(3000000);
    return Value(1350000);
}

int32_t strengthOfInfluence(const Value &population, const Value &starbase, const Value &defence)
{
    const double p = population.val();
    if (p == 0.0)
        return 0;
    double s = std::floor(p / 10000.0);
    if (s < 10.0)
        s = 10.0;
    double m = starbase.is(u"None") ? 0.7 : 1.0;
    if (!defence.is(u"Unknown")) {
        const QString d = defence.text();
        m -= (97.92 - conv::val(QStringView(d).chopped(d.isEmpty() ? 0 : 1))) / 489.6;
    } else {
        m -= 97.92 / 489.6;
    }
    const double soi = std::floor(m * s);
    return soi > 100.0 ? 100 : conv::floorInt32(soi);
}

int32_t attackScore(const Value &population, const Value &starbase, const Value &resources)
{
    const double p = population.val();
    double a = conv::roundHalfEven(p / 100000.0);
    if (a > 6.0)
        a = 6.0;
    const double b = starbase.is(u"None") ? 0.0 : 3.0;
    const double r = resources.val();
    const double c = conv::roundHalfEven((r > 0.0 ? r : p / 500.0) / 30.0);
    return conv::toInt32(a + b + c);
}
