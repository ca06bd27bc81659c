#include "EmpireStatistics.h"

#include "Conversions.h"

#include <stdexcept>

std::array<QString, 7> empireAverages(const PlayerInfo &race)
{
    std::array<QString, 7> averages;
    const double planets = race[TotalPlanets].val();
    for (int k = 0; k < 7; ++k) {
        if (planets == 0) {
            averages[size_t(k)] = QStringLiteral("0");
        } else if (k < 4) {
            averages[size_t(k)] = QString::number(conv::floorInt32(race[k + TotalPopulation].val() / planets));
        } else {
            averages[size_t(k)] = conv::numberText(conv::round3(race[k - 4 + TotalIron].val() / planets));
        }
    }
    return averages;
}

RangeBound rangeBound(const PlayerInfo &race, int field)
{
    switch (field) {
    case MinGrav: return {"Enter New Minimum Gravity Value for ", 0.12, race[MaxGrav].val()};
    case MaxGrav: return {"Enter New Maximum Gravity Value for ", race[MinGrav].val(), 8};
    case MinTemp: return {"Enter New Minimum Temperature Value for ", -200, race[MaxTemp].val()};
    case MaxTemp: return {"Enter New Maximum Temperature Value for ", race[MinTemp].val(), 200};
    case MinRad: return {"Enter New Minimum Radiation Value for ", 0, race[MaxRad].val()};
    case MaxRad: return {"Enter New Maximum Radiation Value for ", race[MinRad].val(), 100};
    default: throw std::out_of_range("not a habitability bound");
    }
}

RangeAnswer applyRangeAnswer(PlayerInfo &race, int field, const QString &answer)
{
    if (answer.isEmpty())
        return RangeAnswer::Unchanged;
    const RangeBound bound = rangeBound(race, field);
    const double value = conv::round2(conv::val(answer));
    if (value < bound.lowest || value > bound.highest)
        return RangeAnswer::Refused;
    race[field] = Value(value);
    return RangeAnswer::Stored;
}
