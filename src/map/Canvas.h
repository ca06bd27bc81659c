#pragma once
// The map's drawing surface: a logical 10020 x 10020 square (the map fills
// 0..10000, the rest is margin), the drawing state the map layers set, and
// the drawing operations. The canvas holds the state and hands every
// operation to its surfaces: the raster picture, a trace recorder, or both.

#include <QString>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

// Drawing state; each value stays as last set until it is set again.
struct DrawingState {
    int DrawMode = 13;        // 13 copy pen, 15 merge pen (bitwise OR)
    int DrawStyle = 0;        // 0 solid outline, 5 invisible outline
    int DrawWidth = 1;        // outline width and dot size in pixels
    int FillStyle = 1;        // 0 solid, 1 transparent, 7 diagonal cross hatching
    int32_t FillColor = 0;
    int32_t ForeColor = 0xFFFFFF;
    float CurrentX = 0;
    float CurrentY = 0;
    double FontSize = 8;

    // The four values nearly every layer sets before it draws, in the order
    // DrawMode, DrawStyle, DrawWidth, FillStyle.
    void set(int drawMode, int drawStyle, int drawWidth, int fillStyle)
    {
        DrawMode = drawMode;
        DrawStyle = drawStyle;
        DrawWidth = drawWidth;
        FillStyle = fillStyle;
    }
};

struct Dot {
    float x;
    float y;
    int32_t colour;
};

// One backend of the canvas. Operations receive the state in force.
class CanvasSurface {
public:
    virtual ~CanvasSurface() = default;
    virtual void cls() = 0;
    // A circle, or with `arc` a filled sector from arc->first counter-
    // clockwise to arc->second (radians, 0 pointing right).
    virtual void circle(const DrawingState &s, float x, float y, float r, std::optional<int32_t> colour,
                        std::optional<std::pair<float, float>> arc) = 0;
    virtual void line(const DrawingState &s, float x1, float y1, float x2, float y2, int32_t colour) = 0;
    virtual void pset(const DrawingState &s, float x, float y, int32_t colour) = 0;
    // Many dots in one go; a raster surface writes them straight into its image.
    virtual void psets(const DrawingState &s, const std::vector<Dot> &dots)
    {
        for (const Dot &d : dots)
            pset(s, d.x, d.y, d.colour);
    }
    virtual void print(const DrawingState &s, const QString &text) = 0;
    // Width of a text in canvas units at the state's font, when this surface can measure.
    virtual std::optional<double> textWidth(const DrawingState &, const QString &) const { return std::nullopt; }
};

class Canvas {
public:
    static constexpr float ScaleWidth = 10020.0f;

    // `widthTwips` is the outer width of the canvas box in twips (15 per pixel).
    explicit Canvas(int widthTwips = 15000) : m_widthTwips(widthTwips) {}

    void addSurface(std::shared_ptr<CanvasSurface> surface) { m_surfaces.push_back(std::move(surface)); }

    DrawingState &state() { return m_state; }
    const DrawingState &state() const { return m_state; }
    int widthTwips() const { return m_widthTwips; }
    void setWidthTwips(int twips) { m_widthTwips = twips; }

    void cls();
    void circle(float x, float y, float r, std::optional<int32_t> colour = std::nullopt);
    void sector(float x, float y, float r, std::optional<int32_t> colour, float start, float end);
    void line(float x1, float y1, float x2, float y2, int32_t colour);
    void pset(float x, float y, int32_t colour);
    void psets(const std::vector<Dot> &dots);
    void print(const QString &text);
    double textWidth(const QString &text) const;

private:
    DrawingState m_state;
    int m_widthTwips;
    std::vector<std::shared_ptr<CanvasSurface>> m_surfaces;
};
