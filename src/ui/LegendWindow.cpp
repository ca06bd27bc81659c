#include "LegendWindow.h"

#include <QPainter>
#include <QPushButton>
#include <QStringList>
#include <iterator>
#include <utility>

namespace {

constexpr double pixels(double twips)
{
    return twips / LegendWindow::TwipsPerPixel;
}

QRectF box(double x, double y, double width, double height)
{
    return QRectF(pixels(x), pixels(y), pixels(width), pixels(height));
}

QRectF circleAround(double cx, double cy, double diameter)
{
    return box(cx - diameter / 2, cy - diameter / 2, diameter, diameter);
}

// A circle shape takes the smaller side of its box as diameter and sits in
// the middle of the box.
QRectF circleIn(const QRectF &b)
{
    const double d = qMin(b.width(), b.height());
    return QRectF(b.center().x() - d / 2, b.center().y() - d / 2, d, d);
}

QFont labelFont(double points)
{
    QFont font;
    font.setFamilies({QStringLiteral("Tahoma"), QStringLiteral("Verdana"), QStringLiteral("DejaVu Sans")});
    font.setStyleHint(QFont::SansSerif);
    font.setPointSizeF(points);
    font.setBold(true);
    return font;
}

const QColor Grey(192, 192, 192);
const QColor Teal(0, 192, 192);
const QColor Yellow(255, 255, 0);

struct Cell {
    int x;
    const char *text;
    QColor colour;
    int diameter;
    const char *colourName; // the colour in words, for screen readers
};

// Columns of both tables are 945 twips wide; each text box is 750 wide and
// its circle is centred under it.
const Cell HabCells[] = {
    {1575, "-45%", QColor(255, 0, 0), 435, "large red disc"},
    {2520, "-20%", QColor(255, 0, 0), 345, "red disc"},
    {3465, "-10% to -1%", QColor(255, 0, 255), 300, "small magenta disc"},
    {4410, "0% to 10%", QColor(255, 255, 0), 300, "small yellow disc"},
    {5355, "45%", QColor(0, 255, 0), 435, "large green disc"},
};

const Cell GrowthCells[] = {
    {1575, "High Death", QColor(0, 0, 255), 345, "blue"},
    {2520, "Low Death", QColor(255, 0, 255), 345, "magenta"},
    {3465, "Low Growth", QColor(255, 0, 0), 345, "red"},
    {4410, "Average Growth", QColor(255, 128, 0), 345, "orange"},
    {5355, "High Growth", QColor(0, 255, 0), 345, "green"},
};

constexpr int CellTextWidth = 750;
constexpr int CellTextHeight = 435;

void disc(QPainter &p, const QRectF &b, const QColor &colour)
{
    p.setPen(Qt::NoPen);
    p.setBrush(colour);
    p.drawEllipse(circleIn(b));
}

void ring(QPainter &p, const QRectF &b, const QColor &colour, int width)
{
    // The rim stays inside the shape's box.
    const double inset = width / 2.0;
    p.setPen(QPen(colour, width));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(circleIn(b).adjusted(inset, inset, -inset, -inset));
}

void label(QPainter &p, const QRectF &b, const QString &text, Qt::Alignment align)
{
    // Not clipped: a fallback for Tahoma may need a line more than the box.
    p.drawText(b, int(align | Qt::AlignTop) | Qt::TextWordWrap | Qt::TextDontClip, text);
}

static_assert(std::size(HabCells) == std::size(GrowthCells));

// The picture in words: what each shape and colour of the map means.
QString keyInWords()
{
    QStringList parts;
    for (const auto &[title, cells] : {std::pair{"Hab Ranges", HabCells}, std::pair{"Growth", GrowthCells}}) {
        QStringList entries;
        for (size_t i = 0; i < std::size(HabCells); ++i)
            entries << QStringLiteral("%1 %2").arg(QString::fromLatin1(cells[i].colourName), QString::fromLatin1(cells[i].text));
        parts << QString::fromLatin1(title) + QStringLiteral(": ") + entries.join(QStringLiteral(", "));
    }
    parts << QStringLiteral("Planet with a Starbase or Orbital Fort: teal disc in a yellow ring")
          << QStringLiteral("Boundary for a Race: disc of teal cross hatching");
    return parts.join(QStringLiteral(". ")) + u'.';
}

} // namespace

