#pragma once

#include "vireling/palette/enums.h"
#include "vireling/window/window_operation.h"

#include <QMargins>

#include <memory>
#include <optional>

class QWidget;

namespace Vireling {

class Window;
class WindowResizeArea;
class WindowTitleBar;

/**
 * Gives a top-level widget the toolkit's own frame, title bar and controls instead
 * of the window manager's, and carries out what they ask for. GUI thread.
 *
 * Usually a base of the window's class (WindowProxy), so that it ends before the
 * window does; but any top-level widget can be attached, and may end first: then
 * every operation does nothing and answers false.
 */
class WindowProxyBase
{
public:
    WindowProxyBase();
    ~WindowProxyBase();
    Q_DISABLE_COPY_MOVE(WindowProxyBase)

    /**
     * Makes `topLevel` a frameless window and puts the parts of the frame into it, as
     * its children. Hides it if it was shown. False, and nothing done, when the proxy
     * has a window already.
     */
    bool attach(QWidget *topLevel);

    /** Null before attach() and once the window is gone. */
    WindowTitleBar *titleBar() const;
    WindowResizeArea *resizeArea() const;

    bool isControlAvailable(WindowControl control) const;

    /** Does what a control stands for if it is available; whether it did. */
    bool triggerControl(WindowControl control);

    /** Shows and enables exactly the available controls. */
    bool updateControls();

    /** Carries out what the frame asks for; whether anything came of it. */
    bool handleOperation(WindowOperation operation);

    /** In pixels: as set, else the style's; 0 without a window. */
    int frameWidth() const;
    /** An absent width goes back to the style's. */
    bool setFrameWidth(std::optional<int> width);

    /** By how much the area for resizing is wider than the frame, per side; 0 by default. */
    QMargins extraResizeMargins() const;
    bool setExtraResizeMargins(const QMargins &margins);

    /** The frame on all sides and the title bar, unless hidden, at the top. */
    bool updateContentsMargins();

private:
    friend class Window;

    bool updateTitleBar();
    void updateTitle();
    void updateIcon();
    void updateResizeMargins();
    void updateMargins();
    void placeParts();
    void paintFrame();
    bool startMove();

    const std::unique_ptr<Window> companion;
};

} // namespace Vireling
