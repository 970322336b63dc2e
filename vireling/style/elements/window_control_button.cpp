#include "vireling/style/elements/window_control_button.h"

#include "vireling/style/design.h"
#include "vireling/style/elements/button_label.h"
#include "vireling/style/paint_utils.h"

#include <QVariant>
#include <QWidget>

#include <optional>

namespace Vireling {

namespace {

bool closesWindow(const QWidget *widget)
{
    const QVariant control = widget ? widget->property("control") : QVariant();
    return control.isValid() && control.toInt() == int(WindowControl::Close);
}

bool isLit(const ElementContext &context)
{
    return context.state.hovered || context.state.pressed;
}

QColor surface(const ElementContext &context)
{
    if (!isLit(context))
        return QColor(Qt::transparent);
    if (closesWindow(context.widget))
        return errorSurface(context);
    return buttonSurface(context);
}

/** The themes' icons would not read alike on red: there both show in the accent's text colour. */
std::optional<QColor> tint(const ElementContext &context)
{
    if (isLit(context) && closesWindow(context.widget))
        return context.colour(QPalette::HighlightedText);
    return std::nullopt;
}

} // namespace

bool paintWindowControlButton(const ElementContext &context)
{
    const auto *button = context.as<QStyleOptionToolButton>();
    if (!button)
        return false;
    const qreal radius = context.scaledExactly(Design::controlRadius);
    drawPanel(*context.painter, context.rect(), radius, surface(context), QColor(), 0);
    const int size = context.metric(QStyle::PM_TitleBarButtonIconSize);
    drawIcon(context, context.rect(), button->icon, QSize(size, size), tint(context));
    if (context.state.focused)
        drawFocusRing(context, context.rect(), radius);
    return true;
}

} // namespace Vireling
