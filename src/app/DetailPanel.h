#pragma once
// The planet detail panel on screen: four tabs ("Planet", "Minerals",
// "Pop.", "Hab") that show what the core's PlanetDetail holds, with the two
// mineral pies drawn by its pie boxes.

#include "PlanetDetail.h"

#include <QTabWidget>
#include <array>
#include <memory>

class QLabel;
class RasterSurface;

class DetailPanel : public QTabWidget {
    Q_OBJECT
public:
    explicit DetailPanel(PlanetDetail &detail, QWidget *parent = nullptr);
    ~DetailPanel() override;

    // Shows the core's texts and pies as they stand.
    void refresh();
    QLabel *valueLabel(int label) const { return m_values[size_t(label)]; }
    QLabel *raceName(int i) const { return m_raceNames[size_t(i)]; }
    QLabel *raceHab(int i) const { return m_raceHabs[size_t(i)]; }

private:
    QWidget *planetTab();
    QWidget *mineralsTab();
    QWidget *populationTab();
    QWidget *habTab();
    // A value label named after its field, labelled by `caption`'s label.
    QLabel *value(int label, QLabel *caption, QWidget *parent);
    // A value under a column heading, beside another row's caption: its
    // accessible name carries `caption` ("Gravity Original") and the value.
    QLabel *figure(int label, const QString &caption, QWidget *parent);

    PlanetDetail &m_detail;
    std::array<QLabel *, DetailLabelCount> m_values{};
    std::array<QString, DetailLabelCount> m_figureCaptions; // empty where a buddy labels the value
    std::array<QLabel *, MaxPlayers> m_raceNames{};
    std::array<QLabel *, MaxPlayers> m_raceHabs{};
    std::array<std::shared_ptr<RasterSurface>, 2> m_pieRasters;
    std::array<QLabel *, 2> m_pies{};
};
