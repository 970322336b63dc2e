#pragma once

#include "vireling/window/window_proxy_base.h"

#include <QWidget>

namespace Vireling {

/**
 * A window class of Qt's that is its own proxy: frameless, with the toolkit's title
 * bar. `T` is QDialog or QWizard. The proxy ends before `T` does, so no event of a
 * window being destroyed reaches it.
 */
template <typename T>
class WindowProxy : public T, private WindowProxyBase
{
public:
    explicit WindowProxy(QWidget *parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags())
        : T(parent, flags)
    {
        attach(this);
    }

    using WindowProxyBase::extraResizeMargins;
    using WindowProxyBase::frameWidth;
    using WindowProxyBase::handleOperation;
    using WindowProxyBase::isControlAvailable;
    using WindowProxyBase::resizeArea;
    using WindowProxyBase::setExtraResizeMargins;
    using WindowProxyBase::setFrameWidth;
    using WindowProxyBase::titleBar;
    using WindowProxyBase::triggerControl;
    using WindowProxyBase::updateControls;
};

} // namespace Vireling
