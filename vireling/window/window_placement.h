#pragma once

#include <QPoint>

class QWidget;

namespace Vireling {

/**
 * Where a window of `window`'s size lies in the middle of its parent's window, or of the
 * screen when it has no parent; never off the screen where it fits on it. Reckons with no
 * window manager's frame.
 */
QPoint middlePlace(const QWidget &window);

} // namespace Vireling
