#pragma once
// The planet detail panel's contents: what a click on a planet shows on the
// panel's four tabs ("Planet", "Minerals", "Pop.", "Hab"). The window shows
// these texts and pies as they are; the command line writes them out.

#include "GameData.h"
#include "HabEstimate.h"
#include "PieBox.h"

#include <QString>
#include <array>
#include <stdexcept>

// The panel's value labels, in the order the command line writes them.
enum DetailLabel : int {
    PlanetNameLabel, StarsScoreLabel, OwnerLabel, StarbaseLabel, ReportAgeLabel, PopulationLabel, HabValueLabel,
    MinesLabel, FactoriesLabel, ResourcesLabel, DefenceLabel, SoiLabel, IronMctLabel, BoraMctLabel, GermMctLabel,
    IronMrLabel, BoraMrLabel, GermMrLabel, IronSLabel, BoraSLabel, GermSLabel, Grav1Label, Temp1Label, Rad1Label,
    Grav2Label, Temp2Label, Rad2Label
};
constexpr int DetailLabelCount = 27;
// The label's name: "PlanetName", "StarsScore", ... "Rad2".
const char *detailLabelName(int label);

// A planet whose panel could not be filled: the field whose value could not
// be converted or divided by. The labels filled before it keep their texts.
struct PanelFillError : std::runtime_error {
    PanelFillError(int row, const QString &planetName, const char *field, const QString &fault);
    // planet N "Name": FIELD: fault
    QString message;
};

class PlanetDetail {
public:
    std::array<QString, DetailLabelCount> labels;
    // The "Hab" tab: race names and each race's hab for the last planet.
    std::array<QString, MaxPlayers> RName;
    std::array<QString, MaxPlayers> RHab;
    PieBox Pie1; // mineral concentrations
    PieBox Pie2; // stored minerals

    // As a generation leaves the "Hab" tab: every label empty, then the
    // name of each race found.
    void nameRaces(const GameData &d);
    // Fills the panel from planet row `row`. `carry` holds the hab
    // estimate's working values, shared by every planet of one click.
    // PanelFillError when a value cannot be converted.
    void fill(const GameData &d, int row, HabCarry &carry);

private:
    void fillHabPerRace(const GameData &d, HabCarry &carry);
};
