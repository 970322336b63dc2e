#include "vireling/style/elements/frame.h"

#include "vireling/style/design.h"
#include "vireling/style/paint_utils.h"

#include <QAbstractScrollArea>
#include <QFrame>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Vireling {

namespace {

const QAbstractScrollArea *scrollArea(const ElementContext &context)
{
    return qobject_cast<const QAbstractScrollArea *>(context.widget);
}

bool hasFocusWithin(const ElementContext &context)
{
    if (context.state.focused)
        return true;
    const QAbstractScrollArea *area = scrollArea(context);
    return context.state.enabled && area && area->viewport() && area->viewport()->hasFocus();
}

/** The colour behind the contents of a scroll area, for the strip the focus frame grows into. */
QColor groundOf(const QAbstractScrollArea &area)
{
    const QWidget *viewport = area.viewport();
    if (!viewport || !viewport->autoFillBackground())
        return QColor();
    return viewport->palette().color(viewport->backgroundRole());
}

/** Frames do not answer to the pointer: they hold other controls, which do. */
QColor restingFrameColour(const ElementContext &context)
{
    QStyleOption resting = context.option;
    resting.state &= ~QStyle::State_MouseOver;
    return frameColour(context.with(resting));
}

/** A QFrame gives no line width to the one shape that had a fixed one in older styles. */
qreal frameLineWidth(const ElementContext &context)
{
    const auto *frame = context.as<QStyleOptionFrame>();
    if (frame && frame->frameShape == QFrame::WinPanel)
        return context.metric(QStyle::PM_DefaultFrameWidth);
    return context.lineWidth(LineWidth::Frame);
}

void paintPanelFrame(const ElementContext &context)
{
    const bool focused = hasFocusWithin(context);
    const qreal width = focused ? emphasisWidth(context) : frameLineWidth(context);
    const QAbstractScrollArea *area = scrollArea(context);
    drawPanel(*context.painter, context.rect(), context.scaledExactly(Design::controlRadius),
              area ? groundOf(*area) : QColor(),
              focused ? focusColour(context) : restingFrameColour(context), width);
}

/** A scroll area keeps room for its focus frame, so that nothing moves when that appears. */
int frameExtent(const ElementContext &context)
{
    if (scrollArea(context))
        return emphasisWidth(context);
    return int(std::ceil(frameLineWidth(context)));
}

} // namespace

bool paintFrame(const ElementContext &context)
{
    if (!context.as<QStyleOptionFrame>())
        return false;
    paintPanelFrame(context);
    return true;
}

bool paintShapedFrame(const ElementContext &context)
{
    const auto *frame = context.as<QStyleOptionFrame>();
    if (!frame)
        return false;
    switch (frame->frameShape) {
    case QFrame::NoFrame:
        break;
    case QFrame::HLine:
    case QFrame::VLine:
        drawSeparator(*context.painter, context.rect(),
                      frame->frameShape == QFrame::HLine ? Qt::Horizontal : Qt::Vertical,
                      restingFrameColour(context), std::max(1, frame->lineWidth));
        break;
    default: // raised, sunken and plain look the same: surfaces here are flat
        paintPanelFrame(context);
        break;
    }
    return true;
}

std::optional<QRect> frameContents(const ElementContext &context)
{
    const auto *frame = context.as<QStyleOptionFrame>();
    if (!frame)
        return std::nullopt;
    if (frame->frameShape == QFrame::NoFrame)
        return context.rect();
    const int extent = frameExtent(context);
    return context.rect().adjusted(extent, extent, -extent, -extent);
}

} // namespace Vireling
