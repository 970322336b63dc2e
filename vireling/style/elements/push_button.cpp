#include "vireling/style/elements/push_button.h"

#include "vireling/style/design.h"
#include "vireling/style/elements/button_label.h"
#include "vireling/style/paint_utils.h"

#include <QPainter>

#include <algorithm>

namespace Vireling {

namespace {

bool has(const QStyleOptionButton &button, QStyleOptionButton::ButtonFeature feature)
{
    return button.features & feature;
}

/** A command link draws its own texts, in one colour: its surface may not be inverted. */
bool isCommandLink(const QStyleOptionButton &button)
{
    return has(button, QStyleOptionButton::CommandLinkButton);
}

/** The button that Return presses, unless another look says more. */
bool isAccented(const ElementContext &context, const QStyleOptionButton &button)
{
    return has(button, QStyleOptionButton::DefaultButton) && context.state.enabled &&
           !context.state.checked && !isCommandLink(button) &&
           !has(button, QStyleOptionButton::Flat);
}

bool showsSurface(const ElementContext &context, const QStyleOptionButton &button)
{
    if (!has(button, QStyleOptionButton::Flat))
        return true;
    return context.state.hovered || context.state.pressed || context.state.checked;
}

QColor surfaceColour(const ElementContext &context, const QStyleOptionButton &button)
{
    if (isAccented(context, button))
        return accentSurface(context);
    if (!isCommandLink(button))
        return buttonSurface(context);
    QStyleOptionButton unchecked = button;
    unchecked.state &= ~QStyle::State_On;
    return buttonSurface(context.with(unchecked));
}

QColor surfaceFrame(const ElementContext &context, const QStyleOptionButton &button)
{
    if (isAccented(context, button) && !context.state.hovered)
        return accentBase(context);
    const bool defaultLink = isCommandLink(button) && context.state.enabled &&
                             has(button, QStyleOptionButton::DefaultButton);
    return defaultLink ? focusColour(context) : frameColour(context);
}

QColor labelColour(const ElementContext &context, const QStyleOptionButton &button)
{
    return isAccented(context, button) ? context.colour(QPalette::HighlightedText)
                                       : buttonForeground(context);
}

int menuIndicatorSpace(const ElementContext &context, const QStyleOptionButton &button)
{
    return has(button, QStyleOptionButton::HasMenu)
               ? context.metric(QStyle::PM_MenuButtonIndicator) +
                     context.scaled(Design::iconTextSpacing)
               : 0;
}

bool isIconOnly(const QStyleOptionButton &button)
{
    return button.text.isEmpty() && !button.icon.isNull();
}

int sidePadding(const ElementContext &context, const QStyleOptionButton &button)
{
    return context.scaled(isIconOnly(button) ? Design::fieldPadding : Design::buttonPadding);
}

void drawMenuIndicator(const ElementContext &context, const QStyleOptionButton &button)
{
    const int size = context.metric(QStyle::PM_MenuButtonIndicator);
    const QRect &rect = context.rect();
    const QRect indicator(rect.right() + 1 - sidePadding(context, button) - size,
                          rect.top() + (rect.height() - size) / 2, size, size);
    drawChevron(*context.painter, context.visual(indicator), Qt::DownArrow,
                labelColour(context, button), context.lineWidth(LineWidth::Glyph));
}

} // namespace

bool paintPushButtonPanel(const ElementContext &context)
{
    const auto *button = context.as<QStyleOptionButton>();
    if (!button)
        return paintButtonBevelPanel(context, QStyle::PE_PanelButtonBevel);
    if (!showsSurface(context, *button))
        return true;
    const bool flat = has(*button, QStyleOptionButton::Flat);
    drawPanel(*context.painter, context.rect(), context.scaledExactly(Design::controlRadius),
              surfaceColour(context, *button), surfaceFrame(context, *button),
              flat ? 0 : context.metric(QStyle::PM_DefaultFrameWidth));
    if (context.state.checked)
        drawCheckedBar(context);
    return true;
}

bool paintButtonBevelPanel(const ElementContext &context, QStyle::PrimitiveElement element)
{
    const bool frameOnly = element == QStyle::PE_FrameButtonBevel;
    drawPanel(*context.painter, context.rect(), context.scaledExactly(Design::controlRadius),
              frameOnly ? QColor() : buttonSurface(context), frameColour(context),
              context.metric(QStyle::PM_DefaultFrameWidth));
    if (context.state.checked && !frameOnly)
        drawCheckedBar(context);
    return true;
}

bool paintDefaultButtonFrame(const ElementContext &)
{
    return true; // the default button shows by its surface
}

bool paintPushButtonBevel(const ElementContext &context)
{
    const auto *button = context.as<QStyleOptionButton>();
    if (!button)
        return false;
    paintPushButtonPanel(context);
    if (has(*button, QStyleOptionButton::HasMenu))
        drawMenuIndicator(context, *button);
    return true;
}

bool paintPushButtonLabel(const ElementContext &context)
{
    const auto *button = context.as<QStyleOptionButton>();
    if (!button)
        return false;
    drawButtonLabel(context, context.rect(),
                    {button->icon, button->iconSize, button->text, labelColour(context, *button)});
    return true;
}

std::optional<QRect> pushButtonContents(const ElementContext &context)
{
    const auto *button = context.as<QStyleOptionButton>();
    if (!button)
        return std::nullopt;
    const int frame = context.metric(QStyle::PM_DefaultFrameWidth);
    QRect contents = context.rect().adjusted(frame, frame, -frame, -frame);
    if (const int space = menuIndicatorSpace(context, *button)) {
        const int padding = sidePadding(context, *button) - frame;
        contents.adjust(padding, 0, -padding - space, 0);
    }
    return context.visual(contents);
}

std::optional<QRect> pushButtonFocusRect(const ElementContext &context, QStyle::SubElement)
{
    return context.rect();
}

std::optional<QSize> pushButtonSize(const ElementContext &context, const QSize &contents)
{
    const auto *button = context.as<QStyleOptionButton>();
    if (!button)
        return std::nullopt;
    const int frame = context.metric(QStyle::PM_DefaultFrameWidth);
    int width = contents.width() + 2 * (frame + sidePadding(context, *button));
    if (has(*button, QStyleOptionButton::HasMenu))
        width += context.scaled(Design::iconTextSpacing);
    if (isIconOnly(*button))
        width -= countedIconSpacing;
    else if (!button->icon.isNull())
        width += std::max(0, context.scaled(Design::iconTextSpacing) - countedIconSpacing);
    if (!isIconOnly(*button))
        width = std::max(width, context.scaled(Design::buttonMinimumWidth));
    return QSize(width, fieldHeight(context, contents.height()));
}

} // namespace Vireling
