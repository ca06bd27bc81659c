#include "PieBox.h"

#include "Colour.h"
#include "Conversions.h"

class PieBox::SliceRecorder : public CanvasSurface {
public:
    void cls() override { slices.clear(); }
    void circle(const DrawingState &s, float, float, float, std::optional<int32_t>,
                std::optional<std::pair<float, float>> arc) override
    {
        if (arc)
            slices.push_back({arc->first, arc->second, s.FillColor});
    }
    void line(const DrawingState &, float, float, float, float, int32_t) override {}
    void pset(const DrawingState &, float, float, int32_t) override {}
    void print(const DrawingState &, const QString &) override {}

    std::vector<PieSlice> slices;
};

PieBox::PieBox() : m_recorder(std::make_shared<SliceRecorder>())
{
    m_canvas.addSurface(m_recorder);
}

const std::vector<PieSlice> &PieBox::slices() const
{
    return m_recorder->slices;
}

void PieBox::draw(const QString amounts[3], int &failedField)
{
    failedField = 0;
    double parsed = 0;
    for (int i = 0; i < 3; ++i)
        parsed += conv::val(amounts[i]);
    if (!(parsed > 0))
        return;

    int32_t whole[3];
    int32_t total = 0;
    for (int i = 0; i < 3; ++i) {
        failedField = i;
        const auto number = conv::wholeNumber(amounts[i]);
        if (!number)
            throw conv::TypeMismatchError();
        whole[i] = conv::toInt32(*number);
        total = conv::toInt32(double(total) + whole[i]);
    }
    failedField = 0;
    // One degree, with the 8-digit pi the pie has always used.
    const double D = 3.1415927 / 180;
    const double ai = conv::divide(whole[0], total) * 360 * D;
    const double ab = double(whole[1]) / total * 360 * D;
    const double ag = double(whole[2]) / total * 360 * D;

    DrawingState &s = m_canvas.state();
    s.FillStyle = 0;
    const int32_t black = rgb(0, 0, 0);
    // The first slice starts at one degree: the wedge before it stays empty.
    // When ironium is under a degree its slice runs the long way round and
    // the later slices paint over most of it.
    s.FillColor = rgb(0, 0, 255);
    m_canvas.sector(840, 840, 800, black, conv::toSingle(D), conv::toSingle(ai));
    s.FillColor = rgb(0, 255, 0);
    m_canvas.sector(840, 840, 800, black, conv::toSingle(ai), conv::toSingle(ai + ab));
    s.FillColor = rgb(255, 255, 0);
    m_canvas.sector(840, 840, 800, black, conv::toSingle(ai + ab), conv::toSingle(ai + ab + ag));
}
