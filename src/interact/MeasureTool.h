#pragma once
// Measuring a trip on the map. A click fixes the start; a line then follows
// the pointer while the status line tells the distance and the years the
// trip takes at warp 5 to 10; a second click keeps line and figures until
// the pointer moves again. Both ends snap to the planet under the pointer by
// the pick rule (the planet the readout names), so that a trip between two
// planets is measured between the planets themselves; anywhere else an end
// is the position the readout shows. The line floats over the map like the
// rubber band, never part of the picture, and is placed in the view as it
// stands, zoomed or not.

#include "GameData.h"
#include "Trip.h"

#include <QLineF>
#include <QPointF>
#include <QString>
#include <optional>

struct MeasureEnd {
    QPointF at;     // light years
    int planet = 0; // planet row, or 0 for a point of deep space
};

class MeasureTool {
public:
    explicit MeasureTool(const GameData &data) : d(data) {}

    // The end a pointer at canvas (x, y) gives.
    MeasureEnd endAt(float x, float y) const;
    // Planet row `row` as an end.
    MeasureEnd planetEnd(int row) const;

    // A click with the tool: the first starts a trip, the second keeps it;
    // a click on a kept trip starts the next.
    void click(float x, float y);
    // The pointer moved: the trip's free end follows; a kept trip goes.
    void follow(float x, float y);
    // Gives up the trip (Escape, another tool, another game).
    void cancel() { m_stage = Stage::Idle; }

    // The line in canvas units, while a trip is shown.
    std::optional<QLineF> canvasLine() const;
    // What the status line says while a trip is shown, else empty:
    // "Home to Zeta Tau: 100.0 l.y.; years at warp 5: 4, 6: 3, ..."
    QString figures() const;

private:
    QString endName(const MeasureEnd &end) const;

    enum class Stage { Idle, Following, Kept };
    const GameData &d;
    Stage m_stage = Stage::Idle;
    MeasureEnd m_from;
    MeasureEnd m_to;
};
