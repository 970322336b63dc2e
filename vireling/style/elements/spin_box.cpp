#include "vireling/style/elements/spin_box.h"

#include "vireling/style/elements/field.h"
#include "vireling/style/paint_utils.h"

#include <QPainter>

#include <algorithm>

namespace Vireling {

namespace {

constexpr qreal stepGlyphSize = 12;

FieldFrame fieldFrame(const QStyleOptionSpinBox &spin)
{
    return spin.frame ? FieldFrame::Framed : FieldFrame::Frameless;
}

ArrowBox arrowBox(const QStyleOptionSpinBox &spin)
{
    return spin.buttonSymbols == QAbstractSpinBox::NoButtons ? ArrowBox::None : ArrowBox::Shown;
}

/** Up is the upper half; an odd row of pixels in the middle belongs to it. */
QRect stepButton(const QRect &box, QStyle::SubControl part)
{
    const int upperHeight = (box.height() + 1) / 2;
    QRect button = box;
    if (part == QStyle::SC_SpinBoxUp)
        button.setHeight(upperHeight);
    else
        button.setTop(box.top() + upperHeight);
    return button;
}

bool canStep(const QStyleOptionSpinBox &spin, QStyle::SubControl part)
{
    const auto step = part == QStyle::SC_SpinBoxUp ? QAbstractSpinBox::StepUpEnabled
                                                   : QAbstractSpinBox::StepDownEnabled;
    return (spin.state & QStyle::State_Enabled) && (spin.stepEnabled & step);
}

QStyle::PrimitiveElement stepGlyph(const QStyleOptionSpinBox &spin, QStyle::SubControl part)
{
    const bool up = part == QStyle::SC_SpinBoxUp;
    if (spin.buttonSymbols == QAbstractSpinBox::PlusMinus)
        return up ? QStyle::PE_IndicatorSpinPlus : QStyle::PE_IndicatorSpinMinus;
    return up ? QStyle::PE_IndicatorSpinUp : QStyle::PE_IndicatorSpinDown;
}

/** The option of one button as if it were a control of its own: its state, its rectangle. */
QStyleOptionSpinBox stepOption(const QStyleOptionSpinBox &spin, QStyle::SubControl part,
                               const QRect &rect)
{
    const bool able = canStep(spin, part);
    const bool active = able && spin.activeSubControls == part;
    QStyleOptionSpinBox option = spin;
    option.rect = rect;
    option.state.setFlag(QStyle::State_Enabled, able);
    option.state.setFlag(QStyle::State_Sunken, active && (spin.state & QStyle::State_Sunken));
    option.state.setFlag(QStyle::State_MouseOver, active && (spin.state & QStyle::State_MouseOver));
    option.state.setFlag(QStyle::State_HasFocus, false);
    return option;
}

void drawStepButton(const ElementContext &context, const QStyleOptionSpinBox &spin,
                    QStyle::SubControl part, const QRect &box)
{
    QStyleOptionSpinBox option = stepOption(spin, part, stepButton(box, part));
    const ElementContext button = context.with(option);
    if (button.state.pressed)
        fillFieldPart(context, option.rect, pressedFieldSurface(button));
    else if (button.state.hovered)
        fillFieldPart(context, option.rect, hoveredPartSurface(button));
    paintSpinIndicator(context.with(option), stepGlyph(spin, part));
}

/** Strokes of whole pixels, in the middle of rect() as far as there is one. */
void drawPlusOrMinus(const ElementContext &context, bool plus, const QColor &colour)
{
    const QRect &rect = context.rect();
    const int width = std::max(1, qRound(context.lineWidth(LineWidth::Glyph)));
    const int room = std::min({context.scaled(stepGlyphSize), rect.width(), rect.height()});
    const int length = 2 * (room / 4) + width;
    const auto centred = [&](int across, int along) {
        return QRect(rect.left() + (rect.width() - across) / 2,
                     rect.top() + (rect.height() - along) / 2, across, along);
    };
    context.painter->fillRect(centred(length, width), colour);
    if (plus)
        context.painter->fillRect(centred(width, length), colour);
}

void drawSpinBoxField(const ElementContext &context, const QStyleOptionSpinBox &spin)
{
    if (spin.frame)
        drawField(context);
    else
        drawFramelessField(context);
}

void drawStepButtons(const ElementContext &context, const QStyleOptionSpinBox &spin)
{
    if (!(spin.subControls & (QStyle::SC_SpinBoxUp | QStyle::SC_SpinBoxDown)))
        return;
    const QRect box = context.visual(fieldArrowBox(context, fieldFrame(spin)));
    for (const QStyle::SubControl part : {QStyle::SC_SpinBoxUp, QStyle::SC_SpinBoxDown})
        if (spin.subControls & part)
            drawStepButton(context, spin, part, box);
    drawArrowBoxSeparator(context, box);
}

} // namespace

bool paintSpinBox(const ElementContext &context)
{
    const auto *spin = context.as<QStyleOptionSpinBox>();
    if (!spin)
        return false;
    QStyleOptionSpinBox option = *spin;
    if (isReadOnlySpinBox(context.widget))
        option.state |= QStyle::State_ReadOnly;
    const ElementContext field = context.with(option);
    if (option.subControls & QStyle::SC_SpinBoxFrame)
        drawSpinBoxField(field, option);
    if (!field.state.readOnly && arrowBox(option) == ArrowBox::Shown)
        drawStepButtons(field, option);
    return true;
}

std::optional<QRect> spinBoxPart(const ElementContext &context, QStyle::SubControl part)
{
    const auto *spin = context.as<QStyleOptionSpinBox>();
    if (!spin)
        return std::nullopt;
    const FieldFrame frame = fieldFrame(*spin);
    switch (part) {
    case QStyle::SC_SpinBoxUp:
    case QStyle::SC_SpinBoxDown:
        if (arrowBox(*spin) == ArrowBox::None)
            return QRect();
        return context.visual(stepButton(fieldArrowBox(context, frame), part));
    case QStyle::SC_SpinBoxEditField:
        return context.visual(fieldEditArea(context, frame, arrowBox(*spin)));
    case QStyle::SC_SpinBoxFrame:
        return context.rect();
    default:
        return std::nullopt;
    }
}

std::optional<QSize> spinBoxSize(const ElementContext &context, const QSize &contents)
{
    const auto *spin = context.as<QStyleOptionSpinBox>();
    if (!spin)
        return std::nullopt;
    return fieldSize(context, contents, fieldFrame(*spin), arrowBox(*spin));
}

bool paintSpinIndicator(const ElementContext &context, QStyle::PrimitiveElement element)
{
    const bool lit = context.state.hovered || context.state.pressed;
    const QColor colour =
        lit ? context.colour(QPalette::Text) : context.colour(ColourRole::ArrowIconBase);
    switch (element) {
    case QStyle::PE_IndicatorSpinPlus:
    case QStyle::PE_IndicatorSpinMinus:
        drawPlusOrMinus(context, element == QStyle::PE_IndicatorSpinPlus, colour);
        break;
    default:
        drawChevron(*context.painter, centredSquare(context.rect(), context.scaled(stepGlyphSize)),
                    element == QStyle::PE_IndicatorSpinUp ? Qt::UpArrow : Qt::DownArrow, colour,
                    context.lineWidth(LineWidth::Glyph));
    }
    return true;
}

} // namespace Vireling
