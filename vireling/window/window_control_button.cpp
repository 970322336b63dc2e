#include "vireling/window/window_control_button.h"

#include <QAction>
#include <QActionEvent>
#include <QStyle>

namespace Vireling {

WindowControlButton::WindowControlButton(WindowControl control, QAction *action, QWidget *parent)
    : QToolButton(parent)
    , ownControl(control)
{
    setAutoRaise(true);
    // Tab and Return belong to what the window shows; the keyboard reaches the
    // controls through the menu of the title bar.
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setDefaultAction(action);
    setVisible(action->isVisible());
}

void WindowControlButton::forgetPointer()
{
    setDown(false);
    setAttribute(Qt::WA_UnderMouse, false);
    update();
}

QSize WindowControlButton::sizeHint() const
{
    const int side = style()->pixelMetric(QStyle::PM_TitleBarButtonSize, nullptr, this);
    return {side, side};
}

void WindowControlButton::actionEvent(QActionEvent *event)
{
    QToolButton::actionEvent(event);
    if (event->type() == QEvent::ActionChanged && defaultAction())
        setVisible(defaultAction()->isVisible());
}

} // namespace Vireling
