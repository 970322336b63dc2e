#include "vireling/style/elements/field.h"

#include "vireling/style/design.h"
#include "vireling/style/paint_utils.h"

#include <QAbstractSpinBox>
#include <QPainter>

#include <algorithm>

namespace Vireling {

namespace {

constexpr qreal chevronSize = 16;

int fieldFrameWidth(const ElementContext &context)
{
    return context.state.focused ? emphasisWidth(context)
                                 : context.metric(QStyle::PM_DefaultFrameWidth);
}

QColor fieldFrameColour(const ElementContext &context)
{
    return context.state.focused ? focusColour(context) : frameColour(context);
}

qreal fieldRadius(const ElementContext &context)
{
    return context.scaledExactly(Design::controlRadius);
}

/** Text that cannot be changed stands on a line instead of in a box. */
void drawUnderline(const ElementContext &context)
{
    QRect line = context.rect();
    line.setTop(line.bottom() + 1 - fieldFrameWidth(context));
    context.painter->fillRect(line, fieldFrameColour(context));
}

QColor fieldFill(const ElementContext &context)
{
    return context.state.enabled ? context.colour(QPalette::Base) : QColor(Qt::transparent);
}

int frameExtent(const ElementContext &context, FieldFrame frame)
{
    return frame == FieldFrame::Framed ? context.metric(QStyle::PM_DefaultFrameWidth) : 0;
}

/** Between frame and text; an editor in an item view begins where the item's text does. */
int textPadding(const ElementContext &context, FieldFrame frame)
{
    return frame == FieldFrame::Framed ? context.scaled(Design::fieldPadding) : lineEditMargin;
}

} // namespace

bool isReadOnlySpinBox(const QWidget *widget)
{
    const auto *spin = qobject_cast<const QAbstractSpinBox *>(widget);
    return spin && spin->isReadOnly();
}

void drawField(const ElementContext &context)
{
    if (context.state.readOnly)
        drawUnderline(context);
    else
        drawPanel(*context.painter, context.rect(), fieldRadius(context), fieldFill(context),
                  fieldFrameColour(context), fieldFrameWidth(context));
}

void drawFieldFrame(const ElementContext &context)
{
    if (context.state.readOnly)
        drawUnderline(context);
    else
        drawPanel(*context.painter, context.rect(), fieldRadius(context), QColor(),
                  fieldFrameColour(context), fieldFrameWidth(context));
}

void drawFramelessField(const ElementContext &context)
{
    const bool filled = context.state.enabled && !context.state.readOnly;
    if (filled)
        context.painter->fillRect(context.rect(), context.option.palette.brush(QPalette::Base));
    if (context.state.focused)
        drawPanel(*context.painter, context.rect(), 0, QColor(), focusColour(context),
                  context.metric(QStyle::PM_DefaultFrameWidth));
}

QRect fieldArrowBox(const ElementContext &context, FieldFrame frame)
{
    const int inset = frameExtent(context, frame);
    QRect box = context.rect().adjusted(inset, inset, -inset, -inset);
    box.setLeft(std::max(box.left(), box.right() + 1 - context.scaled(Design::arrowBoxWidth)));
    return box;
}

QRect fieldEditArea(const ElementContext &context, FieldFrame frame, ArrowBox arrows)
{
    const int inset = frameExtent(context, frame);
    const int padding = textPadding(context, frame) - lineEditMargin;
    QRect area = context.rect().adjusted(inset, inset, -inset, -inset);
    if (arrows == ArrowBox::Shown)
        area.setRight(fieldArrowBox(context, frame).left() - 1);
    area.adjust(padding, 0, -padding, 0);
    area.setWidth(std::max(0, area.width()));
    return area;
}

QSize fieldSize(const ElementContext &context, const QSize &contents, FieldFrame frame,
                ArrowBox arrows)
{
    const int around = frameExtent(context, frame) + textPadding(context, frame);
    const int box = arrows == ArrowBox::Shown ? context.scaled(Design::arrowBoxWidth) : 0;
    return {contents.width() + 2 * around + box,
            fieldHeight(context, contents.height() - 2 * countedVerticalMargin)};
}

void fillFieldPart(const ElementContext &context, const QRect &part, const QColor &fill)
{
    const qreal inset = fieldFrameWidth(context);
    const QRectF inner = QRectF(context.rect()).adjusted(inset, inset, -inset, -inset);
    fillPart(*context.painter, inner, std::max<qreal>(0, fieldRadius(context) - inset), part, fill);
}

void drawArrowBoxSeparator(const ElementContext &context, const QRect &box)
{
    const bool rightToLeft = context.state.rightToLeft;
    const int width = context.metric(QStyle::PM_DefaultFrameWidth);
    const int inset = fieldFrameWidth(context) - width;
    QRect line(rightToLeft ? box.right() + 1 - width : box.left(), box.top(), width, box.height());
    line.adjust(0, inset, 0, -inset);
    context.painter->fillRect(line, frameColour(context));
}

void drawFieldChevron(const ElementContext &context, const QRect &box, Qt::ArrowType direction,
                      const QColor &colour)
{
    drawChevron(*context.painter, centredSquare(box, context.scaled(chevronSize)), direction,
                colour, context.lineWidth(LineWidth::Glyph));
}

QRectF centredSquare(const QRect &box, int size)
{
    const int side = std::min({size, box.width(), box.height()});
    QRectF square(0, 0, side, side);
    square.moveCenter(QRectF(box).center());
    return square;
}

} // namespace Vireling
