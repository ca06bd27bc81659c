#pragma once
// "Empire Statistics": one race at a time, its totals as the generation
// gathered them, the averages per planet and its estimated habitability
// ranges. The ranges are the one thing the user may change here; a new
// bound is stored in the game data at once, where the next hab estimate
// reads it. A fresh window is made for every showing.

#include "GameData.h"

#include <QDialog>
#include <array>

class QComboBox;
class QLabel;
class QPushButton;

class EmpireStatWindow : public QDialog {
    Q_OBJECT
public:
    // Lists the races of `data` and shows the own race.
    explicit EmpireStatWindow(GameData &data, QWidget *parent = nullptr);

    QComboBox *raceList() const { return m_combo; }
    // The caption of ShowData(index), 2..17.
    QString shown(int index) const;
    // The caption of AvgData(index), 0..6.
    QString average(int index) const;
    // The clickable value of a bound, MinGrav..MaxRad.
    QPushButton *rangeValue(int field) const { return m_ranges[size_t(field - MinGrav)].widget; }
    int shownRace() const { return m_race; }

    // Shows the race named in the race list, if any.
    void showRace();
    // Asks for a new value of bound `field` of the race shown.
    void editRange(int field);

private:
    // A value that shares its caption with others in its table's row: the
    // averages under "Average:", the bounds under "Low:" and "High:".
    template <typename Widget>
    struct Figure {
        Widget *widget = nullptr;
        QString caption; // for screen readers: "Average Population", "Gravity Low"
    };
    template <typename Widget>
    static void showFigure(const Figure<Widget> &figure, const QString &text);
    QLabel *addValue(int index, const QString &placeholder);

    GameData &m_data;
    QComboBox *m_combo = nullptr;
    std::array<QLabel *, PlayerFieldCount + 1> m_totals{}; // by field number; 2..7, 14..17
    std::array<Figure<QPushButton>, 6> m_ranges{}; // MinGrav..MaxRad
    std::array<Figure<QLabel>, 7> m_averages{};
    // The race column shown; 0 until a race has been shown.
    uint8_t m_race = 0;
};
