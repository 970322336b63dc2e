#include "vireling/window/dialog.h"

#include <QScreen>

#include <algorithm>

namespace Vireling {

namespace {

/** Where a span of that length lies in the middle of `around`, yet within `limits`. */
int centred(int length, int aroundStart, int aroundLength, int limitStart, int limitLength)
{
    const int start = aroundStart + (aroundLength - length) / 2;
    const int last = std::max(limitStart, limitStart + limitLength - length);
    return std::clamp(start, limitStart, last);
}

QPoint centredOn(const QSize &size, const QRect &around, const QRect &limits)
{
    return {centred(size.width(), around.x(), around.width(), limits.x(), limits.width()),
            centred(size.height(), around.y(), around.height(), limits.y(), limits.height())};
}

} // namespace

Dialog::Dialog(QWidget *parent, Qt::WindowFlags flags)
    : WindowProxy<QDialog>(parent, flags)
{}

Dialog::~Dialog() = default;

/**
 * QDialog would leave room for a window manager's frame, which the window does not have, and
 * place it when it is there already: a window manager's answer to the first place may come
 * after that and put children elsewhere.
 */
void Dialog::setVisible(bool visible)
{
    const bool isToBePlaced = visible && !isVisible() && !testAttribute(Qt::WA_Moved) &&
                              !isMaximized() && !isFullScreen();
    if (isToBePlaced)
        centre();
    WindowProxy<QDialog>::setVisible(visible);
    if (isToBePlaced)
        setAttribute(Qt::WA_Moved, false); // again when it is shown again
}

void Dialog::centre()
{
    ensurePolished();
    if (!testAttribute(Qt::WA_Resized)) {
        adjustSize();
        setAttribute(Qt::WA_Resized, false); // not by whoever uses the dialog
    }
    const QRect limits = screen()->availableGeometry();
    const QWidget *parent = parentWidget();
    move(centredOn(size(), parent ? parent->window()->geometry() : limits, limits));
}

} // namespace Vireling
