#include "vireling/window/dialog.h"

#include "vireling/window/window_placement.h"

namespace Vireling {

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
    move(middlePlace(*this));
}

} // namespace Vireling
