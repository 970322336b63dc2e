#include "vireling/style/elements/line_edit.h"

#include "vireling/style/design.h"
#include "vireling/style/elements/field.h"
#include "vireling/style/paint_utils.h"

#include <QAbstractSpinBox>
#include <QComboBox>

namespace Vireling {

namespace {

/** The line edit of a spin or combo box stands on the field of the widget around it. */
bool isEmbedded(const QWidget *widget)
{
    const QWidget *parent = widget ? widget->parentWidget() : nullptr;
    return qobject_cast<const QAbstractSpinBox *>(parent) ||
           qobject_cast<const QComboBox *>(parent);
}

bool isFramed(const QStyleOptionFrame &frame)
{
    return frame.lineWidth > 0 && !(frame.features & QStyleOptionFrame::Flat);
}

/** What QLineEdit's own margin leaves of the padding. */
int paddingAroundContents(const ElementContext &context)
{
    return context.scaled(Design::fieldPadding) - lineEditMargin;
}

} // namespace

bool paintLineEditPanel(const ElementContext &context)
{
    const auto *frame = context.as<QStyleOptionFrame>();
    if (!frame)
        return false;
    if (isFramed(*frame))
        drawField(context);
    else if (!isEmbedded(context.widget))
        drawFramelessField(context);
    return true;
}

bool paintLineEditFrame(const ElementContext &context)
{
    drawFieldFrame(context);
    return true;
}

std::optional<QRect> lineEditContents(const ElementContext &context)
{
    const auto *frame = context.as<QStyleOptionFrame>();
    if (!frame)
        return std::nullopt;
    if (!isFramed(*frame))
        return context.rect();
    const int side = frame->lineWidth + paddingAroundContents(context);
    return context.rect().adjusted(side, frame->lineWidth, -side, -frame->lineWidth);
}

std::optional<QSize> lineEditSize(const ElementContext &context, const QSize &contents)
{
    const auto *frame = context.as<QStyleOptionFrame>();
    if (!frame)
        return std::nullopt;
    QSize size = contents;
    if (const std::optional<int> count = Style::displayCharCount(context.widget))
        size.setWidth(frame->fontMetrics.horizontalAdvance(QLatin1Char('x')) * *count);
    if (!isFramed(*frame))
        return size;
    size.rwidth() += 2 * (frame->lineWidth + context.scaled(Design::fieldPadding));
    size.setHeight(fieldHeight(context, size.height() - 2 * countedVerticalMargin));
    return size;
}

} // namespace Vireling
