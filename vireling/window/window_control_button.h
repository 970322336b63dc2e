#pragma once

#include "vireling/palette/enums.h"

#include <QToolButton>

namespace Vireling {

/**
 * A button of the title bar: shows one action and hides with it. The style knows it
 * by its class name and by `control`.
 */
class WindowControlButton : public QToolButton
{
    Q_OBJECT
    Q_PROPERTY(Vireling::WindowControl control READ control CONSTANT)

public:
    /** `action` must not be null; it stays its owner's. */
    WindowControlButton(WindowControl control, QAction *action, QWidget *parent = nullptr);

    WindowControl control() const { return ownControl; }

    /** Forgets that the pointer was over it, for when the window jumps away under the pointer. */
    void forgetPointer();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void actionEvent(QActionEvent *event) override;

private:
    const WindowControl ownControl;
};

} // namespace Vireling
