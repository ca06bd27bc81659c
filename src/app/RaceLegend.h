#pragma once
// The race legend beside the map: for each of up to sixteen races its name
// and a hatched colour swatch, as the borders show them. A click on a
// swatch asks for a new colour. A name too long for its place is cut short
// with an ellipsis; its tip and its accessible name are the whole name.

#include <QAbstractButton>
#include <array>

class QLabel;
struct GameData;

class RaceSwatch : public QAbstractButton {
    Q_OBJECT
public:
    explicit RaceSwatch(QWidget *parent = nullptr);
    void setColour(const QColor &colour);
    void setRace(const QString &race, const QColor &colour);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_colour = Qt::black;
    QString m_race;
};

class RaceLegend {
public:
    static constexpr int RowPitch = 22;
    static constexpr int RowHeight = 18;

    explicit RaceLegend(QWidget *parent);
    void clear();
    void show(const GameData &data);
    // Places row i's label and swatch at the given left edges (pixels); the
    // label fills the room up to its swatch.
    void place(int labelLeft, int swatchLeft, int top);
    // The sixteen rows' height.
    static constexpr int height() { return 15 * RowPitch + RowHeight; }

    QLabel *label(int i) const { return m_labels[size_t(i)]; }
    RaceSwatch *swatch(int i) const { return m_swatches[size_t(i)]; }

private:
    void showName(int i);

    std::array<QString, 16> m_names;
    std::array<QLabel *, 16> m_labels{};
    std::array<RaceSwatch *, 16> m_swatches{};
};
