#include "EmpireStatWindow.h"

#include "EmpireStatistics.h"
#include "FigureName.h"
#include "MessageSink.h"
#include "ScreenFit.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

struct TotalRow {
    const char *label;
    int field;
    const char *placeholder; // stands in the value until a race is shown
    const char *average;     // what the AvgData value is, for screen readers
    int averageIndex;        // AvgData index, or -1
};

// The placeholders of the mines, factories and resources rows name the
// neighbouring row; the row labels say what the values are.
const TotalRow TotalRows[] = {
    {"Total Planets:", TotalPlanets, "Total Planets", nullptr, -1},
    {"Major Planets:", MajorPlanets, "Major Planets", nullptr, -1},
    {"Population:", TotalPopulation, "Total Population", "Average Population", 0},
    {"Mines:", TotalMines, "Total Resources", "Average Mines", 1},
    {"Factories:", TotalFactories, "Total Mines", "Average Factories", 2},
    {"Resources:", TotalResources, "Total Factories", "Average Resources", 3},
    {"Territory:", Territory, "Territory", nullptr, -1},
    {"Ironium (k):", TotalIron, "Total Iron", "Average Ironium (k)", 4},
    {"Boranium (k):", TotalBora, "Total Bora", "Average Boranium (k)", 5},
    {"Germanium (k):", TotalGerm, "Total Germ", "Average Germanium (k)", 6},
};

struct RangeRow {
    const char *label;
    int low;
    const char *lowPlaceholder;
    const char *highPlaceholder;
};

const RangeRow RangeRows[] = {
    {"Gravity:", MinGrav, "Min Grav", "Max Grav"},
    {"Temperature:", MinTemp, "Min Temp", "Max Temp"},
    {"Radiation:", MinRad, "Min Rad", "Max Rad"},
};

QLabel *heading(const char *text)
{
    return new QLabel(QString::fromLatin1(text));
}

} // namespace

template <typename Widget>
void EmpireStatWindow::showFigure(const Figure<Widget> &figure, const QString &text)
{
    figure.widget->setText(text);
    figure.widget->setAccessibleName(figureName(figure.caption, text));
}

EmpireStatWindow::EmpireStatWindow(GameData &data, QWidget *parent) : QDialog(parent), m_data(data)
{
    setObjectName(QStringLiteral("EmpireStat"));
    setWindowTitle(QStringLiteral("Empire Statistics"));
    setModal(true);
    auto *layout = new QVBoxLayout(this);

    auto *choice = new QHBoxLayout;
    auto *comboLabel = heading("Select an Empire:");
    m_combo = new QComboBox;
    m_combo->setObjectName(QStringLiteral("Combo1"));
    m_combo->setAccessibleName(QStringLiteral("Select an Empire:"));
    m_combo->setPlaceholderText(QStringLiteral("Select an Empire"));
    m_combo->setMinimumWidth(180);
    comboLabel->setBuddy(m_combo);
    choice->addWidget(comboLabel);
    choice->addWidget(m_combo, 1);
    layout->addLayout(choice);

    auto *totals = new QGridLayout;
    totals->addWidget(heading("Total:"), 0, 1);
    totals->addWidget(heading("Average:"), 0, 2);
    int row = 1;
    for (const TotalRow &r : TotalRows) {
        // A total is read as itself, labelled by its row's caption.
        QLabel *caption = heading(r.label);
        QLabel *total = addValue(r.field, QString::fromLatin1(r.placeholder));
        caption->setBuddy(total);
        totals->addWidget(caption, row, 0);
        totals->addWidget(total, row, 1);
        if (r.averageIndex >= 0) {
            auto *average = new QLabel;
            average->setObjectName(QStringLiteral("AvgData%1").arg(r.averageIndex));
            m_averages[size_t(r.averageIndex)] = {average, QString::fromLatin1(r.average)};
            showFigure(m_averages[size_t(r.averageIndex)], QStringLiteral("Average"));
            totals->addWidget(average, row, 2);
        }
        ++row;
    }
    m_totals[MajorPlanets]->setToolTip(QStringLiteral("Planets with a population more then 245000"));
    m_totals[Territory]->setToolTip(QStringLiteral("Total Territory in ly"));
    layout->addLayout(totals);

    auto *rangeBox = new QGroupBox;
    auto *ranges = new QGridLayout(rangeBox);
    ranges->addWidget(heading("Low:"), 0, 1);
    ranges->addWidget(heading("High:"), 0, 2);
    row = 1;
    for (const RangeRow &r : RangeRows) {
        const QString axis = QString::fromLatin1(r.label).chopped(1);
        ranges->addWidget(heading(r.label), row, 0);
        for (int side = 0; side < 2; ++side) {
            const int field = r.low + side;
            auto *value = new QPushButton;
            value->setObjectName(QStringLiteral("ShowData%1").arg(field));
            m_ranges[size_t(field - MinGrav)] = {value, axis + (side == 0 ? QStringLiteral(" Low") : QStringLiteral(" High"))};
            showFigure(m_ranges[size_t(field - MinGrav)],
                       QString::fromLatin1(side == 0 ? r.lowPlaceholder : r.highPlaceholder));
            value->setFlat(true);
            value->setCursor(Qt::PointingHandCursor);
            value->setToolTip(QStringLiteral("Click to change"));
            value->setAutoDefault(false);
            connect(value, &QPushButton::clicked, this, [this, field] { editRange(field); });
            ranges->addWidget(value, row, 1 + side);
        }
        ++row;
    }
    auto *note = new QLabel(QStringLiteral("Estimated Hab ranges calculated from supplied data. Click on a value to "
                                           "change. This effects the estimated hab % display/calculations."));
    note->setWordWrap(true);
    ranges->addWidget(note, row, 0, 1, 3);
    layout->addWidget(rangeBox);

    auto *buttons = new QDialogButtonBox;
    QPushButton *close = buttons->addButton(QStringLiteral("Close"), QDialogButtonBox::AcceptRole);
    close->setObjectName(QStringLiteral("OK"));
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    layout->addWidget(buttons);

    for (int k = 1; k <= m_data.PlayerCount; ++k)
        m_combo->addItem(m_data.player(k)[RaceName].text());
    m_combo->setCurrentIndex(m_combo->findText(m_data.OwnRaceName, Qt::MatchExactly | Qt::MatchCaseSensitive));
    connect(m_combo, &QComboBox::currentTextChanged, this, &EmpireStatWindow::showRace);
    showRace();
    keepHeightForWidth(this);
}

