#include "DetailPanel.h"

#include "FigureName.h"
#include "MainWindowLayout.h"
#include "RasterSurface.h"

#include <QGridLayout>
#include <QLabel>
#include <QPixmap>

namespace {

// The pie boxes are 1680 twips square.
constexpr int PiePixels = 1680 / TwipsPerPixel;

QLabel *caption(const QString &text, QWidget *parent)
{
    return new QLabel(text, parent);
}

} // namespace

DetailPanel::DetailPanel(PlanetDetail &detail, QWidget *parent) : QTabWidget(parent), m_detail(detail)
{
    setObjectName(QStringLiteral("Detail"));
    setAccessibleName(QStringLiteral("Planet detail"));
    PieBox *boxes[2] = {&detail.Pie1, &detail.Pie2};
    for (size_t i = 0; i < 2; ++i) {
        m_pieRasters[i] = std::make_shared<RasterSurface>(PiePixels, devicePixelRatioF(), PieBox::Size);
        // The pies' black outlines need a light ground.
        m_pieRasters[i]->setBackground(palette().color(QPalette::Window).rgb());
        boxes[i]->canvas().addSurface(m_pieRasters[i]);
        boxes[i]->canvas().cls();
    }
    addTab(planetTab(), QStringLiteral("Planet"));
    addTab(mineralsTab(), QStringLiteral("Minerals"));
    addTab(populationTab(), QStringLiteral("Pop."));
    addTab(habTab(), QStringLiteral("Hab"));
}

DetailPanel::~DetailPanel() = default;

QLabel *DetailPanel::value(int label, QLabel *captionLabel, QWidget *parent)
{
    QLabel *v = figure(label, QString(), parent);
    captionLabel->setBuddy(v);
    return v;
}

QLabel *DetailPanel::figure(int label, const QString &caption, QWidget *parent)
{
    auto *v = new QLabel(parent);
    // Names and texts from the game's files are shown as they are, never as markup.
    v->setTextFormat(Qt::PlainText);
    v->setObjectName(QString::fromLatin1(detailLabelName(label)));
    v->setAccessibleDescription(QString::fromLatin1(detailLabelName(label)));
    v->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_values[size_t(label)] = v;
    m_figureCaptions[size_t(label)] = caption;
    return v;
}

QWidget *DetailPanel::planetTab()
{
    auto *tab = new QWidget(this);
    auto *grid = new QGridLayout(tab);
    QLabel *planet = caption(QStringLiteral("Planet:"), tab);
    grid->addWidget(planet, 0, 0);
    grid->addWidget(value(PlanetNameLabel, planet, tab), 0, 1, 1, 2);
    QLabel *hab = caption(QStringLiteral("Hab Value:"), tab);
    grid->addWidget(hab, 1, 0);
    grid->addWidget(value(HabValueLabel, hab, tab), 1, 1, 1, 2);
    grid->addWidget(caption(QStringLiteral("Current"), tab), 2, 1);
    grid->addWidget(caption(QStringLiteral("Original"), tab), 2, 2);
    const char *rows[3] = {"Gravity:", "Temperature:", "Radiation:"};
    const int current[3] = {Grav1Label, Temp1Label, Rad1Label};
    const int original[3] = {Grav2Label, Temp2Label, Rad2Label};
    for (int r = 0; r < 3; ++r) {
        QLabel *c = caption(QString::fromLatin1(rows[r]), tab);
        grid->addWidget(c, 3 + r, 0);
        grid->addWidget(value(current[r], c, tab), 3 + r, 1);
        grid->addWidget(figure(original[r], c->text().chopped(1) + QStringLiteral(" Original"), tab), 3 + r, 2);
    }
    grid->setRowStretch(6, 1);
    return tab;
}

