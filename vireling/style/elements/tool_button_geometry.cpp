#include "vireling/style/elements/tool_button_geometry.h"

#include "vireling/style/elements/tool_button.h"
#include "vireling/style/paint_utils.h"

#include <algorithm>

namespace Vireling {

namespace {

/** Wide enough to hit; the indicator's metric is all that QToolButton counts in itself. */
constexpr qreal menuPartWidth = 16;

/** Between the frame and what the button shows; beside a menu chevron too. */
constexpr qreal padding = 3;

int frameWidth(const ElementContext &context)
{
    return context.metric(QStyle::PM_DefaultFrameWidth);
}

bool isMultiLine(const QStyleOptionToolButton &button)
{
    return button.toolButtonStyle == Qt::ToolButtonTextUnderIcon ||
           button.text.contains(QLatin1Char('\n'));
}

} // namespace

bool hasMenuPart(const QStyleOptionToolButton &button)
{
    return (button.features & QStyleOptionToolButton::MenuButtonPopup) &&
           (button.subControls & QStyle::SC_ToolButtonMenu);
}

bool hasMenuMark(const QStyleOptionToolButton &button)
{
    return !hasMenuPart(button) && (button.features & QStyleOptionToolButton::HasMenu);
}

QRect toolButtonMenuPart(const ElementContext &context, const QStyleOptionToolButton &button)
{
    if (!(button.features & QStyleOptionToolButton::MenuButtonPopup))
        return {};
    QRect part = context.rect();
    const int width = context.scaled(menuPartWidth) + frameWidth(context);
    part.setLeft(std::max(part.left(), part.right() + 1 - width));
    return part;
}

QRect toolButtonActionPart(const ElementContext &context, const QStyleOptionToolButton &button)
{
    QRect part = context.rect();
    const QRect menu = toolButtonMenuPart(context, button);
    if (!menu.isEmpty())
        part.setRight(menu.left() - 1);
    return part;
}

QRect toolButtonMenuMark(const ElementContext &context, const QRect &actionPart)
{
    const int size = context.metric(QStyle::PM_MenuButtonIndicator);
    const int inset = frameWidth(context) + context.scaled(padding);
    return {actionPart.right() + 1 - inset - size,
            actionPart.top() + (actionPart.height() - size) / 2, size, size};
}

QRect toolButtonLabelArea(const ElementContext &context, const QStyleOptionToolButton &button)
{
    const QRect action = toolButtonActionPart(context, button);
    const int frame = frameWidth(context);
    QRect area = action.adjusted(frame, frame, -frame, -frame);
    if (hasMenuMark(button)) {
        area.setLeft(area.left() + context.scaled(padding));
        area.setRight(std::max(area.left(), toolButtonMenuMark(context, action).left() - 1));
    }
    return area;
}

std::optional<QRect> toolButtonPart(const ElementContext &context, QStyle::SubControl part)
{
    const auto *button = context.as<QStyleOptionToolButton>();
    if (!button)
        return std::nullopt;
    if (part == QStyle::SC_ToolButton)
        return context.visual(toolButtonActionPart(context, *button));
    if (part != QStyle::SC_ToolButtonMenu)
        return std::nullopt;
    const QRect menu = toolButtonMenuPart(context, *button);
    return menu.isEmpty() ? QRect() : context.visual(menu);
}

std::optional<QSize> toolButtonSize(const ElementContext &context, const QSize &contents)
{
    const auto *button = context.as<QStyleOptionToolButton>();
    if (!button)
        return std::nullopt;
    const int around = 2 * (frameWidth(context) + context.scaled(padding));
    int width = contents.width() + around;
    if (button->features & QStyleOptionToolButton::MenuButtonPopup)
        width += context.scaled(menuPartWidth) - context.metric(QStyle::PM_MenuButtonIndicator);
    else if (hasMenuMark(*button))
        width += context.metric(QStyle::PM_MenuButtonIndicator) + context.scaled(padding);
    const int height = contents.height() + around;
    const bool inFieldRow = !isMultiLine(*button);
    return QSize(width, inFieldRow ? std::max(height, fieldHeight(context, 0)) : height);
}

} // namespace Vireling
