#pragma once
// The legend "Key": a fixed picture explaining the map's hab and growth
// colours, the starbase ring and the hatched territory disc. It depends on
// nothing loaded. The caller creates it once and shows it modally with
// exec() whenever asked; "OK" only hides it.

#include <QDialog>

class QPushButton;

class LegendWindow : public QDialog {
public:
    // The picture is laid out in twips, 15 to a logical pixel.
    static constexpr int TwipsPerPixel = 15;
    static constexpr int WidthTwips = 6375;
    static constexpr int HeightTwips = 4470;

    explicit LegendWindow(QWidget *parent = nullptr);

    QPushButton *okButton() const { return m_ok; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPushButton *m_ok = nullptr;
};
