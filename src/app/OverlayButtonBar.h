#pragma once
// The eleven overlay buttons on screen: checkable buttons with drawn icons
// and tips that mirror the core's OverlayButtons in both directions.

#include <QWidget>
#include <array>

class OverlayButtons;
class QToolButton;

class OverlayButtonBar : public QWidget {
    Q_OBJECT
public:
    OverlayButtonBar(OverlayButtons &buttons, QWidget *parent = nullptr);

    QToolButton *button(int i) const { return m_buttons[size_t(i)]; }
    // Shows the core state of button i.
    void mirror(int i);

signals:
    // The user pressed or released button i (its value is already set).
    void clicked(int i);

private:
    OverlayButtons &m_state;
    std::array<QToolButton *, 11> m_buttons{};
};
