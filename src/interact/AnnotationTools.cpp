#include "AnnotationTools.h"

#include "AnnotationFile.h"
#include "Conversions.h"
#include "Colour.h"
#include "InteractionHost.h"
#include "MapPick.h"
#include "OverlayButtons.h"
#include "TextReader.h"

#include <QDir>
#include <QSaveFile>
#include <cmath>

namespace {

const QString CrLf = QStringLiteral("\r\n");

} // namespace

AnnotationTools::AnnotationTools(GameData &data, Canvas &canvas) : d(data), canvas(canvas) {}

void AnnotationTools::follow(float x, float y)
{
    if (!m_line.visible)
        return;
    m_line.x2 = x;
    m_line.y2 = y;
}

bool AnnotationTools::startBand(float x, float y)
{
    if (m_line.visible)
        return false;
    m_line = {true, x, y, x, y, drawColour(d.DrawColourIndex)};
    return true;
}

void AnnotationTools::setPen()
{
    DrawingState &s = canvas.state();
    s.DrawMode = 13;
    s.DrawWidth = 2;
    s.DrawStyle = 0;
}

QString AnnotationTools::universePoint(float x, float y) const
{
    return conv::numberText(canvasToUniverseX(d, x)) + u',' + conv::numberText(canvasToUniverseY(d, y));
}

void AnnotationTools::lineStep(float x, float y)
{
    if (startBand(x, y))
        return;
    m_line.x2 = x;
    m_line.y2 = y;
    setPen();
    canvas.line(m_line.x1, m_line.y1, m_line.x2, m_line.y2, drawColour(d.DrawColourIndex));
    m_line.visible = false;
    d.AnnotationText += QStringLiteral("L,") + universePoint(m_line.x1, m_line.y1) + u',' +
                        universePoint(m_line.x2, m_line.y2) + u',' + QString::number(d.DrawColourIndex) + CrLf;
}

void AnnotationTools::circleStep(float x, float y)
{
    if (startBand(x, y))
        return;
    m_line.x2 = x;
    m_line.y2 = y;
    setPen();
    const double dx = m_line.x1 - m_line.x2, dy = m_line.y1 - m_line.y2;
    const int32_t r = conv::toInt32(std::sqrt(dy * dy + dx * dx));
    // The fill is left as the last drawing set it: after an overlay that
    // fills solid, the circle comes out filled.
    canvas.circle(m_line.x1, m_line.y1, float(r), drawColour(d.DrawColourIndex));
    m_line.visible = false;
    d.AnnotationText += QStringLiteral("C,") + universePoint(m_line.x1, m_line.y1) + u',' +
                        conv::numberText(std::floor(r / d.Scale)) + u',' + QString::number(d.DrawColourIndex) + CrLf;
}

void AnnotationTools::textStep(float x, float y, InteractionHost &host)
{
    const QString text = host.askText(QStringLiteral("Enter text to add here"), QStringLiteral("Enter Text"), QString());
    const double size =
        conv::val(host.askText(QStringLiteral("Enter size of font (minimum 8)"), QStringLiteral("Enter size"),
                               QStringLiteral("8")));
    if (text.isEmpty() || size < 8)
        return;
    DrawingState &s = canvas.state();
    s.CurrentX = x;
    s.CurrentY = y;
    s.ForeColor = rgb(255, 255, 255);
    s.FontSize = size;
    canvas.print(text);
    d.AnnotationText += QStringLiteral("T,") + universePoint(x, y) + u',' + text + u',' + conv::numberText(size) + CrLf;
}

void AnnotationTools::colourClick(int index)
{
    d.DrawColourIndex = int16_t(index + 1);
    m_line.colour = drawColour(d.DrawColourIndex);
}

QString AnnotationTools::save() const
{
    const QString shown = QDir::toNativeSeparators(d.AnnotationFilePath);
    if (d.AnnotationFilePath.isEmpty())
        return QStringLiteral("No game is loaded: there is no annotation file to save to.");
    QSaveFile file(d.AnnotationFilePath);
    const QByteArray bytes = encodeWindows1252(d.AnnotationText);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        return QStringLiteral("%1: the annotations could not be saved (%2)").arg(shown, file.errorString());
    return QStringLiteral("Saved to ") + shown;
}

void AnnotationTools::clear(OverlayButtons &buttons, InteractionHost &host)
{
    d.AnnotationText.clear();
    buttons.setPressed(VmkButton, false);
    host.redraw();
}
