#include "vireling/style/elements/check_box.h"

#include "vireling/style/design.h"
#include "vireling/style/elements/button_label.h"
#include "vireling/style/paint_utils.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Vireling {

namespace {

/** The ring is two pixels of line and one of air; text needs a little more. */
constexpr qreal ringRoom = 3;
constexpr qreal labelRingRoom = 4;

/** Above and below the label, so that a column of choices is easy to hit. */
constexpr qreal verticalPadding = 4;

bool isMarked(const ElementContext &context)
{
    return context.state.checked || context.state.partiallyChecked;
}

QColor indicatorFill(const ElementContext &context)
{
    if (isMarked(context))
        return context.state.pressed ? accentBase(context) : context.colour(QPalette::Highlight);
    if (context.state.pressed)
        return pressedFieldSurface(context);
    return context.state.enabled ? context.colour(QPalette::Base) : QColor(Qt::transparent);
}

QColor indicatorFrame(const ElementContext &context)
{
    const bool lit = context.state.hovered || context.state.focused;
    if (isMarked(context))
        return lit ? context.colour(ColourRole::PanelFrame) : indicatorFill(context);
    return lit ? focusColour(context) : context.colour(ColourRole::PanelFrame);
}

/** The largest square in the middle of rect(): indicators are never stretched. */
QRectF indicatorSquare(const ElementContext &context)
{
    const int side = std::min(context.rect().width(), context.rect().height());
    QRect square(0, 0, side, side);
    square.moveTopLeft(context.rect().topLeft() + QPoint((context.rect().width() - side) / 2,
                                                         (context.rect().height() - side) / 2));
    return square;
}

void drawDash(const ElementContext &context, const QRectF &box)
{
    const int height = emphasisWidth(context);
    const qreal inset = std::round(box.width() / 4);
    const qreal top = box.top() + std::floor((box.height() - height) / 2);
    context.painter->fillRect(QRectF(box.left() + inset, top, box.width() - 2 * inset, height),
                              context.colour(ColourRole::IndicatorBase));
}

bool isRadioButton(QStyle::SubElement element)
{
    return element == QStyle::SE_RadioButtonIndicator ||
           element == QStyle::SE_RadioButtonContents || element == QStyle::SE_RadioButtonFocusRect;
}

struct IndicatorMetrics
{
    int width;
    int height;
    int spacing;
};

IndicatorMetrics indicatorMetrics(const ElementContext &context, bool radio)
{
    if (radio)
        return {context.metric(QStyle::PM_ExclusiveIndicatorWidth),
                context.metric(QStyle::PM_ExclusiveIndicatorHeight),
                context.metric(QStyle::PM_RadioButtonLabelSpacing)};
    return {context.metric(QStyle::PM_IndicatorWidth), context.metric(QStyle::PM_IndicatorHeight),
            context.metric(QStyle::PM_CheckBoxLabelSpacing)};
}

bool hasLabel(const QStyleOptionButton &button)
{
    return !button.text.isEmpty() || !button.icon.isNull();
}

/** Without a label the ring goes around the indicator, which then stands off the edge. */
QRect indicatorRect(const ElementContext &context, const QStyleOptionButton &button,
                    const IndicatorMetrics &metrics)
{
    const int inset = hasLabel(button) ? 0 : context.scaled(ringRoom);
    const QRect &rect = context.rect();
    return {rect.left() + inset, rect.top() + (rect.height() - metrics.height) / 2, metrics.width,
            metrics.height};
}

QRect labelRect(const ElementContext &context, const QRect &indicator, int spacing)
{
    QRect label = context.rect();
    label.setLeft(indicator.right() + 1 + spacing);
    return label;
}

/** What the label really covers: a ring around empty space would point at nothing. */
QRect labelRingRect(const ElementContext &context, const QStyleOptionButton &button,
                    const QRect &label)
{
    QSize size = button.fontMetrics.size(Qt::TextShowMnemonic, button.text);
    if (!button.icon.isNull()) {
        size.rwidth() += button.iconSize.width() + (button.text.isEmpty() ? 0 : countedIconSpacing);
        size.setHeight(std::max(size.height(), button.iconSize.height()));
    }
    const int room = context.scaled(labelRingRoom);
    QRect ring(QPoint(label.left(), label.top() + (label.height() - size.height()) / 2), size);
    return ring.adjusted(-room, -room, room, room).intersected(context.rect());
}

std::optional<QSize> choiceSize(const ElementContext &context, const QSize &contents, bool radio)
{
    const auto *button = context.as<QStyleOptionButton>();
    if (!button)
        return std::nullopt;
    const IndicatorMetrics metrics = indicatorMetrics(context, radio);
    const bool labelled = hasLabel(*button);
    const int around =
        labelled ? metrics.spacing + context.scaled(labelRingRoom) : 2 * context.scaled(ringRoom);
    const int height = std::max(contents.height(), metrics.height);
    return QSize((labelled ? contents.width() : 0) + metrics.width + around,
                 height + 2 * context.scaled(verticalPadding));
}

} // namespace

bool paintCheckBoxIndicator(const ElementContext &context)
{
    const QRectF box = indicatorSquare(context);
    drawPanel(*context.painter, box, context.scaledExactly(Design::indicatorRadius),
              indicatorFill(context), indicatorFrame(context), context.lineWidth(LineWidth::Glyph));
    if (context.state.partiallyChecked)
        drawDash(context, box);
    else if (context.state.checked)
        drawCheckMark(*context.painter, box, context.colour(ColourRole::IndicatorBase),
                      context.lineWidth(LineWidth::Glyph));
    return true;
}

bool paintRadioButtonIndicator(const ElementContext &context)
{
    const QRectF circle = indicatorSquare(context);
    drawPanel(*context.painter, circle, circle.width() / 2, indicatorFill(context),
              indicatorFrame(context), context.lineWidth(LineWidth::Glyph));
    if (!isMarked(context))
        return true;
    const qreal inset = 0.3 * circle.width();
    const QRectF dot = circle.adjusted(inset, inset, -inset, -inset);
    drawPanel(*context.painter, dot, dot.width() / 2, context.colour(ColourRole::IndicatorBase),
              QColor(), 0);
    return true;
}

std::optional<QRect> checkBoxPart(const ElementContext &context, QStyle::SubElement element)
{
    const auto *button = context.as<QStyleOptionButton>();
    if (!button)
        return std::nullopt;
    const IndicatorMetrics metrics = indicatorMetrics(context, isRadioButton(element));
    const QRect indicator = indicatorRect(context, *button, metrics);
    if (element == QStyle::SE_CheckBoxIndicator || element == QStyle::SE_RadioButtonIndicator)
        return context.visual(indicator);
    const QRect label = labelRect(context, indicator, metrics.spacing);
    if (element == QStyle::SE_CheckBoxContents || element == QStyle::SE_RadioButtonContents)
        return context.visual(label);
    if (hasLabel(*button))
        return context.visual(labelRingRect(context, *button, label));
    const int room = context.scaled(ringRoom);
    return context.visual(indicator.adjusted(-room, -room, room, room));
}

std::optional<QSize> checkBoxSize(const ElementContext &context, const QSize &contents)
{
    return choiceSize(context, contents, false);
}

std::optional<QSize> radioButtonSize(const ElementContext &context, const QSize &contents)
{
    return choiceSize(context, contents, true);
}

} // namespace Vireling
