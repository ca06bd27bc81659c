#include "OverlayButtonBar.h"

#include "OverlayButtons.h"
#include "OverlayIcons.h"

#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QToolButton>

namespace {

const char *const tips[OverlayButtonCount] = {
    "Clear Map", "Zoom In (Keeps existing Overlays)", "Show Universe", "Show Borders",
    "Show Biggest is Best Borders", "Show Hab values for your Race", "Show Planets Owned",
    "Show Current Scanned Planets", "Show Difficulty of Attack", "Show Growth", "Display VMK",
};

} // namespace

OverlayButtonBar::OverlayButtonBar(OverlayButtons &buttons, QWidget *parent) : QWidget(parent), m_state(buttons)
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    for (int i = 0; i < OverlayButtonCount; ++i) {
        auto *b = new QToolButton(this);
        b->setObjectName(QStringLiteral("OvButt%1").arg(i));
        b->setCheckable(true);
        b->setToolTip(QString::fromLatin1(tips[i]));
        // Icon-only buttons are named by their tips for screen readers.
        if (i != VmkButton)
            b->setAccessibleName(b->toolTip());
        b->setFixedSize(34, 34);
        if (i == VmkButton) {
            b->setText(QStringLiteral("VMK"));
            QFont font(QStringLiteral("Tahoma"));
            font.setBold(true);
            font.setPointSizeF(9.75);
            b->setFont(font);
            // As wide as its caption needs in the font at hand.
            b->setFixedWidth(qMax(34, b->fontMetrics().horizontalAdvance(b->text()) + 12));
        } else {
            b->setIcon(overlayIcon(i));
            b->setIconSize(QSize(24, 24));
        }
        // Toggled, not clicked: the accessibility interface's toggle action
        // changes the value without a click and must redraw all the same.
        connect(b, &QToolButton::toggled, this, [this, i](bool checked) {
            m_state.setPressedQuietly(i, checked);
            emit clicked(i);
        });
        layout->addWidget(b);
        m_buttons[size_t(i)] = b;
        mirror(i);
    }
    layout->addStretch();
}

void OverlayButtonBar::mirror(int i)
{
    QToolButton *b = m_buttons[size_t(i)];
    const QSignalBlocker block(b);
    b->setChecked(m_state.pressed(i));
    b->setEnabled(m_state.enabled(i));
}
