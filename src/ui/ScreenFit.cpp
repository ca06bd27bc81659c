#include "ScreenFit.h"

#include <QEvent>
#include <QLayout>
#include <QScreen>
#include <QWidget>

namespace {

// The frame the window system adds, where it has not told it yet: a title
// bar and thin borders.
constexpr QSize UsualFrame(8, 34);

} // namespace

QSize sizeWithinScreen(const QWidget *window, const QSize &preferred)
{
    const QScreen *screen = window->screen();
    if (!screen)
        return preferred;
    const QSize shownFrame = window->frameGeometry().size() - window->size();
    const QSize frame = shownFrame.height() > 0 ? shownFrame : UsualFrame;
    return preferred.boundedTo(screen->availableGeometry().size() - frame).expandedTo(window->minimumSize());
}

namespace {

class HeightForWidth : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Resize && event->type() != QEvent::LayoutRequest)
            return false;
        auto *window = static_cast<QWidget *>(watched);
        if (QLayout *layout = window->layout(); layout && layout->hasHeightForWidth())
            window->setMinimumHeight(
                qMax(layout->totalMinimumSize().height(), layout->totalHeightForWidth(window->width())));
        return false;
    }
};

} // namespace

void keepHeightForWidth(QWidget *window)
{
    window->installEventFilter(new HeightForWidth(window));
}
