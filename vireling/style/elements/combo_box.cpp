#include "vireling/style/elements/combo_box.h"

#include "vireling/style/design.h"
#include "vireling/style/elements/button_label.h"
#include "vireling/style/elements/field.h"
#include "vireling/style/paint_utils.h"

#include <QPainter>
#include <QWidget>

namespace Vireling {

namespace {

/**
 * QComboBox counts the ink of its texts alone: not their bearings, which eliding measures
 * too, and no text cursor, for want of which an editable box would scroll its text.
 */
constexpr qreal textAllowance = 4;

FieldFrame fieldFrame(const QStyleOptionComboBox &combo)
{
    return combo.frame ? FieldFrame::Framed : FieldFrame::Frameless;
}

/**
 * An open box looks held down, not checked. A read-only date edit comes as a disabled
 * box, though its text can be read and copied.
 */
QStyleOptionComboBox surfaceOption(const QStyleOptionComboBox &combo, const QWidget *widget)
{
    QStyleOptionComboBox option = combo;
    if (isReadOnlySpinBox(widget)) {
        option.state.setFlag(QStyle::State_Enabled, widget->isEnabled());
        option.state.setFlag(QStyle::State_ReadOnly);
        option.subControls &= ~QStyle::SC_ComboBoxArrow;
    }
    if (option.state & QStyle::State_On)
        option.state = (option.state & ~QStyle::State_On) | QStyle::State_Sunken;
    return option;
}

void drawEditable(const ElementContext &context, const QStyleOptionComboBox &combo,
                  const QRect &arrowBox)
{
    if (combo.frame)
        drawField(context);
    else
        drawFramelessField(context);
    if (!(combo.subControls & QStyle::SC_ComboBoxArrow))
        return;
    const bool arrowActive = combo.activeSubControls & QStyle::SC_ComboBoxArrow;
    if (context.state.pressed)
        fillFieldPart(context, arrowBox, pressedFieldSurface(context));
    else if (context.state.hovered && arrowActive)
        fillFieldPart(context, arrowBox, hoveredPartSurface(context));
    drawArrowBoxSeparator(context, arrowBox);
}

void drawClosed(const ElementContext &context, const QStyleOptionComboBox &combo)
{
    const qreal radius = context.scaledExactly(Design::controlRadius);
    if (!combo.frame) {
        context.painter->fillRect(context.rect(), buttonSurface(context));
        return;
    }
    drawPanel(*context.painter, context.rect(), radius, buttonSurface(context),
              frameColour(context), context.metric(QStyle::PM_ComboBoxFrameWidth));
    if (context.state.focused)
        drawFocusRing(context, context.rect(), radius);
}

QColor arrowColour(const ElementContext &context, const QStyleOptionComboBox &combo)
{
    const bool arrowActive = combo.activeSubControls & QStyle::SC_ComboBoxArrow;
    const bool lit =
        context.state.pressed || (context.state.hovered && (arrowActive || !combo.editable));
    return lit ? context.colour(QPalette::ButtonText) : context.colour(ColourRole::ArrowIconBase);
}

/** Where icon and text stand. A text may use the padding before the chevron too. */
QRect labelArea(const ElementContext &context, const QStyleOptionComboBox &combo)
{
    const FieldFrame frame = fieldFrame(combo);
    QRect area = fieldEditArea(context, frame, ArrowBox::Shown);
    if (combo.editable)
        return area;
    area.setLeft(area.left() + lineEditMargin);
    area.setRight(fieldArrowBox(context, frame).left() - 1);
    return area;
}

} // namespace

bool paintComboBox(const ElementContext &context)
{
    const auto *combo = context.as<QStyleOptionComboBox>();
    if (!combo)
        return false;
    const QStyleOptionComboBox option = surfaceOption(*combo, context.widget);
    const ElementContext surface = context.with(option);
    const QRect arrowBox = context.visual(fieldArrowBox(context, fieldFrame(*combo)));
    if (combo->editable)
        drawEditable(surface, option, arrowBox);
    else
        drawClosed(surface, option);
    if (option.subControls & QStyle::SC_ComboBoxArrow)
        drawFieldChevron(surface, arrowBox, Qt::DownArrow, arrowColour(surface, option));
    return true;
}

bool paintComboBoxLabel(const ElementContext &context)
{
    const auto *combo = context.as<QStyleOptionComboBox>();
    if (!combo)
        return false;
    QRect label = labelArea(context, *combo);
    if (!combo->currentIcon.isNull()) {
        QRect icon = label;
        icon.setWidth(combo->iconSize.width());
        drawIcon(context, context.visual(icon), combo->currentIcon, combo->iconSize);
        label.setLeft(icon.right() + 1 + countedIconSpacing);
    }
    if (combo->editable || combo->currentText.isEmpty() || label.width() <= 0)
        return true;
    const QString text = fittingText(combo->fontMetrics, combo->currentText, label.width());
    context.painter->setPen(context.colour(QPalette::ButtonText));
    context.style.drawItemText(
        context.painter, context.visual(label),
        int(QStyle::visualAlignment(combo->direction, Qt::AlignLeft | Qt::AlignVCenter)),
        combo->palette, context.state.enabled, text);
    return true;
}

std::optional<QRect> comboBoxFocusRect(const ElementContext &context)
{
    return context.rect();
}

std::optional<QRect> comboBoxPart(const ElementContext &context, QStyle::SubControl part)
{
    const auto *combo = context.as<QStyleOptionComboBox>();
    if (!combo)
        return std::nullopt;
    switch (part) {
    case QStyle::SC_ComboBoxFrame:
    case QStyle::SC_ComboBoxListBoxPopup:
        return context.rect();
    case QStyle::SC_ComboBoxArrow:
        return context.visual(fieldArrowBox(context, fieldFrame(*combo)));
    case QStyle::SC_ComboBoxEditField:
        return context.visual(fieldEditArea(context, fieldFrame(*combo), ArrowBox::Shown));
    default:
        return std::nullopt;
    }
}

std::optional<QSize> comboBoxSize(const ElementContext &context, const QSize &contents)
{
    const auto *combo = context.as<QStyleOptionComboBox>();
    if (!combo)
        return std::nullopt;
    const QSize text = contents + QSize(context.scaled(textAllowance), 0);
    return fieldSize(context, text, fieldFrame(*combo), ArrowBox::Shown);
}

} // namespace Vireling