QWidget *DetailPanel::mineralsTab()
{
    auto *tab = new QWidget(this);
    auto *grid = new QGridLayout(tab);
    grid->addWidget(caption(QStringLiteral("Stored:"), tab), 0, 1);
    grid->addWidget(caption(QStringLiteral("Conc.:"), tab), 0, 2);
    grid->addWidget(caption(QStringLiteral("Mining:"), tab), 0, 3);
    const char *minerals[3] = {"Ironium:", "Boranium:", "Germanium:"};
    const int stored[3] = {IronSLabel, BoraSLabel, GermSLabel};
    const int conc[3] = {IronMctLabel, BoraMctLabel, GermMctLabel};
    const int mining[3] = {IronMrLabel, BoraMrLabel, GermMrLabel};
    for (int r = 0; r < 3; ++r) {
        QLabel *c = caption(QString::fromLatin1(minerals[r]), tab);
        grid->addWidget(c, 1 + r, 0);
        grid->addWidget(value(stored[r], c, tab), 1 + r, 1);
        grid->addWidget(figure(conc[r], c->text().chopped(1) + QStringLiteral(" Conc."), tab), 1 + r, 2);
        grid->addWidget(figure(mining[r], c->text().chopped(1) + QStringLiteral(" Mining"), tab), 1 + r, 3);
    }
    const char *names[2] = {"Pie1", "Pie2"};
    const char *accessible[2] = {"Concentration pie", "Stored minerals pie"};
    for (size_t i = 0; i < 2; ++i) {
        m_pies[i] = new QLabel(tab);
        m_pies[i]->setObjectName(QString::fromLatin1(names[i]));
        m_pies[i]->setAccessibleName(QString::fromLatin1(accessible[i]));
        m_pies[i]->setFixedSize(PiePixels, PiePixels);
    }
    grid->addWidget(m_pies[0], 4, 0, 1, 2, Qt::AlignLeft);
    grid->addWidget(caption(QStringLiteral("< Conc."), tab), 5, 0);
    grid->addWidget(caption(QStringLiteral("Stored >"), tab), 5, 2, 1, 2, Qt::AlignRight);
    grid->addWidget(m_pies[1], 4, 2, 1, 2, Qt::AlignRight);
    grid->setRowStretch(6, 1);
    return tab;
}

QWidget *DetailPanel::populationTab()
{
    auto *tab = new QWidget(this);
    auto *grid = new QGridLayout(tab);
    // "Popluation:" is the caption players know from the first version on.
    const std::pair<const char *, int> rows[] = {
        {"Owner:", OwnerLabel},         {"Report Age:", ReportAgeLabel}, {"Popluation:", PopulationLabel},
        {"Starbase:", StarbaseLabel},   {"Defence:", DefenceLabel},      {"Mines:", MinesLabel},
        {"Factories:", FactoriesLabel}, {"Resources:", ResourcesLabel},  {"SOI:", SoiLabel},
        {"Stars! Score:", StarsScoreLabel},
    };
    int r = 0;
    for (const auto &[text, label] : rows) {
        QLabel *c = caption(QString::fromLatin1(text), tab);
        grid->addWidget(c, r, 0);
        grid->addWidget(value(label, c, tab), r, 1);
        ++r;
    }
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(r, 1);
    return tab;
}

QWidget *DetailPanel::habTab()
{
    auto *tab = new QWidget(this);
    auto *grid = new QGridLayout(tab);
    grid->setVerticalSpacing(2);
    // Two columns of eight races, down the first and then the second: the
    // page is no taller than the others.
    constexpr int Rows = MaxPlayers / 2;
    for (int i = 0; i < MaxPlayers; ++i) {
        m_raceNames[size_t(i)] = new QLabel(tab);
        m_raceNames[size_t(i)]->setObjectName(QStringLiteral("RName%1").arg(i));
        m_raceNames[size_t(i)]->setTextFormat(Qt::PlainText);
        m_raceHabs[size_t(i)] = new QLabel(tab);
        m_raceHabs[size_t(i)]->setObjectName(QStringLiteral("RHab%1").arg(i));
        m_raceHabs[size_t(i)]->setAccessibleDescription(QStringLiteral("RHab%1").arg(i));
        m_raceNames[size_t(i)]->setBuddy(m_raceHabs[size_t(i)]);
        grid->addWidget(m_raceNames[size_t(i)], i % Rows, 3 * (i / Rows));
        grid->addWidget(m_raceHabs[size_t(i)], i % Rows, 3 * (i / Rows) + 1);
    }
    grid->setColumnMinimumWidth(2, 8);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(3, 1);
    grid->setRowStretch(Rows, 1);
    return tab;
}

void DetailPanel::refresh()
{
    for (int i = 0; i < DetailLabelCount; ++i) {
        m_values[size_t(i)]->setText(m_detail.labels[size_t(i)]);
        if (!m_figureCaptions[size_t(i)].isEmpty())
            m_values[size_t(i)]->setAccessibleName(figureName(m_figureCaptions[size_t(i)], m_detail.labels[size_t(i)]));
    }
    for (int i = 0; i < MaxPlayers; ++i) {
        // A label with a buddy takes '&' for a shortcut mark; a race name's is its own.
        m_raceNames[size_t(i)]->setText(QString(m_detail.RName[size_t(i)]).replace(u'&', QStringLiteral("&&")));
        m_raceHabs[size_t(i)]->setText(m_detail.RHab[size_t(i)]);
    }
    for (size_t i = 0; i < 2; ++i) {
        QPixmap pie = QPixmap::fromImage(m_pieRasters[i]->image());
        pie.setDevicePixelRatio(m_pieRasters[i]->devicePixelRatio());
        m_pies[i]->setPixmap(pie);
    }
}
