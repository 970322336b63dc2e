#include "vireling/gallery/pose.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QHoverEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QVariant>
#include <QWidget>

namespace Vireling {

namespace {

/** A pointer that rests on a control without being there. */
class PointerGhost : public QObject
{
public:
    enum class Button
    {
        Released,
        Held
    };

    PointerGhost(QWidget *control, QPointF placeFraction, Button buttonState)
        : QObject(control)
        , target(control)
        , fraction(placeFraction)
        , button(buttonState)
    {
        control->setAttribute(Qt::WA_Hover);
        control->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        // Later, because the parts of the control are laid out after it is shown.
        if (event->type() == QEvent::Show)
            QTimer::singleShot(0, this, [this] { rest(); });
        return QObject::eventFilter(watched, event);
    }

private:
    void rest()
    {
        const double across = target->isRightToLeft() ? 1 - fraction.x() : fraction.x();
        const QPointF place(across * target->width(), fraction.y() * target->height());
        QHoverEvent enter(QEvent::HoverEnter, place, QPointF(-1, -1));
        QCoreApplication::sendEvent(target, &enter);
        QHoverEvent move(QEvent::HoverMove, place, place);
        QCoreApplication::sendEvent(target, &move);
        if (button == Button::Released)
            sendMouse(QEvent::MouseMove, place, Qt::NoButton); // menu bars follow this alone
        else
            sendMouse(QEvent::MouseButtonPress, place, Qt::LeftButton);
    }

    void sendMouse(QEvent::Type type, const QPointF &place, Qt::MouseButton pressed)
    {
        QMouseEvent event(type, place, pressed, pressed, Qt::NoModifier);
        QCoreApplication::sendEvent(target, &event);
    }

    QWidget *const target;
    const QPointF fraction;
    const Button button;
};

} // namespace

const char *poseName(Pose pose)
{
    switch (pose) {
    case Pose::Default:
        return "Default";
    case Pose::Focused:
        return "Focused";
    case Pose::Hovered:
        return "Hover";
    case Pose::Pressed:
        return "Pressed";
    case Pose::ReadOnly:
        return "Read-only";
    case Pose::Disabled:
        return "Disabled";
    }
    return "";
}

void pose(QWidget *control, Pose pose, QWidget *focusAnchor)
{
    switch (pose) {
    case Pose::Default:
        return;
    case Pose::Focused:
        // A widget has the focus when the end of its chain of proxies has it.
        if (control != focusAnchor)
            control->setFocusProxy(focusAnchor);
        return;
    case Pose::Hovered:
        control->setAttribute(Qt::WA_UnderMouse);
        return;
    case Pose::Pressed:
        control->setAttribute(Qt::WA_UnderMouse);
        if (auto *button = qobject_cast<QAbstractButton *>(control))
            button->setDown(true);
        return;
    case Pose::ReadOnly:
        control->setProperty("readOnly", true);
        return;
    case Pose::Disabled:
        control->setEnabled(false);
        return;
    }
}

void poseHovered(QWidget *control, double fractionX, double fractionY)
{
    new PointerGhost(control, {fractionX, fractionY}, PointerGhost::Button::Released);
}

void posePressed(QWidget *control, double fractionX, double fractionY)
{
    new PointerGhost(control, {fractionX, fractionY}, PointerGhost::Button::Held);
}

} // namespace Vireling