LegendWindow::LegendWindow(QWidget *parent) : QDialog(parent)
{
    setWindowTitle(QStringLiteral("Key"));
    setModal(true);
    setFixedSize(qRound(pixels(WidthTwips)), qRound(pixels(HeightTwips)));
    // Everything else is painted, out of screen readers' reach.
    setAccessibleDescription(keyInWords());

    m_ok = new QPushButton(QStringLiteral("OK"), this);
    m_ok->setObjectName(QStringLiteral("Command1"));
    m_ok->setGeometry(box(5175, 3870, 1050, 465).toRect());
    connect(m_ok, &QPushButton::clicked, this, &QDialog::accept);
}

void LegendWindow::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.fillRect(rect(), Qt::black);

    // Table frame: a title column and five columns; the hab table takes the
    // two upper rows, the growth table the two lower ones.
    p.setPen(QPen(Grey, 1));
    auto hLine = [&p](int x1, int x2, int y) { p.drawLine(QPointF(pixels(x1), pixels(y)), QPointF(pixels(x2), pixels(y))); };
    auto vLine = [&p](int x, int y1, int y2) { p.drawLine(QPointF(pixels(x), pixels(y1)), QPointF(pixels(x), pixels(y2))); };
    for (int x : {105, 2415, 3360, 4305, 5250, 6195})
        vLine(x, 105, 2625);
    vLine(1470, 105, 2610);
    for (int y : {105, 1365, 2610})
        hLine(105, 6195, y);
    for (int y : {735, 1995})
        hLine(1470, 6210, y);

    // Shapes before texts, so that no text disappears under one. The hab
    // circles sit in the middle of the lower hab row, the growth circles
    // hang from y = 2150; both are centred under their column's text.
    for (const Cell &cell : HabCells)
        disc(p, circleAround(cell.x + CellTextWidth / 2.0, (735 + 1365) / 2.0, cell.diameter), cell.colour);
    for (const Cell &cell : GrowthCells)
        disc(p, circleAround(cell.x + CellTextWidth / 2.0, 2150 + cell.diameter / 2.0, cell.diameter), cell.colour);

    // Owned planet with a starbase.
    disc(p, box(540, 3240, 375, 375), Teal);
    ring(p, box(450, 3150, 555, 555), Yellow, 2);

    // A race's territory: the hatched disc of "Show Borders" around a planet.
    p.setPen(Qt::NoPen);
    p.setBrush(QBrush(Teal, Qt::DiagCrossPattern));
    p.drawEllipse(circleIn(box(3105, 2790, 1635, 1635)));
    disc(p, box(3915, 3510, 195, 195), Teal);
    ring(p, box(3870, 3465, 285, 285), Yellow, 1);

    p.setPen(Qt::white);
    p.setFont(labelFont(12));
    label(p, box(180, 495, 1170, 615), QStringLiteral("Hab Ranges"), Qt::AlignHCenter);
    label(p, box(225, 1890, 1170, 390), QStringLiteral("Growth"), Qt::AlignHCenter);

    p.setFont(labelFont(8.25));
    for (const Cell &cell : HabCells)
        label(p, box(cell.x, 210, CellTextWidth, CellTextHeight), QString::fromLatin1(cell.text), Qt::AlignHCenter);
    for (const Cell &cell : GrowthCells)
        label(p, box(cell.x, 1470, CellTextWidth, CellTextHeight), QString::fromLatin1(cell.text), Qt::AlignHCenter);
    label(p, box(1125, 3240, 1995, 465), QStringLiteral("Planet with a Starbase or Orbital Fort"), Qt::AlignLeft);
    label(p, box(4725, 2880, 1230, 420), QStringLiteral("Boundary for a Race"), Qt::AlignLeft);
}