QLabel *EmpireStatWindow::addValue(int index, const QString &placeholder)
{
    auto *label = new QLabel(placeholder);
    label->setObjectName(QStringLiteral("ShowData%1").arg(index));
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_totals[size_t(index)] = label;
    return label;
}

QString EmpireStatWindow::shown(int index) const
{
    if (index >= MinGrav && index <= MaxRad)
        return rangeValue(index)->text();
    return m_totals[size_t(index)]->text();
}

QString EmpireStatWindow::average(int index) const
{
    return m_averages[size_t(index)].widget->text();
}

void EmpireStatWindow::showRace()
{
    // The list holds the races in column order, so an entry's number is
    // the race's column.
    for (int entry = 1; entry <= m_combo->count(); ++entry) {
        const PlayerInfo &race = m_data.player(entry);
        if (!race[RaceName].is(m_combo->currentText()))
            continue;
        for (int field = MajorPlanets; field <= TotalGerm; ++field) {
            if (field >= MinGrav && field <= MaxRad)
                showFigure(m_ranges[size_t(field - MinGrav)], race[field].text());
            else
                m_totals[size_t(field)]->setText(race[field].text());
        }
        m_race = uint8_t(entry);
    }
    if (m_race == 0)
        return;
    const auto averages = empireAverages(m_data.player(m_race));
    for (size_t k = 0; k < averages.size(); ++k)
        showFigure(m_averages[k], averages[k]);
}

void EmpireStatWindow::editRange(int field)
{
    if (m_race == 0)
        return;
    PlayerInfo &race = m_data.player(m_race);
    const QString prompt = QString::fromLatin1(rangeBound(race, field).prompt) + race[RaceName].text();
    const QString answer = messageSink().input(this, QStringLiteral("Enter New Value"), prompt, race[field].text());
    switch (applyRangeAnswer(race, field, answer)) {
    case RangeAnswer::Stored:
        showFigure(m_ranges[size_t(field - MinGrav)], race[field].text());
        break;
    case RangeAnswer::Refused:
        messageSink().information(this, rangeRefusedMessage());
        break;
    case RangeAnswer::Unchanged:
        break;
    }
}
