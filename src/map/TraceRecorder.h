#pragma once
// A surface that draws nothing and writes down every canvas operation
// instead, one JSON object a line, for the command line's --trace file.
// Keys come in a fixed order and numbers exactly as the canvas received
// them, so that traces of two runs can be compared as text.

#include "Canvas.h"

#include <QByteArray>
#include <functional>

class QIODevice;

class TraceRecorder : public CanvasSurface {
public:
    // Lines go to an open device, or are appended to a byte array; either
    // must outlive the recorder.
    explicit TraceRecorder(QIODevice &out);
    explicit TraceRecorder(QByteArray &out);

    void cls() override;
    void circle(const DrawingState &s, float x, float y, float r, std::optional<int32_t> colour,
                std::optional<std::pair<float, float>> arc) override;
    void line(const DrawingState &s, float x1, float y1, float x2, float y2, int32_t colour) override;
    void pset(const DrawingState &s, float x, float y, int32_t colour) override;
    void print(const DrawingState &s, const QString &text) override;

private:
    std::function<void(const QByteArray &)> m_write;
};
