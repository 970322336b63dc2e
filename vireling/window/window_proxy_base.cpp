#include "vireling/window/window_proxy_base.h"

#include "vireling/window/frame_line.h"
#include "vireling/window/window.h"
#include "vireling/window/window_control.h"
#include "vireling/window/window_edges.h"

#include <QAction>
#include <QPainter>
#include <QStyle>
#include <QWindow>

namespace Vireling {

namespace {

/** The title with the placeholder for unsaved changes filled in, as window managers do. */
QString displayedTitle(const QWidget &window)
{
    const QString mark = window.isWindowModified() ? QStringLiteral("*") : QString();
    return window.windowTitle().replace(QLatin1String("[*]"), mark);
}

/** A child of a window that was not shown yet counts as visible unless someone hid it. */
bool isExplicitlyHidden(const QWidget &widget)
{
    return widget.testAttribute(Qt::WA_WState_ExplicitShowHide) && widget.isHidden();
}

} // namespace

WindowProxyBase::WindowProxyBase()
    : companion(std::make_unique<Window>(*this))
{}

WindowProxyBase::~WindowProxyBase() = default;

bool WindowProxyBase::attach(QWidget *topLevel)
{
    if (!topLevel || companion->window)
        return false;
    // Added to the flags the window was made with: given to its constructor,
    // FramelessWindowHint would suppress the hints for the close and minimise buttons.
    topLevel->setWindowFlags(topLevel->windowFlags() | Qt::Window | Qt::FramelessWindowHint);
    companion->window = topLevel;
    companion->titleBarObject = new WindowTitleBar(topLevel);
    companion->resizeAreaObject = new WindowResizeArea(topLevel);
    companion->watch();
    updateTitleBar();
    updateControls();
    updateResizeMargins();
    updateContentsMargins();
    return true;
}

WindowTitleBar *WindowProxyBase::titleBar() const
{
    return companion->titleBar();
}

WindowResizeArea *WindowProxyBase::resizeArea() const
{
    return companion->resizeArea();
}

bool WindowProxyBase::isControlAvailable(WindowControl control) const
{
    const QWidget *const window = companion->window;
    if (!window)
        return false;
    switch (control) {
    case WindowControl::Close:
        return window->windowFlags().testFlag(Qt::WindowCloseButtonHint);
    case WindowControl::Minimise:
        return window->windowFlags().testFlag(Qt::WindowMinimizeButtonHint);
    case WindowControl::Maximise:
        return isResizable(*window) && !window->isMaximized();
    case WindowControl::Restore:
        return isResizable(*window) && window->isMaximized();
    }
    return false;
}

bool WindowProxyBase::triggerControl(WindowControl control)
{
    if (!isControlAvailable(control))
        return false;
    QWidget *const window = companion->window;
    switch (control) {
    case WindowControl::Close:
        window->close();
        break;
    case WindowControl::Maximise:
        window->showMaximized();
        break;
    case WindowControl::Minimise:
        window->showMinimized();
        break;
    case WindowControl::Restore:
        window->showNormal();
        break;
    }
    return true;
}

bool WindowProxyBase::updateControls()
{
    if (!companion->window || !companion->titleBar())
        return false;
    for (const WindowControl control : windowControls) {
        const bool available = isControlAvailable(control);
        QAction *const action = companion->titleBar()->controlAction(control);
        action->setEnabled(available);
        action->setVisible(available);
    }
    return true;
}

bool WindowProxyBase::handleOperation(WindowOperation operation)
{
    if (!companion->window)
        return false;
    switch (operation) {
    case WindowOperation::Move:
        return startMove();
    case WindowOperation::ToggleMaximise:
        return triggerControl(companion->window->isMaximized() ? WindowControl::Restore
                                                               : WindowControl::Maximise);
    case WindowOperation::ResizeBottom:
    case WindowOperation::ResizeBottomLeft:
    case WindowOperation::ResizeBottomRight:
    case WindowOperation::ResizeLeft:
    case WindowOperation::ResizeRight:
    case WindowOperation::ResizeTop:
    case WindowOperation::ResizeTopLeft:
    case WindowOperation::ResizeTopRight:
        // Deliberately nothing: windows of this appliance keep the size its screens
        // were laid out for. The operators' screens rely on a drag along the edge
        // leaving it alone, while the cursors still show where a window ends.
        break;
    }
    return false;
}

bool WindowProxyBase::startMove()
{
    QWindow *const native = companion->window->windowHandle();
    return native && native->startSystemMove();
}

int WindowProxyBase::frameWidth() const
{
    const QWidget *const window = companion->window;
    if (!window)
        return 0;
    return companion->frameWidth.value_or(
        window->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, window));
}

bool WindowProxyBase::setFrameWidth(std::optional<int> width)
{
    if (!companion->window)
        return false;
    companion->frameWidth = width;
    updateMargins();
    companion->window->update();
    return true;
}

QMargins WindowProxyBase::extraResizeMargins() const
{
    return companion->extraResizeMargins;
}

bool WindowProxyBase::setExtraResizeMargins(const QMargins &margins)
{
    if (!companion->window)
        return false;
    companion->extraResizeMargins = margins;
    updateResizeMargins();
    return true;
}

bool WindowProxyBase::updateTitleBar()
{
    if (!companion->window || !companion->titleBar())
        return false;
    // The style told all widgets of itself before this one came to be.
    companion->titleBar()->updateStyle();
    updateTitle();
    updateIcon();
    placeParts();
    return true;
}

void WindowProxyBase::updateTitle()
{
    if (companion->titleBar())
        companion->titleBar()->setTitle(displayedTitle(*companion->window));
}

void WindowProxyBase::updateIcon()
{
    if (companion->titleBar())
        companion->titleBar()->setIcon(companion->window->windowIcon());
}

void WindowProxyBase::updateMargins()
{
    updateContentsMargins();
    updateResizeMargins();
    placeParts();
}

bool WindowProxyBase::updateContentsMargins()
{
    QWidget *const window = companion->window;
    if (!window)
        return false;
    const WindowTitleBar *const bar = companion->titleBar();
    const int frame = frameWidth();
    // The height it asks for: what it has may still be that of another screen.
    const int barHeight = bar && !isExplicitlyHidden(*bar) ? bar->sizeHint().height() : 0;
    window->setContentsMargins(frame, frame + barHeight, frame, frame);
    return true;
}

void WindowProxyBase::updateResizeMargins()
{
    if (!companion->resizeArea())
        return;
    const int frame = frameWidth();
    const QMargins extra = companion->extraResizeMargins;
    companion->resizeArea()->setMargins(frame + extra.left(), frame + extra.top(),
                                        frame + extra.right(), frame + extra.bottom());
}

void WindowProxyBase::placeParts()
{
    QWidget *const window = companion->window;
    const int frame = frameWidth();
    if (WindowTitleBar *const bar = companion->titleBar()) {
        const int width = window->width() - 2 * frame;
        bar->move(frame, frame);
        if (bar->width() != width)
            bar->resize(width, bar->height());
    }
    if (companion->resizeArea())
        companion->resizeArea()->resize(window->size());
}

void WindowProxyBase::paintFrame()
{
    QWidget *const window = companion->window;
    const int frame = frameWidth();
    if (frame <= 0)
        return;
    const QMargins margins = clippedMargins({frame, frame, frame, frame}, window->size());
    const QColor colour = frameLineColour(*window);
    QPainter painter(window);
    for (const QRect &strip : resizeMask(margins, window->size()))
        painter.fillRect(strip, colour);
}

} // namespace Vireling
