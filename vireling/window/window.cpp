#include "vireling/window/window.h"

#include "vireling/window/screen_changes.h"
#include "vireling/window/window_proxy_base.h"

#include <QEvent>
#include <QScreen>
#include <QWindow>

namespace Vireling {

Window::Window(WindowProxyBase &watchingProxy)
    : proxy(watchingProxy)
{}

void Window::watch()
{
    window->installEventFilter(this);
    titleBar()->installEventFilter(this);
    connect(titleBar(), &WindowTitleBar::controlTriggered, this,
            [this](WindowControl control) { proxy.triggerControl(control); });
    const auto handle = [this](WindowOperation operation) { proxy.handleOperation(operation); };
    connect(titleBar(), &WindowTitleBar::operationRequested, this, handle);
    connect(resizeArea(), &WindowResizeArea::operationRequested, this, handle);
}

bool Window::eventFilter(QObject *watched, QEvent *event)
{
    if (window && watched == window)
        windowEvent(event->type());
    else if (titleBar() && watched == titleBarObject)
        titleBarEvent(event->type());
    return QObject::eventFilter(watched, event);
}

void Window::windowEvent(QEvent::Type type)
{
    switch (type) {
    case QEvent::Resize:
        proxy.placeParts();
        break;
    case QEvent::Show:
        shownOrStateChanged();
        watchScreens();
        break;
    case QEvent::WindowStateChange:
        shownOrStateChanged();
        break;
    case QEvent::WindowTitleChange:
    case QEvent::ModifiedChange:
        proxy.updateTitle();
        break;
    case QEvent::WindowIconChange:
        proxy.updateIcon();
        break;
    case QEvent::StyleChange:
        if (!frameWidth)
            proxy.updateMargins();
        break;
    case QEvent::Paint:
        proxy.paintFrame();
        break;
    default:
        break;
    }
}

void Window::titleBarEvent(QEvent::Type type)
{
    switch (type) {
    case QEvent::StyleChange: // also tells of another height
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
        proxy.updateContentsMargins();
        break;
    default:
        break;
    }
}

void Window::shownOrStateChanged()
{
    proxy.updateControls();
    if (titleBar())
        titleBar()->refreshMaximisedState();
    if (resizeArea())
        resizeArea()->raise(); // above what was put into the window since
}

void Window::watchScreens()
{
    QWindow *const native = window->windowHandle();
    if (!native)
        return;
    watchScreen(native->screen());
    connect(native, &QWindow::screenChanged, this, &Window::followScreen, Qt::UniqueConnection);
}

void Window::followScreen(QScreen *screen)
{
    if (window && window->windowHandle())
        forwardScreenChange(*window->windowHandle(), screen);
}

} // namespace Vireling
