#include "Trip.h"

#include <cmath>

QString Trip::distanceText() const
{
    return QString::number(distance, 'f', 1);
}

QString Trip::figuresText() const
{
    QString text = distanceText() + QStringLiteral(" l.y.; years at warp ");
    for (int warp = SlowestTripWarp; warp <= FastestTripWarp; ++warp) {
        if (warp > SlowestTripWarp)
            text += QStringLiteral(", ");
        text += QStringLiteral("%1: %2").arg(warp).arg(yearsAtWarp(warp));
    }
    return text;
}

Trip tripBetween(const QPointF &from, const QPointF &to)
{
    Trip trip;
    const double dx = to.x() - from.x(), dy = to.y() - from.y();
    // Whole light years on both axes, as planets and the readout give
    // them: the square root of a whole square is exact, so a trip of
    // exactly warp² light years is one year, not two.
    trip.distance = std::sqrt(dx * dx + dy * dy);
    for (int warp = SlowestTripWarp; warp <= FastestTripWarp; ++warp)
        trip.years[size_t(warp - SlowestTripWarp)] = int(std::ceil(trip.distance / (warp * warp)));
    return trip;
}
