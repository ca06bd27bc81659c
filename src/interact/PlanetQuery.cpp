#include "PlanetQuery.h"

#include "Conversions.h"

#include <QJsonArray>

namespace {

QJsonArray pieJson(const PieBox &pie)
{
    QJsonArray slices;
    for (const PieSlice &s : pie.slices()) {
        QJsonObject slice;
        slice.insert(u"start", conv::shortestDecimal(s.start));
        slice.insert(u"end", conv::shortestDecimal(s.end));
        slice.insert(u"FillColor", s.fillColour);
        slices.append(slice);
    }
    return slices;
}

QJsonArray textArray(const std::array<QString, MaxPlayers> &texts)
{
    QJsonArray a;
    for (const QString &t : texts)
        a.append(t);
    return a;
}

QJsonObject endJson(const GameData &d, const MeasureEnd &end)
{
    QJsonObject o;
    o.insert(u"X", end.at.x());
    o.insert(u"Y", end.at.y());
    o.insert(u"Planet", end.planet ? QJsonValue(end.planet) : QJsonValue(QJsonValue::Null));
    o.insert(u"Name", end.planet ? QJsonValue(d.planet(end.planet)[Name].text()) : QJsonValue(QJsonValue::Null));
    return o;
}

QJsonValue textOrNull(const PointerReadout *readout, QString PointerReadout::*text)
{
    return readout ? QJsonValue(readout->*text) : QJsonValue(QJsonValue::Null);
}

} // namespace

QJsonObject planetQueryJson(const PointerReadout *readout, const QList<int> &picked, const PlanetDetail &detail)
{
    QJsonObject o;
    o.insert(u"XYCoord", textOrNull(readout, &PointerReadout::XYCoord));
    o.insert(u"theplanet", textOrNull(readout, &PointerReadout::thePlanet));
    o.insert(u"ToolTip", textOrNull(readout, &PointerReadout::toolTip));
    QJsonArray pickedJson;
    for (int i : picked)
        pickedJson.append(i);
    o.insert(u"Picked", pickedJson);
    if (picked.isEmpty()) {
        o.insert(u"Detail", QJsonValue(QJsonValue::Null));
    } else {
        QJsonObject labels;
        for (int i = 0; i < DetailLabelCount; ++i)
            labels.insert(QLatin1String(detailLabelName(i)), detail.labels[size_t(i)]);
        o.insert(u"Detail", labels);
    }
    o.insert(u"RName", textArray(detail.RName));
    o.insert(u"RHab", textArray(detail.RHab));
    o.insert(u"Pie1", pieJson(detail.Pie1));
    o.insert(u"Pie2", pieJson(detail.Pie2));
    return o;
}

QJsonObject planetPanelJson(const GameData &d, int row)
{
    PlanetDetail detail;
    detail.nameRaces(d);
    // The hab estimate's working values start afresh, as with each click.
    HabCarry carry;
    detail.fill(d, row, carry);
    return planetQueryJson(nullptr, {row}, detail);
}

QJsonObject tripJson(const GameData &d, const MeasureEnd &from, const MeasureEnd &to)
{
    const Trip trip = tripBetween(from.at, to.at);
    QJsonArray years;
    for (int warp = SlowestTripWarp; warp <= FastestTripWarp; ++warp)
        years.append(QJsonObject{{QStringLiteral("Warp"), warp}, {QStringLiteral("Years"), trip.yearsAtWarp(warp)}});
    QJsonObject o;
    o.insert(u"From", endJson(d, from));
    o.insert(u"To", endJson(d, to));
    o.insert(u"Distance", trip.distanceText().toDouble());
    o.insert(u"Years", years);
    return o;
}
