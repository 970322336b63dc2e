#pragma once

#include "vireling/window/window_resize_area.h"
#include "vireling/window/window_title_bar.h"

#include <QMargins>
#include <QObject>
#include <QPointer>

#include <optional>

class QScreen;

namespace Vireling {

class WindowProxyBase;

/**
 * The companion of a window proxy, which is no QObject itself: keeps the proxy's
 * state, watches the events of the window and of the title bar and receives their
 * signals. Lives exactly as long as its proxy. No event is kept from the window.
 */
class Window : public QObject
{
    Q_OBJECT

public:
    explicit Window(WindowProxyBase &watchingProxy);

    QPointer<QWidget> window;
    // As plain objects: while a part is being destroyed it still sends events, but is
    // none of its class any more.
    QPointer<QObject> titleBarObject;
    QPointer<QObject> resizeAreaObject;
    std::optional<int> frameWidth; // absent: the style's
    QMargins extraResizeMargins;

    WindowTitleBar *titleBar() const { return qobject_cast<WindowTitleBar *>(titleBarObject); }
    WindowResizeArea *resizeArea() const
    {
        return qobject_cast<WindowResizeArea *>(resizeAreaObject);
    }

    /** Begins to watch and to listen; the pointers above are set. */
    void watch();

    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void followScreen(QScreen *screen);

private:
    void windowEvent(QEvent::Type type);
    void titleBarEvent(QEvent::Type type);
    void shownOrStateChanged();
    void watchScreens();

    WindowProxyBase &proxy;
};

} // namespace Vireling
