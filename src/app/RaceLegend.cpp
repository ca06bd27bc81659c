#include "RaceLegend.h"

#include "Colour.h"
#include "GameData.h"

#include <QLabel>
#include <QPainter>

RaceSwatch::RaceSwatch(QWidget *parent) : QAbstractButton(parent)
{
    setToolTip(QStringLiteral("Click to Change Colour"));
    setAccessibleName(toolTip());
    setFixedSize(28, 18);
}

void RaceSwatch::setColour(const QColor &colour)
{
    m_colour = colour;
    // The colour is what the swatch shows: screen readers get it in words.
    setAccessibleDescription(QStringLiteral("%1 in red %2, green %3, blue %4")
                                 .arg(m_race, QString::number(colour.red()), QString::number(colour.green()),
                                      QString::number(colour.blue())));
    update();
}

void RaceSwatch::setRace(const QString &race, const QColor &colour)
{
    m_race = race;
    setColour(colour);
}

void RaceSwatch::paintEvent(QPaintEvent *)
{
    // A solid disc in the race colour with black diagonal cross hatching
    // over it, large enough to cover the whole swatch.
    QPainter p(this);
    p.fillRect(rect(), Qt::black);
    const double radius = std::hypot(width(), height());
    p.setPen(Qt::NoPen);
    p.setBrush(m_colour);
    p.drawEllipse(QPointF(0, 0), radius, radius);
    p.setBrush(QBrush(Qt::black, Qt::DiagCrossPattern));
    p.drawEllipse(QPointF(0, 0), radius, radius);
    if (hasFocus()) {
        p.setBrush(Qt::NoBrush);
        p.setPen(QPen(palette().color(QPalette::Highlight), 2));
        p.drawRect(QRectF(rect()).adjusted(1, 1, -1, -1));
    }
}

RaceLegend::RaceLegend(QWidget *parent)
{
    for (int i = 0; i < 16; ++i) {
        auto *label = new QLabel(parent);
        label->setTextFormat(Qt::PlainText);
        label->setObjectName(QStringLiteral("Race%1").arg(i));
        label->resize(150, RowHeight);
        auto *swatch = new RaceSwatch(parent);
        swatch->setObjectName(QStringLiteral("RaceC%1").arg(i));
        swatch->hide();
        m_labels[size_t(i)] = label;
        m_swatches[size_t(i)] = swatch;
    }
}

void RaceLegend::clear()
{
    for (int i = 0; i < 16; ++i) {
        m_names[size_t(i)].clear();
        showName(i);
        m_swatches[size_t(i)]->hide();
    }
}

void RaceLegend::show(const GameData &d)
{
    for (int k = 1; k <= 16; ++k) {
        const QString name = d.player(k)[RaceName].text();
        m_names[size_t(k - 1)] = name;
        showName(k - 1);
        const int32_t c = d.raceColour(k);
        m_swatches[size_t(k - 1)]->setRace(name, QColor(redOf(c), greenOf(c), blueOf(c)));
        m_swatches[size_t(k - 1)]->setVisible(!name.isEmpty());
    }
}

void RaceLegend::place(int labelLeft, int swatchLeft, int top)
{
    for (int i = 0; i < 16; ++i) {
        m_labels[size_t(i)]->setGeometry(labelLeft, top + i * RowPitch, swatchLeft - 4 - labelLeft, RowHeight);
        m_swatches[size_t(i)]->move(swatchLeft, top + i * RowPitch);
        showName(i);
    }
}

void RaceLegend::showName(int i)
{
    QLabel *label = m_labels[size_t(i)];
    const QString &name = m_names[size_t(i)];
    const QString shown = label->fontMetrics().elidedText(name, Qt::ElideRight, label->width());
    label->setText(shown);
    label->setToolTip(shown == name ? QString() : name);
    label->setAccessibleName(name);
}
