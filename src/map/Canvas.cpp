#include "Canvas.h"

void Canvas::cls()
{
    for (auto &s : m_surfaces)
        s->cls();
}

void Canvas::circle(float x, float y, float r, std::optional<int32_t> colour)
{
    for (auto &s : m_surfaces)
        s->circle(m_state, x, y, r, colour, std::nullopt);
}

void Canvas::sector(float x, float y, float r, std::optional<int32_t> colour, float start, float end)
{
    for (auto &s : m_surfaces)
        s->circle(m_state, x, y, r, colour, std::make_pair(start, end));
}

void Canvas::line(float x1, float y1, float x2, float y2, int32_t colour)
{
    for (auto &s : m_surfaces)
        s->line(m_state, x1, y1, x2, y2, colour);
}

void Canvas::pset(float x, float y, int32_t colour)
{
    for (auto &s : m_surfaces)
        s->pset(m_state, x, y, colour);
}

void Canvas::psets(const std::vector<Dot> &dots)
{
    for (auto &s : m_surfaces)
        s->psets(m_state, dots);
}

void Canvas::print(const QString &text)
{
    for (auto &s : m_surfaces)
        s->print(m_state, text);
}

double Canvas::textWidth(const QString &text) const
{
    for (const auto &s : m_surfaces)
        if (const auto w = s->textWidth(m_state, text))
            return *w;
    return 0.0;
}
