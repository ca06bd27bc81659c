#pragma once
// Windows open within their screen's available area (the desktop less its
// panels), frame and title bar included.

#include <QSize>

class QWidget;

// `preferred`, made smaller where the screen that `window` opens on has
// less room; never below the window's minimum size.
QSize sizeWithinScreen(const QWidget *window, const QSize &preferred);

// Keeps a window whose layout wraps text at least as high as the wrapped
// text needs at its present width: the window system knows only a fixed
// minimum, and a narrower window needs more lines.
void keepHeightForWidth(QWidget *window);
