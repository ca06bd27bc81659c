#pragma once
// "Edit race colour": red, green and blue sliders with a live preview of
// the colour under the black hatching the borders are drawn with. "OK"
// stores the colour in the game data and hides the window; colours too dark
// for the black map cannot be stored.

#include "GameData.h"

#include <QDialog>
#include <array>

class QLabel;
class QPushButton;
class QSlider;

class RaceColourPreview : public QWidget {
public:
    explicit RaceColourPreview(QWidget *parent = nullptr);
    void setColour(const QColor &colour);
    QColor colour() const { return m_colour; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_colour = Qt::black;
};

class RaceColourWindow : public QDialog {
    Q_OBJECT
public:
    explicit RaceColourWindow(GameData &data, QWidget *parent = nullptr);

    // Sets the sliders to the colour of swatch `index` (race index + 1).
    void openFor(int index);

    QSlider *slider(int component) const { return m_sliders[size_t(component)]; }
    QPushButton *okButton() const { return m_ok; }
    RaceColourPreview *preview() const { return m_preview; }
    // Which race the sliders colour.
    QLabel *raceShown() const { return m_race; }
    // Why "OK" is disabled, shown only while it is.
    QLabel *tooDarkNote() const { return m_tooDark; }

signals:
    // After "OK" has stored the colour of swatch `index`.
    void colourStored(int index, const QColor &colour);

private:
    void slidersChanged();
    void store();

    GameData &m_data;
    std::array<QSlider *, 3> m_sliders{};
    RaceColourPreview *m_preview = nullptr;
    QLabel *m_race = nullptr;
    QLabel *m_tooDark = nullptr;
    QPushButton *m_ok = nullptr;
    int m_index = 0;
};
