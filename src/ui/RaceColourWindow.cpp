#include "RaceColourWindow.h"

#include "RaceColourChoice.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

RaceColourPreview::RaceColourPreview(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("Picture1"));
    setAccessibleName(QStringLiteral("Preview"));
    setFixedSize(96, 96);
}

void RaceColourPreview::setColour(const QColor &colour)
{
    m_colour = colour;
    update();
}

void RaceColourPreview::paintEvent(QPaintEvent *)
{
    // The colour as the map shows a race's territory: a disc under black
    // cross hatching, on the map's black.
    QPainter p(this);
    p.fillRect(rect(), Qt::black);
    const double h = height(), w = width();
    const QPointF centre(h / 2, w / 2);
    p.setPen(Qt::black);
    p.setBrush(m_colour);
    p.drawEllipse(centre, w / 3, w / 3);
    p.setBrush(QBrush(Qt::black, Qt::DiagCrossPattern));
    p.drawEllipse(centre, w / 3, w / 3);
}

RaceColourWindow::RaceColourWindow(GameData &data, QWidget *parent) : QDialog(parent), m_data(data)
{
    setObjectName(QStringLiteral("RaceColour"));
    setWindowTitle(QStringLiteral("Edit race colour"));
    setModal(true);

    m_race = new QLabel;
    m_race->setObjectName(QStringLiteral("RaceName"));
    m_race->setTextFormat(Qt::PlainText);

    auto *sliders = new QFormLayout;
    const char *names[3][2] = {{"RedSlide", "Red"}, {"GreenSlide", "Green"}, {"BlueSlide", "Blue"}};
    for (size_t i = 0; i < 3; ++i) {
        auto *slider = new QSlider(Qt::Horizontal);
        slider->setObjectName(QString::fromLatin1(names[i][0]));
        slider->setAccessibleName(QString::fromLatin1(names[i][1]));
        slider->setRange(0, 255);
        slider->setSingleStep(1);
        slider->setPageStep(10);
        slider->setMinimumWidth(200);
        connect(slider, &QSlider::valueChanged, this, &RaceColourWindow::slidersChanged);
        m_sliders[i] = slider;
        sliders->addRow(QString::fromLatin1(names[i][1]), slider);
    }

    m_preview = new RaceColourPreview;
    auto *row = new QHBoxLayout;
    row->addLayout(sliders, 1);
    row->addWidget(m_preview);

    m_tooDark = new QLabel(QStringLiteral("Too dark for the black map: red + green + blue must reach %1")
                               .arg(MinimumColourSum));
    m_tooDark->setObjectName(QStringLiteral("TooDark"));
    // The line comes and goes with the sliders; the window keeps its size.
    QSizePolicy keepPlace = m_tooDark->sizePolicy();
    keepPlace.setRetainSizeWhenHidden(true);
    m_tooDark->setSizePolicy(keepPlace);

    auto *buttons = new QDialogButtonBox;
    m_ok = buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole);
    m_ok->setObjectName(QStringLiteral("butOK"));
    m_ok->setDefault(true);
    connect(m_ok, &QPushButton::clicked, this, &RaceColourWindow::store);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_race);
    layout->addLayout(row);
    layout->addWidget(m_tooDark);
    layout->addWidget(buttons);
    slidersChanged();
}

void RaceColourWindow::openFor(int index)
{
    m_index = index;
    m_race->setText(QStringLiteral("Colour of ") + m_data.player(index + 1)[RaceName].text());
    const auto &c = m_data.RaceRGB[size_t(index)];
    for (size_t i = 0; i < 3; ++i)
        m_sliders[i]->setValue(c[i]);
    slidersChanged();
}

void RaceColourWindow::slidersChanged()
{
    const int r = m_sliders[0]->value(), g = m_sliders[1]->value(), b = m_sliders[2]->value();
    m_preview->setColour(QColor(r, g, b));
    m_ok->setEnabled(brightEnough(r, g, b));
    m_tooDark->setVisible(!m_ok->isEnabled());
}

void RaceColourWindow::store()
{
    const int r = m_sliders[0]->value(), g = m_sliders[1]->value(), b = m_sliders[2]->value();
    storeRaceColour(m_data, m_index + 1, r, g, b);
    emit colourStored(m_index, QColor(r, g, b));
    accept();
}
