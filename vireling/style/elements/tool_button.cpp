#include "vireling/style/elements/tool_button.h"

#include "vireling/style/design.h"
#include "vireling/style/elements/button_label.h"
#include "vireling/style/elements/card_button.h"
#include "vireling/style/elements/field.h"
#include "vireling/style/elements/tool_button_geometry.h"
#include "vireling/style/elements/window_control_button.h"
#include "vireling/style/paint_utils.h"

#include <QPainter>

#include <algorithm>

namespace Vireling {

namespace {

bool showsSurface(const ControlState &state)
{
    return !state.autoRaise || state.hovered || state.pressed || state.checked;
}

/** One half of a split button: its own state where the pointer is on the other half. */
QStyleOptionToolButton partOption(const QStyleOptionToolButton &button, QStyle::SubControl part)
{
    QStyleOptionToolButton option = button;
    const bool elsewhere = hasMenuPart(button) && button.activeSubControls != QStyle::SC_None &&
                           !(button.activeSubControls & part);
    if (elsewhere)
        option.state &= ~(QStyle::State_Sunken | QStyle::State_MouseOver);
    if (part == QStyle::SC_ToolButtonMenu)
        option.state &= ~QStyle::State_On;
    return option;
}

qreal controlRadius(const ElementContext &context)
{
    return context.scaledExactly(Design::controlRadius);
}

void drawSurface(const ElementContext &context)
{
    drawPanel(*context.painter, context.rect(), controlRadius(context), buttonSurface(context),
              frameColour(context), context.lineWidth(LineWidth::ButtonFrame));
}

/** The whole frame, then each half in its own state, and the line between them. */
void drawSplitSurface(const ElementContext &context, const QStyleOptionToolButton &button)
{
    const QRect menu = context.visual(toolButtonMenuPart(context, button));
    const QRect action = context.visual(toolButtonActionPart(context, button));
    const QStyleOptionToolButton menuOption = partOption(button, QStyle::SC_ToolButtonMenu);
    const QStyleOptionToolButton actionOption = partOption(button, QStyle::SC_ToolButton);
    const QRectF whole = context.rect();
    const qreal radius = controlRadius(context);
    fillPart(*context.painter, whole, radius, action, buttonSurface(context.with(actionOption)));
    fillPart(*context.painter, whole, radius, menu, buttonSurface(context.with(menuOption)));
    const int width = context.metric(QStyle::PM_DefaultFrameWidth);
    drawPanel(*context.painter, whole, radius, QColor(), frameColour(context), width);
    const int left = context.state.rightToLeft ? menu.right() + 1 - width : menu.left();
    context.painter->fillRect(QRect(left, menu.top(), width, menu.height()), frameColour(context));
}

void drawToolButtonSurface(const ElementContext &context, const QStyleOptionToolButton &button)
{
    if (!showsSurface(context.state))
        return;
    if (hasMenuPart(button))
        drawSplitSurface(context, button);
    else
        drawSurface(context);
    if (!context.state.checked)
        return;
    QStyleOptionToolButton action = button;
    action.rect = context.visual(toolButtonActionPart(context, button));
    drawCheckedBar(context.with(action));
}

void drawMenuChevron(const ElementContext &context, const QRect &box)
{
    drawChevron(*context.painter,
                centredSquare(box, context.metric(QStyle::PM_MenuButtonIndicator)), Qt::DownArrow,
                buttonForeground(context), context.lineWidth(LineWidth::Glyph));
}

ButtonLabel buttonLabel(const ElementContext &context, const QStyleOptionToolButton &button)
{
    const bool arrow = button.features & QStyleOptionToolButton::Arrow;
    return {button.icon, button.iconSize, button.text, buttonForeground(context),
            arrow ? button.arrowType : Qt::NoArrow};
}

/** Icon or arrow above the text, both centred. */
void drawLabelUnderIcon(const ElementContext &context, const QStyleOptionToolButton &button)
{
    const int textHeight = button.fontMetrics.size(Qt::TextShowMnemonic, button.text).height();
    const int height = button.iconSize.height() + countedIconSpacing + textHeight;
    QRect icon = context.rect();
    icon.setTop(icon.top() + std::max(0, (icon.height() - height) / 2));
    icon.setHeight(button.iconSize.height());
    ButtonLabel glyph = buttonLabel(context, button);
    glyph.text.clear();
    drawButtonLabel(context, icon, glyph);
    QRect text = context.rect();
    text.setTop(icon.bottom() + 1 + countedIconSpacing);
    text.setHeight(textHeight);
    context.painter->setPen(buttonForeground(context));
    context.style.drawItemText(context.painter, text, Qt::AlignCenter | mnemonicFlag(context),
                               button.palette, context.state.enabled, button.text);
}

Qt::ToolButtonStyle labelStyle(const QStyleOptionToolButton &button)
{
    const bool arrow = button.features & QStyleOptionToolButton::Arrow;
    if (button.text.isEmpty())
        return Qt::ToolButtonIconOnly;
    return button.icon.isNull() && !arrow ? Qt::ToolButtonTextOnly : button.toolButtonStyle;
}

} // namespace

bool paintToolButtonPanel(const ElementContext &context)
{
    if (!showsSurface(context.state))
        return true;
    drawSurface(context);
    if (context.state.checked)
        drawCheckedBar(context);
    return true;
}

bool paintToolButtonFrame(const ElementContext &context)
{
    drawPanel(*context.painter, context.rect(), controlRadius(context), QColor(),
              frameColour(context), context.metric(QStyle::PM_DefaultFrameWidth));
    return true;
}

bool paintToolButtonDropDown(const ElementContext &context)
{
    drawMenuChevron(context, context.rect());
    return true;
}

bool paintToolButtonLabel(const ElementContext &context)
{
    const auto *button = context.as<QStyleOptionToolButton>();
    if (!button)
        return false;
    context.painter->setFont(button->font);
    ButtonLabel label = buttonLabel(context, *button);
    switch (labelStyle(*button)) {
    case Qt::ToolButtonTextUnderIcon:
        drawLabelUnderIcon(context, *button);
        return true;
    case Qt::ToolButtonTextBesideIcon:
        break;
    case Qt::ToolButtonTextOnly:
        label.icon = QIcon();
        label.arrow = Qt::NoArrow;
        break;
    default:
        label.text.clear();
    }
    drawButtonLabel(context, context.rect(), label);
    return true;
}

bool paintToolButton(const ElementContext &context)
{
    const auto *button = context.as<QStyleOptionToolButton>();
    if (!button)
        return false;
    if (context.widget && context.widget->inherits("Vireling::CardButton"))
        return paintCard(context);
    if (context.widget && context.widget->inherits("Vireling::WindowControlButton"))
        return paintWindowControlButton(context);
    if (button->subControls & QStyle::SC_ToolButton)
        drawToolButtonSurface(context, *button);
    QStyleOptionToolButton label = partOption(*button, QStyle::SC_ToolButton);
    label.rect = context.visual(toolButtonLabelArea(context, *button));
    context.style.drawControl(QStyle::CE_ToolButtonLabel, &label, context.painter, context.widget);
    if (hasMenuPart(*button)) {
        QStyleOptionToolButton menu = partOption(*button, QStyle::SC_ToolButtonMenu);
        drawMenuChevron(context.with(menu), context.visual(toolButtonMenuPart(context, *button)));
    } else if (hasMenuMark(*button)) {
        const QRect action = toolButtonActionPart(context, *button);
        drawMenuChevron(context.with(label), context.visual(toolButtonMenuMark(context, action)));
    }
    if (context.state.focused)
        drawFocusRing(context, context.rect(), controlRadius(context));
    return true;
}

} // namespace Vireling
