#pragma once
// How far it is between two points of the universe and how long a fleet
// takes for it. A fleet covers warp² light years a year, so a trip takes
// distance ÷ warp² years, rounded up: the last part of a year still costs
// the whole year.

#include <QPointF>
#include <QString>
#include <array>

constexpr int SlowestTripWarp = 5;
constexpr int FastestTripWarp = 10;

struct Trip {
    double distance = 0; // light years
    // Years at warp 5, 6, ... 10.
    std::array<int, FastestTripWarp - SlowestTripWarp + 1> years{};

    int yearsAtWarp(int warp) const { return years[size_t(warp - SlowestTripWarp)]; }
    // The distance as shown: light years to one decimal ("100.0").
    QString distanceText() const;
    // "100.0 l.y.; years at warp 5: 4, 6: 3, 7: 3, 8: 2, 9: 2, 10: 1"
    QString figuresText() const;
};

// The trip between two points given in light years.
Trip tripBetween(const QPointF &from, const QPointF &to);
