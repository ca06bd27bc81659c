#include "MeasureTool.h"

#include "Conversions.h"
#include "MapPick.h"
#include "MapView.h"
#include "QuotedText.h"

MeasureEnd MeasureTool::endAt(float x, float y) const
{
    if (const int row = planetUnder(d, x, y))
        return planetEnd(row);
    return {QPointF(canvasToUniverseX(d, x), canvasToUniverseY(d, y)), 0};
}

MeasureEnd MeasureTool::planetEnd(int row) const
{
    const PlanetInfo &p = d.planet(row);
    return {QPointF(p[X].val(), p[Y].val()), row};
}

void MeasureTool::click(float x, float y)
{
    m_to = endAt(x, y);
    if (m_stage == Stage::Following) {
        m_stage = Stage::Kept;
        return;
    }
    m_from = m_to;
    m_stage = Stage::Following;
}

void MeasureTool::follow(float x, float y)
{
    if (m_stage == Stage::Kept)
        m_stage = Stage::Idle;
    if (m_stage == Stage::Following)
        m_to = endAt(x, y);
}

std::optional<QLineF> MeasureTool::canvasLine() const
{
    if (m_stage == Stage::Idle)
        return std::nullopt;
    const CanvasPoint a = mapToCanvas(d, m_from.at.x(), m_from.at.y());
    const CanvasPoint b = mapToCanvas(d, m_to.at.x(), m_to.at.y());
    return QLineF(a.x, a.y, b.x, b.y);
}

QString MeasureTool::endName(const MeasureEnd &end) const
{
    if (end.planet > 0 && end.planet <= d.PlanetCount)
        return escapeControls(d.planet(end.planet)[Name].text());
    return QStringLiteral("(%1, %2)").arg(conv::shortestText(end.at.x()), conv::shortestText(end.at.y()));
}

QString MeasureTool::figures() const
{
    if (m_stage == Stage::Idle)
        return QString();
    // One pass over the pattern: a name holding "%1" stays as it is.
    return QStringLiteral("%1 to %2: %3").arg(endName(m_from), endName(m_to), tripBetween(m_from.at, m_to.at).figuresText());
}
